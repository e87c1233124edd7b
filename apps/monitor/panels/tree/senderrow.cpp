#include "senderrow.h"

SenderRow::SenderRow(MessageTreeWidget* tree, const QString& sender)
    : AbstractMessageTreeWidgetItem(tree)
    , m_sender(sender)
{
    setChildIndicatorPolicy(ShowIndicator);
    setAllTexts();
}

void SenderRow::setSender(const QString& sender)
{
    m_sender = sender;
    setNameText();
}

void SenderRow::addType(const MessageInfo* info)
{
    m_types.append(info);
    setValueText();
}

void SenderRow::removeType(const MessageInfo* info)
{
    m_types.removeOne(info);
    setValueText();
}

QString SenderRow::getNameText()
{
    return m_sender.isEmpty() ? tr("Without a name") : m_sender;
}

QString SenderRow::getTypeText()
{
    return tr("Sender");
}

QString SenderRow::getValueText()
{
    return m_types.size() == 1 ? tr("1 type") : tr("%1 types").arg(m_types.size());
}

void SenderRow::configureInTreeWidget()
{
    setInitialExpansionPolicy(isExpanded() ? ExpandInitially : CollapseInitially);
    AbstractMessageTreeWidgetItem::configureInTreeWidget();
}
