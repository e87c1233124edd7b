#include "plotvalues.h"

#include "csvtext.h"
#include "plotseries.h"

#include <QDateTime>

#include <cmath>

QByteArray PlotValues::toCsv(const std::vector<std::unique_ptr<PlotSeries>>& series, const QStringList& names)
{
    QStringList fields(QLatin1String("time"));
    std::vector<qint64> places(series.size(), 0);
    for (std::size_t i = 0; i < series.size(); ++i) {
        const QString unit = series[i]->getUnit();
        const QString& name = names.at(int(i));
        fields.append(unit.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, unit));
    }
    const auto isThere = [&](std::size_t i) { return places[i] < series[i]->getPoints().getCount(); };
    const auto pointOf = [&](std::size_t i) { return series[i]->getPoints().at(places[i]); };
    QByteArray csv = CsvText::line(fields);
    while (true) {
        double next = std::nan("");
        for (std::size_t i = 0; i < series.size(); ++i)
            if (isThere(i) && !(pointOf(i).time >= next))
                next = pointOf(i).time;
        if (std::isnan(next))
            return csv;
        const qint64 microseconds = qint64(std::llround(next * 1e6));
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(microseconds / 1000, Qt::UTC);
        fields = QStringList(time.toString(QLatin1String("yyyy-MM-ddTHH:mm:ss.zzz")) +
                             QStringLiteral("%1Z").arg(microseconds % 1000, 3, 10, QLatin1Char('0')));
        bool any = false;
        for (std::size_t i = 0; i < series.size(); ++i) {
            const bool has = isThere(i) && pointOf(i).time == next;
            const double value = has ? pointOf(i).value : std::nan("");
            places[i] += has ? 1 : 0;
            any = any || !std::isnan(value);
            fields.append(std::isnan(value) ? QString() : QString::number(value, 'g', 17));
        }
        if (any) // else it is a gap
            csv += CsvText::line(fields);
    }
}
