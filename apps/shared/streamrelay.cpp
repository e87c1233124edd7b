#include "streamrelay.h"

// Enough that handing over costs nothing, and few enough to stay in the processor's cache.
static const std::size_t FullBatch = 1000;
static const std::size_t MostWaiting = 8;

void StreamRelay::processReceived(const ReceivedMessage& message)
{
    m_batch.messages.push_back(message);
    m_batch.messages.back().data = nullptr;
    if (m_batch.messages.size() >= FullBatch)
        handOver(false);
}

void StreamRelay::processProblem(const StreamProblem& problem)
{
    m_batch.problems.emplace_back(m_batch.messages.size(), problem);
    m_batch.problems.back().second.data = nullptr;
    if (m_batch.problems.size() >= FullBatch)
        handOver(false);
}

void StreamRelay::end()
{
    handOver(true);
}

void StreamRelay::handOver(bool isLast)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this] { return m_waiting.size() < MostWaiting; });
    m_waiting.push_back(std::move(m_batch));
    m_batch = Batch();
    if (!m_spare.empty()) {
        m_batch = std::move(m_spare.back());
        m_spare.pop_back();
    }
    m_ended = isLast;
    m_changed.notify_all();
}

void StreamRelay::passTo(StreamSink* sink)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_ended || !m_waiting.empty(); });
        if (m_waiting.empty())
            return;
        Batch batch = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_changed.notify_all();
        lock.unlock();
        pass(batch, sink);
        batch.messages.clear();
        batch.problems.clear();
        lock.lock();
        m_spare.push_back(std::move(batch));
    }
}

void StreamRelay::pass(const Batch& batch, StreamSink* sink)
{
    std::size_t passed = 0;
    for (const std::pair<std::size_t, StreamProblem>& problem : batch.problems) {
        for (; passed < problem.first; ++passed)
            sink->processReceived(batch.messages[passed]);
        sink->processProblem(problem.second);
    }
    for (; passed < batch.messages.size(); ++passed)
        sink->processReceived(batch.messages[passed]);
}
