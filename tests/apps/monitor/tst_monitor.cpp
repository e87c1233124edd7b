#include "eventlogtablewidget.h"
#include "formatinfo.h"
#include "formatregistry.h"
#include "latestmessagesource.h"
#include "messageneed.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "pathexpressionlineedit.h"
#include "settingsfile.h"
#include "testbase.h"
#include "testformat.h"
#include "testwindow.h"
#include "waitfor.h"
#include "watch.h"
#include "watcheditor.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QImage>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>

class tst_monitor : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aSimulatedVehicleFillsTheViews();
    void watchesFollowTheirExpressions();
    void watchesLookIntoSubMessages();
    void aDamagedSettingsFileIsPutAside();
    void whatCannotBeOpenedLeavesWhatIsShown();
    void theProgramSavesAPicture();
    void theProgramSaysWhatIsWrong();
};

static QTreeWidgetItem* findItem(const QTreeWidget* tree, const QString& type, const QString& field = QString())
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = tree->topLevelItem(i);
        if (row->text(0) != type)
            continue;
        if (field.isEmpty())
            return row;
        for (int j = 0; j < row->childCount(); ++j)
            if (row->child(j)->text(0) == field)
                return row->child(j);
    }
    return nullptr;
}

static QString valueText(MessageTreeWidget* tree, const QString& type, const QString& field)
{
    const QTreeWidgetItem* item = findItem(tree, type, field);
    return item ? item->text(tree->getColumnIndex(MessageTreeWidget::ValueColumn)) : QString();
}

static void closeMessageBoxes(QWidget* window)
{
    for (QMessageBox* box : window->findChildren<QMessageBox*>())
        box->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_monitor::aSimulatedVehicleFillsTheViews()
{
    TestWindow window;
    window.find<TypePanel>()->chooseWhenSeen({"ATTITUDE"});
    window.show();
    window.openSimulation();
    QVERIFY(waitFor([&]() { return window.getTree()->topLevelItemCount() >= 10; }, 30000));
    QVERIFY(waitFor([&]() { return !valueText(window.getTree(), "ATTITUDE", "roll").isEmpty(); }));
    const QString before = valueText(window.getTree(), "ATTITUDE", "roll");
    QVERIFY(waitFor([&]() { return valueText(window.getTree(), "ATTITUDE", "roll") != before; }));

    // One format below which stands a row for each type.
    QVERIFY(waitFor([&]() { return window.getStatistics()->topLevelItemCount() == 1; }));
    QVERIFY(window.getStatistics()->topLevelItem(0)->childCount() >= 10);
    QVERIFY(window.getEvents()->rowCount() >= 1);
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

void tst_monitor::watchesLookIntoSubMessages()
{
    FormatInfo format("rig");
    MessageInfo* position = new MessageInfo("Position", false);
    TestFieldInfo* x = new TestFieldInfo("x");
    position->addField(x);
    MessageInfo* vehicle = new MessageInfo("Vehicle");
    TestFieldInfo* places = new TestFieldInfo("places", TestFieldInfo::Repeated, FieldType(position));
    vehicle->addField(places);
    MessageInfo* received = new MessageInfo("Position"); // the same type, received on its own
    TestFieldInfo* receivedX = new TestFieldInfo("x");
    received->addField(receivedX);
    format.addMessageInfo(vehicle);
    format.addMessageInfo(position);
    format.addMessageInfo(received);
    FormatRegistry::getInstance()->addFormat(&format);
    const auto placed = [&](double value) { return (new TestMessage(position))->set(x, value); };
    MessageReference two = MessageReference::adopt(new TestMessage(vehicle));
    static_cast<TestMessage*>(const_cast<Message*>(two.get()))->setSubMessages(places, {placed(1.5), placed(2.5)});
    const MessageReference none = MessageReference::adopt(new TestMessage(vehicle));

    LatestMessageSource source;
    MessageNeed need(nullptr);
    need.setMessageNeeded(vehicle);
    Watch watch("rig/Vehicle/places[1]/x", QString(), &source);
    QVERIFY(source.deliver(two.get()));
    QCOMPARE(watch.getText(), QString("2.5"));
    const Watch all("rig/Vehicle/places/x", QString(), &source);
    QVERIFY(source.deliver(two.get()));
    QCOMPARE(all.getText(), QString("1.5, 2.5"));
    QVERIFY(source.deliver(none.get()));
    QCOMPARE(watch.getText() + ' ' + all.getText(), QString("N/A N/A"));

    need.setMessageNeeded(received);
    Watch other("rig/Position/x", QString(), &source);
    const MessageReference own = MessageReference::adopt((new TestMessage(received))->set(receivedX, 3.5));
    QVERIFY(source.deliver(own.get()));
    QCOMPARE(other.getText(), QString("3.5"));
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

void tst_monitor::whatCannotBeOpenedLeavesWhatIsShown()
{
    QTemporaryDir folder;
    QFile noise(folder.filePath("noise.tlog"));
    QVERIFY(noise.open(QIODevice::WriteOnly));
    noise.write("This is a letter and no recording at all.");
    noise.close();
    TestWindow window;
    window.show();
    window.openSimulation();
    QVERIFY(waitFor([&]() { return findItem(window.getTree(), "ATTITUDE"); }, 30000));
    QVERIFY(window.openAddress(noise.fileName())); // what it is, is found out when it is read
    QVERIFY(waitFor([&]() { return window.getLastProblem().contains("noise.tlog: not recognised"); }));
    QVERIFY(!window.openAddress(folder.filePath("missing.tlog")));
    QVERIFY(window.getLastProblem().contains("missing.tlog"));
    QVERIFY(!window.openAddress("udp:0.0.0.0:99999"));
    QVERIFY(findItem(window.getTree(), "ATTITUDE"));
    QCOMPARE(int(window.getSources()->getSession(0)->getState()), int(SourceSession::Receiving));
    QVERIFY(
        window.getSources()->getSession(1)->getStateText().startsWith("failed: not recognised: it begins with 54 68"));
    closeMessageBoxes(&window);
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
