#include "messageprinter.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "jsontext.h"
#include "messageinfo.h"
#include "messagereference.h"

using namespace JsonText;

static std::string jsonString(const QString& text)
{
    std::string result;
    appendString(&result, text);
    return result;
}

MessagePrinter::MessagePrinter(const QString& inputName, const StreamDecoder* decoder, bool interpreted,
                               const Selection& selection)
    : DumpSink(inputName, decoder)
    , m_interpreted(interpreted)
    , m_selection(selection)
    , m_format(jsonString(decoder->getFormatInfo()->getName()))
{
}

const MessagePrinter::Fields& MessagePrinter::fieldsOf(const MessageInfo* info)
{
    const auto known = m_fields.find(info);
    if (known != m_fields.end())
        return known->second;
    Fields fields;
    const QVector<const FieldInfo*> infos = info->getFieldInfos();
    for (const FieldInfo* field : infos)
        fields.push_back(Field{field, jsonString(field->getName()) + ':',
                               field->isConfidential() && !Corvel::confidentialInformationDisplayEnabled()});
    return m_fields.emplace(info, std::move(fields)).first->second;
}

const std::string& MessagePrinter::senderOf(quint32 sender)
{
    std::string& text = m_senders[sender];
    if (text.empty()) {
        const QString name = getDecoder()->getSenderName(sender);
        text = name.isEmpty() ? "null" : jsonString(name);
    }
    return text;
}

void MessagePrinter::consume(const ReceivedMessage& received)
{
    if (!received.info || !m_selection.has(received.info))
        return;
    m_line.assign("{\"time\":");
    if (received.time == Message::NoTime)
        m_line.append("null");
    else
        appendTime(&m_line, received.time);
    m_line.append(",\"format\":").append(m_format);
    m_line.append(",\"sender\":").append(senderOf(received.sender));
    std::string& typeName = m_typeNames[received.info];
    if (typeName.empty())
        typeName = jsonString(received.info->getName());
    m_line.append(",\"type\":").append(typeName);
    m_line.append(",\"sequence\":");
    if (received.sequence == Message::NoSequence)
        m_line.append("null");
    else
        appendNumber(&m_line, std::int64_t(received.sequence));
    m_line.append(",\"fields\":");
    const MessageReference message = MessageReference::adopt(received.createMessage(QString()));
    const QVector<Selection::Field> selected = m_selection.getFields(received.info);
    if (selected.isEmpty())
        appendFields(message.get());
    else
        appendSelected(message.get(), selected);
    m_line.append("}\n");
    print(m_line);
}

void MessagePrinter::count(const StreamProblem&) {}

void MessagePrinter::finish() {}

void MessagePrinter::appendFields(const Message* message)
{
    m_line.push_back('{');
    Separator separator(&m_line);
    for (const Field& field : fieldsOf(message->getInfo())) {
        const unsigned int count = field.info->getValueCount(message);
        // A repeated field without elements is an empty array, unless the message can lack it.
        if (count == 0 && (!field.info->isRepeated() || field.info->isOptional()))
            continue;
        separator.next();
        m_line.append(field.key);
        appendField(field, message, count);
    }
    m_line.push_back('}');
}

void MessagePrinter::appendSelected(const Message* message, const QVector<Selection::Field>& fields)
{
    m_line.push_back('{');
    Separator separator(&m_line);
    for (const Selection::Field& selected : fields) {
        // Down into sub-messages; components are read from the message that their whole field lies in.
        const Message* holder = message;
        const int last = int(selected.match.fieldInfos.size()) - 1;
        for (int i = 0; i < last && holder; ++i) {
            const FieldInfo* way = selected.match.fieldInfos.at(i);
            if (way->getType().getTypeCode() == FieldType::SubMessageType) {
                const unsigned int index = unsigned(qMax(0, selected.match.indexes.at(i)));
                holder = index < way->getValueCount(holder) ? way->getValue(holder, index).getSubMessage() : nullptr;
            }
        }
        const FieldInfo* info = selected.match.fieldInfos.at(last);
        const unsigned int count = holder ? info->getValueCount(holder) : 0;
        const int index = selected.match.indexes.at(last);
        if (count == 0 || (index >= 0 && unsigned(index) >= count))
            continue;
        const Field field{info, jsonString(selected.key) + ':',
                          info->isConfidential() && !Corvel::confidentialInformationDisplayEnabled()};
        separator.next();
        m_line.append(field.key);
        if (index < 0 || field.hidden)
            appendField(field, holder, count);
        else
            appendValue(info, info->getValue(holder, unsigned(index)));
    }
    m_line.push_back('}');
}

void MessagePrinter::appendField(const Field& field, const Message* message, unsigned int count)
{
    if (field.hidden) {
        m_line.append("null");
    } else if (field.info->isStringField()) {
        appendText(field.info, message, count);
    } else if (!field.info->isRepeated()) {
        appendValue(field.info, field.info->getValue(message, 0));
    } else {
        m_line.push_back('[');
        Separator separator(&m_line);
        for (unsigned int i = 0; i < count; ++i) {
            separator.next();
            appendValue(field.info, field.info->getValue(message, i));
        }
        m_line.push_back(']');
    }
}

// FieldInfo::getStringValue() without its QString.
void MessagePrinter::appendText(const FieldInfo* field, const Message* message, unsigned int count)
{
    m_characters.clear();
    for (unsigned int i = 0; i < count; ++i) {
        const char character = static_cast<char>(field->getValue(message, i).toUnsigned());
        if (!character)
            break;
        m_characters.push_back(character);
    }
    appendString(&m_line, m_characters.data(), m_characters.size());
}

void MessagePrinter::appendValue(const FieldInfo* field, const FieldValue& value)
{
    if (const Message* const subMessage = value.getSubMessage())
        appendFields(subMessage);
    else if (m_interpreted)
        appendString(&m_line, field->getInterpretedString(value, true));
    else
        appendRawValue(value);
}

void MessagePrinter::appendRawValue(const FieldValue& value)
{
    switch (value.getKind()) {
    case FieldValue::SignedKind:
        appendNumber(&m_line, std::int64_t(value.toSigned()));
        break;
    case FieldValue::UnsignedKind:
    case FieldValue::CharKind:
        appendNumber(&m_line, std::uint64_t(value.toUnsigned()));
        break;
    case FieldValue::FloatKind:
        appendNumber(&m_line, static_cast<float>(value.toDouble()));
        break;
    case FieldValue::DoubleKind:
        appendNumber(&m_line, value.toDouble());
        break;
    case FieldValue::BoolKind:
        m_line.append(value.toUnsigned() ? "true" : "false");
        break;
    case FieldValue::TextKind:
        appendString(&m_line, value.toText());
        break;
    case FieldValue::BytesKind:
        appendString(&m_line, value.toBytes().toHex());
        break;
    case FieldValue::InvalidKind:
    case FieldValue::SubMessageKind:
        m_line.append("null");
        break;
    }
}
