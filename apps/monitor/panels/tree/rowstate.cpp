#include "rowstate.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagetreewidgetitem.h"

static const int MostInLine = 4;

/** The row of the message or sub-message that a row lies in. */
static const MessageTreeWidgetItem* rowAround(const QTreeWidgetItem* item)
{
    const MessageTreeWidgetItem* row = nullptr;
    for (const QTreeWidgetItem* step = item->parent(); step && !row; step = step->parent())
        row = dynamic_cast<const MessageTreeWidgetItem*>(step);
    return row;
}

const Message* RowState::getHolder(const QTreeWidgetItem* item)
{
    const MessageTreeWidgetItem* const row = rowAround(item);
    return row ? row->getDisplayedMessage() : nullptr;
}

bool RowState::hasMessage(const QTreeWidgetItem* item)
{
    const MessageTreeWidgetItem* top = dynamic_cast<const MessageTreeWidgetItem*>(item);
    for (const MessageTreeWidgetItem* row = rowAround(item); row; row = rowAround(row))
        top = row;
    return top && top->isMessageDisplayed();
}

bool RowState::isUnset(const QTreeWidgetItem* item)
{
    const auto* const row = dynamic_cast<const AbstractMessageTreeWidgetItem*>(item);
    const FieldInfo* const field = row ? row->getFieldInfo() : nullptr;
    const MessageTreeWidgetItem* const around = field ? rowAround(item) : nullptr;
    if (!around)
        return false;
    const Message* const holder = around->getDisplayedMessage();
    if (!holder) // of a sub-message that is absent, or of nothing at all
        return hasMessage(item);
    if (!field->occursIn(holder->getInfo()))
        return false;
    const int index = row->getIndex();
    if (field->getValueCount(holder) <= unsigned(qMax(0, index)))
        return true;
    return index >= 0 && field->isNotAvailable(field->getValue(holder, unsigned(index)));
}

bool RowState::isSeldom(const FieldInfo* field)
{
    return field && field->getName().startsWith(QLatin1Char('['));
}

bool RowState::isNumeric(const FieldInfo* field)
{
    const int code = field->getType().getTypeCode();
    return code == FieldType::SignedType || code == FieldType::UnsignedType || code == FieldType::FloatType;
}

QVector<const FieldInfo*> RowState::getVector(const MessageInfo* info)
{
    QVector<const FieldInfo*> numbers;
    const QVector<const FieldInfo*> fields = info ? info->getFieldInfos() : QVector<const FieldInfo*>();
    for (const FieldInfo* field : fields) {
        if (isSeldom(field) || field->isVirtual())
            continue;
        const bool isPlain = isNumeric(field) && !field->isRepeated() && field->getEnumerators().isEmpty() &&
                             field->getSubFieldInfos().isEmpty() && !Corvel::isHidden(field);
        if (!isPlain || numbers.size() == MostInLine)
            return {};
        numbers.append(field);
    }
    return numbers;
}
