#include "protobuffieldinfo.h"

#include "protobufmessage.h"
#include "protobufplaces.h"
#include "protobuftext.h"
#include "timetext.h"

#include <typeinfo>

using google::protobuf::FieldDescriptor;

namespace
{

// The numbers of google.protobuf.Timestamp and Duration.
const int SecondsNumber = 1;
const int NanosNumber = 2;

// Null for messages that others made, whose bytes need not be what a descriptor says.
const ProtobufMessage* ownMessage(const Message* message)
{
    return typeid(*message) == typeid(ProtobufMessage) ? static_cast<const ProtobufMessage*>(message) : nullptr;
}

} // namespace

ProtobufFieldInfo::ProtobufFieldInfo(const QString& name, const FieldType& type, const FieldDescriptor* descriptor,
                                     const google::protobuf::Message* prototype, int slot)
    : FieldInfo(name, type)
    , m_descriptor(descriptor)
    , m_holder(prototype->GetDescriptor())
    , m_reflection(prototype->GetReflection())
    , m_cppType(descriptor->cpp_type())
    , m_isBytes(descriptor->type() == FieldDescriptor::TYPE_BYTES)
    // Both parts of an entry of a map are always there, whatever was sent.
    , m_hasPresence(descriptor->has_presence() && !descriptor->containing_type()->map_key())
    , m_slot(slot)
{
    setRepeated(descriptor->is_repeated());
    setOptional(m_hasPresence && !descriptor->is_required());
}

const google::protobuf::Message* ProtobufFieldInfo::contentOf(const Message* message) const
{
    const ProtobufMessage* const own = ownMessage(message);
    if (!own)
        return nullptr;
    const google::protobuf::Message* const content = own->getContent();
    return content->GetDescriptor() == m_holder ? content : nullptr;
}

unsigned int ProtobufFieldInfo::countIn(const google::protobuf::Message& content) const
{
    if (isRepeated())
        return static_cast<unsigned int>(m_reflection->FieldSize(content, m_descriptor));
    return !m_hasPresence || m_reflection->HasField(content, m_descriptor) ? 1 : 0;
}

const google::protobuf::Message& ProtobufFieldInfo::elementOf(const google::protobuf::Message& content,
                                                              unsigned int index) const
{
    if (isRepeated())
        return m_reflection->GetRepeatedMessage(content, m_descriptor, static_cast<int>(index));
    return m_reflection->GetMessage(content, m_descriptor);
}

unsigned int ProtobufFieldInfo::getValueCount(const Message* message) const
{
    const google::protobuf::Message* const content = contentOf(message);
    return content ? countIn(*content) : 0;
}

FieldValue ProtobufFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const google::protobuf::Message* const content = contentOf(message);
    if (!content || index >= countIn(*content))
        return FieldValue::invalid();
    if (m_cppType == FieldDescriptor::CPPTYPE_MESSAGE)
        return FieldValue::fromSubMessage(static_cast<const ProtobufMessage*>(message)->getPart(
            m_slot, index, static_cast<const ProtobufMessageInfo*>(getType().getSubMessageInfo()),
            &elementOf(*content, index)));
    return isRepeated() ? repeatedValue(*content, static_cast<int>(index)) : singleValue(*content);
}

FieldBytes::End ProtobufFieldInfo::locate(const Holder& holder, int index, LocatedBytes* found) const
{
    const google::protobuf::Message* const content = contentOf(holder.message);
    if (!content)
        return FieldBytes::Untold;
    if (isRepeated())
        return ProtobufPlaces(&holder).findOneOf(m_descriptor, index, static_cast<int>(countIn(*content)), found);
    return ProtobufPlaces(&holder).findOnly(m_descriptor, found);
}

FieldValue ProtobufFieldInfo::singleValue(const google::protobuf::Message& content) const
{
    switch (m_cppType) {
    case FieldDescriptor::CPPTYPE_INT32:
        return FieldValue::fromSigned(m_reflection->GetInt32(content, m_descriptor), 4);
    case FieldDescriptor::CPPTYPE_INT64:
        return FieldValue::fromSigned(m_reflection->GetInt64(content, m_descriptor), 8);
    case FieldDescriptor::CPPTYPE_UINT32:
        return FieldValue::fromUnsigned(m_reflection->GetUInt32(content, m_descriptor), 4);
    case FieldDescriptor::CPPTYPE_UINT64:
        return FieldValue::fromUnsigned(m_reflection->GetUInt64(content, m_descriptor), 8);
    case FieldDescriptor::CPPTYPE_DOUBLE:
        return FieldValue::fromDouble(m_reflection->GetDouble(content, m_descriptor));
    case FieldDescriptor::CPPTYPE_FLOAT:
        return FieldValue::fromFloat(m_reflection->GetFloat(content, m_descriptor));
    case FieldDescriptor::CPPTYPE_BOOL:
        return FieldValue::fromBool(m_reflection->GetBool(content, m_descriptor));
    case FieldDescriptor::CPPTYPE_ENUM:
        return FieldValue::fromSigned(m_reflection->GetEnumValue(content, m_descriptor), 4);
    case FieldDescriptor::CPPTYPE_STRING: {
        std::string scratch;
        return textValue(m_reflection->GetStringReference(content, m_descriptor, &scratch));
    }
    case FieldDescriptor::CPPTYPE_MESSAGE:
        break;
    }
    return FieldValue::invalid();
}

FieldValue ProtobufFieldInfo::repeatedValue(const google::protobuf::Message& content, int index) const
{
    switch (m_cppType) {
    case FieldDescriptor::CPPTYPE_INT32:
        return FieldValue::fromSigned(m_reflection->GetRepeatedInt32(content, m_descriptor, index), 4);
    case FieldDescriptor::CPPTYPE_INT64:
        return FieldValue::fromSigned(m_reflection->GetRepeatedInt64(content, m_descriptor, index), 8);
    case FieldDescriptor::CPPTYPE_UINT32:
        return FieldValue::fromUnsigned(m_reflection->GetRepeatedUInt32(content, m_descriptor, index), 4);
    case FieldDescriptor::CPPTYPE_UINT64:
        return FieldValue::fromUnsigned(m_reflection->GetRepeatedUInt64(content, m_descriptor, index), 8);
    case FieldDescriptor::CPPTYPE_DOUBLE:
        return FieldValue::fromDouble(m_reflection->GetRepeatedDouble(content, m_descriptor, index));
    case FieldDescriptor::CPPTYPE_FLOAT:
        return FieldValue::fromFloat(m_reflection->GetRepeatedFloat(content, m_descriptor, index));
    case FieldDescriptor::CPPTYPE_BOOL:
        return FieldValue::fromBool(m_reflection->GetRepeatedBool(content, m_descriptor, index));
    case FieldDescriptor::CPPTYPE_ENUM:
        return FieldValue::fromSigned(m_reflection->GetRepeatedEnumValue(content, m_descriptor, index), 4);
    case FieldDescriptor::CPPTYPE_STRING: {
        std::string scratch;
        return textValue(m_reflection->GetRepeatedStringReference(content, m_descriptor, index, &scratch));
    }
    case FieldDescriptor::CPPTYPE_MESSAGE:
        break;
    }
    return FieldValue::invalid();
}

FieldValue ProtobufFieldInfo::textValue(const std::string& text) const
{
    if (m_isBytes)
        return FieldValue::fromBytes(ProtobufText::toBytes(text));
    return FieldValue::fromText(ProtobufText::fromUtf8(text));
}

/** One of the two numbers of a time. */
class ProtobufTimeFieldInfo::Part : public FieldInfo, public FieldLocator
{
public:
    Part(const ProtobufTimeFieldInfo* whole, const FieldDescriptor* descriptor)
        : FieldInfo(ProtobufText::fromUtf8(descriptor->name()),
                    FieldType(FieldType::SignedType, descriptor->number() == NanosNumber ? 4 : 8,
                              QString::fromLatin1(descriptor->type_name())))
        , m_whole(whole)
        , m_descriptor(descriptor)
    {
        setOptional(whole->isOptional());
        setRepeated(whole->isRepeated());
        setUnit(descriptor->number() == NanosNumber ? QStringLiteral("ns") : QStringLiteral("s"));
    }

    unsigned int getValueCount(const Message* message) const override { return m_whole->getValueCount(message); }
    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        return m_whole->partOf(message, index, m_descriptor->number());
    }

    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override
    {
        LocatedBytes whole;
        const FieldBytes::End end = m_whole->locate(holder, index, &whole);
        if (end != FieldBytes::Found)
            return end;
        const Holder inside{holder.message, holder.bytes, whole.inside};
        return ProtobufPlaces(&inside).findOnly(m_descriptor, found);
    }

private:
    const ProtobufTimeFieldInfo* m_whole;
    const FieldDescriptor* m_descriptor;
};

ProtobufTimeFieldInfo::ProtobufTimeFieldInfo(const QString& name, Kind kind, const FieldDescriptor* descriptor,
                                             const google::protobuf::Message* prototype)
    : ProtobufFieldInfo(
          name, FieldType(FieldType::TextType, 0, ProtobufText::fromUtf8(descriptor->message_type()->full_name())),
          descriptor, prototype, -1)
    , m_kind(kind)
{
    for (const int number : {SecondsNumber, NanosNumber})
        addSubField(new Part(this, descriptor->message_type()->FindFieldByNumber(number)));
}

ProtobufTimeFieldInfo::Kind ProtobufTimeFieldInfo::kindOf(const google::protobuf::Descriptor* type)
{
    const Kind kind = type->full_name() == "google.protobuf.Timestamp"  ? Timestamp
                      : type->full_name() == "google.protobuf.Duration" ? Duration
                                                                        : NoTime;
    // Anybody can call a type that.
    const FieldDescriptor* const seconds = type->FindFieldByNumber(SecondsNumber);
    const FieldDescriptor* const nanos = type->FindFieldByNumber(NanosNumber);
    const bool right = seconds && !seconds->is_repeated() && seconds->cpp_type() == FieldDescriptor::CPPTYPE_INT64 &&
                       nanos && !nanos->is_repeated() && nanos->cpp_type() == FieldDescriptor::CPPTYPE_INT32 &&
                       type->field_count() == 2;
    return right ? kind : NoTime;
}

FieldValue ProtobufTimeFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const FieldValue seconds = partOf(message, index, SecondsNumber);
    if (!seconds.isValid())
        return seconds;
    const qint32 nanos = static_cast<qint32>(partOf(message, index, NanosNumber).toSigned());
    return FieldValue::fromText(m_kind == Timestamp ? TimeText::ofTime(seconds.toSigned(), nanos)
                                                    : TimeText::ofDuration(seconds.toSigned(), nanos));
}

FieldValue ProtobufTimeFieldInfo::partOf(const Message* message, unsigned int index, int number) const
{
    const google::protobuf::Message* const content = contentOf(message);
    if (!content || index >= countIn(*content))
        return FieldValue::invalid();
    const google::protobuf::Message& element = elementOf(*content, index);
    const FieldDescriptor* const part = element.GetDescriptor()->FindFieldByNumber(number);
    if (number == NanosNumber)
        return FieldValue::fromSigned(element.GetReflection()->GetInt32(element, part), 4);
    return FieldValue::fromSigned(element.GetReflection()->GetInt64(element, part), 8);
}
