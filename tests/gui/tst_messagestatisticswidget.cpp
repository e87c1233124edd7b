#include "formatinfo.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "qtcompat.h"
#include "testbase.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryFile>
#include <QTreeWidgetItem>

#include <memory>
#include <vector>

typedef MessageStatistics::Gap Gap;

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

static QStringList lines(const char* latin1)
{
    const QString all = text(latin1);
    return all.isEmpty() ? QStringList() : all.split(QLatin1Char('\n'));
}

/** What a row shows: its cells, without the empty ones at the end. */
static QString rowText(const QTreeWidgetItem* row)
{
    QStringList cells;
    for (int column = 0; column < 4; ++column)
        cells.append(row->text(column));
    while (!cells.isEmpty() && cells.last().isEmpty())
        cells.removeLast();
    return cells.join(text(" | "));
}

/** What the rows below @p parent show, two blanks for each level. */
static QStringList rowTexts(const QTreeWidgetItem* parent, const QString& indent = QString())
{
    QStringList texts;
    for (int i = 0; i < parent->childCount(); ++i) {
        texts.append(indent + rowText(parent->child(i)));
        texts += rowTexts(parent->child(i), indent + text("  "));
    }
    return texts;
}

static QStringList treeText(const QTreeWidget& tree)
{
    return rowTexts(tree.invisibleRootItem());
}

/** The row reached from the top of @p tree by the names in column 0. */
static QTreeWidgetItem* findRow(const QTreeWidget& tree, const QString& path)
{
    QTreeWidgetItem* row = tree.invisibleRootItem();
    Q_FOREACH (const QString& name, path.split(QLatin1Char('/'))) {
        QTreeWidgetItem* found = nullptr;
        for (int i = 0; row && i < row->childCount() && !found; ++i) {
            if (row->child(i)->text(0) == name)
                found = row->child(i);
        }
        row = found;
    }
    return row;
}

/** What the rows of @p gaps are to show. */
static QStringList gapTexts(const QVector<Gap>& gaps)
{
    QStringList texts;
    Q_FOREACH (const Gap& gap, gaps) {
        const unsigned long long duration = gap.missingEpochs * gap.interval;
        const QString durationText = duration < 1000 ? QString::fromLatin1("%1 ms").arg(duration)
                                                     : QString::fromLatin1("%1 s").arg(duration / 1000.0);
        texts.append(QString::fromLatin1("t%1 | %2 | %3").arg(gap.start).arg(gap.missingEpochs).arg(durationText));
    }
    return texts;
}

/** Writes down what happens in a tree. */
class Recorder : public QObject
{
    Q_OBJECT

public:
    explicit Recorder(QTreeWidget* tree)
    {
        connect(tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), SLOT(noteChange(QTreeWidgetItem*, int)));
        connect(tree->model(), SIGNAL(rowsInserted(QModelIndex, int, int)), SLOT(noteInsertion()));
        connect(tree->model(), SIGNAL(rowsRemoved(QModelIndex, int, int)), SLOT(noteRemoval()));
        connect(tree->model(), SIGNAL(layoutChanged()), SLOT(noteLayout()));
        connect(tree->header(), SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)), SLOT(noteSortIndicator()));
    }

    /** What happened since the last call. */
    QStringList take()
    {
        const QStringList events = m_events;
        m_events.clear();
        return events;
    }

private Q_SLOTS:
    void noteChange(QTreeWidgetItem* item, int column)
    {
        m_events.append(text("changed ") + QString::number(column) + text(": ") + rowText(item));
    }
    void noteInsertion() { m_events.append(text("inserted")); }
    void noteRemoval() { m_events.append(text("removed")); }
    void noteLayout() { m_events.append(text("sorted")); }
    void noteSortIndicator() { m_events.append(text("sort indicator")); }

private:
    QStringList m_events;
};

/** A tree with the statistics that it shows. */
struct View
{
    View()
        : format(text("mavlink"))
        , tree(&coordinator, nullptr)
        , recorder(&tree)
    {
    }

    MessageStatistics* add(const QString& name, const FormatInfo* otherFormat = nullptr)
    {
        owned.push_back(
            std::unique_ptr<MessageStatistics>(new MessageStatistics(otherFormat ? otherFormat : &format, name)));
        coordinator.statistics.append(owned.back().get());
        return owned.back().get();
    }
    MessageStatistics* add(const char* name, const FormatInfo* otherFormat = nullptr)
    {
        return add(text(name), otherFormat);
    }

    QTreeWidgetItem* find(const char* path) const { return findRow(tree, text(path)); }
    MessageStatisticsTreeWidgetItem* row(const char* path) const
    {
        return dynamic_cast<MessageStatisticsTreeWidgetItem*>(find(path));
    }

    /** Shows ten types with rows of every kind. */
    void fill()
    {
        for (int i = 0; i < 10; ++i) {
            MessageStatistics* statistics = add(QString::fromLatin1("TYPE %1").arg(i, 2, 10, QLatin1Char('0')));
            statistics->count = static_cast<unsigned int>(i * 37 % 10);
            statistics->regular = i % 2;
            statistics->lastInterval = 50;
            for (int j = 0; j < 5; ++j)
                statistics->setInterval(50 * j, static_cast<unsigned int>(j * 7 % 5 + 1));
            statistics->unknownTime = 1;
            statistics->unknownInterval = 2;
            statistics->addGap(9, 2, 50);
            statistics->addGap(10, 1, 50);
            statistics->numberOfGaps = 2;
            statistics->numberOfMissingEpochs = 3;
        }
        coordinator.eventCounts.insert(CorvelEvent::CrcError, 3);
        tree.updateTree();
    }

    FormatInfo format;
    MessageStatisticsCoordinator coordinator;
    std::vector<std::unique_ptr<MessageStatistics>> owned;
    MessageStatisticsWidget tree;
    Recorder recorder;
};

class tst_MessageStatisticsWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void showsFormatsAndMessages();
    void toolTips();
    void messageRowFollowsItsNumbers();
    void countsSortAsNumbersInMessageRowsAndAsTextsBelow();
    void rowsFollowTheCoordinator();
    void checksumErrorsHaveARowOnTop();
    void specialRowsComeAndGo();
    void intervalRowsAreReusedAndConfirmed();
    void gapRowsComeAndGo();
    void gapDuration_data();
    void gapDuration();
    void surplusGapRowsGoByHalves();
    void everyGapShowsOnceHoweverSorted_data();
    void everyGapShowsOnceHoweverSorted();
    void aRowUpdatedByItselfPlacesItsGaps();
    void unchangedTreeIsLeftAlone();
    void sortsOnceAndOnlyWhenRowsMove();
    void refreshKeepsWhatTheUserSees();
    void gapsColumnIsVisibleWhileThereAreGaps();
    void expandingAMessageExpandsItsIntervals();
    void settings();
};

void tst_MessageStatisticsWidget::startsEmpty()
{
    View view;
    view.add("ATTITUDE");
    QCOMPARE(treeText(view.tree), QStringList());
    view.coordinator.statistics.clear();
    view.tree.updateTree();
    QCOMPARE(treeText(view.tree), QStringList());
    QCOMPARE(rowText(view.tree.headerItem()), text("Message | Count | Current rate/interval | Gaps"));
    QCOMPARE(view.tree.columnCount(), 4);
    QVERIFY(view.tree.isColumnHidden(3));
    QVERIFY(view.tree.isSortingEnabled());
    QCOMPARE(view.tree.header()->sortIndicatorSection(), 0);
    QCOMPARE(view.tree.header()->sortIndicatorOrder(), Qt::AscendingOrder);
    QCOMPARE(view.tree.columnWidth(0), 150);
    QCOMPARE(view.tree.indentation(), 10);
}

void tst_MessageStatisticsWidget::showsFormatsAndMessages()
{
    View view;
    const FormatInfo sbp(text("sbp"));
    MessageStatistics* heartbeat = view.add("HEARTBEAT");
    heartbeat->count = 12;
    heartbeat->regular = true;
    heartbeat->lastInterval = 1000;
    heartbeat->setInterval(1000, 9);
    heartbeat->setInterval(3000, 1);
    heartbeat->unknownInterval = 2;
    heartbeat->numberOfGaps = 1;
    heartbeat->numberOfMissingEpochs = 2;
    heartbeat->addGap(500, 2, 1000);
    view.add("POS_LLH", &sbp);
    view.add("ATTITUDE")->unknownTime = 3;
    view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 1314);
    view.tree.updateTree();
    QCOMPARE(treeText(view.tree), lines("CRC Errors | 1314\n"
                                        "mavlink\n"
                                        "  ATTITUDE | 0 | N/A\n"
                                        "    Rates/Intervals\n"
                                        "      No time | 3\n"
                                        "  HEARTBEAT | 12 | every 1000 ms | 1 (2 epochs)\n"
                                        "    Gaps\n"
                                        "      t500 | 2 | 2 s\n"
                                        "    Rates/Intervals\n"
                                        "      Unknown interval/rate | 2\n"
                                        "      every 1000 ms | 9\n"
                                        "      every 3000 ms | 1\n"
                                        "sbp\n"
                                        "  POS_LLH | 0 | N/A\n"
                                        "    Rates/Intervals"));
    QVERIFY(view.find("mavlink")->isExpanded());
    QVERIFY(!view.row("mavlink/HEARTBEAT")->isExpanded());
    QCOMPARE(view.row("mavlink/HEARTBEAT")->getMessageStatistics(), heartbeat);
}

void tst_MessageStatisticsWidget::toolTips()
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

void tst_MessageStatisticsWidget::messageRowFollowsItsNumbers()
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

void tst_MessageStatisticsWidget::countsSortAsNumbersInMessageRowsAndAsTextsBelow()
{
    View view;
    view.add("A")->count = 10;
    view.add("B")->count = 9;
    view.coordinator.statistics.first()->setInterval(20, 10);
    view.coordinator.statistics.first()->setInterval(40, 9);
    view.tree.sortByColumn(1, Qt::AscendingOrder);
    view.tree.updateTree();
    QCOMPARE(treeText(view.tree), lines("mavlink\n"
                                        "  B | 9 | N/A\n"
                                        "    Rates/Intervals\n"
                                        "  A | 10 | N/A\n"
                                        "    Rates/Intervals\n"
                                        "      every 20 ms | 10\n"
                                        "      every 40 ms | 9"));
}

void tst_MessageStatisticsWidget::rowsFollowTheCoordinator()
{
    View view;
    const FormatInfo sbp(text("sbp"));
    MessageStatistics* attitude = view.add("ATTITUDE");
    MessageStatistics* heartbeat = view.add("HEARTBEAT");
    MessageStatistics* position = view.add("POS_LLH", &sbp);
    view.tree.updateTree();
    const QTreeWidgetItem* kept = view.row("mavlink/HEARTBEAT");
    QVERIFY(kept);
    view.coordinator.listsAsked = 0;
    view.coordinator.statistics.removeOne(attitude);
    view.coordinator.statistics.removeOne(position);
    heartbeat->count = 5;
    view.tree.updateTree();
    QCOMPARE(view.coordinator.listsAsked, 4);
    QCOMPARE(treeText(view.tree), lines("mavlink\n  HEARTBEAT | 5 | N/A\n    Rates/Intervals"));
    QCOMPARE(static_cast<const QTreeWidgetItem*>(view.row("mavlink/HEARTBEAT")), kept);
    view.coordinator.statistics.prepend(position);
    view.tree.updateTree();
    QVERIFY(view.row("sbp/POS_LLH"));
    QVERIFY(view.find("sbp")->isExpanded());
    view.coordinator.statistics.clear();
    view.tree.updateTree();
    QCOMPARE(treeText(view.tree), QStringList());
}

void tst_MessageStatisticsWidget::checksumErrorsHaveARowOnTop()
{
    View view;
    view.tree.setSortingEnabled(false);
    view.add("ATTITUDE");
    view.coordinator.eventCounts.insert(CorvelEvent::OtherEvent, 5);
    view.tree.updateTree();
    QCOMPARE(view.tree.topLevelItemCount(), 1);
    view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 9);
    view.tree.updateTree();
    QCOMPARE(view.tree.topLevelItemCount(), 2);
    const QTreeWidgetItem* errors = view.tree.topLevelItem(0);
    QCOMPARE(rowText(errors), text("CRC Errors | 9"));
    view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 10);
    view.tree.updateTree();
    QCOMPARE(view.tree.topLevelItem(0), const_cast<QTreeWidgetItem*>(errors));
    QCOMPARE(rowText(errors), text("CRC Errors | 10"));
    for (int i = 0; i < 2; ++i) {
        view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 0);
        view.tree.updateTree();
        QCOMPARE(view.tree.topLevelItemCount(), 1);
        view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 1);
        view.tree.updateTree();
        QCOMPARE(rowText(view.tree.topLevelItem(0)), text("CRC Errors | 1"));
    }
}

void tst_MessageStatisticsWidget::specialRowsComeAndGo()
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

void tst_MessageStatisticsWidget::intervalRowsAreReusedAndConfirmed()
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
    statistics->setInterval(50, 9);
    view.tree.updateTree();
    QCOMPARE(rowTexts(intervals), lines("every 100 ms | 4\nevery 25 ms | 2\nevery 50 ms | 9"));
}

void tst_MessageStatisticsWidget::gapRowsComeAndGo()
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

void tst_MessageStatisticsWidget::gapDuration_data()
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

void tst_MessageStatisticsWidget::gapDuration()
{
    View view;
    QFETCH(unsigned int, missingEpochs);
    QFETCH(unsigned long long, interval);
    QFETCH(QString, duration);
    view.add("ATTITUDE")->addGap(1, missingEpochs, interval);
    view.tree.updateTree();
    QCOMPARE(view.find("mavlink/ATTITUDE/Gaps")->child(0)->text(2), duration);
}

void tst_MessageStatisticsWidget::surplusGapRowsGoByHalves()
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

void tst_MessageStatisticsWidget::everyGapShowsOnceHoweverSorted_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("order");
    for (int column = 0; column < 4; ++column) {
        QTest::newRow(qPrintable(QString::fromLatin1("%1 ascending").arg(column))) << column << 0;
        QTest::newRow(qPrintable(QString::fromLatin1("%1 descending").arg(column))) << column << 1;
    }
}

void tst_MessageStatisticsWidget::everyGapShowsOnceHoweverSorted()
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

void tst_MessageStatisticsWidget::aRowUpdatedByItselfPlacesItsGaps()
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

void tst_MessageStatisticsWidget::unchangedTreeIsLeftAlone()
{
    View view;
    view.fill();
    for (int column = 0; column < 4; ++column) {
        view.tree.sortByColumn(column, Qt::DescendingOrder);
        view.tree.updateTree();
        view.recorder.take();
        view.tree.updateTree();
        QCOMPARE(view.recorder.take(), QStringList());
    }
}

void tst_MessageStatisticsWidget::sortsOnceAndOnlyWhenRowsMove()
{
    View view;
    view.fill();
    view.recorder.take();
    Q_FOREACH (MessageStatistics* statistics, view.coordinator.statistics)
        statistics->count += 10;
    view.tree.updateTree();
    QCOMPARE(view.recorder.take().filter(text("changed 1: ")).size(), view.coordinator.statistics.size());
    QCOMPARE(view.recorder.take(), QStringList());
    view.tree.sortByColumn(1, Qt::AscendingOrder);
    view.recorder.take();
    for (int i = 0; i < view.coordinator.statistics.size(); ++i)
        view.coordinator.statistics.at(i)->count = 1000u - static_cast<unsigned int>(i);
    view.tree.updateTree();
    const QStringList events = view.recorder.take();
    QCOMPARE(events.count(text("sorted")), 1);
    QCOMPARE(events.last(), text("sorted"));
    QVERIFY(!events.contains(text("sort indicator")));
    const QTreeWidgetItem* format = view.find("mavlink");
    QCOMPARE(format->child(0)->text(0), view.coordinator.statistics.last()->messageName);
}

void tst_MessageStatisticsWidget::refreshKeepsWhatTheUserSees()
{
    View view;
    view.fill();
    view.tree.resize(400, 120);
    view.tree.show();
    view.tree.sortByColumn(1, Qt::DescendingOrder);
    QtCompat::setSectionsClickable(view.tree.header(), false);
    view.tree.header()->setSortIndicatorShown(false);
    QTreeWidgetItem* chosen = view.row("mavlink/TYPE 07");
    chosen->setExpanded(true);
    QTreeWidgetItem* gaps = chosen->child(0)->text(0) == text("Gaps") ? chosen->child(0) : chosen->child(1);
    gaps->setExpanded(true);
    view.tree.setCurrentItem(gaps->child(1));
    chosen->setSelected(true);
    view.tree.verticalScrollBar()->setValue(3);
    const int scrolled = view.tree.verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    QTreeWidgetItem* current = view.tree.currentItem();
    for (int i = 0; i < view.coordinator.statistics.size(); ++i) {
        view.coordinator.statistics.at(i)->count = 1000u + static_cast<unsigned int>(i);
        view.coordinator.statistics.at(i)->addGap(1, 99, 1);
    }
    view.add("NEW");
    view.tree.updateTree();
    QCOMPARE(view.tree.verticalScrollBar()->value(), scrolled);
    QCOMPARE(view.tree.currentItem(), current);
    QCOMPARE(view.tree.selectedItems().size(), 2);
    QVERIFY(current->isSelected() && chosen->isSelected());
    QVERIFY(chosen->isExpanded());
    QVERIFY(gaps->isExpanded());
    QVERIFY(view.tree.isSortingEnabled());
    QCOMPARE(view.tree.header()->sortIndicatorSection(), 1);
    QCOMPARE(view.tree.header()->sortIndicatorOrder(), Qt::DescendingOrder);
    QVERIFY(!view.tree.header()->isSortIndicatorShown());
    QVERIFY(!QtCompat::sectionsClickable(view.tree.header()));
}

void tst_MessageStatisticsWidget::gapsColumnIsVisibleWhileThereAreGaps()
{
    View view;
    MessageStatistics* statistics = view.add("ATTITUDE");
    statistics->numberOfGaps = 3;
    view.tree.updateTree();
    QVERIFY(view.tree.isColumnHidden(3));
    statistics->addGap(1, 1, 1);
    view.add("HEARTBEAT");
    view.tree.updateTree();
    QVERIFY(!view.tree.isColumnHidden(3));
    view.tree.setColumnWidth(2, 321);
    view.tree.updateTree();
    QCOMPARE(view.tree.columnWidth(2), 321);
    statistics->gaps.clear();
    view.tree.updateTree();
    QVERIFY(view.tree.isColumnHidden(3));
    QVERIFY(view.tree.columnWidth(2) != 321);
}

void tst_MessageStatisticsWidget::expandingAMessageExpandsItsIntervals()
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

void tst_MessageStatisticsWidget::settings()
{
    View view;
    QTemporaryFile file;
    QVERIFY(file.open());
    QSettings settings(file.fileName(), QSettings::IniFormat);
    settings.beginGroup(text("view"));
    view.add("A")->count = 1;
    view.add("B")->count = 2;
    view.tree.updateTree();
    view.tree.setColumnWidth(0, 77);
    view.tree.setColumnWidth(1, 88);
    view.tree.sortByColumn(1, Qt::DescendingOrder);
    view.tree.writeSettings(settings);
    QCOMPARE(settings.value(text("sortColumn")), QVariant(1));
    QCOMPARE(settings.value(text("sortOrder")), QVariant(1));
    QVERIFY(settings.contains(text("headerstate")));

    MessageStatisticsWidget other(&view.coordinator, nullptr);
    other.updateTree();
    other.readSettings(settings);
    QCOMPARE(other.columnWidth(0), 77);
    QCOMPARE(other.columnWidth(1), 88);
    QCOMPARE(rowText(other.topLevelItem(0)->child(0)), text("B | 2 | N/A"));

    settings.endGroup();
    other.setSortingEnabled(false);
    other.readSettings(settings);
    QCOMPARE(other.columnWidth(0), 150);
    QVERIFY(other.isSortingEnabled());
    QCOMPARE(other.header()->sortIndicatorSection(), 0);
    QCOMPARE(other.header()->sortIndicatorOrder(), Qt::AscendingOrder);
    QCOMPARE(rowText(other.topLevelItem(0)->child(0)), text("A | 1 | N/A"));
}

QTEST_MAIN(tst_MessageStatisticsWidget)
#include "tst_messagestatisticswidget.moc"
