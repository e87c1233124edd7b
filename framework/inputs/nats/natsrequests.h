#ifndef NATSREQUESTS_H
#define NATSREQUESTS_H

#include "natsmessage.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

class NatsConnection;

/** Asks the JetStream of a server something; answers come as messages of a channel, in their own time or never. */
class NatsRequests
{
public:
    /** @param connection  must outlive this object */
    NatsRequests(NatsConnection* connection, int channel);

    /** With the connection open. */
    bool open(QString* error);

    /** The number that the answer will have, above 0. */
    quint64 send(const QByteArray& operation, const QJsonObject& wish);

    /** The answer that a message of the channel is, and the number of the request. */
    static QJsonObject read(natsMsg* message, quint64* number);
    /** The code of what went wrong, or that of HTTP where there is no other; 0 for nothing. */
    static int getErrorCode(const QJsonObject& answer);
    /** Why something went wrong. */
    static QString describeError(const QJsonObject& answer);

    enum Error
    {
        NoJetStream = 503,
        NameInUse = 10013,
        NoSuchConsumer = 10014,
        NoSuchStream = 10059
    };

private:
    NatsConnection* const m_connection;
    const int m_channel;
    QByteArray m_inbox;
    quint64 m_last = 0;
};

#endif
