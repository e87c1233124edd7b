#ifndef EVENTLOG_H
#define EVENTLOG_H

#include "corvelevent.h"

#include <QDateTime>
#include <QList>
#include <QObject>

/** The events logged so far, oldest first. Lives on the GUI thread. */
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

    explicit EventLog(QObject* parent = 0);
    virtual ~EventLog();

    QList<EventLog::Entry> getEntries() const;

Q_SIGNALS:
    /** An entry was appended. */
    void newEntry(EventLog::Entry entry);
    /** All entries were removed. */
    void cleared();

private:
    QList<Entry> m_entries;
};

Q_DECLARE_METATYPE(EventLog::Entry)

#endif
