#include "messagepass.h"

#include "message.h"
#include "recordingindex.h"
#include "selectivedecoder.h"

#include <algorithm>
#include <iterator>

MessagePass::MessagePass(SourceParts parts, SourceParts more, const Wish& wish)
    : m_wish(wish)
    , m_reader(new Reader(std::move(parts)))
    , m_more(more.input ? new Reader(std::move(more)) : nullptr)
{
}

MessagePass::~MessagePass()
{
    m_isCancelled = true;
    m_reader->input.cancel();
    if (m_more)
        m_more->input.cancel();
    wait();
}

bool MessagePass::take(std::vector<EarlierMessage>* messages)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_found.empty())
        return false;
    messages->swap(m_found.front());
    m_found.pop_front();
    return true;
}

bool MessagePass::isOver() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_ended && m_found.empty();
}

QString MessagePass::getErrorString() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_error;
}

void MessagePass::run()
{
    if (open(m_reader.get()))
        readBack();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isGood)
        m_error = m_reader->input.getError();
    if (!m_isGood && m_error.isEmpty() && m_more)
        m_error = m_more->input.getError();
    m_ended = true;
}

bool MessagePass::open(Reader* reader)
{
    if (!reader->input.open(&reader->stream))
        return false;
    if (reader->stream.needsIndex && reader->stream.index)
        reader->stream.index->prepare([reader](int) { return !reader->input.isCancelled(); });
    return !reader->input.isCancelled();
}

/** What goes on behind the first stretch, in which all messages are needed to find the place. */
MessagePass::Reader* MessagePass::openSelective()
{
    if (!m_more || !dynamic_cast<SelectiveDecoder*>(m_reader->stream.decoder.get()) || !m_reader->input.isAsItIs() ||
        !open(m_more.get()))
        return m_reader.get();
    dynamic_cast<SelectiveDecoder*>(m_more->stream.decoder.get())->setTypeFilter([this](const MessageInfo* info) {
        return m_wish.types.contains(info);
    });
    m_senders.clear();
    return m_more.get();
}

void MessagePass::readBack()
{
    RecordingIndex* const index = m_reader->stream.index.get();
    const auto cutBefore = [index](quint64 offset, quint64 size) {
        return index && offset > size ? index->findCut(offset - size) : 0;
    };
    m_anchor = m_wish.place.offset;
    if (m_wish.place.isSought)
        m_anchor = index ? index->findOffset(m_wish.place.time) : 0;
    quint64 begin = cutBefore(m_anchor, m_wish.firstStretch);
    const bool isRead = read(m_reader.get(), begin, PassInput::Everything);
    if (!m_isAtPlace && !(isRead && m_wish.place.isSought))
        return; // it is another recording now, or cannot be read
    m_meetsPlace = false;
    m_isAtPlace = false;
    handOver();
    Reader* const reader = begin > 0 && !isEnough() ? openSelective() : m_reader.get();
    quint64 size = m_wish.firstStretch;
    while (begin > 0 && !isEnough()) {
        size = std::min(2 * size, 16 * m_wish.firstStretch);
        const quint64 end = begin;
        begin = cutBefore(end, size);
        if (!read(reader, begin, end))
            return;
        handOver();
    }
    m_isGood = !m_isCancelled;
}

bool MessagePass::read(Reader* reader, quint64 begin, quint64 end)
{
    m_decoder = reader->stream.decoder.get();
    quint64 done = m_anchor - std::min(m_anchor, end);
    return reader->input.decode(reader->stream, begin, end, this, nullptr, [this, &done](qint64 bytes) {
        done += quint64(bytes);
        const int part = int(100 * std::min(done, m_anchor) / std::max<quint64>(1, m_anchor));
        m_percent = std::max(part, 100 * m_messages / m_wish.mostMessages);
        return !m_isAtPlace;
    });
}

void MessagePass::processReceived(const ReceivedMessage& message)
{
    if (m_isAtPlace || m_isCancelled)
        return;
    m_isAtPlace = m_meetsPlace && isBehindPlace(message);
    if (m_isAtPlace)
        return;
    if (message.info && m_wish.types.contains(message.info)) {
        const auto sender = m_senders.insert({{message.info, message.sender}, {false, QString()}});
        Sender& known = sender.first->second;
        if (sender.second) {
            known.name = m_decoder->getSenderName(message.sender);
            known.isWanted = m_wish.isWanted(message.info, known.name);
        }
        if (known.isWanted)
            keep(message, known.name);
    }
    m_isAtPlace = m_meetsPlace && isPlace(message);
}

bool MessagePass::isBehindPlace(const ReceivedMessage& message) const
{
    return m_wish.place.isSought && message.time != Message::NoTime && message.time >= m_wish.place.time &&
           message.offset >= m_anchor;
}

bool MessagePass::isPlace(const ReceivedMessage& message)
{
    const StreamPlace& place = m_wish.place;
    const bool isLike = !place.isSought && message.offset == place.offset && message.time == place.time &&
                        message.timeRest == place.timeRest;
    m_alike = isLike ? m_alike + 1 : 0;
    return m_alike > place.alike;
}

void MessagePass::keep(const ReceivedMessage& message, const QString& sender)
{
    m_stretch.push_back({message.info, message.id, QString(), sender, QByteArray(message.data, message.size),
                         message.time, message.sequence});
    m_stretchBytes += message.size;
    const auto isTooMuch = [this]() { return m_bytes + m_stretchBytes > m_wish.mostBytes && m_stretch.size() > 1; };
    while (m_messages + int(m_stretch.size()) > m_wish.mostMessages || isTooMuch()) {
        m_isFull = m_isFull || isTooMuch();
        m_stretchBytes -= m_stretch.front().data.size();
        m_stretch.pop_front();
    }
}

void MessagePass::handOver()
{
    m_messages += int(m_stretch.size());
    m_bytes += m_stretchBytes;
    m_stretchBytes = 0;
    if (m_stretch.empty())
        return;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_found.emplace_back(std::make_move_iterator(m_stretch.begin()), std::make_move_iterator(m_stretch.end()));
    m_stretch.clear();
}
