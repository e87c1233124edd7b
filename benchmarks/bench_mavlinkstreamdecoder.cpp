#include "mavlinkcrc.h"
#include "mavlinkdialect.h"
#include "mavlinkencoder.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "receptioncounters.h"
#include "streamidentities.h"

#include <QFile>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>

// Each benchmark also reports how many times as long decoding takes as one pass of the checksum over the same bytes,
// measured in the same run: what no decoder that checks its frames can do without.

namespace
{

struct Stream
{
    QByteArray bytes;
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    std::unique_ptr<MavlinkDialect> dialect;
};

class CountingSink : public StreamSink
{
public:
    explicit CountingSink(const StreamDecoder* decoder) { m_identities.setDecoder(decoder); }
    void processReceived(const ReceivedMessage& message) override
    {
        counters.countMessage(message, m_identities.rowOf(message));
    }
    void processProblem(const StreamProblem& problem) override { counters.countProblem(problem); }

    ReceptionCounters counters;

private:
    StreamIdentities m_identities;
};

const int PieceSize = 65536;

quint64 decode(const Stream& stream)
{
    MavlinkStreamDecoder decoder(stream.dialect.get(), stream.layout);
    CountingSink sink(&decoder);
    for (int i = 0; i < stream.bytes.size(); i += PieceSize)
        decoder.feed(stream.bytes.constData() + i, std::min(PieceSize, int(stream.bytes.size()) - i), Message::NoTime,
                     &sink);
    decoder.finish(&sink);
    return sink.counters.getMessageCount();
}

/** Processor seconds, so that the ratio means something on a busy computer too. */
template <typename Function>
double measure(const Function& function)
{
    const std::clock_t start = std::clock();
    function();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

void run(benchmark::State& state, const Stream& stream)
{
    double least = 1e9;
    double floor = 1e9;
    quint64 messages = 0;
    for (auto _ : state) {
        least = std::min(least, measure([&] { messages = decode(stream); }));
        state.PauseTiming();
        floor = std::min(floor, measure([&] {
                             benchmark::DoNotOptimize(
                                 MavlinkCrc::calculate(stream.bytes.constData(), int(stream.bytes.size())));
                         }));
        state.ResumeTiming();
    }
    state.SetItemsProcessed(qint64(messages) * qint64(state.iterations()));
    state.SetBytesProcessed(qint64(stream.bytes.size()) * qint64(state.iterations()));
    state.counters["messages"] = double(messages);
    state.counters["times_checksum"] = least / floor;
}

/** Frames of all types of the built-in dialect in turn, from a few senders. */
Stream madeUpStream(int version)
{
    Stream stream;
    stream.dialect.reset(MavlinkDialect::loadBuiltIn());
    MavlinkEncoder::FrameHeader header;
    header.version = version;
    for (int round = 0; stream.bytes.size() < 4000000; ++round) {
        header.system = quint8(1 + round % 3);
        for (const MessageInfo* info : stream.dialect->getMessageInfos()) {
            const MavlinkMessageInfo* const type = static_cast<const MavlinkMessageInfo*>(info);
            QByteArray payload(type->getBaseLength(), '\0');
            for (char& byte : payload)
                byte = char(1 + (round + &byte - payload.constData()) * 31 % 251);
            stream.bytes += MavlinkEncoder::toFrame(header, type->getId(), type->getCrcExtra(), payload);
            ++header.sequence;
        }
    }
    return stream;
}

void version1(benchmark::State& state)
{
    run(state, madeUpStream(1));
}
BENCHMARK(version1)->Unit(benchmark::kMillisecond);

void version2(benchmark::State& state)
{
    run(state, madeUpStream(2));
}
BENCHMARK(version2)->Unit(benchmark::kMillisecond);

/** The same with every tenth frame damaged: what searching for the next costs. */
void version2Damaged(benchmark::State& state)
{
    Stream stream = madeUpStream(2);
    for (int i = 100; i < stream.bytes.size(); i += 450)
        stream.bytes[i] = char(stream.bytes.at(i) ^ 0x55);
    run(state, stream);
}
BENCHMARK(version2Damaged)->Unit(benchmark::kMillisecond);

void nothingButMagicBytes(benchmark::State& state)
{
    Stream stream = madeUpStream(2);
    stream.bytes.fill(char(state.range(0)));
    run(state, stream);
}
BENCHMARK(nothingButMagicBytes)->Arg(0xfe)->Arg(0xfd)->Unit(benchmark::kMillisecond);

void recordedFlight(benchmark::State& state)
{
    const QString folder = qEnvironmentVariable("CORVEL_SAMPLES_DIR") + QStringLiteral("/mavlink/");
    QFile file(folder + QStringLiteral("dronekit-flight.tlog"));
    QStringList errors;
    Stream stream;
    stream.layout = MavlinkStreamDecoder::TlogLayout;
    if (!file.open(QIODevice::ReadOnly)) {
        state.SkipWithError("no recording; CORVEL_SAMPLES_DIR names the folder of the samples");
        return;
    }
    stream.bytes = file.readAll();
    stream.dialect.reset(MavlinkDialect::load(folder + QStringLiteral("dialects/ardupilotmega.xml"), &errors));
    if (!stream.dialect) {
        state.SkipWithError("the dialect of the recording can't be read");
        return;
    }
    run(state, stream);
}
BENCHMARK(recordedFlight)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
