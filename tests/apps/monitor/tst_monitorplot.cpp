#include "messageinfo.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "plotview.h"
#include "testbase.h"
#include "treedesk.h"
#include "treerow.h"

#include <QMimeData>
#include <QTreeWidget>

#include <cmath>

/** The plot of fields over time. */
class tst_monitorplot : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void everyMessageIsAPointAndGapsStayOpen();
    void memoryIsBoundedAndExtremesStay();
    void unitsHaveAxesAndTheLegendTellsValues();
    void sendersAreToldApart();
    void pauseKeepsThePictureAndTheData();
    void rowsAreDroppedAndSavedAsValues();
};

static FieldPath pathOf(const MessageInfo* info, const FieldInfo* field)
{
    FieldPath path(info);
    path.append(field);
    return path;
}

// The values in order, with a dash for a point without one.
static QString textOf(const PlotSeries& series)
{
    QStringList values;
    for (auto point = series.getPoints()->constBegin(); point != series.getPoints()->constEnd(); ++point)
        values << (std::isnan(point->value) ? QString("-") : QString::number(point->value));
    return values.join(' ');
}

void tst_monitorplot::everyMessageIsAPointAndGapsStayOpen()
{
    TreeDesk desk;
    desk.speed->setInvalidValue(FieldValue::fromDouble(-1));
    desk.plot.addField(pathOf(desk.nav, desk.speed));
    // Ten a second; then half a second is missing, then a value is not available.
    const qint64 times[] = {1000, 1100, 1200, 1300, 1900, 2000, 2100};
    for (int i = 0; i < 7; ++i)
        desk.send(desk.createNav(i == 5 ? -1 : i), times[i]);
    const PlotSeries& series = *desk.plot.getSeries().front();
    QCOMPARE(textOf(series), QString("0 1 2 3 - 4 - 6"));
    // Messages that overtook each other stand in the order of their times, and a slower rate is no row of gaps.
    desk.send(desk.createNav(5), 2050);
    QCOMPARE(textOf(series), QString("0 1 2 3 - 4 - 5 6"));
    for (int i = 1; i <= 6; ++i)
        desk.send(desk.createNav(10 + i), 2100 + i * 1000);
    QVERIFY(textOf(series).endsWith("14 15 16"));
    // A recording that is played again begins anew.
    desk.send(desk.createNav(7), 1000);
    QCOMPARE(textOf(series), QString("7"));
}

void tst_monitorplot::memoryIsBoundedAndExtremesStay()
{
    TreeDesk desk;
    PlotSeries series(pathOf(desk.nav, desk.speed));
    const MessageReference message = MessageReference::adopt(desk.createNav(0));
    TestMessage* const values = static_cast<TestMessage*>(const_cast<Message*>(message.get()));
    for (int i = 0; i < 3 * PlotSeries::MostPoints; ++i) {
        values->set(desk.speed, i == 1000 ? 1e6 : std::sin(i * 0.01));
        series.add(values, 1000 + i * 0.001);
        if (i % 10000 == 0)
            QVERIFY(series.getPoints()->size() <= PlotSeries::MostPoints);
    }
    bool found = false;
    QCOMPARE(series.getPoints()->valueRange(found).upper, 1e6);
    QVERIFY(series.getPoints()->constBegin()->key < 1001); // still from the beginning
    QCOMPARE(series.getMessageCount(), quint64(3 * PlotSeries::MostPoints));
    // What is too old goes.
    series.add(values, 1000 + 3 * 200 + PlotSeries::LongestTime - 1);
    QVERIFY(series.getPoints()->constBegin()->key >= 1500);
}

void tst_monitorplot::unitsHaveAxesAndTheLegendTellsValues()
{
    TreeDesk desk;
    TestFieldInfo* const height = new TestFieldInfo("height");
    height->setUnit("m");
    desk.nav->addField(height);
    PlotPanel* const plot = &desk.plot;
    plot->resize(1400, 300); // room for all axes, whatever the font
    plot->show();
    PlotView* const view = plot->getView();
    QVERIFY(!view->isVisible()); // but what to do next
    for (const FieldInfo* field : {static_cast<const FieldInfo*>(desk.speed), static_cast<const FieldInfo*>(height)})
        plot->addField(pathOf(desk.nav, field));
    plot->addField(pathOf(desk.nav, desk.mode));
    plot->addField(pathOf(desk.nav, desk.speed)); // is there
    QCOMPARE(int(plot->getSeries().size()), 3);
    for (int i = 0; i < 10; ++i)
        desk.send(desk.createNav(i)->set(height, 100.0 * i), 10000 + 100 * i);
    plot->refresh();
    QCOMPARE(plot->getLegend()->topLevelItem(0)->text(0), QString("NAV_STATE.ground_speed"));
    QCOMPARE(plot->getLegend()->topLevelItem(0)->text(1), QString("9 m/s"));
    QCOMPARE(plot->getLegend()->topLevelItem(2)->text(1), QString("FLYING (2)"));
    QCOMPARE(view->xAxis->range().upper, 10.9);
    QCOMPARE(view->findAxis("m/s")->label(), QString("m/s"));
    QVERIFY(view->findAxis("m/s")->range().contains(9) && view->findAxis("m/s")->range().upper < 20);
    QVERIFY(view->findAxis("m")->range().contains(900));
    QVERIFY(view->findAxis("m") != view->findAxis("m/s") && view->findAxis("m") != view->findAxis(""));

    // A narrow plot has room for few axes; what is chosen always has one.
    const auto axes = [view]() {
        QString shown;
        for (const char* unit : {"m/s", "m", ""})
            shown += view->findAxis(unit)->visible() ? '#' : '-';
        return shown;
    };
    QCOMPARE(axes(), QString("###"));
    view->setFixedWidth(170);
    QCOMPARE(axes(), QString("#--"));
    plot->getLegend()->setCurrentItem(plot->getLegend()->topLevelItem(1));
    QCOMPARE(axes(), QString("##-"));
    view->setMaximumWidth(QWIDGETSIZE_MAX);

    // The axis goes with its last series; the others keep theirs.
    plot->getLegend()->setCurrentItem(plot->getLegend()->topLevelItem(0));
    plot->removeCurrent();
    QVERIFY(!view->findAxis("m/s"));
    QCOMPARE(view->findAxis("m")->graphs().size(), 1);
    QCOMPARE(view->findAxis("")->graphs().size(), 1);
    plot->removeAll();
    QVERIFY(!view->isVisible() && !desk.getTap()->wants(desk.nav));
    plot->addField(pathOf(desk.nav, height));
    QCOMPARE(view->findAxis("m")->graphs().size(), 1);
}

void tst_monitorplot::sendersAreToldApart()
{
    TreeDesk desk;
    PlotPanel* const plot = &desk.plot;
    plot->addField(pathOf(desk.nav, desk.speed));
    for (int i = 0; i < 4; ++i) {
        TestMessage* const message = desk.createNav(i);
        message->setSender(i % 2 ? "2:1" : "1:1");
        desk.send(message, 1000 + i);
    }
    QCOMPARE(int(plot->getSeries().size()), 2);
    QCOMPARE(textOf(*plot->getSeries()[0]), QString("0 2"));
    QCOMPARE(textOf(*plot->getSeries()[1]), QString("1 3"));
    QCOMPARE(plot->getLegend()->topLevelItem(1)->text(0), QString("NAV_STATE.ground_speed (2:1)"));
    // Of two, one can go, and comes back when the field is asked for.
    const auto sendSecond = [&]() {
        TestMessage* const message = desk.createNav(5);
        message->setSender("2:1");
        desk.send(message, 1005);
        return int(plot->getSeries().size());
    };
    plot->getLegend()->setCurrentItem(plot->getLegend()->topLevelItem(1));
    plot->removeCurrent();
    QCOMPARE(sendSecond(), 1);
    plot->addField(pathOf(desk.nav, desk.speed));
    QCOMPARE(sendSecond(), 2);
}

void tst_monitorplot::pauseKeepsThePictureAndTheData()
{
    TreeDesk desk;
    PlotPanel* const plot = &desk.plot;
    plot->resize(700, 300);
    plot->show();
    plot->addField(pathOf(desk.nav, desk.speed));
    desk.send(desk.createNav(1), 10000);
    plot->refresh();
    const QCPRange range = plot->getView()->xAxis->range();
    QTest::mouseClick(plot->getView(), Qt::LeftButton);
    QVERIFY(plot->isPaused()); // whoever takes hold of the picture wants it to stay
    desk.send(desk.createNav(2), 20000);
    plot->refresh();
    QCOMPARE(plot->getView()->xAxis->range(), range);
    QCOMPARE(plot->getSeries().front()->getMessageCount(), quint64(2));
    plot->getView()->zoom(0.5);
    QCOMPARE(plot->getView()->getSpan(), range.size() / 2);
    plot->setPaused(false);
    plot->refresh();
    QCOMPARE(plot->getView()->xAxis->range().upper, 20.0);
    // A pause of all views holds it too.
    desk.getLatest()->setSuspended(true);
    desk.send(desk.createNav(3), 30000);
    plot->refresh();
    QCOMPARE(plot->getView()->xAxis->range().upper, 20.0);
    desk.getLatest()->setSuspended(false);
    plot->refresh();
    QCOMPARE(plot->getView()->xAxis->range().upper, 30.0);
}

void tst_monitorplot::rowsAreDroppedAndSavedAsValues()
{
    TreeDesk desk;
    PlotPanel* const plot = &desk.plot;
    desk.send(desk.createNav(0));
    desk.tree.setCurrentItem(desk.find("NAV_STATE/place/place [1]/x"));
    const std::unique_ptr<QMimeData> row(desk.tree.model()->mimeData({desk.tree.currentIndex()}));
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, row.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(plot, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPoint(5, 5), Qt::CopyAction, row.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(plot, &drop);
    desk.tree.setCurrentItem(desk.find("NAV_STATE/text"));
    QSignalSpy said(&desk, &Desk::said);
    QCoreApplication::sendEvent(plot, &enter);
    QCoreApplication::sendEvent(plot, &drop);
    QCOMPARE(said.value(0).value(0).toString(), QString("Only numbers can be plotted."));
    desk.plot.plot("desk/NAV_STATE/ground_speed");
    QCOMPARE(int(plot->getSeries().size()), 2);
    desk.send(desk.createNav(0.1), 1500);
    desk.send(desk.createNav(std::nan("")), 1600);
    QCOMPARE(plot->toCsv(), QByteArray("time,NAV_STATE.place[1].x,NAV_STATE.ground_speed [m/s]\r\n"
                                       "1970-01-01T00:00:01.500000Z,2.5,0.10000000000000001\r\n"
                                       "1970-01-01T00:00:01.600000Z,2.5,\r\n"));
}

QTEST_MAIN(tst_monitorplot)
#include "tst_monitorplot.moc"
