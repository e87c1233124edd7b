#include "protobufdescription.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <limits>

namespace
{

// Of the extensions that docs/protobuf.md shows.
const int RoleNumber = 50001;
const int ConfidentialNumber = 50002;
const int UnitNumber = 50003;

bool isOfDigitsAndLetters(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '_';
}

void addExtension(google::protobuf::FileDescriptorProto* file, const char* name, int number,
                  google::protobuf::FieldDescriptorProto::Type type)
{
    google::protobuf::FieldDescriptorProto* const extension = file->add_extension();
    extension->set_name(name);
    extension->set_number(number);
    extension->set_label(google::protobuf::FieldDescriptorProto::LABEL_OPTIONAL);
    extension->set_type(type);
    extension->set_extendee(".google.protobuf.FieldOptions");
}

const char* roleName(FieldInfo::Role role)
{
    return role == FieldInfo::PrimaryRole ? "primary" : role == FieldInfo::SecondaryRole ? "secondary" : "address";
}

} // namespace

QByteArray ProtobufNames::take(const QByteArray& name)
{
    QByteArray made = name;
    std::replace_if(
        made.begin(), made.end(), [](char character) { return !isOfDigitsAndLetters(character); }, '_');
    if (made.isEmpty() || (made.at(0) >= '0' && made.at(0) <= '9'))
        made.prepend('_');
    const QByteArray base = made;
    for (int number = 2;; ++number) {
        const QByteArray key = QByteArray(made).replace('_', "").toLower();
        if (!m_taken.contains(key)) {
            m_taken.insert(key);
            return made;
        }
        made = base + '_' + QByteArray::number(number);
    }
}

bool ProtobufDescription::isEnumeration(const FieldInfo* field)
{
    const FieldType& type = field->getType();
    const bool isUnsigned = type.getTypeCode() == FieldType::UnsignedType;
    if (field->getEnumerators().isEmpty() || field->isBitmask() || type.getSize() < 1 ||
        (!isUnsigned && type.getTypeCode() != FieldType::SignedType) || type.getSize() > (isUnsigned ? 2 : 4))
        return false;
    for (const FieldInfo::Enumerator& enumerator : field->getEnumerators()) {
        const qint64 value = qint64(enumerator.value);
        if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
            return false;
    }
    return true;
}

void ProtobufDescription::describeValues(const FieldInfo* field, google::protobuf::DescriptorProto* scope)
{
    google::protobuf::EnumDescriptorProto* const values = scope->add_enum_type();
    values->set_name("Value");
    ProtobufNames names;
    QSet<quint64> known;
    const auto add = [&](const QString& name, qint64 number) {
        google::protobuf::EnumValueDescriptorProto* const value = values->add_value();
        value->set_name(names.take(name.toUtf8()).toStdString());
        value->set_number(qint32(number));
        known.insert(quint64(number));
    };
    // The first one has to be 0 where other numbers than those with names are allowed.
    const QVector<FieldInfo::Enumerator>& all = field->getEnumerators();
    const auto zero =
        std::find_if(all.begin(), all.end(), [](const FieldInfo::Enumerator& one) { return one.value == 0; });
    add(zero == all.end() ? QStringLiteral("UNNAMED") : zero->name, 0);
    for (const FieldInfo::Enumerator& enumerator : all)
        if (!known.contains(enumerator.value))
            add(enumerator.name, qint64(enumerator.value));
}

void ProtobufDescription::setOptions(const FieldInfo* field, google::protobuf::FieldDescriptorProto* description)
{
    google::protobuf::UnknownFieldSet options;
    if (field->getRole() != FieldInfo::UnspecifiedRole)
        options.AddLengthDelimited(RoleNumber, roleName(field->getRole()));
    if (field->isConfidential())
        options.AddVarint(ConfidentialNumber, 1);
    // A unit is that of the value after it was multiplied.
    if (!field->getUnit().isEmpty() && field->getScaleFactor() == 1)
        options.AddLengthDelimited(UnitNumber, field->getUnit().toStdString());
    if (!options.empty())
        description->mutable_options()
            ->GetReflection()
            ->MutableUnknownFields(description->mutable_options())
            ->Swap(&options);
}

void ProtobufDescription::describeOptions(google::protobuf::FileDescriptorSet* set)
{
    using google::protobuf::FieldDescriptorProto;
    using google::protobuf::FieldOptions;
    // Only as much of it as options of fields need: each type is published with all that it imports.
    google::protobuf::FileDescriptorProto* const imported = set->add_file();
    const google::protobuf::FileDescriptor* const whole = FieldOptions::descriptor()->file();
    imported->set_name(whole->name());
    imported->set_package(whole->package());
    FieldOptions::descriptor()->CopyTo(imported->add_message_type());
    google::protobuf::UninterpretedOption::descriptor()->CopyTo(imported->add_message_type());
    google::protobuf::FileDescriptorProto* const file = set->add_file();
    file->set_name("corvel/options.proto");
    file->set_package("corvel");
    file->add_dependency(imported->name());
    addExtension(file, "role", RoleNumber, FieldDescriptorProto::TYPE_STRING);
    addExtension(file, "confidential", ConfidentialNumber, FieldDescriptorProto::TYPE_BOOL);
    addExtension(file, "unit", UnitNumber, FieldDescriptorProto::TYPE_STRING);
}

QString ProtobufDescription::commentOf(const FieldInfo* field)
{
    QStringList lines;
    if (!field->getDescription().isEmpty())
        lines.append(field->getDescription());
    if (field->getScaleFactor() != 1)
        lines.append(QCoreApplication::translate("ProtobufFormat", "Times %1: %2")
                         .arg(field->getScaleFactor())
                         .arg(field->getUnit())
                         .trimmed());
    if (!field->getEnumerators().isEmpty() && !isEnumeration(field)) {
        QStringList names;
        for (const FieldInfo::Enumerator& one : field->getEnumerators())
            names.append(QStringLiteral("%1 %2").arg(one.value).arg(one.name));
        lines.append(names.join(QLatin1String(", ")));
    }
    return lines.join(QLatin1Char('\n'));
}
