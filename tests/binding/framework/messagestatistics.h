#ifndef MESSAGESTATISTICS_H
#define MESSAGESTATISTICS_H

#include <QHash>
#include <QList>
#include <QString>
#include <QVector>

class FormatInfo;
class MessageInfo;

class MessageStatistics
{
public:
    struct Gap
    {
        unsigned long long start;
        unsigned int missingEpochs;
        unsigned long long interval;
    };

    unsigned int getCount() const;
    unsigned long long getLastInterval() const;
    bool isCurrentlyRegular() const;
    QHash<long long, unsigned int> getIntervalCountHash() const;
    QList<long long> getIntervalsSortedOnFrequency(int maxCount) const;
    unsigned int getCountWithUnknownTime() const;
    unsigned int getCountWithKnownTimeButUnknownInterval() const;
    const QVector<MessageStatistics::Gap>& getGaps() const;
    int getNumberOfGaps() const;
    bool hasUnstoredGaps() const;
    int getNumberOfMissingEpochs() const;
    const FormatInfo* getFormatInfo() const;
    const MessageInfo* getMessageInfo() const;
    QString getMessageName() const;
    QString getTimeString(unsigned long long time);
    static QString getIntervalString(unsigned long long interval);

private:
    friend class MiniModel;
    MessageStatistics() {}

    QString m_name;
    unsigned int m_count;
    QVector<Gap> m_gaps;
};

#endif
