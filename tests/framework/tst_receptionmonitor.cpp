#include "eventlog.h"
#include "messageneed.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "receptionmonitor.h"
#include "streamfixtures.h"
#include "streamsource.h"
#include "testbase.h"
#include "waitfor.h"

std::atomic<int> ScriptedInput::alive(0);

namespace
{

class SettableClock : public ReceptionMonitor::Clock
{
public:
    explicit SettableClock(qint64* time)
        : m_time(time)
    {
    }
    qint64 now() const override { return *m_time; }

private:
    qint64* m_time;
};

} // namespace

/** What a stream leaves in statistics and log. */
class TestReceptionMonitor : public TestBase
{
    Q_OBJECT

public:
    TestReceptionMonitor() { setUp(); }
    ~TestReceptionMonitor() { tearDown(); }

private Q_SLOTS:
    void countsWhatNobodyNeedsBeforeItIsDelivered();
    void followsTheStateOfASource();
    void sourceOutlivesItsMonitor();
    void everyProblemIsAnEvent_data();
    void everyProblemIsAnEvent();
    void unknownTypesAreEvents();
    void clockJumpsAreEvents();
    void stormIsFoldedAndCountedExactly();
    void silenceOfALiveStreamEndsRegularity();
    void worksWithoutALog();

public Q_SLOTS:
    void noteMessage(const Message*)
    {
        m_countAtDelivery = m_coordinator->getAllMessageStatistics().constFirst()->getCount();
    }

private:
    QStringList entries() const
    {
        QStringList list;
        for (const EventLog::Entry& entry : m_log->getEntries())
            list += CorvelEvent::getTypeName(entry.event.getType()) + QLatin1String(": ") + entry.event.getMessage();
        return list;
    }
    void receive(qint64 milliseconds, const char* type = "A")
    {
        ReceivedMessage message;
        message.info = m_format->type(type);
        message.id = static_cast<quint32>(type[0]);
        message.sender = 1;
        message.time = milliseconds * 1000;
        m_monitor->processReceived(message);
    }

    void setUp();
    void tearDown();
    void startAnew()
    {
        tearDown();
        setUp();
    }

    LineFormat* m_format;
    LineDecoder* m_decoder;
    MessageStatisticsCoordinator* m_coordinator;
    EventLog* m_log;
    ReceptionMonitor* m_monitor;
    qint64 m_now;
    unsigned int m_countAtDelivery;
};

void TestReceptionMonitor::setUp()
{
    m_format = new LineFormat;
    m_decoder = new LineDecoder(m_format, true);
    m_coordinator = new MessageStatisticsCoordinator;
    m_log = new EventLog;
    m_monitor = new ReceptionMonitor(m_coordinator, m_log);
    m_now = 0;
    m_monitor->setClock(new SettableClock(&m_now));
    m_countAtDelivery = 0;
}

void TestReceptionMonitor::tearDown()
{
    delete m_monitor;
    delete m_log;
    delete m_coordinator;
    delete m_decoder;
    delete m_format;
}

void TestReceptionMonitor::countsWhatNobodyNeedsBeforeItIsDelivered()
{
    startAnew();
    QByteArray script;
    for (int i = 0; i < 10; ++i)
        script += QByteArray::number(1000 + 100 * i) + " A\n" + QByteArray::number(1050 + 100 * i) + " B\n";
    StreamSource source(new ScriptedInput({script, "! A\n"}, ByteInput::End), new LineDecoder(m_format, true));
    StreamSource::Playback fast;
    fast.factor = 0;
    source.setPlayback(fast);
    MessageNeed need(nullptr);
    need.setMessageNeeded(m_format->type("A"));
    connect(&source, SIGNAL(newMessage(const Message*)), this, SLOT(noteMessage(const Message*)));
    m_monitor->follow(&source, QStringLiteral("script"));
    source.start();
    QVERIFY(waitFor([&] { return source.getState() == StreamSource::Finished; }));

    const QList<MessageStatistics*> all = m_coordinator->getAllMessageStatistics();
    QCOMPARE(all.size(), 2);
    QCOMPARE(all.at(0)->getMessageName(), QStringLiteral("A"));
    QCOMPARE(all.at(1)->getMessageName(), QStringLiteral("B"));
    QCOMPARE(all.at(1)->getIntervalCountHash().value(100), 10u);
    QCOMPARE(m_countAtDelivery, 10u);
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::CrcError), 1u);
    QCOMPARE(entries(), (QStringList{QStringLiteral("Source: script: receiving"),
                                     QStringLiteral("CRC error: checksum failure, id 65, sender sender 1"),
                                     QStringLiteral("Source: script: ended")}));
    QCOMPARE(m_log->getEntries().at(1).time.toMSecsSinceEpoch(), 1950);
}

void TestReceptionMonitor::followsTheStateOfASource()
{
    startAnew();
    StreamSource source(new ScriptedInput({}, ByteInput::Failed), new LineDecoder(m_format, true));
    m_monitor->follow(&source, QStringLiteral("script"));
    source.start();
    QVERIFY(waitFor([&] { return source.getState() == StreamSource::Failed; }));
    QCOMPARE(entries().constLast(), QStringLiteral("Source: script: failed: script: it is gone"));
    QVERIFY(m_log->getEntries().constLast().time.isValid());
    QVERIFY(m_coordinator->getEventCount(CorvelEvent::SourceEvent) >= 2);
}

void TestReceptionMonitor::sourceOutlivesItsMonitor()
{
    startAnew();
    StreamSource source(new ScriptedInput({"1000 A\n"}, ByteInput::End), new LineDecoder(m_format, true));
    m_monitor->follow(&source, QStringLiteral("script"));
    delete m_monitor;
    m_monitor = nullptr;
    source.start();
    QVERIFY(waitFor([&] { return source.getState() == StreamSource::Finished; }));
    QCOMPARE(source.getCounters().getMessageCount(), quint64(1));
    QVERIFY(m_coordinator->getAllMessageStatistics().isEmpty());
}

void TestReceptionMonitor::everyProblemIsAnEvent_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("type");
    QTest::newRow("checksum") << int(StreamProblem::ChecksumFailure) << int(CorvelEvent::CrcError);
    QTest::newRow("length") << int(StreamProblem::LengthMismatch) << int(CorvelEvent::UnsupportedMessage);
    QTest::newRow("feature") << int(StreamProblem::UnsupportedFrame) << int(CorvelEvent::UnsupportedMessage);
    QTest::newRow("bytes") << int(StreamProblem::SkippedBytes) << int(CorvelEvent::Resynchronisation);
    QTest::newRow("cut off") << int(StreamProblem::TruncatedFrame) << int(CorvelEvent::TruncatedMessage);
    QTest::newRow("input") << int(StreamProblem::InputFailure) << int(CorvelEvent::SourceEvent);
}

void TestReceptionMonitor::everyProblemIsAnEvent()
{
    startAnew();
    QFETCH(int, kind);
    QFETCH(int, type);
    m_monitor->begin(m_decoder);
    StreamProblem problem;
    problem.kind = static_cast<StreamProblem::Kind>(kind);
    problem.length = 17;
    m_monitor->processProblem(problem);
    QCOMPARE(m_coordinator->getEventCount(static_cast<CorvelEvent::Type>(type)), 1u);
    QCOMPARE(m_log->getEntries().size(), 1);
    QCOMPARE(int(m_log->getEntries().constFirst().event.getType()), type);
    QCOMPARE(m_log->getEntries().constFirst().event.getMessage(), problem.describe(QString()));
    // Nothing tells the time yet.
    QVERIFY(!m_log->getEntries().constFirst().time.isValid());
}

void TestReceptionMonitor::unknownTypesAreEvents()
{
    startAnew();
    m_monitor->begin(m_decoder);
    for (int i = 0; i < 3; ++i)
        receive(1000 * i, "Z");
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::UnknownMessage), 3u);
    QCOMPARE(entries(), QStringList(QStringLiteral("Unknown message: unknown message id 90, sender sender 1")));
    QCOMPARE(m_coordinator->getAllMessageStatistics().constFirst()->getMessageName(), QStringLiteral("Unknown 90"));
}

void TestReceptionMonitor::clockJumpsAreEvents()
{
    startAnew();
    m_monitor->begin(m_decoder);
    receive(10000);
    receive(9500, "B");
    receive(20000);
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::ClockJump), 0u);
    receive(15000, "B");
    receive(15000 + 2 * 3600 * 1000);
    QCOMPARE(entries(), (QStringList{QStringLiteral("Clock jump: the time of messages goes back by 5.0 s"),
                                     QStringLiteral("Clock jump: the time of messages leaps by 7200.0 s")}));
}

void TestReceptionMonitor::stormIsFoldedAndCountedExactly()
{
    startAnew();
    m_monitor->begin(m_decoder);
    StreamProblem problem;
    problem.kind = StreamProblem::ChecksumFailure;
    problem.hasFrame = true;
    problem.id = 142;
    problem.sender = 1;
    for (int i = 0; i < 2001; ++i)
        m_monitor->processProblem(problem);
    QCOMPARE(m_log->getEntries().size(), 1);
    m_now = 1000;
    m_monitor->refresh();
    QCOMPARE(entries().constLast(),
             QStringLiteral("CRC error: 2,000 x checksum failure, id 142, sender sender 1 (2,001 in all)"));
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::CrcError), 2001u);
}

void TestReceptionMonitor::silenceOfALiveStreamEndsRegularity()
{
    startAnew();
    LineDecoder live(m_format, false);
    m_monitor->begin(&live);
    const qint64 minuteAgo = QDateTime::currentMSecsSinceEpoch() - 60000;
    for (int i = 0; i < 20; ++i)
        receive(minuteAgo + 100 * i);
    const MessageStatistics* const statistics = m_coordinator->getAllMessageStatistics().constFirst();
    QVERIFY(statistics->isCurrentlyRegular());
    m_monitor->refresh();
    QVERIFY(!statistics->isCurrentlyRegular());
}

void TestReceptionMonitor::worksWithoutALog()
{
    startAnew();
    ReceptionMonitor monitor(m_coordinator);
    monitor.begin(m_decoder);
    monitor.processProblem(StreamProblem());
    monitor.refresh();
    monitor.finish();
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::Resynchronisation), 1u);
}

QTEST_GUILESS_MAIN(TestReceptionMonitor)
#include "tst_receptionmonitor.moc"
