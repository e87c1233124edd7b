#ifndef EVENTLOG_H
#define EVENTLOG_H

#include "corvelevent.h"

#include <QDateTime>
#include <QList>
#include <QObject>

/** Neither folds events nor has a limit. */
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
        const Entry entry = {time, CorvelEvent(message)};
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
