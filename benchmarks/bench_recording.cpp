// How soon the monitor's window has what it tells of a whole recording, how soon it shows another place of it, whether
// it answers meanwhile, and what memory that takes.
//
// bench_recording [tlog|mcap|lz4|zstd|FILE] [megabytes] [types] [lost of a thousand] [bytes of a message] [keep as]
//
// Makes a recording of so many megabytes in a temporary folder, or takes the one that is named, opens it in a window
// and jumps to twenty places of it, once that is looked through and then in another window meanwhile. A jump has ended
// when the tree was given the newest message of each type before the place. Beside it stands what it takes to read the
// bytes of the file, and to decode them without counting anything. Where nobody has changed QT_QPA_PLATFORM it is a
// window that nobody sees.

#include "latestmessagesource.h"
#include "mainwindow.h"
#include "mavlinkdialect.h"
#include "mavlinkencoder.h"
#include "mcapfixtures.h"
#include "messagetreewidget.h"
#include "recordingindex.h"
#include "recordingoverview.h"
#include "sourcemodel.h"
#include "treepanel.h"
#include "windowprobe.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>

namespace
{

const int Places = 20;
const int LongestJumpMs = 20000;
const qint64 Start = Q_INT64_C(1760000000) * 1000000;
const int Periods[] = {20, 50, 100, 100, 200, 200, 500, 1000, 30000}; // of the types, in turn, in milliseconds

double seconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e9;
}

/** What the whole process worked, on any thread. */
double secondsWorked()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

void rest(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/** A line of /proc/self/status, in megabytes. */
double megabytesOf(const QByteArray& name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).simplified().split(' ').first().toDouble() * 1024 / 1e6;
    return 0;
}

/** When messages of some types are due, one after the other. */
class Schedule
{
public:
    explicit Schedule(int types, int lost)
        : m_lost(lost)
    {
        for (int type = 0; type < types; ++type)
            m_due.push_back(type); // in milliseconds
    }

    /** The type of the next message, and when it is due. */
    int next(qint64* milliseconds)
    {
        for (;;) {
            const auto first = std::min_element(m_due.begin(), m_due.end());
            const int type = int(first - m_due.begin());
            *milliseconds = *first;
            *first += Periods[std::size_t(type) % std::size(Periods)];
            if (int(m_random() % 1000) >= m_lost)
                return type;
        }
    }

private:
    std::vector<qint64> m_due;
    std::minstd_rand m_random;
    int m_lost;
};

bool writeTlog(QFile* file, qint64 size, Schedule* schedule, int types)
{
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    const QVector<const MessageInfo*> infos = dialect->getMessageInfos();
    std::minstd_rand random;
    QByteArray bytes;
    // With all numbers that a frame can have, so that only times are written anew.
    std::vector<std::vector<QByteArray>> frames(std::size_t(types), std::vector<QByteArray>(256));
    std::vector<quint8> numbers(256, 0); // of systems
    while (file->pos() + bytes.size() < size) {
        qint64 milliseconds = 0;
        const int type = schedule->next(&milliseconds);
        MavlinkEncoder::FrameHeader header;
        header.system = quint8(1 + type / infos.size()); // where there are not so many types
        header.sequence = numbers[header.system]++;
        QByteArray& frame = frames[std::size_t(type)][header.sequence];
        if (frame.isEmpty()) {
            const auto* const info = static_cast<const MavlinkMessageInfo*>(infos.at(type % infos.size()));
            QByteArray payload(info->getFullLength(), 0);
            for (char& byte : payload)
                byte = char(random() >> 8);
            frame = MavlinkEncoder::toFrame(header, info->getId(), info->getCrcExtra(), payload);
        }
        const quint64 time = qToBigEndian(quint64(Start + milliseconds * 1000));
        bytes.append(reinterpret_cast<const char*>(&time), sizeof time);
        bytes += frame;
        if (bytes.size() > 1000000) {
            if (file->write(bytes) != bytes.size())
                return false;
            bytes.clear();
        }
    }
    return file->write(bytes) == bytes.size();
}

/** Messages that compress about as numbers of sensors do. */
bool writeMcap(QFile* file, qint64 size, Schedule* schedule, int types, int payload,
               McapWriter::Compression compression)
{
    McapWriter writer(file, McapFixtures::settings(compression, 1 << 20));
    writer.open();
    QVector<quint16> channels;
    for (int type = 0; type < types; ++type) {
        const QByteArray package = "bench" + QByteArray::number(type);
        const quint16 schema = writer.addSchema(package + ".Point", "protobuf", McapFixtures::schema(package));
        channels.append(writer.addChannel("/" + package, "protobuf", schema));
    }
    std::minstd_rand random;
    for (int i = 0; qint64(writer.getWrittenSize()) < size; ++i) {
        qint64 milliseconds = 0;
        const int type = schedule->next(&milliseconds);
        QByteArray message = McapFixtures::point(i);
        while (message.size() < payload)
            message += McapFixtures::part(15, QByteArray(12, char(i)) + McapFixtures::little(quint32(random())));
        if (!writer.writeMessage(channels.at(type), quint32(i + 1), quint64(Start + milliseconds * 1000) * 1000,
                                 message))
            return false;
    }
    std::printf("%llu messages of %d bytes\n", static_cast<unsigned long long>(writer.getMessageCount()), payload);
    return writer.close();
}

struct Nobody : StreamSink
{
    void processReceived(const ReceivedMessage&) override { ++messages; }
    void processProblem(const StreamProblem&) override {}

    quint64 messages = 0;
};

/** What the same takes without a window. */
void measureFloors(const QString& path)
{
    QElapsedTimer timer;
    timer.start();
    QFile file(path);
    QByteArray bytes(1 << 20, 0);
    if (file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        while (file.read(bytes.data(), bytes.size()) > 0) {
        }
    std::printf("%s: %.0f MB, its bytes are read in %.2f s", qPrintable(path), double(file.size()) / 1e6,
                seconds(timer));
    SourceFactory factory;
    SourceOptions options;
    options.address = path;
    SourceParts parts;
    QString error;
    Nobody nobody;
    timer.start();
    if (!factory.create(options, &parts, &error) || !parts.input->open() ||
        parts.opener->run(parts.input.get(), nullptr, nullptr) != StreamOpener::Opened) {
        std::printf("; it cannot be opened %s\n", qPrintable(error));
        return;
    }
    const OpenedStream stream = parts.opener->takeStream();
    const std::unique_ptr<ByteInput> input = parts.opener->takeInput(std::move(parts.input));
    if (stream.index)
        stream.index->prepare(nullptr);
    while (input->read(&bytes, 100) == ByteInput::Data)
        stream.decoder->feed(bytes.constData(), int(bytes.size()), Message::NoTime, &nobody);
    stream.decoder->finish(&nobody);
    std::printf(", %.1f million messages decoded in %.2f s\n", double(nobody.messages) / 1e6, seconds(timer));
}

/** A window with a recording. */
class Opened
{
public:
    explicit Opened(const QString& path)
    {
        QObject::connect(m_window.getDesk()->getLatest(), &MessageSource::newMessage, &m_window,
                         [this](const Message* message) {
                             m_shown.insert({message->getInfo(), message->getSender()});
                         });
        QObject::connect(m_window.getDesk()->getLatest(), &LatestMessageSource::forgotten, &m_window,
                         [this](const MessageInfo*) { m_shown.clear(); });
        m_window.resize(1280, 800);
        m_window.show();
        rest(500);
        m_memoryBefore = megabytesInUse();
        m_timer.start();
        m_workedBefore = secondsWorked();
        m_window.openAddress(path);
        m_session = m_window.getSources()->getSession(0);
        while (m_session && m_session->getCounters().getMessageCount() == 0 && !m_timer.hasExpired(LongestJumpMs))
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    SourceSession* getSession() { return m_session; }
    bool isComplete() { return m_session->getOverview() && m_session->getOverview()->isComplete(); }

    /** Waits for the overview, and tells of it. */
    void finish()
    {
        const double first = seconds(m_timer);
        WindowProbe probe;
        probe.start();
        while (!isComplete())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        m_window.repaint();
        const double complete = seconds(m_timer);
        const double worked = secondsWorked() - m_workedBefore;
        const double most = megabytesOf("VmHWM");
        rest(1000);
        probe.stop();
        QApplication::processEvents();
        std::printf("first message after %.0f ms, overview after %.2f s, for which the processors worked %.2f s\n",
                    first * 1e3, complete, worked);
        std::printf("memory before %.0f MB, at most %.0f MB, at the end %.0f MB (%.0f MB of it its own)\n",
                    m_memoryBefore, most, megabytesInUse(), megabytesOf("RssAnon"));
        probe.report();
    }

    /** Milliseconds of each jump until @p types are shown; negative where they were not. */
    std::vector<double> jump(int types, bool beforeComplete)
    {
        std::vector<double> jumps;
        std::minstd_rand random(7);
        const StreamSource* const source = m_session->getSource();
        const qint64 length = source->getEndTime() - source->getStartTime();
        for (int i = 0; i < Places && (!beforeComplete || !isComplete()); ++i) {
            const qint64 time = source->getStartTime() + length / 100 +
                                qint64(double(length) * 0.98 * double(random()) / double(std::minstd_rand::max()));
            rest(100); // the time between two clicks
            m_shown.clear();
            QElapsedTimer timer;
            timer.start();
            Desk::jumpTo(m_session, time);
            QApplication::processEvents();
            while (int(m_shown.size()) < types && !timer.hasExpired(LongestJumpMs))
                QApplication::processEvents(QEventLoop::WaitForMoreEvents);
            m_window.getPanels().find<TreePanel>()->getTree()->viewport()->repaint();
            jumps.push_back(double(timer.nsecsElapsed()) / 1e6);
        }
        return jumps;
    }

private:
    QSet<Subject> m_shown; // since the last jump; the window changes it to its end
    MainWindow m_window;
    SourceSession* m_session = nullptr;
    QElapsedTimer m_timer;
    double m_memoryBefore = 0;
    double m_workedBefore = 0;
};

void report(const char* what, std::vector<double> jumps)
{
    std::sort(jumps.begin(), jumps.end());
    if (!jumps.empty())
        std::printf("%zu jumps %s: %.0f ms, %.0f to %.0f ms\n", jumps.size(), what, jumps[jumps.size() / 2],
                    jumps.front(), jumps.back());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    const auto number = [&](int i, int fallback) { return argc > i ? std::atoi(argv[i]) : fallback; };
    const QByteArray kind = argc > 1 ? argv[1] : "tlog";
    const qint64 size = qint64(number(2, 1100)) * 1000000;
    const int types = number(3, 18);
    QTemporaryDir folder;
    QString path = QString::fromLocal8Bit(kind);
    if (kind == "tlog" || kind == "mcap" || kind == "lz4" || kind == "zstd") {
        path = argc > 6 ? QString::fromLocal8Bit(argv[6])
                        : folder.filePath(kind == "tlog" ? QStringLiteral("bench.tlog") : QStringLiteral("bench.mcap"));
        QFile file(path);
        Schedule schedule(types, number(4, 0));
        const McapWriter::Compression compression = kind == "lz4"    ? McapWriter::Lz4
                                                    : kind == "zstd" ? McapWriter::Zstd
                                                                     : McapWriter::NoCompression;
        if (!file.open(QIODevice::WriteOnly) ||
            !(kind == "tlog" ? writeTlog(&file, size, &schedule, types)
                             : writeMcap(&file, size, &schedule, types, number(5, 200), compression))) {
            std::printf("%s cannot be written\n", qPrintable(path));
            return 1;
        }
    }
    measureFloors(path);
    int shown = 0;
    {
        Opened opened(path);
        if (!opened.getSession() || !opened.getSession()->getSource()->isSeekable())
            return 1;
        opened.finish();
        for (const OverviewRow& row : opened.getSession()->getOverview()->getRows())
            shown += row.info ? 1 : 0;
        report("after that", opened.jump(shown, false));
    }
    Opened again(path);
    report("while it is looked through", again.jump(shown, true));
    return 0;
}
