#ifndef PROTOBUFDESCRIPTION_H
#define PROTOBUFDESCRIPTION_H

#include "fieldinfo.h"

#include <QByteArray>
#include <QSet>

#include <google/protobuf/descriptor.pb.h>

/** Names within one scope of a schema, of which no two may differ in case or underscores only. */
class ProtobufNames
{
public:
    /** @p name with an underscore for each character that it cannot have, and a number when it is taken. */
    QByteArray take(const QByteArray& name);

private:
    QSet<QByteArray> m_taken; // as JSON could write them
};

/** What a schema of Protocol Buffers says of a field beside its type: names of values, units, what it means. */
namespace ProtobufDescription
{

/** Whether all values of a field, with a name or without, are numbers that an enumeration can have. */
bool isEnumeration(const FieldInfo* field);
/** The enumeration, which stands in a scope of its own: names of values are those of their surroundings. */
void describeValues(const FieldInfo* field, google::protobuf::DescriptorProto* scope);

/** Sets the options that docs/protobuf.md tells of. */
void setOptions(const FieldInfo* field, google::protobuf::FieldDescriptorProto* description);
/** The schemas that these options are from, such that each imports those before it. */
void describeOptions(google::protobuf::FileDescriptorSet* set);

/** What is to be known of a field beside: its description, what its values are multiplied with, names of flags. */
QString commentOf(const FieldInfo* field);

} // namespace ProtobufDescription

#endif
