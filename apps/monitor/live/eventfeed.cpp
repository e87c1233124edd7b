#include "eventfeed.h"

static const int PortionMilliseconds = 50;

EventFeed::EventFeed(const EventLog* log, EventLog* shown, QObject* parent)
    : QObject(parent)
    , m_log(log)
    , m_shown(shown)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(PortionMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &EventFeed::follow);
    connect(log, SIGNAL(newEntry(EventLog::Entry)), this, SLOT(noteEntry()));
    connect(log, SIGNAL(cleared()), this, SLOT(clear()));
}

void EventFeed::setSuspended(bool suspended)
{
    m_suspended = suspended;
    if (!suspended)
        follow();
}

void EventFeed::noteEntry()
{
    if (!m_suspended && !m_timer.isActive())
        m_timer.start();
}

void EventFeed::follow()
{
    if (m_suspended)
        return;
    if (m_cleared) {
        m_cleared = false;
        m_shown->clear();
    }
    const QList<EventLog::Entry> entries = m_log->getEntries();
    for (; m_count < entries.size(); ++m_count)
        m_shown->append(entries.at(m_count).event, entries.at(m_count).time);
}

void EventFeed::clear()
{
    m_count = 0;
    m_cleared = true;
    follow();
}
