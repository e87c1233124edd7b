#include "qtcompat.h"
#include "statisticsview.h"
#include "testbase.h"

#include <QApplication>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryFile>

class tst_MessageStatisticsWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void showsFormatsAndMessages();
    void countsSortAsNumbersInMessageRowsAndAsTextsBelow();
    void rowsFollowTheCoordinator();
    void checksumErrorsHaveARowOnTop();
    void unchangedTreeIsLeftAlone();
    void sortsOnceAndOnlyWhenRowsMove();
    void refreshKeepsWhatTheUserSees();
    void gapsColumnIsVisibleWhileThereAreGaps();
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
    QStringList events = view.recorder.take();
    QCOMPARE(events.filter(text("changed 1: ")).size(), view.coordinator.statistics.size());
    QCOMPARE(events.size(), view.coordinator.statistics.size());
    view.tree.sortByColumn(1, Qt::AscendingOrder);
    view.recorder.take();
    for (int i = 0; i < view.coordinator.statistics.size(); ++i)
        view.coordinator.statistics.at(i)->count = 1000u - static_cast<unsigned int>(i);
    view.tree.updateTree();
    events = view.recorder.take();
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
