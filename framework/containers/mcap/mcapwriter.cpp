#include "mcapwriter.h"

#include "mcaprecord.h"

#include <QFileDevice>
#include <QMap>
#include <QVector>

#include <lz4frame.h>
#include <zstd.h>

#include <algorithm>
#include <limits>

using namespace Mcap;

namespace
{

template <typename Number>
void append(QByteArray* bytes, Number number)
{
    char text[sizeof(Number)];
    qToLittleEndian(number, text);
    bytes->append(text, sizeof text);
}

void appendText(QByteArray* bytes, const QByteArray& text)
{
    append(bytes, quint32(text.size()));
    bytes->append(text);
}

void appendHead(QByteArray* bytes, Opcode opcode, quint64 length)
{
    bytes->append(char(opcode));
    append(bytes, length);
}

QByteArray record(Opcode opcode, const QByteArray& body)
{
    QByteArray result;
    appendHead(&result, opcode, quint64(body.size()));
    return result + body;
}

const char* compressionName(McapWriter::Compression compression)
{
    switch (compression) {
    case McapWriter::Lz4:
        return "lz4";
    case McapWriter::Zstd:
        return "zstd";
    case McapWriter::NoCompression:
        break;
    }
    return "";
}

} // namespace

McapWriter::Settings::Settings()
    : compression(Zstd)
    , chunkSize(1 << 20)
    , chunkDuration(Q_UINT64_C(1000000000))
    , writerName("corvel")
{
}

struct McapWriter::Private
{
    typedef QVector<QPair<quint64, quint64>> Places; // time, offset among the records of the chunk

    struct ChunkEntry
    {
        quint64 start;
        quint64 end;
        quint64 offset;
        quint64 length;
        QMap<quint16, quint64> indexOffsets; // by channel, of the message index records
        quint64 indexLength;
        quint64 compressedSize;
        quint64 uncompressedSize;
    };

    Private(QIODevice* where, const Settings& how)
        : device(where)
        , settings(how)
        , context(nullptr)
    {
    }
    ~Private() { ZSTD_freeCCtx(context); }

    bool write(const QByteArray& bytes);
    bool flushFile();
    bool compress(QByteArray* compressed);
    bool writeChunk();
    QByteArray summary(quint64 summaryStart, quint64* offsetsStart) const;

    QIODevice* const device;
    const Settings settings;
    ZSTD_CCtx* context;
    QString error;
    bool closed = false;
    quint64 position = 0;
    quint32 crc = 0; // of everything before

    QVector<QByteArray> schemas; // records
    QVector<QByteArray> channels;
    QMap<quint16, quint64> counts; // messages by channel
    quint64 messages = 0;
    quint64 start = std::numeric_limits<quint64>::max();
    quint64 end = 0;
    QVector<ChunkEntry> chunks;

    // The current chunk.
    QByteArray records;
    QMap<quint16, Places> places;
    quint64 chunkStart = 0;
    quint64 chunkEnd = 0;
};

bool McapWriter::Private::write(const QByteArray& bytes)
{
    if (!error.isEmpty())
        return false;
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 count = device->write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0) {
            error = device->errorString();
            return false;
        }
        done += count;
    }
    crc = addCrc(crc, bytes.constData(), quint64(bytes.size()));
    position += quint64(bytes.size());
    return true;
}

/** Hands what was written to the system, so that it outlives the program. */
bool McapWriter::Private::flushFile()
{
    QFileDevice* const file = qobject_cast<QFileDevice*>(device);
    if (file && error.isEmpty() && !file->flush())
        error = file->errorString();
    return error.isEmpty();
}

bool McapWriter::Private::compress(QByteArray* compressed)
{
    const std::size_t size = std::size_t(records.size());
    std::size_t done = size;
    switch (settings.compression) {
    case NoCompression:
        *compressed = records;
        return true;
    case Lz4: {
        LZ4F_preferences_t preferences;
        std::memset(&preferences, 0, sizeof preferences);
        preferences.frameInfo.contentSize = size;
        compressed->resize(int(LZ4F_compressFrameBound(size, &preferences)));
        done = LZ4F_compressFrame(compressed->data(), std::size_t(compressed->size()), records.constData(), size,
                                  &preferences);
        if (LZ4F_isError(done))
            error = QString::fromLatin1(LZ4F_getErrorName(done));
        break;
    }
    case Zstd:
        if (!context)
            context = ZSTD_createCCtx();
        compressed->resize(int(ZSTD_compressBound(size)));
        done = ZSTD_compressCCtx(context, compressed->data(), std::size_t(compressed->size()), records.constData(),
                                 size, 1);
        if (ZSTD_isError(done))
            error = QString::fromLatin1(ZSTD_getErrorName(done));
        break;
    }
    if (!error.isEmpty())
        return false;
    compressed->resize(int(done));
    return true;
}

bool McapWriter::Private::writeChunk()
{
    if (records.isEmpty())
        return error.isEmpty();
    QByteArray compressed;
    if (!compress(&compressed))
        return false;
    QByteArray body;
    append(&body, chunkStart);
    append(&body, chunkEnd);
    append(&body, quint64(records.size()));
    append(&body, addCrc(0, records.constData(), quint64(records.size())));
    appendText(&body, compressionName(settings.compression));
    append(&body, quint64(compressed.size()));

    ChunkEntry entry;
    entry.start = chunkStart;
    entry.end = chunkEnd;
    entry.offset = position;
    entry.length = quint64(RecordHeadSize + body.size() + compressed.size());
    entry.compressedSize = quint64(compressed.size());
    entry.uncompressedSize = quint64(records.size());
    QByteArray whole;
    appendHead(&whole, ChunkRecord, entry.length - RecordHeadSize);
    whole += body;
    whole += compressed;
    for (auto channel = places.begin(); channel != places.end(); ++channel) {
        entry.indexOffsets.insert(channel.key(), position + quint64(whole.size()));
        std::stable_sort(channel->begin(), channel->end(),
                         [](const auto& left, const auto& right) { return left.first < right.first; });
        QByteArray index;
        append(&index, channel.key());
        append(&index, quint32(channel->size() * 16));
        for (const auto& place : std::as_const(*channel)) {
            append(&index, place.first);
            append(&index, place.second);
        }
        whole += record(MessageIndexRecord, index);
    }
    entry.indexLength = quint64(whole.size()) - entry.length;
    records.resize(0);
    places.clear();
    chunks.append(entry);
    return write(whole) && flushFile();
}

/** The records behind the data: definitions, statistics, an index of chunks, and where each kind begins. */
QByteArray McapWriter::Private::summary(quint64 summaryStart, quint64* offsetsStart) const
{
    QByteArray bytes;
    QByteArray offsets;
    int groupStart = 0;
    const auto endGroup = [&](Opcode opcode) {
        if (bytes.size() == groupStart)
            return;
        QByteArray body;
        append(&body, quint8(opcode));
        append(&body, summaryStart + quint64(groupStart));
        append(&body, quint64(bytes.size() - groupStart));
        offsets += record(SummaryOffsetRecord, body);
        groupStart = int(bytes.size());
    };
    for (const QByteArray& schema : schemas)
        bytes += schema;
    endGroup(SchemaRecord);
    for (const QByteArray& channel : channels)
        bytes += channel;
    endGroup(ChannelRecord);

    QByteArray body;
    append(&body, messages);
    append(&body, quint16(schemas.size()));
    append(&body, quint32(channels.size()));
    append(&body, quint32(0)); // attachments
    append(&body, quint32(0)); // metadata
    append(&body, quint32(chunks.size()));
    append(&body, messages > 0 ? start : quint64(0));
    append(&body, end);
    append(&body, quint32(counts.size() * 10));
    for (auto count = counts.begin(); count != counts.end(); ++count) {
        append(&body, count.key());
        append(&body, count.value());
    }
    bytes += record(StatisticsRecord, body);
    endGroup(StatisticsRecord);

    for (const ChunkEntry& chunk : chunks) {
        body.clear();
        append(&body, chunk.start);
        append(&body, chunk.end);
        append(&body, chunk.offset);
        append(&body, chunk.length);
        append(&body, quint32(chunk.indexOffsets.size() * 10));
        for (auto offset = chunk.indexOffsets.begin(); offset != chunk.indexOffsets.end(); ++offset) {
            append(&body, offset.key());
            append(&body, offset.value());
        }
        append(&body, chunk.indexLength);
        appendText(&body, compressionName(settings.compression));
        append(&body, chunk.compressedSize);
        append(&body, chunk.uncompressedSize);
        bytes += record(ChunkIndexRecord, body);
    }
    endGroup(ChunkIndexRecord);
    *offsetsStart = summaryStart + quint64(bytes.size());
    return bytes + offsets;
}

McapWriter::McapWriter(QIODevice* device, const Settings& settings)
    : m_private(new Private(device, settings))
{
}

McapWriter::~McapWriter() {}

bool McapWriter::open()
{
    QByteArray body;
    appendText(&body, m_private->settings.profile);
    appendText(&body, m_private->settings.writerName);
    return m_private->write(QByteArray(Magic, MagicSize) + record(HeaderRecord, body));
}

quint16 McapWriter::addSchema(const QByteArray& name, const QByteArray& encoding, const QByteArray& data)
{
    if (m_private->schemas.size() >= 0xffff)
        return 0;
    const quint16 number = quint16(m_private->schemas.size() + 1);
    QByteArray body;
    append(&body, number);
    appendText(&body, name);
    appendText(&body, encoding);
    appendText(&body, data);
    m_private->schemas.append(record(SchemaRecord, body));
    m_private->write(m_private->schemas.constLast());
    return number;
}

quint16 McapWriter::addChannel(const QByteArray& topic, const QByteArray& encoding, quint16 schema,
                               const QMap<QByteArray, QByteArray>& metadata)
{
    if (m_private->channels.size() >= 0xffff)
        return 0;
    const quint16 number = quint16(m_private->channels.size() + 1);
    QByteArray body;
    append(&body, number);
    append(&body, schema);
    appendText(&body, topic);
    appendText(&body, encoding);
    QByteArray entries;
    for (auto entry = metadata.begin(); entry != metadata.end(); ++entry) {
        appendText(&entries, entry.key());
        appendText(&entries, entry.value());
    }
    appendText(&body, entries);
    m_private->channels.append(record(ChannelRecord, body));
    m_private->write(m_private->channels.constLast());
    return number;
}

bool McapWriter::writeMessage(quint16 channel, quint32 sequence, quint64 time, const char* data, int size)
{
    return writeMessage(channel, sequence, time, time, data, size);
}

bool McapWriter::writeMessage(quint16 channel, quint32 sequence, quint64 time, quint64 publishTime, const char* data,
                              int size)
{
    Private& writer = *m_private;
    if (!writer.error.isEmpty())
        return false;
    ++writer.messages;
    ++writer.counts[channel];
    writer.start = std::min(writer.start, time);
    writer.end = std::max(writer.end, time);
    if (writer.records.isEmpty()) {
        writer.chunkStart = time;
        writer.chunkEnd = time;
    }
    writer.chunkStart = std::min(writer.chunkStart, time);
    writer.chunkEnd = std::max(writer.chunkEnd, time);
    if (writer.settings.chunkSize > 0)
        writer.places[channel].append(qMakePair(time, quint64(writer.records.size())));
    appendHead(&writer.records, MessageRecord, quint64(MessageHeadSize + size));
    append(&writer.records, channel);
    append(&writer.records, sequence);
    append(&writer.records, time); // logged
    append(&writer.records, publishTime);
    writer.records.append(data, size);
    if (writer.settings.chunkSize <= 0) {
        const bool written = writer.write(writer.records);
        writer.records.resize(0);
        return written;
    }
    const bool full = writer.records.size() >= writer.settings.chunkSize ||
                      writer.chunkEnd - writer.chunkStart >= writer.settings.chunkDuration;
    return full ? flush() : true;
}

bool McapWriter::writeMessage(quint16 channel, quint32 sequence, quint64 time, const QByteArray& data)
{
    return writeMessage(channel, sequence, time, data.constData(), int(data.size()));
}

bool McapWriter::flush()
{
    return m_private->writeChunk();
}

bool McapWriter::close()
{
    Private& writer = *m_private;
    if (writer.closed || !writer.writeChunk())
        return writer.closed && writer.error.isEmpty();
    writer.closed = true;
    QByteArray body;
    append(&body, writer.crc);
    if (!writer.write(record(DataEndRecord, body)))
        return false;

    const quint64 summaryStart = writer.position;
    quint64 offsetsStart = 0;
    QByteArray bytes = writer.summary(summaryStart, &offsetsStart);
    appendHead(&bytes, FooterRecord, FooterSize);
    append(&bytes, summaryStart);
    append(&bytes, offsetsStart);
    append(&bytes, addCrc(0, bytes.constData(), quint64(bytes.size())));
    bytes.append(Magic, MagicSize);
    return writer.write(bytes) && writer.flushFile();
}

quint64 McapWriter::getMessageCount() const
{
    return m_private->messages;
}

quint64 McapWriter::getWrittenSize() const
{
    return m_private->position;
}

QString McapWriter::getErrorString() const
{
    return m_private->error;
}
