#include "mcapindex.h"

#include "mcapdefinitions.h"
#include "mcaprecord.h"
#include "message.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

using namespace Mcap;

namespace
{

const int FooterRecordSize = RecordHeadSize + FooterSize;
const int DataEndRecordSize = RecordHeadSize + DataEndSize;

// Has an index of a million chunks, and is read at once.
const qint64 GreatestSummary = qint64(256) << 20;
const quint64 GreatestDefinition = quint64(16) << 20;

// Of messages outside of chunks.
const quint64 GreatestStretch = quint64(1) << 20;

qint64 microseconds(quint64 nanoseconds)
{
    return qint64(nanoseconds / 1000);
}

/** A file of which a piece is in memory. */
class FileWindow
{
public:
    explicit FileWindow(QFile* file)
        : m_file(file)
        , m_offset(0)
    {
    }

    /** At most @p size bytes from @p offset on; fewer at the end of the file. */
    QByteArray read(quint64 offset, int size)
    {
        if (offset < m_offset || offset + quint64(size) > m_offset + quint64(m_bytes.size())) {
            // Where reading goes on in small steps much is read at once, and little behind a leap.
            const bool isNear = offset >= m_offset && offset <= m_offset + quint64(m_bytes.size());
            m_offset = offset;
            m_bytes.clear();
            if (m_file->seek(qint64(offset)))
                m_bytes = m_file->read(std::max(size, isNear ? 256 * 1024 : 256));
        }
        const int at = int(offset - m_offset);
        return QByteArray::fromRawData(m_bytes.constData() + at, std::min(size, int(m_bytes.size()) - at));
    }

private:
    QFile* m_file;
    QByteArray m_bytes;
    quint64 m_offset;
};

} // namespace

/** Makes an index of a file. */
class McapIndexReader
{
public:
    McapIndexReader(const QString& path, const RecordingIndex::GoOn& goOn)
        : m_file(path)
        , m_goOn(goOn)
        , m_index(new McapIndex)
        , m_definitions(new McapDefinitions(&m_file))
        , m_messagesInChunks(0)
        , m_inStretch(false)
        , m_tookLong(false)
    {
    }

    McapIndex* load(QString* error)
    {
        if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            *error = m_file.fileName() + QStringLiteral(": ") + m_file.errorString();
            return nullptr;
        }
        if (m_file.read(MagicSize) != QByteArray(Magic, MagicSize)) {
            *error = QCoreApplication::translate("McapIndex", "%1: this is no MCAP file").arg(m_file.fileName());
            return nullptr;
        }
        if (!readSummary()) {
            m_index.reset(new McapIndex);
            m_definitions.reset(new McapDefinitions(&m_file));
            if (!walk()) {
                *error = QCoreApplication::translate("McapIndex", "%1: cancelled").arg(m_file.fileName());
                return nullptr;
            }
        }
        m_index->m_definitions = m_definitions->take();
        std::stable_sort(
            m_index->m_chunks.begin(), m_index->m_chunks.end(),
            [](const McapIndex::Chunk& left, const McapIndex::Chunk& right) { return left.offset < right.offset; });
        quint64 latest = 0;
        for (const McapIndex::Chunk& chunk : std::as_const(m_index->m_chunks)) {
            latest = std::max(latest, chunk.end);
            m_index->m_latestEnds.append(latest);
        }
        m_index->findCuts();
        return m_index.release();
    }

private:
    bool readSummary();
    bool readSummaryRecord(const RecordHead& head, const char* record, quint64 dataEnd, Statistics* statistics);
    bool readDataEnd(qint64 summaryStart);
    bool walk();
    bool walkRecord(quint64 offset, const QByteArray& bytes, const RecordHead& head);

    QFile m_file;
    const RecordingIndex::GoOn m_goOn;
    std::unique_ptr<McapIndex> m_index;
    std::unique_ptr<McapDefinitions> m_definitions;
    qint64 m_messagesInChunks; // as the summary says; -1 when it does not
    bool m_inStretch;          // the last chunk is one of messages outside of chunks
    bool m_tookLong;
};

/** Whether the file has a summary that tells where the messages are. */
bool McapIndexReader::readSummary()
{
    const qint64 footerStart = m_file.size() - MagicSize - FooterRecordSize;
    if (footerStart < MagicSize || !m_file.seek(footerStart))
        return false;
    const QByteArray end = m_file.read(FooterRecordSize + MagicSize);
    if (end.size() != FooterRecordSize + MagicSize || !end.endsWith(QByteArray::fromRawData(Magic, MagicSize)))
        return false;
    const RecordHead footerHead(end.constData());
    Footer footer;
    footer.read(Cursor(end.constData() + RecordHeadSize, FooterSize));
    if (footerHead.opcode != FooterRecord || footerHead.length != FooterSize ||
        footer.summaryStart < quint64(MagicSize) || footer.summaryStart >= quint64(footerStart) ||
        footerStart - qint64(footer.summaryStart) > GreatestSummary || !m_file.seek(qint64(footer.summaryStart)))
        return false;
    const QByteArray summary = m_file.read(footerStart - qint64(footer.summaryStart));
    if (summary.size() != footerStart - qint64(footer.summaryStart))
        return false;
    const quint32 crc = addCrc(addCrc(0, summary.constData(), quint64(summary.size())), end.constData(),
                               FooterRecordSize - sizeof footer.crc);
    if (footer.crc != 0 && footer.crc != crc)
        return false;

    Statistics statistics;
    bool hasStatistics = false;
    m_messagesInChunks = 0;
    Cursor cursor(summary.constData(), quint64(summary.size()));
    while (cursor.rest() > 0) {
        const char* const record = cursor.skip(RecordHeadSize);
        if (!record)
            return false;
        const RecordHead head(record);
        if (!cursor.skip(head.length) || !readSummaryRecord(head, record, footer.summaryStart, &statistics))
            return false;
        hasStatistics = hasStatistics || head.opcode == StatisticsRecord;
    }
    // An index of chunks is not of much use where some or all messages are outside of them.
    const bool areOutside =
        hasStatistics && m_messagesInChunks >= 0 && statistics.messages > quint64(m_messagesInChunks);
    const bool hasIndex = !m_index->m_chunks.isEmpty() && !areOutside &&
                          (!hasStatistics || statistics.chunks == quint32(m_index->m_chunks.size()));
    if (!hasIndex && !(hasStatistics && statistics.messages == 0))
        return false;
    if (hasStatistics)
        m_index->m_messages = qint64(statistics.messages);
    m_index->m_summary = true;
    m_index->m_dataChecksum = readDataEnd(qint64(footer.summaryStart));
    return true;
}

bool McapIndexReader::readSummaryRecord(const RecordHead& head, const char* record, quint64 dataEnd,
                                        Statistics* statistics)
{
    const Cursor body(record + RecordHeadSize, head.length);
    switch (head.opcode) {
    case SchemaRecord:
    case ChannelRecord:
        m_definitions->add(0, record, RecordHeadSize + head.length);
        return true;
    case ChunkIndexRecord: {
        ChunkIndex chunk;
        if (!chunk.read(body) || chunk.offset < quint64(MagicSize) || chunk.offset >= dataEnd ||
            chunk.length > dataEnd - chunk.offset || chunk.start > chunk.end)
            return false;
        m_index->m_chunks.append(
            McapIndex::Chunk{chunk.offset, chunk.length, chunk.start, chunk.end, true, chunk.channels});
        m_messagesInChunks =
            chunk.messages < 0 || m_messagesInChunks < 0 ? qint64(-1) : m_messagesInChunks + chunk.messages;
        return true;
    }
    case StatisticsRecord:
        return statistics->read(body);
    default:
        return true;
    }
}

/** Whether the data's end says a checksum, or cannot be found. */
bool McapIndexReader::readDataEnd(qint64 summaryStart)
{
    if (!m_file.seek(summaryStart - DataEndRecordSize))
        return true;
    const QByteArray record = m_file.read(DataEndRecordSize);
    if (record.size() != DataEndRecordSize)
        return true;
    const RecordHead head(record.constData());
    return head.opcode != DataEndRecord || head.length != quint64(DataEndSize) ||
           qFromLittleEndian<quint32>(record.constData() + RecordHeadSize) != 0;
}

/** Whether nobody put an end to it. */
bool McapIndexReader::walk()
{
    FileWindow window(&m_file);
    const quint64 size = quint64(m_file.size());
    quint64 offset = MagicSize;
    for (int records = 0; offset < size; ++records) {
        // Of messages outside of chunks there are a great many.
        if ((records % 64 == 0 || m_tookLong) && m_goOn && !m_goOn(int(double(offset) / double(size) * 100)))
            return false;
        m_tookLong = false;
        const QByteArray bytes =
            window.read(offset, RecordHeadSize + ChunkHeadSize + GreatestCompressionName + int(sizeof(quint64)));
        if (bytes.size() < RecordHeadSize)
            return true;
        const RecordHead head(bytes.constData());
        if (head.length > size || !walkRecord(offset, bytes, head))
            return true;
        offset += RecordHeadSize + head.length;
    }
    return true;
}

/** Takes note of the record at @p offset, which begins with @p bytes; false where the file ends. */
bool McapIndexReader::walkRecord(quint64 offset, const QByteArray& bytes, const RecordHead& head)
{
    const char* const body = bytes.constData() + RecordHeadSize;
    const quint64 size = quint64(bytes.size()) - RecordHeadSize;
    if (head.opcode == MessageIndexRecord)
        m_definitions->addMessageIndex(body, size);
    else
        m_definitions->endChunk();
    if (isNone(head))
        return head.opcode != 0 || head.length > 0; // a run of zeros is no recording any more
    switch (head.opcode) {
    case FooterRecord:
        return false;
    case ChunkRecord: {
        ChunkHead chunk;
        if (!chunk.read(Cursor(body, size), head.length))
            return false;
        m_index->m_chunks.append(McapIndex::Chunk{offset, RecordHeadSize + head.length, chunk.start, chunk.end});
        m_definitions->beginChunk(offset, RecordHeadSize + head.length);
        m_inStretch = false;
        m_tookLong = true;
        return true;
    }
    case MessageRecord: {
        if (size < quint64(MessageHeadSize))
            return false;
        const quint64 time = MessageHead(body).time;
        QVector<McapIndex::Chunk>& chunks = m_index->m_chunks;
        const bool continues = !chunks.isEmpty() && chunks.constLast().offset + chunks.constLast().length == offset &&
                               chunks.constLast().length < GreatestStretch && m_inStretch;
        if (!continues)
            chunks.append(McapIndex::Chunk{offset, 0, time, time});
        McapIndex::Chunk& stretch = chunks.last();
        stretch.length += RecordHeadSize + head.length;
        stretch.isOrdered = stretch.isOrdered && time >= stretch.end;
        stretch.start = std::min(stretch.start, time);
        stretch.end = std::max(stretch.end, time);
        m_inStretch = true;
        return true;
    }
    case SchemaRecord:
    case ChannelRecord:
        if (head.length <= GreatestDefinition && m_file.seek(qint64(offset))) {
            const QByteArray record = m_file.read(qint64(RecordHeadSize + head.length));
            if (quint64(record.size()) == RecordHeadSize + head.length)
                m_definitions->add(offset, record.constData(), quint64(record.size()));
        }
        return true;
    default:
        return true;
    }
}

McapIndex::McapIndex()
    : m_summary(false)
    , m_dataChecksum(true)
    , m_messages(-1)
{
}

McapIndex::~McapIndex() {}

McapIndex* McapIndex::load(const QString& path, QString* error, const GoOn& goOn)
{
    return McapIndexReader(path, goOn).load(error);
}

McapIndex* McapIndex::load(const QVector<InputFile>& files, QString* error, const GoOn& goOn)
{
    std::unique_ptr<McapIndex> whole;
    quint64 offset = 0;
    for (int i = 0; i < files.size(); ++i) {
        bool stopped = false;
        const std::unique_ptr<McapIndex> part(load(files.at(i).path, error, [&](int percent) {
            stopped = goOn && !goOn((i * 100 + percent) / int(files.size()));
            return !stopped;
        }));
        if (stopped)
            return nullptr;
        if (part && !whole) {
            whole.reset(new McapIndex);
            whole->m_summary = true;
            whole->m_dataChecksum = false;
            whole->m_messages = 0;
        }
        if (part)
            whole->append(*part, offset);
        offset += quint64(files.at(i).size);
    }
    if (whole)
        whole->findCuts();
    return whole.release();
}

/** Adds what is known of a file that follows at that offset. */
void McapIndex::append(const McapIndex& next, quint64 offset)
{
    quint64 latest = m_latestEnds.isEmpty() ? 0 : m_latestEnds.constLast();
    for (Chunk chunk : next.m_chunks) {
        chunk.offset += offset;
        latest = std::max(latest, chunk.end);
        m_chunks.append(chunk);
        m_latestEnds.append(latest);
    }
    for (const Definition& definition : next.m_definitions)
        m_definitions.append({definition.offset + offset, definition.record});
    m_summary = m_summary && next.m_summary;
    m_dataChecksum = m_dataChecksum || next.m_dataChecksum;
    m_messages = m_messages < 0 || next.m_messages < 0 ? -1 : m_messages + next.m_messages;
}

qint64 McapIndex::getStartTime() const
{
    if (m_chunks.isEmpty())
        return Message::NoTime;
    const auto first = std::min_element(m_chunks.begin(), m_chunks.end(),
                                        [](const Chunk& left, const Chunk& right) { return left.start < right.start; });
    return microseconds(first->start);
}

qint64 McapIndex::getEndTime() const
{
    return m_chunks.isEmpty() ? Message::NoTime : microseconds(m_latestEnds.constLast());
}

quint64 McapIndex::findOffset(qint64 time)
{
    const auto found = std::lower_bound(m_latestEnds.constBegin(), m_latestEnds.constEnd(), time,
                                        [](quint64 end, qint64 wanted) { return microseconds(end) < wanted; });
    if (found == m_latestEnds.constBegin())
        return 0;
    if (found == m_latestEnds.constEnd())
        return m_chunks.constLast().offset + m_chunks.constLast().length;
    return m_chunks.at(int(found - m_latestEnds.constBegin())).offset;
}

void McapIndex::findCuts()
{
    m_cuts.clear();
    quint64 earliest = std::numeric_limits<quint64>::max();
    for (int i = int(m_chunks.size()) - 1; i > 0; --i) {
        const Chunk& chunk = m_chunks.at(i);
        if (chunk.end > 0) // one without messages has no times
            earliest = std::min(earliest, chunk.start);
        if (m_latestEnds.at(i - 1) < earliest)
            m_cuts.push_back(chunk.offset);
    }
    std::reverse(m_cuts.begin(), m_cuts.end());
}

quint64 McapIndex::findCut(quint64 offset)
{
    const auto behind = std::upper_bound(m_cuts.begin(), m_cuts.end(), offset);
    return behind == m_cuts.begin() ? 0 : *(behind - 1);
}
