#include "eventlog.h"

#include <limits>

namespace
{

const qint64 FirstWindow = 1000;
const qint64 LongestWindow = 10 * 60 * 1000;
// Different storms that are told apart at a time. What comes beyond is counted by its type only, so that noise with a
// new text for every event neither fills the log nor slows it down.
const int MaxWindows = 32;

/** Digits in groups of three: "1,314", in the language of the text around them, whatever the locale. */
QString grouped(quint64 number)
{
    const QString separator = EventLog::tr(",", "between groups of three digits");
    QString text = QString::number(number);
    for (int i = int(text.size()) - 3; i > 0; i -= 3)
        text.insert(i, separator);
    return text;
}

QByteArray csvField(const QString& text)
{
    QByteArray field = text.toUtf8();
    if (!field.contains('"') && !field.contains(',') && !field.contains('\n') && !field.contains('\r'))
        return field;
    field.replace('"', "\"\"");
    return '"' + field + '"';
}

QString timeText(const QDateTime& time)
{
    if (!time.isValid())
        return QString();
    return time.toUTC().toString(QLatin1String("yyyy-MM-dd'T'HH:mm:ss.zzz'Z'"));
}

} // namespace

EventLog::EventLog(QObject* parent)
    : QObject(parent)
    , m_entryLimit(DefaultEntryLimit)
    , m_nextEnd(std::numeric_limits<qint64>::max())
{
    qRegisterMetaType<EventLog::Entry>("EventLog::Entry");
}

EventLog::~EventLog() {}

QList<EventLog::Entry> EventLog::getEntries() const
{
    return m_entries;
}

void EventLog::setEntryLimit(int limit)
{
    m_entryLimit = qMax(1, limit);
}

void EventLog::append(const CorvelEvent& event, const QDateTime& time)
{
    if (m_entries.size() >= m_entryLimit)
        return;
    Entry entry;
    entry.time = time;
    entry.event = event;
    if (m_entries.size() == m_entryLimit - 1)
        entry.event =
            CorvelEvent(CorvelEvent::OtherEvent, tr("The log is full with %1 entries: this event and all later ones "
                                                    "are counted, but not entered until the log is cleared")
                                                     .arg(grouped(quint64(m_entryLimit))));
    m_entries.append(entry);
    Q_EMIT newEntry(entry);
}

void EventLog::log(const CorvelEvent& event, const QDateTime& time, qint64 now, const QString& kind)
{
    flush(now);
    QString key = kind.isEmpty() ? event.getMessage() : kind;
    int index = findWindow(event.getType(), key);
    if (index < 0 && m_windows.size() >= MaxWindows) {
        key = tr("%1, various").arg(CorvelEvent::getTypeName(event.getType()));
        index = findWindow(event.getType(), key);
    }
    if (index >= 0) {
        Window& window = m_windows[index];
        ++window.total;
        ++window.count;
        window.time = time;
        return;
    }
    openWindow(event, key, time, now);
    append(event, time);
}

void EventLog::expect(const CorvelEvent& event, const QDateTime& time, qint64 now, const QString& kind)
{
    flush(now);
    if (m_windows.size() >= MaxWindows || findWindow(event.getType(), kind) >= 0) {
        log(event, time, now, kind);
        return;
    }
    openWindow(event, kind, time, now);
    m_windows.last().cause = event.getMessage();
    m_windows.last().total = 0;
}

void EventLog::openWindow(const CorvelEvent& event, const QString& kind, const QDateTime& time, qint64 now)
{
    Window window;
    window.type = event.getType();
    window.kind = kind;
    window.time = time;
    window.total = 1;
    window.count = 0;
    window.length = FirstWindow;
    window.end = now + window.length;
    m_windows.append(window);
    m_nextEnd = qMin(m_nextEnd, window.end);
}

void EventLog::flush(qint64 now)
{
    if (now < m_nextEnd)
        return;
    m_nextEnd = std::numeric_limits<qint64>::max();
    for (int i = 0; i < m_windows.size();) {
        if (now < m_windows.at(i).end) {
            m_nextEnd = qMin(m_nextEnd, m_windows.at(i).end);
            ++i;
        } else if (m_windows.at(i).count == 0) {
            enterCause(m_windows.takeAt(i));
        } else {
            Window& window = m_windows[i];
            window.length = qMin(2 * window.length, LongestWindow);
            window.end = now + window.length;
            m_nextEnd = qMin(m_nextEnd, window.end);
            enterCounted(&window);
            ++i;
        }
    }
}

void EventLog::flushAll()
{
    for (int i = 0; i < m_windows.size(); ++i) {
        if (m_windows.at(i).count > 0)
            enterCounted(&m_windows[i]);
        else
            enterCause(m_windows.at(i));
    }
    m_windows.clear();
    m_nextEnd = std::numeric_limits<qint64>::max();
}

void EventLog::clear()
{
    m_entries.clear();
    m_windows.clear();
    m_nextEnd = std::numeric_limits<qint64>::max();
    Q_EMIT cleared();
}

QByteArray EventLog::toCsv() const
{
    QByteArray csv("Time,Type,Message\r\n");
    Q_FOREACH (const Entry& entry, m_entries) {
        csv += csvField(timeText(entry.time));
        csv += ',';
        csv += CorvelEvent::getEnglishTypeName(entry.event.getType());
        csv += ',';
        csv += csvField(entry.event.getMessage());
        csv += "\r\n";
    }
    return csv;
}

int EventLog::findWindow(CorvelEvent::Type type, const QString& kind) const
{
    for (int i = 0; i < m_windows.size(); ++i) {
        if (m_windows.at(i).type == type && m_windows.at(i).kind == kind)
            return i;
    }
    return -1;
}

void EventLog::enterCause(const Window& window)
{
    if (!window.cause.isEmpty())
        append(CorvelEvent(window.type, window.cause), window.time);
}

void EventLog::enterCounted(Window* window)
{
    const quint64 count = window->count;
    window->count = 0;
    window->cause.clear();
    QString text = tr("%1 x %2").arg(grouped(count), window->kind);
    if (window->total > count)
        text += tr(" (%1 in all)").arg(grouped(window->total));
    append(CorvelEvent(window->type, text), window->time);
}
