#ifndef RECEPTIONMONITOR_H
#define RECEPTIONMONITOR_H

#include "streamdecoder.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>

class EventLog;
class MessageStatisticsCoordinator;
class StreamSource;

/**
 * Keeps the statistics of one stream and logs what was wrong with it.
 *
 * Follows a StreamSource, or is itself the sink of a decoder:
 *
 * @code
 * ReceptionMonitor monitor(&coordinator, &log);
 * monitor.follow(&source, "flight.tlog");
 * connect(&timer, SIGNAL(timeout()), &monitor, SLOT(refresh()));
 * source.start();
 * @endcode
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

    /**
     * Watches everything that @p source receives, and its state. Before the source is started; another one, such as a
     * connection that takes the place of one that was lost, goes on with the same stream.
     *
     * @param name  what the source is called in the log
     */
    void follow(StreamSource* source, const QString& name);

    /** Takes what @p decoder finds, where there is no source. Once, instead of follow(). */
    void begin(const StreamDecoder* decoder);

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;

    /** What log entries begin with, to tell streams apart; empty for nothing. */
    void setEventPrefix(const QString& prefix) { m_prefix = prefix; }

    /** Counts anew from here on, and logs @p reason: what came before belongs to another stretch of the recording. */
    void startAnew(const QString& reason);

    /**
     * Goes on with the definitions of @p decoder, which must outlive its being used.
     *
     * @param infos  the types by their ids, see MessageStatisticsCoordinator::changeTypes()
     */
    void changeTypes(const StreamDecoder* decoder, const QHash<quint32, const MessageInfo*>& infos);

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

private:
    Q_DISABLE_COPY(ReceptionMonitor)

    void countFirst(const ReceivedMessage& message);
    void reportUnknown(const ReceivedMessage& message);
    void reportLeap(qint64 step);
    void report(int type, const QString& text, const QDateTime& time, const QString& kind = QString());
    QDateTime streamTime() const;
    QString unknownName(quint32 id) const;
    const QString& senderName(quint32 sender);
    qint64 now() const;

    MessageStatisticsCoordinator* m_coordinator;
    EventLog* m_log;
    const StreamDecoder* m_decoder;
    QPointer<StreamSource> m_source;
    QString m_name;
    QString m_prefix;
    int m_stream;
    quint64 m_modulus;
    qint64 m_time; // of the newest message that has one
    QHash<quint32, QString> m_senderNames;
    Clock* m_clock;
    QElapsedTimer m_elapsed; // used when m_clock is null
};

#endif
