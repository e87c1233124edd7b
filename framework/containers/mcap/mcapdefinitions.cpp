#include "mcapdefinitions.h"

#include <QFile>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

using namespace Mcap;

// More than any recording announces; one that goes on announcing must not fill the memory.
static const quint64 MostBytes = quint64(64) << 20;

McapDefinitions::McapDefinitions(QFile* file)
    : m_file(file)
    , m_bytes(0)
    , m_inChunk(false)
    , m_chunk{0, 0}
    , m_hasIndex(false)
{
}

void McapDefinitions::add(quint64 offset, const char* record, quint64 size)
{
    const RecordHead head(record);
    const quint16 id = Cursor(record + RecordHeadSize, size - RecordHeadSize).number<quint16>();
    QHash<quint16, QByteArray>& newest = head.opcode == ChannelRecord ? m_channels : m_schemas;
    if (head.opcode == ChannelRecord)
        m_named.insert(id);
    if (m_bytes + size > MostBytes || newest.value(id) == QByteArray::fromRawData(record, int(size)))
        return;
    // The same words about a channel mean something else behind another schema.
    if (head.opcode == SchemaRecord) {
        for (auto channel = m_channels.begin(); channel != m_channels.end();) {
            Cursor cursor(channel->constData() + RecordHeadSize, quint64(channel->size()) - RecordHeadSize);
            cursor.skip(sizeof(quint16));
            channel = cursor.number<quint16>() == id ? m_channels.erase(channel) : std::next(channel);
        }
    }
    m_bytes += size;
    const QByteArray copy(record, int(size));
    newest.insert(id, copy);
    m_found.append(McapIndex::Definition{offset, copy});
}

void McapDefinitions::beginChunk(quint64 offset, quint64 length)
{
    endChunk();
    m_inChunk = true;
    m_chunk = Place{offset, length};
    m_hasIndex = false;
    m_indexed.clear();
}

void McapDefinitions::addMessageIndex(const char* body, quint64 size)
{
    Cursor cursor(body, size);
    const quint16 channel = cursor.number<quint16>();
    const quint32 entries = cursor.number<quint32>();
    m_hasIndex = true;
    if (entries > 0)
        m_indexed.append(channel);
}

bool McapDefinitions::isNews() const
{
    return std::any_of(m_indexed.begin(), m_indexed.end(),
                       [this](quint16 channel) { return !m_named.contains(channel); });
}

void McapDefinitions::endChunk()
{
    if (!m_inChunk)
        return;
    m_inChunk = false;
    if (m_hasIndex && !isNews()) {
        m_skipped.push_back(m_chunk);
        return;
    }
    scan(m_chunk);
    // Announced in a chunk that has no messages of it.
    for (; isNews() && !m_skipped.empty(); m_skipped.pop_back())
        scan(m_skipped.back());
    for (const quint16 channel : std::as_const(m_indexed))
        m_named.insert(channel); // nobody announces those that are left
}

/** Looks into a chunk; one that is damaged or too great is not read either when its turn comes. */
void McapDefinitions::scan(const Place& chunk)
{
    if (chunk.length > GreatestChunk || !m_file->seek(qint64(chunk.offset)))
        return;
    const QByteArray record = m_file->read(qint64(chunk.length));
    ChunkHead head;
    if (quint64(record.size()) != chunk.length ||
        !head.read(Cursor(record.constData() + RecordHeadSize, chunk.length - RecordHeadSize),
                   chunk.length - RecordHeadSize) ||
        head.uncompressedSize > GreatestChunk || !Decompressor::isKnown(head.compression))
        return;
    const std::unique_ptr<char[]> bytes(new char[std::max<quint64>(1, head.uncompressedSize)]);
    quint64 written = 0;
    QByteArray error;
    if (!m_decompressor.run(head.compression, record.constData() + RecordHeadSize + head.size(), head.recordsSize,
                            bytes.get(), head.uncompressedSize, &written, &error) ||
        written != head.uncompressedSize || (head.crc != 0 && head.crc != addCrc(0, bytes.get(), written)))
        return;
    Cursor cursor(bytes.get(), written);
    while (const char* const inner = cursor.skip(RecordHeadSize)) {
        const RecordHead innerHead(inner);
        if (!cursor.skip(innerHead.length))
            return;
        if (innerHead.opcode == SchemaRecord || innerHead.opcode == ChannelRecord)
            add(chunk.offset, inner, RecordHeadSize + innerHead.length);
    }
}

QVector<McapIndex::Definition> McapDefinitions::take()
{
    endChunk();
    std::stable_sort(m_found.begin(), m_found.end(),
                     [](const McapIndex::Definition& left, const McapIndex::Definition& right) {
                         return left.offset < right.offset;
                     });
    return std::move(m_found);
}
