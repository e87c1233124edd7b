#include "testbase.h"
#include "testfolder.h"
#include "toldtree.h"
#include "valuesaver.h"

#include <QMimeData>

#include <algorithm>
#include <random>

/** The plot of fields over time. */
class tst_monitorplot : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhatComes();
    void memoryIsBoundedAndExtremesStay();
    void everyExtremeIsSeenAtAnyZoom();
    void rowsAreDroppedAndSavedAsValues();
};

void tst_monitorplot::showsWhatComes()
{
    static const TextRow rows[] = {
        // Every message is a point. Ten a second; then half a second is missing, then a value is not available.
        // Messages that overtook each other stand in the order of their times.
        {"plot NAV_STATE/ground_speed; nav 0; wait 100; nav 1; wait 100; nav 2; wait 100; nav 3; wait 600; nav 4; "
         "wait 100; nav -1; wait 100; nav 6; points; wait -50; nav 5; points",
         "0 1 2 3 - 4 - 6; 0 1 2 3 - 4 - 5 6"},
        // A slower rate is no row of gaps, and a recording that is played again begins anew.
        {"plot NAV_STATE/ground_speed; nav 0; wait 100; nav 1; wait 100; nav 2; wait 1000; nav 3; wait 1000; nav 4; "
         "wait 1000; nav 5; wait 1000; nav 6; wait 1000; nav 7; points; wait -5000; nav 8; points",
         "0 1 2 - 3 - 4 - 5 6 7; 8"},

        // Units have axes, and the legend tells values. What is there is not drawn twice.
        {"nav 8; plot NAV_STATE/ground_speed; plot NAV_STATE/place/place [0]/x; plot NAV_STATE/mode; "
         "plot NAV_STATE/ground_speed; wait 100; nav 9; legend; axes; span",
         "NAV_STATE.ground_speed 9 m/s, NAV_STATE.place[0].x 1.5 m, NAV_STATE.mode FLYING (2); [m/s]1 [m]1 []1; "
         "-49.9 to 10.1"},
        // A narrow plot has room for few axes; what is chosen always has one.
        {"nav 8; plot NAV_STATE/ground_speed; plot NAV_STATE/place/place [0]/x; plot NAV_STATE/mode; nav 9; width 170; "
         "axes; choose 1; axes",
         "[m/s]1 [m]-1 []-1; [m/s]1 [m]1 []-1"},
        // An axis goes with its last series; the others keep theirs.
        {"nav 8; plot NAV_STATE/ground_speed; plot NAV_STATE/place/place [0]/x; plot NAV_STATE/mode; remove 0; axes; "
         "empty; axes; plot NAV_STATE/place/place [0]/x; axes",
         "[m]1 []1; ; [m]1"},

        // Senders are told apart. Of two, one can go, and comes back when the field is asked for.
        {"plot NAV_STATE/ground_speed; sender 1:1; nav 0; sender 2:1; nav 1; sender 1:1; nav 2; sender 2:1; nav 3; "
         "points; legend; remove 1; nav 4; legend; plot NAV_STATE/ground_speed; nav 5; legend",
         "0 2, 1 3; NAV_STATE.ground_speed (1:1) 2 m/s, NAV_STATE.ground_speed (2:1) 3 m/s; "
         "NAV_STATE.ground_speed 2 m/s; NAV_STATE.ground_speed (1:1) 2 m/s, NAV_STATE.ground_speed (2:1) 5 m/s"},

        {"plot NAV_STATE/ground_speed; plot NAV_STATE/mode; sender 1:1; nav 0; sender 2:1; nav 1; legend",
         "NAV_STATE.ground_speed (1:1) 0 m/s, NAV_STATE.ground_speed (2:1) 1 m/s, NAV_STATE.mode (1:1) FLYING (2), "
         "NAV_STATE.mode (2:1) FLYING (2)"},

        // The mouse asks for the values of its time, which are those of the newest message before.
        {"plot NAV_STATE/ground_speed; plot NAV_STATE/mode; wait 1000; nav 1.5; wait 2000; nav -1; wait 2000; nav 3 1; "
         "point 12; legend; point 14; legend; wait 100; nav 4 1; legend; point ; legend",
         "NAV_STATE.ground_speed 1.5 m/s, NAV_STATE.mode FLYING (2); NAV_STATE.ground_speed , NAV_STATE.mode FLYING "
         "(2); "
         "NAV_STATE.ground_speed , NAV_STATE.mode FLYING (2); NAV_STATE.ground_speed 4 m/s, NAV_STATE.mode IDLE (1)"},

        // Plots stand below one another; one comes with a line that is moved there, and goes with its last.
        {"nav 8; plot NAV_STATE/ground_speed; plot NAV_STATE/place/place [0]/x; plot NAV_STATE/mode; choose 0; below; "
         "nav 9; plots; legend; above; plots; choose 1; below; plots; choose 0; plot NAV_STATE/place/place [1]/x; "
         "plots; remove 0; remove 0; remove 0; plots; above; below; plots; axes",
         "2 1; NAV_STATE.place[0].x 1.5 m, NAV_STATE.mode FLYING (2), NAV_STATE.ground_speed 9 m/s; 3; 2 1; 3 1; 1; 1; "
         "[]1"},

        // In place of values their derivative, or the average of the last second; nothing over a gap.
        {"plot NAV_STATE/ground_speed; nav 0; wait 500; nav 2; wait 500; nav 5; choose 0; function 1; points; wait "
         "500; "
         "nav -1; wait 500; nav 1; wait 500; nav 9; points; legend; function 2; points; legend; function 0; legend; "
         "axes",
         "- 4 6; - 4 6 - - 16; NAV_STATE.ground_speed, derivative 16 m/s\u00b2; 0 1 3.5 - 1 5; "
         "NAV_STATE.ground_speed, average of 1 s 5 m/s; NAV_STATE.ground_speed 9 m/s; [m/s]1"},

        // Lines are computed from others: at the times of the first, with the newest of the others that is not later,
        // also where that comes late. They go on when these are not drawn any more.
        {"plot NAV_STATE/ground_speed; sender 1:1; nav 1; wait 100; sender 2:1; nav 10; wait 100; sender 1:1; nav 2; "
         "sender 2:1; nav 20; wait 100; sender 1:1; nav 3; difference; points; wait 100; nav 4; points; sender 2:1; "
         "wait -50; nav 30; points; legend; remove 1; remove 0; wait 100; sender 1:1; nav 5; points; choose 0; "
         "function 1; points",
         "1 2 3, 10 20, -18 -17; 1 2 3 4, 10 20, -18 -17 -16; 1 2 3 4, 10 20 30, -18 -17 -26; "
         "NAV_STATE.ground_speed (1:1) 4 m/s, NAV_STATE.ground_speed (2:1) 30 m/s, NAV_STATE.ground_speed (1:1) - "
         "NAV_STATE.ground_speed (2:1) -26 m/s; -18 -17 -26 -25; - 10 -90 20"},
        {"plot NAV_STATE/ground_speed; nav 3; expression sqrt(a^2 + (2 * \"desk/NAV_STATE/place[1]/x\" - 1)^2); wait "
         "100; "
         "nav 4; wait 100; nav -1; expression b - a; points; legend",
         "3 4 -, 5.65685 -, 1.65685 -; NAV_STATE.ground_speed not available, "
         "sqrt(NAV_STATE.ground_speed^2 + (2 * NAV_STATE.place[1].x - 1)^2) , "
         "(sqrt(NAV_STATE.ground_speed^2 + (2 * NAV_STATE.place[1].x - 1)^2)) - NAV_STATE.ground_speed "},
        {"nav 8; plot NAV_STATE/ground_speed; expression a +; expression a + b; expression 2 * sqr(a); "
         "expression a + \"desk/NAV_STATE/none\"; expression 3; legend; expression "
         "2*abs(\"desk/NAV_STATE/ground_speed\")/a; legend",
         "character 4: something is missing at the end; character 5: there is no line \"b\"; "
         "character 5: there is no function \"sqr\"; character 5: no field that is known is called "
         "\"desk/NAV_STATE/none\"; it names no line and no field; a:  NAV_STATE.ground_speed ; "
         "NAV_STATE.ground_speed , 2*abs(NAV_STATE.ground_speed)/NAV_STATE.ground_speed "},

        // A pause keeps the picture, and the data come all the same. Whoever takes hold of the picture wants it to
        // stay.
        {"plot NAV_STATE/ground_speed; nav 1; span; grab; wait 10000; nav 2; span; points; zoom 0.5; span; follow; "
         "span; "
         "pause; wait 10000; nav 3; span; resume; span",
         "-50 to 10; -50 to 10; 1 2; -35 to -5; -40 to 20; -40 to 20; -30 to 30"},
    };
    checkTold(rows);

    // A unit is only told where it is sure.
    static const TextRow units[] = {{"a - b; m; m", "m"},
                                    {"a - b; m; s", ""},
                                    {"a + 5; m", ""},
                                    {"a * 3.6; m/s", ""},
                                    {"a * b; m; m", ""},
                                    {"atan2(a, b); m; m", ""},
                                    {"max(abs(a), b); V; V", "V"},
                                    {"deg(a); rad/s", "\u00b0/s"},
                                    {"deg(a - b); rad; rad", "\u00b0"},
                                    {"deg(a); m", ""},
                                    {"rad(a) - b; \u00b0; \u00b0", ""},
                                    {"sqrt(a^2 + b^2 + c^2); m; m; m", "m"}};
    checkRows(units, [](const QString& row) {
        PlotExpression expression;
        const QStringList parts = row.split("; ");
        expression.formula = parts.first();
        for (int i = 1; i < int(parts.size()); ++i)
            expression.operands.append({QString::number(i), QString()});
        return expression.getUnit(parts.mid(1));
    });

    PlotFunction angle(PlotFunction::OtherAngle);
    const QString degree(QChar(0xb0));
    QVERIFY(angle.isPossible("rad/s") && angle.isPossible(degree) && !angle.isPossible("rad2") &&
            !angle.isPossible("m"));
    QCOMPARE(angle.getUnit("rad/s") + angle.getUnit(degree), degree + "/srad");
    QVERIFY(qAbs(angle.apply({0, 0.5}, "rad").value - 28.647890) < 1e-5);
    QVERIFY(qAbs(angle.apply({0, 28.647890}, degree).value - 0.5) < 1e-5);

    ToldTree desk;
    QVERIFY(!desk.view.isVisible()); // but what to do next
    desk.tell("nav 1; plot NAV_STATE/ground_speed");
    QVERIFY(desk.view.isVisible() && desk.getTap()->wants(desk.nav));
    desk.tell("nav 9; legend");
    QVERIFY(desk.view.findAxis("m/s")->range().contains(9) && desk.view.findAxis("m/s")->range().upper < 20);
    desk.tell("empty");
    QVERIFY(!desk.view.isVisible() && !desk.getTap()->wants(desk.nav));
}

void tst_monitorplot::memoryIsBoundedAndExtremesStay()
{
    TreeDesk desk;
    FieldPath path(desk.nav);
    path.append(desk.speed);
    PlotSeries series(path);
    const MessageReference message = MessageReference::adopt(desk.createNav(0));
    TestMessage* const values = static_cast<TestMessage*>(const_cast<Message*>(message.get()));
    for (int i = 0; i < 3 * PlotSeries::MostPoints; ++i) {
        values->set(desk.speed, i == 1000 ? 1e6 : std::sin(i * 0.01));
        series.add(path, values, 1000 + i * 0.001);
        if (i % 10000 == 0)
            QVERIFY(series.getPoints().getCount() <= PlotSeries::MostPoints);
    }
    const SeriesPoints& points = series.getPoints();
    QCOMPARE(points.getExtremes(0, points.getCount()).greatest, 1e6);
    QVERIFY(points.at(0).time < 1001); // still from the beginning
    QCOMPARE(series.getMessageCount(), quint64(3 * PlotSeries::MostPoints));
    // What is too old goes.
    series.add(path, values, 1000 + 3 * 200 + PlotSeries::LongestTime - 1);
    QVERIFY(points.at(0).time >= 1500);
}

void tst_monitorplot::everyExtremeIsSeenAtAnyZoom()
{
    SeriesPoints points;
    std::vector<SeriesPoints::Point> all;
    const auto add = [&](double time, double value) {
        points.append({time, value});
        const auto isEarlier = [](double given, const SeriesPoints::Point& point) { return given < point.time; };
        all.insert(std::upper_bound(all.begin(), all.end(), time, isEarlier), {time, value});
    };
    std::minstd_rand random(7);
    for (int i = 0; i < 70000; ++i)
        add(i, i / 1000 % 7 == 3 ? std::nan("") : double(random() % 100000)); // with stretches without a value
    add(69000.5, -1);                                                         // a little late
    add(1000.5, -2);                                                          // much too late, and
    add(30000.5, 1e6);                                                        // in no order
    points.settle();
    const auto naive = [&](double from, double to) {
        SeriesPoints::Extremes found;
        for (const SeriesPoints::Point& point : all) {
            if (point.time < from || point.time > to || std::isnan(point.value))
                continue;
            found.least = found.any ? qMin(found.least, point.value) : point.value;
            found.greatest = found.any ? qMax(found.greatest, point.value) : point.value;
            found.any = true;
        }
        return found;
    };
    for (int i = 0; i < 200; ++i) {
        const double from = i == 0 ? 0 : double(random() % 70000);
        const double to = i == 0 ? 70000 : from + double(random() % (i % 2 ? 1000 : 70000));
        const SeriesPoints::Extremes expected = naive(from, to);
        const SeriesPoints::Extremes found = points.getExtremes(points.findNotBefore(from), points.findAfter(to));
        QCOMPARE(QString("%1 %2 %3").arg(found.any).arg(found.least).arg(found.greatest),
                 QString("%1 %2 %3").arg(expected.any).arg(expected.least).arg(expected.greatest));
        // The picture has few points, in their order, every extreme, and breaks where nothing is.
        const std::vector<SeriesPoints::Point> drawn = points.reduce(from, to, 100);
        QVERIFY(drawn.size() <= 4 * 101 + 2);
        double least = expected.greatest;
        double greatest = expected.least;
        int breaks = 0;
        for (std::size_t j = 0; j < drawn.size(); ++j) {
            QVERIFY(j == 0 || drawn[j].time >= drawn[j - 1].time);
            breaks += std::isnan(drawn[j].value) && (j == 0 || !std::isnan(drawn[j - 1].value)) ? 1 : 0;
            if (!std::isnan(drawn[j].value) && drawn[j].time >= from && drawn[j].time <= to) {
                least = qMin(least, drawn[j].value);
                greatest = qMax(greatest, drawn[j].value);
            }
        }
        QCOMPARE(QString("%1 %2").arg(least).arg(greatest),
                 QString("%1 %2").arg(expected.least).arg(expected.greatest));
        QVERIFY(i > 0 || breaks == 10);
    }
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
    const QByteArray expected("time,NAV_STATE.place[1].x [m],NAV_STATE.ground_speed [m/s]\r\n"
                              "1970-01-01T00:00:01.500000Z,2.5,0.10000000000000001\r\n"
                              "1970-01-01T00:00:01.600000Z,2.5,\r\n");
    // The file is complete, whatever comes meanwhile, or not there.
    const TestFolder folder;
    const auto save = [&](const QString& path, bool cancelled) {
        ValueSaver* const saver = new ValueSaver(plot->getColumns(), path, plot);
        QSignalSpy ended(saver, &ValueSaver::ended);
        QSignalSpy failed(saver, &ValueSaver::failed);
        QSignalSpy saved(saver, &ValueSaver::saved);
        if (cancelled)
            saver->cancel();
        saver->start();
        desk.send(desk.createNav(0.2), 1700);
        if (!waitFor([&]() { return !ended.isEmpty(); }))
            return QString("does not end");
        return failed.isEmpty() ? QString(saved.isEmpty() ? "cancelled" : "") : failed.first().first().toString();
    };
    QCOMPARE(save(folder.filePath("cancelled.csv"), true), QString("cancelled"));
    QVERIFY(!QFile::exists(folder.filePath("cancelled.csv")));
    QVERIFY(save(folder.filePath("none/values.csv"), false).contains("none/values.csv cannot be written: "));
    plot->removeAll();
    plot->plot("desk/NAV_STATE/place[1]/x");
    plot->plot("desk/NAV_STATE/ground_speed");
    desk.send(desk.createNav(0.1), 1500);
    desk.send(desk.createNav(std::nan("")), 1600);
    plot->plot("2 * \"desk/NAV_STATE/place[1]/x\""); // of what is there already
    QCOMPARE(plot->getLegend()->topLevelItem(2)->text(0), QString("2 * NAV_STATE.place[1].x"));
    plot->getLegend()->setCurrentItem(plot->getLegend()->topLevelItem(2));
    plot->removeChosen();
    QCOMPARE(save(folder.filePath("values.csv"), false), QString());
    QFile file(folder.filePath("values.csv"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), expected);
}

QTEST_MAIN(tst_monitorplot)
#include "tst_monitorplot.moc"
