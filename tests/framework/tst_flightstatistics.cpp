#include "eventlog.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "receptionmonitor.h"
#include "testbase.h"

#include <QFile>
#include <QScopedPointer>

#include <algorithm>

typedef MessageStatisticsCoordinator::SenderStatistics SenderStatistics;

/** The statistics of a real flight, compared with what a plain listing of its times shows. */
class TestFlightStatistics : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void heartbeatHasItsGaps();
    void otherTypes_data();
    void otherTypes();
    void everythingIsCountedOnce();
    void losses();
    void events();

private:
    const MessageStatistics* statistics(const QString& name) const
    {
        for (const MessageStatistics* statistics : m_coordinator.getAllMessageStatistics())
            if (statistics->getMessageName() == name)
                return statistics;
        return nullptr;
    }

    QScopedPointer<MavlinkDialect> m_dialect;
    MessageStatisticsCoordinator m_coordinator;
    EventLog m_log;
    QHash<QString, QVector<qint64>> m_times; // of every type and sender
};

namespace
{

/** Passes everything on and notes the times. */
class ListingSink : public StreamSink
{
public:
    ListingSink(StreamSink* next, const StreamDecoder* decoder, QHash<QString, QVector<qint64>>* times)
        : m_next(next)
        , m_decoder(decoder)
        , m_times(times)
    {
    }
    void processReceived(const ReceivedMessage& message) override
    {
        (*m_times)[QStringLiteral("%1 (%2)").arg(message.info->getName(), m_decoder->getSenderName(message.sender))]
            .append(message.time);
        m_next->processReceived(message);
    }
    void processProblem(const StreamProblem& problem) override { m_next->processProblem(problem); }

private:
    StreamSink* m_next;
    const StreamDecoder* m_decoder;
    QHash<QString, QVector<qint64>>* m_times;
};

} // namespace

void TestFlightStatistics::initTestCase()
{
    const QString folder = qEnvironmentVariable("CORVEL_SAMPLES_DIR") + QStringLiteral("/mavlink/");
    QStringList errors;
    m_dialect.reset(MavlinkDialect::load(folder + QStringLiteral("dialects/ardupilotmega.xml"), &errors));
    QCOMPARE(errors, QStringList());
    QFile file(folder + QStringLiteral("dronekit-flight.tlog"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    MavlinkStreamDecoder decoder(m_dialect.data(), MavlinkStreamDecoder::TlogLayout);
    ReceptionMonitor monitor(&m_coordinator, &m_log);
    monitor.begin(&decoder);
    ListingSink sink(&monitor, &decoder, &m_times);
    decoder.feed(bytes.constData(), int(bytes.size()), Message::NoTime, &sink);
    decoder.finish(&sink);
    monitor.finish();
}

void TestFlightStatistics::cleanupTestCase()
{
    m_coordinator.clear();
}

void TestFlightStatistics::heartbeatHasItsGaps()
{
    const QString name = QStringLiteral("HEARTBEAT (1:1)");
    const QVector<qint64> times = m_times.value(name);
    QVector<qint64> starts;
    qint64 longest = 0;
    for (int i = 1; i < times.size(); ++i) {
        if (times.at(i) - times.at(i - 1) > 1500000)
            starts.append(times.at(i - 1));
        longest = std::max(longest, times.at(i) - times.at(i - 1));
    }
    QCOMPARE(starts.size(), 15);
    QCOMPARE(longest / 100000, 69);

    const MessageStatistics* const heartbeat = statistics(name);
    QVERIFY(heartbeat);
    QCOMPARE(heartbeat->getCount(), 1047u);
    QCOMPARE(heartbeat->getNumberOfGaps(), 15);
    QCOMPARE(heartbeat->getGaps().size(), 15);
    unsigned int mostMissing = 0;
    for (int i = 0; i < 15; ++i) {
        const MessageStatistics::Gap& gap = heartbeat->getGaps().at(i);
        QCOMPARE(gap.start, static_cast<unsigned long long>(starts.at(i)));
        QCOMPARE(gap.interval, 1000ULL);
        mostMissing = std::max(mostMissing, gap.missingEpochs);
    }
    // Seven seconds between two messages: six are missing.
    QCOMPARE(mostMissing, 6u);
    QCOMPARE(heartbeat->getIntervalsSortedOnFrequency(-1), QList<long long>{1000});
    // The vehicle fell silent five minutes before the recording ended.
    QVERIFY(!heartbeat->isCurrentlyRegular());
}

void TestFlightStatistics::otherTypes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("least"); // messages of that interval
    QTest::addColumn<int>("gaps");
    QTest::newRow("ground station") << "HEARTBEAT (255:0)" << 1000 << 1370 << 0;
    QTest::newRow("request") << "REQUEST_DATA_STREAM (255:0)" << 15000 << 92 << 0;
    QTest::newRow("radio") << "RADIO (51:68)" << 1000 << 1365 << 4;
    QTest::newRow("slow and uneven") << "SENSOR_OFFSETS (1:1)" << 3900 << 255 << 2;
}

void TestFlightStatistics::otherTypes()
{
    QFETCH(QString, name);
    QFETCH(int, interval);
    QFETCH(int, least);
    QFETCH(int, gaps);
    const MessageStatistics* const type = statistics(name);
    QVERIFY(type);
    QCOMPARE(type->getIntervalsSortedOnFrequency(1), QList<long long>{interval});
    QVERIFY(int(type->getIntervalCountHash().value(interval)) >= least);
    QCOMPARE(type->getNumberOfGaps(), gaps);
}

void TestFlightStatistics::everythingIsCountedOnce()
{
    QCOMPARE(m_coordinator.getAllMessageStatistics().size(), m_times.size());
    unsigned int all = 0;
    for (const MessageStatistics* type : m_coordinator.getAllMessageStatistics()) {
        unsigned int sum = type->getCountWithUnknownTime() + type->getCountWithKnownTimeButUnknownInterval();
        for (const unsigned int count : type->getIntervalCountHash())
            sum += count;
        QCOMPARE(sum, type->getCount());
        QCOMPARE(int(type->getCount()), int(m_times.value(type->getMessageName()).size()));
        all += type->getCount();
    }
    QCOMPARE(all, 75477u);
}

void TestFlightStatistics::losses()
{
    QStringList lines;
    for (const SenderStatistics& sender : m_coordinator.getSenderStatistics())
        lines += QStringLiteral("%1: %2 received, %3 lost, %4 failed, %5 repeated, %6 late, %7 restarts")
                     .arg(sender.name)
                     .arg(sender.received)
                     .arg(sender.lost)
                     .arg(sender.failed)
                     .arg(sender.repeated)
                     .arg(sender.late)
                     .arg(sender.restarts);
    QCOMPARE(lines, (QStringList{
                        QStringLiteral("255:0: 1760 received, 1314 lost, 1314 failed, 0 repeated, 0 late, 0 restarts"),
                        QStringLiteral("1:1: 70977 received, 450 lost, 0 failed, 0 repeated, 0 late, 0 restarts"),
                        QStringLiteral("51:68: 2740 received, 4 lost, 0 failed, 1370 repeated, 0 late, 0 restarts")}));
}

void TestFlightStatistics::events()
{
    QCOMPARE(m_coordinator.getEventCount(CorvelEvent::CrcError), 1314u);
    QCOMPARE(m_coordinator.getEventCount(CorvelEvent::UnknownMessage), 0u);
    QCOMPARE(m_coordinator.getEventCount(CorvelEvent::ClockJump), 0u);
    QCOMPARE(m_coordinator.getEventCount(CorvelEvent::Resynchronisation), 0u);
    QVERIFY(m_log.getEntries().size() < 10);
    QVERIFY(m_log.getEntries().constLast().event.getMessage().contains(
        QStringLiteral("checksum failure, id 142, sender 255:0 (1,314 in all)")));
}

QTEST_GUILESS_MAIN(TestFlightStatistics)
#include "tst_flightstatistics.moc"
