#include "mcapfixtures.h"
#include "samplemessage.h"
#include "shellrun.h"
#include "testbase.h"
#include "testfolder.h"
#include "waitfor.h"

#include <QUdpSocket>

namespace
{

const QByteArray Values = "0709002A0100000203510403";
const QByteArray Heartbeat1 = "FE0901" + Values + "BA64";
const QByteArray Heartbeat2 = "FE0902" + Values + "84E7";
const QByteArray Unknown = "FE05040709C93132333435F84B";

} // namespace

/** What corvel-dump prints, and what it complains of. */
class TestDump : public TestBase
{
    Q_OBJECT

private:
    TestFolder m_folder;

    void writeHex(const char* name, const QByteArray& hex) { m_folder.write(text(name), QByteArray::fromHex(hex)); }

    void writeMcap(const char* name, const std::function<void(McapFixtures::Recording*)>& fill,
                   McapWriter::Compression compression = McapWriter::Zstd, int chunkSize = 1000)
    {
        McapFixtures::Recording recording(McapFixtures::settings(compression, chunkSize));
        fill(&recording);
        m_folder.write(text(name), recording.finished());
    }

private Q_SLOTS:
    void initTestCase();
    void printsWhatThereIs();
    void saysWhatIsWrong();
    void aPipeCarriesTheTimeOfArrival();
    void aLiveInputRunsUntilItIsTerminated();
};

void TestDump::initTestCase()
{
    using namespace SampleMessage;
    m_folder.write("test.xml", Dialect);
    writeHex("h.tlog", "0004F94AE6B16240 FE0911" + Values + "6DB2 0000000000000000 FE0912" + Values +
                           "5331 0384440CCC736000 FE09FF" + Values + "6D33");
    writeHex("s.bin", Sample1 + Sample2 + Sample3);
    writeHex("good.bin", Heartbeat1 + Heartbeat2);
    writeHex("long.bin", (Heartbeat1 + Heartbeat2).repeated(20000));
    writeHex("trouble.bin", Heartbeat1 + "6E6F697365" + Heartbeat2 + "FE0903 0709002A0100000303510403 6E99" + Unknown +
                                "FE0905" + Values + "0397" + Unknown + "FE0906" + Values + "3D14" +
                                "FE0907 0709002A0100000203");
    // A frame of a wrong length, and one with a feature that nobody knows.
    writeHex("odd.bin", Heartbeat1 + "FE08080709002A0100000203510400F2" + "FD0902000507090000002A0100000203510403EBC6" +
                            Heartbeat2);
    m_folder.write("car.proto", "syntax = 'proto3'; package t;\n"
                                "message Part { optional int32 n = 1; repeated Part parts = 2; }\n"
                                "message Car { repeated Part parts = 1; Part spare = 2; }\n");
    writeHex("car", "0C 0A06 1202 0805 1200 0A02 0807"); // parts {parts {n 5}, parts {}} and {n 7}
    m_folder.write("car.json", "{\"messages\": {\"t.Car\": {\"fields\": {\"parts\": {\"confidential\": true}}}}}");
    m_folder.write("lap.proto", "syntax = 'proto3'; package t;\n"
                                "import 'google/protobuf/timestamp.proto';\n"
                                "import 'google/protobuf/duration.proto';\n"
                                "message Lap { google.protobuf.Timestamp start = 1;\n"
                                "  repeated google.protobuf.Duration parts = 2; }\n");
    writeHex("lap", "0C 0A04 0805 1007 1200 1202 1003");

    using namespace McapFixtures;
    writeMcap("good.mcap",
              [](Recording* recording) { recording->writer.writeMessage(recording->addPoints("/p"), 0, 0, point(1)); });
    // Two schemas of one name, and each of them with two channels of one topic.
    writeMcap("names.mcap", [](Recording* recording) {
        McapWriter& writer = recording->writer;
        const QByteArray longer = schema() + part(1, part(1, "more.proto"));
        for (int i = 0; i < 4; ++i) {
            const quint16 type = writer.addSchema("demo.Point", "protobuf", i < 2 ? schema() : longer);
            writer.writeMessage(writer.addChannel("/p", "protobuf", type), 1, quint64(i) * Millisecond, point(i));
        }
    });
    writeMcap("times.mcap", [](Recording* recording) {
        const quint16 channel = recording->addPoints("/p");
        for (const quint64 time : {Q_UINT64_C(1700000000123456789), Q_UINT64_C(1700000000123457000)})
            recording->writer.writeMessage(channel, 7, time, point(1));
        recording->writer.flush();
        // Sent a nanosecond before.
        recording->buffer.write(record(5, little(channel) + little(quint32(8)) +
                                              little(Q_UINT64_C(1700000000123457001)) +
                                              little(Q_UINT64_C(1700000000123457000)) + point(1)));
    });
    const auto undecodable = [](Recording* recording) {
        const quint16 channels[] = {recording->writer.addChannel("/c", "cbor", 0),
                                    recording->writer.addChannel("/p", "protobuf", 0), 9};
        for (int i = 0; i < 6; ++i)
            recording->writer.writeMessage(channels[i % 3], 0, quint64(i), "{}");
    };
    writeMcap("once.mcap", undecodable, McapWriter::NoCompression, 0);

    m_folder.write("text", QByteArray("Not a recording.\n").repeated(99));
    m_folder.write("empty", "");
}

void TestDump::printsWhatThereIs()
{
    static const TextRow rows[] = {
        {"corvel-dump h.tlog",
         "{'time':'2014-05-13T16:53:20.123456Z','format':'corvel','sender':'7:9','type':'HEARTBEAT','sequence':17,"
         "'fields':{'type':2,'autopilot':3,'base_mode':81,'custom_mode':298,'system_status':4,'mavlink_version':3}}\n"
         "{'time':'1970-01-01T00:00:00.000000Z',...,'sequence':18,...}\n"
         "{'time':'+10000-01-01T00:00:00.000000Z',...,'sequence':255,...}"},

        // Raw values are exact.
        {"corvel-dump --dialect test.xml s.bin",
         "{'time':null,'format':'test','sender':'7:9','type':'SAMPLE','sequence':1,'fields':{'letter':65,"
         "'least':-9223372036854775808,'most':18446744073709551615,'tenth':0.1,'tenthf':0.1,'none':'nan',"
         "'below':'-inf','text':'a\\'\\\\\\n\xC3\xA9\xEF\xBF\xBD','list':[1,0,65535],'lights':13}}\n"
         "...'sequence':2,...'text':'12345678',...}\n"
         "...'sequence':3,...'text':'',...}"},
        {"corvel-dump --dialect test.xml --interpreted s.bin | sed -n 2p",
         "...'letter':'A',...'tenthf':'0.1 m/s',...'text':'12345678','list':['1','0','65535'],"
         "'lights':'LEFT | RIGHT | 0x8'}}"},

        // Only what is selected is printed.
        {"corvel-dump --dialect test.xml --select test/SAMPLE/tenth --select '*/*/letter' s.bin | head -n 1",
         "...'fields':{'tenth':0.1,'letter':65}}"},
        {"corvel-dump --dialect test.xml --select '*/SAMPLE/list[2]' --select '*/SAMPLE/lights/RIGHT' s.bin | head -n "
         "1",
         "...'fields':{'list[2]':65535,'lights/RIGHT':true}}"},
        {"corvel-dump --dialect test.xml --select '*/SAMPLE' s.bin | sed -n 3p", "...'letter':65,...'lights':13}}"},
        {"corvel-dump --select '*/ATTITUDE' good.bin", ""},
        {"corvel-dump --dialect test.xml --select '*/SAMPLE/tenth @ 7:*' --select '@ 8:9' s.bin | head -n 1",
         "...'fields':{'tenth':0.1}}\n! corvel-dump: --select \"@ 8:9\": nothing ... came from such a sender"},
        {"corvel-dump --dialect test.xml --select '*/SAMPLE/tenth @ 7' --select ' @ 7:9' s.bin | sed -n 3p",
         "...'letter':65,...'lights':13}}\n! corvel-dump: --select \"*/SAMPLE/tenth @ 7\": nothing ..."},

        // A path through repeated fields is every element, and what is hidden as a whole is not to be had in pieces.
        {"corvel-dump --schema car.proto --type t.Car --framing varint --select '*/t.Car/spare/parts' "
         "--select '*/t.Car/parts/n' --select '*/t.Car/parts[*]/n' --select '*/t.Car/parts/parts/n' car",
         "...'fields':{'parts/n':[null,7],'parts/parts/n':[[5,null],[]]}}"},
        {"corvel-dump --schema car.proto --type t.Car --framing varint --select '*/t.Car/parts[0]/parts/n' "
         "--select '*/t.Car/parts/parts[0]/n' --select '*/t.Car/parts[1]/parts[0]/n' --select '*/t.Car/parts/parts' "
         "car",
         "...'fields':{'parts[0]/parts/n':[5,null],'parts/parts[0]/n':[5,null],"
         "'parts/parts':[[{'n':5,'parts':[]},{'parts':[]}],[]]}}"},
        {"corvel-dump --schema car.proto --type t.Car --framing varint --annotations car.json "
         "--select '*/t.Car/parts[1]/n' car",
         "...'fields':{'parts[1]/n':null}}"},

        // Times of Protocol Buffers are two numbers, and those of MCAP have nanoseconds.
        {"corvel-dump --schema lap.proto --type t.Lap --framing varint lap",
         "...'fields':{'start':{'seconds':5,'nanos':7},"
         "'parts':[{'seconds':0,'nanos':0},{'seconds':0,'nanos':3}]}}"},
        {"corvel-dump --schema lap.proto --type t.Lap --framing varint --select '*/t.Lap/parts[1]' lap",
         "...'fields':{'parts[1]':{'seconds':0,'nanos':3}}}"},
        {"corvel-dump --schema lap.proto --type t.Lap --framing varint --interpreted lap",
         "...'fields':{'start':'1970-01-01T00:00:05.000000007Z','parts':['0 s','0.000000003 s']}}"},
        {"corvel-dump times.mcap | cut -d , -f 1,2",
         "{'time':'...:20.123456789Z','format':'protobuf'\n"
         "{'time':'...:20.123457000Z','format':'protobuf'\n"
         "{'time':'...:20.123457001Z','published':'...:20.123457000Z'\n"
         "! times.mcap at byte ...: checksum failure: the data of the file should have ..."},

        // An object with two members of one name is read as one with the second.
        {"corvel-dump --stats names.mcap",
         "...'types':{'demo.Point':{...'messages':2,...},'demo.Point#2':{...'messages':2,...}},"
         "'checksum...'senders':{'/p':{'messages':4,...}}...}"},

        // Whoever has enough may close the output.
        {"corvel-dump long.bin | head -n 1 | cut -c 1-12", "{'time':null"},
        {"corvel-dump long.bin > /dev/full", "! corvel-dump: standard output: No space left on device\n= 2"},
    };
    check(rows, m_folder.path());
}

void TestDump::saysWhatIsWrong()
{
    static const TextRow rows[] = {
        {"corvel-dump trouble.bin | cut -d , -f 5",
         "'sequence':1\n'sequence':2\n'sequence':5\n'sequence':6\n"
         "! trouble.bin at byte 17: 5 bytes skipped\n"
         "! trouble.bin at byte 39: checksum failure, id 0, sender 7:9\n"
         "! trouble.bin at byte 56: unknown message id 201, sender 7:9\n"
         "! trouble.bin at byte 116: stream ends inside a frame, after 12 bytes, id 0, sender 7:9"},
        {"corvel-dump --stats trouble.bin",
         "{'input':'trouble.bin','messages':4,"
         "'types':{'HEARTBEAT':{'id':0,'format':'corvel','messages':4,'senders':{'7:9':4}}},"
         "'checksumFailures':{'0':1},'unknownIds':{'201':2},'unsupportedFrames':0,'lengthMismatches':0,"
         "'skippedBytes':5,'truncatedFrames':1,'truncatedBytes':12,"
         "'statistics':[{'type':'HEARTBEAT','sender':'7:9','id':0,'messages':4,'noTime':4,'unknownInterval':0,"
         "'intervals':{},'gapCount':0,'missingEpochs':0,'gaps':[]},"
         "{'type':null,'sender':'7:9','id':201,'messages':2,'noTime':2,'unknownInterval':0,"
         "'intervals':{},'gapCount':0,'missingEpochs':0,'gaps':[]}],"
         "'senders':{'7:9':{'messages':6,'lost':1,'repeated':1,'late':0,'restarts':0,'failed':1}},"
         "'events':{'CRC error':1,'Unknown message':2,'Truncated message':1,'Resynchronisation':1}}\n"
         "! ...at byte 17...\n! ...at byte 39...\n! ...at byte 56...\n! ...at byte 116..."},
        {"corvel-dump --stats odd.bin", "{...'messages':2,...'unsupportedFrames':1,'lengthMismatches':1,...}\n! "
                                        "odd.bin at byte 17: ...\n! odd.bin at byte 33: ..."},
        // A channel that cannot be decoded is reported once.
        {"corvel-dump --format mcap once.mcap", "! ...\n! ...\n! ..."},
        {"corvel-dump --stats once.mcap", "{...}\n! ...\n! ...\n! ..."},

        {"corvel-dump /bin/sh", "! corvel-dump: /bin/sh: not recognised: it begins with 7F 45 4C 46 ...\n= 2"},
        {"corvel-dump text",
         "! corvel-dump: text: not recognised: it begins with 4E 6F 74 20 61 20 72 65 63 6F 72 64 69 6E 67 2E; "
         "what can be read: MCAP recordings (mcap), messages of a broker with their topics (envelopes), MAVLink frames "
         "with times before them (tlog), "
         "MAVLink frames (raw), ...\n= 2"},
        {"corvel-dump empty", "! corvel-dump: empty: the input is empty\n= 2"},
        {"true | corvel-dump -", "! corvel-dump: standard input: the input is empty\n= 2"},
        {"corvel-dump none", "! corvel-dump: none: No such file or directory\n= 2"},
        {"mkdir d; corvel-dump d", "! corvel-dump: d: there is no recording in this folder: no file *.mcap\n= 2"},
        {"corvel-dump /proc/self/mem", "! corvel-dump: /proc/self/mem: Input/output error\n= 2"},
        {"corvel-dump --format raw /proc/self/mem", "! corvel-dump: /proc/self/mem: Input/output error\n= 2"},
        {"corvel-dump --dialect none.xml good.bin",
         "! corvel-dump: none.xml:1: cannot be read: No such file or directory\n= 2"},
        {"corvel-dump --type demo.Point good.mcap",
         "! corvel-dump: good.mcap: an MCAP recording says itself of what types its messages are; none can be named\n"
         "= 2"},
        {"corvel-dump --type demo.Point --format mcap good.mcap",
         "! corvel-dump: good.mcap: an MCAP recording says itself ...\n= 2"},
        {"corvel-dump --format mcap good.bin",
         "! corvel-dump: good.bin: not recognised: it begins with FE 09 01 07 09 00 2A ...\n= 2"},
        {"corvel-dump --format tlog good.mcap",
         "! corvel-dump: good.mcap: not recognised: it begins with 89 4D 43 41 50 30 0D ...\n= 2"},
        {"corvel-dump --format mcap empty", "! corvel-dump: empty: the input is empty\n= 2"},
        {"true | corvel-dump --format tlog -", "! corvel-dump: standard input: the input is empty\n= 2"},

        {"corvel-dump", "! corvel-dump: no input is named\n! corvel-dump: see corvel-dump --help\n= 1"},
        {"corvel-dump good.bin good.bin", "! corvel-dump: more than one input is named\n...\n= 1"},
        {"corvel-dump --nonsense good.bin", "! corvel-dump: Unknown option 'nonsense'.\n...\n= 1"},
        {"corvel-dump --format xml good.bin", "! corvel-dump: --format is \"xml\"; it can be \"mcap\", \"envelopes\", "
                                              "\"tlog\", \"raw\" or \"delimited\"\n...\n= 1"},
        {"corvel-dump --format raw --format raw good.bin", "! corvel-dump: --format can be given once\n...\n= 1"},
        {"corvel-dump udp::99999", "! corvel-dump: udp::99999: \"99999\" is no port; ports are 1 to 65535\n...\n= 1"},
        {"corvel-dump --interpreted --stats good.bin",
         "! corvel-dump: --stats prints no values that --interpreted could change\n...\n= 1"},
        {"corvel-dump --dialect test.xml --select '*/NOTHING' s.bin",
         "! corvel-dump: --select \"*/NOTHING\" names ...\n= 1"},
    };
    check(rows, m_folder.path());
}

void TestDump::aPipeCarriesTheTimeOfArrival()
{
    const ShellRun run("cat good.bin | corvel-dump - | tail -n 1", m_folder.path());
    const QDateTime arrival = QDateTime::fromString(run.object().value("time").toString(), Qt::ISODate);
    QVERIFY2(qAbs(arrival.secsTo(QDateTime::currentDateTimeUtc())) < 100, run.output);
}

void TestDump::aLiveInputRunsUntilItIsTerminated()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress(QHostAddress::LocalHost), 0));
    const quint16 port = socket.localPort();
    socket.close();
    QByteArray said;
    // Sends datagrams to a program until it has said something.
    const auto run = [&](const char* options, const QByteArrayList& datagrams, const char* expected) {
        said.clear();
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        startInShell(&process, QString("exec corvel-dump udp:127.0.0.1:%1 %2").arg(port).arg(options));
        const bool isTold = waitFor([&] {
            for (const QByteArray& hex : datagrams)
                socket.writeDatagram(QByteArray::fromHex(hex), QHostAddress::LocalHost, port);
            said += process.readAll();
            return said.contains(expected);
        });
        process.terminate();
        process.waitForFinished();
        said += process.readAll();
        return isTold && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    };
    // The half frame at the end of a datagram is no beginning of the next.
    QVERIFY2(run("", {Heartbeat1.left(20), Heartbeat2}, "\"type\":\"HEARTBEAT\",\"sequence\":2,"), said);
    QVERIFY2(said.contains("stream ends inside a frame, after 10 bytes"), said);
    QVERIFY2(run("--stats", {"6E6F697365"}, "bytes skipped"), said);
    QVERIFY2(said.contains("{\"input\":\"udp:127.0.0.1:" + QByteArray::number(port)), said);
    QVERIFY2(!said.contains("\"skippedBytes\":0,"), said);
}

QTEST_GUILESS_MAIN(TestDump)
#include "tst_dump.moc"
