#include "../inputfixtures.h"
#include "../reception.h"
#include "envelope.h"
#include "mcapfixtures.h"
#include "natsserver.h"
#include "recordingindex.h"
#include "testbase.h"

namespace
{

const QByteArray WithJetStream("jetstream: {store_dir: \"@\"}\n");

/** A server that says something and nothing else. */
class TalkingServer : public QTcpServer
{
public:
    explicit TalkingServer(const QByteArray& greeting)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, greeting]() {
            QTcpSocket* const socket = nextPendingConnection();
            if (greeting == "bye")
                socket->disconnectFromHost();
            else
                socket->write(greeting);
        });
    }
};

NatsPublisher::Headers pointHeaders(const QByteArray& number, const QByteArray& schema)
{
    return {{"ce-type", "demo.Point"},
            {"ce-dataschema", "nats:" + schema},
            {"ce-id", "r-" + number},
            {"Content-Type", "application/protobuf"}};
}

const NatsPublisher::Headers SchemaHeaders{{"ce-type", "demo.Point"}, {"schemaencoding", "protobuf"}};

} // namespace

class tst_NatsInput : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void messagesComeWithWhatIsSaidOfThem();
    void whoMayReadIsForTheServerToSay();
    void certificatesAreChecked();
    void serversThatAreNoneAreTold();
    void aConnectionThatIsLostComesBack();
    void aStreamIsARecordingThatGoesOn();
    void aStreamHasPlaces();
    void streamsThatCannotBeReadAreTold();
    void aClusterMayLoseAServer();

private:
    TestFolder m_folder;
};

void tst_NatsInput::messagesComeWithWhatIsSaidOfThem()
{
    NatsServer server(WithJetStream);
    NatsPublisher publisher(server.getHost());
    QVERIFY(publisher.addStream("S", "f._schemas.>"));
    QVERIFY(publisher.store("f._schemas.demo.Point.h", McapFixtures::schema(), SchemaHeaders));
    Reception reception(text("nats://%1/f.*.state,f.*.demo.*").arg(server.getHost()));
    Reception all(text("nats://%1/>").arg(server.getHost()));
    publisher.publish("f.1.state", "{\"a\":1}");
    publisher.publish("f.2.demo.Point", McapFixtures::point(1), pointHeaders("7", "f._schemas.demo.Point.h"));
    publisher.publish("f.3.demo.Point", McapFixtures::point(1), pointHeaders("8", "f._schemas.none"));
    publisher.publish("g", "x");
    QCOMPARE(reception.take(4),
             text("demo.Point f.2 #7; f.3.demo.Point (demo.Point, not decodable) f.3 #8; not decodable: "
                  "f.3.demo.Point: its schema, f._schemas.none, did not come; state f.1.state"));
    // What servers say to one another is not for everybody who asks for all.
    QVERIFY(all.take(6).contains(text("; g (unknown content, not decodable) g; ")));
    publisher.publish("$SYS.x", "{}");
    publisher.publish("f.1.state", "{\"a\":1}");
    QCOMPARE(all.take(1), text("state f.1.state"));
}

void tst_NatsInput::whoMayReadIsForTheServerToSay()
{
    const NatsServer server("authorization: {users: [{user: anna, password: geheim, permissions: {subscribe: {deny: "
                            "\"secret\"}}}]}\n");
    const QString address = text("nats://anna@%1/a").arg(server.getHost());
    const QString refused = text("user, password or token is wrong");
    QCOMPARE(Reception(address).getState(), refused);
    QCOMPARE(Reception(address, text("wrong")).getState(), refused);
    Reception reception(address + text(",secret"), text("geheim"));
    QCOMPARE(reception.take(1), text("message of the server: Permissions Violation for Subscription to \"secret\""));
    const QString file = m_folder.write("geheim\n");
    QCOMPARE(Reception(address + text("?password-file=") + file).getState(), text("running; "));
    QCOMPARE(Reception(address + text("?password-file=") + file, text("wrong")).getState(), refused);
    qputenv("CORVEL_NATS_PASSWORD", "geheim");
    QCOMPARE(Reception(address).getState(), text("running; "));
    const NatsServer tokenServer("authorization: {token: geheim}\n");
    QCOMPARE(Reception(text("nats://%1/a").arg(tokenServer.getHost())).getState(), text("running; "));
    qunsetenv("CORVEL_NATS_PASSWORD");
    QCOMPARE(Reception(text("nats://%1/a").arg(tokenServer.getHost())).getState(), refused);
}

void tst_NatsInput::certificatesAreChecked()
{
    const QString key = m_folder.filePath(text("key.pem"));
    const QString certificate = m_folder.filePath(text("cert.pem"));
    QProcess openssl;
    openssl.start(text("openssl"),
                  text("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj "
                       "/CN=localhost -addext subjectAltName=DNS:localhost -keyout %1 -out %2")
                      .arg(key, certificate)
                      .split(QLatin1Char(' ')));
    QVERIFY(openssl.waitForFinished() && openssl.exitCode() == 0);
    const NatsServer server("tls: {cert_file: \"" + certificate.toUtf8() + "\", key_file: \"" + key.toUtf8() + "\"}\n");
    const QString port = server.getHost().section(QLatin1Char(':'), 1);
    const QString address = text("nats://localhost:%1/a").arg(port);
    QVERIFY(Reception(address).getState().startsWith(text("no encrypted connection comes about: ")));
    QCOMPARE(Reception(address + text("?ca=") + certificate).getState(), text("running; "));
    const QString wrongHost = text("nats://127.0.0.1:%1/a?ca=%2").arg(port, certificate);
    QVERIFY(Reception(wrongHost).getState().startsWith(text("no encrypted connection comes about: ")));
    const NatsServer plain;
    QCOMPARE(Reception(text("nats://%1/a?tls=on").arg(plain.getHost())).getState(),
             text("the server does not encrypt connections"));
    QCOMPARE(Reception(address + text("?ca=") + key + text("x")).getState(),
             key + text("x: No such file or directory"));
}

void tst_NatsInput::serversThatAreNoneAreTold()
{
    const TextRow rows[] = {
        {"HTTP/1.1 400 Bad Request\r\n", "what comes is no greeting of a NATS server"},
        {"INFO {\"server_id\":\r\n", "what comes is no greeting of a NATS server"},
        {"bye", "The remote host closed the connection"},
        {"", "no answer within 5 s"},
        {"INFO {\"max_payload\":1}\r\n", "no answer within 5 s"},
    };
    checkRows(rows, [](const QString& greeting) {
        TalkingServer server(greeting.toUtf8());
        return Reception(text("nats://127.0.0.1:%1/a").arg(server.serverPort())).getState().section(text("; "), 0, 0);
    });
    const auto input = inputFor(text("nats://127.0.0.1:%1/a").arg(TalkingServer(QByteArray()).serverPort()));
    QVERIFY(isCancelled(input.get(), [&] { QVERIFY(!input->open()); }));
}

void tst_NatsInput::aConnectionThatIsLostComesBack()
{
    NatsServer server;
    Reception reception(text("nats://%1/a").arg(server.getHost()));
    const std::unique_ptr<ByteInput> input = inputFor(text("nats://%1/b").arg(server.getHost()));
    QByteArray bytes;
    QVERIFY(input->open());
    QVERIFY(isCancelled(input.get(), [&]() { QCOMPARE(input->read(&bytes, 60000), ByteInput::Nothing); }));
    server.kill();
    QVERIFY(reception.take(1).startsWith(
        text("message of the server: the connection is lost; it is tried again for as long as it takes")));
    server.start();
    QCOMPARE(reception.take(1), text("message of the server: connected again, to nats://") + server.getHost());
    NatsPublisher(server.getHost()).publish("a", "[1]");
    QCOMPARE(reception.take(1), text("a a"));
}

void tst_NatsInput::aStreamIsARecordingThatGoesOn()
{
    NatsServer server(WithJetStream);
    NatsPublisher publisher(server.getHost());
    QVERIFY(publisher.addStream("S", "f.>"));
    const QString address = text("jetstream://%1/S/f.*.demo.Point").arg(server.getHost());
    QVERIFY(publisher.store("f._schemas.demo.Point.h", McapFixtures::schema(), SchemaHeaders));
    const auto store = [&](int number) {
        QThread::msleep(2); // what is stored in the same moment is due in the same moment
        return publisher.store("f.1.demo.Point", McapFixtures::point(number),
                               {{"Content-Type", "application/protobuf"},
                                {"ce-type", "demo.Point"},
                                {"ce-dataschema", "nats:f._schemas.demo.Point.h"}});
    };
    QVERIFY(store(1) && publisher.store("f.other", "{}"));
    Reception reception(address);
    QVERIFY(reception.source->isSeekable() && !reception.source->isLive());
    QCOMPARE(reception.take(1), text("demo.Point f.1 #1"));
    const qint64 end = reception.source->getEndTime();
    StreamSource::Playback playback;
    playback.factor = 1e-6;
    reception.source->setPlayback(playback);
    // Behind the end nothing is paced; numbers say that nothing was lost, whatever else is in the stream.
    QVERIFY(store(2) && store(3));
    QCOMPARE(reception.take(2), text("demo.Point f.1 #2; demo.Point f.1 #3"));
    QVERIFY(waitFor([&] { return reception.source->getEndTime() > end; }));
    // From the beginning it is a recording again.
    reception.source->seek(0);
    QCOMPARE(reception.take(1), text("demo.Point f.1 #4"));
    QVERIFY(reception.source->getStartTime() < end && reception.found->payloads.last() == McapFixtures::point(1));
    playback.factor = 0;
    reception.source->setPlayback(playback);
    QCOMPARE(reception.take(2), text("demo.Point f.1 #5; demo.Point f.1 #6"));
}

void tst_NatsInput::aStreamHasPlaces()
{
    NatsServer server(WithJetStream);
    NatsPublisher publisher(server.getHost());
    QVERIFY(publisher.addStream("S", "s"));
    const auto input = inputFor(text("jetstream://%1/S?end=stop").arg(server.getHost()));
    QVERIFY2(input->open(), qPrintable(input->getErrorString()));
    QCOMPARE(readAll(input.get()), QByteArray("<end>"));
    const int count = 3000;
    for (int i = 0; i < count; ++i)
        QVERIFY(publisher.store("s", QByteArray::number(i)));
    const auto contents = [&]() {
        const QByteArray bytes = readAll(input.get());
        QStringList all;
        qint64 used = 0;
        Envelope envelope;
        for (qint64 at = 0;
             EnvelopeReader::read(bytes.constData() + at, bytes.size() - at, &envelope, &used) == EnvelopeReader::Whole;
             at += used)
            all.append(QString::number(envelope.time) + QLatin1Char(' ') +
                       QString::fromUtf8(envelope.payload.data(), int(envelope.payload.size())));
        return bytes.endsWith("<end>") ? all : QStringList();
    };
    QVERIFY(input->seek(0));
    const QStringList all = contents();
    QCOMPARE(all.size(), count);
    for (int i = 0; i < count; ++i)
        QCOMPARE(all.at(i).section(QLatin1Char(' '), 1), QString::number(i));
    const auto index = input->createIndex();
    for (const int number : {1, 1500, count - 1}) {
        const qint64 time = all.at(number).section(QLatin1Char(' '), 0, 0).toLongLong();
        QVERIFY(input->seek(qint64(index->findOffset(time / 1000))));
        const QStringList rest = contents();
        QVERIFY(rest.size() >= count - number && rest.size() < count - number + 5 && all.last() == rest.last());
        QVERIFY(rest.contains(all.at(number)));
    }
}

void tst_NatsInput::streamsThatCannotBeReadAreTold()
{
    NatsServer server(WithJetStream);
    NatsPublisher publisher(server.getHost());
    QVERIFY(publisher.addStream("W", "w", 1, js_WorkQueuePolicy));
    const QString address = text("jetstream://%1/").arg(server.getHost());
    QCOMPARE(Reception(address + text("W")).getState(),
             text("the stream is a work queue: what one reads is taken from the others"));
    QCOMPARE(Reception(address + text("none")).getState(), text("there is no stream of that name"));
    const NatsServer plain;
    QCOMPARE(Reception(text("jetstream://%1/S").arg(plain.getHost())).getState(),
             text("the server has no JetStream, or none for this user"));
}

void tst_NatsInput::aClusterMayLoseAServer()
{
    QByteArray routes;
    QList<QByteArray> ports;
    for (int i = 0; i < 3; ++i) {
        ports.append(QByteArray::number(freeLoopbackPort()));
        routes += "\"nats://127.0.0.1:" + ports.last() + "\", ";
    }
    std::vector<std::unique_ptr<NatsServer>> servers;
    QStringList hosts;
    for (int i = 0; i < 3; ++i) {
        servers.emplace_back(new NatsServer(WithJetStream + "server_name: n" + QByteArray::number(i) +
                                            "\ncluster: {name: c, listen: \"127.0.0.1:" + ports.at(i) +
                                            "\", routes: [" + routes + "]}\n"));
        hosts.append(servers.back()->getHost());
    }
    NatsPublisher publisher(hosts.join(QLatin1Char(',')));
    QVERIFY(publisher.addStream("S", "s", 3));
    int stored = 0;
    const auto store = [&](int count) {
        for (int i = 0; i < count; ++i, ++stored)
            if (!publisher.store("s", "[" + QByteArray::number(stored) + "]", {}, QByteArray::number(stored)))
                return false;
        return true;
    };
    Reception reception(text("jetstream://%1/S").arg(hosts.join(QLatin1Char(','))));
    QVERIFY(store(200));
    QByteArray consumer;
    QVERIFY(waitFor([&] { return !(consumer = publisher.findConsumer("S")).isEmpty(); }));
    NatsServer* const server = servers.at(std::size_t(consumer.mid(1).toInt())).get();
    server->kill();
    QVERIFY(store(200));
    server->start();
    QVERIFY(store(100));
    QVERIFY(waitFor([&] { return reception.found->messages.size() >= stored; }, 30000));
    for (int i = 0; i < stored; ++i)
        QCOMPARE(reception.found->payloads.at(i), "[" + QByteArray::number(i) + "]");
    QCOMPARE(reception.found->messages.size(), stored);
}

QTEST_GUILESS_MAIN(tst_NatsInput)

#include "tst_natsinput.moc"
