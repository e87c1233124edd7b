#include "fieldinfo.h"
#include "formatinfo.h"
#include "foxgloveserver.h"
#include "mavlinkdialect.h"
#include "mavlinkencoder.h"
#include "messageinfo.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "playbacktime.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "pseudoterminal.h"
#include "recorder.h"
#include "recordingfile.h"
#include "sourcefactory.h"
#include "testbase.h"
#include "testwindow.h"
#include "waitfor.h"
#include "watch.h"
#include "watchbar.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QUdpSocket>

#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>

/** Sources that come, go, fail and are recorded, in the real window. */
class tst_monitorsources : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_dialect.reset(MavlinkDialect::loadBuiltIn()); }
    void countsGoOnOverAReconnection();
    void aServerThatStartsAnewMixesNothingUp();
    void aSerialDeviceGoesOnWhenItIsPluggedInAgain();
    void twoSourcesOfOneSenderStayApart();
    void definitionsThatComeLaterAreUsedForWhatCameBefore();
    void annotationsAreForEitherFormat();
    void faultsOfAnnotationsForTypesThatComeLaterAreEvents();
    void anMcapStreamThroughAPipeIsRecognised();
    void recordingKeepsDamageAndOutlivesTheProgram();
    void recordingThatFailsLeavesReceptionAlone();
    void aFileThatTakesOnlyAPartSaysWhy();
    void timesAreReadAsTheyAreTyped_data();
    void timesAreReadAsTheyAreTyped();

private:
    QByteArray heartbeat(int sequence, quint8 system = 1) const
    {
        MavlinkEncoder encoder(m_dialect->find(0));
        encoder.set("type", 2);
        MavlinkEncoder::FrameHeader header;
        header.sequence = quint8(sequence);
        header.system = system;
        return encoder.toFrame(header);
    }

    QString writeFile(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_folder.filePath(name));
        const bool good = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
        return good ? file.fileName() : QString();
    }

    // Three messages of the type Point of a package.
    static QByteArray points(const QByteArray& package)
    {
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::Zstd, 1000));
        McapWriter& writer = recording.writer;
        const quint16 channel = writer.addChannel(
            "/p", "protobuf", writer.addSchema(package + ".Point", "protobuf", McapFixtures::schema(package)));
        for (int i = 0; i < 3; ++i)
            writer.writeMessage(channel, 0, quint64(i) * McapFixtures::Millisecond, McapFixtures::point(i));
        return recording.finished();
    }

    static QStringList statisticsNames(const TestWindow& window)
    {
        QStringList names;
        window.getStatistics()->updateTree();
        for (int i = 0; i < window.getStatistics()->topLevelItemCount(); ++i)
            for (int j = 0; j < window.getStatistics()->topLevelItem(i)->childCount(); ++j)
                names.append(window.getStatistics()->topLevelItem(i)->child(j)->text(0) + ' ' +
                             window.getStatistics()->topLevelItem(i)->child(j)->text(1));
        names.sort();
        return names;
    }

    std::unique_ptr<MavlinkDialect> m_dialect;
    QTemporaryDir m_folder;
};

void tst_monitorsources::countsGoOnOverAReconnection()
{
    SourceSession::setSecondOfWaiting(5);
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    TestWindow window;
    window.show();
    QVERIFY(window.openAddress(QString("tcp:127.0.0.1:%1").arg(server.serverPort())));
    const SourceSession* const session = window.getSources()->getSession(0);
    QStringList states;
    connect(session, &SourceSession::changed, this, [&]() { states.append(session->getStateText()); });
    for (int i = 1; i <= 3; ++i) {
        QVERIFY(waitFor([&]() { return server.hasPendingConnections(); }));
        const std::unique_ptr<QTcpSocket> socket(server.nextPendingConnection());
        socket->write(heartbeat(i));
        QVERIFY(waitFor([&]() { return session->getCounters().getMessageCount() == quint64(i); }));
        QCOMPARE(int(session->getState()), int(SourceSession::Receiving));
    }
    QVERIFY(waitFor([&]() { return states.contains("ended, again in 1 s"); }));
    QCOMPARE(statisticsNames(window), QStringList("HEARTBEAT 3"));

    // Nobody is there any more: the waits become longer, and end with thirty seconds.
    server.close();
    QVERIFY(waitFor([&]() { return !states.filter("again in 30 s: ").isEmpty(); }, 30000));
    QVERIFY(!states.filter("again in 8 s: ").isEmpty());
    QVERIFY(states.filter("again in 31 s").isEmpty());
    SourceSession::setSecondOfWaiting(1000);
}

void tst_monitorsources::aSerialDeviceGoesOnWhenItIsPluggedInAgain()
{
    SourceSession::setSecondOfWaiting(5);
    const QString path = m_folder.filePath("ttyTest");
    PseudoTerminal device(path);
    TestWindow window;
    window.show();
    QVERIFY(window.openAddress("serial:" + path + "?baud=115200")); // which nobody has plugged in yet
    const SourceSession* const session = window.getSources()->getSession(0);
    QStringList states;
    connect(session, &SourceSession::changed, this, [&]() { states.append(session->getStateText()); });
    QVERIFY(waitFor([&]() { return states.contains("again in 2 s: there is no such serial port"); }));
    for (int i = 1; i <= 2; ++i) {
        QVERIFY(device.plugIn());
        QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Receiving; }));
        device.send(heartbeat(i));
        QVERIFY(waitFor([&]() { return session->getCounters().getMessageCount() == quint64(i); }));
        states.clear();
        device.unplug();
        QVERIFY(waitFor([&]() { return !states.filter(": the device is gone").isEmpty(); }));
    }
    QCOMPARE(statisticsNames(window), QStringList("HEARTBEAT 2"));
    SourceSession::setSecondOfWaiting(1000);
}

// Two topics of one type and one of another: whoever goes by the numbers of channels takes them for one another. In the
// end, the other type is another one of that name.
void tst_monitorsources::aServerThatStartsAnewMixesNothingUp()
{
    SourceSession::setSecondOfWaiting(5);
    FoxgloveServer server("foxglove.sdk.v1");
    TestWindow window;
    window.show();
    window.getWatches()->pin("protobuf/demo.Point/n");
    window.getPlot()->plot("protobuf/demo.Point/n");
    QVERIFY(window.openAddress(server.address()));
    SourceSession* const session = window.getSources()->getSession(0);
    const QString path = m_folder.filePath("restarted.mcap");
    QString error;
    QVERIFY2(session->startRecording(path, &error), qPrintable(error));
    const QByteArray orders[] = {"abc", "cba", "bCa"};
    for (int start = 0; start < 3; ++start) {
        QVERIFY(
            waitFor([&]() { return server.clients == start + 1 && session->getState() == SourceSession::Receiving; }));
        QJsonArray channels;
        for (const char topic : orders[start])
            channels.append(FoxgloveServer::channel(int(channels.size()) + 1, QString("/%1").arg(topic).toLower(),
                                                    "protobuf", topic < 'c' && topic > 'C' ? "demo" : "other",
                                                    topic == 'C' ? "m" : nullptr));
        server.advertise(channels);
        QVERIFY(waitFor([&]() { return server.subscriptions.size() == 3; }));
        for (int i = 0; i < 3; ++i) // 10, 20, 30; 31, 21, 11; 22, 32, 12
            server.sendPoint(server.subscription(i), 10 * ((orders[start].at(i) | 32) - 'a' + 1) + start);
        QVERIFY(waitFor([&]() { return session->getCounters().getMessageCount() == quint64(3 * (start + 1)); }));
        server.socket()->close();
    }
    session->stopRecording();
    SourceSession::setSecondOfWaiting(1000);

    QCOMPARE(statisticsNames(window), QStringList({"demo.Point (/a) 3", "demo.Point (/b) 3", "other.Point (/c) 3"}));
    QStringList shown;
    QVERIFY(waitFor([&]() {
        shown.clear();
        for (int i = 0; i < window.getTree()->topLevelItemCount(); ++i)
            shown.append(window.getTree()->topLevelItem(i)->text(0) + ' ' +
                         window.getTree()->topLevelItem(i)->child(1)->text(2));
        shown.append(window.getWatches()->getWatches().first()->getText());
        return shown == QStringList({"demo.Point 12", "other.Point 32", "12"});
    }));
    QStringList plotted;
    for (const auto& series : window.getPlot()->getSeries())
        plotted.append(
            QString("%1 %2 %3").arg(series->getSender(), series->getValueText()).arg(series->getMessageCount()));
    QCOMPARE(plotted, QStringList({"/a 12 3", "/b 22 3"}));

    QProcess dump;
    dump.start(CORVEL_DUMP_PROGRAM, {"--stats", path});
    QVERIFY(dump.waitForFinished());
    QStringList recorded;
    const QJsonObject statistics = QJsonDocument::fromJson(dump.readAllStandardOutput()).object();
    for (const QJsonValue& row : statistics.value("statistics").toArray())
        recorded.append(row["type"].toString() + ' ' + row["sender"].toString() + ' ' +
                        QString::number(row["messages"].toInt()));
    QCOMPARE(recorded, QStringList({"demo.Point /a 3", "demo.Point /b 3", "other.Point /c 2", "other.Point /c 1"}));
}

void tst_monitorsources::twoSourcesOfOneSenderStayApart()
{
    TestWindow window;
    window.show();
    QVERIFY(window.openAddress(writeFile("north.raw", heartbeat(0) + heartbeat(1) + heartbeat(2))));
    QVERIFY(waitFor([&]() { return statisticsNames(window) == QStringList("HEARTBEAT 3"); }));
    QVERIFY(window.openAddress(writeFile("south.raw", heartbeat(0) + heartbeat(1))));
    QVERIFY(waitFor([&]() {
        return statisticsNames(window) == QStringList({"HEARTBEAT (north.raw) 3", "HEARTBEAT (south.raw) 2"});
    }));
    QCOMPARE(window.getSources()->getSession(1)->getSenderName(0), QString("1:1 @ south.raw"));
    window.getSources()->close(window.getSources()->getSession(0));
    QCOMPARE(statisticsNames(window), QStringList("HEARTBEAT 2"));
    QCOMPARE(window.getSources()->getSession(0)->getSenderName(0), QString("1:1"));
}

void tst_monitorsources::definitionsThatComeLaterAreUsedForWhatCameBefore()
{
    const QString poor = writeFile("poor.xml", "<mavlink><messages><message id=\"4711\" name=\"OTHER\"><field "
                                               "type=\"uint8_t\" name=\"a\">A</field></message></messages></mavlink>");
    const QString rich = writeFile(
        "rich.xml", "<mavlink><messages><message id=\"0\" name=\"HEARTBEAT\"><field type=\"uint8_t\" name=\"type\">T"
                    "</field><field type=\"uint8_t\" name=\"autopilot\">A</field><field type=\"uint8_t\" "
                    "name=\"base_mode\">B</field><field type=\"uint32_t\" name=\"custom_mode\">C</field><field "
                    "type=\"uint8_t\" name=\"system_status\">S</field><field type=\"uint8_t_mavlink_version\" "
                    "name=\"mavlink_version\">V</field></message></messages></mavlink>");
    TestWindow window;
    window.show();
    QVERIFY(window.loadDialect(poor, QString()));
    QVERIFY(window.openAddress("udp:127.0.0.1:24550"));
    const SourceSession* const session = window.getSources()->getSession(0);
    QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Receiving; }));
    QUdpSocket sender;
    for (int i = 0; i < 5; ++i)
        sender.writeDatagram(heartbeat(i), QHostAddress::LocalHost, 24550);
    QVERIFY(waitFor([&]() { return session->getCounters().getUnknownCount() == 5; }));
    QCOMPARE(window.getTree()->topLevelItemCount(), 0);

    QVERIFY(window.loadDialect(rich, QString()));
    QVERIFY(waitFor([&]() { return window.getTree()->topLevelItemCount() == 1; }));
    QTreeWidgetItem* const type = window.getTree()->topLevelItem(0)->child(0);
    QVERIFY(waitFor([&]() { return type->text(2) == "2"; }));
    QCOMPARE(session->getCounters().getMessageCount(), quint64(5));
    QCOMPARE(statisticsNames(window), QStringList("HEARTBEAT 5"));
    sender.writeDatagram(heartbeat(5), QHostAddress::LocalHost, 24550);
    QVERIFY(waitFor([&]() { return statisticsNames(window) == QStringList("HEARTBEAT 6"); }));
}

void tst_monitorsources::annotationsAreForEitherFormat()
{
    SourceOptions options;
    options.address = writeFile("cars", QByteArray("\x02\x08\x05", 3));
    options.definitions = writeFile("car.proto", "syntax = 'proto3'; package t; message Car { int32 speed = 1; }");
    options.typeName = "t.Car";
    options.framing = "varint";
    const QString annotations =
        writeFile("both.json", "{\"messages\": {\"*\": {\"fields\": {\"speed\": {\"confidential\": true}}}, \"t.Car\": "
                               "{\"virtual\": [{\"name\": \"double\", \"expression\": \"2 * speed\"}]}, \"HEARTBEAT\": "
                               "{\"fields\": {\"type\": {\"role\": \"secondary\"}}}}}");
    SourceFactory factory;
    QStringList problems;
    QVERIFY(factory.annotate(annotations, &problems));
    QCOMPARE(problems, QStringList());
    SourceParts parts;
    QString error;
    QVERIFY2(factory.create(options, &parts, &error), qPrintable(error));
    QVERIFY(parts.input->open());
    QCOMPARE(int(parts.opener->run(parts.input.get(), {}, nullptr)), int(StreamOpener::Opened));
    const OpenedStream stream = parts.opener->takeStream();
    stream.decoder->publishTypes(&problems);
    const MessageInfo* const car = stream.decoder->getFormats().constFirst()->getMessageInfo("t.Car");
    QVERIFY(car && car->getFieldInfo("double"));
    QVERIFY(car->getFieldInfo("speed")->isConfidential());

    // What is wrong with the file as such is said once, and so is a name that no MAVLink type has.
    QVERIFY(!factory.annotate(writeFile("bad.json", "{"), &problems));
    QCOMPARE(problems.size(), 1);
    problems.clear();
    QVERIFY(!factory.annotate(writeFile("typo.json", "{\"messages\": {\"HARTBEAT\": {}, \"t.Car\": {}}}"), &problems));
    QCOMPARE(problems.size(), 1);
}

void tst_monitorsources::faultsOfAnnotationsForTypesThatComeLaterAreEvents()
{
    Desk desk;
    QStringList problems;
    // Of a type that no other test's annotations are about.
    QVERIFY(desk.getFactory()->annotate(writeFile("later.json", "{\"messages\": {\"fault.Point\": {\"fields\":\n"
                                                                "{\"nothing\": {\"confidential\": true}}}}}"),
                                        &problems));
    SourceOptions options;
    options.address = writeFile("fault.mcap", points("fault"));
    QString error;
    SourceSession* const session = desk.getSources()->open(options, StreamSource::Playback(), &error);
    QVERIFY2(session, qPrintable(error));
    QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Ended; }));
    QStringList faults;
    for (const EventLog::Entry& entry : desk.getLog()->getEntries())
        if (entry.event.getType() == CorvelEvent::DefinitionProblem)
            faults.append(entry.event.getMessage());
    QCOMPARE(faults,
             QStringList("annotation: " + m_folder.filePath("later.json") + ":2: fault.Point.nothing: unknown field"));
}

void tst_monitorsources::anMcapStreamThroughAPipeIsRecognised()
{
    const QString path = m_folder.filePath("pipe");
    QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    Desk desk;
    SourceOptions options;
    options.address = path;
    QString error;
    SourceSession* const session = desk.getSources()->open(options, StreamSource::Playback(), &error);
    QVERIFY2(session, qPrintable(error));
    // As a slow writer does it.
    QFile writer(path);
    QVERIFY(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const QByteArray bytes = points("piped");
    writer.write(bytes.left(5));
    QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Receiving; }));
    writer.write(bytes.mid(5));
    writer.close();
    QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Ended; }));
    QCOMPARE(session->getCounters().getMessageCount(), quint64(3));
    QCOMPARE(session->getCounters().getSkippedBytes(), quint64(0));
    QCOMPARE(session->getIdentities().getRows().first().info->getFormatInfo()->getName(), QString("protobuf"));
}

void tst_monitorsources::recordingKeepsDamageAndOutlivesTheProgram()
{
    // Damage of every kind, which comes back from the recording as it was.
    QByteArray bad = heartbeat(1);
    bad[12] = char(bad[12] + 1);
    const QByteArray stream = heartbeat(0) + "stray bytes" + heartbeat(1) + bad + heartbeat(2) + heartbeat(3).left(9);
    Desk desk;
    SourceOptions options;
    options.address = writeFile("damaged.raw", stream);
    QString error;
    SourceSession* session = desk.getSources()->open(options, StreamSource::Playback(), &error);
    QVERIFY2(session, qPrintable(error));
    const QString path = m_folder.filePath("damaged.tlog");
    QVERIFY(session->startRecording(path, &error));
    QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Ended; }));
    session->stopRecording();
    QCOMPARE(QFileInfo(path).size(), qint64(stream.size() + 5 * 8));
    const ReceptionCounters before = session->getCounters();
    options.address = path;
    session = desk.getSources()->open(options, StreamSource::Playback(), &error);
    QVERIFY2(session, qPrintable(error));
    QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Ended; }));
    for (const ReceptionCounters& counters : {before, session->getCounters()}) {
        QCOMPARE(counters.getMessageCount(), quint64(3));
        QCOMPARE(counters.getChecksumFailureCount(), quint64(1));
        QCOMPARE(counters.getSkippedBytes(), quint64(11));
        QCOMPARE(counters.getTruncatedBytes(), quint64(9));
    }

    // A program that is killed leaves a recording that can be read.
    const QString killed = m_folder.filePath("killed.tlog");
    QProcess process;
    process.start(CORVEL_MONITOR_PROGRAM, {"--record", killed, "--settings", m_folder.filePath("no.ini")});
    QVERIFY(waitFor([&]() { return QFileInfo(killed).size() > 5000; }, 60000));
    process.kill();
    process.waitForFinished();
    options.address = killed;
    StreamSource::Playback playback;
    playback.factor = 0;
    session = desk.getSources()->open(options, playback, &error);
    QVERIFY2(session, qPrintable(error));
    QVERIFY(waitFor([&]() { return session->getState() == SourceSession::Ended; }));
    QVERIFY(session->getCounters().getMessageCount() > 80);
    QCOMPARE(session->getCounters().getChecksumFailureCount(), quint64(0));
    QCOMPARE(session->getCounters().getSkippedBytes(), quint64(0));
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
    QVERIFY(waitFor([&]() { return !session->getRecorder().isRecording(); }, 30000));
    QCOMPARE(window.getLastProblem(),
             QString("Recording to /dev/full ended: No space left on device. What is in the file can be read."));
    const quint64 count = session->getCounters().getMessageCount();
    QVERIFY(waitFor([&]() { return session->getCounters().getMessageCount() > count; }));
    QCOMPARE(int(session->getState()), int(SourceSession::Receiving));
    for (QMessageBox* box : window.findChildren<QMessageBox*>())
        box->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_monitorsources::aFileThatTakesOnlyAPartSaysWhy()
{
    // As with a disk that becomes full, the first write ends short and only the next one has a reason.
    rlimit before;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit limit = before;
    limit.rlim_cur = 100000;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    RecordingFile file(m_folder.filePath("limited.tlog"));
    const bool isOpen = file.open(QIODevice::WriteOnly);
    file.write(QByteArray(150000, 'x'));
    file.close();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    QVERIFY(isOpen);
    QCOMPARE(file.getProblem(), QString("File too large"));
    QCOMPARE(file.getWrittenSize(), qint64(100000));
    QCOMPARE(QFileInfo(m_folder.filePath("limited.tlog")).size(), qint64(100000));
}

void tst_monitorsources::timesAreReadAsTheyAreTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("time");
    QTest::newRow("seconds since the start") << "+90"
                                             << "2015-07-04 23:51:30.500";
    QTest::newRow("minutes since the start") << "+1:30.5"
                                             << "2015-07-04 23:51:31.000";
    QTest::newRow("hours since the start") << "+1:02:03"
                                           << "2015-07-05 00:52:03.500";
    QTest::newRow("time of day") << " 23:55:01.25"
                                 << "2015-07-04 23:55:01.250";
    QTest::newRow("of the start itself") << "23:50:00"
                                         << "2015-07-04 23:50:00.000";
    QTest::newRow("of the next day") << "0:10"
                                     << "2015-07-05 00:10:00.000";
    QTest::newRow("date") << "2015-07-05 00:49:40.5"
                          << "2015-07-05 00:49:40.500";
    for (const char* text : {"", "12", "1:70", "1:2:3:4", "-5:00", "+", "+a", "25:00", "nan:1", "2015-13-05 00:00:00"})
        QTest::newRow(text) << text << "";
}

void tst_monitorsources::timesAreReadAsTheyAreTyped()
{
    QFETCH(QString, text);
    QFETCH(QString, time);
    const qint64 start =
        QDateTime::fromString("2015-07-04T23:50:00.500Z", Qt::ISODateWithMs).toMSecsSinceEpoch() * 1000;
    qint64 result = 0;
    QCOMPARE(PlaybackTime::parse(text, start, &result), !time.isEmpty());
    if (!time.isEmpty())
        QCOMPARE(PlaybackTime::clockText(result), time);
}

QTEST_MAIN(tst_monitorsources)
#include "tst_monitorsources.moc"
