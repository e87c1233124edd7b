#include "valuecell.h"

#include "abstractmessagetreewidgetitem.h"
#include "fieldinfo.h"
#include "fieldsummary.h"
#include "message.h"
#include "messagetreewidgetitem.h"
#include "rowstate.h"
#include "valuetext.h"

static const int LongestText = 400; // that somebody reads in a line

static QVector<ValueCell::Part> lineOf(const Message* message, int digits)
{
    QVector<ValueCell::Part> parts;
    const QVector<const FieldInfo*> fields = RowState::getVector(message->getInfo());
    for (const FieldInfo* field : fields) {
        const FieldValue value = field->getValueCount(message) > 0 ? field->getValue(message, 0) : FieldValue();
        const bool isThere = value.isValid() && !field->isNotAvailable(value);
        ValueText text = ValueText::split(isThere ? field->getInterpretedString(value, true) : QString(QChar(0x2013)));
        text.number = FieldSummary::shorter(text.number, field, digits);
        parts.append(
            {(parts.isEmpty() ? QString() : QStringLiteral("   ")) + field->getName() + QLatin1Char(' '), true});
        parts.append({text.number.isEmpty() ? text.unit : text.number, false});
        if (!text.number.isEmpty() && !text.unit.isEmpty())
            parts.append({QLatin1Char(' ') + text.unit, true});
    }
    return parts;
}

ValueCell ValueCell::read(const QTreeWidgetItem* item, const QString& text, bool isRaw, int digits)
{
    ValueCell cell;
    const auto* const row = dynamic_cast<const AbstractMessageTreeWidgetItem*>(item);
    const FieldInfo* const field = row ? row->getFieldInfo() : nullptr;
    if (!field) { // a type or a sender
        cell.isFaint = true;
        cell.parts.append({text, false});
        return cell;
    }
    if (!RowState::hasMessage(item))
        return cell; // whatever was said of the message before
    cell.isFaint = RowState::isUnset(item);
    const auto* const inner = dynamic_cast<const MessageTreeWidgetItem*>(item);
    if (inner && inner->isMessageDisplayed() && !item->isExpanded() && !isRaw) {
        cell.parts = lineOf(inner->getDisplayedMessage(), digits);
        return cell;
    }
    ValueText value = {QString(), text};
    if (RowState::isNumeric(field) && field->getEnumerators().isEmpty())
        value = ValueText::split(text);
    const bool isCount = row->getIndex() < 0 && field->isRepeated(); // of values
    if (isCount && !field->isStringField()) {
        cell.isFaint = true;
        value = {QString(), text};
    }
    cell.number = isRaw ? value.number : FieldSummary::shorter(value.number, field, digits);
    QString rest = value.unit.size() > LongestText ? value.unit.left(LongestText) + QChar(0x2026) : value.unit;
    rest.replace(QLatin1Char('\n'), QChar(0x21b5));
    if (!rest.isEmpty())
        cell.parts.append({rest, !cell.number.isEmpty()});
    return cell;
}

QString ValueCell::toString() const
{
    QString text = number;
    if (!number.isEmpty() && !parts.isEmpty())
        text += QLatin1Char(' ');
    for (const Part& part : parts)
        text += part.text;
    return text;
}
