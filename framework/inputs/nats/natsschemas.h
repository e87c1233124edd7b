#ifndef NATSSCHEMAS_H
#define NATSSCHEMAS_H

#include "natsrequests.h"

#include <QHash>

#include <chrono>

struct Envelope;

/** Asks for the schemas that messages name: the last message of a subject, in the stream that has it. */
class NatsSchemas
{
public:
    /** @param stream  that has them; empty to ask which one it is
     *  @param requests  must outlive this object */
    NatsSchemas(NatsRequests* requests, const QByteArray& stream);

    /** Asks for the schema of a message, if it names one that was not asked for. */
    void note(const Envelope& message);
    /** Whether an answer is of such a request; the schema, or that there is none, is appended to @p bytes. */
    bool process(quint64 number, const QJsonObject& answer, QByteArray* bytes);
    /** Gives up what was not answered for too long, which is appended to @p bytes. */
    void giveUp(QByteArray* bytes);

private:
    typedef std::chrono::steady_clock Clock;

    struct Request
    {
        QByteArray topic;
        bool isForStream; ///< not for a message, but for the stream that has it
        Clock::time_point time;
    };

    void askForMessage(const QByteArray& stream, const QByteArray& topic);
    static void writeNone(const QByteArray& topic, QByteArray* bytes);

    NatsRequests* const m_requests;
    const QByteArray m_stream;
    QHash<QByteArray, Clock::time_point> m_asked; // by topic, when
    QHash<quint64, Request> m_open;               // by number
};

#endif
