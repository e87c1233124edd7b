#ifndef PROTOBUFOPTIONS_H
#define PROTOBUFOPTIONS_H

#include "fieldinfo.h"

#include <google/protobuf/descriptor.h>

/**
 * What a schema says of a field with the options "corvel.role", "corvel.confidential" and "corvel.unit".
 *
 * They are found by name among the extensions of google.protobuf.FieldOptions that the schema brings along, so that
 * their numbers are the schema's own affair.
 */
class ProtobufOptions
{
public:
    ProtobufOptions(const google::protobuf::DescriptorPool& pool, const google::protobuf::FieldDescriptor* field);

    FieldInfo::Role getRole() const { return m_role; }
    bool isConfidential() const { return m_confidential; }
    QString getUnit() const { return m_unit; }

private:
    FieldInfo::Role m_role;
    bool m_confidential;
    QString m_unit;
};

#endif
