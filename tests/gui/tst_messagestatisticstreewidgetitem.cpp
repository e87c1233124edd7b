#include "messageinfo.h"
#include "statisticsview.h"
#include "testbase.h"

#include <QApplication>

class tst_MessageStatisticsTreeWidgetItem : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void toolTips();
    void messageRowFollowsItsNumbers();
    void specialRowsComeAndGo();
    void intervalRowsAreReusedAndConfirmed();
    void gapRowsComeAndGo();
    void gapDuration_data();
    void gapDuration();
    void surplusGapRowsGoByHalves();
    void everyGapShowsOnceHoweverSorted_data();
    void everyGapShowsOnceHoweverSorted();
    void aRowUpdatedByItselfPlacesItsGaps();
    void expandingAMessageExpandsItsIntervals();
};

void tst_MessageStatisticsTreeWidgetItem::toolTips()
{
    View view;
    const MessageInfo info(text("The attitude"));
    MessageStatistics* known = view.add("ATTITUDE");
    known->messageInfo = &info;
    known->unknownTime = 1;
    known->unknownInterval = 1;
    known->setInterval(0, 1);
    known->setInterval(50, 1);
    known->addGap(500, 2, 1000);
    view.add("Unknown 203");
    view.tree.updateTree();
    QCOMPARE(view.find("mavlink")->toolTip(0), text("Message statistics for the messages\nin the mavlink format."));
    QCOMPARE(view.row("mavlink/Unknown 203")->toolTip(0), text("Unknown 203 (unknown)"));
    const QTreeWidgetItem* attitude = view.row("mavlink/ATTITUDE");
    QCOMPARE(attitude->toolTip(0), text("The attitude"));
    QCOMPARE(attitude->toolTip(1), text("Number of times the ATTITUDE\nmessage has been received."));
    QCOMPARE(attitude->toolTip(2),
             text("Most recent regular rate/interval at which the ATTITUDE\nmessage has been received."));
    QCOMPARE(attitude->toolTip(3), text("Detected gaps in regular data segments with valid time, if any."));
    const QTreeWidgetItem* gaps = view.find("mavlink/ATTITUDE/Gaps");
    QCOMPARE(gaps->toolTip(0), text("Gaps, with time and duration"));
    QCOMPARE(gaps->child(0)->toolTip(0), text("Gaps start"));
    QCOMPARE(gaps->child(0)->toolTip(1), text("Missing epochs"));
    QCOMPARE(gaps->child(0)->toolTip(2), text("Duration"));
    QCOMPARE(view.find("mavlink/ATTITUDE/Rates/Intervals"), static_cast<QTreeWidgetItem*>(nullptr));
    const QTreeWidgetItem* intervals = attitude->child(1);
    QCOMPARE(intervals->toolTip(0), text("The rates/intervals in which this message has been received,\n"
                                         "together with the corresponding count."));
    QStringList tips;
    for (int i = 0; i < intervals->childCount(); ++i) {
        QCOMPARE(intervals->child(i)->toolTip(1), intervals->child(i)->toolTip(0));
        tips.append(intervals->child(i)->toolTip(0));
    }
    QCOMPARE(
        tips,
        QStringList() << text("The number of times this message \nhas been received without a valid time tag.")
                      << text("Number of times this message has been received \nwith a valid time tag but for which "
                              "the interval \ncould not be determined: \nthere was no previous message with valid "
                              "time, \nand the following messages did not \ncome in at a regular rate.")
                      << text("Number of times the messages was received\nwith the same time stamp as previous.")
                      << text("Number of times the message was received at every 50 ms."));
}

void tst_MessageStatisticsTreeWidgetItem::messageRowFollowsItsNumbers()
{
    View view;
    MessageStatistics* statistics = view.add("ATTITUDE");
    statistics->lastInterval = 20;
    statistics->numberOfMissingEpochs = 7;
    view.tree.updateTree();
    const QTreeWidgetItem* attitude = view.row("mavlink/ATTITUDE");
    QCOMPARE(rowText(attitude), text("ATTITUDE | 0 | N/A"));
    QCOMPARE(attitude->data(1, Qt::DisplayRole), QVariant(Q_UINT64_C(0)));
    QCOMPARE(attitude->data(1, Qt::DisplayRole).userType(), static_cast<int>(QMetaType::ULongLong));
    QCOMPARE(attitude->data(3, Qt::DisplayRole).userType(), static_cast<int>(QMetaType::QString));
    statistics->count = 4294967295u;
    statistics->regular = true;
    statistics->numberOfGaps = 1;
    statistics->numberOfMissingEpochs = 4;
    view.tree.updateTree();
    QCOMPARE(rowText(attitude), text("ATTITUDE | 4294967295 | every 20 ms | 1 (4 epochs)"));
    statistics->regular = false;
    statistics->numberOfGaps = -1;
    view.tree.updateTree();
    QCOMPARE(rowText(attitude), text("ATTITUDE | 4294967295 | N/A"));
}

void tst_MessageStatisticsTreeWidgetItem::specialRowsComeAndGo()
{
    View view;
    view.tree.setSortingEnabled(false);
    MessageStatistics* statistics = view.add("ATTITUDE");
    statistics->setInterval(50, 8);
    view.tree.updateTree();
    const QTreeWidgetItem* intervals = view.row("mavlink/ATTITUDE")->child(0);
    QCOMPARE(rowTexts(intervals), lines("every 50 ms | 8"));
    statistics->unknownTime = 1;
    statistics->unknownInterval = 2;
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("Unknown interval/rate | 2\nNo time | 1\nevery 50 ms | 8"));
    statistics->unknownInterval = 0;
    statistics->unknownTime = 4;
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("No time | 4\nevery 50 ms | 8"));
    statistics->unknownInterval = 3;
    statistics->unknownTime = 0;
    view.tree.updateTree();
    statistics->unknownTime = 5;
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("No time | 5\nUnknown interval/rate | 3\nevery 50 ms | 8"));
}

void tst_MessageStatisticsTreeWidgetItem::intervalRowsAreReusedAndConfirmed()
{
    View view;
    view.tree.setSortingEnabled(false);
    MessageStatistics* statistics = view.add("ATTITUDE");
    statistics->setInterval(50, 8);
    statistics->setInterval(100, 3);
    statistics->setInterval(0, 1);
    statistics->setInterval(7, 0);
    view.tree.updateTree();
    QCOMPARE(statistics->hashesAsked, 4);
    const QTreeWidgetItem* intervals = view.row("mavlink/ATTITUDE")->child(0);
    QCOMPARE(rowTexts(intervals), lines("every 50 ms | 8\nevery 100 ms | 3\nevery 0 ms | 1"));
    const QTreeWidgetItem* kept = intervals->child(1);
    statistics->setInterval(50, 0);
    statistics->setInterval(100, 4);
    statistics->setInterval(0, 6);
    statistics->setInterval(25, 2);
    statistics->intervals.removeOne(0);
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("every 100 ms | 4\nevery 25 ms | 2"));
    QCOMPARE(static_cast<const QTreeWidgetItem*>(intervals->child(0)), kept);
    statistics->setInterval(50, 8);
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("every 100 ms | 4\nevery 25 ms | 2\nevery 50 ms | 8"));
}

void tst_MessageStatisticsTreeWidgetItem::gapRowsComeAndGo()
{
    View view;
    MessageStatistics* statistics = view.add("ATTITUDE");
    view.tree.setSortingEnabled(false);
    view.tree.updateTree();
    QTreeWidgetItem* attitude = view.row("mavlink/ATTITUDE");
    QCOMPARE(rowTexts(attitude), lines("Rates/Intervals"));
    statistics->addGap(9, 3, 200);
    statistics->unstoredGaps = true;
    view.tree.updateTree();
    QCOMPARE(rowTexts(attitude), lines("Rates/Intervals\nGaps (incomplete list)\n  t9 | 3 | 600 ms"));
    QTreeWidgetItem* gaps = attitude->child(1);
    gaps->setExpanded(true);
    statistics->unstoredGaps = false;
    statistics->addGap(1, 5, 1000);
    view.tree.updateTree();
    QCOMPARE(attitude->child(1), gaps);
    QVERIFY(gaps->isExpanded());
    QCOMPARE(rowTexts(attitude), lines("Rates/Intervals\nGaps\n  t9 | 3 | 600 ms\n  t1 | 5 | 5 s"));
    statistics->gaps[0].missingEpochs = 4;
    view.recorder.take();
    view.tree.updateTree();
    QCOMPARE(view.recorder.take(), lines("changed 1: t9 | 4 | 600 ms\nchanged 2: t9 | 4 | 800 ms"));
    statistics->gaps.clear();
    view.tree.updateTree();
    QCOMPARE(rowTexts(attitude), lines("Rates/Intervals"));
    statistics->addGap(9, 4, 200);
    view.tree.updateTree();
    QCOMPARE(rowTexts(attitude), lines("Rates/Intervals\nGaps\n  t9 | 4 | 800 ms"));
}

void tst_MessageStatisticsTreeWidgetItem::gapDuration_data()
{
    QTest::addColumn<unsigned int>("missingEpochs");
    QTest::addColumn<unsigned long long>("interval");
    QTest::addColumn<QString>("duration");
    QTest::newRow("none") << 0u << 1000ull << text("0 ms");
    QTest::newRow("just below a second") << 1u << 999ull << text("999 ms");
    QTest::newRow("a second") << 2u << 500ull << text("1 s");
    QTest::newRow("fraction") << 3u << 500ull << text("1.5 s");
    QTest::newRow("six digits") << 1u << 123456789ull << text("123457 s");
    QTest::newRow("largest") << 1u << 2147483647ull << text("2.14748e+06 s");
    QTest::newRow("wraps to negative") << 1u << 2147483648ull << text("-2147483648 ms");
    QTest::newRow("wraps to zero") << 65536u << 65536ull << text("0 ms");
    QTest::newRow("wraps from 64 bits") << 4294967295u << 4294967297ull << text("-1 ms");
    QTest::newRow("wraps to seconds") << 3u << 1431657265ull << text("4.499 s");
}

void tst_MessageStatisticsTreeWidgetItem::gapDuration()
{
    View view;
    QFETCH(unsigned int, missingEpochs);
    QFETCH(unsigned long long, interval);
    QFETCH(QString, duration);
    view.add("ATTITUDE")->addGap(1, missingEpochs, interval);
    view.tree.updateTree();
    QCOMPARE(view.find("mavlink/ATTITUDE/Gaps")->child(0)->text(2), duration);
}

void tst_MessageStatisticsTreeWidgetItem::surplusGapRowsGoByHalves()
{
    View view;
    // Sorted by start the rows stand as they do unsorted, and go in the same order.
    for (int sorted = 0; sorted < 2; ++sorted) {
        view.tree.setSortingEnabled(sorted);
        MessageStatistics* statistics = view.add(sorted ? "SORTED" : "UNSORTED");
        for (unsigned int start = 1; start <= 6; ++start)
            statistics->addGap(start, 1, 10);
        view.tree.updateTree();
        const QTreeWidgetItem* gaps =
            findRow(view.tree, QString::fromLatin1("mavlink/%1/Gaps").arg(statistics->messageName));
        statistics->gaps.resize(2);
        statistics->gaps[1].missingEpochs = 2;
        view.tree.updateTree();
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt4 | 1 | 10 ms\nt6 | 1 | 10 ms"));
        view.tree.updateTree();
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt6 | 1 | 10 ms"));
        statistics->addGap(5, 3, 10);
        view.tree.updateTree();
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt5 | 3 | 30 ms"));
    }
}

void tst_MessageStatisticsTreeWidgetItem::everyGapShowsOnceHoweverSorted_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("order");
    for (int column = 0; column < 4; ++column) {
        QTest::newRow(qPrintable(QString::fromLatin1("%1 ascending").arg(column))) << column << 0;
        QTest::newRow(qPrintable(QString::fromLatin1("%1 descending").arg(column))) << column << 1;
    }
}

void tst_MessageStatisticsTreeWidgetItem::everyGapShowsOnceHoweverSorted()
{
    View view;
    QFETCH(int, column);
    QFETCH(int, order);
    view.tree.sortByColumn(column, static_cast<Qt::SortOrder>(order));
    MessageStatistics* statistics = view.add("ATTITUDE");
    quint32 random = 12345;
    unsigned int serial = 0;
    for (int round = 0; round < 80; ++round) {
        // Mostly new gaps, whose texts sort anywhere; now and then one changes, or half of them go, at either end.
        const QStringList before = gapTexts(statistics->gaps);
        random = random * 1664525u + 1013904223u;
        const int kind = static_cast<int>((random >> 16) % 8);
        const int size = static_cast<int>(statistics->gaps.size());
        if (kind == 0 && size > 0)
            statistics->gaps[static_cast<int>(random >> 20) % size].start = ++serial * 7919 % 10007;
        else if (kind == 1)
            statistics->gaps.resize(size / 2);
        else if (kind == 2)
            statistics->gaps = statistics->gaps.mid(size / 2);
        for (int i = 3; i <= kind; ++i)
            statistics->addGap(++serial * 7919 % 10007, (random >> 12) % 30, 70);
        if (round % 10 == 9)
            view.tree.sortByColumn((column + round / 10) % 4, static_cast<Qt::SortOrder>(round / 10 % 2));
        view.recorder.take();
        view.tree.updateTree();

        const QStringList events = view.recorder.take();
        const QStringList stored = gapTexts(statistics->gaps);
        const QTreeWidgetItem* gaps = view.find("mavlink/ATTITUDE/Gaps");
        QCOMPARE(gaps == nullptr, stored.isEmpty());
        if (!gaps)
            continue;
        const QStringList shown = rowTexts(gaps);
        QVERIFY(!shown.contains(QString()));
        for (int i = 0; i < stored.size(); ++i) {
            QCOMPARE(shown.count(stored.at(i)), 1);
            if (before.value(i) == stored.at(i))
                QCOMPARE(events.filter(text(": ") + stored.at(i)), QStringList());
        }
        view.tree.sortItems(view.tree.header()->sortIndicatorSection(), view.tree.header()->sortIndicatorOrder());
        QCOMPARE(rowTexts(gaps), shown);
    }
}

void tst_MessageStatisticsTreeWidgetItem::aRowUpdatedByItselfPlacesItsGaps()
{
    View view;
    view.tree.sortByColumn(0, Qt::DescendingOrder);
    MessageStatistics* statistics = view.add("ATTITUDE");
    statistics->addGap(5, 1, 10);
    view.tree.updateTree();
    statistics->gaps[0].missingEpochs = 2;
    statistics->addGap(3, 1, 10);
    statistics->addGap(7, 1, 10);
    view.row("mavlink/ATTITUDE")->updateContents();
    statistics->gaps[0].missingEpochs = 4;
    view.row("mavlink/ATTITUDE")->updateContents();
    QCOMPARE(rowTexts(view.find("mavlink/ATTITUDE/Gaps")), lines("t7 | 1 | 10 ms\nt5 | 4 | 40 ms\nt3 | 1 | 10 ms"));
}

void tst_MessageStatisticsTreeWidgetItem::expandingAMessageExpandsItsIntervals()
{
    View view;
    view.add("ATTITUDE")->addGap(1, 1, 1);
    view.tree.setSortingEnabled(false);
    view.tree.updateTree();
    MessageStatisticsTreeWidgetItem* attitude = view.row("mavlink/ATTITUDE");
    for (int i = 0; i < 2; ++i) {
        attitude->setExpanded(true);
        QVERIFY(attitude->child(0)->isExpanded());
        QVERIFY(!attitude->child(1)->isExpanded());
        attitude->child(0)->setExpanded(false);
        attitude->setExpanded(false);
    }
    MessageStatisticsTreeWidgetItem alone(view.coordinator.statistics.first());
    alone.fullExpand();
    QVERIFY(!alone.isExpanded());
}

QTEST_MAIN(tst_MessageStatisticsTreeWidgetItem)
#include "tst_messagestatisticstreewidgetitem.moc"
