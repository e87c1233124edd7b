#ifndef MAVLINKFRAME_H
#define MAVLINKFRAME_H

#include <QtEndian>

/** How MAVLink frames lie in bytes. */
namespace MavlinkFrame
{

enum
{
    MagicV1 = 0xFE,
    MagicV2 = 0xFD,
    HeaderSizeV1 = 6,
    HeaderSizeV2 = 10,
    ChecksumSize = 2,
    SignatureSize = 13,
    MaximumSize = HeaderSizeV2 + 255 + ChecksumSize + SignatureSize,
    TimeSize = 8 ///< the time before each frame of a tlog
};

/** The incompatibility flag of a frame with a signature: the only one there is. */
const quint8 SignedFlag = 0x01;

// Years 1990 and 2100 in microseconds since 1970: a time stamp outside is no time stamp.
const quint64 EarliestTime = Q_UINT64_C(631152000000000);
const quint64 LatestTime = Q_UINT64_C(4102444800000000);

inline bool isMagic(char byte)
{
    return static_cast<quint8>(byte) == MagicV1 || static_cast<quint8>(byte) == MagicV2;
}

/** The bytes of the header that begins with the magic byte @p magic. */
inline int headerSize(char magic)
{
    return static_cast<quint8>(magic) == MagicV1 ? HeaderSizeV1 : HeaderSizeV2;
}

/** The time before a frame of a tlog, microseconds since 1970. */
inline quint64 readTime(const char* bytes)
{
    return qFromBigEndian<quint64>(bytes);
}

inline bool isPlausibleTime(quint64 time)
{
    return time >= EarliestTime && time < LatestTime;
}

/** What a frame says of itself before its payload. */
struct Header
{
    /** @param bytes  begins with a magic byte and holds headerSize() bytes */
    explicit Header(const char* bytes)
    {
        const uchar* const field = reinterpret_cast<const uchar*>(bytes);
        isV1 = field[0] == MagicV1;
        payloadSize = field[1];
        incompatibleFlags = isV1 ? 0 : field[2];
        const uchar* const address = isV1 ? field + 2 : field + 4;
        sequence = address[0];
        system = address[1];
        component = address[2];
        id = isV1 ? address[3] : address[3] | quint32(address[4]) << 8 | quint32(address[5]) << 16;
    }

    bool isUnderstood() const { return !(incompatibleFlags & ~SignedFlag); }
    /** Bytes up to and without the checksum. */
    int checkedSize() const { return (isV1 ? HeaderSizeV1 : HeaderSizeV2) + payloadSize; }
    /** Bytes of the whole frame. */
    int size() const
    {
        return checkedSize() + ChecksumSize + (incompatibleFlags & SignedFlag ? int(SignatureSize) : 0);
    }

    quint32 id;
    bool isV1;
    quint8 payloadSize;
    quint8 incompatibleFlags;
    quint8 sequence;
    quint8 system;
    quint8 component;
};

} // namespace MavlinkFrame

#endif
