#include "mcapmessageorder.h"

#include "message.h"
#include "streamdecoder.h"

#include <algorithm>

// Chunks are seldom greater.
static const quint64 GreatestSpare = 4 << 20;

namespace
{

/** What a sink gets, made of one message after another of a chunk. */
class Found
{
public:
    explicit Found(quint64 offset) { m_message.offset = offset; }

    const ReceivedMessage& set(const McapMessageOrder::Message& message)
    {
        m_message.info = message.channel->info;
        m_message.id = message.channel->id;
        m_message.sender = message.channel->sender;
        m_message.data = message.data;
        m_message.size = int(message.size);
        m_message.time = qint64(message.time / 1000);
        m_message.timeRest = qint16(message.time % 1000);
        m_message.publishTime = ::Message::NoTime;
        if (message.isPublishTimeOther) {
            const quint64 publishTime = Mcap::MessageHead::publishTime(message.data);
            m_message.publishTime = qint64(publishTime / 1000);
            m_message.publishTimeRest = qint16(publishTime % 1000);
        }
        m_message.sequence = message.sequence != 0 ? qint64(message.sequence) : qint64(Message::NoSequence);
        return m_message;
    }

private:
    ReceivedMessage m_message;
};

} // namespace

McapMessageOrder::McapMessageOrder()
    : m_held(0)
{
}

bool McapMessageOrder::isLater(const std::unique_ptr<Chunk>& left, const std::unique_ptr<Chunk>& right)
{
    if (left->nextTime() != right->nextTime())
        return left->nextTime() > right->nextTime();
    return left->offset > right->offset;
}

std::unique_ptr<McapMessageOrder::Chunk> McapMessageOrder::make(quint64 size)
{
    if (m_spare && m_spare->size >= size && m_spare->size / 4 <= size) {
        m_spare->messages.clear();
        m_spare->next = 0;
        m_spare->latest = 0;
        m_spare->isOrdered = true;
        return std::move(m_spare);
    }
    std::unique_ptr<Chunk> chunk(new Chunk);
    chunk->size = std::max<quint64>(1, size);
    chunk->bytes.reset(new char[chunk->size]); // not initialised: it takes nothing until used
    return chunk;
}

void McapMessageOrder::add(std::unique_ptr<Chunk> chunk)
{
    if (chunk->messages.empty()) {
        if (chunk->size <= GreatestSpare)
            m_spare = std::move(chunk);
        return;
    }
    if (!chunk->isOrdered)
        std::stable_sort(chunk->messages.begin(), chunk->messages.end(),
                         [](const Message& left, const Message& right) { return left.time < right.time; });
    m_held += chunk->heldBytes();
    m_chunks.push_back(std::move(chunk));
    std::push_heap(m_chunks.begin(), m_chunks.end(), isLater);
}

void McapMessageOrder::release(quint64 until, StreamSink* sink)
{
    while (!m_chunks.empty() && m_chunks.front()->nextTime() <= until) {
        std::pop_heap(m_chunks.begin(), m_chunks.end(), isLater);
        std::unique_ptr<Chunk> chunk = std::move(m_chunks.back());
        m_chunks.pop_back();
        Found found(chunk->offset);
        // As far as no other chunk has its turn.
        const Chunk* const other = m_chunks.empty() ? nullptr : m_chunks.front().get();
        const std::size_t count = chunk->messages.size();
        do {
            sink->processReceived(found.set(chunk->messages[chunk->next]));
            ++chunk->next;
        } while (chunk->next < count && chunk->nextTime() <= until &&
                 (!other || chunk->nextTime() < other->nextTime() ||
                  (chunk->nextTime() == other->nextTime() && chunk->offset < other->offset)));
        if (chunk->next == count) {
            m_held -= chunk->heldBytes();
            if (chunk->size <= GreatestSpare)
                m_spare = std::move(chunk);
        } else {
            m_chunks.push_back(std::move(chunk));
            std::push_heap(m_chunks.begin(), m_chunks.end(), isLater);
        }
    }
}

void McapMessageOrder::releaseOne(StreamSink* sink)
{
    if (!m_chunks.empty())
        release(m_chunks.front()->messages.back().time, sink);
}

void McapMessageOrder::handOut(const Message& message, quint64 offset, StreamSink* sink)
{
    sink->processReceived(Found(offset).set(message));
}

void McapMessageOrder::clear()
{
    m_chunks.clear();
    m_spare.reset();
    m_held = 0;
}
