#ifndef INTERVALTRACKER_H
#define INTERVALTRACKER_H

#include "messagestatistics.h"

/**
 * Tells the regular intervals and the gaps of a sequence of times, in constant time a message and without allocating.
 *
 * docs/statistics.md describes the rules. Times and intervals are microseconds here.
 */
class IntervalTracker
{
public:
    /** @param spareGaps  how many gaps may still be stored of this and others together, which must outlive it; null
     * where nobody counts them */
    explicit IntervalTracker(int* spareGaps = nullptr);
    ~IntervalTracker();

    /** @param untimed  how many messages without a time came since the last one with a time */
    void addTime(qint64 time, int untimed);

    void setGapLimit(int limit) { m_gapLimit = limit; }

    /** Every message with a time: the ones with the same time as before, by interval, and the rest. */
    QHash<long long, unsigned int> getCounts() const;
    unsigned int getUnknownCount() const { return m_unknown; }
    unsigned int getTotal() const { return m_total; }

    bool isRegular() const { return m_regular && m_misfitCount == 0; }
    /** Whether it is still regular when it is @p time by now. */
    bool isRegularAt(qint64 time) const;
    /** In milliseconds; 0 when there was none. */
    unsigned long long getLastInterval() const;

    const QVector<MessageStatistics::Gap>& getGaps() const { return m_gaps; }
    int getNumberOfGaps() const { return m_numberOfGaps; }
    int getNumberOfMissingEpochs() const { return m_missingEpochs; }

private:
    Q_DISABLE_COPY(IntervalTracker)

    static const int Least = 5;  // intervals that make a stretch regular, or end it
    static const int Window = 8; // intervals that show a change of the rate
    static const int MaxRows = 200;
    static const int LeastGaps = 10; // that are stored of each, whatever others have

    struct Row
    {
        long long interval; // milliseconds
        unsigned int count;
    };

    /** An interval that does not fit, until it is known whether the ones behind it fit again. */
    struct Misfit
    {
        qint64 start;
        qint64 interval;
        int untimed;
    };

    bool isInBurst(qint64 interval);
    qint64 takeBurstTime();
    bool acceptTime(qint64 time, qint64* interval);
    void beginAnew(qint64 time);
    void search(qint64 interval);
    void restartSearch();
    void beginSegment(const qint64* intervals, int count, unsigned int claimed);
    void endSegment();
    void continueSegment(qint64 interval);
    void noteMisfit(const Misfit& misfit);
    qint64 missingEpochs(const Misfit& misfit) const;
    bool settleMisfits();
    bool areDifferentMultiples() const;
    void measure(qint64 interval);
    bool hasRateChanged() const;
    void forgetWindow();
    double getUncertainty() const;
    void updateNominal();
    void addGap(qint64 start, qint64 missing);
    long long keyOf(double interval) const;
    const Row* findRow(long long interval) const;

    // In the order in which they are needed: of a regular type, a message touches the first few cache lines only.
    unsigned int m_total;
    bool m_hasLast;
    bool m_hasEarlier; // whether the newest message was older than m_last
    bool m_regular;
    qint64 m_last;      // the time that the next interval is measured from
    qint64 m_burstTime; // since the message that began a burst; 0 outside of bursts

    // While a segment is regular.
    double m_interval;  // measured
    double m_nominal;   // what it is taken for
    double m_deviation; // half of the intervals are nearer to m_interval
    double m_limit;     // what is as long or longer is a gap
    double m_lastNominal;
    unsigned int m_segmentCount; // messages that belong to it
    int m_measured;
    int m_misfitCount;
    int m_strain;
    qint64 m_windowSum;
    int m_windowPosition;
    qint64 m_window[Window]; // the newest intervals, in no order
    Misfit m_misfits[Least];

    // While none is.
    qint64 m_recent[Least];
    int m_recentCount;
    bool m_firstIsOpen;        // whether the message before m_recent[0] began the stretch and may be claimed by it
    qint64 m_alikeTime;        // how long the intervals have been alike; 0 when they are not
    unsigned int m_alikeCount; // messages of that time

    qint64 m_earlier; // the time of the newest message, if m_hasEarlier
    unsigned int m_sameTime;
    unsigned int m_unknown;
    QVector<Row> m_rows; // of the segments that ended

    QVector<MessageStatistics::Gap> m_gaps;
    int* const m_spareGaps;
    int m_gapLimit;
    int m_numberOfGaps;
    int m_missingEpochs;
};

#endif
