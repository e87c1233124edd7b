#include "statisticscsv.h"

#include "csvtext.h"
#include "formatinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"

static const int MostIntervals = 10;

QByteArray StatisticsCsv::toCsv(const MessageStatisticsCoordinator& coordinator)
{
    QByteArray csv = CsvText::line({QLatin1String("Format"), QLatin1String("Type"), QLatin1String("Count"),
                                    QLatin1String("Interval (ms)"), QLatin1String("Gaps"), QLatin1String("Missing"),
                                    QLatin1String("Without time"), QLatin1String("Intervals (ms: count)")});
    const QList<MessageStatistics*> all = coordinator.getAllMessageStatistics();
    for (const MessageStatistics* statistics : all) {
        QStringList intervals;
        const QHash<long long, unsigned int> counts = statistics->getIntervalCountHash();
        const QList<long long> sorted = statistics->getIntervalsSortedOnFrequency(MostIntervals);
        for (const long long interval : sorted)
            intervals.append(QStringLiteral("%1: %2").arg(interval).arg(counts.value(interval)));
        const bool regular = statistics->isCurrentlyRegular() && statistics->getLastInterval() > 0;
        csv += CsvText::line(
            {statistics->getFormatInfo()->getName(), statistics->getMessageName(),
             QString::number(statistics->getCount()),
             regular ? QString::number(statistics->getLastInterval()) : QString(),
             QString::number(statistics->getNumberOfGaps()), QString::number(statistics->getNumberOfMissingEpochs()),
             QString::number(statistics->getCountWithUnknownTime()), intervals.join(QLatin1String("; "))});
    }
    return csv;
}
