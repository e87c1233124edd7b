#include "plotseries.h"

#include "fieldinfo.h"

#include <cmath>
#include <limits>

static const double NoValue = std::numeric_limits<double>::quiet_NaN();
static const double GapIntervals = 3.5;  // so many usual intervals without a message are a gap
static const double LeastGap = 0.25;     // seconds; links deliver in bursts
static const int NewRate = 3;            // so many gaps in a row are a slower rate
static const double LongestStepBack = 2; // seconds; what is older was started anew

PlotSeries::PlotSeries(const FieldPath& path)
    : m_path(path)
    , m_points(new QCPGraphDataContainer)
    , m_lastTime(NoValue)
{
}

QString PlotSeries::getWish() const
{
    const QString expression = m_path.getExpression();
    // The only sender of a type may well be called otherwise in the next run.
    return m_origin.isTold ? expression + QLatin1Char('\t') + m_origin.sender : expression;
}

QString PlotSeries::getUnit() const
{
    // Numbers of things that have names are drawn as they are transmitted.
    return m_path.getField()->getUnit();
}

QString PlotSeries::getValueText() const
{
    return m_path.getField()->getInterpretedString(m_value, true);
}

void PlotSeries::clear()
{
    m_points->clear();
    m_lastTime = NoValue;
    m_interval = 0;
    m_gapsInARow = 0;
}

bool PlotSeries::isGap(double seconds)
{
    const double interval = seconds - m_lastTime;
    if (std::isnan(interval) || interval <= 0)
        return false;
    if (m_interval <= 0) {
        m_interval = interval;
        return false;
    }
    if (interval <= qMax(LeastGap, GapIntervals * m_interval)) {
        m_interval += (interval - m_interval) / 8;
        m_gapsInARow = 0;
        return false;
    }
    if (++m_gapsInARow >= NewRate)
        m_interval = interval;
    return true;
}

void PlotSeries::add(const Message* message, double seconds)
{
    if (seconds < m_lastTime - LongestStepBack)
        clear(); // a recording that is played again
    const FieldInfo* const field = m_path.getField();
    const FieldValue value = m_path.getValue(message);
    m_value = value.isNumber() ? value : FieldValue::invalid();
    ++m_count;
    double number = NoValue;
    if (value.isNumber() && !field->isNotAvailable(value))
        number = value.toDouble() * field->getScaleFactor();
    if (!std::isfinite(number))
        number = NoValue;
    if (isGap(seconds))
        m_points->add(QCPGraphData((m_lastTime + seconds) / 2, NoValue));
    m_points->add(QCPGraphData(seconds, number));
    m_lastTime = std::isnan(m_lastTime) ? seconds : qMax(m_lastTime, seconds);
    if (m_points->size() > MostPoints)
        thinOut();
    if (m_points->constBegin()->key < m_lastTime - LongestTime)
        m_points->removeBefore(m_lastTime - LongestTime);
}

void PlotSeries::thinOut()
{
    QVector<QCPGraphData> points;
    points.reserve(MostPoints);
    const auto half = m_points->constBegin() + m_points->size() / 2;
    auto point = m_points->constBegin();
    while (point < half) {
        const auto end = point + qMin<std::ptrdiff_t>(4, half - point);
        auto least = end;
        auto greatest = end;
        auto missing = end;
        for (auto i = point; i < end; ++i) {
            if (std::isnan(i->value)) {
                missing = i;
                continue;
            }
            least = least == end || i->value < least->value ? i : least;
            greatest = greatest == end || i->value > greatest->value ? i : greatest;
        }
        for (auto i = point; i < end; ++i)
            if (i == least || i == greatest || i == missing)
                points.append(*i);
        point = end;
    }
    for (; point < m_points->constEnd(); ++point)
        points.append(*point);
    m_points->set(points, true);
}
