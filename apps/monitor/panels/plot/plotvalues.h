#ifndef PLOTVALUES_H
#define PLOTVALUES_H

#include <QByteArray>
#include <QStringList>

#include <memory>
#include <vector>

class PlotSeries;

/** What is plotted, for other programs. */
namespace PlotValues
{

/** All points as comma-separated values: a line for each time, a column for each series with the name that it has in
 * @p names. */
QByteArray toCsv(const std::vector<std::unique_ptr<PlotSeries>>& series, const QStringList& names);

} // namespace PlotValues

#endif
