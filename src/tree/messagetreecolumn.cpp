#include "messagetreecolumn.h"

#include "diagnostics.h"
#include "fieldinfo.h"
#include "message.h"
#include "messagetreewidgetitem.h"

CORVEL_DIAGNOSTICS("MessageTreeColumn");

MessageTreeColumn::MessageTreeColumn()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageTreeColumn");
}

MessageTreeColumn::~MessageTreeColumn()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageTreeColumn");
}

QString MessageTreeColumn::getHeaderToolTip() const
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

QString MessageTreeColumn::getMessageText(MessageTreeWidgetItem*)
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

QString MessageTreeColumn::getFieldText(AbstractMessageTreeWidgetItem*, const FieldInfo*, const Message*)
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

QString MessageTreeColumn::getGroupText(AbstractMessageTreeWidgetItem*)
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

QString MessageTreeColumn::getToolTip(AbstractMessageTreeWidgetItem*)
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

/**
 * The message that the field of @p row is a field of.
 *
 * Sub-messages are asked for on the way down, and not taken from their rows: somebody who listens may ask when a new
 * message is shown but has not reached these, and the sub-messages of the former one are gone.
 */
static const Message* getMessageAround(const AbstractMessageTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    const QTreeWidgetItem* above = row->parent();
    while (above && !dynamic_cast<const MessageTreeWidgetItem*>(above))
        above = above->parent();
    const MessageTreeWidgetItem* messageRow = dynamic_cast<const MessageTreeWidgetItem*>(above);
    if (!messageRow)
        return nullptr;
    const FieldInfo* field = messageRow->getFieldInfo();
    if (!field)
        return messageRow->getDisplayedMessage();
    const Message* message = getMessageAround(messageRow);
    const unsigned int index = static_cast<unsigned int>(messageRow->getIndex());
    if (!message || !field->occursIn(message->getInfo()) || index >= field->getValueCount(message))
        return nullptr;
    return field->getValue(message, index).getSubMessage();
}

QString MessageTreeColumn::getText(AbstractMessageTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    if (const FieldInfo* field = row->getFieldInfo())
        return getFieldText(row, field, getMessageAround(row));
    if (MessageTreeWidgetItem* messageRow = dynamic_cast<MessageTreeWidgetItem*>(row))
        return getMessageText(messageRow);
    return getGroupText(row);
}
