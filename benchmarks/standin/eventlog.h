#ifndef EVENTLOG_H
#define EVENTLOG_H

#include "corvelevent.h"

#include <QDateTime>
#include <QList>
#include <QObject>

/** Stands in for a framework's log: no folding of events, no limit. */
class EventLog : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        QDateTime time;
        CorvelEvent event;
    };

    QList<EventLog::Entry> getEntries() const { return entries; }

    void add(const QDateTime& time, const QString& message)
    {
        Entry entry;
        entry.time = time;
        entry.event.message = message;
        entries.append(entry);
        Q_EMIT newEntry(entry);
    }
    void clear()
    {
        entries.clear();
        Q_EMIT cleared();
    }

    QList<EventLog::Entry> entries;

Q_SIGNALS:
    void newEntry(EventLog::Entry entry);
    void cleared();
};

#endif
