#include "plotfunction.h"

#include <QCoreApplication>

#include <cmath>
#include <limits>

static const double NoValue = std::numeric_limits<double>::quiet_NaN();
static const double DegreesInRadian = 57.295779513082320877;

PlotFunction::PlotFunction(Kind kind)
    : m_kind(kind)
{
    restart();
}

void PlotFunction::restart()
{
    m_previous = {NoValue, NoValue};
    m_window.clear();
    m_sum = 0;
}

// As units are written here: what follows, such as "/s", stays.
static bool isRadians(const QString& unit)
{
    return unit == QLatin1String("rad") || unit.startsWith(QLatin1String("rad/"));
}

static bool isDegrees(const QString& unit)
{
    return unit == QString(QChar(0xb0)) || unit.startsWith(QString(QChar(0xb0)) + QLatin1Char('/'));
}

bool PlotFunction::isPossible(const QString& unit) const
{
    return m_kind != OtherAngle || isRadians(unit) || isDegrees(unit);
}

QString PlotFunction::getUnit(const QString& unit) const
{
    if (m_kind == Derivative)
        return unit.endsWith(QLatin1String("/s")) ? unit + QChar(0xb2) : unit + QLatin1String("/s");
    if (m_kind != OtherAngle)
        return unit;
    return isRadians(unit) ? QChar(0xb0) + unit.mid(3) : QLatin1String("rad") + unit.mid(1);
}

QString PlotFunction::getSuffix() const
{
    if (m_kind == Derivative)
        return QCoreApplication::translate("PlotFunction", ", derivative");
    if (m_kind == Average)
        return QCoreApplication::translate("PlotFunction", ", average of %1 s").arg(int(AverageSeconds));
    return QString();
}

double PlotFunction::averageWith(const SeriesPoints::Point& point)
{
    if (std::isnan(point.value)) {
        restart(); // nothing is averaged over a gap
        return NoValue;
    }
    m_window.push_back(point);
    m_sum += point.value;
    while (m_window.front().time <= point.time - AverageSeconds) {
        m_sum -= m_window.front().value;
        m_window.pop_front();
    }
    if (m_window.size() == 1)
        m_sum = point.value; // without what rounding left
    return m_sum / double(m_window.size());
}

SeriesPoints::Point PlotFunction::apply(const SeriesPoints::Point& point, const QString& unit)
{
    const SeriesPoints::Point previous = m_previous;
    m_previous = point;
    switch (m_kind) {
    case Derivative: {
        const double seconds = point.time - previous.time;
        return {point.time, seconds > 0 ? (point.value - previous.value) / seconds : NoValue};
    }
    case Average:
        return {point.time, averageWith(point)};
    case OtherAngle:
        return {point.time, isRadians(unit) ? point.value * DegreesInRadian : point.value / DegreesInRadian};
    default:
        return point;
    }
}
