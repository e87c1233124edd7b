#ifndef RANDOMNUMBERS_H
#define RANDOMNUMBERS_H

#include <cmath>
#include <cstdint>
#include <random>

/** Random numbers that are the same for the same seed everywhere, which the standard distributions don't promise. */
class RandomNumbers
{
public:
    /** Numbers of their own for each @p stream of one seed. */
    RandomNumbers(std::uint32_t seed, std::uint32_t stream)
        : m_engine((std::uint64_t(stream) << 32 | seed) * 0x9e3779b97f4a7c15u + 1)
    {
    }

    /** From 0 up to but not 1. */
    double uniform() { return double(m_engine() >> 11) / 9007199254740992.0; }

    /** From 0 up to but not @p limit. */
    int below(int limit) { return int(uniform() * limit); }

    /** About normal, mean 0 and standard deviation 1; never beyond 6. */
    double normal()
    {
        double sum = -6;
        for (int i = 0; i < 12; ++i)
            sum += uniform();
        return sum;
    }

private:
    std::mt19937_64 m_engine;
};

/** A value that wanders about zero: changes take about @p timeConstant seconds, the standard deviation is @p deviation.
 */
class WanderingValue
{
public:
    WanderingValue(double deviation, double timeConstant)
        : m_deviation(deviation)
        , m_timeConstant(timeConstant)
        , m_value(0)
    {
    }

    void advance(double seconds, RandomNumbers* numbers)
    {
        const double share = seconds / m_timeConstant;
        m_value += -m_value * share + m_deviation * std::sqrt(2 * share) * numbers->normal();
    }

    double get() const { return m_value; }

private:
    double m_deviation;
    double m_timeConstant;
    double m_value;
};

#endif
