// The part of McapReader that reads chunks.

#include "mcapreader.h"
#include "utf8text.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

using namespace Mcap;

namespace
{

const quint64 MostHeldBytes = Q_UINT64_C(256) << 20;

} // namespace

bool McapReader::readChunkHead()
{
    const char* const bytes = take(ChunkHeadSize);
    if (!bytes)
        return false;
    account(bytes, ChunkHeadSize);
    m_chunkHeadBytes = QByteArray(bytes, ChunkHeadSize);
    if (qFromLittleEndian<quint32>(bytes + ChunkHeadSize - 4) <= quint32(GreatestCompressionName)) {
        m_state = InChunkName;
    } else {
        QByteArray consumed(1, char(ChunkRecord));
        consumed.resize(RecordHeadSize);
        qToLittleEndian(m_length, consumed.data() + 1);
        startSearch(m_recordOffset, std::numeric_limits<quint64>::max(), consumed + m_chunkHeadBytes,
                    QCoreApplication::translate("McapStream", "a chunk whose lengths contradict each other"));
    }
    return true;
}

bool McapReader::readChunkName()
{
    const quint64 size = qFromLittleEndian<quint32>(m_chunkHeadBytes.constData() + ChunkHeadSize - 4) + 8;
    const char* const bytes = take(size);
    if (!bytes)
        return false;
    account(bytes, size);
    m_chunkHeadBytes.append(bytes, int(size));
    const bool agrees =
        m_chunkHead.read(Cursor(m_chunkHeadBytes.constData(), quint64(m_chunkHeadBytes.size())), m_length);
    const bool isGreat = m_chunkHead.recordsSize > GreatestChunk;
    if (!agrees || isGreat) {
        QByteArray consumed(1, char(ChunkRecord));
        consumed.resize(RecordHeadSize);
        qToLittleEndian(m_length, consumed.data() + 1);
        const quint64 end = agrees ? m_recordOffset + RecordHeadSize + m_length : std::numeric_limits<quint64>::max();
        startSearch(m_recordOffset, end, consumed + m_chunkHeadBytes,
                    agrees ? QCoreApplication::translate("McapStream", "a chunk of %1 bytes").arg(m_length)
                           : QCoreApplication::translate("McapStream", "a chunk whose lengths contradict each other"));
        return true;
    }
    m_left = m_chunkHead.recordsSize + m_chunkHead.extension;
    m_state = InChunk;
    QString problem;
    if (!Decompressor::isKnown(m_chunkHead.compression))
        problem = QCoreApplication::translate("McapStream", "a chunk with the compression \"%1\"")
                      .arg(Utf8Text::decode(m_chunkHead.compression));
    else if (m_chunkHead.uncompressedSize > GreatestChunk)
        problem =
            QCoreApplication::translate("McapStream", "a chunk that holds %1 bytes was passed over, %2 MiB are read")
                .arg(m_chunkHead.uncompressedSize)
                .arg(GreatestChunk >> 20);
    if (!problem.isEmpty()) {
        report(StreamProblem::UnsupportedFrame, m_recordOffset, RecordHeadSize + m_length, problem);
        m_state = Skipping;
    } else if (!isChunkWanted()) {
        m_hasLost = true; // it may announce what others are of
        m_state = Skipping;
    } else if (m_chunkHead.compression.isEmpty() && m_chunkHead.recordsSize == m_chunkHead.uncompressedSize) {
        m_plainChunk = makeChunk();
        m_plainSize = 0;
        m_plainCrc = 0;
    }
    return true;
}

bool McapReader::readChunk()
{
    if (m_plainChunk)
        return readPlainChunk();
    const char* const bytes = take(m_chunkHead.recordsSize);
    if (!bytes)
        return false;
    const quint64 size = m_chunkHead.recordsSize;
    account(bytes, size);
    m_left = m_chunkHead.extension;
    m_state = Skipping;
    processChunk(bytes, size);
    return true;
}

/** Puts the records where they are to stay at once, and calculates their checksum while they pass by. */
bool McapReader::readPlainChunk()
{
    const quint64 size = m_chunkHead.recordsSize;
    const quint64 used = std::min(size - m_plainSize, m_inputSize);
    if (used > 0) {
        std::memcpy(m_plainChunk->bytes.get() + m_plainSize, m_input, used);
        if (m_chunkHead.crc != 0 || isCrcWanted())
            m_plainCrc = addCrc(m_plainCrc, m_input, used);
        m_plainSize += used;
        m_input += used;
        m_inputSize -= used;
        m_position += used;
    }
    if (m_plainSize < size)
        return false;
    if (isCrcWanted())
        m_crc = combineCrc(m_crc, m_plainCrc, size);
    m_left = m_chunkHead.extension;
    m_state = Skipping;
    processRecords(std::move(m_plainChunk), size, m_plainCrc);
    return true;
}

std::unique_ptr<McapReader::Chunk> McapReader::makeChunk()
{
    std::unique_ptr<Chunk> chunk = m_order.make(m_chunkHead.uncompressedSize);
    chunk->offset = m_recordOffset;
    return chunk;
}

std::unique_ptr<McapReader::Chunk> McapReader::decompress(const char* bytes, quint64 size, bool* good, quint64* written,
                                                          QByteArray* error)
{
    std::unique_ptr<Chunk> chunk = makeChunk();
    *good = m_decompressor.run(m_chunkHead.compression, bytes, size, chunk->bytes.get(), m_chunkHead.uncompressedSize,
                               written, error);
    return chunk;
}

void McapReader::processChunk(const char* bytes, quint64 size)
{
    bool good = false;
    quint64 written = 0;
    QByteArray error;
    std::unique_ptr<Chunk> chunk = decompress(bytes, size, &good, &written, &error);
    const quint64 length = m_position - m_recordOffset;
    if (!good) {
        report(StreamProblem::ChecksumFailure, m_recordOffset, length,
               QCoreApplication::translate("McapStream", "a chunk that does not decompress was dropped (%1)")
                   .arg(QString::fromLatin1(error)));
        return;
    }
    if (written != m_chunkHead.uncompressedSize) {
        report(StreamProblem::LengthMismatch, m_recordOffset, length,
               QCoreApplication::translate("McapStream", "a chunk that says it holds %1 bytes and holds %2 was dropped")
                   .arg(m_chunkHead.uncompressedSize)
                   .arg(written));
        return;
    }
    const quint32 crc = m_chunkHead.crc == 0 ? 0 : addCrc(0, chunk->bytes.get(), written);
    processRecords(std::move(chunk), written, crc);
}

/** Takes the records of a chunk when @p crc, their checksum, is the one that the chunk gives, or when it gives none. */
void McapReader::processRecords(std::unique_ptr<Chunk> chunk, quint64 size, quint32 crc)
{
    if (!checkCrc(m_chunkHead.crc, crc, QCoreApplication::translate("McapStream", "a chunk, which was dropped,")))
        return;
    parseChunk(chunk.get(), size, true);
    holdChunk(std::move(chunk));
}

/** Finds the messages in the first @p size bytes of a chunk. */
void McapReader::parseChunk(Chunk* chunk, quint64 size, bool mustBeWhole)
{
    Cursor cursor(chunk->bytes.get(), size);
    while (cursor.rest() > 0) {
        const char* const bytes = cursor.skip(RecordHeadSize);
        const RecordHead head(bytes ? bytes : "\0\0\0\0\0\0\0\0");
        const quint64 rest = cursor.rest();
        const char* const body = bytes ? cursor.skip(head.length) : nullptr;
        if (!body) {
            if (mustBeWhole)
                report(
                    StreamProblem::LengthMismatch, m_recordOffset, m_position - m_recordOffset,
                    QCoreApplication::translate(
                        "McapStream", "a record in a chunk has %1 bytes where %2 are left; what follows it was dropped")
                        .arg(head.length)
                        .arg(rest));
            return;
        }
        switch (head.opcode) {
        case SchemaRecord:
        case ChannelRecord:
            addDefinition(head.opcode, body, head.length);
            break;
        case MessageRecord: {
            if (isNone(head)) {
                report(StreamProblem::LengthMismatch, m_recordOffset, 0, whyImpossible(head));
                break;
            }
            const MessageHead message(body);
            const McapChannels::Entry* const channel = channelOf(message.channel, body, head.length);
            if (channel && channel->isWanted)
                chunk->append(McapMessageOrder::Message(channel, body, head.length));
            break;
        }
        case 0:
            report(StreamProblem::UnsupportedFrame, m_recordOffset, 0, whyImpossible(head));
            break;
        default:
            break;
        }
    }
}

/** Keeps the messages of a chunk until their turn, and hands out those whose turn it is now. */
void McapReader::holdChunk(std::unique_ptr<Chunk> chunk)
{
    const quint64 offset = chunk->offset;
    const quint64 latest = chunk->latest;
    const auto isBefore = [](const McapMessageOrder::Message& left, const McapMessageOrder::Message& right) {
        return left.time < right.time;
    };
    const std::vector<McapMessageOrder::Message>& messages = chunk->messages;
    const auto first =
        chunk->isOrdered ? messages.begin() : std::min_element(messages.begin(), messages.end(), isBefore);
    const bool isTooEarly = first != messages.end() && first->time < m_releasedTime;
    m_order.add(std::move(chunk));
    if (m_starts.empty() || offset > m_starts.back().offset) {
        if (isTooEarly && !m_orderIsLost) {
            report(StreamProblem::DisorderedTimes, offset, 0,
                   QCoreApplication::translate(
                       "McapStream",
                       "a chunk, or a second without chunks, is earlier than the one before the last, and "
                       "there is no index"));
            m_orderIsLost = true;
        }
        m_order.release(m_greatestTime, m_sink);
        m_releasedTime = m_greatestTime;
        m_greatestTime = std::max(m_greatestTime, latest);
    } else {
        const auto next = laterStart(offset);
        m_order.release(next == m_starts.end() ? std::numeric_limits<quint64>::max() : next->earliest, m_sink);
    }
    while (m_order.getHeldBytes() > MostHeldBytes) {
        if (!m_orderIsLost)
            report(StreamProblem::DisorderedTimes, offset, 0,
                   QCoreApplication::translate("McapStream", "chunks overlap by more than %1 MiB")
                       .arg(MostHeldBytes >> 20));
        m_orderIsLost = true;
        m_order.releaseOne(m_sink);
    }
}

/** Reads what there is of a chunk that was cut off; the number of messages. */
int McapReader::salvageChunk()
{
    quint64 size = m_plainSize;
    std::unique_ptr<Chunk> chunk = std::move(m_plainChunk);
    if (!chunk) {
        bool good = false;
        QByteArray error;
        chunk = decompress(m_gathered.data(), m_gathered.size(), &good, &size, &error);
    }
    parseChunk(chunk.get(), size, false);
    const int count = int(chunk->messages.size());
    m_order.add(std::move(chunk));
    return count;
}
