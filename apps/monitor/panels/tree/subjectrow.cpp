#include "subjectrow.h"

#include "celldelegate.h"
#include "messageinfo.h"

SubjectRow::SubjectRow(MessageTreeWidget* tree, const Subject& subject)
    : AbstractMessageTreeWidgetItem(tree)
    , MessageTreeWidgetItem(tree, nullptr)
    , m_subject(subject)
{
    setChildIndicatorPolicy(ShowIndicator);
    setAllTexts();
    showName();
}

void SubjectRow::setSender(const QString& sender)
{
    m_subject.sender = sender;
    showName();
}

void SubjectRow::setSenderShown(bool shown)
{
    if (m_isSenderShown == shown)
        return;
    m_isSenderShown = shown;
    showName();
}

void SubjectRow::showName()
{
    MessageTreeWidget* const tree = getMessageTreeWidget();
    const int column = tree ? tree->getColumnIndex(MessageTreeWidget::NameColumn) : -1;
    if (column >= 0 && !font(column).bold()) {
        QFont bold = font(column);
        bold.setBold(true);
        setFont(column, bold);
    }
    if (column >= 0)
        setData(column, CellDelegate::KeptRole, m_isSenderShown ? QVariant(m_subject.sender) : QVariant());
    setNameText();
}

void SubjectRow::fill(const Message* latest)
{
    if (isFilled())
        return;
    setMessageInfo(m_subject.info);
    setChildIndicatorPolicy(DontShowIndicatorWhenChildless);
    if (latest)
        processMessage(latest);
}

QString SubjectRow::getNameText()
{
    const QString name = m_subject.info->getName();
    return m_isSenderShown ? name + QLatin1Char(' ') + m_subject.sender : name;
}

QString SubjectRow::getNameToolTip()
{
    return m_subject.info->getShortDescriptiveText();
}

QString SubjectRow::getValueText()
{
    return isFilled() && !isMessageDisplayed() ? MessageTreeWidgetItem::getValueText() : m_status;
}

void SubjectRow::setStatus(const QString& status)
{
    if (m_status == status)
        return;
    m_status = status;
    setValueText();
}

// A row that is cleared with the one above it still says that a value is missing in the message that was there.
static void clearBelow(QTreeWidgetItem* item)
{
    for (int i = 0; i < item->childCount(); ++i) {
        auto* const row = dynamic_cast<AbstractMessageTreeWidgetItem*>(item->child(i));
        if (row)
            row->processMessage(nullptr);
        if (row)
            clearBelow(row);
    }
}

void SubjectRow::clear()
{
    m_status.clear();
    processMessage(nullptr);
    clearBelow(this);
}

void SubjectRow::restoreExpansion()
{
    setInitialExpansionPolicy(RestoreExpansion);
    MessageTreeWidgetItem::configureInTreeWidget();
}

void SubjectRow::configureInTreeWidget()
{
    setInitialExpansionPolicy(isExpanded() || m_isUnfolded ? ExpandInitially : CollapseInitially);
    MessageTreeWidgetItem::configureInTreeWidget();
    showName(); // where the column of names is now
}
