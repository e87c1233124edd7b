#ifndef STATISTICSTEXTS_H
#define STATISTICSTEXTS_H

#include "messagestatistics.h"

class QTreeWidgetItem;

/** What the rows of the statistics say in words, in the language that is shown now. */
namespace StatisticsTexts
{

QString getDurationText(const MessageStatistics::Gap& gap);
QString getFormatToolTip(const QString& name);
QString getNoTimeToolTip();
QString getUnknownIntervalToolTip();
/** @param text  what stands for @p interval */
QString getIntervalToolTip(long long interval, const QString& text);

void writeCountToolTip(QTreeWidgetItem* row, const QString& toolTip);
/** For the row of a gap. */
void writeGapToolTips(QTreeWidgetItem* row);
/** For the row above those of the gaps. */
void writeGapsToolTip(QTreeWidgetItem* row);

} // namespace StatisticsTexts

#endif
