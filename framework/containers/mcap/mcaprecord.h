#ifndef MCAPRECORD_H
#define MCAPRECORD_H

#include <QByteArray>
#include <QtEndian>

#include <cstring>
#include <vector>

/** The records that an MCAP file consists of: an opcode byte, 8 bytes of length, the body; all little-endian. */
namespace Mcap
{

const int MagicSize = 8;
const char Magic[MagicSize + 1] = "\x89MCAP0\r\n";

enum Opcode : quint8
{
    HeaderRecord = 0x01,
    FooterRecord = 0x02,
    SchemaRecord = 0x03,
    ChannelRecord = 0x04,
    MessageRecord = 0x05,
    ChunkRecord = 0x06,
    MessageIndexRecord = 0x07,
    ChunkIndexRecord = 0x08,
    AttachmentRecord = 0x09,
    AttachmentIndexRecord = 0x0a,
    StatisticsRecord = 0x0b,
    MetadataRecord = 0x0c,
    MetadataIndexRecord = 0x0d,
    SummaryOffsetRecord = 0x0e,
    DataEndRecord = 0x0f
};

const int RecordHeadSize = 9;
const int MessageHeadSize = 22;
const int DataEndSize = 4;
const int FooterSize = 20;
/** Of a chunk's body, up to and with the length of the compression's name. */
const int ChunkHeadSize = 32;
/** No compression has a longer name. */
const int GreatestCompressionName = 16;

/** The most bytes that a chunk may hold, compressed or not; a greater one is passed over. */
const quint64 GreatestChunk = Q_UINT64_C(128) << 20;
/** The longest other record that is read; a greater one is passed over. */
const quint64 GreatestRecord = GreatestChunk;

/** Reads one value after another; behind the end every value is 0 and isGood() is false for good. */
class Cursor
{
public:
    Cursor(const char* bytes, quint64 size)
        : m_at(bytes)
        , m_rest(size)
        , m_good(true)
    {
    }

    template <typename Number>
    Number number()
    {
        const char* const bytes = skip(sizeof(Number));
        return bytes ? qFromLittleEndian<Number>(bytes) : Number(0);
    }

    /** The bytes behind a 4-byte length; they are not copied. */
    QByteArray text()
    {
        const quint32 size = number<quint32>();
        const char* const bytes = skip(size);
        return bytes ? QByteArray::fromRawData(bytes, int(size)) : QByteArray();
    }

    /** Where the next @p size bytes are; null when there are fewer. */
    const char* skip(quint64 size)
    {
        if (size > m_rest) {
            m_good = false;
            m_rest = 0;
            return nullptr;
        }
        const char* const bytes = m_at;
        m_at += size;
        m_rest -= size;
        return bytes;
    }

    bool isGood() const { return m_good; }
    const char* at() const { return m_at; }
    quint64 rest() const { return m_rest; }

private:
    const char* m_at;
    quint64 m_rest;
    bool m_good;
};

struct RecordHead
{
    explicit RecordHead(const char* bytes)
        : opcode(quint8(bytes[0]))
        , length(qFromLittleEndian<quint64>(bytes + 1))
    {
    }

    quint8 opcode;
    quint64 length;
};

/** Whether there is no such record: its number is 0, or it is too short for what has to be in it. */
inline bool isNone(const RecordHead& head)
{
    switch (head.opcode) {
    case 0:
        return true;
    case MessageRecord:
        return head.length < quint64(MessageHeadSize);
    case ChunkRecord:
        return head.length < quint64(ChunkHeadSize) + 8;
    case DataEndRecord:
        return head.length < quint64(DataEndSize);
    case FooterRecord:
        return head.length < quint64(FooterSize);
    default:
        return false;
    }
}

/** Texts of what is read lie in the bytes it was read from. Reading gives false when the body is too short. */
struct Schema
{
    bool read(Cursor cursor);

    quint16 id = 0; ///< never 0 in a right file
    QByteArray name;
    QByteArray encoding;
    QByteArray data;
};

struct Channel
{
    bool read(Cursor cursor);

    quint16 id = 0;
    quint16 schema = 0; ///< 0 for none
    QByteArray topic;
    QByteArray encoding;
};

struct MessageHead
{
    explicit MessageHead(const char* bytes)
        : channel(qFromLittleEndian<quint16>(bytes))
        , sequence(qFromLittleEndian<quint32>(bytes + 2))
        , time(qFromLittleEndian<quint64>(bytes + 6))
    {
    }

    /** The time of publication, nanoseconds since 1970, which stands directly before the content. */
    static quint64 publishTime(const char* content) { return qFromLittleEndian<quint64>(content - sizeof(quint64)); }

    quint16 channel;
    quint32 sequence; ///< 0 for none
    quint64 time;     ///< nanoseconds since 1970
};

struct ChunkHead
{
    /**
     * Reads the beginning of a chunk's body.
     *
     * @return whether it is complete and its lengths agree with @p length, that of the body: noise hardly ever does
     */
    bool read(Cursor cursor, quint64 length);

    /** Bytes of the body before the records. */
    int size() const { return ChunkHeadSize + int(compression.size()) + 8; }

    quint64 start = 0; ///< nanoseconds since 1970
    quint64 end = 0;
    quint64 uncompressedSize = 0;
    quint32 crc = 0; ///< of the uncompressed records; 0 when not given
    QByteArray compression;
    quint64 recordsSize = 0;
    quint64 extension = 0; ///< bytes of the body behind the records, of which nothing is known
};

struct ChunkIndex
{
    bool read(Cursor cursor);

    quint64 start = 0;
    quint64 end = 0;
    quint64 offset = 0;
    quint64 length = 0;            ///< of the whole record
    qint64 messages = -1;          ///< in the chunk, as far as it has an index of them; else -1
    std::vector<quint16> channels; ///< of these messages
};

struct Statistics
{
    bool read(Cursor cursor);

    quint64 messages = 0;
    quint32 chunks = 0;
    quint64 start = 0;
    quint64 end = 0;
};

struct Footer
{
    bool read(Cursor cursor);

    quint64 summaryStart = 0; ///< 0 for none
    quint32 crc = 0;          ///< of the summary; 0 when not given
};

/** Goes on from zlib's CRC-32 of what came before; 0 at the beginning. */
quint32 addCrc(quint32 crc, const char* bytes, quint64 size);

/** The CRC-32 of bytes with the CRC-32 @p first and @p size bytes with the CRC-32 @p second behind them. */
quint32 combineCrc(quint32 first, quint32 second, quint64 size);

/** Takes the records of a chunk out of their compression. */
class Decompressor
{
public:
    Decompressor();
    ~Decompressor();
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;

    static bool isKnown(const QByteArray& compression);

    /**
     * @param compression  one that is known
     * @param capacity     bytes at @p output; no more is ever written
     * @param written      how many there were, also when false is returned
     * @param error        set when false is returned
     * @return whether the input was complete and right
     */
    bool run(const QByteArray& compression, const char* input, quint64 size, char* output, quint64 capacity,
             quint64* written, QByteArray* error);

private:
    bool runLz4(const char* input, quint64 size, char* output, quint64 capacity, quint64* written, QByteArray* error);
    bool runZstd(const char* input, quint64 size, char* output, quint64 capacity, quint64* written, QByteArray* error);

    void* m_zstd; // contexts, made when they are needed
    void* m_lz4;
};

} // namespace Mcap

#endif
