#include "definitions.h"
#include "mcapfixtures.h"
#include "mcapindex.h"
#include "mcaprecord.h"
#include "mcapstreamdecoder.h"
#include "message.h"
#include "messageinfo.h"
#include "messagestatisticscoordinator.h"
#include "receptioncounters.h"
#include "receptionmonitor.h"
#include "streamrelay.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <thread>

// Reading a recording as corvel-dump --stats does: finding, checking and counting messages and keeping the statistics.
// Reported beside it is how many times as long that takes as decompressing the same chunks and walking their records
// without decoding them, measured in the same run, for three walks that look at more and more: "records", the "heads"
// of the messages, without which nobody can tell channels and times, and "checked", which verifies the checksums as
// well. "times" is the processor's work on one thread, "wait" the time by the clock with the two threads that
// corvel-dump has. "wait_checked" is what the promise of 1.3 times for compressed recordings is held against: whoever
// tells statistics of a recording has to tell what of it is damaged.

namespace
{

using namespace Mcap;

const int PieceSize = 65536;

/** Counts like corvel-dump. */
class Statistics : public StreamSink
{
public:
    explicit Statistics(const StreamDecoder* decoder)
        : m_decoder(decoder)
        , m_monitor(&m_coordinator)
    {
        m_monitor.begin(decoder);
    }

    void processReceived(const ReceivedMessage& message) override
    {
        if (message.info && !message.info->getFormatInfo())
            m_decoder->publishTypes(&m_faults);
        const int row = m_monitor.getIdentities().rowOf(message);
        counters.countMessage(message, row);
        m_monitor.countMessage(message, row);
    }
    void processProblem(const StreamProblem& problem) override
    {
        counters.countProblem(problem);
        m_monitor.processProblem(problem);
    }

    ReceptionCounters counters;

private:
    const StreamDecoder* m_decoder;
    QStringList m_faults;
    MessageStatisticsCoordinator m_coordinator;
    ReceptionMonitor m_monitor;
};

void feed(const QByteArray& bytes, McapStreamDecoder* decoder, StreamSink* sink)
{
    for (int i = 0; i < bytes.size(); i += PieceSize)
        decoder->feed(bytes.constData() + i, std::min(PieceSize, int(bytes.size()) - i), Message::NoTime, sink);
    decoder->finish(sink);
}

quint64 decode(const QByteArray& bytes, Definitions* definitions, const McapIndex* index)
{
    McapStreamDecoder decoder(definitions);
    decoder.setIndex(index);
    Statistics sink(&decoder);
    feed(bytes, &decoder, &sink);
    return sink.counters.getMessageCount();
}

/** The same on two threads, as corvel-dump does it. */
quint64 decodeAside(const QByteArray& bytes, Definitions* definitions, const McapIndex* index)
{
    McapStreamDecoder decoder(definitions);
    decoder.setIndex(index);
    Statistics sink(&decoder);
    StreamRelay relay;
    std::thread thread([&] {
        feed(bytes, &decoder, &relay);
        relay.end();
    });
    relay.passTo(&sink);
    thread.join();
    return sink.counters.getMessageCount();
}

/** How much a walk looks at. */
enum Walk
{
    RecordHeads,  ///< opcodes and lengths, which do not tell one message from another
    MessageHeads, ///< channels, numbers and times as well
    Checksums     ///< all of this, and the checksums of the chunks
};

/** What a walk saw. */
struct Seen
{
    quint64 messages = 0;
    quint64 heads = 0; // so that no head can be left unread
};

/** Steps over a record, which begins with @p head. */
void pass(const RecordHead& head, const char* body, Walk depth, Seen* seen)
{
    if (head.opcode != MessageRecord)
        return;
    ++seen->messages;
    if (depth == RecordHeads || !body)
        return;
    const MessageHead message(body);
    seen->heads += message.channel + message.sequence + message.time + qFromLittleEndian<quint64>(body + 14);
}

/** Finds the messages with no more than it takes. */
Seen walk(const QByteArray& bytes, Walk depth)
{
    Seen seen;
    Decompressor decompressor;
    QByteArray error;
    std::unique_ptr<char[]> buffer;
    quint64 capacity = 0;
    Cursor file(bytes.constData() + MagicSize, quint64(bytes.size()) - MagicSize);
    while (file.rest() > RecordHeadSize) {
        const RecordHead head(file.skip(RecordHeadSize));
        const char* const body = file.skip(head.length);
        if (head.opcode == FooterRecord)
            break;
        pass(head, body, depth, &seen);
        ChunkHead chunk;
        if (head.opcode != ChunkRecord || !chunk.read(Cursor(body, head.length), head.length))
            continue;
        if (chunk.uncompressedSize > capacity) {
            capacity = chunk.uncompressedSize;
            buffer.reset(new char[capacity]);
        }
        quint64 size = 0;
        decompressor.run(chunk.compression, body + chunk.size(), chunk.recordsSize, buffer.get(), capacity, &size,
                         &error);
        if (depth == Checksums && chunk.crc != 0 && addCrc(0, buffer.get(), size) != chunk.crc)
            break;
        Cursor records(buffer.get(), size);
        while (records.rest() > 0) {
            const RecordHead record(records.skip(RecordHeadSize));
            pass(record, records.skip(record.length), depth, &seen);
        }
    }
    return seen;
}

/** Processor seconds, so that the ratio means something on a busy computer too. */
template <typename Function>
double measure(const Function& function)
{
    const std::clock_t start = std::clock();
    function();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

/** Seconds by the clock: what somebody waits, who has a processor for each thread. */
template <typename Function>
double measureWait(const Function& function)
{
    QElapsedTimer timer;
    timer.start();
    function();
    return double(timer.nsecsElapsed()) / 1e9;
}

void run(benchmark::State& state, const QByteArray& bytes)
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("recording.mcap")));
    QString error;
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) {
        state.SkipWithError("the recording cannot be written");
        return;
    }
    const std::unique_ptr<McapIndex> index(McapIndex::load(file.fileName(), &error));
    Definitions definitions;
    double least = 1e9;
    double walked[Checksums + 1] = {1e9, 1e9, 1e9};
    double leastWait = 1e9;
    double waited[Checksums + 1] = {1e9, 1e9, 1e9};
    quint64 messages = 0;
    for (auto _ : state) {
        least = std::min(least, measure([&] { messages = decode(bytes, &definitions, index.get()); }));
        state.PauseTiming();
        leastWait = std::min(leastWait, measureWait([&] { decodeAside(bytes, &definitions, index.get()); }));
        for (int depth = RecordHeads; depth <= Checksums; ++depth) {
            const auto walkOnce = [&] { benchmark::DoNotOptimize(walk(bytes, static_cast<Walk>(depth))); };
            waited[depth] = std::min(waited[depth],
                                     measureWait([&] { walked[depth] = std::min(walked[depth], measure(walkOnce)); }));
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(qint64(messages) * qint64(state.iterations()));
    state.SetBytesProcessed(qint64(bytes.size()) * qint64(state.iterations()));
    state.counters["messages"] = double(messages);
    state.counters["ns"] = least * 1e9 / double(messages);
    state.counters["times_records"] = least / walked[RecordHeads];
    state.counters["times_heads"] = least / walked[MessageHeads];
    state.counters["times_checked"] = least / walked[Checksums];
    state.counters["wait_heads"] = leastWait / waited[MessageHeads];
    state.counters["wait_checked"] = leastWait / waited[Checksums];
}

/** Two minutes of 20 topics, of messages that compress about as numbers of sensors do. */
void statistics(benchmark::State& state)
{
    McapFixtures::Recording recording(
        McapFixtures::settings(static_cast<McapWriter::Compression>(state.range(0)), 1 << 20));
    QVector<quint16> channels;
    for (int i = 0; i < 20; ++i)
        channels.append(recording.addPoints("/topic/" + QByteArray::number(i)));
    quint32 random = 1;
    const int payload = int(state.range(1));
    for (int i = 0; i < 60000000 / (payload + 31) / 2; ++i) {
        QByteArray message = McapFixtures::point(i);
        while (message.size() < payload) {
            random = random * 1664525 + 1013904223;
            const QByteArray noise = McapFixtures::little(random);
            message += McapFixtures::part(15, QByteArray(12, char(i)) + noise);
        }
        recording.writer.writeMessage(channels.at(i % 20), quint32(i / 20 + 1), quint64(i) * McapFixtures::Millisecond,
                                      message);
    }
    run(state, recording.finished());
}

} // namespace

BENCHMARK(statistics)
    ->ArgNames({"compression", "payload"})
    ->ArgsProduct({{McapWriter::NoCompression, McapWriter::Lz4, McapWriter::Zstd}, {200, 2000}})
    ->Unit(benchmark::kMillisecond);

// The sample recordings that are named on the command line.
int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    for (int i = 1; i < argc; ++i) {
        const QString path = QString::fromLocal8Bit(argv[i]);
        benchmark::RegisterBenchmark(argv[i], [path](benchmark::State& state) {
            QFile file(path);
            if (file.open(QIODevice::ReadOnly))
                run(state, file.readAll());
            else
                state.SkipWithError("the recording cannot be read");
        })->Unit(benchmark::kMillisecond);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
