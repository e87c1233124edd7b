#include "definitions.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "mcapfixtures.h"
#include "mcapstreamdecoder.h"
#include "messageoutput.h"
#include "outputkind.h"
#include "testbase.h"
#include "textrows.h"
#include "transcript.h"

#include <memory>

/** Where messages go; what comes of recordings in the monitor is tested with it. */
class TestMessageOutput : public TestBase
{
    Q_OBJECT

private:
    Definitions m_definitions;

    // Two points, the first of the one topic and the second of the other: channels 1 and 2.
    static QByteArray pointsOf(const QByteArray& first, const QByteArray& second)
    {
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::NoCompression, 0));
        const quint16 channels[] = {recording.addPoints(first), recording.addPoints(second)};
        for (int i = 0; i < 2; ++i) {
            const QByteArray point = McapFixtures::point(int((i == 0 ? first : second).size()));
            recording.writer.writeMessage(channels[i], 0, 1234567, quint64(1000001 + i), point.constData(),
                                          int(point.size()));
        }
        return recording.finished();
    }

private Q_SLOTS:
    void everyStreamHasAKind()
    {
        const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
        const MavlinkStreamDecoder mavlink(dialect.get(), MavlinkStreamDecoder::RawLayout);
        const McapStreamDecoder mcap(&m_definitions);
        QCOMPARE(OutputKind::findFor(&mavlink).getFileFilter(), text("MAVLink recordings (*.tlog)"));
        QCOMPARE(OutputKind::findFor(&mcap).getFileFilter(), text("MCAP recordings (*.mcap)"));
    }

    void whatCannotBeDecodedKeepsItsSchema()
    {
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::NoCompression, 0));
        const quint16 schema = recording.writer.addSchema("demo.Odd", "oddschema", "odd { }");
        const quint16 odd = recording.writer.addChannel("/odd", "oddities", schema);
        const quint16 bare = recording.writer.addChannel("/bare", "oddities", 0);
        for (const quint16 channel : {odd, bare, odd})
            recording.writer.writeMessage(channel, 0, 1, 1, "x", 1);
        const QByteArray bytes = recording.finished();
        McapStreamDecoder decoder(&m_definitions);
        QBuffer written;
        written.open(QIODevice::WriteOnly);
        const std::unique_ptr<MessageOutput> output(
            OutputKind::findFor(&decoder).create({&written, "test", &m_definitions}, &decoder));
        feedAll(&decoder, bytes, output.get());
        output->close();

        McapStreamDecoder again(&m_definitions);
        Transcript read(&again, false);
        feedAll(&again, written.data(), &read);
        QCOMPARE(read.messages.join(text("; ")), text("/odd (oddities, not decodable) /odd @0+1; "
                                                      "/bare (oddities, not decodable) /bare @0+1; "
                                                      "/odd (oddities, not decodable) /odd @0+1"));
        for (const char* told : {"oddschema", "odd { }", "demo.Odd"})
            QCOMPARE(int(written.data().count(told)), 2); // before the messages, and in the summary
    }

    void aServerThatNumbersItsChannelsAnewMixesNothingUp()
    {
        QBuffer written;
        written.open(QIODevice::WriteOnly);
        McapStreamDecoder before(&m_definitions);
        McapStreamDecoder after(&m_definitions);
        const std::unique_ptr<MessageOutput> output(
            OutputKind::findFor(&before).create({&written, "test", &m_definitions}, &before));
        feedAll(&before, pointsOf("/a", "/bb"), output.get());
        output->setDecoder(&after);
        feedAll(&after, pointsOf("/bb", "/a"), output.get());
        output->close();

        McapStreamDecoder decoder(&m_definitions);
        Transcript read(&decoder, false);
        feedAll(&decoder, written.data(), &read);
        for (int i = 0; i < read.payloads.size(); ++i)
            read.lines[i] += text(read.payloads.at(i) == McapFixtures::point(2) ? " = 2" : " = 3");
        QCOMPARE(read.told(),
                 text("demo.Point /a @1234+567 sent 1000+1 = 2; demo.Point /bb @1234+567 sent 1000+2 = 3; "
                      "demo.Point /bb @1234+567 sent 1000+1 = 3; demo.Point /a @1234+567 sent 1000+2 = 2"));
        // Each channel is told once before the messages and once in the summary.
        QCOMPARE(int(written.data().count("protobuf")), 2 * (2 + 1));
    }
};

QTEST_GUILESS_MAIN(TestMessageOutput)
#include "tst_messageoutput.moc"
