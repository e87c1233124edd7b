#ifndef PROTOBUFTRANSCODER_H
#define PROTOBUFTRANSCODER_H

#include "definitions.h"

#include <QHash>

#include <memory>
#include <vector>

class FieldInfo;
class FieldValue;
class Message;

/**
 * Writes messages of a type as Protocol Buffers, so that software that does not know their own encoding can read them.
 *
 * Names, values and presence are the same as before: numbers keep their kind, texts are UTF-8 up to their first zero, a
 * bit mask stays a number. What a schema has no word for stands in options (docs/protobuf.md) and comments. Computed
 * fields are left out, confidential ones say that they are. Any thread, one at a time.
 */
class CORVELFRAMEWORK_EXPORT ProtobufTranscoder
{
public:
    /** @param info  must outlive this object; the types of its fields as well */
    explicit ProtobufTranscoder(const MessageInfo* info);
    ~ProtobufTranscoder();

    /** The type: its name is that of the message type, with other characters where Protocol Buffers has none of these.
     * The same type always gives the same bytes. */
    const TypeSchema& getSchema() const { return m_schema; }

    /** The bytes of @p message, which must be of the type. */
    QByteArray encode(const Message* message) const;

private:
    Q_DISABLE_COPY(ProtobufTranscoder)

    /** How the values of a field are written. */
    enum Wire
    {
        Varint,
        Zigzag,
        Fixed32,
        Fixed64,
        Joined, ///< characters that are one text
        Text,
        Bytes,
        Part
    };
    struct Type;
    struct Field
    {
        const FieldInfo* info;
        quint32 number;
        Wire wire;
        bool isSigned; // of a Varint
        bool isList;
        bool isOptional;
        const Type* part;
    };
    struct Type
    {
        QByteArray name;
        std::vector<Field> fields;
    };
    struct Schema;

    const Type* addType(const MessageInfo* info, const QByteArray& name, Schema* schema);
    static void appendFields(const Type& type, const Message* message, QByteArray* bytes);
    static void appendSingle(const Field& field, const Message* message, QByteArray* bytes);
    static void appendPacked(const Field& field, const Message* message, unsigned int count, QByteArray* bytes);
    static void appendElement(const Field& field, const FieldValue& value, QByteArray* bytes);
    static bool appendNumber(const Field& field, const FieldValue& value, QByteArray* bytes);

    QHash<const MessageInfo*, const Type*> m_byInfo;
    std::vector<std::unique_ptr<Type>> m_types;
    TypeSchema m_schema;
};

#endif
