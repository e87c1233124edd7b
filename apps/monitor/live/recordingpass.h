#ifndef RECORDINGPASS_H
#define RECORDINGPASS_H

#include "eventmarks.h"
#include "eventwatch.h"
#include "messagestatisticscoordinator.h"
#include "passinput.h"
#include "receptioncounters.h"
#include "receptionmonitor.h"
#include "recordingdensity.h"
#include "sendertexts.h"
#include "streamrelay.h"

#include <QElapsedTimer>
#include <QVector>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

/** What a recording has of a type as one sender sends it. */
struct OverviewRow
{
    const MessageInfo* info = nullptr; ///< null for a type that the definitions do not know
    QString typeName;                  ///< also of an unknown one
    QString sender;                    ///< without the name of the source
    quint64 count = 0;
    quint64 bytes = 0;
    qint64 firstTime;       ///< of those with a time, microseconds since 1970; Message::NoTime when there is none
    qint64 lastTime;        ///< of the one that comes last
    quint64 interval = 0;   ///< the last regular one in milliseconds; 0 for none
    bool isRegular = false; ///< whether it is regular up to the end of what was read
    int gaps = 0;           ///< see MessageStatistics
    int missing = 0;        ///< epochs of these gaps
    qint64 lost = -1;       ///< numbers that the sender skipped, over all it sends; -1 where it does not number
};

/** A message, as it was received. */
struct EarlierMessage
{
    const MessageInfo* info;
    quint32 id; ///< the format's number of the type
    QString typeName;
    QString sender; ///< without the name of the source
    QByteArray data;
    qint64 time;
    qint64 sequence;
};

/** What a pass has found up to some place. */
struct OverviewFigures
{
    int percent = 0;
    quint64 messages = 0;
    RecordingDensity::Curve density;
    RecordingDensity::Curve damage;
    QVector<OverviewRow> rows; ///< as numbered by the pass
};

/**
 * Reads a recording from beginning to end on two threads of its own: one decodes, one counts.
 *
 * Figures are copied for who asks a few times a second; everything else belongs to the threads until isOver(). Then
 * one of them waits for wishes: it knows where each type was last, and reads just there.
 */
class RecordingPass : private StreamSink
{
public:
    /**
     * @param other  the same recording once more, for wishes before the pass is over; without it they wait
     * @param tell   called on a thread of the pass when takeFigures() or takeFound() has something, and at the end
     * @param lock   held while descriptions change that are in use; may be null
     */
    RecordingPass(std::unique_ptr<PassInput> input, std::unique_ptr<PassInput> other, const std::function<void()>& tell,
                  QReadWriteLock* lock);
    /** Cancels, and waits for the threads. */
    ~RecordingPass() override;

    void start();

    /** The newest figures; false when they were taken before. Any thread. */
    bool takeFigures(OverviewFigures* figures);
    /**
     * Wishes for the newest message of each type and sender before @p time; of several wishes, the last one holds.
     *
     * While the pass is under way, those are found at once that are not far before it, and all of them when it is over.
     */
    void findBefore(qint64 time);
    /** What was found, in the order of their times, and for which wish; false when it was taken before. Any thread. */
    bool takeFound(qint64* time, QVector<EarlierMessage>* messages);
    /** Whether the recording was read, so that everything below may be used. Any thread. */
    bool isOver() const { return m_isOver; }

    MessageStatisticsCoordinator* getCoordinator() { return &m_coordinator; }
    /** Of a row; null when there is none. */
    const MessageStatistics* getStatistics(int row) const { return m_coordinator.find(m_monitor.getStream(), row); }
    const EventCauses& getEvents() const { return m_events; }
    const QVector<EventMark>& getMarks() const { return m_marks; }
    const RecordingDensity& getDensity() const { return m_density; }
    /** Why it did not come to the end; empty when it did, or was cancelled. */
    const QString& getError() const { return m_error; }

private:
    Q_DISABLE_COPY(RecordingPass)

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;

    void run();
    bool open();
    void decode();
    void showFigures();
    bool takeWish(qint64* time);
    bool waitForWish(qint64* time);
    bool isWishOld();
    void search(qint64 time);
    bool canLookBack();
    void closeOther();
    void lookBack(qint64 time);
    void handOut(const QHash<int, EarlierMessage>& found, const StreamIdentities& identities, qint64 time);
    void gatherEvents();
    template <typename Sink>
    bool readFrom(PassInput* input, const OpenedStream& stream, quint64 offset, Sink* sink);

    std::function<void()> m_tell;
    std::unique_ptr<PassInput> m_input;
    OpenedStream m_stream;
    std::unique_ptr<PassInput> m_other; // null when it is of no use
    OpenedStream m_otherStream;         // opened with the first wish
    StreamIdentities m_otherIdentities;
    StreamRelay m_relay;
    std::thread m_thread; // opens and decodes
    std::atomic<bool> m_isOver;
    std::atomic<quint64> m_position;
    std::atomic<int> m_rowsMet; // by the thread that counts
    qint64 m_size = -1;
    QString m_error;
    EventCauses m_said; // of the thread that decodes, as what follows
    SenderTexts m_texts;
    EventMarks m_textMarks; // by rows of m_said

    // Of the thread that counts.
    struct Times
    {
        qint64 first;
        qint64 last;
    };
    MessageStatisticsCoordinator m_coordinator;
    EventCauses m_events;
    EventMarks m_faultMarks;
    QVector<EventMark> m_marks; // of both threads, when it was read
    EventWatch m_watch;
    ReceptionMonitor m_monitor;
    RecordingDensity m_density;
    ReceptionCounters m_counters;
    std::vector<Times> m_times; // by row
    qint64 m_time;              // of the newest message that has one
    quint64 m_messages = 0;
    quint64 m_end = 0; // of the newest message
    QElapsedTimer m_sinceFigures;

    std::mutex m_mutex; // for what follows
    std::unique_ptr<OverviewFigures> m_figures;
    std::condition_variable m_wake; // there is a wish, or it is all over
    std::optional<qint64> m_wish;
    std::optional<qint64> m_lookedBack; // the last wish, for which not everything was found
    std::optional<qint64> m_foundFor;
    QVector<EarlierMessage> m_found;
};

#endif
