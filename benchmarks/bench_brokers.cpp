// What a fleet sends through a broker, in the monitor's window for as long as is wanted: whether anything is missing,
// how soon the window answers meanwhile, and what memory it takes.
//
// bench_brokers mqtt|jetstream [messages a second] [seconds] [senders] [messages in one]
//
// Starts a broker: mosquitto, or a cluster of three nats-servers that keep a stream three times. One of these is killed
// after a third of the time and comes back ten seconds later. Another process publishes frames of MAVLink in the topics
// of so many vehicles. What is in one message has a number of its own in its first frame, by which is told what did not
// come and what came twice. The vehicles' own numbers count as well; where a cluster takes again what it had refused,
// they are late, and what the window calls lost.
// The servers of a cluster give way to the window, which shares this machine with them here and would not elsewhere.
// A thread posts an event to the window's thread every 5 ms and notes how long each waits.

#include "fleetframes.h"
#include "latestmessagesource.h"
#include "mainwindow.h"
#include "mavlinkcrc.h"
#include "natsserver.h"
#include "sourcemodel.h"
#include "treepanel.h"
#include "treerows.h"
#include "windowprobe.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QtEndian>
#include <QTimer>

#include <cinttypes>
#include <cstdlib>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <set>

namespace
{

using Clock = std::chrono::steady_clock;

const int ServerCount = 3;
const int Niceness = 10; // of each of them
const int Rounds = 128;  // after which all numbers of messages begin anew

struct Plan
{
    bool isMqtt;
    int rate;
    int seconds;
    int senders;
    int framesInOne;
};

quint32 idOf(const QByteArray& frame)
{
    return quint8(frame.at(7)) | quint32(quint8(frame.at(8))) << 8;
}

/** What one vehicle says at one moment, and the topic that it says it in. */
struct Publication
{
    /** With that number in it, where the first frame has room for one. */
    const QByteArray& numbered(std::uint64_t number)
    {
        if (!hasRoom(payload))
            return payload;
        char* const frame = payload.data();
        qToLittleEndian(quint32(number), frame + FrameHead);
        const int end = FrameHead + quint8(frame[1]);
        const quint16 crc = MavlinkCrc::calculate(frame + 1, end - 1);
        qToLittleEndian(MavlinkCrc::add(crc, crcExtra), frame + end);
        return payload;
    }

    /** Whether a frame has bytes for a number. */
    static bool hasRoom(const QByteArray& frame) { return quint8(frame.at(1)) >= sizeof(quint32); }

    static const int FrameHead = 10;

    int sender;
    quint8 crcExtra; // of the first frame
    QByteArray payload;
};

/** Which of the numbered messages came. */
class Tally : public StreamSink
{
public:
    explicit Tally(const Plan& plan)
    {
        const std::vector<QByteArray> frames = fleetFrames(1, 1);
        for (std::size_t i = 0; i < frames.size(); i += std::size_t(plan.framesInOne)) {
            m_isNumbered.push_back(Publication::hasRoom(frames[i]));
            if (m_isNumbered.back())
                m_first.insert(idOf(frames[i]));
        }
    }

    /** How many of the first @p sent publications have a number. */
    quint64 getNumbered(quint64 sent) const
    {
        quint64 count = 0;
        for (std::size_t i = 0; i < m_isNumbered.size(); ++i)
            if (m_isNumbered[i])
                count += (sent + m_isNumbered.size() - 1 - i) / m_isNumbered.size();
        return count;
    }

    void processReceived(const ReceivedMessage& message) override
    {
        if (message.size < Publication::FrameHead + 4 || m_first.count(message.id) == 0)
            return;
        const auto number = std::size_t(qFromLittleEndian<quint32>(message.data + Publication::FrameHead));
        if (number >= m_hasCome.size())
            m_hasCome.resize(number + 1000000);
        if (m_hasCome[number])
            ++m_twice;
        else
            ++m_count;
        m_hasCome[number] = true;
    }
    void processProblem(const StreamProblem&) override {}

    quint64 getCount() const { return m_count; }
    quint64 getTwice() const { return m_twice; }

private:
    std::vector<bool> m_isNumbered; // of what a vehicle publishes in turn
    std::set<quint32> m_first;      // the types of numbered frames
    std::vector<bool> m_hasCome;
    quint64 m_count = 0;
    quint64 m_twice = 0;
};

std::vector<Publication> publications(const Plan& plan)
{
    // fleetFrames() lets one sender after the other say all of its 18 types.
    std::vector<Publication> all;
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    int next = 0;
    for (const QByteArray& frame : fleetFrames(plan.senders, Rounds)) {
        const int place = next++ % 18;
        if (place % plan.framesInOne == 0)
            all.push_back({(next - 1) / 18 % plan.senders, dialect->find(idOf(frame))->getCrcExtra(), QByteArray()});
        all.back().payload += frame;
    }
    return all;
}

/** Calls @p publish for one publication after the other, at the planned rate; gives their number. */
template <class Publish>
std::uint64_t publishAll(const Plan& plan, const Publish& publish)
{
    std::vector<Publication> all = publications(plan);
    Publication pause = {-1, 0, QByteArray()};
    const Clock::time_point start = Clock::now();
    std::uint64_t sent = 0;
    for (;;) {
        const double passed = std::chrono::duration<double>(Clock::now() - start).count();
        const auto due = std::uint64_t(std::min(passed, double(plan.seconds)) * plan.rate / plan.framesInOne);
        while (sent < due) {
            const std::uint64_t some = std::min(due - sent, std::uint64_t(500)); // a pause makes no burst without end
            for (const std::uint64_t end = sent + some; sent < end; ++sent) {
                if (!publish(all[std::size_t(sent % all.size())], sent))
                    return sent;
            }
            publish(pause, sent);
        }
        if (passed >= plan.seconds)
            return sent;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

/** Topics "fleet/N/mavlink" of MQTT 3.1.1, in plain packets, so that publishing costs next to nothing. */
std::uint64_t publishMqtt(const Plan& plan, quint16 port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, port);
    if (!socket.waitForConnected())
        return 0;
    socket.write(QByteArray::fromHex("101000044d515454040200000004") + "load");
    if (!socket.waitForReadyRead())
        return 0;
    std::vector<QByteArray> topics;
    for (int i = 0; i < plan.senders; ++i)
        topics.push_back("fleet/" + QByteArray::number(i + 1) + "/mavlink");
    QByteArray packets;
    const std::uint64_t sent = publishAll(plan, [&](Publication& publication, std::uint64_t number) {
        if (publication.sender < 0) {
            socket.write(packets);
            packets.resize(0);
            while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(30000)) {
            }
            return socket.bytesToWrite() == 0;
        }
        const QByteArray& topic = topics[std::size_t(publication.sender)];
        auto rest = unsigned(2 + topic.size() + publication.payload.size());
        packets += char(0x30);
        for (; rest >= 128; rest /= 128)
            packets += char(rest % 128 | 128);
        packets += char(rest);
        packets += char(topic.size() / 256);
        packets += char(topic.size() % 256);
        packets += topic;
        packets += publication.numbered(number);
        return true;
    });
    socket.write(QByteArray::fromHex("e000"));
    socket.waitForBytesWritten();
    return sent;
}

/** Publishes in a stream that a cluster keeps, with as many under way as a fast publisher has. */
class StoringPublisher
{
public:
    explicit StoringPublisher(const QString& hosts)
        : m_connection(connectToNats(hosts))
    {
        jsOptions streamOptions;
        jsOptions_Init(&streamOptions);
        streamOptions.PublishAsync.MaxPending = MostPending;
        streamOptions.PublishAsync.StallWait = StallMs;
        // Not at once: the library does not wait for a place among those under way here.
        streamOptions.PublishAsync.ErrHandler = [](jsCtx*, jsPubAckErr* error, void* self) {
            static_cast<StoringPublisher*>(self)->refuse(&error->Msg);
        };
        streamOptions.PublishAsync.ErrHandlerClosure = this;
        natsConnection_JetStream(&m_stream, m_connection, &streamOptions);
    }

    ~StoringPublisher()
    {
        jsCtx_Destroy(m_stream);
        natsConnection_Destroy(m_connection);
    }

    /** Whether there is then a stream of @p subject, which may take a while where servers have just begun. */
    bool addStream(const char* name, const char* subject)
    {
        jsStreamConfig config;
        jsStreamConfig_Init(&config);
        config.Name = name;
        config.Subjects = &subject;
        config.SubjectsLen = 1;
        config.Replicas = ServerCount;
        config.Storage = js_FileStorage;
        config.MaxBytes = MostStored;
        config.Duplicates = DuplicatesNs;
        QElapsedTimer timer;
        timer.start();
        natsStatus status = NATS_OK;
        do {
            status = m_stream ? js_AddStream(nullptr, m_stream, &config, nullptr, nullptr) : NATS_NO_SERVER;
        } while (status != NATS_OK && !timer.hasExpired(30000));
        return status == NATS_OK;
    }

    /** How many messages a stream has ever had; 0 where nobody says. */
    quint64 getCount(const char* name)
    {
        jsStreamInfo* info = nullptr;
        js_GetStreamInfo(&info, m_stream, name, nullptr, nullptr);
        const quint64 count = info ? info->State.LastSeq : 0;
        jsStreamInfo_Destroy(info);
        return count;
    }

    /** Waits where too many are under way. */
    bool store(const QByteArray& subject, const QByteArray& payload, quint64 number)
    {
        natsMsg* message = nullptr;
        natsMsg_Create(&message, subject.constData(), nullptr, payload.constData(), int(payload.size()));
        const QByteArray id = QByteArray::number(number);
        jsPubOptions options;
        jsPubOptions_Init(&options);
        options.MsgId = id.constData();
        return publish(message, &options);
    }

    /** Whether the cluster has all. */
    bool finish()
    {
        jsPubOptions options;
        jsPubOptions_Init(&options);
        options.MaxWait = StallMs;
        for (int i = 0; i < 60; ++i) {
            const bool isAll = publishRefused();
            if (js_PublishAsyncComplete(m_stream, &options) != NATS_OK)
                refusePending();
            else if (isAll && publishRefused())
                return true;
        }
        return false;
    }

private:
    enum
    {
        MostPending = 4000,
        StallMs = 1000
    };
    static const int64_t MostStored = 256 * 1024 * 1024;
    static const int64_t DuplicatesNs = 60 * INT64_C(1000000000);

    /** Takes the message; false where the servers take nothing for a minute. */
    bool publish(natsMsg* message, jsPubOptions* options)
    {
        for (int i = 0; i < 60 && message; ++i) {
            if (!publishRefused() || js_PublishMsgAsync(m_stream, &message, options) != NATS_OK)
                refusePending();
        }
        const bool isTaken = !message;
        natsMsg_Destroy(message);
        return isTaken;
    }

    /** What no server answered to may have gone down with one; the others know by its identity what they have. */
    void refusePending()
    {
        natsMsgList pending;
        if (js_PublishAsyncGetPendingList(&pending, m_stream) != NATS_OK)
            return;
        for (int i = 0; i < pending.Count; ++i)
            refuse(&pending.Msgs[i]);
        natsMsgList_Destroy(&pending);
    }

    void refuse(natsMsg** message)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_refused.push_back(*message);
        *message = nullptr;
    }

    /** Whether nothing is left then that has to be published again. */
    bool publishRefused()
    {
        for (;;) {
            natsMsg* message = nullptr;
            {
                const std::lock_guard<std::mutex> lock(m_mutex);
                if (m_refused.empty())
                    return true;
                message = m_refused.front();
                m_refused.pop_front();
            }
            if (js_PublishMsgAsync(m_stream, &message, nullptr) != NATS_OK) {
                refuse(&message);
                return false;
            }
        }
    }

    std::mutex m_mutex;
    std::deque<natsMsg*> m_refused;
    natsConnection* const m_connection;
    jsCtx* m_stream = nullptr;
};

/** Subjects "fleet.N.mavlink", until a majority of the servers has each message. */
std::uint64_t publishStored(const Plan& plan, const QString& hosts)
{
    StoringPublisher publisher(hosts);
    std::vector<QByteArray> subjects;
    for (int i = 0; i < plan.senders; ++i)
        subjects.push_back("fleet." + QByteArray::number(i + 1) + ".mavlink");
    const std::uint64_t sent = publishAll(plan, [&](Publication& publication, std::uint64_t number) {
        return publication.sender < 0 ||
               publisher.store(subjects[std::size_t(publication.sender)], publication.numbered(number), number);
    });
    return publisher.finish() ? sent : 0;
}

/** Servers that belong together, in a thread of their own. One of them is killed for ten seconds. */
class Cluster
{
public:
    Cluster()
    {
        std::promise<QString> hosts;
        m_thread = std::thread([this, &hosts] { run(&hosts); });
        m_hosts = hosts.get_future().get();
    }

    ~Cluster()
    {
        m_isOver = true;
        m_thread.join();
    }

    QString getHosts() const { return m_hosts; }
    void killOne() { m_isToKill = true; }

private:
    void run(std::promise<QString>* told)
    {
        QByteArray routes;
        QList<QByteArray> ports;
        for (int i = 0; i < ServerCount; ++i) {
            ports.append(QByteArray::number(freeLoopbackPort()));
            routes += "\"nats://127.0.0.1:" + ports.last() + "\", ";
        }
        std::vector<std::unique_ptr<NatsServer>> servers;
        QStringList hosts;
        for (int i = 0; i < ServerCount; ++i) {
            servers.emplace_back(new NatsServer(
                "jetstream: {store_dir: \"@\"}\nserver_name: n" + QByteArray::number(i) +
                    "\ncluster: {name: c, listen: \"127.0.0.1:" + ports.at(i) + "\", routes: [" + routes + "]}\n",
                Niceness));
            hosts.append(servers.back()->getHost());
        }
        told->set_value(hosts.join(QLatin1Char(',')));
        while (!m_isToKill && !m_isOver)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        if (m_isToKill) {
            servers.front()->kill();
            std::this_thread::sleep_for(std::chrono::seconds(10));
            servers.front()->start();
        }
        while (!m_isOver)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }

    QString m_hosts;
    std::thread m_thread;
    std::atomic<bool> m_isToKill{false};
    std::atomic<bool> m_isOver{false};
};

/** Starts mosquitto with room for what a window is late for. */
void startMosquitto(QProcess* process, const TestFolder& folder, quint16 port)
{
    const QString path = folder.write(QStringLiteral("broker.conf"),
                                      "listener " + QByteArray::number(port) +
                                          " 127.0.0.1\nuser root\nallow_anonymous true\nmax_queued_messages 100000\n");
    process->start(QStringLiteral("setpriv"), {QStringLiteral("--pdeathsig"), QStringLiteral("KILL"),
                                               QStringLiteral("mosquitto"), QStringLiteral("-c"), path});
    QTcpSocket probe;
    do {
        probe.abort();
        probe.connectToHost(QHostAddress::LocalHost, port);
    } while (!probe.waitForConnected(100));
}

int run(const Plan& plan, char** argv)
{
    const TestFolder folder;
    const quint16 port = freeLoopbackPort();
    QProcess broker;
    std::unique_ptr<Cluster> cluster;
    QString address = QStringLiteral("mqtt://127.0.0.1:%1/fleet/#").arg(port);
    QString target = QString::number(port);
    if (plan.isMqtt) {
        startMosquitto(&broker, folder, port);
    } else {
        cluster.reset(new Cluster);
        target = cluster->getHosts();
        address = QStringLiteral("jetstream://%1/FLEET").arg(target);
        if (!StoringPublisher(target).addStream("FLEET", "fleet.>")) {
            std::fprintf(stderr, "bench_brokers: the cluster has no stream\n");
            return 1;
        }
    }

    MainWindow window;
    window.getPanels().find<TreePanel>()->getRows()->setArrangement(TreeRows::BySender);
    window.resize(1280, 800);
    window.show();
    StreamSource::Playback playback;
    playback.factor = 0;
    window.setPlayback(playback);
    if (!window.openAddress(address))
        return 1;
    SourceSession* const session = window.getSources()->getSession(0);
    Tally tally(plan);
    session->getSource()->addObserver(&tally);
    QElapsedTimer clock;
    clock.start();
    while (session->getState() != SourceSession::Receiving && clock.elapsed() < 15000)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);

    QProcess publisher;
    publisher.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QStringList arguments = {QStringLiteral("--publish"), target};
    for (int i = 1; i < 6; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    publisher.start(QString::fromLocal8Bit(argv[0]), arguments);

    WindowProbe probe;
    probe.start();
    double earlyMemory = 0;
    double earlyAllocated = 0;
    double mostMemory = 0;
    std::uint64_t before = 0;
    qint64 quietSince = 0;
    bool isBegun = false;
    clock.restart();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &window, [&]() {
        const std::uint64_t count = session->getCounters().getMessageCount();
        if (count > 0 && !isBegun) {
            isBegun = true;
            clock.restart();
        }
        const double memory = megabytesInUse();
        mostMemory = std::max(mostMemory, memory);
        if (earlyMemory == 0 && isBegun && clock.elapsed() > plan.seconds * 100) {
            earlyMemory = memory;
            earlyAllocated = megabytesAllocated();
        }
        if (cluster && isBegun && clock.elapsed() > plan.seconds * 333)
            cluster->killOne();
        quietSince = count != before || publisher.state() != QProcess::NotRunning ? clock.elapsed() : quietSince;
        before = count;
        if (clock.elapsed() - quietSince > 3000)
            QApplication::quit();
    });
    watch.start(200);
    QApplication::exec();
    probe.stop();
    QApplication::processEvents();

    const quint64 sent = publisher.readAllStandardOutput().trimmed().toULongLong();
    const ReceptionCounters& counters = session->getCounters();
    const quint64 received = counters.getMessageCount() + counters.getUnknownCount();
    quint64 lost = 0;
    quint64 late = 0;
    quint64 repeated = 0;
    for (const auto& sender : window.getDesk()->getCoordinator()->getSenderStatistics()) {
        lost += sender.lost;
        late += sender.late;
        repeated += sender.repeated;
    }
    std::printf("%s, %d senders, %d in one: %llu sent", argv[1], plan.senders, plan.framesInOne, sent);
    if (cluster)
        std::printf(", %llu stored", StoringPublisher(target).getCount("FLEET"));
    const quint64 numbered = tally.getNumbered(sent);
    std::printf(", %llu of them numbered, %llu of these received; %llu missing, %llu twice; %llu messages, "
                "%.0f a second for %.0f s\n",
                numbered, tally.getCount(), numbered - tally.getCount(), tally.getTwice(), received,
                double(received) * 1000 / double(quietSince), double(quietSince) / 1000);
    quint64 gaps = 0;
    quint64 intervals = 0;
    for (const MessageStatistics* statistics : window.getDesk()->getCoordinator()->getAllMessageStatistics()) {
        gaps += quint64(statistics->getStoredGaps().size());
        intervals += quint64(statistics->getIntervalCountHash().size());
    }
    std::printf("by the numbers of the vehicles %llu lost, %llu late, %llu repeated; by the times %llu gaps and %llu "
                "intervals are stored\n",
                lost, late, repeated, gaps, intervals);
    probe.report();
    std::printf(
        "memory after a tenth of the time %.1f MB, at the end %.1f MB, at most %.1f MB; allocated then %.1f MB, and at "
        "the end %.1f MB\n",
        earlyMemory, megabytesInUse(), mostMemory, earlyAllocated, megabytesAllocated());
    return sent > 0 && numbered == tally.getCount() ? 0 : 2;
}

} // namespace

int main(int argc, char** argv)
{
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    const bool isPublisher = argc > 2 && QByteArray(argv[1]) == "--publish";
    char** const from = argv + (isPublisher ? 2 : 0);
    const int count = argc - (isPublisher ? 2 : 0);
    // What is left out is told to the publisher as well.
    QList<QByteArray> words = {argv[0], "mqtt", "100000", "10", "1000", "1"};
    for (int i = 1; i < std::min(count, int(words.size())); ++i)
        words[i] = from[i];
    std::vector<char*> all;
    for (QByteArray& word : words)
        all.push_back(word.data());
    const Plan plan = {words[1] == "mqtt", words[2].toInt(), words[3].toInt(), words[4].toInt(), words[5].toInt()};
    if (plan.rate < 1 || plan.seconds < 1 || plan.senders < 1 || plan.framesInOne < 1 || 18 % plan.framesInOne != 0) {
        std::fprintf(stderr, "bench_brokers: numbers are positive, and 18 is a multiple of the messages in one\n");
        return 1;
    }
    if (!isPublisher)
        return run(plan, all.data());
    const QString target = QString::fromLocal8Bit(argv[2]);
    std::printf("%" PRIu64 "\n", plan.isMqtt ? publishMqtt(plan, target.toUShort()) : publishStored(plan, target));
    return 0;
}
