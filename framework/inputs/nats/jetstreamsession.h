#ifndef JETSTREAMSESSION_H
#define JETSTREAMSESSION_H

#include "natsmessage.h"

#include <QByteArray>

#include <deque>
#include <map>
#include <unordered_set>

/**
 * What a reader of a session gets, each message once and in the order of the stream: what was not acknowledged comes
 * again before all else, but what several readers left that were killed one after the other comes mixed.
 */
class JetStreamSession
{
public:
    struct Item
    {
        quint64 number; ///< in the stream
        qint64 time;    ///< nanoseconds since 1970
        QByteArray reply;
        NatsMessage message;
    };

    /** The server is asked to begin: @p again messages are to come again, none of which is newer than @p newest. */
    void begin(quint64 again, quint64 newest);
    /** Takes a message; false for one that was handed out before. */
    bool add(Item item);
    /** No message is on its way: what has not come again is in the stream no more. */
    void settle();

    bool hasNext() const { return !m_ready.empty(); }
    /** Hands out the next one. */
    Item takeNext();
    /** Whether nothing is here, and nothing more comes again. */
    bool isEmpty() const;

private:
    std::map<quint64, Item> m_held; // by number, of those that came again
    qint64 m_heldBytes = 0;
    std::deque<Item> m_ready;
    quint64 m_again = 0; // messages that are still to come
    quint64 m_newest = 0;
    std::deque<quint64> m_handedOut;     // the newest of their numbers, more than can come again
    std::unordered_set<quint64> m_known; // the same
};

#endif
