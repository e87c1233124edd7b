#ifndef SEQUENCECOUNTER_H
#define SEQUENCECOUNTER_H

#include <QtGlobal>
#include <QVector>

/** Tells from the numbers of messages how many of them were lost. docs/statistics.md says how they are read. */
class SequenceCounter
{
public:
    SequenceCounter();

    /**
     * Accounts for the number of a message.
     *
     * @param modulus  numbers run from 0 to one below it
     * @param between  messages of others since the last one that was accounted for here, for numbers that have no end
     *                 that they come to
     */
    void count(quint64 number, quint64 modulus, quint64 between)
    {
        if (number == m_last + 1 && m_any) {
            ++m_steps;
            m_settled = m_settled << 1 | 1;
            m_last = number;
        } else {
            countOther(number, modulus, between);
        }
    }

    bool hasAny() const { return m_any; }
    /** The newest number. */
    quint64 getLast() const { return m_last; }
    quint64 getLost() const { return m_lost; }
    quint64 getRepeated() const { return m_repeated; }
    quint64 getLate() const { return m_late; }
    quint64 getRestarts() const { return m_restarts; }
    /** Numbers that followed their predecessor at once. */
    quint64 getSteps() const { return m_steps; }

private:
    struct Hole
    {
        quint64 first;
        quint64 behind;
    };

    void countOther(quint64 number, quint64 modulus, quint64 between);
    void countRound(quint64 number, quint64 modulus);
    void countEndless(quint64 number, quint64 between);
    void addHole(quint64 first, quint64 behind);
    bool fillHole(quint64 number);

    bool m_any;
    quint64 m_last;
    quint64 m_lost;
    quint64 m_repeated;
    quint64 m_late;
    quint64 m_restarts;
    quint64 m_steps;
    quint64 m_settled;     // bit n: the number that lies n before the newest one came, or was never expected
    QVector<Hole> m_holes; // of endless numbers: those that did not come yet, in the order in which they were missed
    int m_nextHole;        // but for this: where the oldest is, when there are as many as there may be
};

#endif
