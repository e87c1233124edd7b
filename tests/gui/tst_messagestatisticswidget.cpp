#include "diagnostics.h"
#include "statisticsview.h"
#include "testbase.h"
#include "waitfor.h"

#include <QScrollBar>
#include <QSettings>
#include <QTemporaryFile>

#include <functional>

CORVEL_DIAGNOSTICS("MessageStatisticsWidget");
#include "qtcompat.h"

class tst_MessageStatisticsWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsFormatsAndMessages();
    void rowsFollowTheCoordinator();
    void checksumErrorsHaveARowOnTop();
    void unchangedTreeIsLeftAlone();
    void sortsOnceAndOnlyWhenRowsMove();
    void refreshKeepsWhatTheUserSees();
    void gapsColumnIsVisibleWhileThereAreGaps();
    void refreshesThatListenersAskForComeAfterwards();
    void manyAreUpdatedByAndBy();
    void settings();
};

void tst_MessageStatisticsWidget::showsFormatsAndMessages()
{
    View view;
    QCOMPARE(view.updated(), QStringList());
    QCOMPARE(rowText(view.tree.headerItem()), text("Message | Count | Current rate/interval | Gaps"));
    QVERIFY(view.tree.isColumnHidden(3));
    QCOMPARE(view.tree.columnWidth(0), 150);
    QCOMPARE(view.tree.indentation(), 10);
    const FormatInfo sbp{text("sbp")};
    view("HEARTBEAT count=12 every=1000 intervals=1000:9,3000:1 unknown=2 gaps=1 missing=2 stored=500/2/1000");
    view.add(text("POS_LLH"), &sbp);
    view("ATTITUDE untimed=3");
    view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 1314);
    QCOMPARE(view.updated(), lines("CRC Errors | 1314\n"
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
    QCOMPARE(view.row("mavlink/HEARTBEAT")->getMessageStatistics(), view.owned.front().get());
}

void tst_MessageStatisticsWidget::rowsFollowTheCoordinator()
{
    View view;
    const FormatInfo sbp{text("sbp")};
    MessageStatistics* position = view.add("POS_LLH", &sbp);
    view("ATTITUDE");
    view("HEARTBEAT");
    const QTreeWidgetItem* kept = view.row("mavlink/HEARTBEAT");
    view.coordinator.listsAsked = 0;
    view.coordinator.statistics = view.coordinator.statistics.mid(2);
    QCOMPARE(view("HEARTBEAT count=5"), text("HEARTBEAT | 5 | N/A\n  Rates/Intervals"));
    QCOMPARE(view.tree.topLevelItemCount(), 1);
    QCOMPARE(view.coordinator.listsAsked, 4);
    QCOMPARE(static_cast<const QTreeWidgetItem*>(view.row("mavlink/HEARTBEAT")), kept);
    view.coordinator.statistics.prepend(position);
    view("");
    QVERIFY(view.row("sbp/POS_LLH") && view.find("sbp")->isExpanded());
    view.coordinator.statistics.clear();
    QCOMPARE(view.updated(), QStringList());
}

void tst_MessageStatisticsWidget::checksumErrorsHaveARowOnTop()
{
    View view;
    view.tree.setSortingEnabled(false);
    view("ATTITUDE");
    view.coordinator.eventCounts.insert(CorvelEvent::Fanfare, 5);
    const auto first = [&](const QString& count) {
        view.coordinator.eventCounts.insert(CorvelEvent::CrcError, count.toUInt());
        return view.updated().first();
    };
    const TextRow rows[] = {
        {"0", "mavlink"}, {"9", "CRC Errors | 9"}, {"0", "mavlink"}, {"0", "mavlink"}, {"1", "CRC Errors | 1"}};
    checkRows(rows, first);
    const QTreeWidgetItem* const former = view.tree.topLevelItem(0);
    QCOMPARE(first("10"), text("CRC Errors | 10"));
    QCOMPARE(static_cast<const QTreeWidgetItem*>(view.tree.topLevelItem(0)), former);
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
    const QList<MessageStatistics*>& all = view.coordinator.statistics;
    for (int i = 0; i < all.size(); ++i)
        all.at(i)->count += 10;
    view.tree.updateTree();
    QStringList events = view.recorder.take();
    QCOMPARE(events.filter(text("changed 1: ")).size(), all.size());
    QCOMPARE(events.size(), all.size());
    view.tree.sortByColumn(1, Qt::AscendingOrder);
    view.recorder.take();
    for (int i = 0; i < all.size(); ++i)
        all.at(i)->count = 1000u - static_cast<unsigned int>(i);
    view.tree.updateTree();
    events = view.recorder.take();
    QCOMPARE(events.count(text("sorted")), 1);
    QCOMPARE(events.last(), text("sorted"));
    QVERIFY(!events.contains(text("sort indicator")));
    QCOMPARE(view.find("mavlink")->child(0)->text(0), all.last()->messageName);
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
    QTreeWidgetItem* chosen = view.row("mavlink/TYPE_07");
    chosen->setExpanded(true);
    QTreeWidgetItem* gaps = view.find("mavlink/TYPE_07/Gaps");
    gaps->setExpanded(true);
    view.tree.setCurrentItem(gaps->child(1));
    chosen->setSelected(true);
    view.tree.verticalScrollBar()->setValue(3);
    const int scrolled = view.tree.verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    QTreeWidgetItem* current = view.tree.currentItem();
    Q_FOREACH (MessageStatistics* statistics, view.coordinator.statistics) {
        statistics->count += 1000;
        statistics->addGap(1, 99, 1);
    }
    view("NEW");
    QCOMPARE(view.tree.verticalScrollBar()->value(), scrolled);
    QCOMPARE(view.tree.currentItem(), current);
    QCOMPARE(view.tree.selectedItems().size(), 2);
    QVERIFY(current->isSelected() && chosen->isSelected());
    QVERIFY(chosen->isExpanded() && gaps->isExpanded());
    QVERIFY(view.tree.isSortingEnabled());
    const QHeaderView* const header = view.tree.header();
    QVERIFY(header->sortIndicatorSection() == 1 && header->sortIndicatorOrder() == Qt::DescendingOrder);
    QVERIFY(!header->isSortIndicatorShown() && !QtCompat::sectionsClickable(header));
}

void tst_MessageStatisticsWidget::gapsColumnIsVisibleWhileThereAreGaps()
{
    View view;
    view("A gaps=3");
    QVERIFY(view.tree.isColumnHidden(3));
    view.tree.sortByColumn(2, Qt::AscendingOrder);
    view.add("B");
    view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 1);
    view.recorder.take();
    view("A stored=1/1/1");
    // The column comes when the rows of messages stand, and before the row on top.
    const QStringList events = view.recorder.take();
    QCOMPARE(events.indexOf(text("resized")), events.indexOf(text("sorted")) + 1);
    QVERIFY(events.indexOf(text("resized")) < events.lastIndexOf(text("inserted")));
    QVERIFY(!view.tree.isColumnHidden(3));
    const int width = view.tree.columnWidth(2);
    view.tree.resizeColumnToContents(2); // with the sort indicator in its header
    QCOMPARE(view.tree.columnWidth(2), width);
    view.tree.setColumnWidth(2, 321);
    view("");
    QCOMPARE(view.tree.columnWidth(2), 321);
    view("A stored=");
    QVERIFY(view.tree.isColumnHidden(3));
    QVERIFY(view.tree.columnWidth(2) != 321);
}

void tst_MessageStatisticsWidget::refreshesThatListenersAskForComeAfterwards()
{
    View view;
    connect(&view.tree, SIGNAL(itemExpanded(QTreeWidgetItem*)), &view.tree, SLOT(updateTree()));
    connect(&view.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), &view.tree, SLOT(updateTree()));
    // A row that goes while it is expanded, then one that goes while it is written.
    for (int i = 0; i < 2; ++i) {
        MessageStatistics* statistics = view.add("A");
        QCOMPARE(view("A"), text("A | 0 | N/A\n  Rates/Intervals"));
        statistics->count = 5;
        view.coordinator.statistics.clear();
        i == 0 ? view.row("mavlink/A")->fullExpand() : view.row("mavlink/A")->updateContents();
        QCOMPARE(rowTexts(view.tree), QStringList());
    }
}

void tst_MessageStatisticsWidget::manyAreUpdatedByAndBy()
{
    View view;
    const int many = 1000;
    for (int i = 0; i < many; ++i)
        view.add(text("T%1").arg(i, 4, 10, QLatin1Char('0')))->intervals.append(50);
    view.tree.resize(300, 200);
    view.tree.show();
    view.tree.updateSome(0);
    QCOMPARE(rowTexts(view.tree).join("\n"), text("mavlink\n  T0000 | 0 | N/A\n    Rates/Intervals"));
    QTreeWidgetItem* format = view.tree.topLevelItem(0);
    // After some steps; those that come soon after one that took long do nothing.
    const auto steps = [&](int milliseconds, const std::function<bool()>& isDone) {
        return waitFor([&] {
            view.tree.updateSome(milliseconds);
            return isDone();
        });
    };
    QVERIFY(steps(50, [&] { return format->childCount() == many; }));
    const auto shown = [&](int row) { return format->child(row)->text(1); };

    view.tree.scrollToBottom();
    for (int i = 0; i < many; ++i)
        view.owned.at(static_cast<std::size_t>(i))->count = 7;
    QVERIFY(steps(0, [&] { return shown(many - 1) == text("7"); }));
    QCOMPARE(shown(many / 2), text("0"));
    QVERIFY(steps(5, [&] { return shown(many / 2) == text("7"); }));

    view.owned.back()->setInterval(50, 3);
    view.owned.back()->count = 8;
    QVERIFY(steps(0, [&] { return shown(many - 1) == text("8"); }));
    QCOMPARE(format->child(many - 1)->child(0)->childCount(), 0);
    format->child(many - 1)->setExpanded(true);
    QCOMPARE(format->child(many - 1)->child(0)->childCount(), 1);

    MessageStatistics* one = view.owned.at(many / 3).get();
    one->addGap(9, 2, 50);
    QVERIFY(steps(5, [&] { return !view.tree.isColumnHidden(3); }));
    one->gaps.clear();
    QVERIFY(steps(5, [&] { return view.tree.isColumnHidden(3); }));
    view.coordinator.statistics.removeAt(5);
    view.tree.updateSome(0);
    QCOMPARE(format->childCount(), many - 1);

    // What comes is put where it belongs, without a sort; and is there as if all had been sorted.
    view.recorder.take();
    view.add("T0500x")->setInterval(100, 1);
    view.owned.back()->setInterval(1000, 9);
    view.tree.updateSome(0);
    QVERIFY(!view.recorder.take().contains(text("sorted")));
    const QStringList inSteps = rowTexts(view.tree);
    const int place = inSteps.indexOf(text("  T0500x | 0 | N/A"));
    QVERIFY(place > 0 && inSteps.at(place - 1).contains(text("Rates")) &&
            inSteps.at(place - 2).contains(text("T0500 ")));
    view.tree.sortByColumn(0, Qt::DescendingOrder);
    view.tree.sortByColumn(0, Qt::AscendingOrder);
    QCOMPARE(rowTexts(view.tree), inSteps);
    view.tree.sortByColumn(1, Qt::DescendingOrder);
    view.owned.at(7)->count = 99;
    QVERIFY(steps(50, [&] { return format->child(0)->text(1) == text("99"); }));
    view.coordinator.statistics.clear();
    view.coordinator.eventCounts.insert(CorvelEvent::CrcError, 3);
    view.tree.updateSome(0);
    QCOMPARE(rowTexts(view.tree), lines("CRC Errors | 3"));
}

void tst_MessageStatisticsWidget::settings()
{
    View view;
    QTemporaryFile file;
    QVERIFY(file.open());
    QSettings settings(file.fileName(), QSettings::IniFormat);
    settings.beginGroup(text("view"));
    view("A count=1");
    view("B count=2");
    view.tree.setColumnWidth(0, 77);
    view.tree.sortByColumn(1, Qt::DescendingOrder);
    view.tree.writeSettings(settings);
    QCOMPARE(settings.value(text("sortColumn")), QVariant(1));
    QCOMPARE(settings.value(text("sortOrder")), QVariant(1));
    QVERIFY(settings.contains(text("headerstate")));

    MessageStatisticsWidget other(&view.coordinator, nullptr);
    other.updateTree();
    other.readSettings(settings);
    QCOMPARE(other.columnWidth(0), 77);
    QCOMPARE(rowTexts(other).at(1), text("  B | 2 | N/A"));

    settings.endGroup(); // nothing is there
    other.setSortingEnabled(false);
    other.readSettings(settings);
    QCOMPARE(other.columnWidth(0), 150);
    QVERIFY(other.isSortingEnabled());
    QCOMPARE(rowTexts(other).at(1), text("  A | 1 | N/A"));
}

QTEST_MAIN(tst_MessageStatisticsWidget)
#include "tst_messagestatisticswidget.moc"
