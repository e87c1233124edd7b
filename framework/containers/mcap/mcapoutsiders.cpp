// The part of McapReader that finds out what messages belong to, and the turn of those outside of chunks.

#include "mcapreader.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Mcap;

namespace
{

const quint64 Never = std::numeric_limits<quint64>::max();

// Of messages that wait for their channel.
const quint64 MostWaitingBytes = Q_UINT64_C(64) << 20;

// How long messages outside of chunks wait for earlier ones where no index knows of these: whatever comes first.
const quint64 LongestStretch = 1000000000;
const quint64 GreatestStretch = Q_UINT64_C(1) << 20;

} // namespace

void McapReader::setIndex(const McapIndex& index)
{
    const QVector<McapIndex::Chunk>& chunks = index.getChunks();
    quint64 latest = 0;
    m_hasIndex = true;
    m_isInOrder = true;
    m_indexEnd = 0;
    for (const McapIndex::Chunk& chunk : chunks) {
        m_isInOrder = m_isInOrder && chunk.isOrdered && chunk.start >= latest;
        m_indexEnd = chunk.offset + chunk.length;
        latest = std::max(latest, chunk.end);
    }
    quint64 earliest = Never;
    m_starts.resize(std::size_t(chunks.size()));
    for (int i = int(chunks.size()) - 1; i >= 0; --i) {
        earliest = std::min(earliest, chunks.at(i).start);
        m_starts[std::size_t(i)] = LaterStart{chunks.at(i).offset, earliest};
    }
    m_dataCrcIsWanted = index.hasDataChecksum();
    m_definitions = index.getDefinitions();
    m_chunkChannels.clear();
    for (const McapIndex::Chunk& chunk : chunks)
        if (!chunk.channels.empty())
            m_chunkChannels.push_back({chunk.offset, chunk.channels});
}

void McapReader::setTypeFilter(const SelectiveDecoder::TypeFilter& isWanted)
{
    m_leavesOut = true;
    m_channels.setTypeFilter(isWanted);
}

/** Whether the chunk that begins may have anything that is wanted, as far as the index tells. */
bool McapReader::isChunkWanted() const
{
    if (!m_leavesOut)
        return true;
    const auto found =
        std::lower_bound(m_chunkChannels.begin(), m_chunkChannels.end(), m_recordOffset,
                         [](const ChunkChannels& chunk, quint64 offset) { return chunk.offset < offset; });
    if (found == m_chunkChannels.end() || found->offset != m_recordOffset)
        return true;
    return std::any_of(found->channels.begin(), found->channels.end(), [this](quint16 number) {
        const McapChannels::Entry* const channel = m_channels.find(number);
        return !channel || channel->isWanted;
    });
}

/** Takes what was announced before the place where reading goes on behind a jump. */
void McapReader::catchUpOnDefinitions()
{
    m_leapt = false;
    for (const McapIndex::Definition& definition : std::as_const(m_definitions))
        if (definition.offset >= m_fileStarts[m_file] && definition.offset < m_position)
            addDefinition(definition.record);
}

void McapReader::addDefinition(const QByteArray& record)
{
    const RecordHead head(record.constData());
    addDefinition(head.opcode, record.constData() + RecordHeadSize, quint64(record.size()) - RecordHeadSize);
}

/** Takes what announces a schema or a channel. */
void McapReader::addDefinition(quint8 opcode, const char* body, quint64 size)
{
    if (opcode == SchemaRecord) {
        reportDefinition(m_channels.addSchema(body, size), nullptr);
        return;
    }
    Channel channel;
    if (channel.read(Cursor(body, size)) && channel.schema != 0 && !m_channels.hasSchema(channel.schema))
        recover(SchemaRecord, channel.schema);
    const QString problem = m_channels.addChannel(body, size);
    const McapChannels::Entry* entry = m_channels.find(channel.id);
    if (!problem.isEmpty())
        reportDefinition(problem, entry);
    const auto waiting = m_waiting.find(channel.id);
    if (waiting != m_waiting.end() && m_channels.isAwaited(channel.id))
        entry = meetChannel(channel.id, waiting->second.getFirst());
    if (!entry || waiting == m_waiting.end())
        return;
    report(StreamProblem::DisorderedTimes, waiting->second.getOffset(), 0,
           QCoreApplication::translate("McapStream", "%1 messages of %2 had to wait until it was announced")
               .arg(waiting->second.getCount())
               .arg(m_channels.getTopic(entry->sender)));
    stopWaiting(waiting, entry);
}

/** Takes what the index has of a schema or channel that was not announced so far, such as from the summary. */
void McapReader::recover(quint8 opcode, quint16 id)
{
    const McapIndex::Definition* found = nullptr;
    for (const McapIndex::Definition& definition : std::as_const(m_definitions)) {
        const char* const record = definition.record.constData();
        if (definition.offset < m_fileStarts[m_file] || definition.offset >= endOfFile() ||
            RecordHead(record).opcode != opcode ||
            Cursor(record + RecordHeadSize, quint64(definition.record.size()) - RecordHeadSize).number<quint16>() != id)
            continue;
        if (!found || definition.offset <= m_recordOffset)
            found = &definition;
    }
    if (found)
        addDefinition(found->record);
}

/** As channelOf(), for a channel that is not known so far. */
const McapChannels::Entry* McapReader::missingChannelOf(quint16 number, const char* body, quint64 size)
{
    const McapChannels::Entry* known = nullptr;
    const QByteArray message = QByteArray::fromRawData(body + MessageHeadSize, int(size) - MessageHeadSize);
    if (m_channels.isAwaited(number))
        return meetChannel(number, message);
    if (m_hasIndex) {
        recover(ChannelRecord, number);
        known = m_channels.isAwaited(number) ? meetChannel(number, message) : m_channels.find(number);
    } else if (m_mustEnd && m_waitingBytes + size <= MostWaitingBytes) {
        // The summary at the end may have what was lost.
        m_waiting[number].append(nullptr, body, size, m_recordOffset);
        m_waitingBytes += size;
        return nullptr;
    }
    if (!known) {
        giveUpWaiting();
        known = m_channels.find(number);
    }
    return known ? known : makeUpChannel(number);
}

/** The channel that was announced and whose type the first of its messages tells. */
const McapChannels::Entry* McapReader::meetChannel(quint16 number, const QByteArray& message)
{
    QString problem;
    const McapChannels::Entry* const entry = m_channels.meet(number, message, &problem);
    reportDefinition(problem, entry);
    return entry;
}

const McapChannels::Entry* McapReader::makeUpChannel(quint16 number)
{
    const McapChannels::Entry* const entry = m_channels.makeUp(number);
    QString text =
        QCoreApplication::translate("McapStream", "messages of channel %1, which was not announced").arg(number);
    if (m_hasLost)
        text += QCoreApplication::translate("McapStream", " in what could be read");
    reportDefinition(text, entry);
    return entry;
}

void McapReader::stopWaiting(Waiting::iterator waiting, const McapChannels::Entry* channel)
{
    m_waitingBytes -= waiting->second.getSize();
    m_order.add(waiting->second.take(&m_order, channel));
    m_waiting.erase(waiting);
}

/** Hands out the messages of channels that were not announced. */
void McapReader::giveUpWaiting()
{
    while (!m_waiting.empty())
        stopWaiting(m_waiting.begin(), makeUpChannel(m_waiting.begin()->first));
}

void McapReader::processMessage(const char* body, quint64 size)
{
    const MessageHead head(body);
    const McapChannels::Entry* const channel = channelOf(head.channel, body, size);
    if (!channel || !channel->isWanted)
        return;
    const bool isIndexed = m_hasIndex && m_recordOffset < m_indexEnd;
    if (!m_mustEnd || (isIndexed && m_isInOrder)) {
        m_order.release(head.time, m_sink);
        McapMessageOrder::handOut(McapMessageOrder::Message(channel, body, size), m_recordOffset, m_sink);
        return;
    }
    if (!m_stretch.isEmpty() && m_recordOffset >= m_stretchEnd)
        endStretch();
    if (m_stretch.isEmpty()) {
        // As the index counts it, so that it is known what comes later.
        const auto next = isIndexed ? laterStart(m_recordOffset) : m_starts.end();
        m_stretchEnd = next == m_starts.end() ? Never : next->offset;
    }
    m_stretch.append(channel, body, size, m_recordOffset);
    if (!isIndexed && (m_stretch.getSize() >= GreatestStretch || m_stretch.getDuration() >= LongestStretch))
        endStretch();
}

/** Lets messages outside of chunks that were gathered wait for their turn, as a chunk does. */
void McapReader::endStretch()
{
    if (!m_stretch.isEmpty())
        holdChunk(m_stretch.take(&m_order));
}

/** The first chunk or stretch behind that place. */
std::vector<McapReader::LaterStart>::const_iterator McapReader::laterStart(quint64 offset) const
{
    return std::upper_bound(m_starts.cbegin(), m_starts.cend(), offset,
                            [](quint64 place, const LaterStart& start) { return place < start.offset; });
}
