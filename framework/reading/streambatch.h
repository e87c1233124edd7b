#ifndef STREAMBATCH_H
#define STREAMBATCH_H

#include "streamdecoder.h"
#include "streamsource.h"

#include <cstddef>
#include <memory>
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
        StreamProblem problem; ///< its data is not set
        std::size_t recordsBefore;
        std::size_t place;
        bool hasBytes; ///< whether its bytes lie in the arena
    };

    /** What is known of the input once it is open. */
    struct Facts
    {
        bool recognized; ///< whether it is known what it brings
        bool seekable;
        bool live;
        qint64 size;
        qint64 startTime;
        qint64 endTime;
    };

    static const std::size_t FullBytes = 256 * 1024;
    static const std::size_t FullEntries = 2000;

    bool isEmpty() const
    {
        return records.empty() && problems.empty() && !state && !facts && !soughtTime && !decoder && !handedOut;
    }
    bool isFull() const { return arena.size() >= FullBytes || records.size() + problems.size() >= FullEntries; }

    void append(const ReceivedMessage& message)
    {
        records.push_back(Record{message, arena.size()});
        records.back().message.data = nullptr;
        arena.insert(arena.end(), message.data, message.data + message.size);
    }

    void append(const StreamProblem& problem, const char* bytes)
    {
        problems.push_back(Problem{problem, records.size(), arena.size(), bytes != nullptr});
        if (bytes)
            arena.insert(arena.end(), bytes, bytes + problem.length);
    }

    StreamProblem problemAt(std::size_t index) const
    {
        StreamProblem problem = problems[index].problem;
        if (problems[index].hasBytes)
            problem.data = arena.data() + problems[index].place;
        return problem;
    }

    ReceivedMessage messageAt(std::size_t index) const
    {
        ReceivedMessage message = records[index].message;
        message.data = arena.data() + records[index].place;
        return message;
    }

    /** Leaves only what has to arrive whatever becomes of the stream. */
    void dropContents()
    {
        arena.clear();
        records.clear();
        problems.clear();
        state.reset();
        error.clear();
        soughtTime.reset();
    }

    void clear()
    {
        // A single huge message must not keep its memory for good.
        if (arena.capacity() > 4 * FullBytes)
            std::vector<char>().swap(arena);
        dropContents();
        facts.reset();
        endTime.reset();
        handedOut.reset();
        decoder.reset();
    }

    std::vector<char> arena;
    std::vector<Record> records;
    std::vector<Problem> problems;
    qint64 dropped = -1; ///< datagrams that the system dropped so far, where that is known
    std::optional<Facts> facts;
    std::optional<qint64> endTime;            ///< when the recording now ends, where it goes on
    std::optional<quint64> handedOut;         ///< what lies before is in this batch and earlier ones; to be confirmed
    std::optional<qint64> soughtTime;         ///< what follows in later batches lies at this time
    std::shared_ptr<StreamDecoder> decoder;   ///< what follows in later batches was decoded by this
    std::optional<StreamSource::State> state; ///< a new state, after everything else in the batch
    QString error;                            ///< belongs to a new state Failed
};

#endif
