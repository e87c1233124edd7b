// How long the monitor's window takes to show what a fleet sends, and to answer who looks at it, and what memory that
// takes.
//
// bench_fleet [senders] [type|typeAndSender|sender]
//
// Each sender sends 18 types, in a recording that is played as fast as possible. Times are what the window's thread
// worked until it was painted.

#include "findbar.h"
#include "fleetframes.h"
#include "mainwindow.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "sourcemodel.h"
#include "statisticspanel.h"
#include "treefilter.h"
#include "treepanel.h"
#include "treerows.h"
#include "typepanel.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <unistd.h>

namespace
{

double megabytesInUse()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly)
               ? file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1e6
               : 0;
}

/** What this thread worked, which others on the computer do not change. */
double millisecondsWorked()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/** Does something several times, each until it is painted; tells the median and the longest. */
void measure(MainWindow* window, const char* what, int times, const std::function<void(int)>& act)
{
    std::vector<double> milliseconds;
    for (int i = 0; i < times; ++i) {
        const double before = millisecondsWorked();
        act(i);
        QApplication::sendPostedEvents();
        window->repaint();
        QApplication::processEvents();
        milliseconds.push_back(millisecondsWorked() - before);
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("%-28s %8.1f ms, at most %8.1f ms\n", what, milliseconds[milliseconds.size() / 2], milliseconds.back());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    const int senders = argc > 1 ? std::atoi(argv[1]) : 1000;
    const QByteArray rows = argc > 2 ? argv[2] : "typeAndSender";
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("fleet.raw")));
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    quint64 count = 0;
    for (const QByteArray& frame : fleetFrames(senders, 3)) {
        file.write(frame);
        ++count;
    }
    file.close();

    MainWindow window;
    window.resize(1280, 800);
    window.show();
    StreamSource::Playback playback;
    playback.factor = 0;
    window.setPlayback(playback);
    TreePanel* const panel = window.getPanels().find<TreePanel>();
    TypePanel* const types = window.getPanels().find<TypePanel>();
    const auto arrange = [panel](const QByteArray& name) {
        panel->getRows()->setArrangement(name == "type"     ? TreeRows::ByType
                                         : name == "sender" ? TreeRows::BySender
                                                            : TreeRows::ByTypeAndSender);
    };
    arrange(rows);
    QApplication::processEvents();
    const double before = megabytesInUse();
    const double opened = millisecondsWorked();
    if (!window.openAddress(file.fileName()))
        return 1;
    const SourceSession* const session = window.getSources()->getSession(0);
    while (session->getCounters().getMessageCount() < count)
        QApplication::processEvents(QEventLoop::AllEvents, 0);
    std::printf("%d senders, %llu messages, rows by %s: received after %.0f ms\n", senders,
                static_cast<unsigned long long>(count), rows.constData(), millisecondsWorked() - opened);
    measure(&window, "rows and list are made", 1, [&](int) { window.getDesk()->refresh(); });
    for (const PanelSet::Entry& entry : window.getPanels().getEntries()) {
        const QByteArray name = QByteArray("first tick of ") + entry.row.id;
        measure(&window, name.constData(), 1, [&](int) { entry.panel->tick(); });
    }
    std::printf("memory %.0f MB, before %.0f MB\n", megabytesInUse(), before);

    MessageTreeWidget* const tree = panel->getTree();
    QScrollBar* const bar = tree->verticalScrollBar();
    for (int i = 0; i < 30; ++i)
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    measure(&window, "nothing", 20, [](int) {});
    measure(&window, "display tick", 5, [&](int) {
        window.getDesk()->getLatest()->showAgain();
        window.getDesk()->getLatest()->setSuspended(false);
    });
    for (const PanelSet::Entry& entry : window.getPanels().getEntries()) {
        const QByteArray name = QByteArray("tick of ") + entry.row.id;
        measure(&window, name.constData(), 3, [&](int) { entry.panel->tick(); });
    }
    measure(&window, "counts of the list", 8, [&](int) { window.getDesk()->refresh(); });
    measure(&window, "scroll the tree", 20, [&](int i) { bar->setValue(bar->maximum() * i / 19); });
    measure(&window, "unfold a row", 10, [&](int i) { tree->topLevelItem(i)->setExpanded(true); });
    QScrollBar* const list = types->getView()->verticalScrollBar();
    measure(&window, "scroll the list", 20, [&](int i) { list->setValue(list->maximum() * i / 19); });
    for (int column = 0; column < 4; ++column)
        measure(&window, "sort the list", 2,
                [&](int i) { types->getView()->sortByColumn(column, i ? Qt::AscendingOrder : Qt::DescendingOrder); });
    StatisticsPanel* const statistics = window.getPanels().find<StatisticsPanel>();
    window.showPanel(QStringLiteral("statistics"));
    QApplication::processEvents();
    statistics->getStatistics()->updateTree(); // all rows at once, which would come by and by
    for (const char* text : {"1", "17", "17:", "17:1", "17:1 a", ""}) {
        const QByteArray name = QByteArray("leave the statistics of ") + text;
        measure(&window, name.constData(), 1, [&](int) { statistics->getFilter()->setText(QLatin1String(text)); });
    }
    window.showPanel(QStringLiteral("types"));
    QApplication::processEvents();
    for (const char* text : {"roll", "att 17:1", "voltage", "100:1", "*/ATTITUDE/roll", "zzz"}) {
        const QByteArray name = QByteArray("find ") + text;
        measure(&window, name.constData(), 1, [&](int) { panel->getFindBar()->find(QLatin1String(text)); });
        const double found = millisecondsWorked();
        while (panel->getFindBar()->getFilter()->isBusy())
            QApplication::processEvents(QEventLoop::AllEvents, 0);
        std::printf("  %d matches after %.0f ms more; memory %.0f MB\n",
                    panel->getFindBar()->getFilter()->getMatchCount(), millisecondsWorked() - found, megabytesInUse());
    }
    measure(&window, "close find", 1, [&](int) { panel->getFindBar()->close(); });
    for (const char* arrangement : {"type", "typeAndSender", "sender"})
        measure(&window, arrangement, 1, [&](int) { arrange(arrangement); });
    std::printf("memory %.0f MB\n", megabytesInUse());
    return 0;
}
