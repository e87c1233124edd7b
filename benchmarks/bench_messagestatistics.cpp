#include "formatinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"

#include <QHash>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <ctime>
#include <memory>
#include <new>
#include <random>
#include <vector>

// Each benchmark also reports how many times as long a reception takes as counting it in a QHash, measured in the same
// run, and how many allocations it makes in the steady state; for jumps, how many objects each leaves.

namespace
{

quint64 allocations = 0;
qint64 alive = 0; // of them

} // namespace

void* operator new(std::size_t size)
{
    ++allocations;
    ++alive;
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept
{
    alive -= memory ? 1 : 0;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}

namespace
{

const int Types = 64;
const int Rounds = 4096;
const int FloorRounds = 16 * Rounds;

/** What the times of a type do. */
enum Course
{
    Steady,
    Jittery,
    Lossy,
    Irregular
};

std::vector<qint64> makeIntervals(Course course)
{
    std::mt19937 random(1);
    std::vector<qint64> intervals(Rounds, 50000);
    for (qint64& interval : intervals) {
        if (course == Jittery)
            interval += qint64(random() % 20000) - 10000;
        else if (course == Lossy)
            interval *= random() % 10 ? 1 : 3;
        else if (course == Irregular)
            interval = 1 + qint64(random() % 1000000);
    }
    return intervals;
}

// Of this process, so that others on the machine don't count.
double nanosecondsSince(std::clock_t start)
{
    return double(std::clock() - start) * 1e9 / CLOCKS_PER_SEC;
}

double floorNanoseconds()
{
    QHash<quint64, unsigned int> counts;
    const std::clock_t start = std::clock();
    for (int round = 0; round < FloorRounds; ++round)
        for (quint64 type = 0; type < Types; ++type)
            ++counts[type << 32 | 257];
    benchmark::DoNotOptimize(counts);
    return nanosecondsSince(start) / (double(FloorRounds) * Types);
}

void receptions(benchmark::State& state)
{
    const std::vector<qint64> intervals = makeIntervals(static_cast<Course>(state.range(0)));
    FormatInfo format(QStringLiteral("Format"));
    std::vector<const MessageInfo*> infos;
    for (int i = 0; i < Types; ++i) {
        MessageInfo* const info = new MessageInfo(QStringLiteral("TYPE_%1").arg(i));
        format.addMessageInfo(info);
        infos.push_back(info);
    }
    MessageStatisticsCoordinator coordinator;
    const int stream = coordinator.addStream();
    const QString sender = QStringLiteral("1:1");
    qint64 time = 0;
    qint64 number = 0;
    const auto receive = [&] {
        for (const qint64 interval : intervals) {
            time += interval;
            for (quint32 type = 0; type < Types; ++type) {
                ++number;
                const int row = int(type);
                if (coordinator.countMessage(stream, row, infos[type], time + type, number % 256, 256))
                    continue;
                coordinator.findOrCreate(stream, row, {infos[type], 0, sender})->addReception(time + type);
                coordinator.countNumber(stream, 0, sender, number % 256, 256);
            }
        }
    };
    for (int i = 0; i < 30; ++i) // until no more gaps are stored
        receive();

    const quint64 before = allocations;
    const std::clock_t start = std::clock();
    for (auto _ : state)
        receive();
    const double messages = double(state.iterations()) * Rounds * Types;
    const double nanoseconds = nanosecondsSince(start) / messages;
    state.SetItemsProcessed(state.iterations() * Rounds * Types);
    state.counters["ns"] = nanoseconds;
    state.counters["times_floor"] = nanoseconds / floorNanoseconds();
    state.counters["allocations"] = double(allocations - before) / messages;
}

/** Jumps in a recording of some hundred rows, and what each leaves behind. */
void jumps(benchmark::State& state)
{
    const int rows = 200;
    FormatInfo format(QStringLiteral("Format"));
    MessageInfo* const info = new MessageInfo(QStringLiteral("TYPE"));
    format.addMessageInfo(info);
    MessageStatisticsCoordinator coordinator;
    const int stream = coordinator.addStream();
    const auto jump = [&] {
        coordinator.clearStream(stream);
        for (int row = 0; row < rows; ++row) {
            const QString sender = QString::number(row);
            MessageStatistics* const statistics = coordinator.findOrCreate(stream, row, {info, row, sender});
            for (qint64 i = 0; i < 30; ++i)
                statistics->addReception(i * 100000 + (i > 20 ? 1000000 : 0));
            coordinator.countNumber(stream, row, sender, 0, 256);
        }
    };
    jump();
    jump();
    const qint64 before = alive;
    for (auto _ : state)
        jump();
    state.counters["left"] = double(alive - before) / double(state.iterations());
}

} // namespace

BENCHMARK(jumps)->Iterations(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(receptions)
    ->ArgName("course")
    ->Arg(Steady)
    ->Arg(Jittery)
    ->Arg(Lossy)
    ->Arg(Irregular)
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
