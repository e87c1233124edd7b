#include "treerow.h"

#include "fieldinfo.h"
#include "fieldwalk.h"
#include "messagejson.h"
#include "subjectrow.h"

#include <QStringList>

TreeRow::TreeRow(QTreeWidgetItem* item)
    : m_item(item)
{
    QVector<AbstractMessageTreeWidgetItem*> way;
    SubjectRow* top = nullptr;
    for (QTreeWidgetItem* step = item; step && !top; step = step->parent()) {
        way.prepend(dynamic_cast<AbstractMessageTreeWidgetItem*>(step));
        top = dynamic_cast<SubjectRow*>(step);
    }
    if (!top)
        return;
    FieldPath path(top->getSubject().info);
    for (int i = 1; i < way.size(); ++i) {
        const FieldInfo* const field = way.at(i) ? way.at(i)->getFieldInfo() : nullptr;
        if (!field)
            return; // such as the notice that something is hidden
        // Below the row of a repeated field stand those of its values, which say the same field again.
        if (i + 1 == way.size() || way.at(i)->getIndex() >= 0)
            path.append(field, way.at(i)->getIndex());
    }
    m_path = path;
    m_subjectRow = top;
}

Subject TreeRow::getSubject() const
{
    return m_subjectRow ? m_subjectRow->getSubject() : Subject{nullptr, QString()};
}

const Message* TreeRow::getMessage() const
{
    return m_subjectRow ? m_subjectRow->getDisplayedMessage() : nullptr;
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
    const FieldWalk walk(m_path, getMessage());
    const FieldInfo* const field = walk.getField();
    if (walk.getEnd() == FieldWalk::AllValues && field->isStringField())
        return field->getStringValue(walk.getHolder());
    QStringList texts;
    for (unsigned int i = 0; i < walk.getCount(); ++i) {
        const FieldValue value = walk.getValue(i);
        if (!value.getSubMessage())
            texts.append(raw ? field->getRawString(value) : field->getInterpretedString(value, true));
    }
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
    if (!m_path.getField())
        return MessageJson::toText(message);
    const FieldWalk walk(m_path, message);
    std::string text;
    if (walk.getHolder() && !MessageJson(false).appendWalk(walk, &text))
        text = "null";
    return QString::fromUtf8(text.data(), int(text.size()));
}
