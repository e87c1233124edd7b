#ifndef CORVEL_MESSAGESTATISTICSCOORDINATOR_H
#define CORVEL_MESSAGESTATISTICSCOORDINATOR_H

#include "corvelevent.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QVector>

class MessageInfo;
class MessageStatistics;
class SequenceCounter;

/**
 * Holds the statistics of all message types received, and counts events by type.
 *
 * Messages belong to streams, and in a stream to rows: a type of a sender has one, and whoever counts numbers them, as
 * he does the senders (StreamIdentities). As long as the known types of a stream come from one sender, its statistics
 * have plain names ("HEARTBEAT"); from the second sender on, all of them carry their sender ("HEARTBEAT (1:1)"). The
 * statistics that exist by then are replaced by other objects with the same contents, because whoever shows them asks
 * for a name once only.
 *
 * An object is only ever given for one row, type and name. It is there for as long as the coordinator, but holds
 * nothing while it is in no use.
 *
 * Also keeps account of the numbers that senders give their messages, for a count of losses that knows nothing of
 * intervals. GUI thread only, or one thread only where there is no GUI.
 */
class CORVELFRAMEWORK_EXPORT MessageStatisticsCoordinator : public QObject
{
    Q_OBJECT

public:
    /** What the numbers of one sender's messages tell. docs/statistics.md says how they are read. */
    struct CORVELFRAMEWORK_EXPORT SenderStatistics
    {
        SenderStatistics();

        int stream;
        int sender;        ///< its number in the stream; -1 for all together, where one numbers what all of them send
        QString name;      ///< as people of the format write it
        bool numbered;     ///< whether the sender's messages have numbers at all, and ones of its own
        quint64 received;  ///< messages, unknown types included
        quint64 lost;      ///< numbers that never came; at least so many messages were lost
        quint64 repeated;  ///< messages with a number that came just before
        quint64 late;      ///< messages that came behind their successors
        quint64 restarts;  ///< how often the sender began anew
        quint64 failed;    ///< messages that came and failed a check; their numbers are among the lost ones
        qint64 lastNumber; ///< of the newest message; -1 before the first
    };

    /** Gaps that are stored of all statistics together unless setGapLimit() says otherwise. */
    static const int DefaultGapLimit = 1000000;

    MessageStatisticsCoordinator();
    /** A view that shows it is left empty. */
    virtual ~MessageStatisticsCoordinator();

    /** Begins a stream, and gives its number for the other operations. */
    int addStream();

    /** Forgets a stream with all its statistics; event counts stay. */
    void removeStream(int stream);

    /** Forgets the messages of a stream and the events that were counted for it: what comes from now on is all. */
    void clearStream(int stream);

    /**
     * What the names of the stream's statistics carry in addition, to tell streams apart: "HEARTBEAT (1:1, north)".
     * Empty for nothing. Statistics whose names change are replaced by other objects with the same contents.
     */
    void setStreamLabel(int stream, const QString& label);

    /** Forgets all messages and events; streams stay. */
    void clear();

    /** Whether statistics that are made from now on list their gaps, see MessageStatistics::setGapsListed(). */
    void setGapsListed(bool listed) { m_gapsListed = listed; }

    /**
     * How many gaps all statistics together store, beside MessageStatistics::setGapLimit() for each: what thousands of
     * types of a bad link miss stays within some memory. Ten of each are stored in any case, the others only counted.
     */
    void setGapLimit(int limit);

    /** The statistics of a row of @p stream, or null when no such message came yet. */
    MessageStatistics* find(int stream, int row) const;

    /** What the messages of a row are, and who sends them. */
    struct CORVELFRAMEWORK_EXPORT Origin
    {
        Origin(const MessageInfo* info, int sender, const QString& senderName, const QString& unknownName = QString());

        const MessageInfo* info; ///< the type, or null for a type that the definitions do not know
        int sender;              ///< its number in the stream, from 0
        QString senderName;      ///< as people of the format write it; empty for nothing
        QString unknownName;     ///< what to call a type that the definitions do not know, such as "Unknown 203"
    };

    /**
     * The statistics of a row of @p stream; made when there are none yet. When its type is another one now, the row
     * goes on with what it counted under that type's name, in another object.
     */
    MessageStatistics* findOrCreate(int stream, int row, const Origin& origin);

    /**
     * Does all that is to be done for a message, at once: adds it to the statistics of its type and sender, accounts
     * for its number, and tells its time to the stream when it has one.
     *
     * @param info     its type
     * @param time     when it was sent or received, in microseconds since 1970, or Message::NoTime
     * @param number   the number, or Message::NoSequence
     * @param modulus  as for countNumber()
     * @return whether there are statistics of that row and type, and the sender is known; else nothing was done, and
     *         findOrCreate() and countNumber() have to come first
     */
    bool countMessage(int stream, int row, const MessageInfo* info, qint64 time, qint64 number, quint64 modulus);

    /**
     * Accounts for the number of a message.
     *
     * @param number   the number, or Message::NoSequence
     * @param modulus  numbers run from 0 to one below it; 0 when the format has none
     */
    void countNumber(int stream, int sender, const QString& senderName, qint64 number, quint64 modulus);

    /** Counts a message that failed a check, unless no good one came from that sender yet: then it may be noise. */
    void countFailure(int stream, int sender);

    /**
     * Tells what time it is in @p stream, in microseconds since 1970, so that types that fell silent stop being
     * regular: the time of the newest message of any type, or the time of day when times are those of arrival.
     */
    void setCurrentTime(int stream, qint64 time);

    /** Counts events; of those counted for a stream, clearStream() takes them back. */
    void countEvent(CorvelEvent::Type type, unsigned int count = 1, int stream = -1);

    /** Every statistics object that exists now, in the order of their first messages. Owned by the coordinator. */
    QList<MessageStatistics*> getAllMessageStatistics() const;

    /** How many events of that type there were. */
    unsigned int getEventCount(CorvelEvent::Type type) const;

    /**
     * Every sender of every stream of which messages came, in the order of their numbers; behind those of a stream that
     * are numbered together, what these numbers tell.
     */
    QList<SenderStatistics> getSenderStatistics() const;

private:
    Q_DISABLE_COPY(MessageStatisticsCoordinator)

    struct Stream;
    struct Row;
    struct Sender;

    MessageStatistics* create(Stream* stream, int number, const Origin& origin);
    void setType(Stream* stream, Row* row, const Origin& origin);
    void useObject(const Stream* stream, Row* row, const MessageInfo* info);
    static SenderStatistics statisticsOf(const Stream* stream, const SequenceCounter& numbers);
    static QString nameOf(const Stream* stream, const Row* row);
    void noteSender(Stream* stream, int sender);
    void rename(const Stream* stream);
    void clearRows(Stream* stream);
    void listAll();

    QVector<Stream*> m_streams;          // by number; null where a stream was removed
    QList<Row*> m_rows;                  // of all streams, in order, without those of which nothing came since
    QList<MessageStatistics*> m_all;     // those of m_rows, as the view asks for them once a row
    QList<MessageStatistics*> m_retired; // of streams that are gone
    QHash<int, unsigned int> m_events;
    bool m_gapsListed;
    int m_gapLimit;
    int m_spareGaps; // of that
};

#endif
