#ifndef EVENTFEED_H
#define EVENTFEED_H

#include "eventlog.h"

#include <QTimer>

/** Hands the entries of a log on to another one, which a view follows: in portions, and not while it is suspended. */
class EventFeed : public QObject
{
    Q_OBJECT

public:
    /** @param log  borrowed, as is @p shown */
    EventFeed(const EventLog* log, EventLog* shown, QObject* parent = nullptr);

    /** Leaves the view as it is, or brings it up to date. */
    void setSuspended(bool suspended);

private Q_SLOTS:
    void noteEntry();
    void follow();
    void clear();

private:
    const EventLog* m_log;
    EventLog* m_shown;
    QTimer m_timer;
    int m_count = 0; // of entries handed on
    bool m_suspended = false;
    bool m_cleared = false; // while suspended
};

#endif
