// What a refresh of a shown MessageStatisticsWidget costs, measured against asking for the same numbers and formatting
// them; what a step of one costs that has thousands of rows, measured against a refresh; and what an entry costs in a
// shown EventLogTableWidget, by the number of rows that stand there.
//
// Both are built against the stand-in framework of the tests, which answers at once: next to a framework that takes
// its time, what the widgets themselves do would not be seen.

#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "formatinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"

#include <QApplication>
#include <QHeaderView>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

namespace
{

/** Processor time of this process in milliseconds: other processes do not disturb it. */
double processorTime()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

template <typename Work>
double timeOf(Work work)
{
    const double start = processorTime();
    work();
    return processorTime() - start;
}

class Model
{
public:
    Model(int types, int intervals, int gaps)
        : m_format{QLatin1String("format")}
    {
        for (int i = 0; i < types; ++i) {
            m_owned.push_back(std::make_unique<MessageStatistics>(&m_format, QString::fromLatin1("TYPE_%1").arg(i)));
            MessageStatistics* statistics = m_owned.back().get();
            statistics->count = 1000000u + static_cast<unsigned int>(i);
            statistics->regular = true;
            statistics->lastInterval = 50;
            statistics->unknownTime = 5;
            statistics->unknownInterval = 7;
            for (int j = 0; j < intervals; ++j)
                statistics->setInterval(50 * j, 1000u + static_cast<unsigned int>(intervals - j));
            addGaps(i, gaps);
            coordinator.statistics.append(statistics);
        }
        coordinator.eventCounts.insert(CorvelEvent::CrcError, 1314);
    }

    void addGaps(int type, int count)
    {
        MessageStatistics* statistics = m_owned.at(static_cast<std::size_t>(type)).get();
        for (int i = 0; i < count; ++i)
            statistics->addGap(static_cast<unsigned int>(statistics->gaps.size() * 7919 % 100003), 3, 50);
        statistics->numberOfGaps = static_cast<int>(statistics->gaps.size());
        statistics->numberOfMissingEpochs = 3 * statistics->numberOfGaps;
    }

    /** @return the length of all texts, so that none of them can be left out */
    qsizetype askAndFormat() const
    {
        qsizetype length = 0;
        for (const MessageStatistics* statistics : coordinator.getAllMessageStatistics()) {
            length += QVariant(static_cast<qulonglong>(statistics->getCount())).isValid();
            if (statistics->isCurrentlyRegular())
                length += MessageStatistics::getIntervalString(statistics->getLastInterval()).size();
            length += QString::fromLatin1("%1 (%2 epochs)")
                          .arg(statistics->getNumberOfGaps())
                          .arg(statistics->getNumberOfMissingEpochs())
                          .size();
            length += QString::number(statistics->getCountWithUnknownTime()).size();
            length += QString::number(statistics->getCountWithKnownTimeButUnknownInterval()).size();
            for (const long long interval : statistics->getIntervalsSortedOnFrequency(-1))
                length += QString::number(statistics->getIntervalCountHash().value(interval)).size();
            length += statistics->getGaps().size() + statistics->hasUnstoredGaps();
        }
        return length + QString::number(coordinator.getEventCount(CorvelEvent::CrcError)).size();
    }

    MessageStatisticsCoordinator coordinator;

private:
    FormatInfo m_format;
    std::vector<std::unique_ptr<MessageStatistics>> m_owned;
};

void refresh(int types, int intervals, int gaps, int sortColumn)
{
    Model model(types, intervals, gaps);
    MessageStatisticsWidget tree(&model.coordinator, nullptr);
    tree.sortByColumn(sortColumn, Qt::AscendingOrder);
    tree.resize(600, 800);
    tree.show();
    const double first = timeOf([&] { tree.updateTree(); });
    tree.expandAll();
    QCoreApplication::processEvents();
    qsizetype length = 0;
    double asking = 1e300;
    double unchanged = 1e300;
    double counted = 1e300;
    // In turns, so that both meet the machine in the same state.
    for (int turn = 0; turn < 40; ++turn) {
        asking = std::min(asking, timeOf([&] { length += model.askAndFormat(); }));
        unchanged = std::min(unchanged, timeOf([&] { tree.updateTree(); }));
    }
    for (int turn = 0; turn < 10; ++turn) {
        for (MessageStatistics* statistics : model.coordinator.statistics) {
            statistics->count = statistics->count * 5 % 1000003;
            ++statistics->intervalCounts[50];
        }
        counted = std::min(counted, timeOf([&] { tree.updateTree(); }));
        QCoreApplication::processEvents();
    }
    for (int type = 0; type < types; ++type)
        model.addGaps(type, 1);
    const double gap = timeOf([&] { tree.updateTree(); });
    std::printf("%5d %9d %6d %7d %10.1f %10.3f %12.3f %7.2f %12.3f %10.1f%s\n", types, intervals, gaps, sortColumn,
                first, asking, unchanged, unchanged / asking, counted, gap, length == 0 ? "!" : "");
    std::fflush(stdout);
}

/** Thousands of types that are looked at from above: all at once, and in steps of which nobody notices one. */
void many(int types)
{
    Model model(types, 5, 0);
    MessageStatisticsWidget whole(&model.coordinator, nullptr);
    MessageStatisticsWidget steps(&model.coordinator, nullptr);
    for (MessageStatisticsWidget* tree : {&whole, &steps}) {
        tree->setUniformRowHeights(true);
        tree->resize(600, 800);
        tree->show();
    }
    const auto paint = [] { QCoreApplication::processEvents(); };
    const double first = timeOf([&] {
        whole.updateTree();
        paint();
    });
    const auto count = [&] { return steps.topLevelItemCount() == 2 ? steps.topLevelItem(1)->childCount() : 0; };
    double longest = 0;
    int needed = 0;
    for (; count() < types; ++needed) {
        longest = std::max(longest, timeOf([&] {
                               steps.updateSome();
                               paint();
                           }));
    }
    double all = 1e300;
    double some = 1e300;
    for (int turn = 0; turn < 10; ++turn) {
        for (MessageStatistics* statistics : model.coordinator.statistics)
            ++statistics->count;
        all = std::min(all, timeOf([&] {
                           whole.updateTree();
                           paint();
                       }));
        some = std::min(some, timeOf([&] {
                            steps.updateSome();
                            paint();
                        }));
    }
    std::printf("%7d %10.1f %12.1f %7d %12.2f %12.2f %7.3f\n", types, first, longest, needed, all, some, some / all);
    std::fflush(stdout);
}

void fillLog(EventLog* log, int count)
{
    const QDateTime time(QDate(2024, 5, 6), QTime(7, 8, 9), Qt::UTC);
    for (int i = 0; i < count; ++i) {
        const QString message = QString::fromLatin1("checksum failure, id %1, sender 1:1").arg(i % 256);
        log->entries.append({time.addSecs(log->entries.size()), CorvelEvent(message)});
    }
}

void logTable(int rows)
{
    EventLog log;
    fillLog(&log, rows);
    EventLog empty;
    EventLogTableWidget table(&empty, nullptr);
    table.resize(600, 800);
    table.show();
    QCoreApplication::processEvents();
    const double load = timeOf([&] {
        table.setEventLog(&log);
        QCoreApplication::processEvents();
    });
    const int some = 500;
    const double together = timeOf([&] {
        for (int i = 0; i < some; ++i)
            log.add(QDateTime(), QLatin1String("event"));
        QCoreApplication::processEvents();
    });
    const double alone = timeOf([&] {
        for (int i = 0; i < some; ++i) {
            log.add(QDateTime(), QLatin1String("event"));
            QCoreApplication::processEvents();
        }
    });
    table.scrollToBottom();
    const double atEnd = timeOf([&] {
        for (int i = 0; i < some; ++i) {
            log.add(QDateTime(), QLatin1String("event"));
            table.scrollToBottom();
            QCoreApplication::processEvents();
        }
    });
    const double clear = timeOf([&] {
        log.clear();
        QCoreApplication::processEvents();
    });
    std::printf("%7d %10.1f %14.2f %15.2f %14.2f %15.2f %10.1f\n", rows, load, load * 1e3 / rows, together * 1e3 / some,
                alone * 1e3 / some, atEnd * 1e3 / some, clear);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    std::printf("MessageStatisticsWidget::updateTree(), milliseconds\n");
    std::printf("%5s %9s %6s %7s %10s %10s %12s %7s %12s %10s\n", "types", "intervals", "gaps", "sorted", "first",
                "asking", "unchanged", "ratio", "new counts", "new gaps");
    refresh(100, 20, 0, 0);
    refresh(500, 20, 0, 0);
    refresh(500, 20, 0, 1);
    refresh(500, 20, 20, 0);
    refresh(500, 20, 20, 1);
    refresh(20, 20, 10000, 0);
    std::printf("\nAll rows new or changed, and painted: updateTree(), a step of updateSome(); milliseconds\n");
    std::printf("%7s %10s %12s %7s %12s %12s %7s\n", "types", "first", "longest step", "steps", "all changed", "step",
                "ratio");
    many(1000);
    many(18000);
    std::printf("\nEventLogTableWidget, shown; milliseconds, and microseconds for an entry\n");
    std::printf("%7s %10s %14s %15s %14s %15s %10s\n", "rows", "load", "of it an entry", "500 at once", "each painted",
                "and scrolled to", "clear");
    for (const int rows : {1000, 10000, 100000})
        logTable(rows);
    return 0;
}
