#include "envelope.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace
{

const char Mark[] = {'\x89', 'C', 'V', 'E'};
const qint64 MarkSize = sizeof Mark;
const qint64 HeadSize = MarkSize + 4;
const qint64 FixedSize = 1 + 1 + 2 + 8 + 8 + 2 + 2;
const std::size_t GreatestText = 65535;

const quint8 KeptFlag = 1;
const quint8 OriginFlag = 2;

/** Reads numbers and texts, and notes when there are not that many bytes. */
class Cursor
{
public:
    Cursor(const char* bytes, qint64 size)
        : m_bytes(bytes)
        , m_left(size)
    {
    }

    template <typename Number>
    Number number()
    {
        const std::string_view bytes = text(sizeof(Number));
        return m_good ? qFromLittleEndian<Number>(bytes.data()) : Number(0);
    }

    std::string_view text(quint64 size)
    {
        m_good = m_good && size <= quint64(m_left);
        if (!m_good)
            return std::string_view();
        const std::string_view result(m_bytes, std::size_t(size));
        m_bytes += size;
        m_left -= qint64(size);
        return result;
    }

    std::string_view rest() { return text(quint64(m_left)); }
    bool isGood() const { return m_good; }

private:
    const char* m_bytes;
    qint64 m_left;
    bool m_good = true;
};

template <typename Number>
void append(QByteArray* bytes, Number number)
{
    char little[sizeof number];
    qToLittleEndian(number, little);
    bytes->append(little, int(sizeof number));
}

void append(QByteArray* bytes, std::string_view text)
{
    bytes->append(text.data(), int(text.size()));
}

/** How many bytes lie before the next place where a mark may begin, from the second byte on. */
qint64 bytesBeforeMark(const char* bytes, qint64 size)
{
    const char* const end = bytes + size;
    const char* place = bytes + 1;
    while ((place = std::find(place, end, Mark[0])) != end) {
        if (std::memcmp(place, Mark, std::size_t(std::min<qint64>(MarkSize, end - place))) == 0)
            break;
        ++place;
    }
    return place - bytes;
}

bool readBody(const char* bytes, qint64 size, Envelope* envelope)
{
    Cursor cursor(bytes, size);
    const quint8 kind = cursor.number<quint8>();
    const quint8 flags = cursor.number<quint8>();
    const quint16 properties = cursor.number<quint16>();
    envelope->time = cursor.number<qint64>();
    envelope->sequence = cursor.number<quint64>();
    const quint16 topicSize = cursor.number<quint16>();
    const quint16 contentTypeSize = cursor.number<quint16>();
    envelope->origin = flags & OriginFlag ? cursor.number<quint64>() : 0;
    envelope->topic = cursor.text(topicSize);
    envelope->contentType = cursor.text(contentTypeSize);
    envelope->properties.clear();
    for (int i = 0; i < properties && cursor.isGood(); ++i) {
        const quint32 nameSize = cursor.number<quint32>();
        const quint32 valueSize = cursor.number<quint32>();
        const std::string_view name = cursor.text(nameSize);
        envelope->properties.emplace_back(name, cursor.text(valueSize));
    }
    envelope->payload = cursor.rest();
    envelope->kind = static_cast<Envelope::Kind>(kind);
    envelope->isKept = flags & KeptFlag;
    return cursor.isGood() && kind <= Envelope::Notice;
}

} // namespace

std::string_view Envelope::find(std::string_view name) const
{
    for (const Property& property : properties)
        if (property.first == name)
            return property.second;
    return std::string_view();
}

std::string_view Envelope::attribute(std::string_view name) const
{
    for (const Property& property : properties) {
        const std::string_view given = property.first;
        const bool isMarked = given.size() == name.size() + 3 && given.substr(0, 3) == "ce-";
        if (given == name || (isMarked && given.substr(3) == name))
            return property.second;
    }
    return std::string_view();
}

std::string_view Envelope::getSchemaTopic() const
{
    const std::string_view place = attribute("dataschema");
    const std::string_view scheme = place.substr(0, 5);
    return scheme == "mqtt:" || scheme == "nats:" ? place.substr(5) : std::string_view();
}

EnvelopeWriter::EnvelopeWriter(QByteArray* bytes)
    : m_bytes(bytes)
{
}

bool EnvelopeWriter::write(const Envelope& envelope)
{
    quint64 size = quint64(FixedSize) + envelope.topic.size() + envelope.contentType.size() + envelope.payload.size();
    size += envelope.origin ? sizeof envelope.origin : 0;
    for (const Envelope::Property& property : envelope.properties)
        size += 8 + property.first.size() + property.second.size();
    if (size > EnvelopeReader::GreatestSize || envelope.topic.size() > GreatestText ||
        envelope.contentType.size() > GreatestText || envelope.properties.size() > GreatestText)
        return false;
    m_bytes->append(Mark, int(MarkSize));
    append(m_bytes, quint32(size));
    append(m_bytes, quint8(envelope.kind));
    append(m_bytes, quint8((envelope.isKept ? KeptFlag : 0) | (envelope.origin ? OriginFlag : 0)));
    append(m_bytes, quint16(envelope.properties.size()));
    append(m_bytes, envelope.time);
    append(m_bytes, envelope.sequence);
    append(m_bytes, quint16(envelope.topic.size()));
    append(m_bytes, quint16(envelope.contentType.size()));
    if (envelope.origin)
        append(m_bytes, envelope.origin);
    append(m_bytes, envelope.topic);
    append(m_bytes, envelope.contentType);
    for (const Envelope::Property& property : envelope.properties) {
        append(m_bytes, quint32(property.first.size()));
        append(m_bytes, quint32(property.second.size()));
        append(m_bytes, property.first);
        append(m_bytes, property.second);
    }
    append(m_bytes, envelope.payload);
    return true;
}

EnvelopeReader::Result EnvelopeReader::read(const char* bytes, qint64 size, Envelope* envelope, qint64* used)
{
    *used = HeadSize;
    if (std::memcmp(bytes, Mark, std::size_t(std::min(MarkSize, size))) != 0) {
        *used = bytesBeforeMark(bytes, size);
        return Damaged;
    }
    if (size < HeadSize)
        return Incomplete;
    const quint32 bodySize = qFromLittleEndian<quint32>(bytes + MarkSize);
    if (bodySize > GreatestSize || bodySize < FixedSize) {
        *used = bytesBeforeMark(bytes, size);
        return Damaged;
    }
    *used = HeadSize + bodySize;
    if (size < *used)
        return Incomplete;
    if (readBody(bytes + HeadSize, bodySize, envelope))
        return Whole;
    *used = bytesBeforeMark(bytes, size);
    return Damaged;
}

bool EnvelopeReader::isEnvelope(const QByteArray& head)
{
    return head.startsWith(getMark());
}

QByteArray EnvelopeReader::getMark()
{
    return QByteArray(Mark, int(MarkSize));
}
