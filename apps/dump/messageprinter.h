#ifndef MESSAGEPRINTER_H
#define MESSAGEPRINTER_H

#include "dumpsink.h"
#include "selection.h"

#include <unordered_map>
#include <vector>

class FieldInfo;
class FieldValue;

/** Prints each message of a known type as one line of JSON. */
class MessagePrinter : public DumpSink
{
public:
    /**
     * @param interpreted  prints values as people read them instead of as they were transmitted
     * @param selection    what to print of it all
     */
    MessagePrinter(const QString& inputName, const StreamDecoder* decoder, bool interpreted,
                   const Selection& selection);

    void finish() override;
    QString getComplaint() const override { return m_selection.getComplaint(); }

protected:
    void consume(const ReceivedMessage& message) override;
    void count(const StreamProblem& problem) override;

private:
    /** A field with what is always the same about it. */
    struct Field
    {
        const FieldInfo* info;
        std::string key; // with quotes and colon
        bool hidden;
    };
    typedef std::vector<Field> Fields;

    const Fields& fieldsOf(const MessageInfo* info);
    const std::string& senderOf(quint32 sender);
    void appendFields(const Message* message);
    void appendField(const Field& field, const Message* message, unsigned int count);
    void appendText(const FieldInfo* field, const Message* message, unsigned int count);
    void appendValue(const FieldInfo* field, const FieldValue& value);
    void appendRawValue(const FieldValue& value);

    void appendSelected(const Message* message, const QVector<Selection::Field>& fields);

    bool m_interpreted;
    Selection m_selection;
    std::string m_format;
    std::unordered_map<const MessageInfo*, Fields> m_fields;
    std::unordered_map<const MessageInfo*, std::string> m_typeNames;
    std::unordered_map<quint32, std::string> m_senders;
    std::string m_line;
    std::string m_characters;
};

#endif
