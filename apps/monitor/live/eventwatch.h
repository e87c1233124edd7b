#ifndef EVENTWATCH_H
#define EVENTWATCH_H

#include "eventcauses.h"
#include "receptionmonitor.h"

#include <functional>

/** Counts the causes of what a ReceptionMonitor tells. */
class EventWatch : public ReceptionMonitor::Listener
{
public:
    /**
     * @param causes  borrowed
     * @param source  its number there
     * @param isLive  whether it happens now, by the clock of this computer, or is only looked up
     */
    EventWatch(EventCauses* causes, int source, bool isLive)
        : m_causes(causes)
        , m_source(source)
        , m_isLive(isLive)
    {
    }

    /** Who is told of each event, with the row that counts it. */
    void setListener(const std::function<void(const Event&, int row)>& listen) { m_listen = listen; }

    void processEvent(const ReceptionEvent& event) override;
    /** Counts what becomes of the source itself. */
    void add(Severity severity, const QString& text, quint64 count = 1);

private:
    EventCauses* m_causes;
    int m_source;
    bool m_isLive;
    std::function<void(const Event&, int row)> m_listen;
};

#endif
