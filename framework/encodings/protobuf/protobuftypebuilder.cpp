#include "protobuftypebuilder.h"

#include "problemfieldinfo.h"
#include "protobuffieldinfo.h"
#include "protobufmessage.h"
#include "protobufoptions.h"

#include <google/protobuf/descriptor.pb.h>

#include <set>

namespace
{

template <typename Element>
QString commentOf(const Element* element)
{
    google::protobuf::SourceLocation location;
    if (!element->GetSourceLocation(&location))
        return QString();
    return ProtobufText::commentText(location.leading_comments, location.trailing_comments);
}

} // namespace

ProtobufTypeBuilder::ProtobufTypeBuilder(ProtobufSchema* schema, QVector<MessageInfo*>* made)
    : m_schema(schema)
    , m_made(made)
{
}

const ProtobufMessageInfo* ProtobufTypeBuilder::build(const Descriptor* type)
{
    ProtobufMessageInfo* const info = infoOf(type, true);
    // By and by instead of one within the other: types can contain themselves, and chains of them are long.
    while (!m_empty.empty()) {
        ProtobufMessageInfo* const next = m_empty.back();
        m_empty.pop_back();
        fill(next);
    }
    return info;
}

// A type that is received on its own and occurs as a part is two: views keep messages of the one kind and not of the
// other, and which it is must never change.
ProtobufMessageInfo* ProtobufTypeBuilder::infoOf(const Descriptor* type, bool main)
{
    ProtobufSchema::Infos& infos = m_schema->m_infos[type];
    ProtobufMessageInfo*& info = main ? infos.main : infos.sub;
    if (!info) {
        info = new ProtobufMessageInfo(ProtobufText::fromUtf8(type->full_name()), main,
                                       m_schema->m_factory.GetPrototype(type));
        m_made->append(info);
        m_empty.push_back(info);
    }
    return info;
}

void ProtobufTypeBuilder::fill(ProtobufMessageInfo* info)
{
    const Descriptor* const type = info->getPrototype()->GetDescriptor();
    info->setShortDescriptiveText(ProtobufText::firstParagraph(commentOf(type)));
    std::vector<const FieldDescriptor*> descriptors;
    for (int i = 0; i < type->field_count(); ++i)
        descriptors.push_back(type->field(i));
    m_schema->m_pool.FindAllExtensions(type, &descriptors);
    for (const FieldDescriptor* descriptor : descriptors) {
        FieldInfo* const field = createField(descriptor, info);
        if (descriptor->type() == FieldDescriptor::TYPE_ENUM)
            field->setEnumerators(enumeratorsOf(descriptor->enum_type()), false);
        field->setDescription(commentOf(descriptor));
        applyOptions(descriptor, field);
        info->addField(field);
    }
    info->addField(new ProtobufUnknownFieldInfo(info->getPrototype()));
    if (info->isMain()) {
        info->addField(new ProblemFieldInfo<ProtobufMessage>);
        info->setCanBeIncomplete(canBeIncomplete(type));
    }
}

FieldInfo* ProtobufTypeBuilder::createField(const FieldDescriptor* descriptor, ProtobufMessageInfo* info)
{
    const QString name = descriptor->is_extension()
                             ? QLatin1Char('[') + ProtobufText::fromUtf8(descriptor->full_name()) + QLatin1Char(']')
                             : ProtobufText::fromUtf8(descriptor->name());
    int slot = -1;
    if (descriptor->cpp_type() == FieldDescriptor::CPPTYPE_MESSAGE) {
        const ProtobufTimeFieldInfo::Kind kind = ProtobufTimeFieldInfo::kindOf(descriptor->message_type());
        if (kind != ProtobufTimeFieldInfo::NoTime)
            return new ProtobufTimeFieldInfo(name, kind, descriptor, info->getPrototype());
        slot = info->getSubMessageFieldCount();
        info->setSubMessageFieldCount(slot + 1);
    }
    return new ProtobufFieldInfo(name, typeOf(descriptor), descriptor, info->getPrototype(), slot);
}

FieldType ProtobufTypeBuilder::typeOf(const FieldDescriptor* descriptor)
{
    const QString name = QString::fromLatin1(descriptor->type_name());
    switch (descriptor->type()) {
    case FieldDescriptor::TYPE_INT32:
    case FieldDescriptor::TYPE_SINT32:
    case FieldDescriptor::TYPE_SFIXED32:
        return FieldType(FieldType::SignedType, 4, name);
    case FieldDescriptor::TYPE_INT64:
    case FieldDescriptor::TYPE_SINT64:
    case FieldDescriptor::TYPE_SFIXED64:
        return FieldType(FieldType::SignedType, 8, name);
    case FieldDescriptor::TYPE_UINT32:
    case FieldDescriptor::TYPE_FIXED32:
        return FieldType(FieldType::UnsignedType, 4, name);
    case FieldDescriptor::TYPE_UINT64:
    case FieldDescriptor::TYPE_FIXED64:
        return FieldType(FieldType::UnsignedType, 8, name);
    case FieldDescriptor::TYPE_DOUBLE:
        return FieldType(FieldType::FloatType, 8, name);
    case FieldDescriptor::TYPE_FLOAT:
        return FieldType(FieldType::FloatType, 4, name);
    case FieldDescriptor::TYPE_BOOL:
        return FieldType(FieldType::BoolType, 1, name);
    case FieldDescriptor::TYPE_ENUM:
        return FieldType(FieldType::SignedType, 4, ProtobufText::fromUtf8(descriptor->enum_type()->full_name()));
    case FieldDescriptor::TYPE_STRING:
        return FieldType(FieldType::TextType, 0, name);
    case FieldDescriptor::TYPE_BYTES:
        return FieldType(FieldType::BytesType, 0, name);
    case FieldDescriptor::TYPE_GROUP:
    case FieldDescriptor::TYPE_MESSAGE:
        break;
    }
    return FieldType(infoOf(descriptor->message_type(), false));
}

QVector<FieldInfo::Enumerator> ProtobufTypeBuilder::enumeratorsOf(const google::protobuf::EnumDescriptor* type)
{
    QVector<FieldInfo::Enumerator>& enumerators = m_enumerators[type];
    if (enumerators.isEmpty())
        for (int i = 0; i < type->value_count(); ++i)
            enumerators.append(FieldInfo::Enumerator(static_cast<quint64>(qint64(type->value(i)->number())),
                                                     ProtobufText::fromUtf8(type->value(i)->name()),
                                                     commentOf(type->value(i))));
    return enumerators;
}

void ProtobufTypeBuilder::applyOptions(const FieldDescriptor* descriptor, FieldInfo* field)
{
    const ProtobufOptions options(m_schema->m_pool, descriptor);
    field->setRole(options.getRole());
    field->setConfidential(options.isConfidential());
    if (!options.getUnit().isEmpty())
        field->setUnit(options.getUnit());
}

bool ProtobufTypeBuilder::canBeIncomplete(const Descriptor* type)
{
    std::set<const Descriptor*> known{type};
    std::vector<const Descriptor*> open{type};
    while (!open.empty()) {
        const Descriptor* const next = open.back();
        open.pop_back();
        std::vector<const FieldDescriptor*> fields;
        for (int i = 0; i < next->field_count(); ++i)
            fields.push_back(next->field(i));
        m_schema->m_pool.FindAllExtensions(next, &fields);
        for (const FieldDescriptor* field : fields) {
            if (field->is_required())
                return true;
            if (field->message_type() && known.insert(field->message_type()).second)
                open.push_back(field->message_type());
        }
    }
    return false;
}
