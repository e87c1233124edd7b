#include "computedseries.h"

#include <algorithm>
#include <cmath>
#include <limits>

static const double NoValue = std::numeric_limits<double>::quiet_NaN();
static const double Infinite = std::numeric_limits<double>::infinity();
static const int OftenAsked = 256; // values until it is asked whether to go on

ComputedSeries::ComputedSeries(const PlotExpression& expression, const PlotExpression::Lines& lines)
    : PlotSeries(FieldPath())
    , m_expression(expression)
    , m_lines(lines)
    , m_numbers(lines.size(), NoValue)
    , m_reached(-Infinite)
{
    Formula::Fault fault;
    m_formula.parse(expression.formula, &fault);
    QStringList units;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Operand operand;
        operand.function = PlotFunction(expression.operands.at(int(i)).function);
        operand.unit = lines[i]->getFieldUnit();
        units.append(operand.function.getUnit(operand.unit));
        m_operands.push_back(operand);
    }
    m_unit = expression.getUnit(units);
}

ComputedSeries::~ComputedSeries() = default;

PlotExpression ComputedSeries::getExpression() const
{
    PlotExpression expression = m_expression;
    for (int i = 0; i < int(expression.operands.size()); ++i)
        if (!expression.operands.at(i).sender.isEmpty())
            expression.operands[i].sender = m_lines[std::size_t(i)]->getSender();
    return expression;
}

bool ComputedSeries::reads(const PlotSeries* series) const
{
    return std::any_of(m_lines.begin(), m_lines.end(), [series](const auto& line) { return line.get() == series; });
}

bool ComputedSeries::isHidden() const
{
    return std::any_of(m_lines.begin(), m_lines.end(), [](const auto& line) { return line->isHidden(); });
}

bool ComputedSeries::isThinnedOut() const
{
    return std::any_of(m_lines.begin(), m_lines.end(), [](const auto& line) { return line->isThinnedOut(); });
}

QString ComputedSeries::getOwnName() const
{
    QStringList names;
    const PlotExpression expression = getExpression();
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const QString sender = expression.operands.at(int(i)).sender;
        const QString suffix = m_operands[i].function.getSuffix();
        QString name = m_lines[i]->getOwnName();
        if (!sender.isEmpty())
            name += QStringLiteral(" (%1)").arg(sender);
        names.append(suffix.isEmpty() ? name : QStringLiteral("(%1%2)").arg(name, suffix));
    }
    return expression.toText(names);
}

QString ComputedSeries::getDescription() const
{
    QStringList names;
    for (const auto& line : m_lines)
        names.append(QStringLiteral("\"%1\"").arg(line->getDescription()));
    return m_expression.toText(names);
}

void ComputedSeries::follow(const PlotSeries* series, double time)
{
    for (std::size_t i = 0; i < m_lines.size(); ++i)
        if (m_lines[i].get() == series && time - m_operands[i].shift <= m_reached)
            goBack(time - m_operands[i].shift);
}

/** Forgets what was computed from that time on, counted as the lines are drawn. */
void ComputedSeries::goBack(double time)
{
    removeFrom(time + m_operands.front().shift);
    m_reached = -Infinite;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const SeriesPoints& values = m_lines[i]->getValues();
        Operand& operand = m_operands[i];
        operand.next = values.findNotBefore(time + operand.shift);
        operand.has = operand.next > 0;
        operand.function.restart();
        m_numbers[i] = NoValue;
        // What goes before is needed by what is made of several values.
        qint64 first = operand.next - 1;
        if (operand.function.getKind() != PlotFunction::Values)
            first = values.findNotBefore(time + operand.shift - PlotFunction::AverageSeconds) - 1;
        for (first = std::max(first, qint64(0)); first < operand.next; ++first)
            m_numbers[i] = operand.function.apply(values.at(first), operand.unit).value;
        if (i == 0 && operand.has)
            m_reached = values.at(operand.next - 1).time - operand.shift;
    }
}

void ComputedSeries::followShifts()
{
    bool changed = false;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        changed = changed || m_operands[i].shift != m_lines[i]->getShift();
        m_operands[i].shift = m_lines[i]->getShift();
    }
    if (!changed)
        return;
    clear();
    goBack(-Infinite);
}

/** Until when the lines are there; later values of others may still come out of a recording. */
double ComputedSeries::readUpTo() const
{
    double until = Infinite;
    for (std::size_t i = 1; i < m_lines.size(); ++i)
        if (m_lines[i]->isBeingRead())
            until = std::min(until, m_lines[i]->getLastTime() - m_operands[i].shift);
    return until;
}

/** Takes the values of a line up to @p until; whether there is one. */
bool ComputedSeries::advance(std::size_t number, double until)
{
    const SeriesPoints& values = m_lines[number]->getValues();
    Operand& operand = m_operands[number];
    while (operand.next < values.getCount() && values.at(operand.next).time - operand.shift <= until) {
        m_numbers[number] = operand.function.apply(values.at(operand.next++), operand.unit).value;
        operand.has = true;
    }
    return operand.has;
}

bool ComputedSeries::work(const std::function<bool()>& goOn)
{
    followShifts();
    for (std::size_t i = 1; i < m_lines.size(); ++i) {
        const SeriesPoints& values = m_lines[i]->getValues();
        const qint64 next = m_operands[i].next;
        if (next < values.getCount() && values.at(next).time - m_operands[i].shift <= m_reached)
            goBack(values.at(next).time - m_operands[i].shift); // it came later than it happened
    }
    const SeriesPoints& times = m_lines.front()->getValues();
    Operand& first = m_operands.front();
    const qint64 begin = first.next;
    const double until = readUpTo();
    m_isBehind = false;
    while (first.next < times.getCount()) {
        if ((first.next - begin) % OftenAsked == OftenAsked - 1 && !goOn()) {
            m_isBehind = true;
            break;
        }
        const double time = times.at(first.next).time;
        if (!(time - first.shift <= until))
            break;
        m_reached = std::max(m_reached, time - first.shift);
        m_numbers.front() = first.function.apply(times.at(first.next++), first.unit).value;
        bool has = true;
        for (std::size_t i = 1; i < m_lines.size(); ++i)
            has = advance(i, m_reached) && has;
        if (!has)
            continue;
        const bool areAll =
            std::none_of(m_numbers.begin(), m_numbers.end(), [](double one) { return std::isnan(one); });
        const double number = areAll ? m_formula.compute(m_numbers.data()) : NoValue;
        append({time, std::isfinite(number) ? number : NoValue});
    }
    return first.next > begin;
}
