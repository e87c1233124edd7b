// How a MessageStatisticsWidget follows lists of thousands: what goes, what comes, and what is updated when.

#include "diagnostics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "statisticsrefresh.h"

#include <QHeaderView>
#include <QSet>

CORVEL_DIAGNOSTICS("MessageStatisticsWidget");

// After a step that took long, as a multiple of that, others come first.
static const int LeastPause = 4;
static const int LongStep = 20; // milliseconds
// Rows that come are seen to come, and that is soon over: so many times as long for them as for others.
static const int MoreForNew = 4;

namespace
{

/** Finds objects in lists that are nearly always one and the same. */
class ListedStatistics
{
public:
    bool contains(const QList<MessageStatistics*>& list, MessageStatistics* statistics)
    {
        CORVEL_DEBUG_HOOK();
        // While it is shared nobody changes it.
        if (!list.isSharedWith(m_list)) {
            m_list = list;
            m_set.clear();
            return list.contains(statistics);
        }
        if (m_set.isEmpty()) {
            Q_FOREACH (MessageStatistics* one, list)
                m_set.insert(one);
        }
        return m_set.contains(statistics);
    }

private:
    QList<MessageStatistics*> m_list;
    QSet<MessageStatistics*> m_set; // of the same; empty until it is asked for twice
};

} // namespace

void MessageStatisticsWidget::removeStaleItems()
{
    CORVEL_DEBUG_HOOK();
    ListedStatistics listed;
    Q_FOREACH (MessageStatistics* statistics, m_statisticsItems.keys()) {
        MessageStatisticsTreeWidgetItem* item = m_statisticsItems.value(statistics);
        // The list is deliberately asked for again for every row.
        if (!listed.contains(getStatistics(), statistics) || !item || item->getMessageStatistics() != statistics) {
            m_statisticsItems.remove(statistics);
            delete item;
        }
    }
    deleteEmptyFormatItems();
}

void MessageStatisticsWidget::updateSome(int milliseconds)
{
    CORVEL_DEBUG_HOOK();
    StatisticsRefresh* current = StatisticsRefresh::find(this, nullptr);
    if (current) {
        current->again = true;
        return;
    }
    const QList<MessageStatistics*> list = getStatistics();
    const bool isNews = list != m_listed;
    if (!isNews && m_stepTime > LongStep && m_sinceStep.elapsed() < LeastPause * m_stepTime)
        return;
    m_sinceStep.start();
    bool again;
    {
        StatisticsRefresh refresh(this, nullptr);
        refresh.keepsOrder = true;
        refresh.begin();
        if (isNews) {
            removeStaleItems();
            m_listed = list;
            m_firstNew = 0;
        }
        updateSeenItems();
        addItems(MoreForNew * milliseconds);
        const bool isTurnOver = updateItemsInTurn(milliseconds);
        updateCrcErrorsItem();
        const qint64 before = m_sinceStep.elapsed();
        refresh.end();
        m_sortTime = m_sinceStep.elapsed() - before;
        if (m_turnHadGaps || isTurnOver)
            setGapsColumnVisible(m_turnHadGaps);
        if (isTurnOver)
            m_turnHadGaps = false;
        again = refresh.again;
    }
    m_stepTime = m_sinceStep.restart();
    if (again)
        updateTree();
}

/** What is on the screen is up to date with each step. */
void MessageStatisticsWidget::updateSeenItems()
{
    CORVEL_DEBUG_HOOK();
    int position = 0;
    while (position < header()->count() && header()->isSectionHidden(header()->logicalIndex(position)))
        ++position;
    if (!isVisible() || position == header()->count())
        return;
    // Beside the columns there are no rows.
    QTreeWidgetItem* item = itemAt(columnViewportPosition(header()->logicalIndex(position)), 0);
    while (item && item->parent() && item->parent()->parent())
        item = item->parent(); // of one that is unfolded perhaps only what is below it is on the screen
    for (; item && visualItemRect(item).top() < viewport()->height(); item = itemBelow(item)) {
        if (MessageStatisticsTreeWidgetItem* row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(item))
            updateItem(row);
    }
}

/** Rows that come, some of them. */
void MessageStatisticsWidget::addItems(qint64 milliseconds)
{
    CORVEL_DEBUG_HOOK();
    QElapsedTimer timer;
    timer.start();
    // As long as it takes to sort them in among the others, at least.
    for (bool isFirst = true; m_firstNew < m_listed.size(); ++m_firstNew) {
        MessageStatistics* statistics = m_listed.at(m_firstNew);
        if (m_statisticsItems.contains(statistics))
            continue;
        if (!isFirst && timer.elapsed() >= qMax(milliseconds, m_sortTime))
            return;
        isFirst = false;
        getAndUpdateItemFor(statistics);
        m_turnHadGaps = m_turnHadGaps || !statistics->getGaps().isEmpty();
    }
}

/** @return whether all rows were updated since that was so the last time */
bool MessageStatisticsWidget::updateItemsInTurn(qint64 milliseconds)
{
    CORVEL_DEBUG_HOOK();
    QElapsedTimer timer;
    timer.start();
    for (bool isFirst = true; m_turn < m_listed.size(); ++m_turn) {
        MessageStatisticsTreeWidgetItem* item = m_statisticsItems.value(m_listed.at(m_turn));
        if (!item)
            break; // it is to come
        if (!isFirst && timer.elapsed() >= qMax(milliseconds, m_sortTime))
            return false;
        isFirst = false;
        updateItem(item);
    }
    if (m_turn < m_listed.size())
        return false;
    m_turn = 0;
    return true;
}

/** Rows below a folded one are nobody's concern: that they come would have the whole tree sorted. */
void MessageStatisticsWidget::updateItem(MessageStatisticsTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    m_turnHadGaps = m_turnHadGaps || !item->getMessageStatistics()->getGaps().isEmpty();
    if (item->isExpanded())
        item->updateNow();
    else
        item->updateCells();
}
