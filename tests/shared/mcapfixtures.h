#ifndef MCAPFIXTURES_H
#define MCAPFIXTURES_H

#include "mcapwriter.h"

#include <QBuffer>
#include <QtEndian>

#include <cstring>

/** Recordings of a small type, "demo.Point { double x = 1; uint32 n = 2; }". */
namespace McapFixtures
{

const quint64 Millisecond = 1000000;

/** A field with a length before its bytes, as Protocol Buffers have it; everything is shorter than 128 bytes. */
inline QByteArray part(int number, const QByteArray& bytes)
{
    return QByteArray(1, char(number << 3 | 2)) + char(bytes.size()) + bytes;
}

inline QByteArray number(int field, int value)
{
    return QByteArray(1, char(field << 3)) + char(value);
}

/** The FileDescriptorSet; with @p more the type has a third field of that name. */
inline QByteArray schema(const QByteArray& package = "demo", const char* more = nullptr)
{
    const auto field = [](const char* name, int no, int type) {
        return part(2, part(1, name) + number(3, no) + number(4, 1) + number(5, type));
    };
    const QByteArray point =
        part(1, "Point") + field("x", 1, 1) + field("n", 2, 13) + (more ? field(more, 3, 13) : QByteArray());
    return part(1, part(1, package + ".proto") + part(2, package) + part(4, point) + part(12, "proto3"));
}

/** A message whose n is @p n, with @p filling bytes of an unknown field behind. */
inline QByteArray point(int n, int filling = 0)
{
    QByteArray bytes(9, char(1 << 3 | 1));
    const double x = n * 0.5;
    std::memcpy(bytes.data() + 1, &x, sizeof x);
    bytes += char(2 << 3);
    bytes += char(0x80 | (n & 0x7f));
    bytes += char(0x80 | (n >> 7 & 0x7f));
    bytes += char(n >> 14 & 0x7f);
    for (; filling > 0; filling -= 100)
        bytes += part(15, QByteArray(qMin(filling, 100), char('a' + n % 20)));
    return bytes;
}

/** A recording that is being written into memory. */
struct Recording
{
    explicit Recording(const McapWriter::Settings& settings)
        : writer((buffer.open(QIODevice::WriteOnly), &buffer), settings)
    {
        writer.open();
    }

    QByteArray finished()
    {
        writer.close();
        return buffer.data();
    }

    quint16 addPoints(const QByteArray& topic)
    {
        return writer.addChannel(topic, "protobuf", writer.addSchema("demo.Point", "protobuf", schema()));
    }

    QBuffer buffer;
    McapWriter writer;
};

inline McapWriter::Settings settings(McapWriter::Compression compression, int chunkSize)
{
    McapWriter::Settings settings;
    settings.compression = compression;
    settings.chunkSize = chunkSize;
    settings.chunkDuration = ~quint64(0);
    return settings;
}

template <typename Number>
QByteArray little(Number number)
{
    QByteArray bytes(int(sizeof number), 0);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

inline QByteArray record(int opcode, const QByteArray& body)
{
    return QByteArray(1, char(opcode)) + little(quint64(body.size())) + body;
}

/** A chunk's record without a checksum, with what it says of its sizes. */
inline QByteArray chunk(const QByteArray& compression, const QByteArray& records, quint64 uncompressedSize,
                        quint64 recordsSize)
{
    return record(6, little(quint64(0)) + little(quint64(1)) + little(uncompressedSize) + little(quint32(0)) +
                         little(quint32(compression.size())) + compression + little(recordsSize) + records);
}

} // namespace McapFixtures

#endif
