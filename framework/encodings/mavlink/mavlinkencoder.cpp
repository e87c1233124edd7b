#include "mavlinkencoder.h"

#include "mavlinkcrc.h"
#include "mavlinkdialect.h"
#include "mavlinkfieldinfo.h"
#include "mavlinkframe.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

using namespace MavlinkFrame;

namespace
{

template <typename Number>
void write(Number value, char* bytes)
{
    qToLittleEndian(value, bytes);
}

/** The nearest number of an integer type; what is beyond its range becomes its greatest or least. */
template <typename Integer>
Integer toInteger(double value)
{
    // The greatest 64-bit numbers round up to a power of two as a double, which is out of range already.
    if (std::isnan(value))
        return 0;
    if (value <= double(std::numeric_limits<Integer>::min()))
        return std::numeric_limits<Integer>::min();
    if (value >= double(std::numeric_limits<Integer>::max()))
        return std::numeric_limits<Integer>::max();
    return Integer(std::round(value));
}

void writeSigned(double value, int size, char* bytes)
{
    switch (size) {
    case 1:
        return write(toInteger<qint8>(value), bytes);
    case 2:
        return write(toInteger<qint16>(value), bytes);
    case 4:
        return write(toInteger<qint32>(value), bytes);
    default:
        return write(toInteger<qint64>(value), bytes);
    }
}

void writeUnsigned(double value, int size, char* bytes)
{
    switch (size) {
    case 1:
        return write(toInteger<quint8>(value), bytes);
    case 2:
        return write(toInteger<quint16>(value), bytes);
    case 4:
        return write(toInteger<quint32>(value), bytes);
    default:
        return write(toInteger<quint64>(value), bytes);
    }
}

void writeReal(double value, int size, char* bytes)
{
    if (size == 4)
        write(float(value), bytes);
    else
        write(value, bytes);
}

const MavlinkFieldInfo* findField(const MavlinkMessageInfo* info, const char* name)
{
    const FieldInfo* const field = info->getFieldInfo(QLatin1String(name));
    Q_ASSERT_X(field && !field->isVirtual(), "MavlinkEncoder", name);
    return static_cast<const MavlinkFieldInfo*>(field);
}

} // namespace

MavlinkEncoder::MavlinkEncoder(const MavlinkMessageInfo* info)
    : m_info(info)
    , m_payload(info->getFullLength(), '\0')
{
}

void MavlinkEncoder::set(const char* field, double value, int index)
{
    const MavlinkFieldInfo* const info = findField(m_info, field);
    Q_ASSERT(index >= 0 && index < info->getCount());
    const int size = info->getType().getSize();
    char* const bytes = m_payload.data() + info->getOffset() + index * size;
    switch (info->getType().getTypeCode()) {
    case FieldType::SignedType:
        return writeSigned(value, size, bytes);
    case FieldType::FloatType:
        return writeReal(value, size, bytes);
    default:
        return writeUnsigned(value, size, bytes);
    }
}

void MavlinkEncoder::setText(const char* field, const QByteArray& text)
{
    const MavlinkFieldInfo* const info = findField(m_info, field);
    char* const bytes = m_payload.data() + info->getOffset();
    const int size = std::min(int(text.size()), info->getCount());
    std::memset(bytes, 0, std::size_t(info->getCount()));
    std::memcpy(bytes, text.constData(), std::size_t(size));
}

QByteArray MavlinkEncoder::toFrame(const FrameHeader& header) const
{
    return toFrame(header, m_info->getId(), m_info->getCrcExtra(),
                   header.version == 1 ? m_payload.left(m_info->getBaseLength()) : m_payload);
}

QByteArray MavlinkEncoder::toFrame(const FrameHeader& header, quint32 id, quint8 crcExtra, const QByteArray& payload)
{
    const bool isV1 = header.version == 1;
    int size = int(payload.size());
    while (!isV1 && size > 1 && payload.at(size - 1) == '\0')
        --size;

    QByteArray frame;
    frame.reserve(MaximumSize);
    frame.append(char(isV1 ? MagicV1 : MagicV2));
    frame.append(char(size));
    if (!isV1) {
        frame.append(char(header.incompatibleFlags));
        frame.append('\0');
    }
    frame.append(char(header.sequence));
    frame.append(char(header.system));
    frame.append(char(header.component));
    frame.append(char(id & 0xff));
    if (!isV1) {
        frame.append(char(id >> 8 & 0xff));
        frame.append(char(id >> 16 & 0xff));
    }
    frame.append(payload.constData(), size);

    const quint16 crc = MavlinkCrc::add(MavlinkCrc::calculate(frame.constData() + 1, int(frame.size()) - 1), crcExtra);
    frame.append(char(crc & 0xff));
    frame.append(char(crc >> 8));
    if (!isV1 && header.incompatibleFlags & SignedFlag)
        frame.append(SignatureSize, '\0');
    return frame;
}
