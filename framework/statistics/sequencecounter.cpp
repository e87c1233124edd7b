#include "sequencecounter.h"

#include <algorithm>

namespace
{

// Numbers of which nobody sees the end: they neither come round to 0, nor need they begin there.
const quint64 LeastEndless = Q_UINT64_C(1) << 32;

// What may be lost at once, and how much more for each message of others meanwhile.
const quint64 GreatestLoss = 1000;
const quint64 GreatestLossEach = 16;

const int MostHoles = 64;

} // namespace

SequenceCounter::SequenceCounter()
    : m_any(false)
    , m_last(0)
    , m_lost(0)
    , m_repeated(0)
    , m_late(0)
    , m_restarts(0)
    , m_steps(0)
    , m_settled(~quint64(0))
    , m_nextHole(0)
{
}

void SequenceCounter::countOther(quint64 number, quint64 modulus, quint64 between)
{
    if (!m_any) {
        m_any = true;
        m_last = number;
    } else if (modulus >= LeastEndless) {
        countEndless(number, between);
    } else {
        countRound(number, modulus);
    }
}

void SequenceCounter::countRound(quint64 number, quint64 modulus)
{
    quint64 step = number - m_last + (number < m_last ? modulus : 0);
    if (step >= modulus) // seldom; it would be the slowest of all that is done for a message
        step %= modulus;
    const quint64 latest = qMin(modulus / 32, quint64(63));
    if (step == 0) {
        ++m_repeated;
        return;
    }
    if (step >= modulus - latest) {
        const quint64 bit = quint64(1) << (modulus - step);
        if (m_settled & bit) {
            ++m_repeated;
        } else {
            // It was taken for lost when its successors came.
            ++m_late;
            --m_lost;
            m_settled |= bit;
        }
        return;
    }
    // A loss that ends at 0 by chance is short, as losses mostly are.
    if (number == 0 && step > modulus / 8) {
        ++m_restarts;
        m_settled = ~quint64(0);
    } else {
        m_steps += step == 1 ? 1 : 0;
        m_lost += step - 1;
        m_settled = (step < 64 ? m_settled << step : 0) | 1;
    }
    m_last = number;
}

void SequenceCounter::countEndless(quint64 number, quint64 between)
{
    if (number > m_last && number - m_last - 1 <= GreatestLoss + GreatestLossEach * between) {
        addHole(m_last + 1, number);
        m_lost += number - m_last - 1;
    } else if (number < m_last && fillHole(number)) {
        ++m_late;
        --m_lost;
        return;
    } else if (number <= m_last && m_last - number < 64) {
        ++m_repeated;
        return;
    } else {
        ++m_restarts;
        m_holes.clear();
        m_nextHole = 0;
    }
    m_last = number;
}

void SequenceCounter::addHole(quint64 first, quint64 behind)
{
    const Hole hole = {first, behind};
    if (m_holes.size() < MostHoles) {
        m_holes.append(hole);
        return;
    }
    m_holes[m_nextHole] = hole;
    m_nextHole = (m_nextHole + 1) % MostHoles;
}

/** Whether that number was missing so far. */
bool SequenceCounter::fillHole(quint64 number)
{
    std::rotate(m_holes.begin(), m_holes.begin() + m_nextHole, m_holes.end());
    m_nextHole = 0;
    for (int i = m_holes.size() - 1; i >= 0; --i) {
        const Hole hole = m_holes.at(i);
        if (number < hole.first || number >= hole.behind)
            continue;
        const Hole before = {hole.first, number};
        const Hole after = {number + 1, hole.behind};
        m_holes.remove(i);
        if (after.first < after.behind)
            m_holes.insert(i, after);
        if (before.first < before.behind)
            m_holes.insert(i, before);
        if (m_holes.size() > MostHoles)
            m_holes.remove(0);
        return true;
    }
    return false;
}
