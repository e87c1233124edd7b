#include "statisticsfilter.h"

#include "emptyhint.h"
#include "messagestatisticswidget.h"
#include "words.h"

StatisticsFilter::StatisticsFilter(MessageStatisticsWidget* widget, std::function<Senders()> getSenders)
    : QObject(widget)
    , m_widget(widget)
    , m_hint(new EmptyHint(widget, QString()))
    , m_getSenders(std::move(getSenders))
{
    tellIfNone(false);
    connect(widget->model(), &QAbstractItemModel::rowsInserted, this, &StatisticsFilter::noteRows);
    connect(widget->model(), &QAbstractItemModel::rowsRemoved, this, &StatisticsFilter::noteRows);
}

void StatisticsFilter::noteRows(const QModelIndex& parent)
{
    m_isDue = m_isDue || !parent.parent().isValid(); // those below types are as these
}

bool StatisticsFilter::isWanted(QTreeWidgetItem* item) const
{
    if (m_words.isEmpty())
        return true;
    auto* const row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(item);
    return Words::areIn(m_words, {item->text(0), row ? m_senders.value(row->getMessageStatistics()) : QString()});
}

bool StatisticsFilter::hide(int row, const QModelIndex& parent, bool hidden)
{
    if (m_widget->isRowHidden(row, parent) != hidden)
        m_widget->setRowHidden(row, parent, hidden); // an item would have to look for its number first
    return hidden;
}

void StatisticsFilter::filter(const QStringList& words)
{
    if (words == m_words && (words.isEmpty() || !m_isDue))
        return;
    if (words.isEmpty())
        m_senders.clear();
    else if (m_isDue || m_words.isEmpty())
        m_senders = m_getSenders();
    m_words = words;
    m_isDue = false;
    const QTreeWidgetItem* const root = m_widget->invisibleRootItem();
    bool isNone = true;
    for (int i = 0; i < root->childCount(); ++i) {
        QTreeWidgetItem* const top = root->child(i);
        const QModelIndex index = m_widget->model()->index(i, 0);
        bool isHidden = top->childCount() > 0 || !isWanted(top);
        for (int j = 0; j < top->childCount(); ++j)
            isHidden = hide(j, index, !isWanted(top->child(j))) && isHidden;
        isNone = hide(i, QModelIndex(), isHidden) && isNone;
    }
    tellIfNone(isNone);
}

void StatisticsFilter::tellIfNone(bool isNone)
{
    m_hint->setText(m_words.isEmpty()
                        ? tr("How often and how regularly messages come is told here once some were received.")
                        : tr("No type and no sender is called so."));
    m_hint->setAllHidden(isNone && !m_words.isEmpty());
}
