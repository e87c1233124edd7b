#include "treerow.h"

#include "fieldinfo.h"
#include "messageinfo.h"
#include "messagejson.h"
#include "messagetreewidgetitem.h"

#include <QStringList>

namespace
{

// Rows tell their fields by name only. Where fields share a name, their rows stand in the order of the fields.
const FieldInfo* findField(const QVector<const FieldInfo*>& fields, QTreeWidgetItem* item, const QString& name)
{
    const FieldInfo* found = nullptr;
    int same = 0;
    for (const FieldInfo* field : fields)
        if (field->getName() == name && same++ == 0)
            found = field;
    if (same < 2)
        return found;
    int before = 0;
    const QTreeWidgetItem* const parent = item->parent();
    for (int i = 0; i < parent->childCount() && parent->child(i) != item; ++i) {
        auto* const sibling = dynamic_cast<AbstractMessageTreeWidgetItem*>(parent->child(i));
        before += sibling && sibling->getNameText() == name ? 1 : 0;
    }
    for (const FieldInfo* field : fields)
        if (field->getName() == name && before-- == 0)
            return field;
    return found;
}

// The number in "name [3]"; -1 when there is none.
int numberBehind(const QString& text, const QString& name)
{
    if (!text.startsWith(name + QLatin1String(" [")) || !text.endsWith(QLatin1Char(']')))
        return -1;
    bool ok = false;
    const int index = text.mid(name.size() + 2, text.size() - name.size() - 3).toInt(&ok);
    return ok ? index : -1;
}

bool appendStep(FieldPath* path, QTreeWidgetItem* parent, QTreeWidgetItem* item)
{
    auto* const row = dynamic_cast<AbstractMessageTreeWidgetItem*>(item);
    if (!row)
        return false; // such as the notice that something is hidden
    const QString text = row->getNameText();
    const auto* const message = dynamic_cast<const MessageTreeWidgetItem*>(parent);
    QVector<const FieldInfo*> fields;
    int index = 0;
    if (message) {
        if (!message->getMessageInfo())
            return false;
        fields = message->getMessageInfo()->getFieldInfos();
    } else {
        if (path->steps.isEmpty())
            return false;
        FieldPath::Step& last = path->steps.last();
        if (path->isWholeRepeatedField()) {
            last.index = numberBehind(text, last.field->getName());
            return last.index >= 0;
        }
        fields = last.field->getSubFieldInfos();
        index = last.index;
    }
    const FieldInfo* field = findField(fields, item, text);
    for (int i = 0; !field && i < fields.size(); ++i)
        if (numberBehind(text, fields.at(i)->getName()) == index)
            field = fields.at(i);
    if (!field)
        return false;
    path->steps.append(FieldPath::Step{field, message && field->isRepeated() ? -1 : index});
    return true;
}

} // namespace

TreeRow::TreeRow(QTreeWidgetItem* item)
    : m_item(item)
{
    QVector<QTreeWidgetItem*> way;
    for (QTreeWidgetItem* step = item; step; step = step->parent())
        way.prepend(step);
    if (way.isEmpty())
        return;
    auto* const top = dynamic_cast<MessageTreeWidgetItem*>(way.first());
    if (!top || !top->getMessageInfo())
        return;
    FieldPath path;
    path.messageInfo = top->getMessageInfo();
    for (int i = 1; i < way.size(); ++i)
        if (!appendStep(&path, way.at(i - 1), way.at(i)))
            return;
    m_path = path;
    m_messageRow = top;
}

const Message* TreeRow::getMessage() const
{
    return m_messageRow ? m_messageRow->getDisplayedMessage() : nullptr;
}

FieldValue TreeRow::getValue() const
{
    return m_path.getValue(getMessage());
}

bool TreeRow::isNumeric() const
{
    const FieldInfo* const field = m_path.getField();
    if (!field || m_path.isWholeRepeatedField())
        return false;
    switch (field->getType().getTypeCode()) {
    case FieldType::SignedType:
    case FieldType::UnsignedType:
    case FieldType::FloatType:
    case FieldType::BoolType:
        return true;
    default:
        return getValue().isNumber();
    }
}

QString TreeRow::joinValues(bool raw) const
{
    const FieldInfo* const field = m_path.getField();
    const Message* const holder = m_path.findHolder(getMessage());
    if (!field || !holder)
        return QString();
    if (field->isStringField())
        return field->getStringValue(holder);
    const bool whole = m_path.isWholeRepeatedField();
    const QVector<FieldValue> values = whole ? field->getValues(holder) : QVector<FieldValue>(1, getValue());
    QStringList texts;
    for (const FieldValue& value : values)
        if (!value.getSubMessage())
            texts.append(raw ? field->getRawString(value) : field->getInterpretedString(value, true));
    return texts.join(QLatin1String(", "));
}

QString TreeRow::getValueText() const
{
    return joinValues(false);
}

QString TreeRow::getRawValueText() const
{
    return joinValues(true);
}

QString TreeRow::getJson() const
{
    const Message* const message = getMessage();
    if (!message)
        return QString();
    const FieldInfo* const field = m_path.getField();
    if (!field)
        return MessageJson::toText(message);
    const Message* const holder = m_path.findHolder(message);
    if (!holder)
        return QString();
    MessageJson json(false);
    std::string text;
    if (m_path.isWholeRepeatedField() || !field->isRepeated())
        json.appendField(field, holder, field->getValueCount(holder), &text);
    else if (unsigned(m_path.steps.last().index) < field->getValueCount(holder))
        json.appendValue(field, getValue(), &text);
    return QString::fromUtf8(text.data(), int(text.size()));
}
