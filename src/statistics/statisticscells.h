#ifndef STATISTICSCELLS_H
#define STATISTICSCELLS_H

#include <QVector>

class QString;
class QTreeWidgetItem;

/** A count of a histogram, and the interval that it belongs to. */
struct IntervalCount
{
    long long interval;
    unsigned int count;
};
Q_DECLARE_TYPEINFO(IntervalCount, Q_PRIMITIVE_TYPE);

/**
 * How the rows of the statistics are written: only what is not there already, and with the sorting of a tree suspended
 * for the rest of its refresh where that moves rows.
 */
namespace StatisticsCells
{

void insertRow(QTreeWidgetItem* parent, int index, QTreeWidgetItem* child);
/** Writes @p text into @p column unless it stands there. Nearly all calls of a refresh find that it does. */
void writeText(QTreeWidgetItem* item, int column, const QString& text);
/** Writes @p number, as a number, into @p column unless it stands there. */
void writeNumber(QTreeWidgetItem* item, int column, qulonglong number);
/** Writes @p count, as a text, into column 1 unless it stands there. */
void writeCount(QTreeWidgetItem* item, unsigned int count);

// The rows of histograms are many and lie all over memory: a look at each takes nearly as long as all the rest of a
// refresh. What they show is kept, for as long as nobody else writes into one of them.

/** To be called by a tree before anybody else hears of a change of @p row. */
void noteChange(const QTreeWidgetItem* row);
/** Keeps what the rows below @p parent show, which are in a tree that calls noteChange(). */
void keepCounts(const QTreeWidgetItem* parent);
void dropCounts(const QTreeWidgetItem* parent);
/** The counts that were set; none if somebody wrote into a row since they were taken last, or if they are not kept. */
QVector<IntervalCount> takeKnownCounts(const QTreeWidgetItem* parent);
void setKnownCounts(const QTreeWidgetItem* parent, const IntervalCount* counts, int size);

} // namespace StatisticsCells

#endif
