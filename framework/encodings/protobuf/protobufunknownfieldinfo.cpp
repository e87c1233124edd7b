#include "protobuffieldinfo.h"
#include "protobufmessage.h"
#include "protobufplaces.h"
#include "protobuftext.h"

#include <QCoreApplication>

#include <google/protobuf/unknown_field_set.h>

#include <typeinfo>

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::UnknownField;
using google::protobuf::UnknownFieldSet;

namespace
{

// Only so much of a group is written down; the rest is counted.
const int GreatestGroupSize = 16;

QString textOf(const UnknownField& field, const FieldInfo& info)
{
    const QString number = QString::number(field.number());
    switch (field.type()) {
    case UnknownField::TYPE_VARINT:
        return number + QStringLiteral(": varint ") + QString::number(field.varint());
    case UnknownField::TYPE_FIXED32:
        return number + QStringLiteral(": fixed32 0x%1").arg(field.fixed32(), 8, 16, QLatin1Char('0'));
    case UnknownField::TYPE_FIXED64:
        return number + QStringLiteral(": fixed64 0x%1").arg(field.fixed64(), 16, 16, QLatin1Char('0'));
    case UnknownField::TYPE_LENGTH_DELIMITED:
        return number + QStringLiteral(": bytes ") +
               info.getInterpretedString(FieldValue::fromBytes(ProtobufText::toBytes(field.length_delimited())), false);
    case UnknownField::TYPE_GROUP:
        break;
    }
    const UnknownFieldSet& group = field.group();
    QString text = number + QStringLiteral(": group {");
    for (int i = 0; i < group.field_count() && i < GreatestGroupSize; ++i)
        text += (i == 0 ? QStringLiteral(" ") : QStringLiteral(", ")) + textOf(group.field(i), info);
    if (group.field_count() > GreatestGroupSize)
        text +=
            QCoreApplication::translate("ProtobufFormat", ", and %1 more").arg(group.field_count() - GreatestGroupSize);
    return text + QStringLiteral(" }");
}

// Why a field whose number the schema knows is unknown all the same.
QString reasonOf(const UnknownField& field, const Descriptor* type)
{
    const FieldDescriptor* const known = type->FindFieldByNumber(field.number());
    if (!known)
        return QString();
    const QString name = ProtobufText::fromUtf8(known->name());
    if (known->type() == FieldDescriptor::TYPE_ENUM && field.type() == UnknownField::TYPE_VARINT)
        return QCoreApplication::translate("ProtobufFormat", " (no value of the enum of %1)").arg(name);
    return QCoreApplication::translate("ProtobufFormat", " (but %1 is %2)")
        .arg(name, QString::fromLatin1(known->type_name()));
}

} // namespace

ProtobufUnknownFieldInfo::ProtobufUnknownFieldInfo(const google::protobuf::Message* prototype)
    : FieldInfo(QStringLiteral("[unknown fields]"), FieldType(FieldType::TextType, 0, QStringLiteral("text")))
    , m_prototype(prototype)
{
    setRepeated(true);
    setOptional(true);
    setRole(SecondaryRole);
}

const UnknownFieldSet* ProtobufUnknownFieldInfo::setOf(const Message* message) const
{
    if (typeid(*message) != typeid(ProtobufMessage))
        return nullptr;
    const google::protobuf::Message* const content = static_cast<const ProtobufMessage*>(message)->getContent();
    if (content->GetDescriptor() != m_prototype->GetDescriptor())
        return nullptr;
    return &content->GetReflection()->GetUnknownFields(*content);
}

unsigned int ProtobufUnknownFieldInfo::getValueCount(const Message* message) const
{
    const UnknownFieldSet* const fields = setOf(message);
    return fields ? static_cast<unsigned int>(fields->field_count()) : 0;
}

FieldValue ProtobufUnknownFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const UnknownFieldSet* const fields = setOf(message);
    if (!fields || index >= static_cast<unsigned int>(fields->field_count()))
        return FieldValue::invalid();
    const UnknownField& field = fields->field(static_cast<int>(index));
    return FieldValue::fromText(textOf(field, *this) + reasonOf(field, m_prototype->GetDescriptor()));
}

FieldBytes::End ProtobufUnknownFieldInfo::locate(const Holder& holder, int index, LocatedBytes* found) const
{
    return ProtobufPlaces(&holder).findUnknown(m_prototype->GetDescriptor(), index,
                                               static_cast<int>(getValueCount(holder.message)), found);
}
