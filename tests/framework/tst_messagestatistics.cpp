#include "formatinfo.h"
#include "message.h"
#include "messagestatistics.h"
#include "testbase.h"

#include <random>

/** Feeds statistics with times and tells them in one line. Times and intervals are milliseconds. */
class Feed
{
public:
    Feed()
        : format(QLatin1String("Format"))
        , statistics(&format, 0, QLatin1String("TYPE"))
        , time(1e9)
    {
    }

    void add(double at) { statistics.addReception(static_cast<qint64>(at * 1000)); }

    /** @p count messages, each @p interval after its predecessor. */
    Feed& go(int count, double interval)
    {
        for (int i = 0; i < count; ++i) {
            time += interval;
            add(time);
        }
        return *this;
    }
    Feed& untimed(int count)
    {
        for (int i = 0; i < count; ++i)
            statistics.addReception(Message::NoTime);
        return *this;
    }

    /** "20 Hz: 12, 10 Hz: 5; unknown 2; no time 1", most frequent first. */
    QString receptions() const
    {
        const QHash<long long, unsigned int> counts = statistics.getIntervalCountHash();
        QStringList parts;
        Q_FOREACH (long long interval, statistics.getIntervalsSortedOnFrequency(-1))
            parts += QString::fromLatin1("%1: %2")
                         .arg(MessageStatistics::getIntervalString(interval))
                         .arg(counts.value(interval));
        QString text = parts.join(QLatin1String(", "));
        if (statistics.getCountWithKnownTimeButUnknownInterval())
            text += QString::fromLatin1("; unknown %1").arg(statistics.getCountWithKnownTimeButUnknownInterval());
        if (statistics.getCountWithUnknownTime())
            text += QString::fromLatin1("; no time %1").arg(statistics.getCountWithUnknownTime());
        return text;
    }

    /** "3 x 50, 1 x 50": missing epochs and interval of every stored gap. */
    QString gaps() const
    {
        QStringList parts;
        Q_FOREACH (const MessageStatistics::Gap& gap, statistics.getGaps())
            parts += QString::fromLatin1("%1 x %2").arg(gap.missingEpochs).arg(gap.interval);
        return parts.join(QLatin1String(", "));
    }

    bool addsUp() const
    {
        unsigned int sum = statistics.getCountWithUnknownTime() + statistics.getCountWithKnownTimeButUnknownInterval();
        Q_FOREACH (unsigned int count, statistics.getIntervalCountHash())
            sum += count;
        return sum == statistics.getCount();
    }

    FormatInfo format;
    MessageStatistics statistics;
    double time; // of the newest message
};

class tst_MessageStatistics : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void firstMessageBelongsToTheIntervalThatFollows();
    void tooFewMessagesAreNoRate();
    void jitterIsOneRow_data();
    void jitterIsOneRow();
    void slowClockIsNotRounded();
    void multipleOfTheIntervalIsAGap();
    void lateMessageOfAJitteryStreamIsNoGap();
    void gapNeedsAStretchThatCarriesIt();
    void lossesOfASteadyClockAreCountedExactly();
    void rateChange_data();
    void rateChange();
    void muchFasterRateIsABurstAtFirst();
    void stragglerIsNoClockJump();
    void clockSetBackBeginsAnew();
    void leapOfTheClockIsNoGap();
    void sameTimeIsIntervalZero();
    void burstsHaveTheIntervalBetweenThem();
    void messagesWithoutTimeFillGaps();
    void irregularMessagesHaveNoRate();
    void tooFastForMillisecondsIsUnknown();
    void gapsBeyondTheLimitAreCounted();
    void rowsStayFew();
    void everyReceptionIsCountedOnce();
    void intervalText_data();
    void intervalText();
    void timeText();
    void mostFrequentIntervalsComeFirst();
};

void tst_MessageStatistics::firstMessageBelongsToTheIntervalThatFollows()
{
    Feed feed;
    feed.go(5, 50);
    QCOMPARE(feed.receptions(), QString::fromLatin1("; unknown 5"));
    QVERIFY(!feed.statistics.isCurrentlyRegular());
    feed.go(1, 50);
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 6"));
    QVERIFY(feed.statistics.isCurrentlyRegular());
    QCOMPARE(feed.statistics.getLastInterval(), 50ULL);
    feed.go(100, 50);
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 106"));
}

void tst_MessageStatistics::tooFewMessagesAreNoRate()
{
    Feed feed;
    QCOMPARE(feed.receptions(), QString());
    QCOMPARE(feed.statistics.getLastInterval(), 0ULL);
    feed.go(1, 0);
    QCOMPARE(feed.receptions(), QString::fromLatin1("; unknown 1"));
    feed.go(2, 1000).go(2, 300);
    QCOMPARE(feed.receptions(), QString::fromLatin1("; unknown 5"));
    QVERIFY(!feed.statistics.isCurrentlyRegular());
}

void tst_MessageStatistics::jitterIsOneRow_data()
{
    QTest::addColumn<double>("interval");
    QTest::addColumn<double>("jitter"); // standard deviation of a message's delay
    QTest::addColumn<QString>("expected");
    QTest::newRow("a little") << 50.0 << 0.2 << "20 Hz: 400";
    QTest::newRow("some") << 50.0 << 2.0 << "20 Hz: 400";
    QTest::newRow("radio link") << 1000.0 << 60.0 << "1 Hz: 400";
    QTest::newRow("whole rate") << 1000.0 / 60 << 0.3 << "60 Hz: 400";
    QTest::newRow("slow") << 15000.0 << 40.0 << "15 s: 400";
}

void tst_MessageStatistics::jitterIsOneRow()
{
    QFETCH(double, interval);
    QFETCH(double, jitter);
    QFETCH(QString, expected);
    std::mt19937 random(1);
    std::normal_distribution<double> delay(0, jitter);
    Feed feed;
    for (int i = 0; i < 400; ++i)
        feed.add(feed.time + i * interval + qBound(-2.2 * jitter, delay(random), 2.2 * jitter));
    QCOMPARE(feed.receptions(), expected);
    QCOMPARE(feed.gaps(), QString());
}

void tst_MessageStatistics::slowClockIsNotRounded()
{
    // 2 % off is more than a clock's error, and told apart when there is no jitter.
    QCOMPARE(Feed().go(300, 1020).receptions(), QString::fromLatin1("1.02 s: 300"));
    QCOMPARE(Feed().go(300, 1003).receptions(), QString::fromLatin1("1 Hz: 300"));
}

void tst_MessageStatistics::multipleOfTheIntervalIsAGap()
{
    Feed feed;
    feed.go(20, 50);
    const double before = feed.time;
    feed.go(1, 200);
    // Not yet: it might be another rate.
    QCOMPARE(feed.statistics.getNumberOfGaps(), 0);
    QVERIFY(!feed.statistics.isCurrentlyRegular());
    feed.go(20, 50);
    QCOMPARE(feed.gaps(), QString::fromLatin1("3 x 50"));
    QCOMPARE(feed.statistics.getGaps().first().start, static_cast<unsigned long long>(before * 1000));
    // The message that ends a gap belongs to the regular interval.
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 41"));
    QVERIFY(feed.statistics.isCurrentlyRegular());
    feed.go(1, 100).go(1, 150).go(5, 50);
    QCOMPARE(feed.gaps(), QString::fromLatin1("3 x 50, 1 x 50, 2 x 50"));
    QCOMPARE(feed.statistics.getNumberOfMissingEpochs(), 6);
    QVERIFY(!feed.statistics.hasUnstoredGaps());
}

void tst_MessageStatistics::lateMessageOfAJitteryStreamIsNoGap()
{
    Feed feed;
    for (int i = 0; i < 50; ++i)
        feed.go(1, i % 2 ? 80 : 120);
    QCOMPARE(feed.statistics.getLastInterval(), 100ULL);
    feed.go(1, 155).go(1, 45).go(10, 100);
    QCOMPARE(feed.gaps(), QString());
    feed.go(1, 220).go(2, 100);
    QCOMPARE(feed.gaps(), QString::fromLatin1("1 x 100"));
}

void tst_MessageStatistics::gapNeedsAStretchThatCarriesIt()
{
    Feed feed;
    feed.go(12, 50).go(1, 60000).go(12, 50);
    // A minute of silence behind half a second of messages: nobody knows that they were to go on.
    QCOMPARE(feed.gaps(), QString());
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 24; unknown 1"));
    feed.go(200, 50).go(1, 60000).go(2, 50);
    QCOMPARE(feed.gaps(), QString::fromLatin1("1199 x 50"));
}

void tst_MessageStatistics::lossesOfASteadyClockAreCountedExactly()
{
    std::mt19937 random(2);
    Feed feed;
    feed.go(20, 100);
    int lost = 0;
    for (int i = 0; i < 2000; ++i) {
        const bool isLost = random() % 10 < 6 && i < 1990;
        lost += isLost;
        feed.time += 100;
        if (!isLost)
            feed.add(feed.time + double(random() % 5));
    }
    QCOMPARE(feed.statistics.getNumberOfMissingEpochs(), lost);
    QCOMPARE(feed.receptions(), QString::fromLatin1("10 Hz: %1").arg(2020 - lost));
}

void tst_MessageStatistics::rateChange_data()
{
    QTest::addColumn<double>("before");
    QTest::addColumn<double>("after");
    QTest::addColumn<QString>("expected");
    QTest::newRow("half the rate") << 50.0 << 100.0 << "10 Hz: 50, 20 Hz: 40";
    QTest::newRow("a fifth") << 50.0 << 250.0 << "4 Hz: 50, 20 Hz: 40";
    QTest::newRow("twice the rate") << 50.0 << 25.0 << "40 Hz: 50, 20 Hz: 40";
    QTest::newRow("five times") << 50.0 << 10.0 << "100 Hz: 50, 20 Hz: 40";
    QTest::newRow("a little slower") << 50.0 << 60.0 << "16.7 Hz: 50, 20 Hz: 40";
    QTest::newRow("a little faster") << 50.0 << 40.0 << "25 Hz: 50, 20 Hz: 40";
    QTest::newRow("between one and two") << 50.0 << 75.0 << "13.3 Hz: 50, 20 Hz: 40";
}

void tst_MessageStatistics::rateChange()
{
    QFETCH(double, before);
    QFETCH(double, after);
    QFETCH(QString, expected);
    Feed feed;
    feed.go(40, before).go(50, after);
    QCOMPARE(feed.receptions(), expected);
    QCOMPARE(feed.gaps(), QString());
    QCOMPARE(feed.statistics.getLastInterval(), static_cast<unsigned long long>(after));
    // Back again: the same row as before.
    feed.go(50, before);
    QCOMPARE(feed.statistics.getIntervalCountHash().value(static_cast<long long>(before)), 90u);
}

void tst_MessageStatistics::muchFasterRateIsABurstAtFirst()
{
    // Until the next message would be due.
    Feed feed;
    feed.go(40, 50).go(100, 5);
    QCOMPARE(feed.receptions(), QString::fromLatin1("200 Hz: 89, 20 Hz: 40; unknown 11"));
}

void tst_MessageStatistics::stragglerIsNoClockJump()
{
    Feed feed;
    feed.go(20, 50);
    feed.add(feed.time - 20);
    feed.go(20, 50);
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 40; unknown 1"));
    QCOMPARE(feed.gaps(), QString());
}

void tst_MessageStatistics::clockSetBackBeginsAnew()
{
    Feed feed;
    feed.go(20, 50);
    feed.time -= 60000;
    feed.go(20, 50);
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 40"));
    QCOMPARE(feed.gaps(), QString());
    // Backwards all the time is no rate.
    feed.go(30, -50);
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 40; unknown 30"));
    QVERIFY(!feed.statistics.isCurrentlyRegular());
}

void tst_MessageStatistics::leapOfTheClockIsNoGap()
{
    Feed feed;
    feed.go(2000, 1000).go(1, 4000000).go(20, 1000);
    QCOMPARE(feed.gaps(), QString());
    QCOMPARE(feed.receptions(), QString::fromLatin1("1 Hz: 2021"));
}

void tst_MessageStatistics::sameTimeIsIntervalZero()
{
    Feed feed;
    for (int i = 0; i < 20; ++i)
        feed.go(1, 1000).go(7, 0);
    QCOMPARE(feed.receptions(), QString::fromLatin1("0 s: 140, 1 Hz: 20"));
    QVERIFY(feed.statistics.isCurrentlyRegular());
    QCOMPARE(feed.statistics.getLastInterval(), 1000ULL);
}

void tst_MessageStatistics::burstsHaveTheIntervalBetweenThem()
{
    Feed feed;
    for (int i = 0; i < 20; ++i)
        feed.go(1, 999).go(2, 0.5);
    QCOMPARE(feed.statistics.getIntervalCountHash().value(1000), 19u);
    QCOMPARE(feed.statistics.getCountWithKnownTimeButUnknownInterval(), 41u);
    QCOMPARE(feed.gaps(), QString());
}

void tst_MessageStatistics::messagesWithoutTimeFillGaps()
{
    Feed feed;
    feed.untimed(2).go(20, 50).untimed(3).go(1, 200).go(5, 50);
    QCOMPARE(feed.receptions(), QString::fromLatin1("20 Hz: 26; no time 5"));
    QCOMPARE(feed.gaps(), QString());
    feed.untimed(1).go(1, 200).go(5, 50);
    QCOMPARE(feed.gaps(), QString::fromLatin1("2 x 50"));
}

void tst_MessageStatistics::irregularMessagesHaveNoRate()
{
    std::mt19937 random(3);
    std::exponential_distribution<double> pause(1.0 / 500);
    Feed feed;
    for (int i = 0; i < 2000; ++i)
        feed.go(1, pause(random));
    QVERIFY2(feed.statistics.getCountWithKnownTimeButUnknownInterval() > 1500, qPrintable(feed.receptions()));
    QVERIFY2(feed.statistics.getNumberOfGaps() < 20, qPrintable(feed.gaps()));
    QVERIFY(feed.addsUp());
}

void tst_MessageStatistics::tooFastForMillisecondsIsUnknown()
{
    QCOMPARE(Feed().go(5000, 0.1).receptions(), QString::fromLatin1("; unknown 5000"));
    QCOMPARE(Feed().go(5000, 1).receptions(), QString::fromLatin1("1000 Hz: 5000"));
}

void tst_MessageStatistics::gapsBeyondTheLimitAreCounted()
{
    Feed feed;
    feed.go(20, 50);
    for (int i = 0; i < MessageStatistics::DefaultGapLimit; ++i)
        feed.go(1, 150).go(1, 50);
    QCOMPARE(int(feed.statistics.getGaps().size()), MessageStatistics::DefaultGapLimit);
    QVERIFY(!feed.statistics.hasUnstoredGaps());
    for (int i = 0; i < 50; ++i)
        feed.go(1, 150).go(1, 50);
    QCOMPARE(int(feed.statistics.getGaps().size()), MessageStatistics::DefaultGapLimit);
    QVERIFY(feed.statistics.hasUnstoredGaps());
    QCOMPARE(feed.statistics.getNumberOfGaps(), 10050);
    QCOMPARE(feed.statistics.getNumberOfMissingEpochs(), 20100);

    Feed few;
    few.statistics.setGapLimit(2);
    few.go(20, 50).go(1, 100).go(2, 50).go(1, 150).go(2, 50).go(1, 200).go(2, 50);
    QCOMPARE(few.gaps(), QString::fromLatin1("1 x 50, 2 x 50"));
    QCOMPARE(few.statistics.getNumberOfMissingEpochs(), 6);
    QVERIFY(few.statistics.hasUnstoredGaps());
}

void tst_MessageStatistics::rowsStayFew()
{
    Feed feed;
    for (double interval = 20; interval < 1e8; interval *= 1.01)
        feed.go(12, interval);
    QVERIFY(feed.statistics.getIntervalCountHash().size() <= 202);
    QVERIFY(feed.addsUp());
}

void tst_MessageStatistics::everyReceptionIsCountedOnce()
{
    std::mt19937 random(4);
    Feed feed;
    for (int i = 0; i < 3000; ++i) {
        const double interval = double(1 << random() % 12);
        const int count = 1 + int(random() % 30);
        switch (random() % 8) {
        case 0:
            feed.untimed(count);
            break;
        case 1:
            feed.go(1, -interval * count);
            break;
        case 2:
            feed.go(count, 0);
            break;
        case 3:
            feed.go(1, interval * count * 1000);
            break;
        case 4:
            for (int k = 0; k < count; ++k)
                feed.go(1, double(random() % 1000));
            break;
        default:
            feed.go(count, interval);
        }
        QVERIFY2(feed.addsUp(), qPrintable(feed.receptions()));
        QVERIFY(feed.statistics.getCount() < 1000000000u);
        QVERIFY(feed.statistics.getNumberOfMissingEpochs() >= feed.statistics.getNumberOfGaps());
        QVERIFY(!feed.statistics.isCurrentlyRegular() || feed.statistics.getLastInterval() > 0);
    }
}

void tst_MessageStatistics::intervalText_data()
{
    QTest::addColumn<int>("interval");
    QTest::addColumn<QString>("expected");
    QTest::newRow("same time") << 0 << "0 s";
    QTest::newRow("least") << 1 << "1000 Hz";
    QTest::newRow("exact") << 50 << "20 Hz";
    QTest::newRow("exact with a decimal") << 16 << "62.5 Hz";
    QTest::newRow("exact of three digits") << 8 << "125 Hz";
    QTest::newRow("whole milliseconds of 30 Hz") << 33 << "30 Hz";
    QTest::newRow("whole milliseconds of 3 Hz") << 333 << "3 Hz";
    QTest::newRow("between") << 350 << "2.86 Hz";
    QTest::newRow("below a second") << 999 << "1.001 Hz";
    QTest::newRow("a second") << 1000 << "1 Hz";
    QTest::newRow("above a second") << 1001 << "1.001 s";
    QTest::newRow("decimals without trailing zeros") << 2500 << "2.5 s";
    QTest::newRow("decimals with leading zeros") << 15030 << "15.03 s";
    QTest::newRow("a day") << 86400000 << "86400 s";
}

void tst_MessageStatistics::intervalText()
{
    QFETCH(int, interval);
    QFETCH(QString, expected);
    QCOMPARE(MessageStatistics::getIntervalString(static_cast<unsigned long long>(interval)), expected);
}

void tst_MessageStatistics::timeText()
{
    Feed feed;
    QCOMPARE(feed.statistics.getTimeString(1436056264577999ULL), QString::fromLatin1("2015-07-05 00:31:04.577"));
    QCOMPARE(feed.statistics.getTimeString(0), QString::fromLatin1("1970-01-01 00:00:00.000"));
}

void tst_MessageStatistics::mostFrequentIntervalsComeFirst()
{
    Feed feed;
    feed.go(20, 50).go(30, 200).go(40, 1000).go(3, 0);
    const QList<long long> all = feed.statistics.getIntervalsSortedOnFrequency(-1);
    QCOMPARE(all, QList<long long>() << 1000 << 200 << 50 << 0);
    QCOMPARE(feed.statistics.getIntervalsSortedOnFrequency(2), QList<long long>() << 1000 << 200);
    QCOMPARE(feed.statistics.getIntervalsSortedOnFrequency(0), QList<long long>());
}

QTEST_GUILESS_MAIN(tst_MessageStatistics)
#include "tst_messagestatistics.moc"
