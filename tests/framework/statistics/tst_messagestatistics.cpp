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

/**
 * What is told at the end and wherever a "|" stands: "20x50" are twenty messages with 50 ms between them, "2x50,7" four
 * with 50 and 7 by turns, "n2" two without a time, "<20" turns the clock back by 20 ms, "~20" is one that is 20 ms old.
 */
static QString toldOf(const QString& script)
{
    Feed feed;
    QStringList told;
    Q_FOREACH (const QString& word, script.split(QLatin1Char(' '))) {
        const double number = word.mid(1).toDouble();
        if (word == QLatin1String("|"))
            told += feed.told();
        else if (word.startsWith(QLatin1Char('n')))
            feed.untimed(int(number));
        else if (word.startsWith(QLatin1Char('<')))
            feed.time -= number;
        else if (word.startsWith(QLatin1Char('~')))
            feed.add(feed.time - number);
        else
            for (int i = word.section(QLatin1Char('x'), 0, 0).toInt(); i > 0; --i)
                Q_FOREACH (const QString& interval, word.section(QLatin1Char('x'), 1).split(QLatin1Char(',')))
                    feed.go(1, interval.toDouble());
    }
    return (told << feed.told()).join(QLatin1String(" | "));
}

class tst_MessageStatistics : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void receptionsBelongToIntervals()
    {
        const TextRow rows[] = {
            {"", ""},
            // The first message belongs to the interval that follows, when there is one.
            {"5x50 | 1x50 | 100x50", "; unknown 5 | 20 Hz: 6; 20 Hz now | 20 Hz: 106; 20 Hz now"},
            {"3x1000 2x300", "; unknown 5"},
            // 2 % off is more than a clock's error, and told apart when there is no jitter.
            {"300x1020", "1.02 s: 300; 1.02 s now"},
            {"300x1003", "1 Hz: 300; 1 Hz now"},
            // A multiple of the interval is a gap, but not yet: it might be another rate. What ends it is regular.
            {"20x50 1x200 | 20x50 | 1x100,150 5x50", "20 Hz: 20; unknown 1 | 20 Hz: 41; gaps 3 x 50; 20 Hz now | "
                                                     "20 Hz: 48; gaps 3 x 50, 1 x 50, 2 x 50; 20 Hz now"},
            // A late message of a jittery stream is none.
            {"25x120,80 1x155,45 10x100 | 1x220 2x100",
             "10 Hz: 61; unknown 1; 10 Hz now | 10 Hz: 64; unknown 1; gaps 1 x 100; 10 Hz now"},
            // A minute of silence behind half a second of messages: nobody knows that they were to go on.
            {"12x50 1x60000 12x50 | 200x50 1x60000 2x50",
             "20 Hz: 24; unknown 1; 20 Hz now | 20 Hz: 227; unknown 1; gaps 1199 x 50; 20 Hz now"},
            // Nor is a leap of the clock one.
            {"2000x1000 1x4000000 20x1000", "1 Hz: 2021; 1 Hz now"},
            // The rate changes, and back.
            {"40x50 50x100 | 50x50", "10 Hz: 50, 20 Hz: 40; 10 Hz now | 20 Hz: 90, 10 Hz: 50; 20 Hz now"},
            {"40x50 50x250 | 50x50", "4 Hz: 50, 20 Hz: 40; 4 Hz now | 20 Hz: 90, 4 Hz: 50; 20 Hz now"},
            {"40x50 50x10 | 50x50", "100 Hz: 50, 20 Hz: 40; 100 Hz now | 20 Hz: 90, 100 Hz: 50; 20 Hz now"},
            {"40x50 50x60 | 50x50", "16.7 Hz: 50, 20 Hz: 40; 16.7 Hz now | 20 Hz: 90, 16.7 Hz: 50; 20 Hz now"},
            {"40x50 50x40 | 50x50", "25 Hz: 50, 20 Hz: 40; 25 Hz now | 20 Hz: 90, 25 Hz: 50; 20 Hz now"},
            {"40x50 50x75 | 50x50", "13.3 Hz: 50, 20 Hz: 40; 13.3 Hz now | 20 Hz: 90, 13.3 Hz: 50; 20 Hz now"},
            // A much faster rate is a burst, until the next message would be due.
            {"40x50 100x5", "200 Hz: 89, 20 Hz: 40; unknown 11; 200 Hz now"},
            // A straggler is no jump of the clock; and backwards all the time is no rate.
            {"20x50 ~20 20x50", "20 Hz: 40; unknown 1; 20 Hz now"},
            {"20x50 <60000 20x50 | 30x-50", "20 Hz: 40; 20 Hz now | 20 Hz: 40; unknown 30"},
            // Bursts have the interval between them.
            {"20x1000,0,0,0,0,0,0,0", "0 s: 140, 1 Hz: 20; 1 Hz now"},
            {"20x999,0.5,0.5", "1 Hz: 19; unknown 41; 1 Hz now"},
            // Messages without time fill gaps.
            {"n2 20x50 n3 1x200 5x50 | n1 1x200 5x50",
             "20 Hz: 26; no time 5; 20 Hz now | 20 Hz: 32; no time 6; gaps 2 x 50; 20 Hz now"},
            // Whole milliseconds are the shortest interval.
            {"5000x0.1", "; unknown 5000"},
            {"5000x1", "1000 Hz: 5000; 1000 Hz now"},
            {"20x50 30x200 40x1000 3x0", "1 Hz: 40, 5 Hz: 30, 20 Hz: 20, 0 s: 3; 1 Hz now"}};
        checkRows(rows, toldOf);
    }

    void jitterIsOneRow()
    {
        QCOMPARE(jittery(50, 0.2), text("20 Hz: 400; 20 Hz now"));
        QCOMPARE(jittery(50, 2), text("20 Hz: 400; 20 Hz now"));
        QCOMPARE(jittery(1000, 60), text("1 Hz: 400; 1 Hz now"));
        QCOMPARE(jittery(1000.0 / 60, 0.3), text("60 Hz: 400; 60 Hz now"));
        QCOMPARE(jittery(15000, 40), text("15 s: 400; 15 s now"));
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
    }

    void gapsBeyondTheLimitAreCounted()
    {
        Feed feed;
        feed.statistics.setGapLimit(2);
        feed.go(20, 50);
        const double before = feed.time;
        feed.go(1, 100).go(2, 50).go(1, 150).go(2, 50);
        QVERIFY(!feed.statistics.hasUnstoredGaps());
        feed.go(1, 200).go(2, 50);
        QCOMPARE(feed.told(), text("20 Hz: 29; gaps 1 x 50, 2 x 50; 20 Hz now"));
        QVERIFY(feed.statistics.hasUnstoredGaps());
        QCOMPARE(feed.statistics.getNumberOfGaps(), 3);
        QCOMPARE(feed.statistics.getNumberOfMissingEpochs(), 6);
        QCOMPARE(feed.statistics.getGaps().first().start, static_cast<unsigned long long>(before * 1000));

        feed.statistics.setGapsListed(false);
        QCOMPARE(int(feed.statistics.getGaps().size()), 1);
        QCOMPARE(int(feed.statistics.getStoredGaps().size()), 2);
        QVERIFY(feed.statistics.hasUnstoredGaps());
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
        checkRows(rows, [](const QString& ms) { return MessageStatistics::getIntervalString(ms.toULongLong()); });
        QCOMPARE(Feed().statistics.getTimeString(1436056264577999ULL), text("2015-07-05 00:31:04.577"));
    }

    void mostFrequentIntervalsComeFirst()
    {
        Feed feed;
        feed.go(20, 50).go(30, 200).go(40, 1000);
        QCOMPARE(feed.statistics.getIntervalsSortedOnFrequency(2), QList<long long>() << 1000 << 200);
        QCOMPARE(feed.statistics.getIntervalsSortedOnFrequency(0), QList<long long>());
    }
};

QTEST_GUILESS_MAIN(tst_MessageStatistics)
#include "tst_messagestatistics.moc"
