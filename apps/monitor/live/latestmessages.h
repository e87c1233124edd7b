#ifndef LATESTMESSAGES_H
#define LATESTMESSAGES_H

#include "streamdecoder.h"

#include <QByteArray>
#include <QHash>
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
        quint32 sender = 0;
        QByteArray data;
        qint64 time = 0;
        qint64 sequence = 0;
        quint64 order = 0;    // among the messages of all streams
        bool pending = false; // not shown yet
    };

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}

    QVector<Entry>& getEntries() { return m_entries; }
    const QVector<Entry>& getEntries() const { return m_entries; }

    bool isPending() const { return m_pending; }
    void setPending(bool pending) { m_pending = pending; }
    /** Messages that were never shown because a newer one of their type came first. */
    quint64 getOvertakenCount() const { return m_overtaken; }

    /**
     * Decodes what is kept with other definitions.
     *
     * @param decoder  a new decoder of single messages with these definitions; must not be null
     * @return the types by their ids; what fails its checks under the new definitions is not among them
     */
    QHash<quint32, const MessageInfo*> decodeAnew(StreamDecoder* decoder);

    /** Forgets everything, such as what stands at another place of a recording. */
    void clear();

private:
    QVector<Entry> m_entries;
    QHash<quint64, int> m_places; // key: id in the high half, sender in the low
    int m_unknown = 0;
    bool m_pending = false;
    quint64 m_overtaken = 0;
};

#endif
