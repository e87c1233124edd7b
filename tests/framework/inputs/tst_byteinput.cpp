#include "inputfixtures.h"
#include "streamdecoder.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"
#include "waitfor.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zstd.h>

namespace
{

QByteArray manyBytes(int size)
{
    QByteArray bytes(size, 0);
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    return bytes;
}

// A port that was free a moment ago.
template <typename Socket>
quint16 freePort(const QHostAddress& host = QHostAddress::LocalHost)
{
    Socket socket;
    socket.bind(host, 0);
    return socket.localPort();
}

/** "udp: 0.0.0.0 14550, udp:0.0.0.0:14550": the kind, the parts of an address and its own text, or the error. */
QString partsOf(const QString& given)
{
    InputAddress address;
    InputAddress reread;
    QString error;
    if (!InputAddress::parse(given, &address, &error))
        return error;
    const QString again = address.toString();
    if (!InputAddress::parse(again, &reread, &error) || reread.toString() != again || reread.kind != address.kind)
        return text("it does not read itself");
    const QString parts = address.port ? QStringLiteral("%1 %2, ").arg(address.host).arg(address.port) : QString();
    return text(*address.kind->schemes ? address.kind->schemes : "file") + QLatin1Char(' ') + parts + again;
}

} // namespace

class TestByteInput : public TestBase
{
    Q_OBJECT

private:
    TestFolder m_folder;

    QByteArray makePipe(const QString& name)
    {
        const QByteArray path = QFile::encodeName(m_folder.filePath(name));
        if (mkfifo(path.constData(), 0600) != 0)
            qWarning("%s cannot be made", path.constData());
        return path;
    }

    /** What comes of a folder of files "NAME=BYTES", of which "z:" are compressed and "z!" cut off, and what is told.
     */
    static QString readFolder(const QString& given)
    {
        TestFolder folder;
        for (const QString& file : given.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
            QByteArray bytes = file.section(QLatin1Char('='), 1).toUtf8();
            if (bytes.startsWith('z')) {
                QByteArray packed(100, 0);
                packed.resize(int(ZSTD_compress(packed.data(), 100, bytes.constData() + 2, bytes.size() - 2u, 1)));
                bytes = packed.left(packed.size() - (bytes.at(1) == '!' ? 3 : 0));
            }
            folder.write(file.section(QLatin1Char('='), 0, 0), bytes);
        }
        const std::unique_ptr<ByteInput> input(ByteInput::create(InputAddress::ofFile(folder.path())));
        if (!input->open())
            return input->getErrorString().remove(folder.path() + text(": "));
        QStringList all;
        QByteArray bytes;
        while (input->read(&bytes, 0) == ByteInput::Data)
            all.append(QString::fromUtf8(bytes));
        for (const StreamProblem& notice : input->takeNotices())
            all.append(notice.text);
        if (!input->seek(input->getSize() - 1) || input->read(&bytes, 0) != ByteInput::Data || bytes.size() != 1)
            all.append(text("cannot go to its last byte"));
        return all.join(text("; "));
    }

private Q_SLOTS:
    void foldersAreReadAsOneFile()
    {
        const TextRow rows[] = {
            {"b_10.mcap=CC|b_2.mcap=BB|b_1.mcap=AA|other.txt=X", "AA; BB; CC"},
            {"b.mcap=BB|a.mcap=AA", "AA; BB"},
            {"a_1.mcap=B|a_0.mcap.zstd=z:AAAA", "AAAA; B"},
            {"a_1.mcap=B|a_0.mcap.zstd=z!AAAA", "A; B; a_0.mcap.zstd breaks off; what there is is read"},
            {"a_1.mcap=B|a_0.mcap.zstd=AAAA",
             "B; a_0.mcap.zstd is damaged (Unknown frame descriptor); what comes before is "
             "read; a_0.mcap.zstd is empty"},
            {"metadata.yaml=rosbag2_bagfile_information: {relative_file_paths: [x/b_1.mcap, b_2.mcap, b_0.mcap]}|"
             "b_0.mcap=A|b_1.mcap=B|c.mcap=C",
             "B; A; C; b_2.mcap is missing, which metadata.yaml names; c.mcap is read last, for metadata.yaml does not "
             "name it"},
            {"metadata.yaml=a: b|b_1.mcap=B|b_0.mcap=A", "A; B; metadata.yaml: it says nothing of a recording"},
            {"metadata.yaml=rosbag2_bagfile_information: {storage_identifier: sqlite3}",
             "metadata.yaml: a recording in sqlite3, which cannot be read"},
            {"a.txt=A", "there is no recording in this folder: no file *.mcap"},
            {"a.mcap=", "a.mcap is empty"},
        };
        checkRows(rows, readFolder);
    }

    void addresses()
    {
        const TextRow rows[] = {
            {"-", "- -"},
            {"flight.tlog", "file flight.tlog"},
            {"./udp:x", "file ./udp:x"},
            {"udp:", "udp: 0.0.0.0 14550, udp:0.0.0.0:14550"},
            {"udp::14551", "udp: 0.0.0.0 14551, udp:0.0.0.0:14551"},
            {"udp://127.0.0.1:5", "udp: 127.0.0.1 5, udp:127.0.0.1:5"},
            {"udp:[::]:14550", "udp: :: 14550, udp:[::]:14550"},
            {"udp:[::1]", "udp: ::1 14550, udp:[::1]:14550"},
            {"tcp:drone", "tcp: drone 5760, tcp:drone:5760"},
            {"tcp://drone.example:65535", "tcp: drone.example 65535, tcp:drone.example:65535"},
            {"tcp:[fe80::1]:1", "tcp: fe80::1 1, tcp:[fe80::1]:1"},
            {"wss://host.example/some/path", "ws:// wss:// host.example 8765, wss://host.example:8765/some/path"},
            {"ws:host", "file ws:host"},
            {"ws://:99", "ws://:99: this is no address; ws://HOST:PORT is one"},
            {"serial:ttyS0", "serial: serial:ttyS0"},
            {"serial:///dev/ttyS0?format=7E1.5&baud=9600", "serial: serial:/dev/ttyS0?baud=9600&format=7E1.5"},
            {"serial:/dev/a%26b?flow=hard%77are", "serial: serial:/dev/a%26b?flow=hardware"},
            {"serial:?baud=1", "serial:?baud=1: no serial port is named"},
            {"serial:/dev/x?", "serial:/dev/x?: \"\" is no parameter; NAME=VALUE is one"},
            {"serial:/dev/x?bits=8",
             "serial:/dev/x?bits=8: there is no parameter \"bits\"; there is: baud, format, flow"},
            {"serial:/dev/x?baud=1&baud=2", "serial:/dev/x?baud=1&baud=2: \"baud\" is told twice"},
            {"serial:/dev/x?baud=", "serial:/dev/x?baud=: baud is \"\"; it is a number such as 57600"},
            {"serial:/dev/x?baud=+9", "serial:/dev/x?baud=+9: baud is \"+9\"; it is a number such as 57600"},
            {"serial:/dev/x?format=9N1", "serial:/dev/x?format=9N1: format is \"9N1\"; it has data bits, parity (N, E, "
                                         "O, M or S) and stop bits, such as 8N1"},
            {"serial:/dev/x?format=8N3", "serial:/dev/x?format=8N3: format is \"8N3\"; it has data bits, parity (N, E, "
                                         "O, M or S) and stop bits, such as 8N1"},
            {"serial:/dev/x?flow=xon", "serial:/dev/x?flow=xon: flow is \"xon\"; it is none, hardware or software"},
            {"nats://anna@h,h2:5,[::1]/f.*.state,b.>?tls=on&creds=/c",
             "nats:// nats: h 4222, nats://anna@h:4222,h2:5,[::1]/f.*.state,b.>?creds=/c&tls=on"},
            {"nats://h", "nats://h: no subject is named; \">\" stands for all"},
            {"nats://h/a..b", "nats://h/a..b: \"a..b\" is no subject; \"fleet.*.state\" and \"fleet.>\" are some"},
            {"nats://h/a,>.b", "nats://h/a,>.b: \">.b\" is no subject; \"fleet.*.state\" and \"fleet.>\" are some"},
            {"nats://h,h2:0/a", "nats://h,h2:0/a: \"h2:0\" is no server; HOST:PORT is one"},
            {"nats://h/a?tls=off", "nats://h/a?tls=off: tls is \"off\"; it is auto or on"},
            {"nats://anna:geheim@h/a", "nats://anna:***@h/a: a password stands in no address, which is shown and "
                                       "logged; a file, the environment or the dialog has it"},
            {"jetstream:h:5/S", "jetstream:// jetstream: h 5, jetstream://h:5/S"},
            {"jetstream://h/S/a.>?end=stop", "jetstream:// jetstream: h 4222, jetstream://h:4222/S/a.>?end=stop"},
            {"jetstream://h", "jetstream://h: no stream is named; jetstream://HOST/STREAM names one"},
            {"jetstream://h/a.b", "jetstream://h/a.b: \"a.b\" is no name of a stream"},
            {"jetstream://h/S?end=no", "jetstream://h/S?end=no: end is \"no\"; it is follow or stop"},
            {"", "no input is named"},
            {"udp::0", "udp::0: \"0\" is no port; ports are 1 to 65535"},
            {"udp::65536", "udp::65536: \"65536\" is no port; ports are 1 to 65535"},
            {"tcp:drone:+1", "tcp:drone:+1: \"+1\" is no port; ports are 1 to 65535"},
            {"tcp::5760", "tcp::5760: no host is named"},
            {"mqtt://anna@h/f/+/a,b/#?password-file=/p",
             "mqtt:// mqtt: h 1883, mqtt://anna@h:1883/f/+/a,b/#?password-file=/p"},
            {"mqtts:a%40b@[::1]:1/x@y:z", "mqtts:// mqtts: ::1 1, mqtts://a%40b@[::1]:1/x@y:z"},
            {"mqtt://h", "mqtt:// mqtt: h 1883, mqtt://h:1883/#"},
            {"mqtt://anna:geh@im?/x@h/a", "mqtt://anna:***@h/a: a password stands in no address, which is shown and "
                                          "logged; a file, the environment or the dialog has it"},
            {"mqtt://h/a?password=geheim", "mqtt://h/a?password=***: there is no parameter \"password\"; there is: "
                                           "password-file"},
            {"mqtt://h/$share/g/a", "mqtt://h/$share/g/a: \"$share/g/a\" is a subscription that is shared: it would "
                                    "take messages from others"},
            {"mqtt://h/a,b+",
             "mqtt://h/a,b+: \"b+\" is no filter of topics; \"fleet/+/state\" and \"fleet/#\" are some"},
            {"mqtts://h/a?cert=/c", "mqtts://h/a?cert=/c: a certificate (cert) and its key (key) belong together"},
            {"udp:drone:1", "udp:drone:1: \"drone\" is no address to listen on; it is written in numbers"},
            {"udp:::1", "udp:::1: an IPv6 address stands in brackets"},
            {"tcp:[::1", "tcp:[::1: the bracket of the IPv6 address is not closed"},
            {"tcp:[drone]:1", "tcp:[drone]:1: \"drone\" is no IPv6 address"},
            {"tcp:[::1]5760", "tcp:[::1]5760: \"5760\" is not expected behind the host"}};
        checkRows(rows, partsOf);
    }

    void readsAFileInPieces()
    {
        const QByteArray content = manyBytes(200001);
        const auto input = inputFor(m_folder.write(content));
        QVERIFY(input->open() && !input->isLive());
        QCOMPARE(input->getSize(), qint64(content.size()));
        QVERIFY(readAll(input.get()) == content + "<end>");
        QCOMPARE(readAll(input.get()), QByteArray("<end>"));
        QCOMPARE(openAndReadAll(m_folder.write(QByteArray())), QByteArray("<end>"));

        QFile file(m_folder.write("begin"));
        QVERIFY(file.resize(5LL * 1024 * 1024 * 1024)); // sparse, and not read whole
        const auto huge = inputFor(file.fileName());
        QVERIFY(huge->open());
        QCOMPARE(huge->getSize(), file.size());
        QByteArray piece;
        QCOMPARE(huge->read(&piece, 0), ByteInput::Data);
        QVERIFY(piece.startsWith(QByteArray("begin\0", 6)) && piece.size() <= 64 * 1024);
    }

    void errorsNameTheInputAndTheReason()
    {
        const QByteArray folder = m_folder.path().toUtf8();
        QCOMPARE(openAndReadAll(m_folder.filePath("missing")),
                 "<not opened: " + folder + "/missing: No such file or directory>");
        QCOMPARE(openAndReadAll(m_folder.path()),
                 "<not opened: " + folder + ": there is no recording in this folder: no file *.mcap>");
        if (geteuid() != 0) {
            QFile::setPermissions(m_folder.write(text("secret"), "x"), QFile::Permissions());
            QCOMPARE(openAndReadAll(m_folder.filePath("secret")),
                     "<not opened: " + folder + "/secret: Permission denied>");
        }
        // The first page of a process's memory is never there: a file that opens and then fails to be read.
        QCOMPARE(openAndReadAll("/proc/self/mem"), QByteArray("<failed: /proc/self/mem: Input/output error>"));
        const QByteArray address = "tcp:127.0.0.1:" + QByteArray::number(freePort<QTcpSocket>());
        QCOMPARE(openAndReadAll(address), "<not opened: " + address + ": Connection refused>");
    }

    void aPipeIsReadAsItsBytesCome()
    {
        const QByteArray path = makePipe("pipe");
        const auto input = inputFor(QFile::decodeName(path));
        QVERIFY(input->open() && input->isLive());
        QCOMPARE(input->getSize(), qint64(-1));
        QByteArray piece;
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);
        const int writer = open(path.constData(), O_WRONLY);
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);
        QCOMPARE(::write(writer, "abc", 3), ssize_t(3));
        QCOMPARE(input->read(&piece, Patience), ByteInput::Data);
        QCOMPARE(piece, QByteArray("abc"));
        close(writer);
        QCOMPARE(readAll(input.get()), QByteArray("<end>"));
    }

    void datagramsStayApart()
    {
        const QByteArray datagrams[] = {"ab", QByteArray(), manyBytes(65507), "c"};
        for (const char* host : {"127.0.0.1", "::1"}) {
            QUdpSocket sender;
            if (!sender.bind(QHostAddress(text(host)), 0))
                continue; // this machine has no such address
            InputAddress address;
            QString error;
            QVERIFY(InputAddress::parse(text("udp:"), &address, &error));
            address.host = text(host);
            address.port = freePort<QUdpSocket>(QHostAddress(address.host));
            const std::unique_ptr<ByteInput> input(ByteInput::create(address));
            QVERIFY2(input->open(), qPrintable(input->getErrorString()));
            QVERIFY(input->isLive() && input->isDatagram());
            QByteArray piece;
            QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);
            for (const QByteArray& datagram : datagrams)
                sender.writeDatagram(datagram, QHostAddress(address.host), address.port);
            for (const QByteArray& datagram : datagrams) {
                QCOMPARE(input->read(&piece, Patience), ByteInput::Data);
                QVERIFY(piece == datagram);
            }
            QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);
            QCOMPARE(openAndReadAll(address.toString()),
                     "<not opened: " + address.toString().toUtf8() + ": the port is in use by another program>");
        }
    }

    void aConnectionIsReadToItsEnd()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const auto input = inputFor(QStringLiteral("tcp:localhost:%1").arg(server.serverPort()));
        QVERIFY2(input->open(), qPrintable(input->getErrorString()));
        QVERIFY(input->isLive() && !input->isDatagram());
        QVERIFY(waitFor([&] { return server.hasPendingConnections(); }));
        QTcpSocket* const peer = server.nextPendingConnection();
        QByteArray piece;
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);

        // More than any buffer between the two takes, so that both ends have to work in turn.
        const QByteArray content = manyBytes(300000);
        peer->write(content);
        QByteArray received;
        QVERIFY(waitFor([&] {
            if (input->read(&piece, 0) == ByteInput::Data)
                received += piece;
            return received.size() >= content.size();
        }));
        QVERIFY(received == content);
        peer->disconnectFromHost();
        QCOMPARE(readAll(input.get()), QByteArray("<end>"));
    }

    void cancellingEndsWaiting()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QString tcp = QStringLiteral("tcp:127.0.0.1:%1").arg(server.serverPort());
        for (const QString& name : {QFile::decodeName(makePipe("silent")), tcp,
                                    QStringLiteral("udp:127.0.0.1:%1").arg(freePort<QUdpSocket>())}) {
            const auto input = inputFor(name);
            QByteArray piece;
            QVERIFY2(input->open() && isCancelled(input.get(), [&] { input->read(&piece, 60000); }), qPrintable(name));
            QCOMPARE(input->read(&piece, 60000), ByteInput::Nothing);
        }
        const auto early = inputFor(tcp);
        early->cancel();
        QVERIFY(!early->open());
    }
};

QTEST_GUILESS_MAIN(TestByteInput)
#include "tst_byteinput.moc"
