#include "mcapreader.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Mcap;

namespace
{

const quint64 Never = std::numeric_limits<quint64>::max();

// Of a record. No stream is longer, so that ends of records can be told wherever they begin.
const quint64 GreatestLength = Never >> 1;

// What a record of another version may have behind the fields that are known.
const quint64 GreatestExtension = 4096;

// A record that is passed over is looked through when it is longer than this: its length may be wrong.
const quint64 GreatestTrusted = 64 * 1024;

// What is looked at to tell whether a record begins.
const int LongestHead = RecordHeadSize + ChunkHeadSize + GreatestCompressionName + 8;

QString megabytes(quint64 size)
{
    return QCoreApplication::translate("McapStream", "%1 MiB").arg(size >> 20);
}

QString recordName(quint8 opcode)
{
    switch (opcode) {
    case SchemaRecord:
        return QCoreApplication::translate("McapStream", "a schema");
    case ChannelRecord:
        return QCoreApplication::translate("McapStream", "a channel");
    case MessageRecord:
        return QCoreApplication::translate("McapStream", "a message");
    case ChunkRecord:
        return QCoreApplication::translate("McapStream", "a chunk");
    case AttachmentRecord:
        return QCoreApplication::translate("McapStream", "an attachment");
    default:
        return QCoreApplication::translate("McapStream", "a record 0x%1").arg(opcode, 2, 16, QLatin1Char('0'));
    }
}

} // namespace

McapReader::McapReader(Definitions* definitions, bool mustEnd)
    : m_channels(definitions)
    , m_mustEnd(mustEnd)
    , m_fed(false)
    , m_leapt(false)
    , m_fileStarts{0}
    , m_file(0)
    , m_fedEnd(0)
    , m_sink(nullptr)
    , m_input(nullptr)
    , m_inputSize(0)
    , m_gatheredTaken(false)
    , m_state(AtMagic)
    , m_position(0)
    , m_recordOffset(0)
    , m_opcode(0)
    , m_length(0)
    , m_left(0)
    , m_definitionProblems(0)
    , m_plainSize(0)
    , m_plainCrc(0)
    , m_windowOffset(0)
    , m_searchStart(0)
    , m_searchEnd(Never)
    , m_searchIsQuiet(false)
    , m_searchIsForNext(false)
    , m_crc(0)
    , m_crcCovers(true)
    , m_dataCrcIsWanted(true)
    , m_summaryOffset(0)
    , m_ended(false)
    , m_waitingBytes(0)
    , m_hasLost(false)
    , m_hasIndex(false)
    , m_indexEnd(0)
    , m_isInOrder(false)
    , m_leavesOut(false)
    , m_stretchEnd(Never)
    , m_greatestTime(0)
    , m_releasedTime(0)
    , m_orderIsLost(false)
{
}

void McapReader::setFiles(const QVector<InputFile>& files)
{
    m_fileStarts.assign(1, 0);
    for (const InputFile& file : files)
        m_fileStarts.push_back(m_fileStarts.back() + quint64(file.size));
    m_fileStarts.pop_back();
}

/** Where the file that is being fed ends; the greatest number for the last. */
quint64 McapReader::endOfFile() const
{
    return m_file + 1 < m_fileStarts.size() ? m_fileStarts[m_file + 1] : Never;
}

void McapReader::feed(const char* bytes, quint64 size, StreamSink* sink)
{
    // Only then it is certain that another file follows.
    while (m_fedEnd + size > endOfFile()) {
        const quint64 end = endOfFile();
        const quint64 part = end - m_fedEnd;
        feedPart(bytes, part, sink);
        finish(sink);
        restart(end);
        bytes += part;
        size -= part;
    }
    feedPart(bytes, size, sink);
}

void McapReader::feedPart(const char* bytes, quint64 size, StreamSink* sink)
{
    m_fedEnd += size;
    m_sink = sink;
    m_input = bytes;
    m_inputSize = size;
    m_fed = m_fed || size > 0;
    if (m_leapt)
        catchUpOnDefinitions();
    while (step()) {
    }
    m_backlog.clear();
    m_sink = nullptr;
}

/** Works one part of a record off; false when that needs more bytes. */
bool McapReader::step()
{
    switch (m_state) {
    case AtMagic:
        return readMagic();
    case AtRecord:
        return readRecordHead();
    case InRecord:
        return readRecord();
    case InChunkHead:
        return readChunkHead();
    case InChunkName:
        return readChunkName();
    case InChunk:
        return readChunk();
    case Skipping:
        return skip();
    case Searching:
        return search(LongestHead);
    case AtEndMagic:
        return readEndMagic();
    case AtEnd:
        return passOverEnd();
    }
    return false;
}

/** The next @p size bytes, valid until the next call; null, with those that are there kept, when there are fewer. */
const char* McapReader::take(quint64 size)
{
    if (m_gatheredTaken) {
        // What a great record took is given back.
        if (m_gathered.capacity() > 4 << 20)
            std::vector<char>().swap(m_gathered);
        m_gathered.clear();
        m_gatheredTaken = false;
    }
    const char* const bytes = m_input;
    const quint64 used = std::min(size - m_gathered.size(), m_inputSize);
    m_input += used;
    m_inputSize -= used;
    if (m_gathered.empty() && used == size)
        return bytes ? bytes : "";
    m_gathered.insert(m_gathered.end(), bytes, bytes + used);
    if (m_gathered.size() < size)
        return nullptr;
    m_gatheredTaken = true;
    return m_gathered.data();
}

/** Counts bytes as worked off. */
void McapReader::account(const char* bytes, quint64 size)
{
    m_position += size;
    if (isCrcWanted())
        m_crc = addCrc(m_crc, bytes, size);
}

bool McapReader::readMagic()
{
    const char* const bytes = take(MagicSize);
    if (!bytes)
        return false;
    account(bytes, MagicSize);
    if (std::memcmp(bytes, Magic, MagicSize) == 0)
        m_state = AtRecord;
    else
        startSearch(m_position - MagicSize, Never, QByteArray(bytes, MagicSize),
                    QCoreApplication::translate("McapStream", "an MCAP file begins otherwise"));
    return true;
}

/** What cannot be about a record; empty when it can be. */
QString McapReader::whyImpossible(const RecordHead& head)
{
    if (head.opcode == 0)
        return QCoreApplication::translate("McapStream", "no record has the number 0");
    quint64 most = GreatestRecord;
    switch (head.opcode) {
    case ChunkRecord:
    case AttachmentRecord:
        most = GreatestLength;
        break;
    case DataEndRecord:
    case FooterRecord:
        most = GreatestExtension;
        break;
    default:
        break;
    }
    if (!isNone(head) && head.length <= most)
        return QString();
    return QCoreApplication::translate("McapStream", "%1 of %2 bytes").arg(recordName(head.opcode)).arg(head.length);
}

bool McapReader::readRecordHead()
{
    const char* const bytes = take(RecordHeadSize);
    if (!bytes)
        return false;
    const RecordHead head(bytes);
    m_recordOffset = m_position;
    const QString impossible = whyImpossible(head);
    if (!impossible.isEmpty()) {
        // A record that is merely too long is believed when nothing in it speaks against that.
        const bool isLong = head.length > GreatestExtension && head.length <= GreatestLength;
        const quint64 end =
            isNone(head) || isLong ? m_position + RecordHeadSize + std::min(head.length, GreatestRecord) : Never;
        const QByteArray consumed(bytes, RecordHeadSize);
        m_position += RecordHeadSize;
        startSearch(m_recordOffset, end, consumed, impossible);
        m_searchIsForNext = isNone(head);
        return true;
    }
    if (head.opcode == DataEndRecord)
        m_position += RecordHeadSize; // the checksum in it is that of what comes before
    else
        account(bytes, RecordHeadSize);
    m_opcode = head.opcode;
    m_length = head.length;
    m_left = head.length;
    switch (head.opcode) {
    case SchemaRecord:
    case ChannelRecord:
    case MessageRecord:
    case DataEndRecord:
    case FooterRecord:
        m_state = InRecord;
        break;
    case ChunkRecord:
        endStretch();
        m_state = InChunkHead;
        break;
    case AttachmentRecord: // may well contain a recording
        m_state = Skipping;
        break;
    default:
        m_state = Skipping;
        if (head.length > GreatestTrusted) {
            startSearch(m_recordOffset, m_position + head.length, QByteArray(bytes, RecordHeadSize),
                        QCoreApplication::translate("McapStream", "%1 of %2 bytes")
                            .arg(recordName(head.opcode))
                            .arg(head.length));
            m_searchIsQuiet = true;
        }
        break;
    }
    return true;
}

bool McapReader::readRecord()
{
    const char* const body = take(m_length);
    if (!body)
        return false;
    if (m_opcode == DataEndRecord)
        m_position += m_length;
    else if (m_opcode == FooterRecord)
        account(body, FooterSize - 4);
    else
        account(body, m_length);
    m_state = AtRecord;
    processRecord(body, m_length);
    return true;
}

void McapReader::processRecord(const char* body, quint64 size)
{
    switch (m_opcode) {
    case SchemaRecord:
    case ChannelRecord:
        // In the summary they stand once more.
        addDefinition(m_opcode, body, size);
        break;
    case MessageRecord:
        processMessage(body, size);
        break;
    case DataEndRecord:
        endStretch();
        m_order.release(Never, m_sink);
        if (m_crcCovers && m_dataCrcIsWanted && !m_leavesOut)
            checkCrc(qFromLittleEndian<quint32>(body), m_crc,
                     QCoreApplication::translate("McapStream", "the data of the file"));
        m_crc = 0;
        m_crcCovers = true;
        m_summaryOffset = m_position;
        break;
    case FooterRecord: {
        giveUpWaiting();
        endStretch();
        m_order.release(Never, m_sink);
        Footer footer;
        footer.read(Cursor(body, size));
        const bool covers = !m_leavesOut && m_crcCovers &&
                            (footer.summaryStart == m_summaryOffset - m_fileStarts[m_file] || footer.summaryStart == 0);
        if (covers && m_summaryOffset != 0)
            checkCrc(footer.crc, m_crc, QCoreApplication::translate("McapStream", "the summary"));
        m_position += m_length - (FooterSize - 4);
        m_ended = true;
        m_state = AtEndMagic;
        break;
    }
    default:
        break;
    }
}

bool McapReader::checkCrc(quint32 given, quint32 right, const QString& what)
{
    if (given == 0 || given == right)
        return true;
    const auto hex = [](quint32 crc) { return QStringLiteral("0x%1").arg(crc, 8, 16, QLatin1Char('0')); };
    report(StreamProblem::ChecksumFailure, m_recordOffset, m_position - m_recordOffset,
           QCoreApplication::translate("McapStream", "%1 should have the CRC %2 and has %3")
               .arg(what, hex(given), hex(right)));
    return false;
}

bool McapReader::skip()
{
    const quint64 used = std::min(m_left, m_inputSize);
    account(m_input, used);
    m_input += used;
    m_inputSize -= used;
    m_left -= used;
    if (m_left > 0)
        return false;
    m_state = AtRecord;
    return true;
}

/**
 * Gives up a record that cannot be one, and looks for the next that can.
 *
 * @param since     where the record begins
 * @param until     where it ends, if it is to be believed when nothing is found before; else Never
 * @param consumed  bytes from @p since on
 */
void McapReader::startSearch(quint64 since, quint64 until, const QByteArray& consumed, const QString& reason)
{
    m_state = Searching;
    m_crcCovers = false;
    m_window = consumed;
    m_windowOffset = since;
    m_searchStart = since;
    m_searchEnd = until;
    m_searchReason = reason;
    m_hasLost = true;
    m_searchIsQuiet = false;
    m_searchIsForNext = false;
}

/** Whether a record follows one that is none itself, at m_searchEnd; that may move on with more of them. */
bool McapReader::isNext(const char* bytes)
{
    const RecordHead head(bytes);
    if (head.opcode <= DataEndRecord && isNone(head))
        m_searchEnd += RecordHeadSize + std::min(head.length, GreatestRecord);
    return head.opcode <= DataEndRecord && whyImpossible(head).isEmpty();
}

/** Whether a chunk begins there, or what follows the last: all others are too easily mistaken. */
bool McapReader::isPlausible(const char* bytes, quint64 size)
{
    const RecordHead head(bytes);
    switch (head.opcode) {
    case ChunkRecord: {
        ChunkHead chunk;
        return head.length <= GreatestLength &&
               chunk.read(Cursor(bytes + RecordHeadSize, size - RecordHeadSize), head.length) && chunk.extension == 0;
    }
    case DataEndRecord:
        return head.length == DataEndSize;
    case FooterRecord:
        return head.length == FooterSize;
    default:
        return false;
    }
}

/** Goes on with a search as far as there are @p least bytes to tell a record by. */
bool McapReader::search(int least)
{
    m_window.append(m_input, int(m_inputSize));
    m_position = m_windowOffset + quint64(m_window.size());
    m_inputSize = 0;
    const char* const begin = m_window.constData();
    const char* const end = begin + m_window.size();
    const char* candidate = begin + (m_windowOffset == m_searchStart ? 1 : 0);
    for (; end - candidate >= least; ++candidate) {
        const quint64 offset = m_windowOffset + quint64(candidate - begin);
        const bool isEnd = offset == m_searchEnd && (!m_searchIsForNext || isNext(candidate));
        if (isEnd || isPlausible(candidate, quint64(end - candidate))) {
            endSearch(offset);
            return true;
        }
    }
    const int searched = int(qMax(qint64(0), qint64(candidate - begin)));
    m_window.remove(0, searched);
    m_windowOffset += quint64(searched);
    return false;
}

void McapReader::endSearch(quint64 found)
{
    if (found == m_searchEnd && m_searchIsQuiet)
        m_searchIsQuiet = false;
    else if (found == m_searchEnd && !m_searchIsForNext)
        report(StreamProblem::UnsupportedFrame, m_searchStart, found - m_searchStart,
               QCoreApplication::translate("McapStream", "%1 was passed over, %2 are read")
                   .arg(m_searchReason, megabytes(GreatestRecord)));
    else
        report(StreamProblem::SkippedBytes, m_searchStart, found - m_searchStart, m_searchReason);
    m_backlog = m_window.mid(int(found - m_windowOffset));
    m_window.clear();
    m_input = m_backlog.constData();
    m_inputSize = quint64(m_backlog.size());
    m_position = found;
    m_searchEnd = Never;
    m_state = AtRecord;
}

bool McapReader::readEndMagic()
{
    const char* const bytes = take(MagicSize);
    if (!bytes)
        return false;
    m_position += MagicSize;
    if (std::memcmp(bytes, Magic, MagicSize) != 0)
        report(StreamProblem::SkippedBytes, m_position - MagicSize, MagicSize,
               QCoreApplication::translate("McapStream", "an MCAP file ends otherwise"));
    m_left = 0;
    m_state = AtEnd;
    return true;
}

bool McapReader::passOverEnd()
{
    m_left += m_inputSize;
    m_position += m_inputSize;
    m_inputSize = 0;
    return false;
}

void McapReader::finish(StreamSink* sink)
{
    m_sink = sink;
    // What is left of the stream is less than is looked at otherwise.
    if (m_state == Searching && search(RecordHeadSize)) {
        while (step()) {
        }
        m_backlog.clear();
    }
    const quint64 kept = m_gatheredTaken ? 0 : m_gathered.size();
    const quint64 end = m_position + kept;
    const quint64 start =
        m_state == AtRecord || m_state == AtMagic || m_state == AtEndMagic ? m_position : m_recordOffset;
    if (m_state == Searching) {
        report(m_searchIsQuiet ? StreamProblem::TruncatedFrame : StreamProblem::SkippedBytes, m_searchStart,
               end - m_searchStart, m_searchReason);
    } else if (m_state == AtEnd) {
        if (m_left > 0)
            report(StreamProblem::SkippedBytes, m_position - m_left, m_left,
                   QCoreApplication::translate("McapStream", "they follow the end of the recording"));
    } else if (end > start) {
        QString text;
        if (m_state == InChunk) {
            text = QCoreApplication::translate("McapStream", "inside a chunk, of which %1 messages can be read")
                       .arg(salvageChunk());
        } else if (m_state != AtRecord && m_state != AtMagic && m_state != AtEndMagic) {
            text = QCoreApplication::translate("McapStream", "inside %1").arg(recordName(m_opcode));
        }
        report(StreamProblem::TruncatedFrame, start, end - start, text);
    } else if (m_mustEnd && m_fed && m_state != AtMagic) {
        report(StreamProblem::TruncatedFrame, end, 0,
               m_ended
                   ? QCoreApplication::translate("McapStream", "the last 8 bytes are missing")
                   : QCoreApplication::translate("McapStream", "the recording has no end mark, it was not finished"));
    }
    giveUpWaiting();
    endStretch();
    m_order.release(Never, m_sink);
    m_sink = nullptr;
    m_fed = false;
    restart(end);
}

void McapReader::restart(quint64 offset)
{
    std::vector<char>().swap(m_gathered);
    m_gatheredTaken = false;
    m_window.clear();
    m_chunkHeadBytes.clear();
    m_plainChunk.reset();
    m_order.clear();
    m_stretch.clear();
    m_waiting.clear();
    m_waitingBytes = 0;
    const std::size_t file =
        std::size_t(std::upper_bound(m_fileStarts.begin() + 1, m_fileStarts.end(), offset) - m_fileStarts.begin() - 1);
    if (file != m_file)
        m_channels.beginFile();
    m_file = file;
    m_fedEnd = offset;
    const bool isAtStart = offset == m_fileStarts[m_file];
    m_leapt = !isAtStart;
    m_state = isAtStart ? AtMagic : AtRecord;
    m_position = offset;
    m_searchEnd = Never;
    m_crc = 0;
    m_crcCovers = isAtStart;
    m_summaryOffset = 0;
    m_ended = false;
    m_greatestTime = 0;
    m_releasedTime = 0;
    m_orderIsLost = false;
}

void McapReader::report(StreamProblem::Kind kind, quint64 offset, quint64 length, const QString& text)
{
    StreamProblem problem;
    problem.kind = kind;
    problem.offset = offset;
    problem.length = length;
    problem.text = text;
    m_hasLost = m_hasLost || kind != StreamProblem::DisorderedTimes;
    m_sink->processProblem(problem);
}

/** @param channel  that cannot be decoded, or null when it is another matter */
void McapReader::reportDefinition(const QString& text, const McapChannels::Entry* channel)
{
    if (text.isEmpty())
        return;
    StreamProblem problem;
    problem.kind = StreamProblem::UnusableDefinition;
    problem.offset = m_recordOffset;
    // Each is about something else, and no channel has such a number.
    problem.id = channel && !channel->info ? channel->id : ~m_definitionProblems++;
    problem.text = text;
    m_sink->processProblem(problem);
}
