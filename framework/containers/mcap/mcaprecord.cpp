#include "mcaprecord.h"

#include <libdeflate.h>
#include <lz4frame.h>
#include <zlib.h>
#include <zstd.h>

#include <algorithm>

namespace Mcap
{

bool Schema::read(Cursor cursor)
{
    id = cursor.number<quint16>();
    name = cursor.text();
    encoding = cursor.text();
    data = cursor.text();
    return cursor.isGood();
}

bool Channel::read(Cursor cursor)
{
    id = cursor.number<quint16>();
    schema = cursor.number<quint16>();
    topic = cursor.text();
    encoding = cursor.text();
    return cursor.isGood();
}

bool ChunkHead::read(Cursor cursor, quint64 length)
{
    start = cursor.number<quint64>();
    end = cursor.number<quint64>();
    uncompressedSize = cursor.number<quint64>();
    crc = cursor.number<quint32>();
    compression = cursor.text();
    recordsSize = cursor.number<quint64>();
    return cursor.isGood() && compression.size() <= GreatestCompressionName && start <= end && recordsSize <= length &&
           length - recordsSize == quint64(size());
}

bool ChunkIndex::read(Cursor cursor)
{
    start = cursor.number<quint64>();
    end = cursor.number<quint64>();
    offset = cursor.number<quint64>();
    length = cursor.number<quint64>();
    const bool isGood = cursor.isGood();
    // Each channel has an index of its own, with 16 bytes for a message.
    const QByteArray map = cursor.text();
    const int entry = int(sizeof(quint16) + sizeof(quint64));
    const int count = int(map.size()) / entry;
    const quint64 heads = quint64(count) * (RecordHeadSize + sizeof(quint16) + sizeof(quint32));
    const quint64 indexes = cursor.number<quint64>();
    if (cursor.isGood() && count > 0 && indexes >= heads) {
        messages = qint64((indexes - heads) / (2 * sizeof(quint64)));
        for (int i = 0; i < count; ++i)
            channels.push_back(qFromLittleEndian<quint16>(map.constData() + i * entry));
    }
    return isGood;
}

bool Statistics::read(Cursor cursor)
{
    messages = cursor.number<quint64>();
    cursor.skip(2 + 4 + 4 + 4); // schemas, channels, attachments, metadata
    chunks = cursor.number<quint32>();
    start = cursor.number<quint64>();
    end = cursor.number<quint64>();
    return cursor.isGood();
}

bool Footer::read(Cursor cursor)
{
    summaryStart = cursor.number<quint64>();
    cursor.skip(8); // where the summary's own index begins
    crc = cursor.number<quint32>();
    return cursor.isGood();
}

quint32 addCrc(quint32 crc, const char* bytes, quint64 size)
{
    // Several times as fast as zlib's.
    return libdeflate_crc32(crc, bytes, size);
}

quint32 combineCrc(quint32 first, quint32 second, quint64 size)
{
    return quint32(crc32_combine(first, second, z_off_t(size)));
}

Decompressor::Decompressor()
    : m_zstd(nullptr)
    , m_lz4(nullptr)
{
}

Decompressor::~Decompressor()
{
    ZSTD_freeDCtx(static_cast<ZSTD_DCtx*>(m_zstd));
    LZ4F_freeDecompressionContext(static_cast<LZ4F_dctx*>(m_lz4));
}

bool Decompressor::isKnown(const QByteArray& compression)
{
    return compression.isEmpty() || compression == "lz4" || compression == "zstd";
}

bool Decompressor::run(const QByteArray& compression, const char* input, quint64 size, char* output, quint64 capacity,
                       quint64* written, QByteArray* error)
{
    *written = 0;
    if (compression == "zstd")
        return runZstd(input, size, output, capacity, written, error);
    if (compression == "lz4")
        return runLz4(input, size, output, capacity, written, error);
    *written = std::min(size, capacity);
    if (*written > 0)
        std::memcpy(output, input, *written);
    if (size > capacity)
        *error = "it is longer than it says";
    return size <= capacity;
}

bool Decompressor::runZstd(const char* input, quint64 size, char* output, quint64 capacity, quint64* written,
                           QByteArray* error)
{
    if (!m_zstd)
        m_zstd = ZSTD_createDCtx();
    ZSTD_DCtx* const context = static_cast<ZSTD_DCtx*>(m_zstd);
    const std::size_t done = ZSTD_decompressDCtx(context, output, capacity, input, size);
    if (!ZSTD_isError(done)) {
        *written = done;
        return true;
    }
    *error = ZSTD_getErrorName(done);
    // Once more block by block, for what can be had.
    ZSTD_DCtx_reset(context, ZSTD_reset_session_only);
    ZSTD_inBuffer in = {input, size, 0};
    ZSTD_outBuffer out = {output, capacity, 0};
    std::size_t before = 0;
    do {
        before = out.pos;
        if (ZSTD_isError(ZSTD_decompressStream(context, &out, &in)))
            break;
    } while (out.pos < out.size && (in.pos < in.size || out.pos > before));
    *written = out.pos;
    ZSTD_DCtx_reset(context, ZSTD_reset_session_only);
    return false;
}

bool Decompressor::runLz4(const char* input, quint64 size, char* output, quint64 capacity, quint64* written,
                          QByteArray* error)
{
    LZ4F_dctx* context = static_cast<LZ4F_dctx*>(m_lz4);
    if (!context) {
        const std::size_t result = LZ4F_createDecompressionContext(&context, LZ4F_VERSION);
        if (LZ4F_isError(result)) {
            *error = LZ4F_getErrorName(result);
            return false;
        }
        m_lz4 = context;
    }
    LZ4F_resetDecompressionContext(context);
    LZ4F_decompressOptions_t options;
    std::memset(&options, 0, sizeof options);
    options.stableDst = 1;
    quint64 read = 0;
    std::size_t hint = 1;
    while (hint != 0) {
        std::size_t in = size - read;
        std::size_t out = capacity - *written;
        hint = LZ4F_decompress(context, output + *written, &out, input + read, &in, &options);
        if (LZ4F_isError(hint)) {
            *error = LZ4F_getErrorName(hint);
            return false;
        }
        read += in;
        *written += out;
        if (hint != 0 && in == 0 && out == 0) {
            *error = read == size ? "it ends too early" : "it is longer than it says";
            return false;
        }
    }
    if (read < size)
        *error = "bytes follow its end";
    return read == size;
}

} // namespace Mcap
