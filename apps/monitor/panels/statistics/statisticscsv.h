#ifndef STATISTICSCSV_H
#define STATISTICSCSV_H

#include <QByteArray>

class MessageStatisticsCoordinator;

/** Reception statistics as comma-separated values: a line of headings and one for each message type. */
namespace StatisticsCsv
{

QByteArray toCsv(const MessageStatisticsCoordinator& coordinator);

} // namespace StatisticsCsv

#endif
