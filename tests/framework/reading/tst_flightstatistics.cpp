#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "receptionmonitor.h"
#include "testbase.h"
#include "textrows.h"

#include <QFile>
#include <QScopedPointer>

#include <algorithm>

typedef MessageStatisticsCoordinator::SenderStatistics SenderStatistics;

namespace
{

/** Passes everything on and notes the times of every type and sender. */
class ListingSink : public StreamSink
{
public:
    ListingSink(StreamSink* next, const StreamDecoder* decoder)
        : m_next(next)
        , m_decoder(decoder)
    {
    }
    void processReceived(const ReceivedMessage& message) override
    {
        times[QStringLiteral("%1 (%2)").arg(message.info->getName(), m_decoder->getSenderName(message.sender))].append(
            message.time);
        m_next->processReceived(message);
    }
    void processProblem(const StreamProblem& problem) override { m_next->processProblem(problem); }

    QHash<QString, QVector<qint64>> times;

private:
    StreamSink* m_next;
    const StreamDecoder* m_decoder;
};

} // namespace

/** The statistics of a real flight, compared with what a plain listing of its times shows. */
class TestFlightStatistics : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void flight()
    {
        const QString folder = qEnvironmentVariable("CORVEL_SAMPLES_DIR") + text("/mavlink/");
        QStringList errors;
        const QScopedPointer<MavlinkDialect> dialect(
            MavlinkDialect::load(folder + text("dialects/ardupilotmega.xml"), &errors));
        QCOMPARE(errors, QStringList());
        QFile file(folder + text("dronekit-flight.tlog"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        MessageStatisticsCoordinator coordinator;
        ReceptionMonitor monitor(&coordinator);
        MavlinkStreamDecoder decoder(dialect.data(), MavlinkStreamDecoder::TlogLayout);
        monitor.begin(&decoder);
        ListingSink sink(&monitor, &decoder);
        for (int i = 0, piece = 0; i < bytes.size(); i += piece) {
            piece = qMin(7 + i % 5000, int(bytes.size()) - i);
            decoder.feed(bytes.constData() + i, piece, Message::NoTime, &sink);
        }
        decoder.finish(&sink);
        monitor.finish();

        QHash<QString, const MessageStatistics*> byName;
        for (const MessageStatistics* type : coordinator.getAllMessageStatistics()) {
            byName.insert(type->getMessageName(), type);
            unsigned int sum = type->getCountWithUnknownTime() + type->getCountWithKnownTimeButUnknownInterval();
            for (const unsigned int count : type->getIntervalCountHash())
                sum += count;
            QCOMPARE(sum, type->getCount());
            QCOMPARE(int(sum), int(sink.times.value(type->getMessageName()).size()));
        }
        QCOMPARE(byName.size(), sink.times.size());

        const MessageStatistics* const heartbeat = byName.value(text("HEARTBEAT (1:1)"));
        const QVector<qint64> times = sink.times.value(text("HEARTBEAT (1:1)"));
        QVector<qint64> starts;
        for (int i = 1; i < times.size(); ++i)
            if (times.at(i) - times.at(i - 1) > 1500000)
                starts.append(times.at(i - 1));
        QVector<qint64> found;
        unsigned int mostMissing = 0;
        for (const MessageStatistics::Gap& gap : heartbeat->getGaps()) {
            found.append(qint64(gap.start));
            mostMissing = std::max(mostMissing, gap.missingEpochs);
        }
        QCOMPARE(found, starts);
        // Seven seconds between two messages: six are missing.
        QCOMPARE(mostMissing, 6u);
        QCOMPARE(heartbeat->getIntervalsSortedOnFrequency(-1), QList<long long>{1000});
        // The vehicle fell silent five minutes before the recording ended.
        QVERIFY(!heartbeat->isCurrentlyRegular());

        const TextRow types[] = {{"HEARTBEAT (1:1) >= 1030", "1000 ms, 15 gaps"},
                                 {"HEARTBEAT (255:0) >= 1370", "1000 ms, 0 gaps"},
                                 {"REQUEST_DATA_STREAM (255:0) >= 92", "15000 ms, 0 gaps"},
                                 {"RADIO (51:68) >= 1365", "1000 ms, 4 gaps"},
                                 {"SENSOR_OFFSETS (1:1) >= 255", "3900 ms, 2 gaps"}}; // slow and uneven
        QCOMPARE(differences(types,
                             [&byName](const QString& given) {
                                 const MessageStatistics* const type = byName.value(given.section(text(" >= "), 0, 0));
                                 const qint64 interval = type->getIntervalsSortedOnFrequency(1).value(0);
                                 const unsigned int count = type->getIntervalCountHash().value(interval);
                                 return count < given.section(text(" >= "), 1).toUInt()
                                            ? text("only %1").arg(count)
                                            : text("%1 ms, %2 gaps").arg(interval).arg(type->getNumberOfGaps());
                             }),
                 QString());

        QStringList senders;
        for (const SenderStatistics& sender : coordinator.getSenderStatistics())
            senders += QStringLiteral("%1: %2 received, %3 lost, %4 failed, %5 repeated, %6 others")
                           .arg(sender.name)
                           .arg(sender.received)
                           .arg(sender.lost)
                           .arg(sender.failed)
                           .arg(sender.repeated)
                           .arg(sender.late + sender.restarts);
        QCOMPARE(senders, (QStringList{text("255:0: 1760 received, 1314 lost, 1314 failed, 0 repeated, 0 others"),
                                       text("1:1: 70977 received, 450 lost, 0 failed, 0 repeated, 0 others"),
                                       text("51:68: 2740 received, 4 lost, 0 failed, 1370 repeated, 0 others")}));
    }
};

QTEST_GUILESS_MAIN(TestFlightStatistics)
#include "tst_flightstatistics.moc"
