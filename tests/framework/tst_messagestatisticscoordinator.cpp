#include "formatinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "testbase.h"

typedef MessageStatisticsCoordinator::SenderStatistics SenderStatistics;

class tst_MessageStatisticsCoordinator : public TestBase
{
    Q_OBJECT

public:
    tst_MessageStatisticsCoordinator() { setUp(); }
    ~tst_MessageStatisticsCoordinator() { tearDown(); }

private Q_SLOTS:
    void oneSenderHasPlainNames();
    void secondSenderNamesAllOfTheStream();
    void noiseIsNoSecondSender();
    void streamsAreApart();
    void removedStreamTakesItsStatisticsAlong();
    void unknownTypesAreBounded();
    void silentTypeStopsBeingRegular();
    void eventsAreCountedByType();
    void numbers_data();
    void numbers();
    void failuresAreCountedForKnownSenders();

private:
    MessageStatistics* receive(int stream, const MessageInfo* info, quint32 id, quint32 sender, qint64 time = 0)
    {
        MessageStatistics* const statistics = m_coordinator->findOrCreate(
            stream, info, id, sender, QString::fromLatin1("%1:%2").arg(sender >> 8).arg(sender & 255));
        statistics->addReception(time);
        return statistics;
    }
    QStringList rows() const
    {
        QStringList texts;
        Q_FOREACH (const MessageStatistics* statistics, m_coordinator->getAllMessageStatistics())
            texts += QString::fromLatin1("%1 | %2").arg(statistics->getMessageName()).arg(statistics->getCount());
        return texts;
    }

    void setUp();
    void tearDown();
    void startAnew()
    {
        tearDown();
        setUp();
    }

    FormatInfo* m_format;
    MessageInfo* m_heartbeat;
    MessageInfo* m_attitude;
    MessageStatisticsCoordinator* m_coordinator;
    int m_stream;
};

static QStringList lines(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(';'));
}

void tst_MessageStatisticsCoordinator::setUp()
{
    m_format = new FormatInfo(QLatin1String("Format"));
    m_heartbeat = new MessageInfo(QLatin1String("HEARTBEAT"));
    m_attitude = new MessageInfo(QLatin1String("ATTITUDE"));
    m_format->addMessageInfo(m_heartbeat);
    m_format->addMessageInfo(m_attitude);
    m_coordinator = new MessageStatisticsCoordinator;
    m_stream = m_coordinator->addStream(m_format);
}

void tst_MessageStatisticsCoordinator::tearDown()
{
    delete m_coordinator;
    delete m_format;
}

void tst_MessageStatisticsCoordinator::oneSenderHasPlainNames()
{
    startAnew();
    QVERIFY(!m_coordinator->find(m_stream, 0, 0x101));
    MessageStatistics* const heartbeat = receive(m_stream, m_heartbeat, 0, 0x101);
    receive(m_stream, m_attitude, 30, 0x101);
    receive(m_stream, 0, 203, 0x101);
    QCOMPARE(receive(m_stream, m_heartbeat, 0, 0x101), heartbeat);
    QCOMPARE(m_coordinator->find(m_stream, 0, 0x101), heartbeat);
    QCOMPARE(rows(), lines("HEARTBEAT | 2;ATTITUDE | 1;Unknown 203 | 1"));
    QCOMPARE(heartbeat->getFormatInfo(), static_cast<const FormatInfo*>(m_format));
    QCOMPARE(heartbeat->getMessageInfo(), static_cast<const MessageInfo*>(m_heartbeat));
    QVERIFY(!m_coordinator->getAllMessageStatistics().last()->getMessageInfo());
    QVERIFY(m_coordinator->getAllMessageStatistics().last()->getFormatInfo());
}

void tst_MessageStatisticsCoordinator::secondSenderNamesAllOfTheStream()
{
    startAnew();
    for (int i = 0; i < 20; ++i)
        receive(m_stream, m_heartbeat, 0, 0x101, i * 1000000);
    receive(m_stream, 0, 203, 0x101);
    const QList<MessageStatistics*> before = m_coordinator->getAllMessageStatistics();
    receive(m_stream, m_attitude, 30, 0x102);
    QCOMPARE(rows(), lines("HEARTBEAT (1:1) | 20;Unknown 203 (1:1) | 1;ATTITUDE (1:2) | 1"));
    // Other objects, so that whoever shows them makes new rows.
    Q_FOREACH (MessageStatistics* statistics, before)
        QVERIFY(!m_coordinator->getAllMessageStatistics().contains(statistics));
    MessageStatistics* const heartbeat = m_coordinator->find(m_stream, 0, 0x101);
    QVERIFY(heartbeat->isCurrentlyRegular());
    receive(m_stream, m_heartbeat, 0, 0x101, 20 * 1000000);
    QCOMPARE(heartbeat->getIntervalCountHash().value(1000), 21u);
    // Once is enough.
    receive(m_stream, m_attitude, 30, 0x103);
    QCOMPARE(m_coordinator->find(m_stream, 0, 0x101), heartbeat);
    QCOMPARE(rows().last(), QString::fromLatin1("ATTITUDE (1:3) | 1"));
}

void tst_MessageStatisticsCoordinator::noiseIsNoSecondSender()
{
    startAnew();
    receive(m_stream, m_heartbeat, 0, 0x101);
    receive(m_stream, 0, 77777, 0x2233);
    QCOMPARE(rows(), lines("HEARTBEAT | 1;Unknown 77777 | 1"));
}

void tst_MessageStatisticsCoordinator::streamsAreApart()
{
    startAnew();
    const int second = m_coordinator->addStream(m_format);
    receive(m_stream, m_heartbeat, 0, 0x101);
    receive(second, m_heartbeat, 0, 0x101);
    receive(second, m_heartbeat, 0, 0x101);
    QCOMPARE(rows(), lines("HEARTBEAT | 1;HEARTBEAT | 2"));
    receive(second, m_heartbeat, 0, 0x102);
    QCOMPARE(rows(), lines("HEARTBEAT | 1;HEARTBEAT (1:1) | 2;HEARTBEAT (1:2) | 1"));
}

void tst_MessageStatisticsCoordinator::removedStreamTakesItsStatisticsAlong()
{
    startAnew();
    const int second = m_coordinator->addStream(m_format);
    receive(m_stream, m_heartbeat, 0, 0x101);
    receive(second, m_attitude, 30, 0x101);
    m_coordinator->countNumber(second, 0x101, QString(), 0, 256);
    m_coordinator->countEvent(CorvelEvent::CrcError);
    m_coordinator->removeStream(m_stream);
    QCOMPARE(rows(), lines("ATTITUDE | 1"));
    QVERIFY(!m_coordinator->find(m_stream, 0, 0x101));
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::CrcError), 1u);

    m_coordinator->clear();
    QCOMPARE(rows(), QStringList());
    QVERIFY(m_coordinator->getSenderStatistics().isEmpty());
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::CrcError), 0u);
    receive(second, m_attitude, 30, 0x101);
    QCOMPARE(rows(), lines("ATTITUDE | 1"));
}

void tst_MessageStatisticsCoordinator::unknownTypesAreBounded()
{
    startAnew();
    for (quint32 id = 0; id < 5000; ++id)
        receive(m_stream, 0, 1000 + id, id);
    QCOMPARE(int(rows().size()), 1001);
    QCOMPARE(rows().last(), QString::fromLatin1("Unknown, others | 4000"));
    receive(m_stream, m_heartbeat, 0, 0x101);
    receive(m_stream, m_heartbeat, 0, 0x102);
    QCOMPARE(rows().at(0), QString::fromLatin1("Unknown 1000 (0:0) | 1"));
    QCOMPARE(rows().at(1000), QString::fromLatin1("Unknown, others | 4000"));
    receive(m_stream, 0, 999999, 0x101);
    QCOMPARE(rows().at(1000), QString::fromLatin1("Unknown, others | 4001"));
}

void tst_MessageStatisticsCoordinator::silentTypeStopsBeingRegular()
{
    startAnew();
    for (int i = 0; i < 20; ++i)
        receive(m_stream, m_heartbeat, 0, 0x101, i * 1000000);
    const MessageStatistics* const heartbeat = m_coordinator->find(m_stream, 0, 0x101);
    m_coordinator->setCurrentTime(m_stream, 20 * 1000000);
    QVERIFY(heartbeat->isCurrentlyRegular());
    m_coordinator->setCurrentTime(m_stream, 22 * 1000000);
    QVERIFY(!heartbeat->isCurrentlyRegular());
    QCOMPARE(heartbeat->getLastInterval(), 1000ULL);
}

void tst_MessageStatisticsCoordinator::eventsAreCountedByType()
{
    startAnew();
    m_coordinator->countEvent(CorvelEvent::CrcError);
    m_coordinator->countEvent(CorvelEvent::CrcError, 5);
    m_coordinator->countEvent(CorvelEvent::ClockJump);
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::CrcError), 6u);
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::ClockJump), 1u);
    QCOMPARE(m_coordinator->getEventCount(CorvelEvent::SourceEvent), 0u);
}

void tst_MessageStatisticsCoordinator::numbers_data()
{
    QTest::addColumn<QString>("numbers");
    QTest::addColumn<QString>("expected");
    QTest::newRow("in order") << "5 6 7 8"
                              << "4 received";
    QTest::newRow("wrap-around") << "254 255 0 1"
                                 << "4 received";
    QTest::newRow("loss") << "5 6 9 10"
                          << "4 received, 2 lost";
    QTest::newRow("loss over the wrap-around") << "254 1 2"
                                               << "3 received, 2 lost";
    QTest::newRow("great loss") << "10 210 211"
                                << "3 received, 199 lost";
    QTest::newRow("loss that ends at 0") << "250 0 1"
                                         << "3 received, 5 lost";
    QTest::newRow("every number twice") << "2 2 3 3 4 4"
                                        << "6 received, 3 repeated";
    QTest::newRow("repeats and a loss") << "2 2 5 5"
                                        << "4 received, 2 lost, 2 repeated";
    QTest::newRow("two changed places") << "1 3 2 4"
                                        << "4 received, 1 late";
    QTest::newRow("out of order over the wrap-around") << "254 0 255 1"
                                                       << "4 received, 1 late";
    QTest::newRow("repeated later") << "1 2 3 2 4"
                                    << "5 received, 1 repeated";
    QTest::newRow("repeated behind a loss") << "1 2 4 2 5"
                                            << "5 received, 1 lost, 1 repeated";
    QTest::newRow("late twice") << "1 3 2 2 4"
                                << "5 received, 1 repeated, 1 late";
    QTest::newRow("restart") << "100 101 0 1 2"
                             << "5 received, 1 restarts";
    QTest::newRow("none") << "-1 -1 -1"
                          << "3 received, no numbers";
    QTest::newRow("none at first") << "-1 5 6"
                                   << "3 received";
    QTest::newRow("some without") << "5 -1 6"
                                  << "3 received";
}

void tst_MessageStatisticsCoordinator::numbers()
{
    startAnew();
    QFETCH(QString, numbers);
    QFETCH(QString, expected);
    Q_FOREACH (const QString& number, numbers.split(QLatin1Char(' '))) {
        m_coordinator->countNumber(m_stream, 0x101, QLatin1String("1:1"), number.toInt(), 256);
        m_coordinator->countNumber(m_stream, 0x102, QLatin1String("1:2"), 0, 0);
    }
    QCOMPARE(int(m_coordinator->getSenderStatistics().size()), 2);
    QVERIFY(!m_coordinator->getSenderStatistics().last().numbered);
    const SenderStatistics sender = m_coordinator->getSenderStatistics().first();
    QString text = QString::fromLatin1("%1 received").arg(sender.received);
    if (sender.lost)
        text += QString::fromLatin1(", %1 lost").arg(sender.lost);
    if (sender.repeated)
        text += QString::fromLatin1(", %1 repeated").arg(sender.repeated);
    if (sender.late)
        text += QString::fromLatin1(", %1 late").arg(sender.late);
    if (sender.restarts)
        text += QString::fromLatin1(", %1 restarts").arg(sender.restarts);
    if (!sender.numbered)
        text += QLatin1String(", no numbers");
    QCOMPARE(text, expected);
    QCOMPARE(sender.name, QString::fromLatin1("1:1"));
}

void tst_MessageStatisticsCoordinator::failuresAreCountedForKnownSenders()
{
    startAnew();
    m_coordinator->countFailure(m_stream, 0x101);
    QVERIFY(m_coordinator->getSenderStatistics().isEmpty());
    m_coordinator->countNumber(m_stream, 0x101, QLatin1String("1:1"), 1, 256);
    m_coordinator->countFailure(m_stream, 0x101);
    m_coordinator->countNumber(m_stream, 0x101, QLatin1String("1:1"), 3, 256);
    QCOMPARE(m_coordinator->getSenderStatistics().first().failed, quint64(1));
    QCOMPARE(m_coordinator->getSenderStatistics().first().lost, quint64(1));
}

QTEST_APPLESS_MAIN(tst_MessageStatisticsCoordinator)
#include "tst_messagestatisticscoordinator.moc"
