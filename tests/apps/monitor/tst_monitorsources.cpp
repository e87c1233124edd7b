#include "formatinfo.h"
#include "foxgloveserver.h"
#include "fulldisk.h"
#include "mavlinkframes.h"
#include "messageinfo.h"
#include "playbacktime.h"
#include "pseudoterminal.h"
#include "recordingfile.h"
#include "shellrun.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"

#include <QJsonArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>

#include <sys/stat.h>

namespace
{

/** A window in which a second of waiting is short, with one source, whose states it writes down. */
struct LiveWindow : TestWindow
{
    explicit LiveWindow(const QString& address)
    {
        SourceSession::setSecondOfWaiting(5);
        show();
        openAddress(address);
        session = getSources()->getSession(0);
        QObject::connect(session, &SourceSession::changed, &m_notes,
                         [this]() { states += session->getStateText() + '\n'; });
    }
    ~LiveWindow() override { SourceSession::setSecondOfWaiting(1000); }

    int count() const { return int(session->getCounters().getMessageCount()); }
    bool isReceiving() const { return session->getState() == SourceSession::Receiving; }

    SourceSession* session;
    QString states;

private:
    QObject m_notes;
};

SourceSession* open(Desk* desk, const QString& address)
{
    SourceOptions options;
    options.address = address;
    StreamSource::Playback playback;
    playback.factor = 0;
    QString error;
    SourceSession* const session = desk->getSources()->open(options, playback, &error);
    if (!session)
        qWarning("%s", qPrintable(error));
    return session;
}

QString countsOf(const SourceSession* session)
{
    const ReceptionCounters& counters = session->getCounters();
    return QString("%1 received, %2 failed, %3 skipped, %4 cut off")
        .arg(counters.getMessageCount())
        .arg(counters.getChecksumFailureCount())
        .arg(counters.getSkippedBytes())
        .arg(counters.getTruncatedBytes());
}

// Three messages of the type Point of a package.
QByteArray points(const QByteArray& package)
{
    McapFixtures::Recording recording(McapFixtures::settings(McapWriter::Zstd, 1000));
    McapWriter& writer = recording.writer;
    const quint16 channel = writer.addChannel(
        "/p", "protobuf", writer.addSchema(package + ".Point", "protobuf", McapFixtures::schema(package)));
    for (int i = 0; i < 3; ++i)
        writer.writeMessage(channel, 0, quint64(i) * McapFixtures::Millisecond, McapFixtures::point(i));
    return recording.finished();
}

} // namespace

/** Sources that come, go, fail and are recorded. */
class tst_monitorsources : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aSourceSaysHowItStands();
    void countsGoOnOverAReconnection();
    void aServerThatStartsAnewMixesNothingUp();
    void aSerialDeviceGoesOnWhenItIsPluggedInAgain();
    void twoSourcesOfOneSenderStayApart();
    void definitionsThatComeLaterAreUsedForWhatCameBefore();
    void faultsOfAnnotationsForTypesThatComeLaterAreEvents();
    void anMcapStreamThroughAPipeIsRecognised();
    void recordingKeepsDamageAndOutlivesTheProgram();
    void recordingThatFailsLeavesReceptionAlone();
    void aFileThatTakesOnlyAPartSaysWhy();
    void timesAreReadAsTheyAreTyped();

private:
    const MavlinkScript m_script;
    TestFolder m_folder;
};

void tst_monitorsources::aSourceSaysHowItStands()
{
    LiveWindow window("udp:127.0.0.1:24551");
    EVENTUALLY_IS(window.session->getStateText(), "listening");
    QUdpSocket sender;
    sender.writeDatagram(m_script.bytes("H1"), QHostAddress::LocalHost, 24551);
    EVENTUALLY(window.session->getStateText().startsWith("silent since ")); // after 25 ms
    SourceSession::setSecondOfWaiting(1000);
    EVENTUALLY_IS(window.session->getStateText(), "receiving");

    QVERIFY(window.openAddress(m_folder.write("two.tlog", m_script.bytes("0:H1 600000000:H2"))));
    SourceSession* const recording = window.getSources()->getSession(1);
    EVENTUALLY_IS(recording->getStateText(), "playing");
    recording->getSource()->setPaused(true);
    QCOMPARE(recording->getStateText(), QString("paused"));
    recording->getSource()->stop();
    EVENTUALLY_IS(recording->getStateText(), "stopped");
    QVERIFY(!window.getSources()->index(1, SourceModel::StateColumn).data(Qt::DecorationRole).isNull());
}

void tst_monitorsources::countsGoOnOverAReconnection()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    LiveWindow window(QString("tcp:127.0.0.1:%1").arg(server.serverPort()));
    for (int i = 1; i <= 3; ++i) {
        EVENTUALLY(server.hasPendingConnections());
        const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
        socket->write(m_script.bytes("H1"));
        EVENTUALLY(window.count() == i);
        QVERIFY(window.isReceiving());
    }
    EVENTUALLY(window.states.contains("\nended, again in 1 s\n"));
    QCOMPARE(window.countedTypes(), QString("HEARTBEAT 3"));

    // Nobody is there any more: the waits become longer, and end with thirty seconds.
    server.close();
    EVENTUALLY(window.states.contains("again in 30 s: "));
    QVERIFY(window.states.contains("again in 8 s: ") && !window.states.contains("again in 31 s"));
}

void tst_monitorsources::aSerialDeviceGoesOnWhenItIsPluggedInAgain()
{
    const QString path = m_folder.filePath("ttyTest");
    PseudoTerminal device(path);
    LiveWindow window("serial:" + path + "?baud=115200"); // which nobody has plugged in yet
    EVENTUALLY(window.states.contains("\nagain in 2 s: there is no such serial port\n"));
    for (int i = 1; i <= 2; ++i) {
        QVERIFY(device.plugIn());
        EVENTUALLY(window.isReceiving());
        device.send(m_script.bytes("H1"));
        EVENTUALLY(window.count() == i);
        window.states.clear();
        device.unplug();
        EVENTUALLY(window.states.contains(": the device is gone"));
    }
    QCOMPARE(window.countedTypes(), QString("HEARTBEAT 2"));
}

// Two topics of one type and one of another: whoever goes by the numbers of channels takes them for one another. In the
// end, the other type is another one of that name.
void tst_monitorsources::aServerThatStartsAnewMixesNothingUp()
{
    FoxgloveServer server("foxglove.sdk.v1");
    LiveWindow window(server.address());
    window.getWatches()->pin("protobuf/demo.Point/n");
    window.getWatches()->pin("protobuf/other.Point/n");
    window.getPlot()->plot("protobuf/demo.Point/n");
    QString error;
    QVERIFY2(window.session->startRecording(m_folder.filePath("restarted.mcap"), &error), qPrintable(error));
    const QByteArray orders[] = {"abc", "cba", "bCa"};
    for (int start = 0; start < 3; ++start) {
        EVENTUALLY(server.clients == start + 1 && window.isReceiving());
        QJsonArray channels;
        for (const char topic : orders[start])
            channels.append(FoxgloveServer::channel(int(channels.size()) + 1, QString("/%1").arg(topic).toLower(),
                                                    "protobuf", topic < 'c' && topic > 'C' ? "demo" : "other",
                                                    topic == 'C' ? "m" : nullptr));
        server.advertise(channels);
        EVENTUALLY(server.subscriptions.size() == 3);
        for (int i = 0; i < 3; ++i) // 10, 20, 30; 31, 21, 11; 22, 32, 12
            server.sendPoint(server.subscription(i), 10 * ((orders[start].at(i) | 32) - 'a' + 1) + start);
        EVENTUALLY(window.count() == 3 * (start + 1));
        server.socket()->close();
    }
    window.session->stopRecording();

    QCOMPARE(window.countedTypes(), QString("demo.Point (/a) 3, demo.Point (/b) 3, other.Point (/c) 3"));
    EVENTUALLY_IS(window.valueOf("demo.Point /a", "n"), "12");
    EVENTUALLY_IS(window.valueOf("demo.Point /b", "n"), "22");
    EVENTUALLY_IS(window.valueOf("other.Point", "n"), "32");
    EVENTUALLY_IS(window.getWatches()->getWatches().first()->getText(), "12");
    EVENTUALLY_IS(window.getWatches()->getWatches().last()->getText(), "32");
    QStringList plotted;
    for (const auto& series : window.getPlot()->getSeries())
        plotted.append(
            QString("%1 %2 %3").arg(series->getSender(), series->getValueText()).arg(series->getMessageCount()));
    QCOMPARE(plotted.join(", "), QString("/a 12 3, /b 22 3"));
    static const TextRow rows[] = {
        {"corvel-dump --stats restarted.mcap | sed 's/.*\"statistics\"//' | grep -o '\"type\":[^}]*,\"noTime' | cut -d "
         ", -f 1,2,4",
         "'type':'demo.Point','sender':'/a','messages':3\n'type':'demo.Point','sender':'/b','messages':3\n"
         "'type':'other.Point','sender':'/c','messages':2\n'type':'other.Point','sender':'/c','messages':1"}};
    check(rows, m_folder.path());
}

void tst_monitorsources::twoSourcesOfOneSenderStayApart()
{
    TestWindow window;
    QVERIFY(window.play(m_folder.write("north.raw", m_script.bytes("H1 H2 H3"))));
    QCOMPARE(window.countedTypes(), QString("HEARTBEAT 3"));
    QVERIFY(window.play(m_folder.write("south.raw", m_script.bytes("H1 H2"))));
    QCOMPARE(window.countedTypes(), QString("HEARTBEAT (north.raw) 3, HEARTBEAT (south.raw) 2"));
    QCOMPARE(window.getSources()->getSession(1)->getSenderName(0), QString("1:1 @ south.raw"));
    window.getSources()->close(window.getSources()->getSession(0));
    QCOMPARE(window.countedTypes(), QString("HEARTBEAT 2"));
    QCOMPARE(window.getSources()->getSession(0)->getSenderName(0), QString("1:1"));
}

void tst_monitorsources::definitionsThatComeLaterAreUsedForWhatCameBefore()
{
    const QString other =
        m_folder.write("other.xml", "<mavlink><messages><message id=\"4711\" name=\"OTHER\">"
                                    "<field type=\"uint8_t\" name=\"a\">A</field></message></messages></mavlink>");
    TestWindow window;
    window.show();
    QVERIFY(window.openAll({other, "udp:127.0.0.1:24550"}));
    const SourceSession* const session = window.getSources()->getSession(0);
    EVENTUALLY(session->getState() == SourceSession::Receiving);
    QUdpSocket sender;
    for (int i = 1; i <= 5; ++i)
        sender.writeDatagram(m_script.bytes(QString("H%1").arg(i)), QHostAddress::LocalHost, 24550);
    EVENTUALLY(session->getCounters().getUnknownCount() == 5);
    QCOMPARE(window.getTree()->topLevelItemCount(), 0);
    // What is not known lies below a row of its own.
    const MessageTypeModel* const types = window.getDesk()->getTypes();
    EVENTUALLY_IS(types->index(0, MessageTypeModel::CountColumn).data().toString(), "5");
    QCOMPARE(types->index(0, 0).data().toString() + QString::number(types->rowCount(types->index(0, 0))),
             QString("Unknown types1"));

    QVERIFY(window.openAll({CORVEL_DIALECT}));
    EVENTUALLY_IS(window.valueOf("HEARTBEAT", "type"), "MAV_TYPE_ODID (34)");
    QCOMPARE(session->getCounters().getMessageCount(), quint64(5));
    QCOMPARE(window.countedTypes(), QString("HEARTBEAT 5"));
    sender.writeDatagram(m_script.bytes("H6"), QHostAddress::LocalHost, 24550);
    EVENTUALLY_IS(window.countedTypes(), "HEARTBEAT 6");
}

void tst_monitorsources::faultsOfAnnotationsForTypesThatComeLaterAreEvents()
{
    Desk desk;
    QStringList problems;
    // Of a type that no other test's annotations are about.
    QVERIFY(desk.getFactory()->annotate(m_folder.write("later.json", "{\"messages\": {\"fault.Point\": {\"fields\":\n"
                                                                     "{\"nothing\": {\"confidential\": true}}}}}"),
                                        &problems));
    QVERIFY(!desk.getFactory()->annotate(m_folder.write("bad.json", "{"), &problems));
    QCOMPARE(problems.size(), 1);
    const SourceSession* const session = open(&desk, m_folder.write("fault.mcap", points("fault")));
    EVENTUALLY(session->getState() == SourceSession::Ended);
    QStringList faults;
    for (const EventCauses::Cause& cause : desk.getEvents()->getRows())
        if (cause.newest.type == "Definition problem")
            faults.append(m_folder.relative(cause.newest.text));
    QCOMPARE(faults.join(", "), QString("annotation: later.json:2: fault.Point.nothing: unknown field"));
}

void tst_monitorsources::anMcapStreamThroughAPipeIsRecognised()
{
    const QString path = m_folder.filePath("pipe");
    QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    Desk desk;
    const SourceSession* const session = open(&desk, path);
    // As a slow writer does it.
    QFile writer(path);
    QVERIFY(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const QByteArray bytes = points("piped");
    writer.write(bytes.left(5));
    EVENTUALLY(session->getState() == SourceSession::Receiving);
    writer.write(bytes.mid(5));
    writer.close();
    EVENTUALLY(session->getState() == SourceSession::Ended);
    QCOMPARE(countsOf(session), QString("3 received, 0 failed, 0 skipped, 0 cut off"));
    QCOMPARE(session->getIdentities().getRows().first().info->getFormatInfo()->getName(), QString("protobuf"));
}

void tst_monitorsources::recordingKeepsDamageAndOutlivesTheProgram()
{
    // Damage of every kind, which comes back from the recording as it was.
    const QByteArray stream = m_script.bytes("H1 stray bytes H2 H3~12 H4 H5<9");
    const QString counts = "3 received, 1 failed, 10 skipped, 9 cut off";
    const QString path = m_folder.filePath("damaged.tlog");
    Desk desk;
    SourceSession* session = open(&desk, m_folder.write("damaged.raw", stream));
    QString error;
    QVERIFY2(session->startRecording(path, &error), qPrintable(error));
    EVENTUALLY(session->getState() == SourceSession::Ended);
    session->stopRecording();
    QCOMPARE(QFileInfo(path).size(), qint64(stream.size() + 5 * 8));
    QCOMPARE(countsOf(session), counts);
    session = open(&desk, path);
    EVENTUALLY(session->getState() == SourceSession::Ended);
    QCOMPARE(countsOf(session), counts);

    // A program that is killed leaves a recording that can be read.
    const QString killed = m_folder.filePath("killed.tlog");
    QProcess process;
    startInShell(&process, "exec corvel-monitor --demo vehicle --record killed.tlog --settings no.ini",
                 m_folder.path());
    EVENTUALLY(QFileInfo(killed).size() > 5000);
    process.kill();
    process.waitForFinished();
    session = open(&desk, killed);
    EVENTUALLY(session->getState() == SourceSession::Ended);
    QVERIFY(session->getCounters().getMessageCount() > 80);
    QVERIFY2(countsOf(session).contains(" received, 0 failed, 0 skipped, "), qPrintable(countsOf(session)));
}

void tst_monitorsources::recordingThatFailsLeavesReceptionAlone()
{
    if (!QFileInfo::exists("/dev/full"))
        QSKIP("needs a device that is always full");
    TestWindow window;
    window.show();
    window.openSimulation();
    SourceSession* const session = window.getSources()->getSession(0);
    QString error;
    QVERIFY(!session->startRecording(m_folder.filePath("no/such/folder.tlog"), &error));
    QVERIFY(error.contains("no/such/folder.tlog"));
    QVERIFY(session->startRecording("/dev/full", &error));
    EVENTUALLY(!session->getRecorder().isRecording());
    QCOMPARE(window.getLastProblem(),
             QString("Recording to /dev/full ended: No space left on device. What is in the file can be read."));
    const quint64 count = session->getCounters().getMessageCount();
    EVENTUALLY(session->getCounters().getMessageCount() > count);
    QCOMPARE(int(session->getState()), int(SourceSession::Receiving));
    QCOMPARE(window.takeError(), window.getLastProblem());
}

void tst_monitorsources::aFileThatTakesOnlyAPartSaysWhy()
{
    // As with a disk that becomes full, the first write ends short and only the next one has a reason.
    RecordingFile file(m_folder.filePath("limited.tlog"));
    {
        const FullDisk disk(100000);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(150000, 'x'));
        file.close();
    }
    QCOMPARE(file.getProblem(), QString("File too large"));
    QCOMPARE(file.getWrittenSize(), qint64(100000));
    QCOMPARE(QFileInfo(m_folder.filePath("limited.tlog")).size(), qint64(100000));
}

void tst_monitorsources::timesAreReadAsTheyAreTyped()
{
    // In a recording that starts at 2015-07-04 23:50:00.500.
    static const TextRow rows[] = {
        {"+90", "2015-07-04 23:51:30.500"},
        {"+1:30.5", "2015-07-04 23:51:31.000"},
        {"+1:02:03", "2015-07-05 00:52:03.500"},
        {" 23:55:01.25", "2015-07-04 23:55:01.250"},
        {"23:50:00", "2015-07-04 23:50:00.000"},
        {"0:10", "2015-07-05 00:10:00.000"},
        {"2015-07-05 00:49:40.5", "2015-07-05 00:49:40.500"},
    };
    const auto read = [](const QString& typed) {
        qint64 result = 0;
        return PlaybackTime::parse(typed, Q_INT64_C(1436053800500000), &result) ? PlaybackTime::clockText(result)
                                                                                : QString();
    };
    checkRows(rows, read);
    for (const char* typed : {"", "12", "1:70", "1:2:3:4", "-5:00", "+", "+a", "25:00", "nan:1", "2015-13-05 00:00:00"})
        QCOMPARE(typed + read(typed), QString(typed));
}

QTEST_MAIN(tst_monitorsources)
#include "tst_monitorsources.moc"
