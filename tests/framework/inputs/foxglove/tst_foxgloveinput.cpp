#include "../inputfixtures.h"
#include "definitions.h"
#include "foxgloveserver.h"
#include "mcapstreamdecoder.h"
#include "streamsource.h"
#include "testbase.h"
#include "textrows.h"
#include "transcript.h"
#include "waitfor.h"

#include <QTcpServer>

namespace
{

/** A server, and a source that it serves, with what came: "demo.Point /a @5000". */
struct Connection
{
    explicit Connection(const QString& protocol, const char* greeting = nullptr)
        : server(protocol)
    {
        if (greeting)
            server.greeting = text(greeting);
        source.addObserver(&found);
        source.start();
        waitFor([&] { return source.getState() >= StreamSource::Running; });
    }

    FoxgloveServer server;
    Definitions definitions;
    McapStreamDecoder* decoder = new McapStreamDecoder(&definitions, McapStreamDecoder::Live);
    Transcript found{decoder, false};
    StreamSource source{inputFor(server.address()).release(), decoder};
};

} // namespace

class TestFoxgloveInput : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void channelsOfAServerAreReceived()
    {
        for (const char* protocol : {"foxglove.websocket.v1", "foxglove.sdk.v1", ""}) {
            Connection c{text(protocol)};
            FoxgloveServer& server = c.server;
            QCOMPARE(c.source.getState(), StreamSource::Running);
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
            QCOMPARE(server.socket()->subprotocol(), text(protocol));
#endif
            server.advertise({FoxgloveServer::channel(7, text("/a")),
                              FoxgloveServer::channel(9, QStringLiteral("\uFEFF/x"), text("xml")),
                              FoxgloveServer::channel(11, text("/j"), text("json"))});
            QVERIFY(waitFor([&] { return server.subscriptions.size() == 3; }));
            QVERIFY(server.channelOf(0) == 7 && server.channelOf(1) == 9);
            const int first = server.subscription(0);
            server.sendPoint(first, 5);
            server.sendPoint(server.subscription(1), 6);
            server.sendPoint(server.subscription(2), 7);
            server.sendPoint(99, 7); // nobody asked for it
            server.socket()->sendBinaryMessage(QByteArray("\x02\0\0", 3));
            server.send({{text("op"), text("unadvertise")}, {text("channelIds"), QJsonArray{7}}});
            server.sendPoint(first, 8); // on its way when the channel ended
            server.advertise({FoxgloveServer::channel(8, text("/a"))});
            QVERIFY(waitFor([&] { return server.subscriptions.size() == 4; }));
            server.sendPoint(server.subscription(3), 10);
            server.socket()->close();
            QVERIFY(waitFor([&] { return c.source.getState() == StreamSource::Finished; }));
            QCOMPARE(c.found.told(),
                     text("not decodable: \xef\xbb\xbf/x (xml, not decodable); demo.Point /a @5000; "
                          "\xef\xbb\xbf/x (xml, not decodable) \xef\xbb\xbf/x @6000; demo.Point /j @7000; "
                          "demo.Point /a @10000"));
        }
    }

    void whatTheServerSaysOfItselfIsTold()
    {
        Connection c{text("foxglove.sdk.v1")};
        const char* const said[] = {"ready", "slow", "sensor lost"};
        for (int level = 0; level < 3; ++level)
            c.server.send({{text("op"), text("status")}, {text("level"), level}, {text("message"), text(said[level])}});
        QVERIFY(waitFor([&] { return c.found.lines.size() == 3; }));
        QCOMPARE(c.found.told(), text("message of the server: ready; message of the server: warning: slow; "
                                      "message of the server: error: sensor lost"));
        QCOMPARE(c.source.getState(), StreamSource::Running);
    }

    void whoSpeaksSomethingElseIsRefused()
    {
        Connection c{QString(), "hello"};
        QVERIFY(waitFor([&] { return c.source.getState() == StreamSource::Failed; }));
        QCOMPARE(c.source.getErrorString(), c.server.address() + text(": it does not speak the Foxglove protocol"));
    }

    void nobodyThereIsAnErrorAndWaitingCanBeCancelled()
    {
        const QByteArray error = openAndReadAll(text("ws://127.0.0.1:1"));
        QVERIFY2(error.startsWith("<not opened: ws://127.0.0.1:1: ") && error.size() > 35, error.constData());
        // A server that accepts and says nothing: open() waits.
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        const auto input = inputFor(text("ws://127.0.0.1:%1").arg(silent.serverPort()));
        QVERIFY(isCancelled(input.get(), [&] { QVERIFY(!input->open()); }));
        QVERIFY(input->getErrorString().endsWith(text("cancelled")));
    }
};

QTEST_GUILESS_MAIN(TestFoxgloveInput)
#include "tst_foxgloveinput.moc"
