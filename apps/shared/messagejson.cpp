#include "messagejson.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "jsontext.h"
#include "message.h"
#include "messageinfo.h"

using namespace JsonText;

// A repeated field without elements is an empty array, unless the message can lack it.
static bool isAbsent(const FieldInfo* field, unsigned int count)
{
    return count == 0 && (!field->isRepeated() || field->isOptional());
}

MessageJson::MessageJson(bool interpreted)
    : m_interpreted(interpreted)
{
}

void MessageJson::appendHead(const Head& head, std::string* line)
{
    line->append("{\"time\":");
    if (head.time == Message::NoTime)
        line->append("null");
    else
        appendTime(line, head.time, head.timeRest);
    if (head.publishTime != Message::NoTime) {
        line->append(",\"published\":");
        appendTime(line, head.publishTime, head.publishTimeRest);
    }
    line->append(",\"format\":").append(*head.format);
    line->append(",\"sender\":").append(*head.sender);
    line->append(",\"type\":").append(*head.type);
    line->append(",\"sequence\":");
    if (head.sequence == Message::NoSequence)
        line->append("null");
    else
        appendNumber(line, std::int64_t(head.sequence));
    line->append(",\"fields\":");
}

QString MessageJson::toText(const Message* message)
{
    const FormatInfo* const formatInfo = message->getInfo()->getFormatInfo();
    const std::string format = formatInfo ? toString(formatInfo->getName()) : "null";
    const std::string sender = message->getSender().isEmpty() ? "null" : toString(message->getSender());
    const std::string type = toString(message->getInfo()->getName());
    std::string line;
    appendHead(Head{message->getTime(), &format, &sender, &type, message->getSequence()}, &line);
    MessageJson(false).appendFields(message, &line);
    line.push_back('}');
    return QString::fromUtf8(line.data(), int(line.size()));
}

const MessageJson::Fields& MessageJson::fieldsOf(const MessageInfo* info)
{
    const auto known = m_fields.find(info);
    if (known != m_fields.end())
        return known->second;
    Fields fields;
    const QVector<const FieldInfo*> infos = info->getFieldInfos();
    for (const FieldInfo* field : infos)
        fields.push_back(Field{field, toString(field->getName()) + ':'});
    return m_fields.emplace(info, std::move(fields)).first->second;
}

void MessageJson::appendFields(const Message* message, std::string* line)
{
    line->push_back('{');
    Separator separator(line);
    for (const Field& field : fieldsOf(message->getInfo())) {
        const unsigned int count = field.info->getValueCount(message);
        if (isAbsent(field.info, count))
            continue;
        separator.next();
        line->append(field.key);
        appendField(field.info, message, count, line);
    }
    line->push_back('}');
}

void MessageJson::appendField(const FieldInfo* field, const Message* message, unsigned int count, std::string* line)
{
    if (Corvel::isHidden(field)) {
        line->append("null");
    } else if (field->isStringField()) {
        appendText(field, message, count, line);
    } else if (!field->isRepeated()) {
        appendShown(field, message, 0, line);
    } else {
        line->push_back('[');
        Separator separator(line);
        for (unsigned int i = 0; i < count; ++i) {
            separator.next();
            appendShown(field, message, i, line);
        }
        line->push_back(']');
    }
}

// FieldInfo::getStringValue() without its QString.
void MessageJson::appendText(const FieldInfo* field, const Message* message, unsigned int count, std::string* line)
{
    m_characters.clear();
    for (unsigned int i = 0; i < count; ++i) {
        const char character = static_cast<char>(field->getValue(message, i).toUnsigned());
        if (!character)
            break;
        m_characters.push_back(character);
    }
    appendString(line, m_characters.data(), m_characters.size());
}

void MessageJson::appendShown(const FieldInfo* field, const Message* message, unsigned int index, std::string* line)
{
    const FieldValue value = field->getValue(message, index);
    if (const Message* const subMessage = value.getSubMessage())
        appendFields(subMessage, line);
    else if (m_interpreted)
        appendString(line, field->getInterpretedString(value, true));
    else if (value.getKind() == FieldValue::TextKind && !field->getSubFieldInfos().isEmpty())
        appendParts(field, message, index, line);
    else
        appendRawValue(value, line);
}

// What people read as one text, such as a time, is transmitted as its components.
void MessageJson::appendParts(const FieldInfo* field, const Message* message, unsigned int index, std::string* line)
{
    line->push_back('{');
    Separator separator(line);
    const QVector<const FieldInfo*> parts = field->getSubFieldInfos();
    for (const FieldInfo* part : parts) {
        separator.next();
        appendString(line, part->getName());
        line->push_back(':');
        appendRawValue(part->getValue(message, index), line);
    }
    line->push_back('}');
}

bool MessageJson::appendWalk(const FieldWalk& walk, std::string* line)
{
    switch (walk.getEnd()) {
    case FieldWalk::WholeMessage:
        appendFields(walk.getHolder(), line);
        return true;
    case FieldWalk::OneValue:
        appendShown(walk.getField(), walk.getHolder(), walk.getIndex(), line);
        return true;
    case FieldWalk::AllValues:
        appendField(walk.getField(), walk.getHolder(), walk.getCount(), line);
        return true;
    case FieldWalk::Hidden:
        line->append("null");
        return true;
    case FieldWalk::Branches: {
        line->push_back('[');
        Separator separator(line);
        for (unsigned int i = 0; i < walk.getCount(); ++i) {
            separator.next();
            if (!appendWalk(walk.getBranch(i), line))
                line->append("null");
        }
        line->push_back(']');
        return true;
    }
    case FieldWalk::NoSuchField:
    case FieldWalk::Absent:
    case FieldWalk::OutOfRange:
        break;
    }
    return false;
}

void MessageJson::appendRawValue(const FieldValue& value, std::string* line)
{
    switch (value.getKind()) {
    case FieldValue::SignedKind:
        appendNumber(line, std::int64_t(value.toSigned()));
        break;
    case FieldValue::UnsignedKind:
    case FieldValue::CharKind:
        appendNumber(line, std::uint64_t(value.toUnsigned()));
        break;
    case FieldValue::FloatKind:
        appendNumber(line, static_cast<float>(value.toDouble()));
        break;
    case FieldValue::DoubleKind:
        appendNumber(line, value.toDouble());
        break;
    case FieldValue::DecimalKind:
        line->append(value.toText().toStdString());
        break;
    case FieldValue::BoolKind:
        line->append(value.toUnsigned() ? "true" : "false");
        break;
    case FieldValue::TextKind:
        appendString(line, value.toText());
        break;
    case FieldValue::BytesKind:
        appendString(line, value.toBytes().toHex());
        break;
    case FieldValue::InvalidKind:
    case FieldValue::SubMessageKind:
        line->append("null");
        break;
    }
}
