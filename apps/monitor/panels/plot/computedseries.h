#ifndef COMPUTEDSERIES_H
#define COMPUTEDSERIES_H

#include "plotexpression.h"
#include "plotseries.h"

#include <functional>

/**
 * A line that is computed from others: at each time of the first one, with the newest values of the others that are not
 * later. None where one of them has none yet.
 *
 * It keeps the lines that it reads, whether they are drawn or not. Where they are drawn by the time since their starts,
 * that is what goes together.
 */
class ComputedSeries : public PlotSeries
{
public:
    /** @param lines  one for each operand of @p expression, which is not null */
    ComputedSeries(const PlotExpression& expression, const PlotExpression::Lines& lines);
    ~ComputedSeries() override;

    /** With the senders as they are called now. */
    PlotExpression getExpression() const;
    const PlotExpression::Lines& getLines() const { return m_lines; }
    bool reads(const PlotSeries* series) const;

    bool isHidden() const override;
    QString getDescription() const override;
    QString getWish() const override { return getExpression().toWish(); }
    QString getFieldUnit() const override { return m_unit; }
    QString getOwnName() const override;
    SourceSession* getRecording() const override { return m_lines.front()->getRecording(); }
    bool isThinnedOut() const override;
    double getStartTime() const override { return m_lines.front()->getStartTime(); }

    /** From @p time on a line that it reads is another, see takeChange(); @p time is one of that line. */
    void follow(const PlotSeries* series, double time);
    /** Computes what is new, as long as @p goOn says yes; whether there was anything. */
    bool work(const std::function<bool()>& goOn);
    /** Whether there is more to compute. */
    bool isBehind() const { return m_isBehind; }

private:
    struct Operand
    {
        PlotFunction function;
        QString unit;
        qint64 next = 0; // of the line's values
        bool has = false;
        double shift = 0;
    };

    bool advance(std::size_t number, double until);
    void goBack(double time);
    void followShifts();
    double readUpTo() const;

    const PlotExpression m_expression;
    const PlotExpression::Lines m_lines;
    Formula m_formula;
    QString m_unit;
    std::vector<Operand> m_operands;
    std::vector<double> m_numbers; // the newest of each
    double m_reached;              // time of the first line's newest value that was looked at, since its start
    bool m_isBehind = false;
};

#endif
