#ifndef CHANCE_H
#define CHANCE_H

#include <QtGlobal>

/** Random numbers that are the same for the same seed, on every machine. */
class Chance
{
public:
    explicit Chance(quint64 seed)
        : m_state(seed)
    {
    }

    /** A number from 0 to one below @p end; 0 when that is nothing. */
    int below(int end)
    {
        m_state += Q_UINT64_C(0x9e3779b97f4a7c15);
        quint64 bits = m_state;
        bits = (bits ^ (bits >> 30)) * Q_UINT64_C(0xbf58476d1ce4e5b9);
        bits = (bits ^ (bits >> 27)) * Q_UINT64_C(0x94d049bb133111eb);
        bits ^= bits >> 31;
        return end > 0 ? static_cast<int>(bits % static_cast<quint64>(end)) : 0;
    }
    bool percent(int percentage) { return below(100) < percentage; }
    bool coin() { return below(2); }

    /** One element of @p list, or a default value when it has none. */
    template <typename List>
    typename List::value_type pick(const List& list)
    {
        return list.isEmpty() ? typename List::value_type() : list.at(below(static_cast<int>(list.size())));
    }

private:
    quint64 m_state;
};

#endif
