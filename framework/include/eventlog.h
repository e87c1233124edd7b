#ifndef CORVEL_EVENTLOG_H
#define CORVEL_EVENTLOG_H

#include "corvelevent.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QObject>

/**
 * The events logged so far, oldest first. Lives on the GUI thread.
 *
 * Entries never change and only clear() removes them. So that a storm of identical events stays readable, log() enters
 * the first one at once and counts those that follow within a window of time; when the window closes, one entry tells
 * their number, and the next window is twice as long, up to ten minutes. A window in which nothing came ends the
 * storm. Windows close when events come and when flush() is called.
 */
class CORVELFRAMEWORK_EXPORT EventLog : public QObject
{
    Q_OBJECT

public:
    /** An event and when it happened. */
    struct CORVELFRAMEWORK_EXPORT Entry
    {
        QDateTime time; ///< invalid when not known
        CorvelEvent event;
    };

    /** Entries that are kept unless setEntryLimit() says otherwise. */
    static const int DefaultEntryLimit = 10000;

    explicit EventLog(QObject* parent = 0);
    virtual ~EventLog();

    QList<EventLog::Entry> getEntries() const;

    /** How many entries there can be. At the limit a last entry says that the log is full; then nothing is entered. */
    void setEntryLimit(int limit);

    /** Enters @p event as it is. @p time may be invalid. */
    void append(const CorvelEvent& event, const QDateTime& time);

    /**
     * Enters @p event, or counts it when the same happened just before.
     *
     * @param time  when it happened; may be invalid
     * @param now   milliseconds on any clock that does not run backwards; always the same clock
     * @param kind  what makes events the same, and stands for them behind their number ("17 x kind"); the message's own
     *              text when empty
     */
    void log(const CorvelEvent& event, const QDateTime& time, qint64 now, const QString& kind = QString());

    /**
     * Enters @p event a little later, and behind the number of those that log() counts as of its @p kind until then:
     * for a cause whose consequences follow it. Without any, it is entered as it is.
     */
    void expect(const CorvelEvent& event, const QDateTime& time, qint64 now, const QString& kind);

    /** Closes the windows that are over at @p now, milliseconds on the clock of log(). For a timer. */
    void flush(qint64 now);

    /** Closes all windows, so that everything counted is entered: at the end of a stream, before saving. */
    void flushAll();

    /** Removes all entries and forgets what is counted. */
    void clear();

    /** Everything as comma-separated values in UTF-8 (RFC 4180) with a line of headings: Time, Type, Message. */
    QByteArray toCsv() const;

Q_SIGNALS:
    /** An entry was appended. */
    void newEntry(EventLog::Entry entry);
    /** All entries were removed. */
    void cleared();

private:
    Q_DISABLE_COPY(EventLog)

    struct Window
    {
        CorvelEvent::Type type;
        QString kind;
        QString cause;  // not entered yet, see expect(); else empty
        QDateTime time; // of the last event
        quint64 total;  // since the storm began
        quint64 count;  // not entered yet
        qint64 end;
        qint64 length;
    };

    int findWindow(CorvelEvent::Type type, const QString& kind) const;
    void openWindow(const CorvelEvent& event, const QString& kind, const QDateTime& time, qint64 now);
    void enterCause(const Window& window);
    void enterCounted(Window* window);

    QList<Entry> m_entries;
    int m_entryLimit;
    QList<Window> m_windows; // few, see log()
    qint64 m_nextEnd;        // the earliest of all windows
};

Q_DECLARE_METATYPE(EventLog::Entry)

#endif
