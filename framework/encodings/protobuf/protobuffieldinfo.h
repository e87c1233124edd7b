#ifndef PROTOBUFFIELDINFO_H
#define PROTOBUFFIELDINFO_H

#include "fieldinfo.h"
#include "fieldlocator.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

class ProtobufMessage;
class ProtobufMessageInfo;

/** A field that a descriptor describes; also an extension. Numbers, texts, bytes and sub-messages, one or many. */
class ProtobufFieldInfo : public FieldInfo, public FieldLocator
{
public:
    /**
     * @param type        of an element
     * @param descriptor  must outlive this object
     * @param prototype   of the type that the field stands in
     * @param slot        its number among the sub-message fields of its type, when it is one
     */
    ProtobufFieldInfo(const QString& name, const FieldType& type, const google::protobuf::FieldDescriptor* descriptor,
                      const google::protobuf::Message* prototype, int slot);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;
    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override;

protected:
    /** The parsed message, or null when the field does not occur in it. */
    const google::protobuf::Message* contentOf(const Message* message) const;
    unsigned int countIn(const google::protobuf::Message& content) const;
    /** An element that is a message. */
    const google::protobuf::Message& elementOf(const google::protobuf::Message& content, unsigned int index) const;

private:
    FieldValue singleValue(const google::protobuf::Message& content) const;
    FieldValue repeatedValue(const google::protobuf::Message& content, int index) const;
    FieldValue textValue(const std::string& text) const;

    const google::protobuf::FieldDescriptor* m_descriptor;
    const google::protobuf::Descriptor* m_holder;
    const google::protobuf::Reflection* m_reflection;
    google::protobuf::FieldDescriptor::CppType m_cppType;
    bool m_isBytes;
    bool m_hasPresence;
    int m_slot;
};

/** A point in time or a duration, which is a message of two numbers: read as one value, with the numbers below it. */
class ProtobufTimeFieldInfo : public ProtobufFieldInfo
{
public:
    enum Kind
    {
        NoTime,
        Timestamp,
        Duration
    };

    ProtobufTimeFieldInfo(const QString& name, Kind kind, const google::protobuf::FieldDescriptor* descriptor,
                          const google::protobuf::Message* prototype);

    FieldValue getValue(const Message* message, unsigned int index) const override;

    /** What messages of a type mean. The type must really have the two numbers. */
    static Kind kindOf(const google::protobuf::Descriptor* type);

private:
    class Part;

    FieldValue partOf(const Message* message, unsigned int index, int number) const;

    Kind m_kind;
};

/** Fields that were received and that the schema does not know, as texts such as "7: varint 150". */
class ProtobufUnknownFieldInfo : public FieldInfo, public FieldLocator
{
public:
    explicit ProtobufUnknownFieldInfo(const google::protobuf::Message* prototype);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;
    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override;

private:
    const google::protobuf::UnknownFieldSet* setOf(const Message* message) const;

    const google::protobuf::Message* m_prototype;
};

#endif
