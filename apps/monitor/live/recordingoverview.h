#ifndef RECORDINGOVERVIEW_H
#define RECORDINGOVERVIEW_H

#include "messagestatistics.h"
#include "recordingpass.h"

#include <QHash>
#include <QObject>

class Definitions;

/**
 * What there is in the whole of a recording, wherever it is played just now: found by one pass in the background.
 *
 * While the pass is under way, figures grow a few times a second; statistics and events are there when it has ended.
 * It is cancelled with this object. Nothing here waits for it.
 */
class RecordingOverview : public QObject
{
    Q_OBJECT

public:
    /**
     * @param other        the recording once more, for findBefore() before the pass is over; may be null
     * @param definitions  that the stream is opened with; borrowed
     * @param lock         held while descriptions change that are in use; may be null
     */
    RecordingOverview(std::unique_ptr<PassInput> input, std::unique_ptr<PassInput> other, Definitions* definitions,
                      QReadWriteLock* lock = nullptr, QObject* parent = nullptr);
    ~RecordingOverview() override;

    void start() { m_pass.start(); }

    /** Whether the pass is over, and getCoordinator() and getEvents() have something. */
    bool isComplete() const { return m_isComplete; }
    /** How much of the recording was read, in percent. */
    int getPercent() const { return m_isComplete ? 100 : m_figures.percent; }
    /** Why it ended before the recording did; else empty. */
    QString getErrorString() const { return m_isComplete ? m_pass.getError() : QString(); }

    quint64 getMessageCount() const { return m_figures.messages; }
    /** Of all types and senders, each in a row that stays the same while more come. */
    const QVector<OverviewRow>& getRows() const { return m_figures.rows; }
    /** The row of a type that the definitions know, as one sender sends it, who is named as in OverviewRow; or -1. */
    int find(const MessageInfo* info, const QString& sender) const { return m_numbers.value({info, sender}, -1); }

    /** Messages over the time of the recording; empty where it has none. */
    const RecordingDensity::Curve& getDensity() const { return m_figures.density; }
    /** Likewise what was damaged. */
    const RecordingDensity::Curve& getDamage() const { return m_figures.damage; }
    /** Likewise the messages of a row; empty while the pass is under way. */
    RecordingDensity::Curve getDensity(int row) const;

    /** Looks for the newest message of each type and sender before @p time: for what is not far before it at once, and
     * for all of it when the pass is over. */
    void findBefore(qint64 time) { m_pass.findBefore(time); }

    /** The statistics of a row; null while the pass is under way. */
    const MessageStatistics* getStatistics(int row);
    /** Statistics as for a view; null while the pass is under way. */
    MessageStatisticsCoordinator* getCoordinator();
    /** What happened, and what senders said, by cause in the order of time; null while the pass is under way. */
    const EventCauses* getEvents() const { return m_isComplete ? &m_pass.getEvents() : nullptr; }
    /** When that was, by the rows of getEvents() and in the order of time, as EventMarks has it; empty while the pass
     * is under way, and without times. */
    QVector<EventMark> getEventMarks() const { return m_isComplete ? m_pass.getMarks() : QVector<EventMark>(); }

Q_SIGNALS:
    /** There are new figures. */
    void grown();
    /** The pass is over; after the last grown(). */
    void ended();
    /** The newest messages before @p time, which was the last wish when they were looked for, in the order of time. */
    void foundBefore(qint64 time, const QVector<EarlierMessage>& messages);
    /** Annotations of a type that came are wrong, which nobody else is told. */
    void annotationProblem(const QString& text);

private:
    void follow();

    Definitions* m_definitions;
    OverviewFigures m_figures;
    QHash<QPair<const MessageInfo*, QString>, int> m_numbers; // of rows
    bool m_isComplete = false;
    RecordingPass m_pass;
};

#endif
