#include "protobuftranscoder.h"

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "protobufdescription.h"

#include <QStringList>

#include <cstring>

using google::protobuf::FieldDescriptorProto;

/** The schema that is being made. */
struct ProtobufTranscoder::Schema
{
    google::protobuf::FileDescriptorProto file;
    ProtobufNames typeNames;
    std::string prefix; // of full names: ".demo."

    void comment(const std::vector<int>& path, const QString& text)
    {
        if (text.isEmpty())
            return;
        google::protobuf::SourceCodeInfo::Location* const location = file.mutable_source_code_info()->add_location();
        for (const int step : path)
            location->add_path(step);
        for (int i = 0; i < 3; ++i)
            location->add_span(0);
        std::string lines;
        for (const QString& line : text.split(QLatin1Char('\n')))
            lines += ' ' + line.toStdString() + '\n';
        location->set_leading_comments(lines);
    }
};

namespace
{

// What numbers of fields stand for in the path of a comment.
const int MessageTypeNumber = google::protobuf::FileDescriptorProto::kMessageTypeFieldNumber;
const int FieldNumber = google::protobuf::DescriptorProto::kFieldFieldNumber;

enum WireType
{
    VarintType = 0,
    Fixed64Type = 1,
    LengthType = 2,
    Fixed32Type = 5
};

void appendVarint(quint64 value, QByteArray* bytes)
{
    while (value >= 0x80) {
        bytes->append(char(value | 0x80));
        value >>= 7;
    }
    bytes->append(char(value));
}

void appendTag(quint32 number, WireType type, QByteArray* bytes)
{
    appendVarint(number << 3 | quint32(type), bytes);
}

void appendBytes(quint32 number, const QByteArray& value, QByteArray* bytes)
{
    appendTag(number, LengthType, bytes);
    appendVarint(quint64(value.size()), bytes);
    bytes->append(value);
}

template <class Number>
void appendFixed(Number value, QByteArray* bytes)
{
    for (std::size_t i = 0; i < sizeof value; ++i)
        bytes->append(char(value >> (8 * i)));
}

template <class Bits, class Real>
Bits bitsOf(Real value)
{
    static_assert(sizeof(Bits) == sizeof(Real), "the same bytes");
    Bits bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

FieldDescriptorProto::Type typeOf(const FieldInfo* field)
{
    if (field->isStringField())
        return FieldDescriptorProto::TYPE_STRING;
    const FieldType& type = field->getType();
    const bool isLong = type.getSize() > 4 || type.getSize() == 0;
    switch (type.getTypeCode()) {
    case FieldType::SignedType:
        return isLong ? FieldDescriptorProto::TYPE_SINT64 : FieldDescriptorProto::TYPE_SINT32;
    case FieldType::UnsignedType:
        return isLong ? FieldDescriptorProto::TYPE_UINT64 : FieldDescriptorProto::TYPE_UINT32;
    case FieldType::CharType:
    case FieldType::UnsignedCharType:
        return FieldDescriptorProto::TYPE_UINT32;
    case FieldType::FloatType:
        return isLong ? FieldDescriptorProto::TYPE_DOUBLE : FieldDescriptorProto::TYPE_FLOAT;
    case FieldType::BoolType:
        return FieldDescriptorProto::TYPE_BOOL;
    case FieldType::SubMessageType:
        return FieldDescriptorProto::TYPE_MESSAGE;
    case FieldType::BytesType:
        return FieldDescriptorProto::TYPE_BYTES;
    }
    return FieldDescriptorProto::TYPE_STRING;
}

} // namespace

ProtobufTranscoder::ProtobufTranscoder(const MessageInfo* info)
{
    QByteArrayList parts = info->getName().toUtf8().split('.');
    for (QByteArray& part : parts)
        part = ProtobufNames().take(part);
    const QByteArray name = parts.takeLast();
    Schema schema;
    schema.prefix = '.' + parts.join('.').toStdString() + (parts.isEmpty() ? "" : ".");
    m_schema.name = QString::fromUtf8((parts + QByteArrayList{name}).join('.'));
    schema.file.set_name(m_schema.name.toStdString() + ".proto");
    schema.file.set_package(parts.join('.').toStdString());
    schema.file.set_syntax("proto3");
    addType(info, name, &schema);

    // What a file imports stands before it.
    google::protobuf::FileDescriptorSet set;
    ProtobufDescription::describeOptions(&set);
    schema.file.add_dependency(set.file(set.file_size() - 1).name());
    *set.add_file() = schema.file;
    m_schema.messageEncoding = "protobuf";
    m_schema.encoding = "protobuf";
    const std::string bytes = set.SerializeAsString();
    m_schema.data = QByteArray(bytes.data(), int(bytes.size()));
}

ProtobufTranscoder::~ProtobufTranscoder() {}

const ProtobufTranscoder::Type* ProtobufTranscoder::addType(const MessageInfo* info, const QByteArray& name,
                                                            Schema* schema)
{
    if (const Type* const known = m_byInfo.value(info))
        return known;
    m_types.emplace_back(new Type);
    Type* const type = m_types.back().get();
    type->name = schema->typeNames.take(name);
    m_byInfo.insert(info, type);
    const int place = schema->file.message_type_size();
    schema->file.add_message_type()->set_name(type->name.toStdString());
    schema->comment({MessageTypeNumber, place}, info->getShortDescriptiveText());

    ProtobufNames names;
    for (const FieldInfo* field : info->getFieldInfos()) {
        if (field->isVirtual())
            continue;
        FieldDescriptorProto description;
        description.set_name(names.take(field->getName().toUtf8()).toStdString());
        const bool isList = field->isRepeated() && !field->isStringField();
        const int number = int(type->fields.size()) + 1;
        Field made = {field, quint32(number), Varint, false, isList, field->isOptional() && !isList, nullptr};
        description.set_type(typeOf(field));
        switch (description.type()) {
        case FieldDescriptorProto::TYPE_SINT32:
        case FieldDescriptorProto::TYPE_SINT64:
            made.wire = Zigzag;
            break;
        case FieldDescriptorProto::TYPE_FLOAT:
            made.wire = Fixed32;
            break;
        case FieldDescriptorProto::TYPE_DOUBLE:
            made.wire = Fixed64;
            break;
        case FieldDescriptorProto::TYPE_STRING:
            made.wire = field->isStringField() ? Joined : Text;
            break;
        case FieldDescriptorProto::TYPE_BYTES:
            made.wire = Bytes;
            break;
        case FieldDescriptorProto::TYPE_MESSAGE: {
            const MessageInfo* const part = field->getType().getSubMessageInfo();
            made.wire = Part;
            made.part = addType(part, part->getName().toUtf8(), schema);
            description.set_type_name(schema->prefix + made.part->name.toStdString());
            break;
        }
        default:
            break;
        }
        // The list of types may have grown meanwhile.
        google::protobuf::DescriptorProto* const target = schema->file.mutable_message_type(place);
        if (ProtobufDescription::isEnumeration(field)) {
            google::protobuf::DescriptorProto* const scope = target->add_nested_type();
            scope->set_name(names.take(field->getName().toUtf8() + "Values").toStdString());
            ProtobufDescription::describeValues(field, scope);
            made.wire = Varint;
            made.isSigned = field->getType().getTypeCode() == FieldType::SignedType;
            description.set_type(FieldDescriptorProto::TYPE_ENUM);
            description.set_type_name(schema->prefix + type->name.toStdString() + '.' + scope->name() + ".Value");
        }
        description.set_number(number);
        description.set_label(isList ? FieldDescriptorProto::LABEL_REPEATED : FieldDescriptorProto::LABEL_OPTIONAL);
        if (made.isOptional && made.wire != Part) {
            description.set_proto3_optional(true);
            description.set_oneof_index(target->oneof_decl_size());
            target->add_oneof_decl()->set_name('_' + description.name());
        }
        ProtobufDescription::setOptions(field, &description);
        schema->comment({MessageTypeNumber, place, FieldNumber, target->field_size()},
                        ProtobufDescription::commentOf(field));
        *target->add_field() = description;
        type->fields.push_back(made);
    }
    return type;
}

QByteArray ProtobufTranscoder::encode(const Message* message) const
{
    QByteArray bytes;
    bytes.reserve(int(message->getData().size()) + 32);
    appendFields(*m_types.front(), message, &bytes);
    return bytes;
}

void ProtobufTranscoder::appendFields(const Type& type, const Message* message, QByteArray* bytes)
{
    for (const Field& field : type.fields) {
        const unsigned int count = field.info->getValueCount(message);
        if (count == 0)
            continue;
        if (!field.isList) {
            appendSingle(field, message, bytes);
        } else if (field.wire <= Fixed64) {
            appendPacked(field, message, count, bytes);
        } else {
            for (unsigned int i = 0; i < count; ++i)
                appendElement(field, field.info->getValue(message, i), bytes);
        }
    }
}

void ProtobufTranscoder::appendSingle(const Field& field, const Message* message, QByteArray* bytes)
{
    if (field.wire == Joined) {
        const QByteArray text = field.info->getStringValue(message).toUtf8();
        if (field.isOptional || !text.isEmpty())
            appendBytes(field.number, text, bytes);
        return;
    }
    const FieldValue value = field.info->getValue(message, 0);
    if (field.wire > Fixed64) {
        appendElement(field, value, bytes);
        return;
    }
    const int begin = int(bytes->size());
    appendTag(field.number,
              field.wire == Fixed32   ? Fixed32Type
              : field.wire == Fixed64 ? Fixed64Type
                                      : VarintType,
              bytes);
    if (!appendNumber(field, value, bytes) && !field.isOptional)
        bytes->truncate(begin); // what is not there is 0
}

void ProtobufTranscoder::appendPacked(const Field& field, const Message* message, unsigned int count, QByteArray* bytes)
{
    QByteArray elements;
    for (unsigned int i = 0; i < count; ++i)
        appendNumber(field, field.info->getValue(message, i), &elements);
    appendBytes(field.number, elements, bytes);
}

void ProtobufTranscoder::appendElement(const Field& field, const FieldValue& value, QByteArray* bytes)
{
    QByteArray element;
    if (field.wire == Part) {
        if (const Message* const part = value.getSubMessage())
            appendFields(*field.part, part, &element);
    } else if (field.wire == Bytes) {
        element = value.toBytes();
    } else {
        element = (value.getKind() == FieldValue::TextKind ? value.toText() : field.info->getRawString(value)).toUtf8();
    }
    appendBytes(field.number, element, bytes);
}

/** Whether it is another number than 0. */
bool ProtobufTranscoder::appendNumber(const Field& field, const FieldValue& value, QByteArray* bytes)
{
    quint64 bits = 0;
    switch (field.wire) {
    case Fixed32:
        bits = bitsOf<quint32>(static_cast<float>(value.toDouble()));
        appendFixed(quint32(bits), bytes);
        break;
    case Fixed64:
        bits = bitsOf<quint64>(value.toDouble());
        appendFixed(bits, bytes);
        break;
    case Zigzag: {
        const qint64 number = value.toSigned();
        bits = (quint64(number) << 1) ^ quint64(number < 0 ? -1 : 0);
        appendVarint(bits, bytes);
        break;
    }
    default:
        bits = field.isSigned ? quint64(value.toSigned()) : value.toUnsigned();
        appendVarint(bits, bytes);
    }
    return bits != 0;
}
