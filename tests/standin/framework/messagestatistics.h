#ifndef MESSAGESTATISTICS_H
#define MESSAGESTATISTICS_H

#include <QHash>
#include <QList>
#include <QString>
#include <QVector>

class FormatInfo;
class MessageInfo;

/** Answers what is set, however unlikely. */
class MessageStatistics
{
public:
    struct Gap
    {
        unsigned long long start;
        unsigned int missingEpochs;
        unsigned long long interval;
    };

    MessageStatistics(const FormatInfo* format, const QString& name)
        : formatInfo(format)
        , messageName(name)
    {
    }

    unsigned int getCount() const { return count; }
    unsigned long long getLastInterval() const { return lastInterval; }
    bool isCurrentlyRegular() const { return regular; }
    QHash<long long, unsigned int> getIntervalCountHash() const
    {
        ++hashesAsked;
        return intervalCounts;
    }
    QList<long long> getIntervalsSortedOnFrequency(int maxCount) const
    {
        return maxCount == -1 ? intervals : intervals.mid(0, maxCount);
    }
    unsigned int getCountWithUnknownTime() const { return unknownTime; }
    unsigned int getCountWithKnownTimeButUnknownInterval() const { return unknownInterval; }
    const QVector<MessageStatistics::Gap>& getGaps() const { return gaps; }
    int getNumberOfGaps() const { return numberOfGaps; }
    bool hasUnstoredGaps() const { return unstoredGaps; }
    int getNumberOfMissingEpochs() const { return numberOfMissingEpochs; }
    const FormatInfo* getFormatInfo() const { return formatInfo; }
    const MessageInfo* getMessageInfo() const { return messageInfo; }
    QString getMessageName() const { return messageName; }
    QString getTimeString(unsigned long long time) { return QString::fromLatin1("t%1").arg(time); }
    static QString getIntervalString(unsigned long long interval)
    {
        return QString::fromLatin1("every %1 ms").arg(interval);
    }

    void setInterval(long long interval, unsigned int receptions)
    {
        if (!intervals.contains(interval))
            intervals.append(interval);
        intervalCounts.insert(interval, receptions);
    }
    void addGap(unsigned long long start, unsigned int missingEpochs, unsigned long long interval)
    {
        const Gap gap = {start, missingEpochs, interval};
        gaps.append(gap);
    }

    const FormatInfo* formatInfo;
    const MessageInfo* messageInfo = nullptr;
    QString messageName;
    unsigned int count = 0;
    unsigned long long lastInterval = 0;
    bool regular = false;
    QList<long long> intervals;
    QHash<long long, unsigned int> intervalCounts;
    unsigned int unknownTime = 0;
    unsigned int unknownInterval = 0;
    QVector<Gap> gaps;
    int numberOfGaps = 0;
    int numberOfMissingEpochs = 0;
    bool unstoredGaps = false;
    mutable int hashesAsked = 0; ///< how often the counts of the intervals were fetched
};

#endif
