// What looking for a field costs in a large tree, while it is typed and then for each message, measured against the
// same messages while nothing is looked for.

#include "findbar.h"
#include "treedesk.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

namespace
{

/** 300 types of 40 fields. */
struct LargeTree : TreeDesk
{
    LargeTree()
    {
        for (int i = 0; i < 300; ++i) {
            infos.emplace_back(new MessageInfo(QStringLiteral("TYPE_%1").arg(i)));
            for (int j = 0; j < 40; ++j)
                infos.back()->addField(new TestFieldInfo(QStringLiteral("field_%1").arg(j)));
        }
        QVector<const MessageInfo*> all;
        for (const auto& info : infos)
            all.append(info.get());
        add(all);
    }
    ~LargeTree() override
    {
        panel.getRows()->setArrangement(TreeRows::ByType);
        tree.clear();
    }

    std::vector<std::unique_ptr<MessageInfo>> infos;
};

void typeAText(benchmark::State& state)
{
    LargeTree desk;
    for (auto _ : state) {
        desk.panel.getFindBar()->find(QStringLiteral("field_17"));
        desk.panel.getFindBar()->close();
    }
}

void receiveOfEachType(benchmark::State& state, const char* text)
{
    LargeTree desk;
    if (*text)
        desk.panel.getFindBar()->find(QLatin1String(text));
    for (auto _ : state)
        for (const auto& info : desk.infos)
            desk.send(new TestMessage(info.get()));
    state.SetItemsProcessed(qint64(state.iterations()) * qint64(desk.infos.size()));
}

BENCHMARK(typeAText)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(receiveOfEachType, nothingIsLookedFor, "")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(receiveOfEachType, aFieldIsLookedFor, "field_17")->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
