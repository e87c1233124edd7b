#ifndef ENVELOPESCHEMAS_H
#define ENVELOPESCHEMAS_H

#include "definitions.h"

#include <QHash>

#include <string_view>
#include <vector>

struct Envelope;

/**
 * The schemas that came, by their topics, and the messages that wait for one that did not.
 *
 * Whoever receives messages asks for a schema that one of them names; here is only waited for it, and neither for long
 * nor with many messages.
 */
class EnvelopeSchemas
{
public:
    enum State
    {
        Unknown, ///< it did not come so far
        Known,
        Missing ///< it is not waited for any more, but may come all the same
    };

    struct Waiting
    {
        QByteArray bytes; ///< an envelope
        quint64 end;      ///< where it ended in the stream
        qint64 arrivalTime;
    };

    /** Whether an envelope is a schema, which is known then. */
    bool take(const Envelope& envelope);

    State getState(std::string_view topic) const;
    /** The schema of a topic; empty unless it is known. */
    TypeSchema find(std::string_view topic) const;
    /** The topic of the schema of a message: as it says or, where it says nothing, by the names of topics; empty for
     * none.
     */
    std::string_view topicFor(const Envelope& message) const;

    /** Keeps a message for later; false where too much waits already. */
    bool keep(std::string_view topic, const Waiting& message);
    /** A topic whose messages wait for too long, at @p arrivalTime, or all if that is no time; null when there is none.
     */
    QByteArray findOverdue(qint64 arrivalTime) const;
    /** Where in the stream the first message that waits begins; the greatest number there is when none does. */
    quint64 findFirst() const;
    /** The messages that waited; none does any more. */
    std::vector<Waiting> release(std::string_view topic);
    void setMissing(std::string_view topic);

private:
    struct Schema
    {
        State state = Unknown;
        TypeSchema type;
        std::vector<Waiting> waiting;
    };

    Schema* add(std::string_view topic, qint64 size);
    std::string_view guess(std::string_view topic) const;

    QHash<QByteArray, Schema> m_schemas;     // by topic
    QHash<QByteArray, QByteArray> m_guesses; // topics by the beginning and end of topics of their messages
    qint64 m_kept = 0;                       // bytes of schemas
    qint64 m_waiting = 0;                    // bytes of messages
    bool m_isFull = false;                   // whether one was not kept
};

#endif
