#include "eventlog.h"
#include "formatinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "minimodel.h"

CorvelEvent::CorvelEvent(const QString& message)
    : m_message(message)
{
}

CorvelEvent::CorvelEvent(const CorvelEvent& other) = default;

CorvelEvent& CorvelEvent::operator=(const CorvelEvent& other) = default;

CorvelEvent::~CorvelEvent() {}

QString CorvelEvent::getMessage() const
{
    return m_message;
}

QList<EventLog::Entry> EventLog::getEntries() const
{
    return m_entries;
}

void MiniModel::log(EventLog* log, const QDateTime& time, const char* message)
{
    const EventLog::Entry entry = {time, CorvelEvent(QLatin1String(message))};
    log->m_entries.append(entry);
    Q_EMIT log->newEntry(entry);
}

void MiniModel::clear(EventLog* log)
{
    log->m_entries.clear();
    Q_EMIT log->cleared();
}

MessageStatistics* MiniModel::addStatistics(MessageStatisticsCoordinator* coordinator, const char* name,
                                            unsigned int count)
{
    MessageStatistics* statistics = new MessageStatistics;
    statistics->m_name = QLatin1String(name);
    statistics->m_count = count;
    const MessageStatistics::Gap gap = {1000, 3, 20};
    statistics->m_gaps.append(gap);
    coordinator->m_all.append(statistics);
    return statistics;
}

unsigned int MessageStatistics::getCount() const
{
    return m_count;
}

unsigned long long MessageStatistics::getLastInterval() const
{
    return 20;
}

bool MessageStatistics::isCurrentlyRegular() const
{
    return true;
}

QHash<long long, unsigned int> MessageStatistics::getIntervalCountHash() const
{
    QHash<long long, unsigned int> counts;
    counts.insert(20, m_count);
    return counts;
}

QList<long long> MessageStatistics::getIntervalsSortedOnFrequency(int) const
{
    return QList<long long>() << 20;
}

unsigned int MessageStatistics::getCountWithUnknownTime() const
{
    return 0;
}

unsigned int MessageStatistics::getCountWithKnownTimeButUnknownInterval() const
{
    return 1;
}

const QVector<MessageStatistics::Gap>& MessageStatistics::getGaps() const
{
    return m_gaps;
}

int MessageStatistics::getNumberOfGaps() const
{
    return static_cast<int>(m_gaps.size());
}

bool MessageStatistics::hasUnstoredGaps() const
{
    return false;
}

int MessageStatistics::getNumberOfMissingEpochs() const
{
    return 3;
}

const FormatInfo* MessageStatistics::getFormatInfo() const
{
    static const FormatInfo format;
    return &format;
}

const MessageInfo* MessageStatistics::getMessageInfo() const
{
    return nullptr;
}

QString MessageStatistics::getMessageName() const
{
    return m_name;
}

QString MessageStatistics::getTimeString(unsigned long long time)
{
    return QString::fromLatin1("at %1").arg(time);
}

QString MessageStatistics::getIntervalString(unsigned long long interval)
{
    return QString::fromLatin1("every %1").arg(interval);
}

QList<MessageStatistics*> MessageStatisticsCoordinator::getAllMessageStatistics() const
{
    return m_all;
}

unsigned int MessageStatisticsCoordinator::getEventCount(CorvelEvent::Type type) const
{
    return type == CorvelEvent::CrcError ? 9 : 0;
}
