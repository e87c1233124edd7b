#include "jsonfieldinfo.h"

#include "jsonmessage.h"
#include "jsonscalar.h"
#include "timetext.h"

#include <QCoreApplication>

#include <cstring>
#include <limits>
#include <typeinfo>

namespace
{

const char SecondsName[] = "sec";
const char NanosName[] = "nsec";

// Null for messages that others made.
const JsonMessage* jsonMessage(const Message* message, const FieldInfo* field)
{
    const bool isOwn = typeid(*message) == typeid(JsonMessage) && field->occursIn(message->getInfo());
    return isOwn ? static_cast<const JsonMessage*>(message) : nullptr;
}

FieldValue bytesOf(const QString& text)
{
    const QByteArray::FromBase64Result decoded = QByteArray::fromBase64Encoding(
        text.toLatin1(), QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    // What is no base64 is shown as it is.
    return decoded ? FieldValue::fromBytes(*decoded) : FieldValue::fromText(text);
}

bool isInteger(const JsonDocument& document, quint32 node)
{
    return node != 0 && document.at(node).kind == JsonNode::Number &&
           JsonScalar::toNumber(document.getRaw(node)).isInteger();
}

FieldBytes::End placeOf(const JsonDocument& document, qint64 node, LocatedBytes* found)
{
    if (node < 0 || document.getSkipped() < 0)
        return FieldBytes::Untold;
    const JsonNode& value = document.at(quint32(node));
    found->bytes.append({document.getSkipped() + qint64(value.begin), document.getSkipped() + qint64(value.end)});
    return FieldBytes::Found;
}

} // namespace

/** One of the two numbers of a time. */
class JsonFieldInfo::Part : public FieldInfo, public FieldLocator
{
public:
    Part(const JsonFieldInfo* whole, const char* name)
        : FieldInfo(QLatin1String(name), FieldType(FieldType::SignedType, 8, QStringLiteral("integer")))
        , m_whole(whole)
        , m_name(name)
    {
        setUnit(name == NanosName ? QStringLiteral("ns") : QStringLiteral("s"));
        setOptional(whole->isOptional());
        setRepeated(whole->isRepeated());
    }

    unsigned int getValueCount(const Message* message) const override { return m_whole->getValueCount(message); }
    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        return m_whole->partOf(message, index, m_name);
    }
    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override
    {
        return m_whole->locatePart(holder, index, m_name, found);
    }

private:
    const JsonFieldInfo* m_whole;
    const char* m_name;
};

JsonFieldInfo::JsonFieldInfo(const QString& name, JsonShape::Kind kind, const FieldType& type, const Place& place)
    : FieldInfo(name, type)
    , m_kind(kind)
    , m_holder(place.holder)
    , m_slot(place.slot)
{
    setRepeated(place.isRepeated);
    setOptional(!place.isRequired);
    if (isTime())
        for (const char* const part : {SecondsName, NanosName})
            addSubField(new Part(this, part));
}

bool JsonFieldInfo::hasStructure() const
{
    return isTime() || getType().getSubMessageInfo();
}

bool JsonFieldInfo::canBe(const JsonDocument& document, quint32 node) const
{
    return isRepeated() ? document.at(node).kind == JsonNode::Array : canBeElement(document, node);
}

bool JsonFieldInfo::canBeElement(const JsonDocument& document, quint32 node) const
{
    const JsonNode::Kind kind = document.at(node).kind;
    if (!hasStructure() || kind == JsonNode::Null)
        return true;
    if (isTime())
        return kind == JsonNode::Object && document.at(node).count == 2 &&
               isInteger(document, document.findMember(node, SecondsName)) &&
               isInteger(document, document.findMember(node, NanosName));
    const bool isObject = static_cast<const JsonMessageInfo*>(getType().getSubMessageInfo())->isObject();
    return kind == (isObject ? JsonNode::Object : JsonNode::Array);
}

QString JsonFieldInfo::getExpectation() const
{
    return isRepeated() ? QCoreApplication::translate("JsonCheck", "but %1 is an array").arg(getName())
                        : getElementExpectation();
}

QString JsonFieldInfo::getElementExpectation() const
{
    const QString kind = isTime()                     ? getType().toShortString()
                         : m_kind == JsonShape::Array ? QCoreApplication::translate("JsonCheck", "an array")
                                                      : QCoreApplication::translate("JsonCheck", "an object");
    return QCoreApplication::translate("JsonCheck", "but %1 is %2").arg(getName(), kind);
}

const JsonMessage* JsonFieldInfo::ownMessage(const Message* message) const
{
    const bool isOwn = message->getInfo() == m_holder && typeid(*message) == typeid(JsonMessage);
    return isOwn ? static_cast<const JsonMessage*>(message) : nullptr;
}

unsigned int JsonFieldInfo::getValueCount(const Message* message) const
{
    const JsonMessage* const own = ownMessage(message);
    const qint64 node = own ? own->getNode(m_slot) : -1;
    if (node < 0)
        return 0;
    return isRepeated() ? own->getDocument().at(quint32(node)).count : 1;
}

/** Where a value stands; negative when there is none. */
qint64 JsonFieldInfo::nodeOf(const Message* message, unsigned int index) const
{
    const JsonMessage* const own = ownMessage(message);
    const qint64 node = own ? own->getNode(m_slot) : -1;
    if (node < 0 || index >= (isRepeated() ? own->getDocument().at(quint32(node)).count : 1))
        return -1;
    return isRepeated() ? own->getElement(m_slot, quint32(node), index) : node;
}

FieldValue JsonFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const qint64 node = nodeOf(message, index);
    return node < 0 ? FieldValue::invalid() : valueAt(static_cast<const JsonMessage*>(message), quint32(node), index);
}

QString JsonFieldInfo::getNameOfRest(const QByteArray& message, qint64 byte) const
{
    if (byte < 0 || byte >= message.size())
        return QString();
    qint64 begin = -1; // of a text in which it stands
    for (qint64 i = 0; i <= byte; ++i) {
        const char letter = message.at(int(i));
        if (letter == '\\' && begin >= 0)
            ++i;
        else if (letter == '"' && (begin < 0 || i < byte))
            begin = begin < 0 ? i : -1;
    }
    const auto isOneOf = [&message](qint64 at, const char* letters) {
        return message.at(int(at)) != 0 && std::strchr(letters, message.at(int(at)));
    };
    if (begin < 0)
        return isOneOf(byte, " \t\r\n{}[],:") ? QCoreApplication::translate("JsonMessage", "between the values")
                                              : QString();
    qint64 end = begin + 1;
    while (end < message.size() && message.at(int(end)) != '"')
        end += message.at(int(end)) == '\\' ? 2 : 1;
    for (++end; end < message.size() && isOneOf(end, " \t\r\n");)
        ++end;
    return end < message.size() && message.at(int(end)) == ':'
               ? QCoreApplication::translate("JsonMessage", "name of a member")
               : QString();
}

FieldBytes::End JsonFieldInfo::locate(const Holder& holder, int index, LocatedBytes* found) const
{
    const JsonMessage* const own = ownMessage(holder.message);
    if (!own)
        return FieldBytes::Untold;
    return placeOf(own->getDocument(), index < 0 ? own->getNode(m_slot) : nodeOf(own, unsigned(index)), found);
}

/** Where a number of a time is. */
FieldBytes::End JsonFieldInfo::locatePart(const Holder& holder, int index, const char* name, LocatedBytes* found) const
{
    const qint64 node = index < 0 ? -1 : nodeOf(holder.message, unsigned(index));
    const JsonDocument* const document =
        node < 0 ? nullptr : &static_cast<const JsonMessage*>(holder.message)->getDocument();
    const quint32 part = document ? document->findMember(quint32(node), name) : 0;
    return part > 0 ? placeOf(*document, part, found) : FieldBytes::Untold;
}

FieldValue JsonFieldInfo::valueAt(const JsonMessage* message, quint32 node, unsigned int index) const
{
    const JsonDocument& document = message->getDocument();
    const JsonNode::Kind kind = document.at(node).kind;
    if (hasStructure()) {
        // A null, or what is told of as an unknown field.
        if (kind == JsonNode::Null || !canBeElement(document, node))
            return FieldValue::invalid();
        const MessageInfo* const info = getType().getSubMessageInfo();
        if (info)
            return FieldValue::fromSubMessage(
                message->getPart(m_slot, index, node, static_cast<const JsonMessageInfo*>(info)));
        const qint64 seconds = partOf(message, index, SecondsName).toSigned();
        const qint64 nanos = partOf(message, index, NanosName).toSigned();
        return FieldValue::fromText(m_kind == JsonShape::Time ? TimeText::ofTime(seconds, nanos)
                                                              : TimeText::ofDuration(seconds, nanos));
    }
    switch (kind) {
    case JsonNode::Null:
        return FieldValue::invalid();
    case JsonNode::True:
    case JsonNode::False:
        return FieldValue::fromBool(kind == JsonNode::True);
    case JsonNode::Number:
        return JsonScalar::toNumber(document.getRaw(node));
    case JsonNode::String:
        return m_kind == JsonShape::Bytes ? bytesOf(document.getText(node))
                                          : FieldValue::fromText(document.getText(node));
    default:
        return FieldValue::fromText(document.getText(node));
    }
}

FieldValue JsonFieldInfo::partOf(const Message* message, unsigned int index, const char* name) const
{
    const qint64 node = nodeOf(message, index);
    if (node < 0)
        return FieldValue::invalid();
    const JsonDocument& document = static_cast<const JsonMessage*>(message)->getDocument();
    if (document.at(quint32(node)).kind != JsonNode::Object || !canBeElement(document, quint32(node)))
        return FieldValue::invalid();
    return JsonScalar::toNumber(document.getRaw(document.findMember(quint32(node), name)));
}

JsonUnknownFieldInfo::JsonUnknownFieldInfo()
    : FieldInfo(QStringLiteral("[unknown fields]"), FieldType(FieldType::TextType, 0, QStringLiteral("text")))
{
    setRepeated(true);
    setOptional(true);
    setRole(SecondaryRole);
}

unsigned int JsonUnknownFieldInfo::getValueCount(const Message* message) const
{
    const JsonMessage* const own = jsonMessage(message, this);
    return own ? static_cast<unsigned int>(own->getUnknown().size()) : 0;
}

FieldValue JsonUnknownFieldInfo::getValue(const Message* message, unsigned int index) const
{
    if (index >= getValueCount(message))
        return FieldValue::invalid();
    const JsonMessage* const own = static_cast<const JsonMessage*>(message);
    const JsonMessage::Unknown& unknown = own->getUnknown()[index];
    const std::string_view raw = own->getDocument().getRaw(unknown.node);
    QString text = unknown.name + QStringLiteral(": ") + QString::fromUtf8(raw.data(), int(raw.size()));
    if (!unknown.reason.isEmpty())
        text += QStringLiteral(" (") + unknown.reason + QLatin1Char(')');
    return FieldValue::fromText(text);
}

FieldBytes::End JsonUnknownFieldInfo::locate(const Holder& holder, int index, LocatedBytes* found) const
{
    const JsonMessage* const own = jsonMessage(holder.message, this);
    FieldBytes::End end = FieldBytes::Untold;
    const int count = own ? int(own->getUnknown().size()) : 0;
    for (int i = qMax(0, index); i < count && (index < 0 || i == index); ++i)
        end = placeOf(own->getDocument(), own->getUnknown()[std::size_t(i)].node, found);
    return end;
}
