#include "samplemessage.h"
#include "shellrun.h"
#include "testbase.h"
#include "testfolder.h"
#include "waitfor.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>
#include <QWebSocket>
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
#include <QWebSocketHandshakeOptions>
#endif

using namespace SampleMessage;

/** What corvel-relay passes on, and what it says of that. */
class TestRelay : public TestBase
{
    Q_OBJECT

private:
    TestFolder m_folder;

    /** A port that nobody uses now. */
    static quint16 freePort()
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        return server.serverPort();
    }

    /** Starts a relay from standard input to a Foxglove server, and gives the address of that. */
    QString startServer(QProcess* relay)
    {
        const quint16 port = freePort();
        startInShell(relay, QString("exec corvel-relay - --to foxglove::%1").arg(port), m_folder.path());
        waitFor([&] {
            QTcpSocket socket;
            socket.connectToHost(QHostAddress::LocalHost, port);
            return socket.waitForConnected();
        });
        return QString("ws://127.0.0.1:%1").arg(port);
    }

private Q_SLOTS:
    void initTestCase();
    void passesOn();
    void whatWasKilledCanBeReadAndGoneOnWith();
    void sendsFramesAsDatagrams();
    void servesFoxgloveClients();
    void refusesWhatAFoxgloveServerHasNot();
};

void TestRelay::initTestCase()
{
    m_folder.write("test.xml", Dialect);
    m_folder.write("s.bin", QByteArray::fromHex(Sample1 + Sample2 + Sample3));
    m_folder.write("there.mcap", "what was there");
    // What a recording says of its fields, without what the container says.
    m_folder.write("fields", "corvel-dump $* | sed 's/.*\"fields\"://'\n");
    QCOMPARE(ShellRun("corvel-simulate --duration 20 f.tlog", m_folder.path()).said(), QString());
}

void TestRelay::passesOn()
{
    static const TextRow rows[] = {
        // All kinds of fields are the same in Protocol Buffers, also what is absent.
        {"corvel-relay --definitions test.xml s.bin --to s.mcap; sh fields --definitions test.xml s.bin > 1; sh fields "
         "s.mcap > 2; "
         "cmp 1 2 && wc -l < 2; corvel-dump s.mcap | sed 's/\"fields.*//;q'",
         "3\n"
         "{'time':'...000Z','format':'protobuf','sender':'7:9','type':'SAMPLE','sequence':null,"},
        {"sh fields --interpreted s.mcap | sed q",
         "{'letter':'65',...'tenthf':'0.1 "
         "m/s','none':'nan','below':'-inf',...,'list':['1','0','65535'],'lights':'13'}}"},
        // A whole flight, into two outputs at once.
        {"corvel-relay f.tlog --to f.mcap g.tlog; cmp f.tlog g.tlog; sh fields f.tlog > 1; sh fields f.mcap > 2; cmp 1 "
         "2; "
         "corvel-dump f.tlog | cut -d, -f1,3,4 > 1; corvel-dump f.mcap | cut -d, -f1,3,4 | sed s/000Z/Z/ | cmp - 1 && "
         "wc -l < 1",
         "2795"},
        // What others can read stays as it is, byte for byte.
        {"corvel-simulate --robot --duration 1 r.mcap; corvel-relay r.mcap --to r2.mcap; corvel-dump r.mcap > 1; "
         "corvel-dump r2.mcap | cmp - 1 && wc -l < 1",
         "282"},
        {"corvel-relay --definitions test.xml s.bin ./s.bin --to two.mcap; sh fields two.mcap | wc -l", "6"},
        {"corvel-relay f.tlog --select '*/HEARTBEAT @ 1:1' --to h.mcap; sh fields h.mcap | wc -l", "20"},

        // Files one after the other, of which the oldest are deleted.
        {"mkdir s; corvel-relay f.tlog --to s/x.mcap s/y.tlog --split-time 8s; ls s | cut -c1-9; "
         "corvel-dump s/x-000002*.mcap | wc -l; corvel-relay f.tlog --to s/y.tlog --split-size 10k --keep 25k; "
         "ls s | grep y | cut -c1-9",
         "x-000001-\nx-000002-\nx-000003-\ny-000001-\ny-000002-\ny-000003-\n1112\ny-000013-\ny-000014-\ny-000015-"},
        // What is there stays.
        {"corvel-relay s.bin --to there.mcap; cat there.mcap; "
         "corvel-relay --definitions test.xml s.bin --to there.mcap --overwrite; sh fields there.mcap | wc -l",
         "what was there3\n! corvel-relay: there.mcap is there already; --overwrite replaces it"},

        {"corvel-relay r.mcap --to r.tlog r3.mcap; cmp r2.mcap r3.mcap",
         "! corvel-relay: r.tlog does not take what r.mcap brings: only MAVLink has frames that can be passed on as "
         "they "
         "came"},
        {"corvel-relay missing --to a.mcap", "! corvel-relay: missing: No such file or directory\n= 2"},
        {"corvel-relay s.bin --to no/a.mcap", "! corvel-relay: no/a.mcap: no files can be written to no\n= 2"},
        {"corvel-relay --to a.mcap", "! corvel-relay: no input is named\n! corvel-relay: see corvel-relay --help\n= 1"},
        {"corvel-relay a",
         "! corvel-relay: no output is named: --to OUTPUT\n! corvel-relay: see corvel-relay --help\n= 1"},
        {"corvel-relay a --to b",
         "! corvel-relay: b is no output; there is: ...\n! corvel-relay: see corvel-relay --help\n= 1"},
        {"corvel-relay a --to b.mcap b.mcap",
         "! corvel-relay: b.mcap is named twice\n! corvel-relay: see corvel-relay --help\n= 1"},
        {"corvel-relay a --to b.mcap --split-size 1X", "! corvel-relay: --split-size: \"1X\" is no number above 0 with "
                                                       "a unit\n! corvel-relay: see corvel-relay --help\n= 1"},
        {"corvel-relay a --to b.mcap --keep 1G",
         "! corvel-relay: --keep needs --split-size or --split-time: only whole files are deleted\n! corvel-relay: see "
         "corvel-relay --help\n= 1"},
    };
    check(rows, m_folder.path());
}

void TestRelay::whatWasKilledCanBeReadAndGoneOnWith()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress(QHostAddress::LocalHost), 0));
    const quint16 port = socket.localPort();
    socket.close();
    for (const char* name : {"k.tlog", "k-000001.tlog"}) {
        QProcess process;
        startInShell(&process, QString("exec corvel-relay udp:127.0.0.1:%1 --to k.tlog").arg(port), m_folder.path());
        QVERIFY(waitFor([&] {
            socket.writeDatagram(QByteArray::fromHex(Heartbeat), QHostAddress::LocalHost, port);
            return QFileInfo(m_folder.filePath(name)).size() > 0;
        }));
        const bool isFirst = name[1] == '.';
        isFirst ? process.kill() : process.terminate();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), isFirst ? 9 : 0);
        QVERIFY(ShellRun(QString("corvel-dump %1").arg(name), m_folder.path()).output.contains("HEARTBEAT"));
    }
}

void TestRelay::sendsFramesAsDatagrams()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress(QHostAddress::LocalHost), 0));
    const QString command = QString("corvel-relay --definitions test.xml s.bin --to udp:localhost:%1");
    QCOMPARE(ShellRun(command.arg(socket.localPort()), m_folder.path()).said(), QString());
    QByteArrayList datagrams;
    for (int i = 0; i < 3; ++i) {
        QVERIFY(socket.hasPendingDatagrams() || socket.waitForReadyRead());
        datagrams.append(QByteArray(256, 0));
        datagrams.last().resize(int(socket.readDatagram(datagrams.last().data(), 256)));
    }
    QCOMPARE(datagrams, QByteArrayList({QByteArray::fromHex(Sample1), QByteArray::fromHex(Sample2),
                                        QByteArray::fromHex(Sample3)}));
}

void TestRelay::servesFoxgloveClients()
{
    QProcess relay;
    QProcess dump;
    const QString address = startServer(&relay);
    startInShell(&dump, "exec corvel-dump > served " + address, m_folder.path()); // a pipe would be full soon
    QByteArray told;
    QVERIFY(waitFor([&] { return (told += relay.readAllStandardError()).contains("is connected"); }));
    QFile flight(m_folder.filePath("f.tlog"));
    QVERIFY(flight.open(QIODevice::ReadOnly));
    relay.write(flight.readAll());
    relay.closeWriteChannel();
    QVERIFY(relay.waitForFinished());
    QCOMPARE(relay.exitCode(), 0);
    dump.waitForFinished();
    const auto fieldsOf = [](const QByteArray& lines) {
        QByteArrayList fields;
        for (const QByteArray& line : lines.split('\n'))
            fields.append(line.mid(line.indexOf("\"type\"")).replace("\"sequence\":null", "\"sequence\":"));
        std::sort(fields.begin(), fields.end());
        return fields;
    };
    const ShellRun expected("corvel-dump f.tlog | sed 's/\"sequence\":[0-9]*/\"sequence\":/'", m_folder.path());
    QCOMPARE(fieldsOf(ShellRun("cat served", m_folder.path()).output), fieldsOf(expected.output));
}

void TestRelay::refusesWhatAFoxgloveServerHasNot()
{
    static const TextRow rows[] = {
        {"{'op':'subscribe','subscriptions':[{'id':1,'channelId':7}]}", "there is no channel 7"},
        {"{'op':'subscribe','subscriptions':[{'id':1}]}", "a subscription needs the numbers id and channelId"},
        {"{'op':'subscribe','subscriptions':[{'id':-1,'channelId':1}]}",
         "a subscription needs the numbers id and channelId"},
        {"{'op':'getParameters'}", "this server has no getParameters"},
        {"[", "this is no request"},
    };
    QProcess relay;
    QNetworkRequest request{QUrl(startServer(&relay))};
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
    QWebSocketHandshakeOptions options;
    options.setSubprotocols({"foxglove.websocket.v1"});
    QWebSocket socket;
    socket.open(request, options);
#else
    QWebSocket socket;
    socket.open(request);
#endif
    QString answer;
    connect(&socket, &QWebSocket::textMessageReceived, this, [&](const QString& message) { answer = message; });
    QVERIFY(waitFor([&] { return answer.contains("\"advertise\""); }));
    checkRows(rows, [&](QString given) {
        answer.clear();
        socket.sendTextMessage(given.replace('\'', '"'));
        waitFor([&] { return !answer.isEmpty(); });
        return QJsonDocument::fromJson(answer.toUtf8()).object().value("message").toString();
    });
    relay.closeWriteChannel();
    QVERIFY(relay.waitForFinished());
}

QTEST_GUILESS_MAIN(TestRelay)
#include "tst_relay.moc"
