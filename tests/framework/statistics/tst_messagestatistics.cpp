#include "message.h"
#include "messagestatistics.h"
#include "testbase.h"
#include "textrows.h"

#include <random>

/** Feeds statistics with times and tells them in one line. Times and intervals are milliseconds. */
class Feed
{
public:
    Feed()
        : statistics(0, text("TYPE"))
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

    /** "20 Hz: 12, 10 Hz: 5; unknown 2; no time 1; gaps 3 x 50; 20 Hz now", with missing epochs x interval. */
    QString told() const
    {
        QStringList rows;
        unsigned int sum = statistics.getCountWithUnknownTime() + statistics.getCountWithKnownTimeButUnknownInterval();
        Q_FOREACH (long long interval, statistics.getIntervalsSortedOnFrequency(-1)) {
            const unsigned int count = statistics.getIntervalCountHash().value(interval);
            rows += QString::fromLatin1("%1: %2").arg(MessageStatistics::getIntervalString(interval)).arg(count);
            sum += count;
        }
        QStringList parts(rows.join(QLatin1String(", ")));
        if (statistics.getCountWithKnownTimeButUnknownInterval())
            parts += QString::fromLatin1("unknown %1").arg(statistics.getCountWithKnownTimeButUnknownInterval());
        if (statistics.getCountWithUnknownTime())
            parts += QString::fromLatin1("no time %1").arg(statistics.getCountWithUnknownTime());
        QStringList gaps;
        Q_FOREACH (const MessageStatistics::Gap& gap, statistics.getGaps())
            gaps += QString::fromLatin1("%1 x %2").arg(gap.missingEpochs).arg(gap.interval);
        if (!gaps.isEmpty())
            parts += QLatin1String("gaps ") + gaps.join(QLatin1String(", "));
        if (statistics.isCurrentlyRegular())
            parts += MessageStatistics::getIntervalString(statistics.getLastInterval()) + QLatin1String(" now");
        if (sum != statistics.getCount())
            parts += QString::fromLatin1("that is not all of %1").arg(statistics.getCount());
        return parts.join(QLatin1String("; "));
    }

    MessageStatistics statistics;
    double time; // of the newest message
};

static QString jittery(double interval, double deviation)
{
    std::mt19937 random(1);
    std::normal_distribution<double> delay(0, deviation);
    Feed feed;
    for (int i = 0; i < 400; ++i)
        feed.add(feed.time + i * interval + qBound(-2.2 * deviation, delay(random), 2.2 * deviation));
    return feed.told();
}

/** There and back again, which has to be the same row as before. */
static QString changed(double before, double after)
{
    Feed feed;
    const QString there = feed.go(40, before).go(50, after).told();
    feed.go(50, before);
    return there + QString::fromLatin1("; back %1").arg(feed.statistics.getIntervalCountHash().value(qint64(before)));
}

class tst_MessageStatistics : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void firstMessageBelongsToTheIntervalThatFollows()
    {
        Feed feed;
        QCOMPARE(feed.told(), QString());
        QCOMPARE(feed.go(5, 50).told(), text("; unknown 5"));
        QCOMPARE(feed.go(1, 50).told(), text("20 Hz: 6; 20 Hz now"));
        QCOMPARE(feed.go(100, 50).told(), text("20 Hz: 106; 20 Hz now"));
        QCOMPARE(Feed().go(3, 1000).go(2, 300).told(), text("; unknown 5"));
    }

    void jitterIsOneRow()
    {
        QCOMPARE(jittery(50, 0.2), text("20 Hz: 400; 20 Hz now"));
        QCOMPARE(jittery(50, 2), text("20 Hz: 400; 20 Hz now"));
        QCOMPARE(jittery(1000, 60), text("1 Hz: 400; 1 Hz now"));
        QCOMPARE(jittery(1000.0 / 60, 0.3), text("60 Hz: 400; 60 Hz now"));
        QCOMPARE(jittery(15000, 40), text("15 s: 400; 15 s now"));
        // 2 % off is more than a clock's error, and told apart when there is no jitter.
        QCOMPARE(Feed().go(300, 1020).told(), text("1.02 s: 300; 1.02 s now"));
        QCOMPARE(Feed().go(300, 1003).told(), text("1 Hz: 300; 1 Hz now"));
    }

    void multipleOfTheIntervalIsAGap()
    {
        Feed feed;
        feed.go(20, 50);
        const double before = feed.time;
        // Not yet: it might be another rate.
        QCOMPARE(feed.go(1, 200).told(), text("20 Hz: 20; unknown 1"));
        // The message that ends a gap belongs to the regular interval.
        QCOMPARE(feed.go(20, 50).told(), text("20 Hz: 41; gaps 3 x 50; 20 Hz now"));
        QCOMPARE(feed.statistics.getGaps().first().start, static_cast<unsigned long long>(before * 1000));
        QCOMPARE(feed.go(1, 100).go(1, 150).go(5, 50).told(),
                 text("20 Hz: 48; gaps 3 x 50, 1 x 50, 2 x 50; 20 Hz now"));
        QCOMPARE(feed.statistics.getNumberOfMissingEpochs(), 6);
    }

    void lateMessageOfAJitteryStreamIsNoGap()
    {
        Feed feed;
        for (int i = 0; i < 50; ++i)
            feed.go(1, i % 2 ? 80 : 120);
        QCOMPARE(feed.go(1, 155).go(1, 45).go(10, 100).told(), text("10 Hz: 61; unknown 1; 10 Hz now"));
        QVERIFY2(feed.go(1, 220).go(2, 100).told().contains(text("gaps 1 x 100;")), qPrintable(feed.told()));
    }

    void gapNeedsAStretchThatCarriesIt()
    {
        Feed feed;
        // A minute of silence behind half a second of messages: nobody knows that they were to go on.
        QCOMPARE(feed.go(12, 50).go(1, 60000).go(12, 50).told(), text("20 Hz: 24; unknown 1; 20 Hz now"));
        QCOMPARE(feed.go(200, 50).go(1, 60000).go(2, 50).told(),
                 text("20 Hz: 227; unknown 1; gaps 1199 x 50; 20 Hz now"));
        // Nor is a leap of the clock one.
        QCOMPARE(Feed().go(2000, 1000).go(1, 4000000).go(20, 1000).told(), text("1 Hz: 2021; 1 Hz now"));
    }

    void lossesOfASteadyClockAreCountedExactly()
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
        QCOMPARE(feed.told().section(QLatin1Char(';'), 0, 0), QString::fromLatin1("10 Hz: %1").arg(2020 - lost));
    }

    void rateChange()
    {
        QCOMPARE(changed(50, 100), text("10 Hz: 50, 20 Hz: 40; 10 Hz now; back 90"));
        QCOMPARE(changed(50, 250), text("4 Hz: 50, 20 Hz: 40; 4 Hz now; back 90"));
        QCOMPARE(changed(50, 10), text("100 Hz: 50, 20 Hz: 40; 100 Hz now; back 90"));
        QCOMPARE(changed(50, 60), text("16.7 Hz: 50, 20 Hz: 40; 16.7 Hz now; back 90"));
        QCOMPARE(changed(50, 40), text("25 Hz: 50, 20 Hz: 40; 25 Hz now; back 90"));
        QCOMPARE(changed(50, 75), text("13.3 Hz: 50, 20 Hz: 40; 13.3 Hz now; back 90"));
        // A much faster rate is a burst, until the next message would be due.
        QCOMPARE(Feed().go(40, 50).go(100, 5).told(), text("200 Hz: 89, 20 Hz: 40; unknown 11; 200 Hz now"));
    }

    void stragglerIsNoClockJump()
    {
        Feed feed;
        feed.go(20, 50);
        feed.add(feed.time - 20);
        QCOMPARE(feed.go(20, 50).told(), text("20 Hz: 40; unknown 1; 20 Hz now"));

        Feed setBack;
        setBack.go(20, 50);
        setBack.time -= 60000;
        QCOMPARE(setBack.go(20, 50).told(), text("20 Hz: 40; 20 Hz now"));
        // Backwards all the time is no rate.
        QCOMPARE(setBack.go(30, -50).told(), text("20 Hz: 40; unknown 30"));
    }

    void burstsHaveTheIntervalBetweenThem()
    {
        Feed same;
        Feed close;
        for (int i = 0; i < 20; ++i) {
            same.go(1, 1000).go(7, 0);
            close.go(1, 999).go(2, 0.5);
        }
        QCOMPARE(same.told(), text("0 s: 140, 1 Hz: 20; 1 Hz now"));
        QCOMPARE(close.told(), text("1 Hz: 19; unknown 41; 1 Hz now"));
    }

    void messagesWithoutTimeFillGaps()
    {
        Feed feed;
        QCOMPARE(feed.untimed(2).go(20, 50).untimed(3).go(1, 200).go(5, 50).told(),
                 text("20 Hz: 26; no time 5; 20 Hz now"));
        QCOMPARE(feed.untimed(1).go(1, 200).go(5, 50).told(), text("20 Hz: 32; no time 6; gaps 2 x 50; 20 Hz now"));
    }

    void irregularMessagesHaveNoRate()
    {
        std::mt19937 random(3);
        std::exponential_distribution<double> pause(1.0 / 500);
        Feed feed;
        for (int i = 0; i < 2000; ++i)
            feed.go(1, pause(random));
        QVERIFY2(feed.statistics.getCountWithKnownTimeButUnknownInterval() > 1500 &&
                     feed.statistics.getNumberOfGaps() < 20,
                 qPrintable(feed.told()));
        // Nor those that are too fast for whole milliseconds.
        QCOMPARE(Feed().go(5000, 0.1).told(), text("; unknown 5000"));
        QCOMPARE(Feed().go(5000, 1).told(), text("1000 Hz: 5000; 1000 Hz now"));
    }

    void gapsBeyondTheLimitAreCounted()
    {
        Feed feed;
        feed.statistics.setGapLimit(2);
        feed.go(20, 50).go(1, 100).go(2, 50).go(1, 150).go(2, 50);
        QVERIFY(!feed.statistics.hasUnstoredGaps());
        feed.go(1, 200).go(2, 50);
        QCOMPARE(feed.told(), text("20 Hz: 29; gaps 1 x 50, 2 x 50; 20 Hz now"));
        QVERIFY(feed.statistics.hasUnstoredGaps());
        QCOMPARE(feed.statistics.getNumberOfGaps(), 3);
        QCOMPARE(feed.statistics.getNumberOfMissingEpochs(), 6);
    }

    void everyReceptionIsCountedOnceInFewRows()
    {
        Feed slowing;
        for (double interval = 20; interval < 1e8; interval *= 1.01)
            slowing.go(12, interval);
        QVERIFY(slowing.statistics.getIntervalCountHash().size() <= 202);
        QVERIFY2(!slowing.told().contains(text("not all")), qPrintable(slowing.told()));

        std::mt19937 random(4);
        Feed feed;
        for (int i = 0; i < 3000; ++i) {
            const double interval = double(1 << random() % 12);
            const int count = 1 + int(random() % 30);
            const int kind = int(random() % 8);
            if (kind == 0)
                feed.untimed(count);
            else if (kind < 3)
                feed.go(1, interval * count * (kind == 1 ? -1 : 1000));
            else
                feed.go(count, kind == 3 ? 0 : kind == 4 ? double(random() % 1000) : interval);
            if (i % 50 == 0)
                QVERIFY2(!feed.told().contains(text("not all")), qPrintable(feed.told()));
            QVERIFY(feed.statistics.getNumberOfMissingEpochs() >= feed.statistics.getNumberOfGaps());
            QVERIFY(!feed.statistics.isCurrentlyRegular() || feed.statistics.getLastInterval() > 0);
        }
    }

    void intervalText()
    {
        const TextRow rows[] = {{"0", "0 s"},         {"1", "1000 Hz"},       {"8", "125 Hz"},     {"16", "62.5 Hz"},
                                {"33", "30 Hz"},      {"50", "20 Hz"},        {"333", "3 Hz"},     {"350", "2.86 Hz"},
                                {"999", "1.001 Hz"},  {"1000", "1 Hz"},       {"1001", "1.001 s"}, {"2500", "2.5 s"},
                                {"15030", "15.03 s"}, {"86400000", "86400 s"}};
        QCOMPARE(
            differences(rows, [](const QString& ms) { return MessageStatistics::getIntervalString(ms.toULongLong()); }),
            QString());
        QCOMPARE(Feed().statistics.getTimeString(1436056264577999ULL), text("2015-07-05 00:31:04.577"));
    }

    void mostFrequentIntervalsComeFirst()
    {
        Feed feed;
        QCOMPARE(feed.go(20, 50).go(30, 200).go(40, 1000).go(3, 0).told(),
                 text("1 Hz: 40, 5 Hz: 30, 20 Hz: 20, 0 s: 3; 1 Hz now"));
        QCOMPARE(feed.statistics.getIntervalsSortedOnFrequency(2), QList<long long>() << 1000 << 200);
        QCOMPARE(feed.statistics.getIntervalsSortedOnFrequency(0), QList<long long>());
    }
};

QTEST_GUILESS_MAIN(tst_MessageStatistics)
#include "tst_messagestatistics.moc"
