#include "messageinfo.h"
#include "statisticsview.h"
#include "testbase.h"

class tst_MessageStatisticsTreeWidgetItem : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void toolTips();
    void messageRowFollowsItsNumbers();
    void specialRowsComeAndGo();
    void intervalRowsAreReusedAndConfirmed();
    void gapRowsComeAndGo();
    void gapDurations();
    void surplusGapRowsGoByHalves();
    void everyGapIsShownHoweverSorted();
    void deletedGapRowsComeBack();
    void aRowUpdatedByItselfPlacesItsGaps();
    void expandingAMessageExpandsItsIntervals();
};

/** The tool tips of a row and of the rows below it, each behind its column, with a tilde for a line break. */
static QStringList toolTipsOf(const QTreeWidgetItem* row)
{
    QStringList tips;
    for (int column = 0; column < 4; ++column) {
        if (!row->toolTip(column).isEmpty())
            tips.append(text("%1 %2").arg(column).arg(row->toolTip(column)).replace(QLatin1Char('\n'), text("~")));
    }
    for (int i = 0; i < row->childCount(); ++i)
        tips += toolTipsOf(row->child(i));
    return tips;
}

void tst_MessageStatisticsTreeWidgetItem::toolTips()
{
    View view;
    MessageInfo info;
    info.description = text("The attitude");
    MessageStatistics* known = view.add(text("ATTITUDE"));
    known->messageInfo = &info;
    known->unknownTime = known->unknownInterval = 1;
    known->setInterval(0, 1);
    known->setInterval(50, 1);
    known->addGap(500, 2, 1000);
    view.tree.updateTree();
    const QString noTime = text("The number of times this message ~has been received without a valid time tag.");
    const QString unknown = text("Number of times this message has been received ~with a valid time tag but for "
                                 "which the interval ~could not be determined: ~there was no previous message with "
                                 "valid time, ~and the following messages did not ~come in at a regular rate.");
    const QString same = text("Number of times the messages was received~with the same time stamp as previous.");
    const QString every = text("Number of times the message was received at every 50 ms.");
    QStringList expected =
        lines("0 Message statistics for the messages~in the mavlink format.\n"
              "0 The attitude\n"
              "1 Number of times the ATTITUDE~message has been received.\n"
              "2 Most recent regular rate/interval at which the ATTITUDE~message has been received.\n"
              "3 Detected gaps in regular data segments with valid time, if any.\n"
              "0 Gaps, with time and duration\n"
              "0 Gaps start\n1 Missing epochs\n2 Duration\n"
              "0 The rates/intervals in which this message has been received,~"
              "together with the corresponding count.");
    Q_FOREACH (const QString& tip, QStringList() << noTime << unknown << same << every)
        expected << text("0 ") + tip << text("1 ") + tip;
    QCOMPARE(toolTipsOf(view.find("mavlink")), expected);
    view.add(text("Unknown 203"));
    view.tree.updateTree();
    QCOMPARE(view.row("mavlink/Unknown 203")->toolTip(0), text("Unknown 203 (unknown)"));
}

void tst_MessageStatisticsTreeWidgetItem::messageRowFollowsItsNumbers()
{
    View view;
    MessageStatistics* statistics = view.add(text("ATTITUDE"));
    statistics->lastInterval = 20;
    statistics->numberOfMissingEpochs = 7;
    view.tree.updateTree();
    const QTreeWidgetItem* attitude = view.row("mavlink/ATTITUDE");
    QCOMPARE(rowText(attitude), text("ATTITUDE | 0 | N/A"));
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
    MessageStatistics* statistics = view.add(text("ATTITUDE"));
    statistics->setInterval(50, 8);
    const struct
    {
        unsigned int unknownTime;
        unsigned int unknownInterval;
        const char* shown;
    } steps[] = {{0, 0, "every 50 ms | 8"},
                 {1, 2, "Unknown interval/rate | 2\nNo time | 1\nevery 50 ms | 8"},
                 {4, 0, "No time | 4\nevery 50 ms | 8"},
                 {0, 3, "Unknown interval/rate | 3\nevery 50 ms | 8"},
                 {5, 3, "No time | 5\nUnknown interval/rate | 3\nevery 50 ms | 8"}};
    for (unsigned int i = 0; i < sizeof(steps) / sizeof(steps[0]); ++i) {
        statistics->unknownTime = steps[i].unknownTime;
        statistics->unknownInterval = steps[i].unknownInterval;
        view.tree.updateTree();
        QCOMPARE(rowTexts(view.row("mavlink/ATTITUDE")->child(0)), lines(steps[i].shown));
    }
}

void tst_MessageStatisticsTreeWidgetItem::intervalRowsAreReusedAndConfirmed()
{
    View view;
    view.tree.setSortingEnabled(false);
    MessageStatistics* statistics = view.add(text("ATTITUDE"));
    statistics->setInterval(50, 8);
    statistics->setInterval(100, 3);
    statistics->setInterval(0, 1);
    statistics->setInterval(7, 0);
    view.tree.updateTree();
    QCOMPARE(statistics->hashesAsked, 4);
    const QTreeWidgetItem* intervals = view.row("mavlink/ATTITUDE")->child(0);
    QCOMPARE(rowTexts(intervals), lines("every 50 ms | 8\nevery 100 ms | 3\nevery 0 ms | 1"));
    const QTreeWidgetItem* kept = intervals->child(1);
    QCOMPARE(kept->data(1, Qt::DisplayRole).userType(), static_cast<int>(QMetaType::QString)); // sorts as a text
    statistics->setInterval(50, 0);
    statistics->setInterval(100, 4);
    statistics->setInterval(25, 2);
    statistics->intervals.removeOne(0);
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("every 100 ms | 4\nevery 25 ms | 2"));
    QCOMPARE(static_cast<const QTreeWidgetItem*>(intervals->child(0)), kept);
    statistics->setInterval(50, 8);
    intervals->child(0)->setText(1, text("5")); // what stands there counts, whoever wrote it
    intervals->child(1)->setText(1, text("02"));
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("every 100 ms | 4\nevery 25 ms | 2\nevery 50 ms | 8"));
    statistics->intervals = QList<long long>() << 25 << 25 << 50;
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("every 25 ms | 2\nevery 50 ms | 8"));
}

void tst_MessageStatisticsTreeWidgetItem::gapRowsComeAndGo()
{
    View view;
    MessageStatistics* statistics = view.add(text("ATTITUDE"));
    view.tree.setSortingEnabled(false);
    view.tree.updateTree();
    QTreeWidgetItem* attitude = view.row("mavlink/ATTITUDE");
    statistics->addGap(9, 3, 200);
    statistics->unstoredGaps = true;
    view.tree.updateTree();
    QCOMPARE(rowTexts(attitude), lines("Rates/Intervals\nGaps (incomplete list)\n  t9 | 3 | 600 ms"));
    QTreeWidgetItem* gaps = attitude->child(1);
    gaps->setExpanded(true);
    statistics->unstoredGaps = false;
    statistics->addGap(1, 5, 1000);
    view.tree.updateTree();
    QVERIFY(attitude->child(1) == gaps && gaps->isExpanded());
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

void tst_MessageStatisticsTreeWidgetItem::gapDurations()
{
    View view;
    view.tree.setSortingEnabled(false);
    MessageStatistics* statistics = view.add(text("ATTITUDE"));
    statistics->addGap(0, 0, 1000);
    statistics->addGap(1, 1, 999);
    statistics->addGap(2, 2, 500);
    statistics->addGap(3, 3, 500);
    statistics->addGap(4, 1, 123456789);
    statistics->addGap(5, 1, 2147483647);
    // From 2^31 ms on, the duration wraps.
    statistics->addGap(6, 1, 2147483648u);
    statistics->addGap(7, 65536, 65536);
    statistics->addGap(8, 4294967295u, 4294967297ull);
    statistics->addGap(9, 3, 1431657265);
    view.tree.updateTree();
    QStringList durations;
    Q_FOREACH (const QString& row, rowTexts(view.find("mavlink/ATTITUDE/Gaps")))
        durations.append(row.section(text(" | "), 2));
    QCOMPARE(durations, lines("0 ms\n999 ms\n1 s\n1.5 s\n123457 s\n2.14748e+06 s\n"
                              "-2147483648 ms\n0 ms\n-1 ms\n4.499 s"));
}

void tst_MessageStatisticsTreeWidgetItem::surplusGapRowsGoByHalves()
{
    View view;
    // Sorted by start the rows stand as they do unsorted, and go in the same order.
    for (int sorted = 0; sorted < 2; ++sorted) {
        view.tree.setSortingEnabled(sorted);
        MessageStatistics* statistics = view.add(text("TYPE %1").arg(sorted));
        for (unsigned int start = 1; start <= 6; ++start)
            statistics->addGap(start, 1, 10);
        view.tree.updateTree();
        const QTreeWidgetItem* gaps = view.find(sorted ? "mavlink/TYPE 1/Gaps" : "mavlink/TYPE 0/Gaps");
        statistics->gaps.resize(2);
        statistics->gaps[1].missingEpochs = 2;
        view.tree.updateTree();
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt4 | 1 | 10 ms\nt6 | 1 | 10 ms"));
        const MessageStatisticsTreeWidgetItem* row = static_cast<MessageStatisticsTreeWidgetItem*>(gaps->parent());
        QVERIFY(row->getGap(gaps->child(1))->start == 2 && !row->getGap(gaps->child(2)) && !row->getGap(gaps));
        view.tree.updateTree();
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt6 | 1 | 10 ms"));
        statistics->addGap(5, 3, 10);
        view.tree.updateTree();
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt5 | 3 | 30 ms"));
    }
}

/** What the rows of short @p gaps are to show. */
static QStringList gapTexts(const QVector<MessageStatistics::Gap>& gaps)
{
    QStringList texts;
    Q_FOREACH (const MessageStatistics::Gap& gap, gaps)
        texts.append(
            text("t%1 | %2 | %3 ms").arg(gap.start).arg(gap.missingEpochs).arg(gap.missingEpochs * gap.interval));
    return texts;
}

void tst_MessageStatisticsTreeWidgetItem::everyGapIsShownHoweverSorted()
{
    View view;
    MessageStatistics* statistics = view.add(text("ATTITUDE"));
    quint32 random = 12345;
    unsigned int serial = 0;
    int rows = 0;
    for (int round = 0; round < 320; ++round) {
        if (round % 20 == 0)
            view.tree.sortByColumn(round / 20 % 4, static_cast<Qt::SortOrder>(round / 80 % 2));
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
            statistics->addGap(++serial * 7919 % 10007, (random >> 12) % 14, 70);
        view.recorder.take();
        view.tree.updateTree();

        const QStringList events = view.recorder.take();
        const QStringList stored = gapTexts(statistics->gaps);
        const QTreeWidgetItem* gaps = view.find("mavlink/ATTITUDE/Gaps");
        QCOMPARE(gaps == nullptr, stored.isEmpty());
        const int count = static_cast<int>(stored.size());
        rows = count == 0 ? 0 : count + qMax(0, rows - count) / 2; // surplus rows go by halves
        if (!gaps)
            continue;
        const QStringList shown = rowTexts(gaps);
        QCOMPARE(static_cast<int>(shown.size()), rows);
        QVERIFY(!shown.contains(QString()));
        for (int i = 0; i < stored.size(); ++i) {
            QVERIFY(shown.contains(stored.at(i)));
            if (before.value(i) == stored.at(i))
                QCOMPARE(events.filter(text(": ") + stored.at(i)), QStringList());
        }
        view.tree.sortItems(view.tree.header()->sortIndicatorSection(), view.tree.header()->sortIndicatorOrder());
        QCOMPARE(rowTexts(gaps), shown);
    }
}

void tst_MessageStatisticsTreeWidgetItem::deletedGapRowsComeBack()
{
    View view;
    for (int column = 0; column < 3; ++column) {
        view.tree.sortByColumn(column, Qt::DescendingOrder);
        MessageStatistics* statistics = view.add(text("TYPE %1").arg(column));
        for (unsigned int start = 1; start <= 4; ++start)
            statistics->addGap(start, start * 7 % 5, 10);
        view.tree.updateTree();
        const QString path = text("mavlink/TYPE %1/Gaps").arg(column);
        for (int i = 0; i < 4; ++i) {
            delete findRow(view.tree, path)->child(i);
            statistics->addGap(static_cast<unsigned int>(5 + i), 1, 10);
            view.tree.updateTree();
            QStringList shown = rowTexts(findRow(view.tree, path));
            shown.sort();
            QCOMPARE(shown, gapTexts(statistics->gaps));
        }
        delete findRow(view.tree, path);
        view.tree.updateTree();
        QCOMPARE(findRow(view.tree, path)->childCount(), 8);
    }
}

void tst_MessageStatisticsTreeWidgetItem::aRowUpdatedByItselfPlacesItsGaps()
{
    View view;
    view.tree.sortByColumn(0, Qt::DescendingOrder);
    MessageStatistics* statistics = view.add(text("ATTITUDE"));
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
    view.add(text("ATTITUDE"))->addGap(1, 1, 1);
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
