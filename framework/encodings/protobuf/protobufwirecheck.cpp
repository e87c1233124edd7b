#include "protobufwirecheck.h"

#include "protobuftext.h"

#include <QCoreApplication>

#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/wire_format_lite.h>

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::internal::WireFormatLite;

namespace
{

const int GreatestProblemCount = 20;

void appendVarint(std::uint64_t value, QByteArray* bytes)
{
    for (; value >= 0x80; value >>= 7)
        bytes->append(static_cast<char>(value | 0x80));
    bytes->append(static_cast<char>(value));
}

const FieldDescriptor* findField(const Descriptor* type, int number)
{
    const FieldDescriptor* const field = type->FindFieldByNumber(number);
    return field ? field : type->file()->pool()->FindExtensionByNumber(type, number);
}

// Bytes that each of several numbers in one field takes; 0 when each has a size of its own.
int packedSize(const FieldDescriptor* field)
{
    switch (field->type()) {
    case FieldDescriptor::TYPE_DOUBLE:
    case FieldDescriptor::TYPE_FIXED64:
    case FieldDescriptor::TYPE_SFIXED64:
        return 8;
    case FieldDescriptor::TYPE_FLOAT:
    case FieldDescriptor::TYPE_FIXED32:
    case FieldDescriptor::TYPE_SFIXED32:
        return 4;
    default:
        return 0;
    }
}

} // namespace

ProtobufWireCheck::ProtobufWireCheck(const Descriptor* type, const QByteArray& message)
    : m_bytes(message)
{
    qint64 place = 0;
    copyFields(type, &place, m_bytes.size(), 0, google::protobuf::io::CodedInputStream::GetDefaultRecursionLimit(),
               &m_repaired);
}

bool ProtobufWireCheck::fail(const FieldDescriptor* field, qint64 place, const QString& text)
{
    if (m_problems.size() == GreatestProblemCount)
        m_problems.append(QCoreApplication::translate("ProtobufFormat", "and more"));
    if (m_problems.size() > GreatestProblemCount)
        return false;
    QStringList path = m_path;
    if (field)
        path.append(ProtobufText::fromUtf8(field->name()));
    const QString where = path.isEmpty() ? QCoreApplication::translate("ProtobufFormat", "byte %1: ").arg(place)
                                         : QCoreApplication::translate("ProtobufFormat", "%1 at byte %2: ")
                                               .arg(path.join(QLatin1Char('.')))
                                               .arg(place);
    m_problems.append(where + text);
    return false;
}

bool ProtobufWireCheck::readVarint(qint64* place, qint64 end, std::uint64_t* value) const
{
    *value = 0;
    for (int shift = 0; shift < 70 && *place < end; shift += 7) {
        const std::uint64_t byte = static_cast<unsigned char>(m_bytes.at(static_cast<int>((*place)++)));
        if (shift < 64)
            *value |= (byte & 0x7f) << shift;
        if (byte < 0x80)
            return true;
    }
    return false;
}

void ProtobufWireCheck::copyBytes(qint64 begin, qint64 end, QByteArray* copy) const
{
    copy->append(m_bytes.constData() + begin, static_cast<int>(end - begin));
}

// False when the rest of the message, or of the group of that number, cannot be read.
bool ProtobufWireCheck::copyFields(const Descriptor* type, qint64* place, qint64 end, std::uint32_t group, int depth,
                                   QByteArray* copy)
{
    while (*place < end) {
        const qint64 begin = *place;
        std::uint64_t tag;
        if (readVarint(place, end, &tag) &&
            tag == WireFormatLite::MakeTag(static_cast<int>(group), WireFormatLite::WIRETYPE_END_GROUP))
            return true;
        *place = begin;
        if (!copyField(type, place, end, depth, copy))
            return false;
    }
    return group == 0 || fail(nullptr, *place, QCoreApplication::translate("ProtobufFormat", "a group does not end"));
}

bool ProtobufWireCheck::copyField(const Descriptor* type, qint64* place, qint64 end, int depth, QByteArray* copy)
{
    const qint64 begin = *place;
    std::uint64_t tag;
    if (!readVarint(place, end, &tag))
        return fail(
            nullptr, begin,
            QCoreApplication::translate("ProtobufFormat", "the number of a field breaks off; the rest is not decoded"));
    const std::uint32_t number = static_cast<std::uint32_t>(tag >> 3);
    if (tag >> 32 != 0 || number == 0)
        return fail(nullptr, begin,
                    QCoreApplication::translate("ProtobufFormat", "no number of a field; the rest is not decoded"));
    const FieldDescriptor* const field = type ? findField(type, static_cast<int>(number)) : nullptr;
    std::uint64_t value = 0;
    switch (tag & 7) {
    case WireFormatLite::WIRETYPE_VARINT:
        if (!readVarint(place, end, &value))
            return fail(field, begin,
                        QCoreApplication::translate("ProtobufFormat", "a number breaks off; the rest is not decoded"));
        break;
    case WireFormatLite::WIRETYPE_FIXED64:
    case WireFormatLite::WIRETYPE_FIXED32:
        *place += (tag & 7) == WireFormatLite::WIRETYPE_FIXED64 ? 8 : 4;
        if (*place > end)
            return fail(field, begin,
                        QCoreApplication::translate("ProtobufFormat", "a number breaks off; the rest is not decoded"));
        break;
    case WireFormatLite::WIRETYPE_LENGTH_DELIMITED: {
        const qint64 tagEnd = *place;
        if (!readVarint(place, end, &value))
            return fail(field, begin,
                        QCoreApplication::translate("ProtobufFormat", "a length breaks off; the rest is not decoded"));
        if (value > static_cast<std::uint64_t>(end - *place))
            return fail(field, begin,
                        QCoreApplication::translate("ProtobufFormat",
                                                    "claims %1 bytes where %2 are left; the rest is not decoded")
                            .arg(value)
                            .arg(end - *place));
        const qint64 content = *place;
        *place += static_cast<qint64>(value);
        const bool isMessage = field && field->type() == FieldDescriptor::TYPE_MESSAGE;
        const bool isText = field && field->type() == FieldDescriptor::TYPE_STRING;
        // Of these the parser takes several in one, whether the schema says "packed" or not.
        const bool isPacked = field && field->is_packable();
        if (!isMessage && !isText && !isPacked)
            break;
        QByteArray part;
        if (isText) {
            copyText(field, content, *place, &part);
        } else if (isPacked) {
            copyPacked(field, content, *place, &part);
        } else if (depth == 0) {
            fail(field, begin, QCoreApplication::translate("ProtobufFormat", "nested too deeply; it is not decoded"));
            return true;
        } else {
            qint64 partPlace = content;
            m_path.append(ProtobufText::fromUtf8(field->name()));
            copyFields(field->message_type(), &partPlace, *place, 0, depth - 1, &part);
            m_path.removeLast();
        }
        copyBytes(begin, tagEnd, copy);
        appendVarint(static_cast<std::uint64_t>(part.size()), copy);
        copy->append(part);
        return true;
    }
    case WireFormatLite::WIRETYPE_START_GROUP: {
        const bool known = field && field->type() == FieldDescriptor::TYPE_GROUP;
        return copyGroup(known ? field->message_type() : nullptr,
                         known ? ProtobufText::fromUtf8(field->name()) : QString::number(number), number, place, end,
                         depth, copy);
    }
    case WireFormatLite::WIRETYPE_END_GROUP:
        return fail(nullptr, begin,
                    QCoreApplication::translate("ProtobufFormat",
                                                "the end of a group that did not begin; the rest is not decoded"));
    default:
        return fail(field, begin,
                    QCoreApplication::translate("ProtobufFormat", "an unknown kind of value; the rest is not decoded"));
    }
    copyBytes(begin, *place, copy);
    return true;
}

bool ProtobufWireCheck::copyGroup(const Descriptor* type, const QString& name, std::uint32_t number, qint64* place,
                                  qint64 end, int depth, QByteArray* copy)
{
    // Nobody knows where a group ends that is not read.
    if (depth == 0)
        return fail(nullptr, *place,
                    QCoreApplication::translate("ProtobufFormat", "nested too deeply; the rest is not decoded"));
    QByteArray part;
    m_path.append(name);
    const bool good = copyFields(type, place, end, number, depth - 1, &part);
    m_path.removeLast();
    appendVarint(WireFormatLite::MakeTag(static_cast<int>(number), WireFormatLite::WIRETYPE_START_GROUP), copy);
    copy->append(part);
    appendVarint(WireFormatLite::MakeTag(static_cast<int>(number), WireFormatLite::WIRETYPE_END_GROUP), copy);
    return good;
}

// The numbers that are whole.
void ProtobufWireCheck::copyPacked(const FieldDescriptor* field, qint64 place, qint64 end, QByteArray* copy)
{
    const int size = packedSize(field);
    while (place < end) {
        const qint64 begin = place;
        std::uint64_t value = 0;
        if (size == 0 ? !readVarint(&place, end, &value) : end - begin < size) {
            fail(field, begin,
                 QCoreApplication::translate("ProtobufFormat", "a number breaks off; the rest of the field is not "
                                                               "decoded"));
            return;
        }
        place = size == 0 ? place : begin + size;
        copyBytes(begin, place, copy);
    }
}

void ProtobufWireCheck::copyText(const FieldDescriptor* field, qint64 place, qint64 end, QByteArray* copy)
{
    copyBytes(place, end, copy);
    bool good = true;
    for (qint64 i = place; i < end;) {
        const int size = Utf8Text::characterSize(m_bytes.constData() + i, end - i);
        if (size == 0) {
            if (good)
                fail(field, i,
                     QCoreApplication::translate("ProtobufFormat",
                                                 "not valid UTF-8; wrong bytes are shown as question marks"));
            good = false;
            (*copy)[static_cast<int>(i - place)] = '?';
        }
        i += size == 0 ? 1 : size;
    }
}
