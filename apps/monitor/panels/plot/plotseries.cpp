#include "plotseries.h"

#include "fieldinfo.h"
#include "fieldpass.h"
#include "message.h"

#include <cmath>
#include <limits>

static const double NoValue = std::numeric_limits<double>::quiet_NaN();
static const double Infinite = std::numeric_limits<double>::infinity();
static const double GapIntervals = 3.5;  // so many usual intervals without a message are a gap
static const double LeastGap = 0.25;     // seconds; links deliver in bursts
static const int NewRate = 3;            // so many gaps in a row are a slower rate
static const double LongestStepBack = 2; // seconds; what is older was started anew

PlotSeries::PlotSeries(const FieldPath& path)
    : m_path(path)
    , m_firstTime(NoValue)
    , m_lastTime(NoValue)
    , m_changedFrom(Infinite)
{
}

PlotSeries::~PlotSeries() = default;

QString PlotSeries::getWish() const
{
    const QString expression = m_path.getExpression();
    // The only sender of a type may well be called otherwise in the next run.
    return m_origin.isTold ? expression + QLatin1Char('\t') + m_origin.sender : expression;
}

QString PlotSeries::getFieldUnit() const
{
    // Numbers of things that have names are drawn as they are transmitted.
    return m_path.getField()->getUnit();
}

QString PlotSeries::getUnit() const
{
    return m_function.getUnit(getFieldUnit());
}

void PlotSeries::setFunction(PlotFunction::Kind function)
{
    m_function = PlotFunction(function);
    compute();
}

/** Computes anew what is drawn. */
void PlotSeries::compute()
{
    m_computed.clear();
    m_function.restart();
    for (qint64 i = 0; m_function.getKind() != PlotFunction::Values && i < m_points.getCount(); ++i)
        m_computed.append(m_function.apply(m_points.at(i), getFieldUnit()));
}

void PlotSeries::append(const SeriesPoints::Point& point)
{
    if (!m_points.isEmpty() && point.time < m_points.last().time)
        m_changedFrom = qMin(m_changedFrom, point.time);
    m_lastTime = std::isnan(m_lastTime) ? point.time : qMax(m_lastTime, point.time);
    m_points.append(point);
    if (m_function.getKind() != PlotFunction::Values)
        m_computed.append(m_function.apply(point, getFieldUnit()));
}

void PlotSeries::removeFrom(double time)
{
    const qint64 count = m_points.findNotBefore(time);
    if (count == m_points.getCount())
        return;
    m_points.removeFrom(count);
    compute();
    m_lastTime = m_points.isEmpty() ? NoValue : m_points.last().time;
}

double PlotSeries::takeChange()
{
    const double from = m_changedFrom;
    m_changedFrom = Infinite;
    return from;
}

/** A number that was computed. */
QString PlotSeries::textOf(double number) const
{
    if (std::isnan(number))
        return QString();
    const QString unit = getUnit();
    const bool isNear = unit.isEmpty() || unit.at(0) == QChar(0xb0);
    return QString::number(number, 'g', 6) + (isNear ? QString() : QString(QLatin1Char(' '))) + unit;
}

QString PlotSeries::getValueText() const
{
    if (m_function.getKind() != PlotFunction::Values)
        return m_computed.isEmpty() ? QString() : textOf(m_computed.last().value);
    if (m_path.isNull())
        return m_points.isEmpty() ? QString() : textOf(m_points.last().value);
    return m_path.getField()->getInterpretedString(m_value, true);
}

QString PlotSeries::getCurrentText() const
{
    const SourceSession* const recording = m_isBeingRead ? nullptr : getRecording();
    const qint64 time = recording ? recording->getSource()->getCurrentTime() : qint64(Message::NoTime);
    return time == Message::NoTime ? getValueText() : getValueTextAt(double(time) / 1e6);
}

SeriesPoints::Point PlotSeries::getPointAt(double seconds) const
{
    const SeriesPoints& points = getPoints();
    const qint64 next = std::isnan(seconds) ? 0 : points.findAfter(seconds);
    return next > 0 ? points.at(next - 1) : SeriesPoints::Point{seconds, NoValue};
}

QString PlotSeries::getValueTextAt(double seconds) const
{
    const double number = getPointAt(seconds).value;
    const FieldInfo* const field = m_path.getField();
    if (std::isnan(number) || !field || m_function.getKind() != PlotFunction::Values)
        return textOf(number);
    // As it was transmitted, or names of numbers would not be found.
    const double transmitted = number / field->getScaleFactor();
    FieldValue value = FieldValue::fromDouble(transmitted);
    switch (field->getType().getTypeCode()) {
    case FieldType::SignedType:
        value = FieldValue::fromSigned(std::llround(transmitted));
        break;
    case FieldType::UnsignedType:
        value = FieldValue::fromUnsigned(quint64(std::llround(transmitted)));
        break;
    case FieldType::FloatType:
        if (field->getType().getSize() == int(sizeof(float)))
            value = FieldValue::fromFloat(float(transmitted));
        break;
    case FieldType::BoolType:
        value = FieldValue::fromBool(transmitted != 0);
        break;
    default:
        break;
    }
    return field->getInterpretedString(value, true);
}

void PlotSeries::clear()
{
    m_points.clear();
    m_computed.clear();
    m_function.restart();
    m_isThinnedOut = false;
    m_firstTime = NoValue;
    m_lastTime = NoValue;
    m_interval = 0;
    m_gapsInARow = 0;
    m_changedFrom = -Infinite;
}

double PlotSeries::getStartTime() const
{
    return m_recording ? double(m_recording->getSource()->getStartTime()) / 1e6 : m_firstTime;
}

void PlotSeries::setSinceStart(bool sinceStart)
{
    m_shift = sinceStart && !std::isnan(getStartTime()) ? getStartTime() : 0;
}

bool PlotSeries::getTimes(double* from, double* to) const
{
    const SourceSession* const recording = getRecording();
    if (m_points.isEmpty() && !recording)
        return false;
    const StreamSource* const source = recording ? recording->getSource() : nullptr;
    *from = source ? double(source->getStartTime()) / 1e6 : m_points.at(0).time;
    *to = source ? double(source->getEndTime()) / 1e6 : m_points.last().time;
    if (!m_points.isEmpty()) {
        *from = qMin(*from, m_points.at(0).time);
        *to = qMax(*to, m_points.last().time);
    }
    *from -= m_shift;
    *to -= m_shift;
    return true;
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

void PlotSeries::add(const FieldPath& path, const Message* message, double seconds)
{
    const FieldValue value = path.getValue(message);
    m_value = value.isNumber() ? value : FieldValue::invalid();
    ++m_count;
    if (m_isRecorded && !m_recording) {
        m_isRecorded = false;
        m_mostPoints = MostPoints;
        clear();
    }
    if (m_isRecorded && (m_isBeingRead || seconds <= m_lastTime))
        return;
    if (seconds < m_lastTime - LongestStepBack)
        clear(); // a recording that is played again
    addPoint(seconds, value.isNumber() ? FieldPass::numberOf(path, value) : FieldPass::numberOf(path, message));
    if (m_isRecorded || m_points.at(0).time >= m_lastTime - LongestTime)
        return;
    // Not for every single point.
    if (m_points.findNotBefore(m_lastTime - LongestTime) > m_points.getCount() / 8) {
        m_points.removeBefore(m_lastTime - LongestTime);
        compute();
        m_changedFrom = -Infinite;
    }
}

void PlotSeries::addPoint(double seconds, double number)
{
    if (isGap(seconds))
        append({(m_lastTime + seconds) / 2, NoValue});
    append({seconds, number});
    m_firstTime = std::isnan(m_firstTime) ? seconds : m_firstTime;
    if (m_points.getCount() <= m_mostPoints)
        return;
    m_points.thinOut();
    compute();
    m_changedFrom = -Infinite;
    m_isThinnedOut = true;
}

void PlotSeries::beginRecording(SourceSession* session, int mostPoints)
{
    clear();
    m_isRecorded = true;
    m_isBeingRead = true;
    m_recording = session;
    m_mostPoints = mostPoints;
}

void PlotSeries::addRecorded(double seconds, double number)
{
    ++m_count;
    addPoint(seconds, number);
}

void PlotSeries::endRecording()
{
    const bool isOrdered = m_points.isOrdered();
    m_points.settle();
    compute();
    m_changedFrom = isOrdered ? m_changedFrom : -Infinite;
    m_isBeingRead = false;
}
