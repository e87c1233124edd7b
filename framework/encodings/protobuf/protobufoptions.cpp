#include "protobufoptions.h"

#include "protobuftext.h"

#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/unknown_field_set.h>

using google::protobuf::FieldDescriptor;
using google::protobuf::UnknownField;

namespace
{

// The value of an option, or null. It is unknown to the library, which was built without the schema.
const UnknownField* findOption(const google::protobuf::DescriptorPool& pool, const FieldDescriptor* field,
                               const char* name, UnknownField::Type type)
{
    const FieldDescriptor* const option = pool.FindExtensionByName(name);
    if (!option || option->containing_type()->full_name() != "google.protobuf.FieldOptions")
        return nullptr;
    const google::protobuf::FieldOptions& options = field->options();
    const google::protobuf::UnknownFieldSet& set = options.GetReflection()->GetUnknownFields(options);
    const UnknownField* found = nullptr;
    for (int i = 0; i < set.field_count(); ++i)
        if (set.field(i).number() == option->number() && set.field(i).type() == type)
            found = &set.field(i);
    return found;
}

} // namespace

ProtobufOptions::ProtobufOptions(const google::protobuf::DescriptorPool& pool, const FieldDescriptor* field)
    : m_role(FieldInfo::UnspecifiedRole)
    , m_confidential(false)
{
    if (const UnknownField* role = findOption(pool, field, "corvel.role", UnknownField::TYPE_VARINT))
        m_role = role->varint() <= FieldInfo::AddressRole ? static_cast<FieldInfo::Role>(role->varint())
                                                          : FieldInfo::UnspecifiedRole;
    if (const UnknownField* role = findOption(pool, field, "corvel.role", UnknownField::TYPE_LENGTH_DELIMITED))
        m_role = role->length_delimited() == "primary"     ? FieldInfo::PrimaryRole
                 : role->length_delimited() == "secondary" ? FieldInfo::SecondaryRole
                                                           : FieldInfo::UnspecifiedRole;
    if (const UnknownField* confidential = findOption(pool, field, "corvel.confidential", UnknownField::TYPE_VARINT))
        m_confidential = confidential->varint() != 0;
    if (const UnknownField* unit = findOption(pool, field, "corvel.unit", UnknownField::TYPE_LENGTH_DELIMITED))
        m_unit = ProtobufText::fromUtf8(unit->length_delimited());
}
