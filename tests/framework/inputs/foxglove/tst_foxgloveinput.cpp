#include "byteinput.h"
#include "definitions.h"
#include "foxgloveserver.h"
#include "mcapstreamdecoder.h"
#include "message.h"
#include "messageinfo.h"
#include "streamsource.h"
#include "testbase.h"
#include "waitfor.h"

#include <QElapsedTimer>
#include <QTcpServer>

#include <memory>
#include <thread>

namespace
{

InputAddress addressOf(const QString& text)
{
    InputAddress address;
    QString error;
    if (!InputAddress::parse(text, &address, &error))
        qWarning("%s", qPrintable(error));
    return address;
}

/** What came: "/a demo.Point 5000". */
class Lines : public StreamSink
{
public:
    explicit Lines(const StreamDecoder* decoder)
        : m_decoder(decoder)
    {
    }
    void processReceived(const ReceivedMessage& message) override
    {
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(m_decoder->getSenderName(message.sender),
                              message.info ? message.info->getName() : m_decoder->describeUnknown(message.id))
                         .arg(message.time));
    }
    void processProblem(const StreamProblem& problem) override { lines.append(problem.text); }

    QStringList lines;

private:
    const StreamDecoder* m_decoder;
};

} // namespace

class TestFoxgloveInput : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void channelsOfAServerAreReceived_data()
    {
        QTest::addColumn<QString>("protocol");
        QTest::newRow("v1") << QStringLiteral("foxglove.websocket.v1");
        QTest::newRow("sdk") << QStringLiteral("foxglove.sdk.v1");
        QTest::newRow("server that names none") << QString();
    }

    void channelsOfAServerAreReceived()
    {
        QFETCH(QString, protocol);
        FoxgloveServer server(protocol);
        Definitions definitions;
        McapStreamDecoder* const decoder = new McapStreamDecoder(&definitions, McapStreamDecoder::Live);
        Lines found(decoder);
        StreamSource source(ByteInput::create(addressOf(server.address())), decoder);
        source.addObserver(&found);
        source.start();
        QVERIFY(waitFor([&] { return source.getState() == StreamSource::Running; }));
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
        QCOMPARE(server.socket()->subprotocol(), protocol);
#endif
        server.advertise({FoxgloveServer::channel(7, QStringLiteral("/a")),
                          FoxgloveServer::channel(9, QStringLiteral("\uFEFF/j"), QStringLiteral("json"))});
        QVERIFY(waitFor([&] { return server.subscriptions.size() == 2; }));
        QCOMPARE(server.channelOf(0), 7);
        QCOMPARE(server.channelOf(1), 9);
        const int first = server.subscription(0);
        const int second = server.subscription(1);
        server.sendPoint(first, 5);
        server.sendPoint(second, 6);
        server.sendPoint(99, 7); // nobody asked for it
        server.socket()->sendBinaryMessage(QByteArray("\x02\0\0", 3));
        server.send(
            {{QStringLiteral("op"), QStringLiteral("unadvertise")}, {QStringLiteral("channelIds"), QJsonArray{7}}});
        server.sendPoint(first, 8); // on its way when the channel ended
        server.advertise({FoxgloveServer::channel(8, QStringLiteral("/a"))});
        QVERIFY(waitFor([&] { return server.subscriptions.size() == 3; }));
        server.sendPoint(server.subscription(2), 10);
        server.socket()->close();
        QVERIFY(waitFor([&] { return source.getState() == StreamSource::Finished; }));
        QCOMPARE(found.lines,
                 QStringList({QStringLiteral("\uFEFF/j (json, not decodable)"), QStringLiteral("/a demo.Point 5000"),
                              QStringLiteral("\uFEFF/j \uFEFF/j (json, not decodable) 6000"),
                              QStringLiteral("/a demo.Point 10000")}));
    }

    void whatTheServerSaysOfItselfIsTold()
    {
        FoxgloveServer server(QStringLiteral("foxglove.sdk.v1"));
        Definitions definitions;
        McapStreamDecoder* const decoder = new McapStreamDecoder(&definitions, McapStreamDecoder::Live);
        Lines found(decoder);
        StreamSource source(ByteInput::create(addressOf(server.address())), decoder);
        source.addObserver(&found);
        source.start();
        QVERIFY(waitFor([&] { return source.getState() == StreamSource::Running; }));
        const QStringList said{QStringLiteral("ready"), QStringLiteral("slow"), QStringLiteral("sensor lost")};
        for (int level = 0; level < 3; ++level)
            server.send({{QStringLiteral("op"), QStringLiteral("status")},
                         {QStringLiteral("level"), level},
                         {QStringLiteral("message"), said.at(level)}});
        QVERIFY(waitFor([&] { return found.lines.size() == 3; }));
        QCOMPARE(found.lines, QStringList({QStringLiteral("ready"), QStringLiteral("warning: slow"),
                                           QStringLiteral("error: sensor lost")}));
        QCOMPARE(int(source.getState()), int(StreamSource::Running));
    }

    void whoSpeaksSomethingElseIsRefused()
    {
        FoxgloveServer server(QString{});
        server.greeting = QStringLiteral("hello");
        Definitions definitions;
        StreamSource source(ByteInput::create(addressOf(server.address())), new McapStreamDecoder(&definitions));
        source.start();
        QVERIFY(waitFor([&] { return source.getState() == StreamSource::Failed; }));
        QCOMPARE(source.getErrorString(),
                 server.address() + QStringLiteral(": it does not speak the Foxglove protocol"));
    }

    void nobodyThereIsAnErrorAndNoWait()
    {
        const std::unique_ptr<ByteInput> input(ByteInput::create(addressOf(QStringLiteral("ws://127.0.0.1:1"))));
        QVERIFY(!input->open());
        QVERIFY2(input->getErrorString().startsWith(QLatin1String("ws://127.0.0.1:1: ")),
                 qPrintable(input->getErrorString()));
        QVERIFY(input->getErrorString().size() > 20);
    }

    void waitingCanBeCancelled()
    {
        // A server that accepts and says nothing: open() waits.
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        const std::unique_ptr<ByteInput> input(
            ByteInput::create(addressOf(QStringLiteral("ws://127.0.0.1:%1").arg(silent.serverPort()))));
        QElapsedTimer timer;
        timer.start();
        std::thread canceller([&] { input->cancel(); });
        QVERIFY(!input->open());
        canceller.join();
        QVERIFY(timer.elapsed() < 1000);
        QVERIFY(input->getErrorString().endsWith(QLatin1String("cancelled")));
    }
};

QTEST_GUILESS_MAIN(TestFoxgloveInput)
#include "tst_foxgloveinput.moc"
