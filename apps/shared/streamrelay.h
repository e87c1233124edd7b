#ifndef STREAMRELAY_H
#define STREAMRELAY_H

#include "streamdecoder.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <utility>
#include <vector>

/**
 * Passes what a decoder finds on one thread to a sink on another, in the same order.
 *
 * For sinks that count: the bytes of messages and problems are not passed on. The decoder is at most a few thousand
 * messages ahead.
 */
class StreamRelay : public StreamSink
{
public:
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;
    /** Ends the stream, on the decoder's thread; nothing may be processed after it. */
    void end();

    /** Hands everything to @p sink as it comes, on the thread that calls it, and returns behind the end. */
    void passTo(StreamSink* sink);

private:
    struct Batch
    {
        std::vector<ReceivedMessage> messages;
        std::vector<std::pair<std::size_t, StreamProblem>> problems; // with how many messages came before
    };

    static void pass(const Batch& batch, StreamSink* sink);
    void handOver(bool isLast);

    Batch m_batch; // that is being filled

    std::mutex m_mutex; // for what follows
    std::condition_variable m_changed;
    std::deque<Batch> m_waiting;
    std::vector<Batch> m_spare;
    bool m_ended = false;
};

#endif
