#include "eventlogtablewidget.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "pathexpressionlineedit.h"
#include "plotseries.h"
#include "settingsfile.h"
#include "testbase.h"
#include "testwindow.h"
#include "waitfor.h"
#include "watch.h"
#include "watcheditor.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QImage>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>

class tst_monitor : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aSimulatedVehicleFillsTheViews();
    void watchesFollowTheirExpressions();
    void aDamagedSettingsFileIsPutAside();
    void theProgramSavesAPicture();
    void theProgramSaysWhatIsWrong();
};

void tst_monitor::aSimulatedVehicleFillsTheViews()
{
    TestWindow window;
    window.find<TypePanel>()->chooseWhenSeen({"ATTITUDE"});
    window.getPlot()->plot("corvel/ATTITUDE/roll");
    window.show();
    window.openSimulation();
    QVERIFY(waitFor([&]() { return window.getTree()->topLevelItemCount() >= 10; }, 30000));
    const QTreeWidgetItem* const roll =
        window.getTree()->findItems("roll", Qt::MatchExactly | Qt::MatchRecursive).value(0);
    QVERIFY(roll && waitFor([&]() { return !roll->text(2).isEmpty(); }));
    const QString before = roll->text(2);
    QVERIFY(waitFor([&]() { return roll->text(2) != before; }));

    // One format below which stands a row for each type.
    QVERIFY(waitFor([&]() { return window.getStatistics()->topLevelItemCount() == 1; }));
    QVERIFY(window.getStatistics()->topLevelItem(0)->childCount() >= 10);
    QVERIFY(window.getEvents()->rowCount() >= 1);
    // The plot has every message, fifty a second, of which the other views show twenty.
    const PlotSeries* const series = window.getPlot()->getSeries().front().get();
    QVERIFY(waitFor([&]() { return series->getMessageCount() >= 30; }));
    quint64 received = 0;
    const QVector<StreamIdentities::Row> rows = window.getSource()->getIdentities().getRows();
    for (int i = 0; i < rows.size(); ++i)
        received += rows.at(i).typeName == "ATTITUDE" ? window.getSource()->getCounters().getCount(i) : 0;
    QCOMPARE(series->getMessageCount(), received);
    bool isForm = false;
    for (const QWidget* widget : window.findChildren<QWidget*>())
        isForm = isForm || widget->windowTitle() == "ATTITUDE";
    QVERIFY(isForm);
}

void tst_monitor::watchesFollowTheirExpressions()
{
    TestWindow window;
    window.show();
    WatchBar* bar = window.getWatches();
    bar->pin("corvel/ATTITUDE/roll", "bank");
    bar->pin("corvel/ATTITUDE/roll");
    QCOMPARE(bar->getWatches().size(), 1);
    QCOMPARE(bar->getWatches().first()->getName(), QString("bank"));
    QCOMPARE(bar->getWatches().first()->getText(), QString("N/A"));
    window.openSimulation();
    QVERIFY(waitFor([&]() { return bar->getWatches().first()->getText() != "N/A"; }, 30000));

    // What is typed offers what exists, and a wildcard pins every match: each type with a field of that name.
    PathExpressionLineEdit* line = bar->getEditor()->findChild<PathExpressionLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, "*/ATTITUDE/rollS");
    QCOMPARE(line->completer()->model()->rowCount(), 1);
    QCOMPARE(line->completer()->model()->index(0, 0).data().toString(), QString("corvel/ATTITUDE/rollspeed"));
    line->completer()->popup()->hide();
    bar->getEditor()->setExpression("*/*/pitch");
    PathExpression everyPitch;
    everyPitch.setString("*/*/pitch");
    const QStringList pinned = everyPitch.getMatchingExpressionsStringList(PathExpression::AllParts);
    QVERIFY(pinned.size() > 1);
    bar->getEditor()->findChild<QPushButton*>()->click();
    QCOMPARE(bar->getWatches().size(), 1 + pinned.size());
    QCOMPARE(bar->getWatches().last()->getExpression(), pinned.last());
}

void tst_monitor::aDamagedSettingsFileIsPutAside()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("monitor.ini");
    const QByteArray damage("[tree]\ncolumns=\0\0\0\xff\xfe", 20);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(damage);
    file.close();
    QString problem;
    const std::unique_ptr<QSettings> settings = SettingsFile::open(path, &problem);
    QVERIFY(problem.contains(path + ".damaged"));
    QVERIFY(settings->allKeys().isEmpty());
    QFile aside(path + ".damaged");
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), damage);
}

struct Run
{
    explicit Run(const QStringList& arguments)
    {
        process.start(CORVEL_MONITOR_PROGRAM, arguments);
        finished = process.waitForFinished(60000);
    }

    QProcess process;
    bool finished = false;
};

void tst_monitor::theProgramSavesAPicture()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("picture.png");
    Run run({"--screenshot", path, "--after", "2", "--size", "1200x750", "--form", "ATTITUDE", "--watch",
             "corvel/VFR_HUD/groundspeed"});
    QVERIFY(run.finished);
    QCOMPARE(run.process.exitCode(), 0);
    QCOMPARE(QImage(path).size(), QSize(1200, 750));
}

void tst_monitor::theProgramSaysWhatIsWrong()
{
    Run usage({"--speed", "fast"});
    QCOMPARE(usage.process.exitCode(), 1);
    QVERIFY(usage.process.readAllStandardError().contains("--speed"));

    Run missing({"/nowhere/flight.tlog", "--screenshot", "picture.png"});
    QCOMPARE(missing.process.exitCode(), 2);
    QVERIFY(missing.process.readAllStandardError().contains("flight.tlog"));
}

QTEST_MAIN(tst_monitor)
#include "tst_monitor.moc"
