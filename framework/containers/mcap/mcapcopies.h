#ifndef MCAPCOPIES_H
#define MCAPCOPIES_H

#include "mcapmessageorder.h"

#include <vector>

/** Copies of messages that stand in no chunk, or whose turn cannot be told yet. */
class McapCopies
{
public:
    /**
     * @param channel  may be null until take()
     * @param body     of the message's record
     * @param offset   in the stream, of that record
     */
    void append(const McapChannels::Entry* channel, const char* body, quint64 size, quint64 offset);
    void clear();

    bool isEmpty() const { return m_messages.empty(); }
    /** The content of the first one, borrowed. */
    QByteArray getFirst() const
    {
        return QByteArray::fromRawData(m_bytes.data() + m_places.front(), int(m_messages.front().size));
    }
    int getCount() const { return int(m_messages.size()); }
    /** Bytes of the messages. */
    quint64 getSize() const { return m_bytes.size(); }
    /** Of the first one. */
    quint64 getOffset() const { return m_offset; }
    /** Nanoseconds from the first to the newest, when that is later. */
    quint64 getDuration() const;

    /** All of them as a chunk; nothing is left. @p channel becomes that of those that have none. */
    std::unique_ptr<McapMessageOrder::Chunk> take(McapMessageOrder* order,
                                                  const McapChannels::Entry* channel = nullptr);

private:
    std::vector<char> m_bytes;
    std::vector<McapMessageOrder::Message> m_messages; // whose data is gone
    std::vector<quint64> m_places;                     // of the data in the bytes
    quint64 m_offset = 0;
};

#endif
