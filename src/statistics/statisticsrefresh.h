#ifndef STATISTICSREFRESH_H
#define STATISTICSREFRESH_H

#include <QtGlobal>

class QTreeWidget;
class QTreeWidgetItem;

/**
 * A refresh that is under way, of a tree or of a row alone.
 *
 * Whoever listens to changes may ask for another one. Rows must not come and go below the one under way, so it is done
 * when that has ended.
 */
struct StatisticsRefresh
{
    QTreeWidget* const tree;          ///< null when the row is in none of these trees
    const QTreeWidgetItem* const row; ///< null when the whole tree is refreshed
    StatisticsRefresh* const outer;   ///< that a listener to its changes came from
    bool again;                       ///< whether another one was asked for
    bool sorted;                      ///< whether the tree was sorted when it began
    bool disordered;                  ///< whether rows may be out of order since
    bool keepsOrder;                  ///< whether rows are put where they belong, where that can be known
    bool indicatorShown;
    bool clickable;

    StatisticsRefresh(QTreeWidget* refreshedTree, const QTreeWidgetItem* refreshedRow);
    ~StatisticsRefresh();

    void begin();
    void end();
    /** Suspends the sorting; @p inOrder for rows that are put where they belong. */
    void suspendSorting(bool inOrder);

    /** The refresh of @p askedTree or @p askedRow that is under way, or null. */
    static StatisticsRefresh* find(const QTreeWidget* askedTree, const QTreeWidgetItem* askedRow);

    static StatisticsRefresh* s_innermost;

private:
    Q_DISABLE_COPY(StatisticsRefresh)
};

#endif
