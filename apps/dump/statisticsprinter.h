#ifndef STATISTICSPRINTER_H
#define STATISTICSPRINTER_H

#include "dumpsink.h"
#include "receptioncounters.h"

/** Counts messages, and prints one JSON object at the end. */
class StatisticsPrinter : public DumpSink
{
public:
    StatisticsPrinter(const QString& inputName, const StreamDecoder* decoder);

    void finish() override;

protected:
    void consume(const ReceivedMessage& message) override { m_counters.countMessage(message); }
    void count(const StreamProblem& problem) override { m_counters.countProblem(problem); }

private:
    std::string typesText() const;
    std::string unknownText() const;
    std::string checksumText() const;

    ReceptionCounters m_counters;
};

#endif
