#include "messagegrouptreewidgetitem.h"

#include "diagnostics.h"
#include "messagetreewidgetitem.h"
#include "rowguard.h"

CORVEL_DIAGNOSTICS("MessageGroupTreeWidgetItem");

MessageGroupTreeWidgetItem::MessageGroupTreeWidgetItem(MessageTreeWidget* treeWidget, const QString& name)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , m_name(name)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageGroupTreeWidgetItem");
    setNameText();
}

MessageGroupTreeWidgetItem::~MessageGroupTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageGroupTreeWidgetItem");
    retire();
}

void MessageGroupTreeWidgetItem::setName(const QString& name)
{
    CORVEL_DEBUG_HOOK();
    m_name = name;
    setNameText();
}

const QString& MessageGroupTreeWidgetItem::getName() const
{
    CORVEL_DEBUG_HOOK();
    return m_name;
}

MessageTreeWidgetItem* MessageGroupTreeWidgetItem::findRow(const MessageInfo* info) const
{
    CORVEL_DEBUG_HOOK();
    for (int i = 0; info && i < childCount(); ++i) {
        MessageTreeWidgetItem* row = dynamic_cast<MessageTreeWidgetItem*>(child(i));
        if (row && row->getMessageInfo() == info)
            return row;
    }
    return nullptr;
}

MessageTreeWidgetItem* MessageGroupTreeWidgetItem::addRow(const MessageInfo* info)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidgetItem* row = findRow(info);
    if (row || !info || !mayAddRows())
        return row;
    const TreeUpdate update(getTreeAround());
    const RowGuard self(this);
    row = createRow(info);
    // Told of the need, somebody may have deleted this one, or come here first.
    if (self.isBroken() || findRow(info)) {
        delete row;
        return self.isBroken() ? nullptr : findRow(info);
    }
    const RowGuard added(static_cast<AbstractMessageTreeWidgetItem*>(row));
    addChild(row);
    if (!added.isBroken())
        row->configureInTreeWidget();
    return added.isBroken() ? nullptr : row;
}

MessageTreeWidgetItem* MessageGroupTreeWidgetItem::createRow(const MessageInfo* info)
{
    CORVEL_DEBUG_HOOK();
    return new MessageTreeWidgetItem(getMessageTreeWidget(), info);
}

QString MessageGroupTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return m_name;
}

void MessageGroupTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    deliverBelow(nullptr);
}

void MessageGroupTreeWidgetItem::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (deliverBelow(message))
        writeTexts(ValueText | RawValueText); // which a derived class may make of what was received
}

void MessageGroupTreeWidgetItem::configureInTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    // Also where somebody unfolded it and nobody was told.
    if (isExpanded())
        setInitialExpansionPolicy(ExpandInitially);
    AbstractMessageTreeWidgetItem::configureInTreeWidget();
}
