#include "../inputfixtures.h"
#include "../reception.h"
#include "mcapfixtures.h"
#include "mosquittobroker.h"
#include "testbase.h"

#include <functional>

namespace
{

/** A server that answers whatever it gets first with the next of its answers. */
class AnsweringServer : public QTcpServer
{
public:
    explicit AnsweringServer(const QList<QByteArray>& answers)
        : m_answers(answers)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this]() {
            QTcpSocket* const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket]() {
                if (socket->property("answered").toBool() || m_answers.isEmpty())
                    return;
                socket->setProperty("answered", true);
                const QByteArray answer = m_answers.takeFirst();
                if (answer == "bye")
                    socket->disconnectFromHost();
                else
                    socket->write(answer);
            });
        });
    }

private:
    QList<QByteArray> m_answers;
};

} // namespace

class tst_MqttInput : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void messagesComeWithWhatIsSaidOfThem();
    void whoMayReadIsForTheServerToSay();
    void certificatesAreChecked();
    void serversThatAreNoneAreTold_data();
    void serversThatAreNoneAreTold();
    void thereMayBeManyTopicsAndLargeMessages();
    void whatIsLostIsTold();

private:
    TestFolder m_folder;
};

void tst_MqttInput::messagesComeWithWhatIsSaidOfThem()
{
    MosquittoBroker broker;
    broker.publish("f/1/state", "{\"a\":1}", true);
    broker.publish("f/_schemas/demo.Point/h", McapFixtures::schema(), true,
                   {{"type", "demo.Point"}, {"schemaencoding", "protobuf"}});
    broker.publish("other", "x", true);
    Reception reception(text("mqtt://%1/f/+/state,f/+/demo.Point").arg(broker.getHost()));
    QCOMPARE(reception.take(1), text("state f/1/state"));
    broker.publish("f/2/state", "{\"a\":2}", true);
    broker.publish("f/3/demo.Point", McapFixtures::point(1), false,
                   {{"type", "demo.Point"},
                    {"dataschema", "mqtt:f/_schemas/demo.Point/h"},
                    {"id", "r-7"},
                    {"time", "1970-01-01T00:00:01Z"},
                    {"", "application/protobuf"}});
    broker.publish("f/4/demo.Point", McapFixtures::point(1), false, {{"dataschema", "mqtt:f/_schemas/none/h"}});
    broker.publish("f/1/state", "", true);
    QCOMPARE(
        reception.take(5),
        text("demo.Point f/3 #7 sent 1000000; f/1/state is gone: cleared; f/4/demo.Point (unknown content, not "
             "decodable) f/4/demo.Point; not decodable: f/4/demo.Point: its schema, f/_schemas/none/h, did not come; "
             "state f/2/state"));
    // The first one was kept, and is of no known age; the second one came just now, and is kept all the same.
    QVERIFY(!reception.found->messages.at(0).contains(QLatin1Char('@')));
    QVERIFY(reception.found->messages.at(1).contains(QLatin1Char('@')));

    // A schema that a filter brings is not waited for.
    Reception all(text("mqtt://%1/f/#").arg(broker.getHost()));
    QCOMPARE(all.take(1), text("state f/2/state"));
    broker.publish("f/3/demo.Point", McapFixtures::point(1), false,
                   {{"type", "demo.Point"}, {"dataschema", "mqtt:f/_schemas/demo.Point/h"}});
    broker.publish("f/4/demo.Point", McapFixtures::point(1), false, {{"dataschema", "mqtt:f/_schemas/none/h"}});
    QVERIFY(!all.take(3).contains(text("Point/h is gone")));
}

void tst_MqttInput::whoMayReadIsForTheServerToSay()
{
    const QString passwords = m_folder.filePath(text("passwords"));
    QCOMPARE(QProcess::execute(text(CORVEL_MOSQUITTO_PASSWD),
                               {text("-b"), text("-c"), passwords, text("anna"), text("geheim")}),
             0);
    MosquittoBroker broker("password_file " + passwords.toLocal8Bit() + "\n");
    const QString address = text("mqtt://anna@%1/a").arg(broker.getHost());
    const QString refused = text("the server refuses the connection: not authorised");
    QCOMPARE(Reception(address).getState(), refused);
    QCOMPARE(Reception(address, text("wrong")).getState(), refused);
    QCOMPARE(Reception(address, text("geheim")).getState(), text("running; "));
    const QString file = m_folder.write("geheim\n");
    QCOMPARE(Reception(address + text("?password-file=") + file).getState(), text("running; "));
    QCOMPARE(Reception(address + text("?password-file=") + file, text("wrong")).getState(), refused);
    qputenv("CORVEL_MQTT_PASSWORD", "geheim");
    QCOMPARE(Reception(address).getState(), text("running; "));
    qunsetenv("CORVEL_MQTT_PASSWORD");
}

void tst_MqttInput::certificatesAreChecked()
{
    const QString key = m_folder.filePath(text("key.pem"));
    const QString certificate = m_folder.filePath(text("cert.pem"));
    QProcess openssl;
    openssl.start(text("openssl"),
                  text("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj "
                       "/CN=localhost -addext subjectAltName=IP:127.0.0.1 -keyout %1 -out %2")
                      .arg(key, certificate)
                      .split(QLatin1Char(' ')));
    QVERIFY(openssl.waitForFinished() && openssl.exitCode() == 0);
    MosquittoBroker broker("allow_anonymous true\ncertfile " + certificate.toLocal8Bit() + "\nkeyfile " +
                           key.toLocal8Bit() + "\n");
    const QString address = text("mqtts://%1/a").arg(broker.getHost());
    QVERIFY(Reception(address).getState().startsWith(text("no encrypted connection comes about: ")));
    QCOMPARE(Reception(address + text("?ca=") + certificate).getState(), text("running; "));
    QCOMPARE(Reception(address + text("?ca=") + key + text("x")).getState(),
             key + text("x: No such file or directory"));
}

void tst_MqttInput::serversThatAreNoneAreTold_data()
{
    QTest::addColumn<QList<QByteArray>>("answers");
    QTest::addColumn<QString>("expected");
    const QByteArray connected("\x20\x03\0\0\0", 5);
    const QByteArray oldConnected("\x20\x02\0\0", 4);
    const auto row = [](const char* name, const QList<QByteArray>& answers, const char* expected) {
        QTest::newRow(name) << answers << text(expected);
    };
    row("rubbish", {QByteArray(300, 'x'), QByteArray(300, 'x')}, "what comes is no MQTT");
    row("an endless packet", {QByteArray("\x30\xff\xff\xff\xff\xff", 6), QByteArray("\x30\xff\xff\xff\xff\xff", 6)},
        "what comes is no MQTT");
    row("nothing", {}, "no answer within 5 s");
    row("nothing but connected", {connected}, "no answer within 5 s");
    row("the door", {"bye", "bye"}, "the server has closed the connection");
    row("refused", {QByteArray("\x20\x03\0\x8a\0", 5)},
        "the server refuses the connection: this user or address is banned");
    row("refused, an older server", {QByteArray("\x20\x02\0\x01", 4), QByteArray("\x20\x02\0\x05", 4)},
        "the server refuses the connection: not authorised");
    row("an older server that closes", {"bye", oldConnected + QByteArray("\x90\x03\0\x01\0\x90\x03\0\x02\x80", 10)},
        "running; message of the server: the server refuses b: not authorised");
    row("one filter refused", {connected + QByteArray("\x90\x04\0\x01\0\x87\x90\x04\0\x02\0\0", 12)},
        "running; message of the server: the server refuses a: not authorised");
    row("all filters refused", {connected + QByteArray("\x90\x04\0\x01\0\x8f\x90\x04\0\x02\0\x97", 12)},
        "the server refuses b: a quota is used up");
    const QByteArray subscribed = connected + QByteArray("\x90\x04\0\x01\0\0\x90\x04\0\x02\0\0", 12);
    row("ended", {subscribed + QByteArray("\xe0\x02\x8e\0", 4)},
        "the server ends the connection: another program has connected under the same name");

    // What the client's library must not see.
    const auto rubbish = [&](const char* name, const QByteArray& packet, const char* expected) {
        row(name, {subscribed + QByteArray::fromHex(packet)}, expected);
    };
    row("a connection with an unknown property", {QByteArray("\x20\x05\0\0\x02\x7f\0", 7), QByteArray(9, 'x')},
        "what comes is no MQTT");
    row("no reason", {connected + QByteArray("\x90\x03\0\x01\0", 5)},
        "the server sent a SUBACK that is too short (packet 2)");
    rubbish("connected twice", "2003000000", "the server sent a CONNACK for the second time (packet 4)");
    rubbish("a client", "c000", "the server sent a PINGREQ, which only clients send (packet 4)");
    rubbish("flags", "3600", "the server sent a PUBLISH with the flags 0x06 (packet 4)");
    rubbish("five bytes of length", "30ffffffff7f",
            "the server sent a PUBLISH whose length has more than four bytes (packet 4)");
    rubbish("256 MB", "30ffffff7f", "the server sent a PUBLISH of 268435455 bytes (packet 4)");
    rubbish("no topic", "3003000000", "the server sent a PUBLISH without a topic (packet 4)");
    rubbish("a long topic", "300400ff6161",
            "the server sent a PUBLISH whose topic is longer than the packet (packet 4)");
    rubbish("no number", "320400026162", "the server sent a PUBLISH that ends before its number (packet 4)");
    rubbish("many properties", "300400016105",
            "the server sent a PUBLISH whose properties are longer than the packet (packet 4)");
    rubbish("a long property", "3008000161042600ff61",
            "the server sent a PUBLISH whose property 0x26 is longer than all of them (packet 4)");
    rubbish("an unknown property", "3006000161027f00",
            "the server sent a PUBLISH with the unknown property 0x7f (packet 4)");
    rubbish("one at the end", "e00400027f00", "the server sent a DISCONNECT with the unknown property 0x7f (packet 4)");
    rubbish("one behind a message", "3004000161004006000100027f00",
            "the server sent a PUBACK with the unknown property 0x7f (packet 5)");
}

void tst_MqttInput::serversThatAreNoneAreTold()
{
    QFETCH(QList<QByteArray>, answers);
    QFETCH(QString, expected);
    AnsweringServer server(answers);
    Reception reception(text("mqtt://127.0.0.1:%1/a,b").arg(server.serverPort()));
    QString state;
    waitFor([&]() { return (state = reception.getState()) == expected; });
    QCOMPARE(state, expected);
}

void tst_MqttInput::thereMayBeManyTopicsAndLargeMessages()
{
    MosquittoBroker broker("allow_anonymous true\nmax_queued_messages 0\nmessage_size_limit 0\n");
    Reception reception(text("mqtt://%1/#").arg(broker.getHost()));
    broker.publish("large", QByteArray(17 << 20, 'x'));
    broker.publish("less", QByteArray(15 << 20, 'x'));
    for (int i = 0; i < 10000; ++i)
        broker.publish("t/" + QByteArray::number(i) + "/v", "{\"a\":1}");
    QVERIFY(waitFor([&]() { return reception.found->messages.size() == 10001; }, 60000));
    QCOMPARE(reception.found->messages.at(0).left(4), text("less"));
    QCOMPARE(reception.found->messages.filter(text("v t/")).size(), 10000);
}

void tst_MqttInput::whatIsLostIsTold()
{
    MosquittoBroker broker;
    const QString address = text("mqtt://%1/a").arg(broker.getHost());
    Reception reception(address);
    QCOMPARE(reception.getState(), text("running; "));
    const std::unique_ptr<ByteInput> input = inputFor(address);
    QVERIFY(input->open());
    QByteArray bytes;
    QVERIFY(isCancelled(input.get(), [&]() { QCOMPARE(input->read(&bytes, 60000), ByteInput::Nothing); }));
    broker.kill();
    QVERIFY(waitFor([&]() { return reception.source->getState() == StreamSource::Failed; }));
    QCOMPARE(reception.getState(), text("the server has closed the connection"));
    QCOMPARE(Reception(address).getState(), text("Connection refused"));
}

QTEST_GUILESS_MAIN(tst_MqttInput)

#include "tst_mqttinput.moc"
