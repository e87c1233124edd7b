#ifndef PROTOBUFTYPEBUILDER_H
#define PROTOBUFTYPEBUILDER_H

#include "fieldinfo.h"
#include "protobufschema.h"

#include <vector>

/** Makes message types of descriptors: the type that is asked for and all that it leads to. */
class ProtobufTypeBuilder
{
public:
    ProtobufTypeBuilder(ProtobufSchema* schema, QVector<MessageInfo*>* made);

    /** The type for messages that are received on their own; one that was made before is not made again. */
    const ProtobufMessageInfo* build(const google::protobuf::Descriptor* type);

private:
    typedef google::protobuf::Descriptor Descriptor;
    typedef google::protobuf::FieldDescriptor FieldDescriptor;

    ProtobufMessageInfo* infoOf(const Descriptor* type, bool main);
    void fill(ProtobufMessageInfo* info);
    FieldInfo* createField(const FieldDescriptor* descriptor, ProtobufMessageInfo* info);
    FieldType typeOf(const FieldDescriptor* descriptor);
    QVector<FieldInfo::Enumerator> enumeratorsOf(const google::protobuf::EnumDescriptor* type);
    void applyOptions(const FieldDescriptor* descriptor, FieldInfo* field);
    bool canBeIncomplete(const Descriptor* type);

    ProtobufSchema* m_schema;
    QVector<MessageInfo*>* m_made;
    std::vector<ProtobufMessageInfo*> m_empty; // made, but without fields so far
    std::unordered_map<const google::protobuf::EnumDescriptor*, QVector<FieldInfo::Enumerator>> m_enumerators;
};

#endif
