#ifndef LATESTMESSAGES_H
#define LATESTMESSAGES_H

#include "streamdecoder.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QVector>

/**
 * The newest message of each type and sender of one stream, as it was received.
 *
 * Only bytes are copied while messages come; a Message is made of them when somebody wants to see it. Types that the
 * definitions do not know are kept too, a limited number of them, so that they can be decoded once they are known.
 */
class LatestMessages : public StreamSink
{
public:
    struct Entry
    {
        const MessageInfo* info = nullptr; // null for an unknown type
        quint32 id = 0;
        int row = -1; // see StreamIdentities
        QByteArray data;
        qint64 time = 0;
        qint64 sequence = 0;
        quint64 order = 0;    // among the messages of all streams
        quint64 shown = 0;    // the order of the one that was shown last
        bool pending = false; // not shown yet
        quint32 sender = 0;   // the decoder's number
        bool isGone = false;  // its sender said, or its server, that it is there no more
        bool isGoneTold = false;
        bool isEarlier = false; // from before the place to which a recording was taken
    };

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;

    /** Keeps what was before everything that was received, in the order of their times; not where something was, which
     * is newer, and is shown again behind it. */
    void addEarlier(const QVector<Entry>& entries);
    /** Whether something is kept of a row. */
    bool has(int row) const { return m_places.value(row, -1) >= 0; }

    QVector<Entry>& getEntries() { return m_entries; }
    const QVector<Entry>& getEntries() const { return m_entries; }

    /** When the newest message of a row was sent or received; Message::NoTime where none is kept, or it has none. */
    qint64 getTime(int row) const;

    bool isPending() const { return m_pending; }
    void setPending(bool pending) { m_pending = pending; }
    /** Messages that were never shown because a newer one of their type came first. */
    quint64 getOvertakenCount() const { return m_overtaken; }

    /**
     * Decodes what is kept with other definitions.
     *
     * @param decoder  a new decoder of single messages with these definitions; must not be null
     * @return the types by their ids, null where all of that id failed their checks under the new definitions
     */
    QHash<quint32, const MessageInfo*> decodeAnew(StreamDecoder* decoder);

    /** Types of which nothing is kept any more because their rows have other types now, since this was asked last. */
    QSet<const MessageInfo*> takeReplaced();

    /** Forgets everything, such as what stands at another place of a recording. */
    void clear();

private:
    int addPlace(int row);

    QVector<Entry> m_entries;
    QVector<int> m_places; // of entries, by row; -1 where there is none
    QSet<const MessageInfo*> m_replaced;
    int m_unknown = 0;
    bool m_pending = false;
    quint64 m_overtaken = 0;
    quint64 m_earlierOrder = 0; // of what is from before
};

#endif
