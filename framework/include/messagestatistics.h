#ifndef CORVEL_MESSAGESTATISTICS_H
#define CORVEL_MESSAGESTATISTICS_H

#include "corvelframework_export.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVector>

class FormatInfo;
class IntervalTracker;
class MessageInfo;

/**
 * How often, how regularly and with what gaps the messages of one type (and one sender) arrived.
 *
 * Every reception is counted exactly once: getCount() is the sum of all counts of getIntervalCountHash(), of
 * getCountWithUnknownTime() and of getCountWithKnownTimeButUnknownInterval(). What makes a stretch of messages regular
 * and an interval a gap is told in docs/statistics.md.
 *
 * @code
 * MessageStatistics statistics(info, info->getName());
 * statistics.addReception(message->getTime());
 * @endcode
 */
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

    /** Gaps that are stored unless setGapLimit() says otherwise. */
    static const int DefaultGapLimit = 10000;

    /**
     * @param info  the type, which must outlive this object; null when the definitions do not know it
     * @param name  the name to show
     */
    MessageStatistics(const MessageInfo* info, const QString& name);
    ~MessageStatistics();

    /**
     * Counts a message.
     *
     * @param time  when it was sent or received, in microseconds since 1970, or Message::NoTime
     */
    void addReception(qint64 time);

    /** How many gaps are stored; later ones are only counted. Those stored already stay. All statistics of a
     * coordinator have another limit together, see MessageStatisticsCoordinator::setGapLimit(). */
    void setGapLimit(int limit);
    /**
     * Whether getGaps() has all gaps that are stored, which it has unless told. A view makes rows of what it has: of
     * thousands of gaps, they take more than everything else, and are not needed before somebody unfolds them.
     */
    void setGapsListed(bool listed);

    /** Number of messages received. */
    unsigned int getCount() const;
    /** The most recent regular interval in milliseconds; 0 when there was none. */
    unsigned long long getLastInterval() const;
    /**
     * Whether the messages arrive at a regular rate now; only then does getLastInterval() say anything. Statistics of a
     * coordinator stop being regular when nothing comes while the time of their stream goes on.
     */
    bool isCurrentlyRegular() const;
    /** Number of receptions for each interval in milliseconds; 0 stands for the same time as the predecessor's. */
    QHash<long long, unsigned int> getIntervalCountHash() const;
    /** The intervals seen, most frequent first, at most @p maxCount of them; -1 means all. */
    QList<long long> getIntervalsSortedOnFrequency(int maxCount) const;
    /** Receptions without a valid time. */
    unsigned int getCountWithUnknownTime() const;
    /** Receptions with a valid time whose interval could not be told. */
    unsigned int getCountWithKnownTimeButUnknownInterval() const;
    /** The gaps stored, oldest first; only the first one of them while they are not listed, see setGapsListed(). */
    const QVector<MessageStatistics::Gap>& getGaps() const;
    /** The gaps stored, oldest first, listed or not. */
    const QVector<MessageStatistics::Gap>& getStoredGaps() const;
    /** Number of gaps found, stored or not. */
    int getNumberOfGaps() const;
    /** Whether more gaps were found than are stored. */
    bool hasUnstoredGaps() const;
    /** Number of missing epochs of all gaps, stored or not. */
    int getNumberOfMissingEpochs() const;
    /** The format of the message type, or one called "Unknown" for what no format has; never null. */
    const FormatInfo* getFormatInfo() const;
    /** The message type, or null when the definitions do not know it. */
    const MessageInfo* getMessageInfo() const;
    /** The name to show, also when getMessageInfo() is null. */
    QString getMessageName() const;
    /** A time of a gap, in microseconds since 1970, as text: UTC with milliseconds. */
    QString getTimeString(unsigned long long time);
    /** An interval in milliseconds as text: a rate ("20 Hz") up to a second, an interval ("2.5 s") above. */
    static QString getIntervalString(unsigned long long interval);

private:
    Q_DISABLE_COPY(MessageStatistics)
    friend class MessageStatisticsCoordinator;

    /** Takes over everything that @p other counted, which begins anew. */
    void takeOver(MessageStatistics* other);
    void reset();
    const IntervalTracker& tracker() const;
    IntervalTracker* makeTracker();

    const MessageInfo* m_info;
    QString m_name;
    IntervalTracker* m_tracker; // null until a message has a time: most objects of a view that is long gone have none
    unsigned int m_countWithoutTime;
    int m_untimedInARow;
    int* m_spareGaps; // how many may still be stored of those that it shares a limit with; null for none
    bool m_gapsListed;
    mutable QVector<MessageStatistics::Gap> m_firstGap; // what getGaps() has while they are not listed
    const qint64* m_streamTime;                         // of the newest message of any type; null when not known
};

#endif
