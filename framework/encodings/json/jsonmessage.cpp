#include "jsonmessage.h"

#include "jsonfieldinfo.h"

#include <QCoreApplication>

const char JsonMessageInfo::ValueName[] = "value";

JsonMessageInfo::JsonMessageInfo(const QString& name, bool main, bool isObject)
    : MessageInfo(name, main)
    , m_isObject(isObject)
{
}

Message* JsonMessageInfo::newMessage(const QByteArray& data) const
{
    return new JsonMessage(this, data);
}

void JsonMessageInfo::addMember(const QString& name, JsonFieldInfo* field)
{
    m_slots.insert(name.toUtf8(), int(m_members.size()));
    m_members.push_back({name.toUtf8(), field});
    addField(field);
}

int JsonMessageInfo::findMember(std::string_view name, int slot) const
{
    // Most messages have their members in the order of the schema, or of the first message.
    if (slot < getMemberCount()) {
        const QByteArray& next = m_members[std::size_t(slot)].name;
        if (name == std::string_view(next.constData(), std::size_t(next.size())))
            return slot;
    }
    return m_slots.value(QByteArray::fromRawData(name.data(), int(name.size())), -1);
}

JsonMessage::JsonMessage(const JsonMessageInfo* info, const QByteArray& data)
    : Message(info, data)
    , m_isPart(false)
    , m_node(0)
    , m_isRead(false)
{
}

JsonMessage::JsonMessage(const JsonMessage* whole, const JsonMessageInfo* info, quint32 node)
    : Message(info)
    , m_isPart(true)
    , m_node(node)
    , m_isRead(false)
    , m_document(whole->m_document)
{
    setTime(whole->getTime());
    setSequence(whole->getSequence());
    setSender(whole->getSender());
}

JsonMessage::~JsonMessage()
{
    if (!m_parts)
        return;
    for (int slot = 0; slot < getJsonInfo()->getMemberCount(); ++slot)
        for (const JsonMessage* part : m_parts[std::size_t(slot)].messages)
            if (part)
                part->removeReference();
}

const JsonDocument& JsonMessage::getDocument() const
{
    if (!m_document)
        m_document = std::make_shared<JsonDocument>(getData());
    return *m_document;
}

const QStringList& JsonMessage::getProblems() const
{
    static const QStringList none;
    return m_isPart ? none : getDocument().getProblems();
}

void JsonMessage::readAllMembers() const
{
    m_isRead = true;
    const JsonMessageInfo* const info = getJsonInfo();
    m_nodes.assign(std::size_t(info->getMemberCount()), -1);
    const JsonDocument& document = getDocument();
    if (document.isEmpty())
        return;
    if (!info->isObject() || document.at(m_node).kind != JsonNode::Object) {
        take(info->isObject() ? -1 : 0, QLatin1String(JsonMessageInfo::ValueName), m_node);
        return;
    }
    int expected = 0;
    for (quint32 node = m_node + 1; node < document.at(m_node).next; node = document.at(node + 1).next) {
        const std::string_view plain = document.getPlain(node);
        const int slot = plain.empty() ? info->findMember(document.getText(node).toUtf8().toStdString(), expected)
                                       : info->findMember(plain, expected);
        take(slot, slot < 0 ? document.getText(node) : QString(), node + 1);
        expected = slot + 1;
    }
}

/** Takes a value as that of a field, or as unknown where it cannot be that. */
void JsonMessage::take(int slot, const QString& name, quint32 node) const
{
    if (slot < 0) {
        m_unknown.push_back({name, node, QString()});
        return;
    }
    const JsonFieldInfo* const field = getJsonInfo()->getMember(slot);
    const JsonDocument& document = *m_document;
    qint64& known = m_nodes[std::size_t(slot)];
    if (!field->canBe(document, node)) {
        m_unknown.push_back({field->getName(), node, field->getExpectation()});
        return;
    }
    if (known >= 0)
        m_unknown.push_back(
            {field->getName(), quint32(known), QCoreApplication::translate("JsonCheck", "it is there again")});
    known = node;
    if (!field->isRepeated() || !field->hasStructure())
        return;
    unsigned int index = 0;
    for (quint32 element = node + 1; element < document.at(node).next; element = document.at(element).next, ++index)
        if (!field->canBeElement(document, element))
            m_unknown.push_back(
                {QStringLiteral("%1[%2]").arg(field->getName()).arg(index), element, field->getElementExpectation()});
}

JsonMessage::Parts& JsonMessage::partsOf(int slot) const
{
    if (!m_parts)
        m_parts.reset(new Parts[std::size_t(getJsonInfo()->getMemberCount())]);
    return m_parts[std::size_t(slot)];
}

quint32 JsonMessage::getElement(int slot, quint32 array, unsigned int index) const
{
    const JsonNode& node = m_document->at(array);
    // Where all are single values they lie one behind the other.
    if (node.next - array - 1 == node.count)
        return array + 1 + index;
    Parts& parts = partsOf(slot);
    if (parts.elements.empty()) {
        parts.elements.reserve(node.count);
        for (quint32 element = array + 1; element < node.next; element = m_document->at(element).next)
            parts.elements.push_back(element);
    }
    return parts.elements[index];
}

const Message* JsonMessage::getPart(int slot, unsigned int index, quint32 node, const JsonMessageInfo* info) const
{
    Parts& parts = partsOf(slot);
    if (index >= parts.messages.size())
        parts.messages.resize(std::size_t(index) + 1, nullptr);
    if (!parts.messages[index])
        parts.messages[index] = new JsonMessage(this, info, node);
    return parts.messages[index];
}
