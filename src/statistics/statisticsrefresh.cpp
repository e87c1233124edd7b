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
    if (sorted) {
        indicatorShown = tree->header()->isSortIndicatorShown();
        clickable = QtCompat::sectionsClickable(tree->header());
    }
}

/** Sorts the tree again, if that was suspended. */
void StatisticsRefresh::end()
{
    CORVEL_DEBUG_HOOK();
    if (!sorted || tree->isSortingEnabled())
        return;
    sorted = false;
    tree->setSortingEnabled(true);
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
