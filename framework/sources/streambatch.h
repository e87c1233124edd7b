#ifndef STREAMBATCH_H
#define STREAMBATCH_H

#include "streamdecoder.h"
#include "streamsource.h"

#include <cstddef>
#include <optional>
#include <vector>

/** What a reader thread found in a few milliseconds, on its way to the GUI thread. Reused, so that it seldom allocates.
 */
struct StreamBatch
{
    /** A ReceivedMessage whose bytes lie in the arena. */
    struct Record
    {
        ReceivedMessage message; ///< its data is not set
        std::size_t place;       ///< where in the arena its bytes begin
    };

    /** A problem, and how many messages of the batch came before it. */
    struct Problem
    {
        StreamProblem problem;
        std::size_t recordsBefore;
    };

    static const std::size_t FullBytes = 256 * 1024;
    static const std::size_t FullEntries = 2000;

    bool isEmpty() const { return records.empty() && problems.empty() && !state; }
    bool isFull() const { return arena.size() >= FullBytes || records.size() + problems.size() >= FullEntries; }

    void append(const ReceivedMessage& message)
    {
        records.push_back(Record{message, arena.size()});
        records.back().message.data = nullptr;
        arena.insert(arena.end(), message.data, message.data + message.size);
    }

    ReceivedMessage messageAt(std::size_t index) const
    {
        ReceivedMessage message = records[index].message;
        message.data = arena.data() + records[index].place;
        return message;
    }

    void clear()
    {
        // A single huge message must not keep its memory for good.
        if (arena.capacity() > 4 * FullBytes)
            std::vector<char>().swap(arena);
        arena.clear();
        records.clear();
        problems.clear();
        state.reset();
        error.clear();
    }

    std::vector<char> arena;
    std::vector<Record> records;
    std::vector<Problem> problems;
    std::optional<StreamSource::State> state; ///< a new state, after everything else in the batch
    QString error;                            ///< belongs to a new state Failed
};

#endif
