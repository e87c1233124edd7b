#include "statisticsrefresh.h"

#include "diagnostics.h"

#include <QHeaderView>
#include <QTreeWidget>

CORVEL_DIAGNOSTICS("StatisticsRefresh");
#include "qtcompat.h"

StatisticsRefresh* StatisticsRefresh::s_innermost = nullptr;

StatisticsRefresh::StatisticsRefresh(QTreeWidget* refreshedTree, const QTreeWidgetItem* refreshedRow)
    : tree(refreshedTree)
    , row(refreshedRow)
    , outer(s_innermost)
    , again(false)
    , sorted(false)
    , disordered(false)
    , keepsOrder(false)
    , indicatorShown(false)
    , clickable(false)
{
    CORVEL_DEBUG_HOOK();
    s_innermost = this;
}

StatisticsRefresh::~StatisticsRefresh()
{
    CORVEL_DEBUG_HOOK();
    s_innermost = outer;
}

void StatisticsRefresh::begin()
{
    CORVEL_DEBUG_HOOK();
    sorted = tree && tree->isSortingEnabled();
    disordered = false;
    if (sorted) {
        indicatorShown = tree->header()->isSortIndicatorShown();
        clickable = QtCompat::sectionsClickable(tree->header());
    }
}

void StatisticsRefresh::suspendSorting(bool inOrder)
{
    CORVEL_DEBUG_HOOK();
    if (!sorted)
        return;
    disordered = disordered || !inOrder;
    if (tree->isSortingEnabled())
        tree->setSortingEnabled(false);
}

/** Sorts the tree again, if that was suspended. */
void StatisticsRefresh::end()
{
    CORVEL_DEBUG_HOOK();
    if (!sorted || tree->isSortingEnabled())
        return;
    sorted = false;
    QHeaderView* header = tree->header();
    const int column = header->sortIndicatorSection();
    const bool wasBlocked = header->signalsBlocked();
    if (!disordered) {
        // Enabling sorts by the column that the header says, which takes long even where all is in order.
        header->blockSignals(true);
        header->setSortIndicator(-1, header->sortIndicatorOrder());
    }
    tree->setSortingEnabled(true);
    if (!disordered) {
        header->setSortIndicator(column, header->sortIndicatorOrder());
        header->blockSignals(wasBlocked);
    }
    // Enabling makes the header clickable and shows the indicator, which the application may not want.
    tree->header()->setSortIndicatorShown(indicatorShown);
    QtCompat::setSectionsClickable(tree->header(), clickable);
}

StatisticsRefresh* StatisticsRefresh::find(const QTreeWidget* askedTree, const QTreeWidgetItem* askedRow)
{
    CORVEL_DEBUG_HOOK();
    StatisticsRefresh* refresh = s_innermost;
    while (refresh && !(refresh->tree && refresh->tree == askedTree) && !(refresh->row && refresh->row == askedRow))
        refresh = refresh->outer;
    return refresh;
}
