#ifndef PLOTFUNCTION_H
#define PLOTFUNCTION_H

#include "seriespoints.h"

#include <QString>

#include <deque>

/** What is drawn of a series in place of its values. Takes one point after another, in the order of their times. */
class PlotFunction
{
public:
    enum Kind
    {
        Values,
        Derivative, ///< by time, from each value to the next
        Average,    ///< of the last AverageSeconds
        OtherAngle, ///< degrees in place of radians, or the other way round
        KindCount
    };

    static const int AverageSeconds = 1;

    explicit PlotFunction(Kind kind = Values);

    Kind getKind() const { return m_kind; }
    /** The unit of what it makes of values with @p unit. */
    QString getUnit(const QString& unit) const;
    /** Whether values with @p unit have such a function. */
    bool isPossible(const QString& unit) const;
    /** What is added to the name of a series; empty where the unit tells. */
    QString getSuffix() const;

    /** Forgets the points before. */
    void restart();
    SeriesPoints::Point apply(const SeriesPoints::Point& point, const QString& unit);

private:
    double averageWith(const SeriesPoints::Point& point);

    Kind m_kind;
    SeriesPoints::Point m_previous;
    std::deque<SeriesPoints::Point> m_window;
    double m_sum = 0;
};

#endif
