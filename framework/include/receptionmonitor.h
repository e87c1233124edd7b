#ifndef CORVEL_RECEPTIONMONITOR_H
#define CORVEL_RECEPTIONMONITOR_H

#include "corvelevent.h"
#include "messagestatisticscoordinator.h"
#include "streamidentities.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>

class EventLog;
class MessageSource;
class StreamSource;

/** Something that happened to a stream, told at once and each on its own, for who counts causes and not lines. */
struct ReceptionEvent
{
    CorvelEvent::Type type;
    const StreamProblem* problem; ///< that it is about; null for anything else. Valid for the length of the call.
    QString sender;               ///< whose message is concerned, as its format writes it; may be empty
    QString text;                 ///< in words, without the name of the stream
    QString kind;                 ///< what all events of its cause are, in words; empty where that is the text
    qint64 time; ///< of the messages, microseconds since 1970; Message::NoTime where it is none of them
};

/**
 * Keeps the statistics of one stream and logs what was wrong with it.
 *
 * Follows a source, or is itself the sink of a decoder:
 *
 * @code
 * ReceptionMonitor monitor(coordinator, eventLog);
 * monitor.follow(source, "flight.tlog");
 * connect(timer, SIGNAL(timeout()), &monitor, SLOT(refresh()));
 * source->start();
 * @endcode
 *
 * The source may be any MessageSource, such as one of an application's own messages.
 */
class CORVELFRAMEWORK_EXPORT ReceptionMonitor : public QObject, public StreamSink
{
    Q_OBJECT

public:
    /** Milliseconds since any point of time; never runs backwards. */
    class CORVELFRAMEWORK_EXPORT Clock
    {
    public:
        virtual ~Clock();
        virtual qint64 now() const = 0;
    };

    /** Is told of every event, on the thread that the monitor is used on. */
    class CORVELFRAMEWORK_EXPORT Listener
    {
    public:
        virtual ~Listener();
        virtual void processEvent(const ReceptionEvent& event) = 0;
    };

    /**
     * @param coordinator  counts messages and events; must not be null and must outlive this object
     * @param log          takes the events; may be null; must outlive this object
     */
    explicit ReceptionMonitor(MessageStatisticsCoordinator* coordinator, EventLog* log = nullptr,
                              QObject* parent = nullptr);

    /** Leaves the source alone from now on. The statistics stay with the coordinator. */
    virtual ~ReceptionMonitor();

    /** Replaces the clock that folds events, which is owned from now on; for tests. */
    void setClock(Clock* clock);

    /** Tells @p listener, too, what happens, beside the log or in its place; borrowed, null for nobody. Messages of a
     * definition that cannot be used are events of the same kind as the one that brings it. */
    void setListener(Listener* listener) { m_listener = listener; }

    /**
     * Watches everything that @p source receives, and its state. Before the source is started; another one, such as a
     * connection that takes the place of one that was lost, goes on with the same stream.
     *
     * @param name  what the source is called in the log
     */
    void follow(StreamSource* source, const QString& name);
    /**
     * Counts every message that @p source hands to MessageSource::deliver(), needed or not, or emits itself. At any
     * time; another such source goes on with the same stream.
     *
     * A message without a time counts as of the moment when it comes. Numbers of messages are taken for such that do
     * not begin anew at some limit.
     */
    void follow(MessageSource* source, const QString& name);

    /** Takes what @p decoder finds, where there is no source. Once, instead of follow(). */
    void begin(const StreamDecoder* decoder);

    /** Who sends what after begin(); whoever counts besides looks a message up there and hands the row on. */
    StreamIdentities& getIdentities() { return m_ownIdentities; }
    /** processReceived() where the row is known. */
    void countMessage(const ReceivedMessage& message, int row);

    void processReceived(const ReceivedMessage& message) override
    {
        countMessage(message, message.row >= 0 ? message.row : m_ownIdentities.rowOf(message));
    }
    void processProblem(const StreamProblem& problem) override;

    /** Counts anew from here on, and logs @p reason: what came before belongs to another stretch of the recording.
     * @p kind is what such reasons have in common, for who listens. */
    void startAnew(const QString& reason, const QString& kind = QString());

    /** Goes on with @p decoder, which must outlive its being used, and with the types that rows have now. */
    void changeTypes(const StreamDecoder* decoder);

    /** The stream's number with the coordinator; -1 before follow() or begin(). */
    int getStream() const { return m_stream; }

public Q_SLOTS:
    /**
     * Lets time go on while nothing comes: what was folded is logged in time, and where times are those of arrival,
     * types that fell silent stop being regular. For a timer of about a second or faster.
     */
    void refresh();

    /** Logs everything that was folded; at the end of a stream. follow() does this by itself. */
    void finish();

private Q_SLOTS:
    void processState(int state);
    void processMessage(const Message* message);
    void processEnd();

private:
    Q_DISABLE_COPY(ReceptionMonitor)

    void leaveSource();
    void noteTime(qint64 time);
    void countFirst(const ReceivedMessage& message, int row, quint64 modulus);
    void reportUnknown(const ReceivedMessage& message, int row);
    void reportLeap(qint64 step);
    void report(const ReceptionEvent& event);
    void reportState(const QString& text, const QString& kind, const StreamProblem* problem);
    void tell(const ReceptionEvent& event);
    QDateTime streamTime() const;
    MessageStatisticsCoordinator::Origin originOf(int row) const;
    qint64 now() const;

    MessageStatisticsCoordinator* m_coordinator;
    EventLog* m_log;
    const StreamDecoder* m_decoder;
    const StreamIdentities* m_identities; // of the source, or its own
    StreamIdentities m_ownIdentities;
    QPointer<StreamSource> m_source;
    QString m_name;
    QHash<quint32, QString> m_undecodable; // why messages of these numbers are not known
    int m_stream;
    quint64 m_modulus;
    qint64 m_time; // of the newest message that has one
    Clock* m_clock;
    Listener* m_listener;
    QElapsedTimer m_elapsed; // used when m_clock is null

    // Of a source that is no StreamSource.
    QPointer<MessageSource> m_messageSource;
    QHash<QPair<const MessageInfo*, QString>, int> m_rows; // by type and sender
    QHash<QString, int> m_senders;
    bool m_isReceiving;
    bool m_timesAreArrivals;
};

#endif
