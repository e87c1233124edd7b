#include "roundinterval.h"

#include <cmath>

namespace
{

/** @p value to a multiple of the @p digit-th place behind the leading one, in steps of @p step. */
double rounded(double value, double decade, double step)
{
    const double unit = decade * step;
    return std::floor(value / unit + 0.5) * unit;
}

double nearestOf125(double value, double decade)
{
    const double mantissa = value / decade;
    if (mantissa < 1.5)
        return decade;
    if (mantissa < 3.5)
        return 2 * decade;
    if (mantissa < 7.5)
        return 5 * decade;
    return 10 * decade;
}

double nearestWholeRate(double interval)
{
    const double rate = std::floor(1e6 / interval + 0.5);
    return rate < 1 ? 1e6 : 1e6 / rate;
}

double nearer(double interval, double a, double b)
{
    return std::fabs(a - interval) <= std::fabs(b - interval) ? a : b;
}

} // namespace

double roundInterval(double interval, double uncertainty)
{
    const double decade = std::pow(10.0, std::floor(std::log10(interval)));
    const double candidates[] = {
        nearestOf125(interval, decade),
        nearer(interval, rounded(interval, decade, 1), nearestWholeRate(interval)),
        nearer(interval, rounded(interval, decade, 0.1), nearestWholeRate(interval)),
        rounded(interval, decade, 0.01),
    };
    for (unsigned int i = 0; i < sizeof(candidates) / sizeof(candidates[0]); ++i) {
        if (candidates[i] > 0 && std::fabs(candidates[i] - interval) <= uncertainty)
            return candidates[i];
    }
    return interval;
}
