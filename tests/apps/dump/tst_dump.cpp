#include "dumprunner.h"
#include "mcapfixtures.h"
#include "testbase.h"
#include "waitfor.h"

#include <QJsonArray>
#include <QTemporaryDir>
#include <QtEndian>
#include <QUdpSocket>

#include <cstring>
#include <limits>

namespace
{

const char Dialect[] = R"(<?xml version="1.0"?>
<mavlink>
  <enums>
    <enum name="LIGHTS" bitmask="true">
      <entry value="1" name="LEFT"/>
      <entry value="4" name="RIGHT"/>
    </enum>
  </enums>
  <messages>
    <message id="200" name="SAMPLE">
      <description>All kinds of fields.</description>
      <field type="char" name="letter">x</field>
      <field type="int64_t" name="least">x</field>
      <field type="uint64_t" name="most">x</field>
      <field type="double" name="tenth">x</field>
      <field type="float" name="tenthf" units="m/s">x</field>
      <field type="float" name="none">x</field>
      <field type="float" name="below">x</field>
      <field type="char[8]" name="text">x</field>
      <field type="uint16_t[3]" name="list">x</field>
      <field type="uint8_t" name="lights" enum="LIGHTS">x</field>
      <extensions/>
      <field type="uint8_t" name="extra">x</field>
    </message>
  </messages>
</mavlink>
)";

quint16 crc(const QByteArray& bytes, quint16 value = 0xFFFF)
{
    for (const char byte : bytes) {
        value ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            value = static_cast<quint16>(value & 1 ? (value >> 1) ^ 0x8408 : value >> 1);
    }
    return value;
}

template <typename Number>
QByteArray littleEndian(Number number)
{
    QByteArray bytes(int(sizeof number), 0);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <typename Real, typename Bits>
QByteArray bitsOf(Real number)
{
    Bits bits;
    std::memcpy(&bits, &number, sizeof bits);
    return littleEndian(bits);
}

// What sender and receiver agree on about SAMPLE: name and fields as they lie in the frame.
quint8 sampleCrcExtra()
{
    QByteArray definition = "SAMPLE int64_t least uint64_t most double tenth float tenthf float none float below "
                            "uint16_t list ";
    definition += char(3);
    definition += "char letter char text ";
    definition += char(8);
    definition += "uint8_t lights ";
    const quint16 value = crc(definition);
    return static_cast<quint8>(value ^ (value >> 8));
}

QByteArray samplePayload(const QByteArray& text)
{
    const float infinity = std::numeric_limits<float>::infinity();
    return littleEndian(std::numeric_limits<qint64>::min()) + littleEndian(std::numeric_limits<quint64>::max()) +
           bitsOf<double, quint64>(0.1) + bitsOf<float, quint32>(0.1f) +
           bitsOf<float, quint32>(std::numeric_limits<float>::quiet_NaN()) + bitsOf<float, quint32>(-infinity) +
           littleEndian(quint16(1)) + littleEndian(quint16(0)) + littleEndian(quint16(65535)) + "A" +
           text.leftJustified(8, '\0', true) + "\x0D";
}

// A frame of version 1 of system 7, component 9.
QByteArray frame(quint8 id, quint8 sequence, const QByteArray& payload, quint8 crcExtra)
{
    QByteArray body;
    body += char(payload.size());
    body += char(sequence);
    body += "\x07\x09";
    body += char(id);
    body += payload;
    return '\xFE' + body + littleEndian(crc(body + char(crcExtra)));
}

QByteArray sample(quint8 sequence, const QByteArray& text = "text")
{
    return frame(200, sequence, samplePayload(text), sampleCrcExtra());
}

QByteArray heartbeat(quint8 sequence)
{
    return frame(0, sequence, QByteArray("\x2a\x01\x00\x00\x02\x03\x51\x04\x03", 9), 50);
}

QByteArray timed(quint64 microseconds, const QByteArray& frame)
{
    QByteArray stamp(8, 0);
    qToBigEndian(microseconds, stamp.data());
    return stamp + frame;
}

} // namespace

class TestDump : public TestBase
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
    QStringList withDialect(const QStringList& arguments)
    {
        return QStringList() << "--dialect" << write("test.xml", Dialect) << arguments;
    }

    static void finish(QProcess* process)
    {
        process->terminate();
        QVERIFY(waitFor([&] { return process->state() == QProcess::NotRunning; }));
        QCOMPARE(process->exitStatus(), QProcess::NormalExit);
        QCOMPARE(process->exitCode(), 0);
    }

private Q_SLOTS:
    void aHeartbeatIsOneLine()
    {
        const QString path = write("h.tlog", timed(1400000000123456, heartbeat(17)) + timed(0, heartbeat(18)) +
                                                 timed(253402300800000000, heartbeat(255)));
        const DumpRun run({path});
        QCOMPARE(run.errors, QStringList());
        QCOMPARE(run.status, 0);
        const QByteArray rest = ",\"fields\":{\"type\":2,\"autopilot\":3,\"base_mode\":81,\"custom_mode\":298,"
                                "\"system_status\":4,\"mavlink_version\":3}}";
        const QByteArray sender = "Z\",\"format\":\"corvel\",\"sender\":\"7:9\",\"type\":\"HEARTBEAT\",\"sequence\":";
        QCOMPARE(run.lines(), QList<QByteArray>()
                                  << "{\"time\":\"2014-05-13T16:53:20.123456" + sender + "17" + rest
                                  << "{\"time\":\"1970-01-01T00:00:00.000000" + sender + "18" + rest
                                  << "{\"time\":\"+10000-01-01T00:00:00.000000" + sender + "255" + rest);
    }

    // An object with two members of one name is read as one with the second.
    void namesOfStatisticsAreThereOnce()
    {
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::Zstd, 1000));
        McapWriter& writer = recording.writer;
        const QByteArray longer = McapFixtures::schema() + McapFixtures::part(1, McapFixtures::part(1, "more.proto"));
        for (int i = 0; i < 4; ++i)
            writer.writeMessage(
                writer.addChannel("/p", "protobuf",
                                  writer.addSchema("demo.Point", "protobuf", i < 2 ? McapFixtures::schema() : longer)),
                1, quint64(i) * McapFixtures::Millisecond, McapFixtures::point(i));
        const DumpRun run({"--stats", write("names.mcap", recording.finished())});
        QCOMPARE(run.errors, QStringList());
        QCOMPARE(run.output.count("\"demo.Point\":{"), 1);
        QCOMPARE(run.object().value("types").toObject().value("demo.Point#2").toObject().value("messages").toInt(), 2);
        QCOMPARE(run.object().value("senders").toObject().size(), 1);
        QCOMPARE(run.output.count("\"/p\":{"), 1);
        QCOMPARE(run.object().value("senders").toObject().value("/p").toObject().value("messages").toInt(), 4);
    }

    void rawValuesAreExact()
    {
        const QByteArray text = "a\"\\\n\xC3\xA9\xFF";
        const DumpRun run(withDialect({write("s.bin", sample(1, text) + sample(2, "12345678") + sample(3, ""))}));
        QCOMPARE(run.errors, QStringList());
        const QByteArray head =
            "{\"time\":null,\"format\":\"test\",\"sender\":\"7:9\",\"type\":\"SAMPLE\",\"sequence\":";
        const QByteArray numbers = ",\"fields\":{\"letter\":65,\"least\":-9223372036854775808,"
                                   "\"most\":18446744073709551615,\"tenth\":0.1,\"tenthf\":0.1,\"none\":\"nan\","
                                   "\"below\":\"-inf\",\"text\":";
        const QByteArray tail = ",\"list\":[1,0,65535],\"lights\":13}}";
        QCOMPARE(run.lines(), QList<QByteArray>()
                                  << head + "1" + numbers + "\"a\\\"\\\\\\n\xC3\xA9\xEF\xBF\xBD\"" + tail
                                  << head + "2" + numbers + "\"12345678\"" + tail
                                  << head + "3" + numbers + "\"\"" + tail);
    }

    void interpretedValuesAreTexts()
    {
        const DumpRun run(withDialect({"--interpreted", write("s.bin", sample(1) + sample(2))}));
        QCOMPARE(run.errors, QStringList());
        const QJsonObject fields = QJsonDocument::fromJson(run.lines().value(0)).object().value("fields").toObject();
        QCOMPARE(fields.value("tenthf").toString(), QString("0.1 m/s"));
        QCOMPARE(fields.value("lights").toString(), QString("LEFT | RIGHT | 0x8"));
        QCOMPARE(fields.value("text").toString(), QString("text"));
        QCOMPARE(fields.value("letter").toString(), QString("A"));
        QCOMPARE(QJsonDocument(fields.value("list").toArray()).toJson(QJsonDocument::Compact),
                 QByteArray("[\"1\",\"0\",\"65535\"]"));
        QVERIFY(!fields.contains("extra"));
    }

    void onlyWhatIsSelectedIsPrinted()
    {
        const QString path = write("select.bin", sample(1));
        const auto fieldsOf = [&](const QStringList& options) {
            const DumpRun run(withDialect(options + QStringList(path)));
            const QByteArray line = run.lines().value(0);
            return run.status == 0 ? line.mid(line.indexOf("\"fields\":")) : QByteArray::number(run.status);
        };
        QCOMPARE(fieldsOf({"--select", "test/SAMPLE/tenth", "--select", "*/*/letter"}),
                 QByteArray("\"fields\":{\"tenth\":0.1,\"letter\":65}}"));
        QCOMPARE(fieldsOf({"--select", "*/SAMPLE/list[2]", "--select", "*/SAMPLE/lights/RIGHT"}),
                 QByteArray("\"fields\":{\"list[2]\":65535,\"lights/RIGHT\":true}}"));
        QVERIFY(fieldsOf({"--select", "*/SAMPLE"}).contains("\"lights\":13"));
        QCOMPARE(fieldsOf({"--select", "*/NOTHING"}), QByteArray("1"));

        // A type that is not selected leaves no line at all.
        const DumpRun other({"--select", "*/ATTITUDE", write("h.bin", heartbeat(1))});
        QCOMPARE(other.status, 0);
        QCOMPARE(other.lines(), QList<QByteArray>());
    }

    void aPathThroughRepeatedFieldsIsEveryElement()
    {
        const QString schema = write("car.proto", "syntax = 'proto3'; package t;\n"
                                                  "message Part { optional int32 n = 1; repeated Part parts = 2; }\n"
                                                  "message Car { repeated Part parts = 1; Part spare = 2; }\n");
        // Parts {parts {n 5}, parts {}} and {n 7}
        const QByteArray car = QByteArray("\x0a\x06\x12\x02\x08\x05\x12\x00\x0a\x02\x08\x07", 12);
        const QString path = write("cars", char(car.size()) + car);
        const QString annotations = write("a.json", "{\"messages\": {\"t.Car\": {\"fields\": "
                                                    "{\"parts\": {\"confidential\": true}}}}}");
        const auto fieldsOf = [&](QStringList options) {
            options << "--schema" << schema << "--type"
                    << "t.Car"
                    << "--framing"
                    << "varint";
            const DumpRun run(options << path);
            const QByteArray line = run.lines().value(0);
            return run.status == 0 ? line.mid(line.indexOf("\"fields\":")) : run.errors.join('\n').toUtf8();
        };
        QCOMPARE(fieldsOf({"--select", "*/t.Car/spare/parts", "--select", "*/t.Car/parts/n", "--select",
                           "*/t.Car/parts[*]/n", "--select", "*/t.Car/parts/parts/n"}),
                 QByteArray("\"fields\":{\"parts/n\":[null,7],\"parts/parts/n\":[[5,null],[]]}}"));
        QCOMPARE(fieldsOf({"--select", "*/t.Car/parts[0]/parts/n", "--select", "*/t.Car/parts/parts[0]/n", "--select",
                           "*/t.Car/parts[1]/parts[0]/n", "--select", "*/t.Car/parts/parts"}),
                 QByteArray("\"fields\":{\"parts[0]/parts/n\":[5,null],\"parts/parts[0]/n\":[5,null],"
                            "\"parts/parts\":[[{\"n\":5,\"parts\":[]},{\"parts\":[]}],[]]}}"));
        // What is hidden as a whole is not to be had in pieces.
        QCOMPARE(fieldsOf({"--annotations", annotations, "--select", "*/t.Car/parts[1]/n"}),
                 QByteArray("\"fields\":{\"parts[1]/n\":null}}"));
    }

    void timesOfProtocolBuffersAreTwoNumbers()
    {
        const QString schema = write("times.proto", "syntax = 'proto3'; package t;\n"
                                                    "import 'google/protobuf/timestamp.proto';\n"
                                                    "import 'google/protobuf/duration.proto';\n"
                                                    "message Lap { google.protobuf.Timestamp start = 1;\n"
                                                    "  repeated google.protobuf.Duration parts = 2; }\n");
        const QByteArray lap("\x0a\x04\x08\x05\x10\x07\x12\x00\x12\x02\x10\x03", 12);
        const QString path = write("laps", char(lap.size()) + lap);
        const auto fieldsOf = [&](const QStringList& options) {
            const DumpRun run(QStringList{"--schema", schema, "--type", "t.Lap", "--framing", "varint", path}
                              << options);
            return run.output.mid(run.output.indexOf("\"fields\":")).trimmed();
        };
        QCOMPARE(fieldsOf({}), QByteArray("\"fields\":{\"start\":{\"seconds\":5,\"nanos\":7},\"parts\":"
                                          "[{\"seconds\":0,\"nanos\":0},{\"seconds\":0,\"nanos\":3}]}}"));
        QCOMPARE(fieldsOf({"--select", "*/t.Lap/parts[1]"}),
                 QByteArray("\"fields\":{\"parts[1]\":{\"seconds\":0,\"nanos\":3}}}"));
        QCOMPARE(fieldsOf({"--interpreted"}),
                 QByteArray("\"fields\":{\"start\":\"1970-01-01T00:00:05.000000007Z\",\"parts\":[\"0 s\",\""
                            "0.000000003 s\"]}}"));
    }

    void timesOfMcapHaveNanoseconds()
    {
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::Zstd, 1000));
        const quint16 channel = recording.addPoints("/p");
        for (const quint64 time : {Q_UINT64_C(1700000000123456789), Q_UINT64_C(1700000000123457000)})
            recording.writer.writeMessage(channel, 7, time, McapFixtures::point(1));
        recording.writer.flush();
        // Sent a nanosecond before.
        const QByteArray late = McapFixtures::little(channel) + McapFixtures::little(quint32(8)) +
                                McapFixtures::little(Q_UINT64_C(1700000000123457001)) +
                                McapFixtures::little(Q_UINT64_C(1700000000123457000)) + McapFixtures::point(1);
        recording.buffer.write(McapFixtures::record(5, late));
        const DumpRun run({write("times.mcap", recording.finished())});
        QStringList times;
        for (const QByteArray& line : run.lines()) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            times << object.value("time").toString().mid(17) + ' ' + object.value("published").toString().mid(17);
        }
        QCOMPARE(times, (QStringList{"20.123456789Z ", "20.123457000Z ", "20.123457001Z 20.123457000Z"}));
    }

    void aChannelThatCannotBeDecodedIsReportedOnce()
    {
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::NoCompression, 0));
        const quint16 channels[] = {recording.writer.addChannel("/j", "json", 0),
                                    recording.writer.addChannel("/p", "protobuf", 0), 9};
        for (int i = 0; i < 6; ++i)
            recording.writer.writeMessage(channels[i % 3], 0, quint64(i), "{}");
        for (const char* option : {"--format=mcap", "--stats"}) {
            const DumpRun run({option, write("once.mcap", recording.finished())});
            QCOMPARE(run.errors.size(), qsizetype(3));
        }
    }

    void troubleIsToldWithItsPlaceAndCounted()
    {
        QByteArray broken = heartbeat(3);
        broken[10] = char(broken[10] ^ 1);
        const QByteArray unknown = frame(201, 4, "12345", 0);
        const QString path = write("t.bin", heartbeat(1) + "noise" + heartbeat(2) + broken + unknown + heartbeat(5) +
                                                unknown + heartbeat(6) + heartbeat(7).left(12));
        const QStringList expected =
            QStringList() << path + " at byte 17: 5 bytes skipped"
                          << path + " at byte 39: checksum failure, id 0, sender 7:9"
                          << path + " at byte 56: unknown message id 201, sender 7:9"
                          << path + " at byte 116: stream ends inside a frame, after 12 bytes, id 0, sender 7:9";
        const DumpRun plain({path});
        QCOMPARE(plain.status, 0);
        QCOMPARE(plain.errors, expected);
        QCOMPARE(plain.lines().size(), qsizetype(4));

        const DumpRun stats({"--stats", path});
        QCOMPARE(stats.status, 0);
        QCOMPARE(stats.errors, expected);
        QCOMPARE(stats.output, QByteArray("{\"input\":\"" + path.toUtf8() +
                                          "\",\"messages\":4,\"types\":{\"HEARTBEAT\":{\"id\":0,\"format\":\"corvel\","
                                          "\"messages\":4,\"senders\":{\"7:9\":4}}},\"checksumFailures\":{\"0\":1},"
                                          "\"unknownIds\":{\"201\":2},\"unsupportedFrames\":0,\"lengthMismatches\":0,"
                                          "\"skippedBytes\":5,\"truncatedFrames\":1,\"truncatedBytes\":12,"
                                          "\"statistics\":[{\"type\":\"HEARTBEAT\",\"sender\":\"7:9\",\"id\":0,"
                                          "\"messages\":4,\"noTime\":4,\"unknownInterval\":0,\"intervals\":{},"
                                          "\"gapCount\":0,\"missingEpochs\":0,\"gaps\":[]},"
                                          "{\"type\":null,\"sender\":\"7:9\",\"id\":201,"
                                          "\"messages\":2,\"noTime\":2,\"unknownInterval\":0,\"intervals\":{},"
                                          "\"gapCount\":0,\"missingEpochs\":0,\"gaps\":[]}],"
                                          "\"senders\":{\"7:9\":{\"messages\":6,\"lost\":1,\"repeated\":1,\"late\":0,"
                                          "\"restarts\":0,\"failed\":1}},"
                                          "\"events\":{\"CRC error\":1,\"Unknown message\":2,\"Truncated message\":1,"
                                          "\"Resynchronisation\":1}}\n"));
    }

    void whatCannotBeReadIsSaid_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("error");
        QByteArray random(200000, 0);
        quint32 state = 1;
        for (char& byte : random) {
            state = state * 1664525 + 1013904223;
            byte = static_cast<char>(state >> 24);
        }
        const QString good = write("good.bin", heartbeat(1) + heartbeat(2));
        const auto row = [](const char* name, const QStringList& arguments, int status, const QString& error) {
            QTest::newRow(name) << arguments << status << "corvel-dump: " + error;
        };
        row("random", {write("random", random)}, 2, m_folder.filePath("random") + ": not recognised: it begins with ");
        row("text", {write("text", QByteArray("Not a recording.\n").repeated(99))}, 2,
            m_folder.filePath("text") +
                ": not recognised: it begins with 4E 6F 74 20 61 20 72 65 63 6F 72 64 69 6E 67 2E; what can be read: "
                "MCAP "
                "recordings (mcap), MAVLink frames with times before them (tlog), MAVLink frames (raw), ");
        row("empty", {write("empty", "")}, 2, m_folder.filePath("empty") + ": the input is empty");
        row("empty pipe", {"-"}, 2, "standard input: the input is empty");
        row("missing", {m_folder.filePath("none")}, 2, m_folder.filePath("none") + ": No such file or directory");
        row("folder", {m_folder.path()}, 2, m_folder.path() + ": Is a directory");
        row("fails while it is read", {"/proc/self/mem"}, 2, "/proc/self/mem: Input/output error");
        row("fails while it is decoded", {"--format", "raw", "/proc/self/mem"}, 2,
            "/proc/self/mem: Input/output error");
        row("missing dialect", {"--dialect", m_folder.filePath("none.xml"), good}, 2,
            m_folder.filePath("none.xml") + ":1: cannot be read: No such file or directory");
        row("no input", {}, 1, "no input is named");
        row("two inputs", {good, good}, 1, "more than one input is named");
        row("bad option", {"--nonsense", good}, 1, "Unknown option 'nonsense'.");
        row("bad format", {"--format", "xml", good}, 1,
            "--format is \"xml\"; it can be \"mcap\", \"tlog\", \"raw\" or "
            "\"delimited\"");
        row("bad port", {"udp::99999"}, 1, "udp::99999: \"99999\" is no port; ports are 1 to 65535");
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::Lz4, 100));
        recording.writer.writeMessage(recording.addPoints("/p"), 0, 0, McapFixtures::point(1));
        const QString mcap = write("good.mcap", recording.finished());
        const QString refusal = ": an MCAP recording says itself of what types its messages are; none can be named";
        row("mcap with a type", {"--type", "demo.Point", mcap}, 2, mcap + refusal);
        row("told mcap with a type", {"--type", "demo.Point", "--format", "mcap", mcap}, 2, mcap + refusal);
        row("no mcap", {"--format", "mcap", good}, 2, good + ": not recognised: it begins with FE 09 01 07 09 00 2A ");
        row("no tlog", {"--format", "tlog", mcap}, 2, mcap + ": not recognised: it begins with 89 4D 43 41 50 30 0D ");
        row("empty mcap", {"--format", "mcap", m_folder.filePath("empty")}, 2,
            m_folder.filePath("empty") + ": the input is empty");
        row("empty tlog", {"--format", "tlog", "-"}, 2, "standard input: the input is empty");
        row("values of counts", {"--interpreted", "--stats", good}, 1,
            "--stats prints no values that --interpreted could change");
        row("option twice", {"--format", "raw", "--format", "raw", good}, 1, "--format can be given once");
    }

    void whatCannotBeReadIsSaid()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QString, error);
        const DumpRun run(arguments);
        QCOMPARE(run.status, status);
        QVERIFY2(run.errors.value(0).startsWith(error), qPrintable(run.errors.value(0)));
        if (run.status == 1)
            QCOMPARE(run.output, QByteArray());
    }

    void aPipeCarriesTheTimeOfArrival()
    {
        const DumpRun run({"-"}, heartbeat(1) + heartbeat(2));
        QCOMPARE(run.status, 0);
        QCOMPARE(run.lines().size(), qsizetype(2));
        const QString time = QJsonDocument::fromJson(run.lines().value(0)).object().value("time").toString();
        const QDateTime arrival = QDateTime::fromString(time, Qt::ISODate);
        QVERIFY2(qAbs(arrival.secsTo(QDateTime::currentDateTimeUtc())) < 100, qPrintable(time));
    }

    void whoHasEnoughMayCloseTheOutput()
    {
        const QString path = write("long.bin", (heartbeat(1) + heartbeat(2)).repeated(20000));
        QProcess process;
        process.start("/bin/sh", {"-c", "\"$0\" \"$1\" | head -n 1 >&2; exit 0", CORVEL_DUMP_PROGRAM, path});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardError().count('\n'), qsizetype(1));

        process.start("/bin/sh", {"-c", "exec \"$0\" \"$1\" > /dev/full", CORVEL_DUMP_PROGRAM, path});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 2);
        QCOMPARE(process.readAllStandardError(), QByteArray("corvel-dump: standard output: No space left on device\n"));
    }

    void aLiveInputRunsUntilItIsTerminated()
    {
        QUdpSocket socket;
        QVERIFY(socket.bind(QHostAddress(QHostAddress::LocalHost), 0));
        const quint16 port = socket.localPort();
        socket.close();
        const QString address = QStringLiteral("udp:127.0.0.1:%1").arg(port);

        // The half frame at the end of a datagram is no beginning of the next.
        QProcess messages;
        messages.start(CORVEL_DUMP_PROGRAM, {address});
        QByteArray output;
        QByteArray errors;
        QVERIFY(waitFor([&] {
            socket.writeDatagram(heartbeat(1).left(10), QHostAddress::LocalHost, port);
            socket.writeDatagram(heartbeat(2), QHostAddress::LocalHost, port);
            output += messages.readAllStandardOutput();
            errors += messages.readAllStandardError();
            return output.contains("\"type\":\"HEARTBEAT\",\"sequence\":2,") &&
                   errors.contains("stream ends inside a frame, after 10 bytes");
        }));
        finish(&messages);

        QProcess stats;
        stats.setReadChannel(QProcess::StandardError);
        stats.start(CORVEL_DUMP_PROGRAM, {"--stats", address});
        QVERIFY(waitFor([&] {
            socket.writeDatagram("noise", QHostAddress::LocalHost, port);
            return stats.bytesAvailable() > 0;
        }));
        finish(&stats);
        const QByteArray counts = stats.readAllStandardOutput();
        const QJsonObject object = QJsonDocument::fromJson(counts).object();
        QVERIFY2(object.value("skippedBytes").toInt() >= 5, (stats.readAllStandardError() + counts).constData());
        QCOMPARE(object.value("input").toString(), address);
    }
};

QTEST_GUILESS_MAIN(TestDump)
#include "tst_dump.moc"
