#ifndef STATISTICSPRINTER_H
#define STATISTICSPRINTER_H

#include "dumpsink.h"
#include "messagestatisticscoordinator.h"
#include "receptioncounters.h"
#include "receptionmonitor.h"
#include "streamidentities.h"

/** Counts messages, intervals, gaps and losses, and prints one JSON object at the end. */
class StatisticsPrinter : public DumpSink
{
public:
    StatisticsPrinter(const QString& inputName, const StreamDecoder* decoder);

    void finish() override;
    void count(const StreamProblem& problem) override;

protected:
    void consume(const ReceivedMessage& message) override;

private:
    std::string typesText() const;
    std::string unknownText() const;
    std::string checksumText() const;
    std::string statisticsText() const;
    std::string sendersText() const;
    std::string eventsText() const;

    ReceptionCounters m_counters;
    MessageStatisticsCoordinator m_coordinator;
    ReceptionMonitor m_monitor;
    StreamIdentities& m_identities; // of m_monitor
};

#endif
