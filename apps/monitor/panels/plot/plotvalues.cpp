#include "plotvalues.h"

#include "csvtext.h"

#include <QDateTime>
#include <QStringList>

#include <cmath>

static const int PieceSize = 1 << 18;

/** Times as text, of which the seconds are made once. */
class TimeText
{
public:
    void append(double seconds, QByteArray* text)
    {
        const qint64 microseconds = qint64(std::llround(seconds * 1e6));
        const qint64 rest = (microseconds % 1000000 + 1000000) % 1000000;
        const qint64 second = (microseconds - rest) / 1000000;
        if (second != m_second || m_text.isEmpty())
            m_text = QDateTime::fromMSecsSinceEpoch(second * 1000, Qt::UTC)
                         .toString(QLatin1String("yyyy-MM-ddTHH:mm:ss."))
                         .toLatin1();
        m_second = second;
        *text += m_text + QByteArray::number(rest + 1000000).mid(1) + 'Z';
    }

private:
    qint64 m_second = 0;
    QByteArray m_text;
};

void PlotValues::write(const std::vector<Column>& columns, const std::function<bool(const QByteArray&, int)>& take)
{
    QStringList titles(QLatin1String("time"));
    std::vector<qint64> places(columns.size(), 0);
    double all = 0;
    for (const Column& column : columns) {
        titles.append(column.title);
        all += double(column.points.getCount());
    }
    const auto isThere = [&](std::size_t i) { return places[i] < columns[i].points.getCount(); };
    const auto pointOf = [&](std::size_t i) { return columns[i].points.at(places[i]); };
    QByteArray text = CsvText::line(titles);
    QByteArray row;
    TimeText times;
    double done = 0;
    while (true) {
        double next = std::nan("");
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (isThere(i) && !(pointOf(i).time >= next))
                next = pointOf(i).time;
        if (std::isnan(next) || text.size() >= PieceSize) {
            if (!take(text, all > 0 ? int(100 * done / all) : 0) || std::isnan(next))
                return;
            text.clear();
        }
        row.clear();
        times.append(next, &row);
        bool any = false;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const bool has = isThere(i) && pointOf(i).time == next;
            const double value = has ? pointOf(i).value : std::nan("");
            places[i] += has ? 1 : 0;
            done += has ? 1 : 0;
            any = any || !std::isnan(value);
            row += ',';
            if (!std::isnan(value))
                row += QByteArray::number(value, 'g', 17);
        }
        if (any) // else it is a gap
            text += row + "\r\n";
    }
}
