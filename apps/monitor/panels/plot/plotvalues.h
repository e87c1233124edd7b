#ifndef PLOTVALUES_H
#define PLOTVALUES_H

#include "seriespoints.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

/** What is plotted, for other programs. */
namespace PlotValues
{

/** A line. Its points are a copy that costs little and may be read on another thread. */
struct Column
{
    QString title;
    SeriesPoints points;
};

/** All points as comma-separated values: a line for each time, a column for each line. Hands them to @p take in pieces,
 * with how far it is in percent, until that says no. */
void write(const std::vector<Column>& columns, const std::function<bool(const QByteArray&, int)>& take);

} // namespace PlotValues

#endif
