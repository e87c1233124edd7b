#include "mavlinkfieldinfo.h"

#include "mavlinkframe.h"
#include "message.h"
#include "utf8text.h"

#include <QCoreApplication>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace
{

/** Where the payload lies within a frame. */
struct Payload
{
    enum Version
    {
        None,
        Version1,
        Version2
    };

    explicit Payload(const QByteArray& frame)
        : version(None)
        , bytes(nullptr)
        , header(0)
        , size(0)
    {
        const int frameSize = static_cast<int>(frame.size());
        if (frameSize < 2)
            return;
        const quint8 magic = static_cast<quint8>(frame.at(0));
        if (magic == 0xfd) {
            version = Version2;
            header = 10;
        } else if (magic == 0xfe) {
            version = Version1;
            header = 6;
        } else {
            return;
        }
        size = std::max(0, std::min<int>(static_cast<quint8>(frame.at(1)), frameSize - header));
        if (size > 0)
            bytes = frame.constData() + header;
    }

    Version version;
    const char* bytes; // null when size is 0: a frame may be shorter than its header
    int header;        // bytes before it
    int size;
};

// Bytes that the sender left off at the end are zeros.
template <typename Number>
Number numberAt(const Payload& payload, int offset)
{
    const int size = static_cast<int>(sizeof(Number));
    if (offset + size <= payload.size)
        return qFromLittleEndian<Number>(payload.bytes + offset);
    char buffer[sizeof(Number)] = {};
    if (offset < payload.size)
        std::memcpy(buffer, payload.bytes + offset, static_cast<std::size_t>(payload.size - offset));
    return qFromLittleEndian<Number>(buffer);
}

template <typename Real, typename Bits>
Real realAt(const Payload& payload, int offset)
{
    const Bits bits = numberAt<Bits>(payload, offset);
    Real real;
    std::memcpy(&real, &bits, sizeof real);
    return real;
}

FieldValue signedAt(const Payload& payload, int offset, int size)
{
    switch (size) {
    case 1:
        return FieldValue::fromSigned(numberAt<qint8>(payload, offset), 1);
    case 2:
        return FieldValue::fromSigned(numberAt<qint16>(payload, offset), 2);
    case 4:
        return FieldValue::fromSigned(numberAt<qint32>(payload, offset), 4);
    default:
        return FieldValue::fromSigned(numberAt<qint64>(payload, offset), 8);
    }
}

FieldValue unsignedAt(const Payload& payload, int offset, int size)
{
    switch (size) {
    case 1:
        return FieldValue::fromUnsigned(numberAt<quint8>(payload, offset), 1);
    case 2:
        return FieldValue::fromUnsigned(numberAt<quint16>(payload, offset), 2);
    case 4:
        return FieldValue::fromUnsigned(numberAt<quint32>(payload, offset), 4);
    default:
        return FieldValue::fromUnsigned(numberAt<quint64>(payload, offset), 8);
    }
}

} // namespace

MavlinkFieldInfo::MavlinkFieldInfo(const QString& name, const FieldType& type, int offset, int count, bool extension)
    : FieldInfo(name, type)
    , m_offset(offset)
    , m_count(count > 0 ? count : 1)
{
    setRepeated(count > 0);
    setStringField(count > 0 && type.getTypeCode() == FieldType::CharType);
    setOptional(extension);
}

unsigned int MavlinkFieldInfo::getValueCount(const Message* message) const
{
    const Payload payload(message->getData());
    if (payload.version == Payload::None || (isOptional() && payload.version == Payload::Version1))
        return 0;
    return occursIn(message->getInfo()) ? static_cast<unsigned int>(m_count) : 0;
}

FieldValue MavlinkFieldInfo::getValue(const Message* message, unsigned int index) const
{
    if (index >= getValueCount(message))
        return FieldValue::invalid();
    const Payload payload(message->getData());
    const int size = getType().getSize();
    const int offset = m_offset + static_cast<int>(index) * size;
    switch (getType().getTypeCode()) {
    case FieldType::CharType:
        return FieldValue::fromChar(numberAt<quint8>(payload, offset));
    case FieldType::SignedType:
        return signedAt(payload, offset, size);
    case FieldType::UnsignedType:
        return unsignedAt(payload, offset, size);
    default:
        if (size == 4)
            return FieldValue::fromFloat(realAt<float, quint32>(payload, offset));
        return FieldValue::fromDouble(realAt<double, quint64>(payload, offset));
    }
}

QString MavlinkFieldInfo::getStringValue(const Message* message) const
{
    if (!isStringField() || getValueCount(message) == 0)
        return QString();
    const Payload payload(message->getData());
    const int size = std::min(m_count, payload.size - m_offset);
    if (size <= 0)
        return QString();
    const char* text = payload.bytes + m_offset;
    return Utf8Text::decode(text, static_cast<int>(qstrnlen(text, static_cast<uint>(size))));
}

FieldBytes::End MavlinkFieldInfo::locate(const Holder& holder, int index, LocatedBytes* found) const
{
    const Payload payload(*holder.bytes);
    const int size = getType().getSize();
    const int begin = m_offset + qMax(0, index) * size;
    const int end = begin + (index < 0 ? m_count : 1) * size;
    if (begin >= payload.size)
        return FieldBytes::LeftOff;
    found->bytes.append({payload.header + begin, payload.header + std::min(end, payload.size)});
    return FieldBytes::Found;
}

QString MavlinkFieldInfo::getNameOfRest(const QByteArray& message, qint64 byte) const
{
    static const char* const names[] = {
        QT_TRANSLATE_NOOP("MavlinkFrame", "start of a frame"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "length of the payload"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "flags that a receiver must know"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "flags"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "sequence number"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "system that sent it"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "component that sent it"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "number of the message type"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "payload without a field"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "checksum"),
        QT_TRANSLATE_NOOP("MavlinkFrame", "signature"),
    };
    enum
    {
        Type = 7,
        Rest,
        Checksum,
        Signature
    };
    const Payload payload(message);
    const qint64 behind = byte - payload.header - payload.size;
    qint64 name = byte;
    if (payload.version == Payload::None)
        return QString();
    if (byte < payload.header)
        name = std::min<qint64>(Type, payload.version == Payload::Version1 && byte > 1 ? byte + 2 : byte);
    else
        name = behind < 0 ? Rest : behind < MavlinkFrame::ChecksumSize ? Checksum : Signature;
    return QCoreApplication::translate("MavlinkFrame", names[name]);
}
