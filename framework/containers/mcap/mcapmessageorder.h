#ifndef MCAPMESSAGEORDER_H
#define MCAPMESSAGEORDER_H

#include "mcapchannels.h"
#include "mcaprecord.h"

#include <algorithm>
#include <memory>
#include <vector>

class StreamSink;

/** Holds the messages of chunks until they can be handed out in the order of their times. */
class McapMessageOrder
{
public:
    struct Message
    {
        /** @param body  of the message's record, of that size; has to last */
        Message(const McapChannels::Entry* channel, const char* body, quint64 size)
            : channel(channel)
            , data(body + Mcap::MessageHeadSize)
            , size(quint32(size - Mcap::MessageHeadSize))
        {
            const Mcap::MessageHead head(body);
            time = head.time;
            sequence = head.sequence;
            isPublishTimeOther = Mcap::MessageHead::publishTime(data) != time;
        }

        quint64 time; ///< nanoseconds since 1970
        const McapChannels::Entry* channel;
        const char* data; ///< behind the rest of its record
        quint32 size : 31;
        quint32 isPublishTimeOther : 1; ///< told here, because the record is not at hand any more when it is asked
        quint32 sequence;               ///< 0 for none
    };

    struct Chunk
    {
        quint64 offset = 0; ///< in the stream
        quint64 size = 0;   ///< of the room for bytes
        std::unique_ptr<char[]> bytes;
        std::vector<Message> messages;
        std::size_t next = 0;  ///< first of the messages that has not been handed out
        quint64 latest = 0;    ///< time of the messages
        bool isOrdered = true; ///< whether the messages are in the order of their times

        void append(const Message& message)
        {
            isOrdered = isOrdered && message.time >= latest;
            latest = std::max(latest, message.time);
            messages.push_back(message);
        }
        quint64 nextTime() const { return messages[next].time; }
        quint64 heldBytes() const { return size + messages.capacity() * sizeof(Message); }
    };

    McapMessageOrder();

    bool isEmpty() const { return m_chunks.empty(); }
    /** Bytes of memory that the chunks take. */
    quint64 getHeldBytes() const { return m_held; }

    /** A chunk without messages, with room for that many bytes: a used one where there is one that fits. */
    std::unique_ptr<Chunk> make(quint64 size);

    /** Takes a chunk with its messages in the order in which they were found. */
    void add(std::unique_ptr<Chunk> chunk);

    /** Hands out everything of that time, in nanoseconds since 1970, and before; of equal times the first chunk's
     * first.
     */
    void release(quint64 until, StreamSink* sink);
    /** Hands out all of the chunk that begins earliest, and what belongs before. */
    void releaseOne(StreamSink* sink);
    void clear();

    static void handOut(const Message& message, quint64 offset, StreamSink* sink);

private:
    static bool isLater(const std::unique_ptr<Chunk>& left, const std::unique_ptr<Chunk>& right);

    std::vector<std::unique_ptr<Chunk>> m_chunks; // a heap: the one whose next message is the earliest is on top
    quint64 m_held;
    std::unique_ptr<Chunk> m_spare; // fresh memory would cost as much as decompressing into it
};

#endif
