#include "intervaltracker.h"

#include "roundinterval.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace
{

const qint64 LongestPause = Q_INT64_C(3600) * 1000 * 1000; // what is longer is a jump of the clock
const qint64 LeastInterval = 500;                          // below, whole milliseconds cannot tell it
const qint64 LeastStretch = 100 * 1000;                    // a rate that lasts less is a burst
const double Likeness = 0.3; // how far intervals that begin a segment may be from their mean
const double LeastDeviation = 0.001;
const double LeastUncertainty = 0.005;
const int BurstRatio = 8; // a pause so much longer than what is inside makes a burst
const int Memory = 256;   // intervals that an estimate looks back to
const int MaxStrain = 16;
const unsigned int Trusted = 10; // messages that a segment needs for a gap to be believed
const int PlausibleGap = 10;     // and it is trusted to go on over so many times the messages it has

qint64 meanOf(const qint64* values, int count)
{
    return std::accumulate(values, values + count, qint64(0)) / count;
}

bool areAlike(const qint64* intervals, int count)
{
    const qint64 mean = meanOf(intervals, count);
    if (mean < LeastInterval)
        return false;
    for (int i = 0; i < count; ++i) {
        if (std::fabs(double(intervals[i] - mean)) > Likeness * double(mean))
            return false;
    }
    return true;
}

} // namespace

IntervalTracker::IntervalTracker(int* spareGaps)
    : m_total(0)
    , m_hasLast(false)
    , m_hasEarlier(false)
    , m_regular(false)
    , m_last(0)
    , m_burstTime(0)
    , m_interval(0)
    , m_nominal(0)
    , m_deviation(0)
    , m_limit(0)
    , m_lastNominal(0)
    , m_segmentCount(0)
    , m_measured(0)
    , m_misfitCount(0)
    , m_strain(0)
    , m_windowSum(0)
    , m_windowPosition(0)
    , m_recentCount(0)
    , m_firstIsOpen(false)
    , m_alikeTime(0)
    , m_alikeCount(0)
    , m_earlier(0)
    , m_sameTime(0)
    , m_unknown(0)
    , m_spareGaps(spareGaps)
    , m_gapLimit(MessageStatistics::DefaultGapLimit)
    , m_numberOfGaps(0)
    , m_missingEpochs(0)
{
}

IntervalTracker::~IntervalTracker()
{
    if (m_spareGaps)
        *m_spareGaps += int(m_gaps.size());
}

// What is inline here is what every message of a regular type runs through.
void IntervalTracker::addTime(qint64 time, int untimed)
{
    ++m_total;
    const qint64 start = m_last;
    qint64 interval;
    if (!acceptTime(time, &interval))
        return;
    if (interval == 0) {
        ++m_sameTime;
    } else if (isInBurst(interval)) {
        ++m_unknown;
    } else if (!m_regular) {
        search(interval + takeBurstTime());
    } else if (double(interval) >= 0.5 * m_nominal && double(interval) < m_limit) {
        if (m_misfitCount == 0 || settleMisfits()) {
            continueSegment(interval + takeBurstTime());
        } else {
            endSegment();
            search(interval);
        }
    } else {
        takeBurstTime();
        const Misfit misfit = {start, interval, untimed};
        noteMisfit(misfit);
    }
}

// Whether a message comes that soon behind its predecessor that both are one epoch.
inline bool IntervalTracker::isInBurst(qint64 interval)
{
    const double scale = m_regular ? m_nominal : m_recentCount > 0 ? double(m_recent[m_recentCount - 1]) : 0;
    if (double(interval) * BurstRatio >= scale)
        return false;
    m_burstTime += interval;
    if (double(m_burstTime) > scale) {
        // It goes on when the next message is due: this is a new rate and no burst.
        endSegment();
        restartSearch();
    }
    return true;
}

inline qint64 IntervalTracker::takeBurstTime()
{
    const qint64 time = m_burstTime;
    m_burstTime = 0;
    return time;
}

inline bool IntervalTracker::acceptTime(qint64 time, qint64* interval)
{
    if (!m_hasLast) {
        beginAnew(time);
        return false;
    }
    *interval = time - m_last;
    if (*interval < 0) {
        if (!m_hasEarlier) {
            m_hasEarlier = true;
            m_earlier = time;
            ++m_unknown;
            return false;
        }
        // The second in a row that is older: this is no straggler, the clock was set back.
        *interval = time - m_earlier;
        endSegment();
        beginAnew(m_earlier);
        --m_unknown; // m_earlier was counted when it came
        if (*interval < 0) {
            m_last = time;
            ++m_unknown;
            return false;
        }
        m_last = time;
        return true;
    }
    m_hasEarlier = false;
    if (*interval > LongestPause) {
        endSegment();
        beginAnew(time);
        return false;
    }
    m_last = time;
    return true;
}

void IntervalTracker::beginAnew(qint64 time)
{
    m_hasLast = true;
    m_last = time;
    m_hasEarlier = false;
    restartSearch();
    m_firstIsOpen = true;
    ++m_unknown;
}

void IntervalTracker::restartSearch()
{
    m_recentCount = 0;
    m_firstIsOpen = false;
    m_burstTime = 0;
    m_alikeTime = 0;
}

void IntervalTracker::search(qint64 interval)
{
    ++m_unknown;
    // What came before was a burst.
    if (m_recentCount > 0 && interval / BurstRatio > m_recent[m_recentCount - 1])
        restartSearch();
    if (m_recentCount == Least) {
        std::copy(m_recent + 1, m_recent + Least, m_recent);
        --m_recentCount;
        m_firstIsOpen = false;
    }
    m_recent[m_recentCount++] = interval;
    if (m_recentCount < Least)
        return;
    if (!areAlike(m_recent, Least)) {
        m_alikeTime = 0;
    } else if (m_alikeTime > 0) {
        m_alikeTime += interval;
        ++m_alikeCount;
    } else {
        m_alikeTime = std::accumulate(m_recent, m_recent + Least, qint64(0));
        m_alikeCount = Least + (m_firstIsOpen ? 1u : 0u);
    }
    if (m_alikeTime >= LeastStretch) {
        m_unknown -= m_alikeCount;
        beginSegment(m_recent, Least, m_alikeCount);
    }
}

void IntervalTracker::beginSegment(const qint64* intervals, int count, unsigned int claimed)
{
    m_regular = true;
    m_segmentCount = claimed;
    m_misfitCount = 0;
    m_strain = 0;
    restartSearch();

    const qint64 mean = meanOf(intervals, count);
    double deviations = 0;
    for (int i = 0; i < count; ++i)
        deviations += std::fabs(double(intervals[i] - mean));
    m_interval = double(mean);
    m_deviation = std::max(deviations / count, LeastDeviation * m_interval);
    m_measured = count;
    m_nominal = 0;
    updateNominal();

    // A window that is not full looks as if it had always been like this.
    m_windowSum = 0;
    for (int i = 0; i < Window; ++i) {
        m_window[i] = i < count ? intervals[i] : mean;
        m_windowSum += m_window[i];
    }
    m_windowPosition = count % Window;
}

void IntervalTracker::endSegment()
{
    if (!m_regular)
        return;
    m_regular = false;
    m_misfitCount = 0;
    restartSearch();
    const long long key = keyOf(m_nominal);
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).interval == key) {
            m_rows[i].count += m_segmentCount;
            m_segmentCount = 0;
            return;
        }
    }
    if (m_rows.size() < MaxRows) {
        const Row row = {key, m_segmentCount};
        m_rows.append(row);
    } else {
        m_unknown += m_segmentCount;
    }
    m_segmentCount = 0;
}

inline void IntervalTracker::continueSegment(qint64 interval)
{
    ++m_segmentCount;
    if (m_strain > 0)
        --m_strain;
    measure(interval);
    if (hasRateChanged()) {
        m_segmentCount -= Window;
        forgetWindow();
        endSegment();
        beginSegment(m_window, Window, Window);
    }
}

inline void IntervalTracker::measure(qint64 interval)
{
    m_windowSum += interval - m_window[m_windowPosition];
    m_window[m_windowPosition] = interval;
    m_windowPosition = (m_windowPosition + 1) % Window;

    if (m_measured < Memory)
        ++m_measured;
    const double difference = double(interval) - m_interval;
    double step;
    if (m_measured == Memory) {
        // As below; but to divide by a power of two that the compiler knows takes no time.
        m_interval += difference / Memory;
        step = m_deviation / (Memory / 4);
    } else {
        m_interval += difference / m_measured;
        step = m_deviation / std::min(m_measured, Memory / 4);
    }
    m_deviation += std::fabs(difference) > m_deviation ? step : -step;
    m_deviation = std::max(m_deviation, LeastDeviation * m_interval);
    updateNominal();
}

inline bool IntervalTracker::hasRateChanged() const
{
    const double shift = double(m_windowSum) / Window - m_interval;
    if (std::fabs(shift) < std::max(0.015 * m_interval, 2.5 * m_deviation))
        return false;
    for (int i = 0; i < Window; ++i) {
        const double difference = double(m_window[i]) - m_interval;
        if (shift > 0 ? difference < 0.5 * shift : difference > 0.5 * shift)
            return false;
    }
    return true;
}

// The intervals of the window belong to another rate: as if they had never been measured.
void IntervalTracker::forgetWindow()
{
    for (int i = 1; i <= Window; ++i) {
        const qint64 interval = m_window[(m_windowPosition + Window - i) % Window];
        m_interval = (m_interval * m_measured - double(interval)) / (m_measured - 1);
        if (m_measured < Memory)
            --m_measured;
    }
    m_nominal = roundInterval(m_interval, getUncertainty());
}

double IntervalTracker::getUncertainty() const
{
    const double ofMean = 2.5 * m_deviation / std::sqrt(double(m_measured));
    return std::min(0.1 * m_interval, LeastUncertainty * m_interval + ofMean);
}

inline void IntervalTracker::updateNominal()
{
    const double error = std::fabs(m_nominal - m_interval);
    const bool knowsBetter = m_measured < Memory && (m_measured & (m_measured - 1)) == 0;
    // What is that near need not be compared with the uncertainty, which takes a root.
    if (m_nominal <= 0 || knowsBetter || error > LeastUncertainty * m_interval) {
        // What was taken once is kept for longer than it would be taken anew, so that it does not flicker.
        const double uncertainty = getUncertainty();
        if (m_nominal <= 0 || knowsBetter || error > 1.5 * uncertainty)
            m_nominal = roundInterval(m_interval, uncertainty);
    }
    m_limit = std::max(1.5 * m_nominal, m_nominal + 3.5 * m_deviation);
    m_lastNominal = m_nominal;
}

void IntervalTracker::noteMisfit(const Misfit& misfit)
{
    ++m_unknown;
    m_misfits[m_misfitCount++] = misfit;
    if (m_misfitCount < Least)
        return;
    qint64 intervals[Least];
    for (int i = 0; i < Least; ++i)
        intervals[i] = m_misfits[i].interval;
    if (areDifferentMultiples() && settleMisfits())
        return;
    endSegment();
    for (int i = 0; i < Least; ++i) {
        --m_unknown;
        search(intervals[i]);
    }
}

// Whether a steady sender lost a different number of messages now and then. Always the same number is another rate.
bool IntervalTracker::areDifferentMultiples() const
{
    bool differ = false;
    const double first = std::floor(double(m_misfits[0].interval) / m_nominal + 0.5);
    for (int i = 0; i < m_misfitCount; ++i) {
        const double ratio = double(m_misfits[i].interval) / m_nominal;
        const double multiple = std::floor(ratio + 0.5);
        if (ratio < 1.5 || std::fabs(ratio - multiple) > 0.2)
            return false;
        differ = differ || multiple != first;
    }
    return differ;
}

qint64 IntervalTracker::missingEpochs(const Misfit& misfit) const
{
    return double(misfit.interval) < m_limit ? 0 : qint64(double(misfit.interval) / m_nominal + 0.5) - 1;
}

/** Decides what the misfits were; false, and then nothing has changed, when the segment does not carry them. */
bool IntervalTracker::settleMisfits()
{
    int strain = m_strain;
    for (int i = 0; i < m_misfitCount; ++i) {
        const qint64 missing = missingEpochs(m_misfits[i]);
        if (missing == 0)
            strain += 3; // too soon behind its predecessor: its interval stays unknown
        else if (m_segmentCount < Trusted || missing > qint64(PlausibleGap) * m_segmentCount)
            return false;
    }
    if (strain > MaxStrain)
        return false;
    m_strain = strain;
    for (int i = 0; i < m_misfitCount; ++i) {
        const Misfit& misfit = m_misfits[i];
        const qint64 missing = missingEpochs(misfit);
        if (missing == 0)
            continue;
        --m_unknown;
        ++m_segmentCount;
        if (missing > misfit.untimed)
            addGap(misfit.start, missing - misfit.untimed);
    }
    m_misfitCount = 0;
    return true;
}

void IntervalTracker::addGap(qint64 start, qint64 missing)
{
    const int most = std::numeric_limits<int>::max();
    if (m_numberOfGaps < most)
        ++m_numberOfGaps;
    m_missingEpochs = missing > most - m_missingEpochs ? most : m_missingEpochs + int(missing);
    if (m_gaps.size() >= m_gapLimit || (m_spareGaps && *m_spareGaps <= 0 && m_gaps.size() >= LeastGaps))
        return;
    if (m_spareGaps)
        --*m_spareGaps;
    MessageStatistics::Gap gap;
    gap.start = static_cast<unsigned long long>(start);
    gap.missingEpochs = static_cast<unsigned int>(missing);
    gap.interval = static_cast<unsigned long long>(keyOf(m_nominal));
    m_gaps.append(gap);
}

long long IntervalTracker::keyOf(double interval) const
{
    const long long key = std::max(1LL, static_cast<long long>(interval / 1000 + 0.5));
    const Row* const row = findRow(key);
    return row ? row->interval : key;
}

const IntervalTracker::Row* IntervalTracker::findRow(long long interval) const
{
    const Row* best = nullptr;
    double bestDistance = 0.03 * double(interval);
    for (int i = 0; i < m_rows.size(); ++i) {
        const double distance = std::fabs(double(m_rows.at(i).interval - interval));
        if (distance <= bestDistance) {
            bestDistance = distance;
            best = &m_rows.at(i);
        }
    }
    return best;
}

QHash<long long, unsigned int> IntervalTracker::getCounts() const
{
    QHash<long long, unsigned int> counts;
    if (m_sameTime > 0)
        counts.insert(0, m_sameTime);
    for (int i = 0; i < m_rows.size(); ++i)
        counts.insert(m_rows.at(i).interval, m_rows.at(i).count);
    if (m_regular)
        counts[keyOf(m_nominal)] += m_segmentCount;
    return counts;
}

bool IntervalTracker::isRegularAt(qint64 time) const
{
    return isRegular() && double(time - m_last) < m_limit + m_nominal;
}

unsigned long long IntervalTracker::getLastInterval() const
{
    return m_lastNominal > 0 ? static_cast<unsigned long long>(keyOf(m_lastNominal)) : 0;
}
