#include "statisticscells.h"

#include "diagnostics.h"
#include "statisticsrefresh.h"

#include <QHash>
#include <QHeaderView>
#include <QTreeWidget>

#include <algorithm>

CORVEL_DIAGNOSTICS("StatisticsCells");

namespace
{

struct KnownCounts
{
    QVector<IntervalCount> counts;
    bool overwritten; // by somebody else, since they were asked for last
};

} // namespace

static QHash<const QTreeWidgetItem*, KnownCounts*> s_knownCounts;
// The row that is being written into, until the tree has told of it.
static const QTreeWidgetItem* s_written = nullptr;

/**
 * Suspends the sorting of @p item's tree for the rest of the refresh, if there is one going on.
 *
 * To be called before rows appear in a tree or move in it: one sort at the end is cheaper than one for each of them,
 * and the model does not survive one on the heels of a change that somebody has answered by changing other rows.
 * Where nothing moves, the refresh must not pay for a sort either.
 */
static void suspendSorting(const QTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidget* tree = item->treeWidget();
    StatisticsRefresh* refresh = tree ? StatisticsRefresh::find(tree, nullptr) : nullptr;
    if (refresh)
        refresh->suspendSorting(false);
}

/** Compares as a sorted tree does. */
struct StandsBefore
{
    bool isAscending;

    bool operator()(const QTreeWidgetItem* one, const QTreeWidgetItem* other) const
    {
        CORVEL_DEBUG_HOOK();
        return isAscending ? *one < *other : *other < *one;
    }
};

/** Sorts what is below @p row, which is in no tree, by the first column. */
static void sortBelow(QTreeWidgetItem* row, const StandsBefore& standsBefore)
{
    CORVEL_DEBUG_HOOK();
    QList<QTreeWidgetItem*> rows = row->takeChildren();
    std::stable_sort(rows.begin(), rows.end(), standsBefore);
    row->addChildren(rows);
    Q_FOREACH (QTreeWidgetItem* below, rows)
        sortBelow(below, standsBefore);
}

void StatisticsCells::insertRow(QTreeWidgetItem* parent, int index, QTreeWidgetItem* child)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidget* tree = parent->treeWidget();
    StatisticsRefresh* refresh = tree ? StatisticsRefresh::find(tree, nullptr) : nullptr;
    if (!refresh || !refresh->keepsOrder || !refresh->sorted || refresh->disordered ||
        tree->header()->sortIndicatorSection() != 0) {
        suspendSorting(parent);
        parent->insertChild(index, child);
        return;
    }
    const StandsBefore standsBefore = {tree->header()->sortIndicatorOrder() == Qt::AscendingOrder};
    sortBelow(child, standsBefore);
    int place = 0;
    int end = parent->childCount();
    while (place < end) {
        const int middle = place + (end - place) / 2;
        if (standsBefore(child, parent->child(middle)))
            end = middle;
        else
            place = middle + 1;
    }
    refresh->suspendSorting(true);
    parent->insertChild(place, child);
}

static void writeValue(QTreeWidgetItem* item, int column, const QVariant& value)
{
    CORVEL_DEBUG_HOOK();
    if (item->treeWidget() && item->treeWidget()->header()->sortIndicatorSection() == column)
        suspendSorting(item);
    s_written = item;
    item->setData(column, Qt::DisplayRole, value);
    s_written = nullptr;
}

void StatisticsCells::writeText(QTreeWidgetItem* item, int column, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    const QVariant shown = item->data(column, Qt::DisplayRole);
    if (shown.userType() != QMetaType::QString || *static_cast<const QString*>(shown.constData()) != text)
        writeValue(item, column, text);
}

void StatisticsCells::writeNumber(QTreeWidgetItem* item, int column, qulonglong number)
{
    CORVEL_DEBUG_HOOK();
    const QVariant shown = item->data(column, Qt::DisplayRole);
    if (shown.userType() != QMetaType::ULongLong || shown.toULongLong() != number)
        writeValue(item, column, number);
}

void StatisticsCells::writeCount(QTreeWidgetItem* item, unsigned int count)
{
    CORVEL_DEBUG_HOOK();
    const QVariant shown = item->data(1, Qt::DisplayRole);
    if (shown.userType() == QMetaType::QString) {
        // Digit by digit, from the last: nearly all counts are right, and then no text has to be made.
        const QString& text = *static_cast<const QString*>(shown.constData());
        int position = static_cast<int>(text.size()) - 1;
        unsigned int rest = count;
        while (position >= 0 && text.at(position).unicode() == '0' + rest % 10 && rest >= 10) {
            rest /= 10;
            --position;
        }
        if (position == 0 && text.at(0).unicode() == '0' + rest)
            return;
    }
    writeValue(item, 1, QString::number(count));
}

void StatisticsCells::noteChange(const QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    const bool isOwn = row == s_written;
    // Only this once: whoever listens may write into the same row.
    s_written = nullptr;
    KnownCounts* known = isOwn || !row ? nullptr : s_knownCounts.value(row->parent());
    if (known)
        known->overwritten = true;
}

void StatisticsCells::keepCounts(const QTreeWidgetItem* parent)
{
    CORVEL_DEBUG_HOOK();
    s_knownCounts.insert(parent, new KnownCounts());
}

void StatisticsCells::dropCounts(const QTreeWidgetItem* parent)
{
    CORVEL_DEBUG_HOOK();
    delete s_knownCounts.take(parent);
}

QVector<IntervalCount> StatisticsCells::takeKnownCounts(const QTreeWidgetItem* parent)
{
    CORVEL_DEBUG_HOOK();
    KnownCounts* known = s_knownCounts.value(parent);
    if (!known)
        return QVector<IntervalCount>();
    if (known->overwritten)
        known->counts.clear();
    known->overwritten = false;
    return known->counts;
}

void StatisticsCells::setKnownCounts(const QTreeWidgetItem* parent, const IntervalCount* counts, int size)
{
    CORVEL_DEBUG_HOOK();
    KnownCounts* known = s_knownCounts.value(parent);
    if (!known)
        return;
    known->counts.resize(size);
    std::copy(counts, counts + size, known->counts.begin());
}
