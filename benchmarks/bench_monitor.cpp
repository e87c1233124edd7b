// How soon the monitor's window answers while messages arrive at a high rate, whether any are missing from the counts,
// and what memory it takes.
//
// bench_monitor [udp|file|full] [messages a second] [seconds] [senders] [type|typeAndSender|sender] [panel]
//
// "udp" sends what corvel-simulate sends to the window over UDP, "file" plays a recording at that rate, and "full"
// plays one as fast as possible. A thread posts an event to the window's thread every 5 ms and notes how long each
// waits. With
// several senders each sends 18 types, in turn, and the tree has the rows that are named. "statistics" or "events", for
// instance, is shown in front of the panels that share its place.

#include "fleetframes.h"
#include "latestmessagesource.h"
#include "mainwindow.h"
#include "simulation.h"
#include "sourcemodel.h"
#include "treepanel.h"
#include "treerows.h"
#include "windowprobe.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace
{

const quint16 Port = 24660;

QByteArray frames(int count, int senders, std::vector<int>* sizes)
{
    if (senders > 1) {
        QByteArray bytes;
        for (const QByteArray& frame : fleetFrames(senders, 128)) { // after which all numbers of messages begin anew
            bytes += frame;
            sizes->push_back(int(frame.size()));
        }
        return bytes;
    }
    Simulation simulation{Simulation::Settings()};
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        const QByteArray frame = simulation.takeNext().bytes;
        bytes += frame;
        sizes->push_back(int(frame.size()));
    }
    return bytes;
}

/** Sends frames in datagrams of one each, in bursts of a millisecond; gives their number. */
quint64 sendAll(int rate, int seconds, int senders)
{
    std::vector<int> sizes;
    const QByteArray bytes = frames(20000, senders, &sizes);
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    sockaddr_in address;
    std::memset(&address, 0, sizeof address);
    address.sin_family = AF_INET;
    address.sin_port = htons(Port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        return 0;
    const std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    quint64 sent = 0;
    std::size_t next = 0;
    const char* place = bytes.constData();
    for (;;) {
        const double passed = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        if (passed >= seconds)
            break;
        // A sender that falls behind does not make up for it in one burst.
        const quint64 due = std::min(quint64(passed * rate), sent + quint64(rate) / 200);
        for (; sent < due; ++sent) {
            if (next == sizes.size()) {
                next = 0;
                place = bytes.constData();
            }
            if (send(socket, place, std::size_t(sizes[next]), 0) < 0)
                std::fprintf(stderr, "bench_monitor: send: %s\n", std::strerror(errno));
            place += sizes[next++];
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    close(socket);
    return sent;
}

} // namespace

int main(int argc, char** argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    const QByteArray mode = argc > 1 ? argv[1] : "udp";
    const int rate = argc > 2 ? std::atoi(argv[2]) : 100000;
    const int seconds = argc > 3 ? std::atoi(argv[3]) : 10;

    const int senders = argc > 4 ? std::atoi(argv[4]) : 1;
    const QByteArray rows = argc > 5 ? argv[5] : "typeAndSender";

    QTemporaryDir folder;
    MainWindow window;
    window.getPanels().find<TreePanel>()->getRows()->setArrangement(rows == "type"     ? TreeRows::ByType
                                                                    : rows == "sender" ? TreeRows::BySender
                                                                                       : TreeRows::ByTypeAndSender);
    window.show();
    window.showPanel(QString::fromLocal8Bit(argc > 6 ? argv[6] : "types"));
    StreamSource::Playback playback;
    playback.messagesPerSecond = mode == "file" ? rate : 0;
    window.setPlayback(playback);
    quint64 sent = quint64(rate) * quint64(seconds);
    QString address = QStringLiteral("udp:127.0.0.1:%1").arg(Port);
    if (mode != "udp") {
        address = folder.filePath(QStringLiteral("bench.raw"));
        std::vector<int> sizes;
        const QByteArray bytes = frames(20000, senders, &sizes);
        QFile file(address);
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        sent = sent / sizes.size() * sizes.size();
        for (quint64 written = 0; written < sent; written += sizes.size())
            file.write(bytes);
    }

    if (!window.openAddress(address))
        return 1;
    const SourceSession* const session = window.getSources()->getSession(0);
    while (session->getState() == SourceSession::Opening)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    WindowProbe probe;
    probe.start();
    std::atomic<bool> isSent{mode != "udp"};
    std::thread sender;
    if (mode == "udp") {
        sender = std::thread([&]() {
            sent = sendAll(rate, seconds, senders);
            isSent = true;
        });
    }
    QElapsedTimer clock;
    clock.start();
    double firstMemory = 0;
    double lastMemory = 0;
    qint64 quietSince = -1; // when everything was sent and nothing more came
    quint64 before = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &window, [&]() {
        lastMemory = megabytesInUse();
        if (firstMemory == 0 && clock.elapsed() > 2000)
            firstMemory = lastMemory;
        const quint64 count = session->getCounters().getMessageCount();
        quietSince = !isSent || count != before ? clock.elapsed() : quietSince;
        before = count;
        if (clock.elapsed() - quietSince > 1000)
            QApplication::quit();
    });
    watch.start(200);
    QApplication::exec();
    const double duration = double(quietSince) / 1000;
    probe.stop();
    QApplication::processEvents();
    if (sender.joinable())
        sender.join();

    const ReceptionCounters& counters = session->getCounters();
    const quint64 received = counters.getMessageCount() + counters.getUnknownCount();
    std::printf("%s: %llu messages sent, %llu counted, %lld missing, %lld dropped by the system, %.0f a second\n",
                mode.constData(), static_cast<unsigned long long>(sent), static_cast<unsigned long long>(received),
                static_cast<long long>(sent) - static_cast<long long>(received),
                static_cast<long long>(session->getSource()->getDroppedCount()), double(received) / duration);
    probe.report();
    std::printf("not displayed: %llu; memory after 2 s %.1f MB, at the end %.1f MB\n",
                static_cast<unsigned long long>(window.getDesk()->getLatest()->getOvertakenCount()), firstMemory,
                lastMemory);
    return 0;
}
