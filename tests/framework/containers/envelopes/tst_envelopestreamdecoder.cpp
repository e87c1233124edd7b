#include "container.h"
#include "definitions.h"
#include "envelopescript.h"
#include "mavlinkframes.h"
#include "mcapfixtures.h"
#include "messageinfo.h"
#include "messagestatisticscoordinator.h"
#include "receptionmonitor.h"
#include "streamdecoder.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"
#include "transcript.h"

#include <QCryptographicHash>

#include <memory>

namespace
{

const qint64 Second = 1000 * 1000;

/** What a decoder of envelopes finds. */
struct Decoding
{
    explicit Decoding(Definitions* definitions, const QString& typeName = QString())
    {
        StreamOptions options;
        options.definitions = definitions;
        options.typeName = typeName;
        StreamHead head;
        head.isLive = true;
        decoder = Container::find(text("envelopes"))->open(head, options).decoder;
        found.reset(new Transcript(decoder.get(), false));
    }

    std::unique_ptr<StreamDecoder> decoder;
    std::unique_ptr<Transcript> found;
};

} // namespace

class tst_EnvelopeStreamDecoder : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void payloadsAreWhatTheyAreSaidToBeOrLookLike_data();
    void payloadsAreWhatTheyAreSaidToBeOrLookLike();
    void rulesAreChecked_data();
    void rulesAreChecked();
    void messagesWaitForTheirSchemaAndNotForLong();
    void numbersAreCountedAsTheirFormatsHaveThem();
    void damageCostsWhatIsDamaged();
    void thereIsAnEndToTopics();

private:
    EnvelopeScript m_script;
    TestFolder m_folder;
    QString m_hash;
};

void tst_EnvelopeStreamDecoder::initTestCase()
{
    const MavlinkScript frames;
    m_script.define("S", McapFixtures::schema());
    m_script.define("P1", McapFixtures::point(1));
    m_script.define("P2", McapFixtures::point(2));
    m_script.define("F", frames.bytes(text("H1 A2")));
    m_script.define("F~", frames.bytes(text("H3~12")));
    m_hash = QString::fromLatin1(
        QCryptographicHash::hash(McapFixtures::schema(), QCryptographicHash::Sha256).toHex().left(12));
}

void tst_EnvelopeStreamDecoder::payloadsAreWhatTheyAreSaidToBeOrLookLike_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("expected");
    const auto row = [&](const char* name, const QString& given, const char* expected) {
        QTest::newRow(name) << given << text(expected);
    };
    row("schema and number, time and attributes of the publisher",
        text("f/_schemas/demo.Point/h kept type=demo.Point schemaencoding=protobuf encoding=protobuf : S | "
             "f/car/demo.Point at=5001002 specversion=1.0 id=a7-3 type=demo.Point time=1970-01-01T01:00:00.5+01:00 "
             "dataschema=mqtt:f/_schemas/demo.Point/h content=application/protobuf : P1"),
        "demo.Point f/car #3 @5001+2 sent 500000");
    row("names of attributes in headers",
        text("f._schemas.demo.Point.h ce-type=demo.Point schemaencoding=protobuf : S | f.car.demo.Point number=9 "
             "ce-type=demo.Point ce-id=9d7b-11-2 ce-dataschema=nats:f._schemas.demo.Point.h : P1"),
        "demo.Point f.car #9");
    row("a type that no topic can have", text("f.car.a_b type=a+b content=application/json : {}"), "a+b f.car");
    row("a type that files have", text("f/car type=demo.Point content=application/x-protobuf;v=1 : P1"),
        "demo.Point f/car");
    row("a type that nobody knows",
        text("f/car type=demo.Car content=application/protobuf : P1 | "
             "f/car type=demo.Car content=application/protobuf : P2"),
        "not decodable: f/car: no schema has a message type \"demo.Car\"; "
        "f/car (demo.Car, not decodable) f/car; f/car (demo.Car, not decodable) f/car");
    row("rules of the user, the first one first",
        text("m/1/point : P1 | m/2/point/more : P2 | m/frames : F | m/json/x : 21 | m/2/point/more : P1"),
        "demo.Point m/1/point; demo.Point m/2/point/more; HEARTBEAT m/frames 1:1 #1; ATTITUDE m/frames 1:1 #2; "
        "x m/json/x; demo.Point m/2/point/more");
    row("frames, also damaged ones of a topic that had good ones", text("v/1 : F | v/1 : F~"),
        "HEARTBEAT v/1 1:1 #1; ATTITUDE v/1 1:1 #2; checksum failure, id 0, sender v/1 1:1");
    row("JSON is called as the last level", text("f/7/state : {\"a\":1} | f/8/state : [1] | f.9.state : {\"a\":2}"),
        "state f/7/state; state f/8/state; state f.9.state");
    row("JSON by its media type", text("f/7/state content=application/vnd.x+json type=demo.State : {\"a\":1}"),
        "demo.State f/7/state");
    row("told once, until it looks like something",
        text("f/7 : [no] | f/7 : on | f/8 : on | f/7 : {\"a\":1} | f/7 : off"),
        "not decodable: f/7: nothing says what it is; it begins with 5B 6E 6F 5D; "
        "f/7 (unknown content, not decodable) f/7; f/7 (unknown content, not decodable) f/7; "
        "not decodable: f/8: nothing says what it is; it begins with 6F 6E; "
        "f/8 (unknown content, not decodable) f/8; 7 f/7; 7 f/7");
    row("what was kept has no time and no number",
        text("m/1/point kept at=5000000 number=4 id=r-1 : P1 | m/1/point at=6000000 number=5 : P2"),
        "demo.Point m/1/point; demo.Point m/1/point #5 @6000");
    row("cleared, gone and noticed",
        text("v/1 : F | v/1 :  | m/1/point : P1 | m/1/point gone : shut down | x notice : hello"),
        "HEARTBEAT v/1 1:1 #1; ATTITUDE v/1 1:1 #2; v/1 1:1 is gone: cleared; demo.Point m/1/point; "
        "m/1/point is gone: shut down; message of the server: hello");
    row("schemas by the names of topics",
        text("f/_schemas/demo.Point/%1 : S | f/a/b/demo.Point : P1 | f/a/b : P1").arg(m_hash),
        "demo.Point f/a/b/demo.Point; not decodable: f/a/b: nothing says what it is; it begins with "
        "09 00 00 00 00 00 00 E0 3F 10 81 80 00; f/a/b (unknown content, not decodable) f/a/b");
    row("a schema that is of no use",
        text("s type=demo.Point schemaencoding=protobuf : rubbish | f/1 dataschema=mqtt:s : P1 | f/1 dataschema=mqtt:s "
             ": P2"),
        "not decodable: f/1: the schema demo.Point cannot be used: the schema is no serialized "
        "FileDescriptorSet; "
        "f/1 (unknown content, not decodable) f/1; f/1 (unknown content, not decodable) f/1");
}

void tst_EnvelopeStreamDecoder::payloadsAreWhatTheyAreSaidToBeOrLookLike()
{
    QFETCH(QString, given);
    QFETCH(QString, expected);
    Definitions definitions;
    QStringList errors;
    QVERIFY(definitions.load(m_folder.write(McapFixtures::schema()), QStringList(), &errors));
    QString error;
    for (const char* rule : {"m/+/point/#=demo.Point", "m/frames=mavlink", "m/#=json"})
        QVERIFY(definitions.addTopicType(text(rule), &error));
    const QByteArray bytes = m_script.bytes(given);
    for (const int piece : {1 << 20, 1}) {
        Decoding decoding(&definitions);
        feedAll(decoding.decoder.get(), bytes, decoding.found.get(), piece);
        QCOMPARE(decoding.found->told(), expected);
    }
    // A type of all messages is for those that nothing else is said of.
    Decoding typed(&definitions, text("demo.Point"));
    feedAll(typed.decoder.get(), m_script.bytes(text("a : P1 | m/json : {\"a\":1}")), typed.found.get());
    QCOMPARE(typed.found->told(), text("demo.Point a; json m/json"));
}

void tst_EnvelopeStreamDecoder::rulesAreChecked_data()
{
    QTest::addColumn<QString>("expected");
    for (const char* row :
         {"a/b: FILTER=TYPE is expected", "=json: the filter of topics is empty", "a/=: there is no type \"\"",
          "a/#/b=json: \"#\" stands only at the end", "a/b+=json: \"b+\": a wildcard stands for whole levels",
          "a.>.b=json: \">\" stands only at the end", "a=demo.Car: no schema is loaded"})
        QTest::newRow(row) << text(row);
}

void tst_EnvelopeStreamDecoder::rulesAreChecked()
{
    QFETCH(QString, expected);
    Definitions definitions;
    QString error;
    QVERIFY(!definitions.addTopicType(expected.section(text(": "), 0, 0), &error));
    QCOMPARE(error, expected);
}

void tst_EnvelopeStreamDecoder::messagesWaitForTheirSchemaAndNotForLong()
{
    Definitions definitions;
    Decoding decoding(&definitions);
    const auto feed = [&](const QString& script, qint64 time) {
        const QByteArray bytes = m_script.bytes(script);
        decoding.decoder->feed(bytes.constData(), int(bytes.size()), time, decoding.found.get());
        const QString told = decoding.found->told();
        decoding.found->lines.clear();
        return told;
    };
    const QString schema = text("s/1 type=demo.Point schemaencoding=protobuf : S");
    QCOMPARE(feed(text("a dataschema=mqtt:s/1 : P1 | b dataschema=mqtt:s/2 : P1"), Second), QString());
    QCOMPARE(feed(text("a dataschema=mqtt:s/1 : P2 | ") + schema, 3 * Second / 2),
             text("demo.Point a @1000000; demo.Point a @1500000"));
    const QString missing = text("not decodable: b: its schema, s/2, did not come; b (unknown content, "
                                 "not decodable) b @7000000");
    QCOMPARE(feed(text("a dataschema=mqtt:s/1 : P2"), 6 * Second), text("demo.Point a @6000000"));
    QCOMPARE(feed(text("a dataschema=mqtt:s/1 : P2"), 7 * Second), text("demo.Point a @7000000; ") + missing);
    // It may come all the same. Of another the server says that there is none.
    QCOMPARE(feed(text("s/2 type=demo.Point schemaencoding=protobuf : S | b dataschema=mqtt:s/2 : P2"), 8 * Second),
             text("demo.Point b @8000000"));
    QCOMPARE(feed(text("c dataschema=mqtt:s/3 : P1 | s/3 gone : "), 9 * Second),
             text("not decodable: c: its schema, s/3, did not come; c (unknown content, not decodable) c "
                  "@9000000"));
    // Not with any number of messages, and not behind the end.
    const QString large = QString(5 << 20, QLatin1Char('x'));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(feed(text("d dataschema=mqtt:s/4 : ") + large, 10 * Second), QString());
    QCOMPARE(
        feed(text("d dataschema=mqtt:s/4 : ") + large, 10 * Second).count(text("(unknown content, not decodable) d")),
        4);
    QCOMPARE(feed(text("e dataschema=mqtt:s/5 : P1"), 11 * Second), QString());
    decoding.decoder->finish(decoding.found.get());
    QVERIFY(decoding.found->told().contains(text("e: its schema, s/5, did not come")));
}

void tst_EnvelopeStreamDecoder::numbersAreCountedAsTheirFormatsHaveThem()
{
    Definitions definitions;
    Decoding decoding(&definitions);
    MessageStatisticsCoordinator coordinator;
    ReceptionMonitor monitor(&coordinator);
    monitor.begin(decoding.decoder.get());
    m_script.define("W", MavlinkScript().bytes(text("H253 H254 H256"))); // of which one byte is sent
    const QByteArray bytes =
        m_script.bytes(text("v : W | j id=r-255 : {} | j id=r-256 : {} | j id=r-259 : {} | j kept id=r-900 : {}"));
    feedAll(decoding.decoder.get(), bytes, &monitor);
    QStringList lost;
    for (const MessageStatisticsCoordinator::SenderStatistics& sender : coordinator.getSenderStatistics())
        lost.append(text("%1 %2 of %3").arg(sender.name).arg(sender.lost).arg(sender.received));
    QCOMPARE(lost.join(text(", ")), text("v 1:1 1 of 3, j 2 of 4"));
}

void tst_EnvelopeStreamDecoder::damageCostsWhatIsDamaged()
{
    Definitions definitions;
    const QByteArray first = m_script.bytes(text("a : {\"x\":1}"));
    const QByteArray second = m_script.bytes(text("b p=q : {\"x\":1}"));
    for (int i = 0; i < first.size(); ++i) {
        for (const char change : {'\x01', '\x80'}) {
            QByteArray damaged = first;
            damaged[i] = char(damaged.at(i) ^ change);
            Decoding decoding(&definitions);
            feedAll(decoding.decoder.get(), damaged + second, decoding.found.get());
            // A size that became larger, but not too large to be believed, costs what lies there.
            if (i < 4 || i > 7)
                QCOMPARE(decoding.found->messages.value(decoding.found->messages.size() - 1), text("b b"));
        }
    }
    for (const int piece : {1, 1 << 20}) {
        Decoding decoding(&definitions);
        feedAll(decoding.decoder.get(), QByteArray(20000, 'x'), decoding.found.get(), piece);
        QCOMPARE(decoding.found->told(), text("16384 bytes skipped; 3616 bytes skipped"));
    }
    for (int size = 1; size < second.size(); ++size) {
        Decoding decoding(&definitions);
        feedAll(decoding.decoder.get(), first + second.left(size), decoding.found.get());
        QCOMPARE(decoding.found->told(), text("a a; stream ends inside a frame, after %1")
                                             .arg(size == 1 ? text("1 byte") : text("%1 bytes").arg(size)));
    }
}

void tst_EnvelopeStreamDecoder::thereIsAnEndToTopics()
{
    Definitions definitions;
    Decoding decoding(&definitions);
    const QByteArray tail(600, 'x'); // of long names fewer have room
    for (int i = 0; i < 60000; ++i) {
        const QByteArray bytes = m_script.bytes(text("%1/%2 : off").arg(QLatin1String(tail)).arg(i % 59999));
        decoding.decoder->feed(bytes.constData(), int(bytes.size()), Second, decoding.found.get());
    }
    QCOMPARE(decoding.found->messages.size(), 60000);
    QCOMPARE(
        decoding.found->problems.filter(text("there are more than 20000 topics: the 5001 oldest are forgotten")).size(),
        8);
    QVERIFY(decoding.found->messages.constLast().endsWith(text("(other topics) @1000000")) ||
            decoding.found->messages.at(59998).contains(text("(other topics)")));
}

QTEST_GUILESS_MAIN(tst_EnvelopeStreamDecoder)

#include "tst_envelopestreamdecoder.moc"
