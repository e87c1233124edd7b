#ifndef MESSAGEJSON_H
#define MESSAGEJSON_H

#include "fieldwalk.h"
#include "message.h"

#include <string>
#include <unordered_map>
#include <vector>

class FieldInfo;
class FieldValue;
class MessageInfo;

/** Writes messages, their fields and values as JSON. Contents that are confidential become null. */
class MessageJson
{
public:
    /** @param interpreted  writes values as people read them instead of as they were transmitted */
    explicit MessageJson(bool interpreted);

    /** What stands before a message's fields; what is text is JSON: "null" or a string with its quotes. */
    struct Head
    {
        qint64 time; ///< microseconds since 1970, or Message::NoTime
        const std::string* format;
        const std::string* sender;
        const std::string* type;
        qint64 sequence; ///< or Message::NoSequence
        // As of ReceivedMessage.
        int timeRest = -1;
        qint64 publishTime = Message::NoTime;
        int publishTimeRest = -1;
    };

    /** Begins the object of a message up to its fields, whose object and a brace are to follow. */
    static void appendHead(const Head& head, std::string* line);

    /** A whole message as it was transmitted, without a line end. */
    static QString toText(const Message* message);

    /** All fields that the message has, as an object. */
    void appendFields(const Message* message, std::string* line);

    /** All values of a field, as an array when it is repeated. @p count is their number, and not 0 otherwise. */
    void appendField(const FieldInfo* field, const Message* message, unsigned int count, std::string* line);

    /**
     * What lies at the end of a walk. Each repeated sub-message on it that no number is given for becomes an array with
     * one element for each of its own, null where the rest of the way is absent.
     *
     * @return false, with nothing appended, when it is absent
     */
    bool appendWalk(const FieldWalk& walk, std::string* line);

private:
    /** A field with what is always the same about it. */
    struct Field
    {
        const FieldInfo* info;
        std::string key; // with quotes and colon
    };
    typedef std::vector<Field> Fields;

    const Fields& fieldsOf(const MessageInfo* info);
    void appendShown(const FieldInfo* field, const Message* message, unsigned int index, std::string* line);
    void appendParts(const FieldInfo* field, const Message* message, unsigned int index, std::string* line);
    void appendText(const FieldInfo* field, const Message* message, unsigned int count, std::string* line);
    static void appendRawValue(const FieldValue& value, std::string* line);

    bool m_interpreted;
    std::unordered_map<const MessageInfo*, Fields> m_fields;
    std::string m_characters;
};

#endif
