#ifndef MESSAGEJSON_H
#define MESSAGEJSON_H

#include <string>
#include <unordered_map>
#include <vector>

class FieldInfo;
class FieldValue;
class Message;
class MessageInfo;

/** Writes messages, their fields and values as JSON. Contents that are confidential become null. */
class MessageJson
{
public:
    /** @param interpreted  writes values as people read them instead of as they were transmitted */
    explicit MessageJson(bool interpreted);

    /** All fields that the message has, as an object. */
    void appendFields(const Message* message, std::string* line);

    /** All values of a field, as an array when it is repeated. @p count is their number, and not 0 otherwise. */
    void appendField(const FieldInfo* field, const Message* message, unsigned int count, std::string* line);

    void appendValue(const FieldInfo* field, const FieldValue& value, std::string* line);

private:
    /** A field with what is always the same about it. */
    struct Field
    {
        const FieldInfo* info;
        std::string key; // with quotes and colon
    };
    typedef std::vector<Field> Fields;

    const Fields& fieldsOf(const MessageInfo* info);
    void appendText(const FieldInfo* field, const Message* message, unsigned int count, std::string* line);
    static void appendRawValue(const FieldValue& value, std::string* line);

    bool m_interpreted;
    std::unordered_map<const MessageInfo*, Fields> m_fields;
    std::string m_characters;
};

#endif
