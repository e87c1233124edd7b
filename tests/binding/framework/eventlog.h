#ifndef EVENTLOG_H
#define EVENTLOG_H

#include "corvelevent.h"

#include <QDateTime>
#include <QList>
#include <QObject>

class EventLog : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        QDateTime time;
        CorvelEvent event;
    };

    QList<EventLog::Entry> getEntries() const;

Q_SIGNALS:
    void newEntry(EventLog::Entry entry);
    void cleared();

private:
    friend class MiniModel;
    QList<Entry> m_entries;
};

#endif
