#ifndef MESSAGESTATISTICS_H
#define MESSAGESTATISTICS_H

#include "corvelframework_export.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVector>

class FormatInfo;
class MessageInfo;

/** How often, how regularly and with what gaps the messages of one type (and one sender) arrived. */
class CORVELFRAMEWORK_EXPORT MessageStatistics
{
public:
    /** Expected messages that did not come. */
    struct CORVELFRAMEWORK_EXPORT Gap
    {
        unsigned long long start;    ///< when the gap began, in the time base of getTimeString()
        unsigned int missingEpochs;  ///< how many messages were expected and did not come
        unsigned long long interval; ///< the regular interval of that stretch of data, in milliseconds
    };

    /** Number of messages received. */
    unsigned int getCount() const;
    /** The most recent regular interval in milliseconds; 0 when there was none. */
    unsigned long long getLastInterval() const;
    /** Whether the messages arrive at a regular rate now; only then does getLastInterval() say anything. */
    bool isCurrentlyRegular() const;
    /** Number of receptions for each interval in milliseconds; 0 stands for the same time as the predecessor's. */
    QHash<long long, unsigned int> getIntervalCountHash() const;
    /** The intervals seen, most frequent first, at most @p maxCount of them; -1 means all. */
    QList<long long> getIntervalsSortedOnFrequency(int maxCount) const;
    /** Receptions without a valid time. */
    unsigned int getCountWithUnknownTime() const;
    /** Receptions with a valid time whose interval could not be told. */
    unsigned int getCountWithKnownTimeButUnknownInterval() const;
    /** The gaps stored, oldest first. */
    const QVector<MessageStatistics::Gap>& getGaps() const;
    /** Number of gaps found, stored or not. */
    int getNumberOfGaps() const;
    /** Whether more gaps were found than are stored. */
    bool hasUnstoredGaps() const;
    /** Number of missing epochs of all gaps, stored or not. */
    int getNumberOfMissingEpochs() const;
    /** The format of the message type; never null. */
    const FormatInfo* getFormatInfo() const;
    /** The message type, or null when the definitions do not know it. */
    const MessageInfo* getMessageInfo() const;
    /** The name to show, also when getMessageInfo() is null. */
    QString getMessageName() const;
    /** A time of a gap as text: UTC with milliseconds. */
    QString getTimeString(unsigned long long time);
    /** An interval in milliseconds as text: a rate ("20 Hz") up to a second, an interval ("2.5 s") above. */
    static QString getIntervalString(unsigned long long interval);
};

#endif
