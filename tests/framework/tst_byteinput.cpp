#include "byteinput.h"
#include "testbase.h"
#include "waitfor.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QUdpSocket>

#include <csignal>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace
{

const int Patience = 10000;

std::unique_ptr<ByteInput> inputFor(const QString& text)
{
    InputAddress address;
    QString error;
    if (!InputAddress::parse(text, &address, &error))
        qWarning("%s", qPrintable(error));
    return std::unique_ptr<ByteInput>(ByteInput::create(address));
}

// The bytes up to the end, and behind them how it ended.
QByteArray readAll(ByteInput* input)
{
    QByteArray all;
    QByteArray piece;
    for (;;) {
        switch (input->read(&piece, Patience)) {
        case ByteInput::Data:
            if (piece.size() > 64 * 1024)
                return "a piece is too large";
            all += piece;
            break;
        case ByteInput::Nothing:
            return all + "<nothing>";
        case ByteInput::End:
            return all + "<end>";
        case ByteInput::Failed:
            return all + "<failed: " + input->getErrorString().toUtf8() + ">";
        }
    }
}

QByteArray manyBytes(int size)
{
    QByteArray bytes(size, 0);
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    return bytes;
}

// A port that was free a moment ago.
template <typename Socket>
quint16 freePort(const QHostAddress& host)
{
    Socket socket;
    socket.bind(host, 0);
    return socket.localPort();
}

} // namespace

class TestByteInput : public TestBase
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString write(const QString& name, const QByteArray& bytes)
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qWarning("%s cannot be written", qPrintable(name));
        return file.fileName();
    }

    // Reads on another thread until this one cancels; what read() gave, and in time.
    static QString cancelWhileReading(ByteInput* input)
    {
        std::atomic<int> status(-1);
        std::thread reader([&] {
            QByteArray bytes;
            status = input->read(&bytes, 60000);
        });
        QElapsedTimer timer;
        timer.start();
        input->cancel();
        reader.join();
        return timer.elapsed() < 5000 ? QString::number(status) : QStringLiteral("too late");
    }

private Q_SLOTS:
    void addresses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* text, const char* expected) {
            QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(expected);
        };
        row("-", "stdin -");
        row("flight.tlog", "file flight.tlog");
        row("./udp:x", "file ./udp:x");
        row("udp:", "udp 0.0.0.0 14550, udp:0.0.0.0:14550");
        row("udp::14551", "udp 0.0.0.0 14551, udp:0.0.0.0:14551");
        row("udp:127.0.0.1", "udp 127.0.0.1 14550, udp:127.0.0.1:14550");
        row("udp://127.0.0.1:5", "udp 127.0.0.1 5, udp:127.0.0.1:5");
        row("udp:[::]:14550", "udp :: 14550, udp:[::]:14550");
        row("udp:[::1]", "udp ::1 14550, udp:[::1]:14550");
        row("tcp:drone", "tcp drone 5760, tcp:drone:5760");
        row("tcp://drone.example:65535", "tcp drone.example 65535, tcp:drone.example:65535");
        row("tcp:[fe80::1]:1", "tcp fe80::1 1, tcp:[fe80::1]:1");
        row("", "no input is named");
        row("udp::0", "udp::0: \"0\" is no port; ports are 1 to 65535");
        row("udp::65536", "udp::65536: \"65536\" is no port; ports are 1 to 65535");
        row("tcp:drone:+1", "tcp:drone:+1: \"+1\" is no port; ports are 1 to 65535");
        row("tcp:drone:http", "tcp:drone:http: \"http\" is no port; ports are 1 to 65535");
        row("tcp::5760", "tcp::5760: no host is named");
        row("tcp:", "tcp:: no host is named");
        row("udp:drone:1", "udp:drone:1: \"drone\" is no address to listen on; it is written in numbers");
        row("udp:::1", "udp:::1: an IPv6 address stands in brackets");
        row("tcp:[::1", "tcp:[::1: the bracket of the IPv6 address is not closed");
        row("tcp:[drone]:1", "tcp:[drone]:1: \"drone\" is no IPv6 address");
        row("tcp:[::1]5760", "tcp:[::1]5760: \"5760\" is not expected behind the host");
    }

    void addresses()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        InputAddress address;
        QString result;
        if (InputAddress::parse(text, &address, &result)) {
            const QString again = address.toString();
            if (address.kind == InputAddress::File)
                result = QLatin1String("file ") + address.path;
            else if (address.kind == InputAddress::StandardInput)
                result = QLatin1String("stdin ") + again;
            else
                result = QStringLiteral("%1 %2 %3, %4")
                             .arg(QLatin1String(address.kind == InputAddress::UdpListen ? "udp" : "tcp"), address.host)
                             .arg(address.port)
                             .arg(again);
            InputAddress reread;
            QString error;
            QVERIFY(InputAddress::parse(again, &reread, &error));
            QCOMPARE(reread.toString(), again);
        }
        QCOMPARE(result, expected);
    }

    void readsAFileInPieces()
    {
        const QByteArray content = manyBytes(200001);
        const auto input = inputFor(write("a.bin", content));
        QVERIFY(input->open());
        QCOMPARE(input->getSize(), qint64(content.size()));
        QVERIFY(!input->isLive());
        QVERIFY(readAll(input.get()) == content + "<end>");
        QCOMPARE(readAll(input.get()), QByteArray("<end>"));

        const auto empty = inputFor(write("empty", QByteArray()));
        QVERIFY(empty->open());
        QCOMPARE(readAll(empty.get()), QByteArray("<end>"));
    }

    void aHugeFileIsNotReadWhole()
    {
        const qint64 size = 5LL * 1024 * 1024 * 1024;
        QFile file(write("huge", "begin"));
        QVERIFY(file.resize(size));
        const auto input = inputFor(file.fileName());
        QVERIFY(input->open());
        QCOMPARE(input->getSize(), size);
        QByteArray piece;
        QCOMPARE(input->read(&piece, 0), ByteInput::Data);
        QCOMPARE(piece.left(6), QByteArray("begin\0", 6));
        QVERIFY(piece.size() <= 64 * 1024);
    }

    void errorsNameTheInputAndTheReason()
    {
        const QString missing = m_folder.filePath("missing.tlog");
        const auto noFile = inputFor(missing);
        QVERIFY(!noFile->open());
        QCOMPARE(noFile->getErrorString(), missing + ": No such file or directory");

        const auto folder = inputFor(m_folder.path());
        QVERIFY(!folder->open());
        QCOMPARE(folder->getErrorString(), m_folder.path() + ": Is a directory");

        if (geteuid() != 0) {
            const QString path = write("secret", "x");
            QFile::setPermissions(path, QFile::Permissions());
            const auto secret = inputFor(path);
            QVERIFY(!secret->open());
            QCOMPARE(secret->getErrorString(), path + ": Permission denied");
        }

        // The first page of a process's memory is never there: a file that opens and then fails to be read.
        const auto failing = inputFor("/proc/self/mem");
        QVERIFY(failing->open());
        QCOMPARE(readAll(failing.get()), QByteArray("<failed: /proc/self/mem: Input/output error>"));

        const quint16 port = freePort<QTcpSocket>(QHostAddress::LocalHost);
        const auto refused = inputFor(QStringLiteral("tcp:127.0.0.1:%1").arg(port));
        QVERIFY(!refused->open());
        QCOMPARE(refused->getErrorString(), QStringLiteral("tcp:127.0.0.1:%1: Connection refused").arg(port));
    }

    void aPipeIsReadAsItsBytesCome()
    {
        const QByteArray path = QFile::encodeName(m_folder.filePath("pipe"));
        QCOMPARE(mkfifo(path.constData(), 0600), 0);
        const auto input = inputFor(QFile::decodeName(path));
        QVERIFY(input->open());
        QVERIFY(input->isLive());
        QCOMPARE(input->getSize(), qint64(-1));
        QByteArray piece;
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);

        const int writer = open(path.constData(), O_WRONLY);
        QVERIFY(writer >= 0);
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);
        QCOMPARE(::write(writer, "abc", 3), ssize_t(3));
        QCOMPARE(input->read(&piece, Patience), ByteInput::Data);
        QCOMPARE(piece, QByteArray("abc"));
        close(writer);
        QCOMPARE(readAll(input.get()), QByteArray("<end>"));
    }

    void datagramsStayApart_data()
    {
        QTest::addColumn<QString>("host");
        QTest::newRow("IPv4") << "127.0.0.1";
        QTest::newRow("IPv6") << "::1";
    }

    void datagramsStayApart()
    {
        QFETCH(QString, host);
        QUdpSocket sender;
        if (!sender.bind(QHostAddress(host), 0))
            QSKIP("This machine has no such address");
        InputAddress address;
        address.kind = InputAddress::UdpListen;
        address.host = host;
        address.port = freePort<QUdpSocket>(QHostAddress(host));
        const std::unique_ptr<ByteInput> input(ByteInput::create(address));
        QVERIFY2(input->open(), qPrintable(input->getErrorString()));
        QVERIFY(input->isLive() && input->isDatagram());
        QByteArray piece;
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);

        const QByteArray longest = manyBytes(65507);
        for (const QByteArray& datagram : {QByteArray("ab"), QByteArray(), longest, QByteArray("c")})
            QCOMPARE(sender.writeDatagram(datagram, QHostAddress(host), address.port), qint64(datagram.size()));
        for (const QByteArray& datagram : {QByteArray("ab"), QByteArray(), longest, QByteArray("c")}) {
            QCOMPARE(input->read(&piece, Patience), ByteInput::Data);
            QVERIFY(piece == datagram);
        }
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);

        const std::unique_ptr<ByteInput> second(ByteInput::create(address));
        QVERIFY(!second->open());
        QCOMPARE(second->getErrorString(), address.toString() + ": the port is in use by another program");
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
        const QString nothing = QString::number(ByteInput::Nothing);
        const QByteArray path = QFile::encodeName(m_folder.filePath("silent"));
        QCOMPARE(mkfifo(path.constData(), 0600), 0);
        const auto pipe = inputFor(QFile::decodeName(path));
        QVERIFY(pipe->open());
        QCOMPARE(cancelWhileReading(pipe.get()), nothing);

        const auto udp =
            inputFor(QStringLiteral("udp:127.0.0.1:%1").arg(freePort<QUdpSocket>(QHostAddress::LocalHost)));
        QVERIFY(udp->open());
        QCOMPARE(cancelWhileReading(udp.get()), nothing);

        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const auto tcp = inputFor(QStringLiteral("tcp:127.0.0.1:%1").arg(server.serverPort()));
        QVERIFY(tcp->open());
        QCOMPARE(cancelWhileReading(tcp.get()), nothing);
        QByteArray piece;
        QCOMPARE(tcp->read(&piece, 60000), ByteInput::Nothing);

        const auto early = inputFor(QStringLiteral("tcp:127.0.0.1:%1").arg(server.serverPort()));
        early->cancel();
        QVERIFY(!early->open());
    }
};

QTEST_GUILESS_MAIN(TestByteInput)
#include "tst_byteinput.moc"
