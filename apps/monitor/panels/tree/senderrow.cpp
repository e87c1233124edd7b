#include "senderrow.h"

SenderRow::SenderRow(MessageTreeWidget* tree, const QString& sender)
    : MessageGroupTreeWidgetItem(tree, sender)
{
    setChildIndicatorPolicy(ShowIndicator);
    setAllTexts();
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
    return getSender().isEmpty() ? tr("Without a name") : getSender();
}

QString SenderRow::getTypeText()
{
    return tr("Sender");
}

QString SenderRow::getValueText()
{
    return m_types.size() == 1 ? tr("1 type") : tr("%1 types").arg(m_types.size());
}
