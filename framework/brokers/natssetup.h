#ifndef NATSSETUP_H
#define NATSSETUP_H

#include "brokeraccess.h"

#include <QVector>

#include <nats/nats.h>

/** What a connection to servers of NATS needs. */
struct NatsSetup : BrokerAccess
{
    /** As BrokerAccess::read(), with "creds" and "tls" and the environment variable CORVEL_NATS_PASSWORD. A password
     * without a user is a token. */
    bool read(const QMap<QString, QString>& parameters, QString* error);

    struct Server
    {
        QString host;
        quint16 port;
    };

    /** Takes the servers of an address: the first one, and @p others, "HOST[:PORT]" with commas between them. False
     * with @p reason where that is something else. */
    bool readServers(const Server& one, const QString& others, QString* reason);

    /** Says so to the library, which then tries the servers in their order, from that at the place @p first on. */
    natsStatus apply(natsOptions* options, int first = 0) const;

    QVector<Server> servers;
    QByteArray credentials; ///< a file; may be empty
    bool isEncrypted = false;
};

#endif
