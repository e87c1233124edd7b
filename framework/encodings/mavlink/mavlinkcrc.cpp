#include "mavlinkcrc.h"

#include <algorithm>
#include <array>

namespace
{

const quint16 ReflectedPolynomial = 0x8408;
const int Slices = 8;

using Table = std::array<quint16, 256>;

// tables[n][byte]: what a byte adds to the checksum when n more bytes follow it in the same step.
constexpr std::array<Table, Slices> makeTables()
{
    std::array<Table, Slices> tables{};
    for (unsigned int byte = 0; byte < 256; ++byte) {
        unsigned int crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? (crc >> 1) ^ ReflectedPolynomial : crc >> 1;
        tables[0][byte] = static_cast<quint16>(crc);
    }
    for (unsigned int byte = 0; byte < 256; ++byte) {
        for (unsigned int slice = 1; slice < Slices; ++slice) {
            const unsigned int before = tables[slice - 1][byte];
            tables[slice][byte] = static_cast<quint16>((before >> 8) ^ tables[0][before & 0xff]);
        }
    }
    return tables;
}

constexpr std::array<Table, Slices> tables = makeTables();

// Apart from add(), which would be called as any exported function is: by way of a table.
inline quint16 addByte(quint16 crc, quint8 byte)
{
    return static_cast<quint16>((crc >> 8) ^ tables[0][(crc ^ byte) & 0xff]);
}

} // namespace

quint16 MavlinkCrc::calculate(const char* bytes, int size, quint16 start)
{
    const quint8* at = reinterpret_cast<const quint8*>(bytes);
    quint16 crc = start;
    for (; size >= Slices; size -= Slices, at += Slices) {
        const unsigned int first = at[0] ^ (crc & 0xffU);
        const unsigned int second = at[1] ^ (crc >> 8);
        crc = tables[7][first] ^ tables[6][second] ^ tables[5][at[2]] ^ tables[4][at[3]] ^ tables[3][at[4]] ^
              tables[2][at[5]] ^ tables[1][at[6]] ^ tables[0][at[7]];
    }
    for (; size > 0; --size, ++at)
        crc = addByte(crc, *at);
    return crc;
}

quint16 MavlinkCrc::add(quint16 crc, quint8 byte)
{
    return addByte(crc, byte);
}

bool MavlinkCrc::canFollow(quint16 crc, quint16 next)
{
    return std::find(tables[0].begin(), tables[0].end(), quint16(next ^ (crc >> 8))) != tables[0].end();
}
