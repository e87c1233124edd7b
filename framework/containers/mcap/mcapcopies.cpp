#include "mcapcopies.h"

#include "mcaprecord.h"

#include <cstring>

using namespace Mcap;

void McapCopies::append(const McapChannels::Entry* channel, const char* body, quint64 size, quint64 offset)
{
    if (m_messages.empty())
        m_offset = offset;
    m_messages.push_back(McapMessageOrder::Message(channel, body, size));
    m_places.push_back(m_bytes.size() + MessageHeadSize);
    m_bytes.insert(m_bytes.end(), body, body + size);
}

void McapCopies::clear()
{
    *this = McapCopies();
}

quint64 McapCopies::getDuration() const
{
    if (m_messages.empty())
        return 0;
    const quint64 first = m_messages.front().time;
    return std::max(first, m_messages.back().time) - first;
}

std::unique_ptr<McapMessageOrder::Chunk> McapCopies::take(McapMessageOrder* order, const McapChannels::Entry* channel)
{
    std::unique_ptr<McapMessageOrder::Chunk> chunk = order->make(m_bytes.size());
    chunk->offset = m_offset;
    std::memcpy(chunk->bytes.get(), m_bytes.data(), m_bytes.size());
    for (std::size_t i = 0; i < m_messages.size(); ++i) {
        McapMessageOrder::Message& message = m_messages[i];
        message.data = chunk->bytes.get() + m_places[i];
        if (!message.channel)
            message.channel = channel;
        chunk->append(message);
    }
    clear();
    return chunk;
}
