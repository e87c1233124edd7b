#include "protobufplaces.h"

#include <google/protobuf/io/coded_stream.h>
#include <google/protobuf/wire_format_lite.h>

#include <algorithm>

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::internal::WireFormatLite;
using google::protobuf::io::CodedInputStream;

namespace
{

WireFormatLite::WireType wireTypeOf(const FieldDescriptor* field)
{
    return WireFormatLite::WireTypeForFieldType(static_cast<WireFormatLite::FieldType>(field->type()));
}

void append(QVector<ByteRange>* ranges, qint64 begin, qint64 end)
{
    if (!ranges->isEmpty() && ranges->last().end == begin)
        ranges->last().end = end;
    else
        ranges->append({begin, end});
}

/** Bytes of each number in a packed field; 0 when each has a size of its own. */
qint64 packedSize(const FieldDescriptor* field)
{
    const WireFormatLite::WireType type = wireTypeOf(field);
    return type == WireFormatLite::WIRETYPE_FIXED64 ? 8 : type == WireFormatLite::WIRETYPE_FIXED32 ? 4 : 0;
}

qint64 endOfVarint(const QByteArray& bytes, qint64 begin, qint64 end)
{
    while (begin < end && static_cast<unsigned char>(bytes.at(int(begin))) >= 0x80)
        ++begin;
    return std::min(begin + 1, end);
}

/** How many numbers a packed field has, or, where there are more than @p most, where that one is. */
qint64 countPacked(const QByteArray& bytes, qint64 begin, qint64 end, qint64 size, qint64 most, ByteRange* found)
{
    if (size > 0) {
        const qint64 count = (end - begin) / size;
        if (most >= 0 && most < count)
            *found = {begin + most * size, begin + (most + 1) * size};
        return count;
    }
    qint64 count = 0;
    for (qint64 next; begin < end; begin = next, ++count) {
        next = endOfVarint(bytes, begin, end);
        if (count == most)
            *found = {begin, next};
    }
    // The last one breaks off.
    return end > 0 && count > 0 && static_cast<unsigned char>(bytes.at(int(end - 1))) >= 0x80 ? count - 1 : count;
}

} // namespace

/** Gives every field to @p take, up to where they break off. */
template <typename Take>
void ProtobufPlaces::forEach(Take take) const
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(m_holder->bytes->constData());
    for (const ByteRange& place : m_holder->places) {
        CodedInputStream input(bytes + place.begin, static_cast<int>(place.end - place.begin));
        for (;;) {
            Entry entry;
            entry.begin = place.begin + input.CurrentPosition();
            entry.tag = input.ReadTag();
            if (entry.tag == 0)
                break;
            entry.content = place.begin + input.CurrentPosition();
            const qint64 tagSize = entry.content - entry.begin;
            const WireFormatLite::WireType type = WireFormatLite::GetTagWireType(entry.tag);
            if (type == WireFormatLite::WIRETYPE_LENGTH_DELIMITED)
                entry.content = endOfVarint(*m_holder->bytes, entry.content, place.end);
            if (!WireFormatLite::SkipField(&input, entry.tag))
                break;
            entry.end = entry.contentEnd = place.begin + input.CurrentPosition();
            if (type == WireFormatLite::WIRETYPE_START_GROUP) // which ends with its number once more
                entry.contentEnd -= tagSize;
            take(entry);
        }
    }
}

FieldBytes::End ProtobufPlaces::findOnly(const FieldDescriptor* field, LocatedBytes* found) const
{
    const std::uint32_t tag = WireFormatLite::MakeTag(field->number(), wireTypeOf(field));
    const bool isMessage = field->cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE;
    forEach([&](const Entry& entry) {
        if (entry.tag != tag)
            return;
        if (!isMessage)
            found->bytes.clear();
        append(&found->bytes, entry.begin, entry.end);
        if (isMessage)
            found->inside.append({entry.content, entry.contentEnd});
    });
    // What has its usual value need not be sent.
    return found->bytes.isEmpty() ? FieldBytes::LeftOff : FieldBytes::Found;
}

FieldBytes::End ProtobufPlaces::findOneOf(const FieldDescriptor* field, int index, int count, LocatedBytes* found) const
{
    const std::uint32_t tag = WireFormatLite::MakeTag(field->number(), wireTypeOf(field));
    const std::uint32_t packed = WireFormatLite::MakeTag(field->number(), WireFormatLite::WIRETYPE_LENGTH_DELIMITED);
    qint64 number = 0;
    forEach([&](const Entry& entry) {
        if (entry.tag == tag) {
            if (index < 0 || number == index) {
                append(&found->bytes, entry.begin, entry.end);
                found->inside.append({entry.content, entry.contentEnd});
            }
            ++number;
        } else if (entry.tag == packed && field->is_packable()) {
            ByteRange one{0, 0};
            const qint64 most = index < 0 || index < number ? -1 : index - number;
            number += countPacked(*m_holder->bytes, entry.content, entry.contentEnd, packedSize(field), most, &one);
            if (index < 0)
                append(&found->bytes, entry.begin, entry.end);
            else if (one.end > 0)
                append(&found->bytes, one.begin, one.end);
        }
    });
    // The parser may take some for others, such as two entries of a map with the same key.
    return number == count ? FieldBytes::Found : FieldBytes::Untold;
}

FieldBytes::End ProtobufPlaces::findUnknown(const Descriptor* type, int index, int count, LocatedBytes* found) const
{
    int number = 0;
    forEach([&](const Entry& entry) {
        const int id = WireFormatLite::GetTagFieldNumber(entry.tag);
        if (type->FindFieldByNumber(id) || type->file()->pool()->FindExtensionByNumber(type, id))
            return;
        if (index < 0 || number == index)
            append(&found->bytes, entry.begin, entry.end);
        ++number;
    });
    return number == count ? FieldBytes::Found : FieldBytes::Untold;
}
