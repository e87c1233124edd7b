#include "definitions.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "mcapfixtures.h"
#include "mcapstreamdecoder.h"
#include "messageoutput.h"
#include "outputkind.h"
#include "streamrecorder.h"
#include "testbase.h"
#include "textrows.h"

#include <memory>

namespace
{

/** Writes down the times of messages, too: " @1234+567 1000+1", microseconds and nanoseconds, received and sent. */
struct TimeRecorder : public StreamRecorder
{
    using StreamRecorder::StreamRecorder;

    void processReceived(const ReceivedMessage& message) override
    {
        StreamRecorder::processReceived(message);
        times.append(QStringLiteral(" @%1+%2 %3+%4")
                         .arg(message.time)
                         .arg(message.timeRest)
                         .arg(message.publishTime)
                         .arg(message.publishTimeRest));
    }

    QStringList times;
};

} // namespace

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
        McapWriter& writer = recording.writer;
        const quint16 schema = writer.addSchema("demo.Point", "protobuf", McapFixtures::schema());
        for (const QByteArray& topic : {first, second})
            writer.addChannel(topic, "protobuf", schema);
        quint16 channel = 0;
        for (const QByteArray& topic : {first, second}) {
            const QByteArray point = McapFixtures::point(int(topic.size()));
            ++channel;
            writer.writeMessage(channel, 0, 1234567, quint64(1000000) + channel, point.constData(), int(point.size()));
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

    void aServerThatNumbersItsChannelsAnewMixesNothingUp()
    {
        QBuffer written;
        written.open(QIODevice::WriteOnly);
        McapStreamDecoder before(&m_definitions);
        McapStreamDecoder after(&m_definitions);
        const std::unique_ptr<MessageOutput> output(
            OutputKind::findFor(&before).create({&written, "test", &m_definitions}, &before));
        QByteArray bytes = pointsOf("/a", "/bb");
        before.feed(bytes.constData(), int(bytes.size()), Message::NoTime, output.get());
        output->setDecoder(&after);
        bytes = pointsOf("/bb", "/a");
        after.feed(bytes.constData(), int(bytes.size()), Message::NoTime, output.get());
        output->close();

        McapStreamDecoder decoder(&m_definitions);
        TimeRecorder read(&decoder);
        decoder.feed(written.data().constData(), int(written.data().size()), Message::NoTime, &read);
        decoder.finish(&read);
        QStringList found;
        for (int i = 0; i < read.frames.size(); ++i)
            found.append(read.lines.at(i).section(QLatin1Char(' '), 1, 2) +
                         (read.frames.at(i) == McapFixtures::point(2) ? text(" 2") : text(" 3")) + read.times.at(i));
        QCOMPARE(found.join(text(", ")), text("demo.Point /a 2 @1234+567 1000+1, demo.Point /bb 3 @1234+567 1000+2, "
                                              "demo.Point /bb 3 @1234+567 1000+1, demo.Point /a 2 @1234+567 1000+2"));
        QCOMPARE(read.lines.size(), read.frames.size());
        // Each channel is told once before the messages and once in the summary.
        QCOMPARE(int(written.data().count("protobuf")), 2 * (2 + 1));
    }
};

QTEST_GUILESS_MAIN(TestMessageOutput)
#include "tst_messageoutput.moc"
