#include "messagestatistics.h"

#include "formatinfo.h"
#include "intervaltracker.h"
#include "message.h"
#include "messageinfo.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace
{

struct MoreFrequent
{
    explicit MoreFrequent(const QHash<long long, unsigned int>& counts)
        : counts(counts)
    {
    }
    // Of equally frequent intervals the shorter comes first, so that the order does not depend on the hash.
    bool operator()(long long a, long long b) const
    {
        const unsigned int countA = counts.value(a);
        const unsigned int countB = counts.value(b);
        return countA != countB ? countA > countB : a < b;
    }
    const QHash<long long, unsigned int>& counts;
};

} // namespace

const int MessageStatistics::DefaultGapLimit;

MessageStatistics::MessageStatistics(const MessageInfo* info, const QString& name)
    : m_info(info)
    , m_name(name)
    , m_tracker(0)
    , m_countWithoutTime(0)
    , m_untimedInARow(0)
    , m_spareGaps(0)
    , m_gapsListed(true)
    , m_streamTime(nullptr)
{
}

MessageStatistics::~MessageStatistics()
{
    delete m_tracker;
}

void MessageStatistics::reset()
{
    delete m_tracker;
    m_tracker = 0;
    m_countWithoutTime = 0;
    m_untimedInARow = 0;
    m_firstGap.clear();
    m_streamTime = 0;
}

void MessageStatistics::takeOver(MessageStatistics* other)
{
    reset();
    std::swap(m_tracker, other->m_tracker);
    m_countWithoutTime = other->m_countWithoutTime;
    m_untimedInARow = other->m_untimedInARow;
    m_streamTime = other->m_streamTime;
    other->reset();
}

const IntervalTracker& MessageStatistics::tracker() const
{
    static const IntervalTracker none;
    return m_tracker ? *m_tracker : none;
}

IntervalTracker* MessageStatistics::makeTracker()
{
    if (!m_tracker)
        m_tracker = new IntervalTracker(m_spareGaps);
    return m_tracker;
}

void MessageStatistics::addReception(qint64 time)
{
    if (time == Message::NoTime) {
        ++m_countWithoutTime;
        ++m_untimedInARow;
        return;
    }
    makeTracker()->addTime(time, m_untimedInARow);
    m_untimedInARow = 0;
}

void MessageStatistics::setGapLimit(int limit)
{
    makeTracker()->setGapLimit(limit);
}

void MessageStatistics::setGapsListed(bool listed)
{
    m_gapsListed = listed;
}

unsigned int MessageStatistics::getCount() const
{
    return m_countWithoutTime + tracker().getTotal();
}

unsigned long long MessageStatistics::getLastInterval() const
{
    return tracker().getLastInterval();
}

bool MessageStatistics::isCurrentlyRegular() const
{
    const bool knowsTime = m_streamTime && *m_streamTime != Message::NoTime;
    return knowsTime ? tracker().isRegularAt(*m_streamTime) : tracker().isRegular();
}

QHash<long long, unsigned int> MessageStatistics::getIntervalCountHash() const
{
    return tracker().getCounts();
}

QList<long long> MessageStatistics::getIntervalsSortedOnFrequency(int maxCount) const
{
    const QHash<long long, unsigned int> counts = tracker().getCounts();
    QList<long long> intervals = counts.keys();
    std::sort(intervals.begin(), intervals.end(), MoreFrequent(counts));
    return maxCount < 0 ? intervals : intervals.mid(0, maxCount);
}

unsigned int MessageStatistics::getCountWithUnknownTime() const
{
    return m_countWithoutTime;
}

unsigned int MessageStatistics::getCountWithKnownTimeButUnknownInterval() const
{
    return tracker().getUnknownCount();
}

const QVector<MessageStatistics::Gap>& MessageStatistics::getGaps() const
{
    const QVector<Gap>& stored = getStoredGaps();
    if (m_gapsListed || stored.isEmpty())
        return stored;
    if (m_firstGap.isEmpty())
        m_firstGap.append(stored.first());
    return m_firstGap;
}

const QVector<MessageStatistics::Gap>& MessageStatistics::getStoredGaps() const
{
    return tracker().getGaps();
}

int MessageStatistics::getNumberOfGaps() const
{
    return tracker().getNumberOfGaps();
}

bool MessageStatistics::hasUnstoredGaps() const
{
    return getNumberOfGaps() > getStoredGaps().size();
}

int MessageStatistics::getNumberOfMissingEpochs() const
{
    return tracker().getNumberOfMissingEpochs();
}

const FormatInfo* MessageStatistics::getFormatInfo() const
{
    static const FormatInfo unknown(QLatin1String("Unknown"));
    const FormatInfo* const format = m_info ? m_info->getFormatInfo() : 0;
    return format ? format : &unknown;
}

const MessageInfo* MessageStatistics::getMessageInfo() const
{
    return m_info;
}

QString MessageStatistics::getMessageName() const
{
    return m_name;
}

QString MessageStatistics::getTimeString(unsigned long long time)
{
    const QDateTime text = QDateTime::fromMSecsSinceEpoch(qint64(time / 1000)).toUTC();
    return text.toString(QLatin1String("yyyy-MM-dd HH:mm:ss.zzz"));
}
