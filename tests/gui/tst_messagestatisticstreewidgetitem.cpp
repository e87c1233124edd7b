#include "messageinfo.h"
#include "statisticsview.h"
#include "testbase.h"

class tst_MessageStatisticsTreeWidgetItem : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void toolTips();
    void messageRowFollowsItsNumbers();
    void intervalRowsComeAndGo();
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
    view("ATTITUDE untimed=1 unknown=1 intervals=0:1,50:1 stored=500/2/1000");
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
    view("Unknown_203");
    QCOMPARE(view.row("mavlink/Unknown_203")->toolTip(0), text("Unknown_203 (unknown)"));
}

void tst_MessageStatisticsTreeWidgetItem::messageRowFollowsItsNumbers()
{
    View view;
    const TextRow rows[] = {
        {"A missing=7", "A | 0 | N/A\n  Rates/Intervals"},
        {"A count=4294967295 every=20 gaps=1 missing=4",
         "A | 4294967295 | every 20 ms | 1 (4 epochs)\n  Rates/Intervals"},
        {"A every= gaps=-1", "A | 4294967295 | N/A\n  Rates/Intervals"},
    };
    checkRows(rows, std::ref(view));
    QCOMPARE(view.row("mavlink/A")->data(1, Qt::DisplayRole).userType(), static_cast<int>(QMetaType::ULongLong));
    QCOMPARE(view.row("mavlink/A")->data(3, Qt::DisplayRole).userType(), static_cast<int>(QMetaType::QString));
}

void tst_MessageStatisticsTreeWidgetItem::intervalRowsComeAndGo()
{
    View view;
    view.tree.setSortingEnabled(false);
    const auto intervals = [&](const QString& words) {
        view(words);
        return rowTexts(view.row("mavlink/A")->child(0)).join("\n");
    };
    const TextRow special[] = {
        {"A intervals=50:8", "every 50 ms | 8"},
        {"A untimed=1 unknown=2", "Unknown interval/rate | 2\nNo time | 1\nevery 50 ms | 8"},
        {"A untimed=4 unknown=0", "No time | 4\nevery 50 ms | 8"},
        {"A untimed=0 unknown=3", "Unknown interval/rate | 3\nevery 50 ms | 8"},
        {"A untimed=5", "No time | 5\nUnknown interval/rate | 3\nevery 50 ms | 8"},
        {"A untimed=0 unknown=0 intervals=", ""},
        {"A intervals=50:8,100:3,0:1,7:0", "every 50 ms | 8\nevery 100 ms | 3\nevery 0 ms | 1"},
    };
    checkRows(special, intervals);
    view.owned.front()->hashesAsked = 0;
    view("");
    QCOMPARE(view.owned.front()->hashesAsked, 4);
    QTreeWidgetItem* const row = view.row("mavlink/A")->child(0);
    const QTreeWidgetItem* const kept = row->child(1);
    QCOMPARE(kept->data(1, Qt::DisplayRole).userType(), static_cast<int>(QMetaType::QString)); // sorts as a text
    QCOMPARE(intervals("A intervals=50:0,100:4,25:2"), text("every 100 ms | 4\nevery 25 ms | 2"));
    QCOMPARE(static_cast<const QTreeWidgetItem*>(row->child(0)), kept);
    row->child(0)->setText(1, "5"); // what stands there counts, whoever wrote it
    row->child(1)->setText(1, "02");
    const TextRow later[] = {
        {"A intervals=50:8,100:4,25:2", "every 100 ms | 4\nevery 25 ms | 2\nevery 50 ms | 8"},
        {"A intervals=25:2,25:2,50:8", "every 25 ms | 2\nevery 50 ms | 8"},
    };
    checkRows(later, intervals);
    for (int i = 0; i < 2; ++i) {
        view.recorder.victim = row->child(i);
        intervals(text("A intervals=25:2,50:%1").arg(i + 3)); // who hears of the second row writes into either
        QCOMPARE(row->child(i)->text(1), text("?"));
        QCOMPARE(intervals(""), text("every 25 ms | 2\nevery 50 ms | %1").arg(i + 3));
    }
    row->child(0)->setText(1, "5");
    QCOMPARE(intervals("A intervals="), QString());
}

void tst_MessageStatisticsTreeWidgetItem::gapRowsComeAndGo()
{
    View view;
    view.tree.setSortingEnabled(false);
    const char* const none = "A | 0 | N/A\n  Rates/Intervals";
    const TextRow first[] = {
        {"A", none},
        {"A stored=9/3/200 more=1", "A | 0 | N/A\n  Rates/Intervals\n  Gaps (incomplete list)\n    t9 | 3 | 600 ms"},
    };
    checkRows(first, std::ref(view));
    QTreeWidgetItem* const gaps = view.row("mavlink/A")->child(1);
    gaps->setExpanded(true);
    const char* const two = "A | 0 | N/A\n  Rates/Intervals\n  Gaps\n    t9 | 3 | 600 ms\n    t1 | 5 | 5 s";
    QCOMPARE(view("A more=0 stored=9/3/200,1/5/1000"), text(two));
    QVERIFY(view.row("mavlink/A")->child(1) == gaps && gaps->isExpanded());
    view.recorder.take();
    view("A stored=9/4/200,1/5/1000");
    QCOMPARE(view.recorder.take(), lines("changed 1: t9 | 4 | 600 ms\nchanged 2: t9 | 4 | 800 ms"));
    const TextRow later[] = {
        {"A stored=", none},
        {"A stored=9/4/200", "A | 0 | N/A\n  Rates/Intervals\n  Gaps\n    t9 | 4 | 800 ms"},
    };
    checkRows(later, std::ref(view));
}

void tst_MessageStatisticsTreeWidgetItem::gapDurations()
{
    const auto duration = [](const QString& gap) {
        View view;
        view("A stored=7/" + gap);
        return view.find("mavlink/A/Gaps")->child(0)->text(2);
    };
    const TextRow rows[] = {
        {"0/1000", "0 ms"},
        {"1/999", "999 ms"},
        {"2/500", "1 s"},
        {"3/500", "1.5 s"},
        {"1/123456789", "123457 s"},
        {"1/2147483647", "2.14748e+06 s"},
        // From 2^31 ms on, the duration wraps.
        {"1/2147483648", "-2147483648 ms"},
        {"65536/65536", "0 ms"},
        {"4294967295/4294967297", "-1 ms"},
        {"3/1431657265", "4.499 s"},
    };
    checkRows(rows, duration);
}

void tst_MessageStatisticsTreeWidgetItem::surplusGapRowsGoByHalves()
{
    View view;
    // Sorted by start the rows stand as they do unsorted, and go in the same order.
    for (int sorted = 0; sorted < 2; ++sorted) {
        view.tree.setSortingEnabled(sorted);
        const QString type = text("TYPE%1").arg(sorted);
        view(type + " stored=1/1/10,2/1/10,3/1/10,4/1/10,5/1/10,6/1/10");
        const QTreeWidgetItem* gaps = view.find("mavlink/" + type + "/Gaps");
        view(type + " stored=1/1/10,2/2/10");
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt4 | 1 | 10 ms\nt6 | 1 | 10 ms"));
        const MessageStatisticsTreeWidgetItem* row = static_cast<MessageStatisticsTreeWidgetItem*>(gaps->parent());
        QVERIFY(row->getGap(gaps->child(1))->start == 2 && !row->getGap(gaps->child(2)) && !row->getGap(gaps));
        view("");
        QCOMPARE(rowTexts(gaps), lines("t1 | 1 | 10 ms\nt2 | 2 | 20 ms\nt6 | 1 | 10 ms"));
        view(type + " stored=1/1/10,2/2/10,5/3/10");
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
        const QString type = text("TYPE%1").arg(column);
        const QString path = "mavlink/" + type + "/Gaps";
        view(type + " stored=1/2/10,2/4/10,3/1/10,4/3/10");
        for (int i = 0; i < 4; ++i) {
            delete view.find(path)->child(i);
            view.owned.back()->addGap(static_cast<unsigned int>(5 + i), 1, 10);
            view("");
            QStringList shown = rowTexts(view.find(path));
            shown.sort();
            QCOMPARE(shown, gapTexts(view.owned.back()->gaps));
        }
        delete view.find(path);
        view("");
        QCOMPARE(view.find(path)->childCount(), 8);
    }
}

void tst_MessageStatisticsTreeWidgetItem::aRowUpdatedByItselfPlacesItsGaps()
{
    View view;
    view.tree.sortByColumn(0, Qt::DescendingOrder);
    view("A stored=5/1/10");
    view.owned.front()->gaps[0].missingEpochs = 2;
    view.owned.front()->addGap(3, 1, 10);
    view.owned.front()->addGap(7, 1, 10);
    view.row("mavlink/A")->updateContents();
    view.owned.front()->gaps[0].missingEpochs = 4;
    view.row("mavlink/A")->updateContents();
    QCOMPARE(rowTexts(view.find("mavlink/A/Gaps")), lines("t7 | 1 | 10 ms\nt5 | 4 | 40 ms\nt3 | 1 | 10 ms"));
}

void tst_MessageStatisticsTreeWidgetItem::expandingAMessageExpandsItsIntervals()
{
    View view;
    view.tree.setSortingEnabled(false);
    view("A stored=1/1/1");
    MessageStatisticsTreeWidgetItem* attitude = view.row("mavlink/A");
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
