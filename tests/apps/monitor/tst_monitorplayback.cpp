#include "corvel.h"
#include "fieldvaluelabel.h"
#include "mavlinkframes.h"
#include "mcapfixtures.h"
#include "messagewidget.h"
#include "plotlegend.h"
#include "plotstack.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"
#include "theme.h"

#include <QComboBox>
#include <QSettings>

namespace
{

const qint64 Start = 1400000000; // seconds since 1970
const char All[] = "4.12345 rad | 4.12345 rad | 4.12345 rad | 4.12345 rad";

/** A window that shows the field roll of ATTITUDE wherever it can. */
struct RollWindow : TestWindow
{
    ~RollWindow() override
    {
        Corvel::setFloatingPointDecimals(-1);
        Corvel::setConfidentialInformationDisplayEnabled(false);
    }

    void showRoll(const QString& format = "corvel")
    {
        find<TypePanel>()->chooseWhenSeen({"ATTITUDE"});
        getWatches()->pin(format + "/ATTITUDE/roll");
        getPlot()->plot(format + "/ATTITUDE/roll");
        prefer([](Preferences* preferences) { preferences->watchTimeOut = 0; });
    }
    void prefer(const std::function<void(Preferences*)>& change)
    {
        Preferences preferences = getDesk()->getPreferences();
        change(&preferences);
        getDesk()->setPreferences(preferences);
    }
    /** What tree, form, watch and plot say, of the plot as much as there is. */
    QString roll() const
    {
        QStringList texts(valueOf("ATTITUDE", "roll"));
        for (const MessageWidget* form : findChildren<MessageWidget*>())
            if (form->windowTitle() == "ATTITUDE")
                texts.append(form->findChildren<FieldValueLabel*>().at(1)->text());
        for (const Watch* watch : getWatches()->getWatches())
            texts.append(watch->getText());
        const auto& series = getPlot()->getSeries();
        for (const auto& one : series)
            texts.append(one->getValueText());
        return texts.join(" | ");
    }
    /** The same without the plot, which keeps what it has. */
    QString newestRoll() const { return roll().section(" | ", 0, 2); }

    void jump(int second)
    {
        StreamSource* const source = getSources()->getSession(0)->getSource();
        QSignalSpy jumps(source, &StreamSource::sought);
        source->seek((Start + second) * 1000000);
        EVENTUALLY(jumps.size() == 1 && source->getState() == StreamSource::Finished);
    }
    bool tick(int type, Qt::CheckState state)
    {
        return getTypes()->setData(getTypes()->index(type, 0), state, Qt::CheckStateRole);
    }
    /** What is told of the types in their order: "5 s ago; 1 Hz, now". */
    QString told()
    {
        const MessageTypeModel* const types = getDesk()->getTypes();
        QStringList texts;
        for (int i = 0; i < types->getCount(); ++i)
            texts.append(types->describe(types->getSubject(i)).join(", "));
        return texts.join("; ");
    }
    /** What stands behind the count of a row. */
    QString figures(int row) const
    {
        QStringList texts;
        for (int column = MessageTypeModel::RateColumn; column < MessageTypeModel::ColumnCount; ++column)
            texts.append(getTypes()->index(row, column).data().toString());
        return texts.join(" | ");
    }
    /** The list of types: "ATTITUDE 5, HEARTBEAT 10". */
    QString types() const
    {
        QStringList rows;
        for (int i = 0; i < getTypes()->rowCount(); ++i)
            rows.append(getTypes()->index(i, 0).data().toString() + ' ' + getTypes()->index(i, 2).data().toString());
        return rows.join(", ");
    }
};

} // namespace

/** What jumps, pauses, other sources and other settings leave as the user had it, and what they must not. */
class tst_monitorplayback : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aJumpKeepsWhatWasChosenAndForgetsValues();
    void pausedViewsAreWrittenAsTheSettingsSay();
    void hiddenDataIsHiddenEverywhere();
    void whatWasChosenSurvivesARestart();
    void aSenderStaysChosenWhenItGetsAnotherName();
    void theWholeRecordingIsPlottedAndAClickGoesThere();
    void aLineGoesOnWhenItsTypeChanges();
    void whatCannotBeOpenedIsToldInOneBox();
    void recordingsDoNotOverwriteWhatIsInUse();

private:
    QByteArray record(quint32 id, int second, const char* field, double value) const
    {
        MavlinkEncoder encoder(m_script.info(id));
        encoder.set(field, value);
        return timed(quint64(Start + second) * 1000000, encoder.toFrame(frameHeader(2, second)));
    }

    const MavlinkScript m_script;
    const TestFolder m_folder;
    QString m_flight; // ATTITUDE at seconds 0 to 4 with roll 0.12345 + second, HEARTBEAT at 0 to 9
};

void tst_monitorplayback::initTestCase()
{
    QByteArray bytes;
    for (int second = 0; second < 10; ++second) {
        if (second < 5)
            bytes += record(30, second, "roll", second + 0.12345);
        bytes += record(0, second, "type", 2);
    }
    m_flight = m_folder.write("flight.tlog", bytes);
}

void tst_monitorplayback::aJumpKeepsWhatWasChosenAndForgetsValues()
{
    RollWindow window;
    window.showRoll();
    QVERIFY(window.play(m_flight));
    EVENTUALLY_IS(window.roll(), All);
    EVENTUALLY_IS(window.types(), "ATTITUDE 5, HEARTBEAT 10");
    QVERIFY(window.tick(1, Qt::Unchecked));
    QTreeWidgetItem* const roll = window.findRow("ATTITUDE", "roll");
    window.getTree()->setCurrentItem(roll);

    // Behind the last ATTITUDE it is what it was, and grey.
    window.jump(6);
    EVENTUALLY_IS(window.types(), "ATTITUDE 0, HEARTBEAT 4");
    EVENTUALLY_IS(window.newestRoll(), "4.12345 rad | 4.12345 rad | 4.12345 rad");
    QCOMPARE(window.findRow("ATTITUDE", "roll")->foreground(0).color(), Theme::faintText(window.getTree()->palette()));
    window.jump(2);
    EVENTUALLY_IS(window.roll(), All);
    EVENTUALLY_IS(window.types(), "ATTITUDE 3, HEARTBEAT 8");
    QCOMPARE(window.told(), QString("5 s ago; 1 Hz, now"));
    QCOMPARE(window.figures(1), QString("1 Hz | 1 Hz |  |  | 0 s | 136"));
    QCOMPARE(window.getTree()->currentItem(), roll);
    QVERIFY(!window.findRow("HEARTBEAT"));
    // The newest message is there at once with its type, without waiting for the next.
    QVERIFY(window.tick(1, Qt::Checked));
    QCOMPARE(window.valueOf("HEARTBEAT", "type"), QString("MAV_TYPE_QUADROTOR (2)"));
}

void tst_monitorplayback::pausedViewsAreWrittenAsTheSettingsSay()
{
    RollWindow window;
    window.showRoll();
    QVERIFY(window.play(m_flight));
    EVENTUALLY_IS(window.roll(), All);
    window.setViewsPaused(true);
    window.jump(6);
    // The values of the pause, with other decimals.
    window.prefer([](Preferences* preferences) { preferences->decimals = 2; });
    QCOMPARE(window.roll(), QString("4.12 rad | 4.12 rad | 4.12 rad | 4.12 rad"));
    window.setViewsPaused(false);
    EVENTUALLY_IS(window.newestRoll(), "4.12 rad | 4.12 rad | 4.12 rad");
    // Watches alone time out, and not where the recording itself stands still.
    window.prefer([](Preferences* preferences) { preferences->watchTimeOut = 0.1; });
    window.jump(2);
    EVENTUALLY_IS(window.newestRoll(), "4.12 rad | 4.12 rad | 4.12 rad");
    QVERIFY(!waitFor([&]() { return window.newestRoll() != "4.12 rad | 4.12 rad | 4.12 rad"; }, 400));
    SourceSession* const session = window.getSources()->getSession(0);
    session->setPlayback(StreamSource::Playback()); // as fast as it was recorded, a message a second
    session->getSource()->seek(Start * 1000000);
    EVENTUALLY_IS(window.newestRoll(), "0.12 rad | 0.12 rad | N/A");
}

void tst_monitorplayback::hiddenDataIsHiddenEverywhere()
{
    RollWindow window;
    window.showRoll();
    QVERIFY(window.play(m_flight));
    EVENTUALLY_IS(window.roll(), All);
    const QString dialect = m_folder.filePath("secret.xml");
    QVERIFY(QFile::copy(CORVEL_DIALECT, dialect) && window.openAll({dialect}));
    window.getWatches()->removeAll();
    window.getPlot()->removeAll();
    window.showRoll("secret");
    window.jump(0);
    EVENTUALLY_IS(window.roll(), All);
    Formula::Fault fault;
    QVERIFY(window.getPlot()->addComputed(PlotExpression::parse("2 * a", window.getPlot()->getSeries(), &fault)));
    window.getPlot()->getLegend()->setCurrentItem(window.getPlot()->getLegend()->topLevelItem(0));
    window.getPlot()->removeChosen(); // what it is computed from

    QVERIFY(window.loadAnnotations(m_folder.write(
        "secret.json", "{\"messages\": {\"ATTITUDE\": {\"fields\": {\"roll\": {\"confidential\": true}}}}}")));
    QCOMPARE(window.roll(), QString("no row | Hidden data | Hidden data"));
    window.getDesk()->setConfidentialShown(true);
    // Of what was plotted before, nothing was kept.
    QCOMPARE(window.newestRoll(), QString("4.12345 rad | 4.12345 rad | 4.12345 rad"));
    QCOMPARE(int(window.getPlot()->getSeries().size()), 1);

    // A watch of it times out as any other, and with each message anew.
    window.getDesk()->setConfidentialShown(false);
    window.prefer([](Preferences* preferences) { preferences->watchTimeOut = 0.1; });
    window.getSources()->getSession(0)->setPlayback(StreamSource::Playback());
    window.getSources()->getSession(0)->getSource()->seek(Start * 1000000);
    for (const char* const text : {"Hidden data", "N/A", "Hidden data", "N/A"})
        EVENTUALLY_IS(window.getWatches()->getWatches().first()->getText(), text);
}

void tst_monitorplayback::whatWasChosenSurvivesARestart()
{
    QSettings settings(m_folder.filePath("restart.ini"), QSettings::IniFormat);
    {
        RollWindow window;
        window.showRoll();
        window.getPlot()->plot("corvel/HEARTBEAT/type");
        window.getPlot()->getLegend()->setCurrentItem(window.getPlot()->getLegend()->topLevelItem(1));
        window.getPlot()->moveCurrent(1);
        window.getPlot()->setFunction(PlotFunction::Derivative);
        Formula::Fault fault;
        QVERIFY(window.getPlot()->addComputed(PlotExpression::parse("2 * a", window.getPlot()->getSeries(), &fault)));
        window.getPlot()->plot("later/ENGINE/temperature");
        window.getTree()->setColumns({MessageTreeWidget::NameColumn, MessageTreeWidget::ValueColumn});
        window.getWatches()->getWatches().first()->setName("bank");
        QVERIFY(window.play(m_flight));
        EVENTUALLY(window.roll().count('|') == 5);
        QVERIFY(window.tick(1, Qt::Unchecked));
        window.saveSettings(settings);
    }
    RollWindow window;
    window.restoreSettings(settings);
    QCOMPARE(window.getTree()->getColumns().size(), 2);
    QCOMPARE(window.getWatches()->getWatches().first()->getName(), QString("bank"));
    QVERIFY(window.play(m_flight));
    EVENTUALLY_IS(window.roll(), QString(All) + " | 0 /s | 8.2469");
    QVERIFY(!window.findRow("HEARTBEAT"));
    // Its type is still to come, in this run or another.
    QSettings again(m_folder.filePath("again.ini"), QSettings::IniFormat);
    window.saveSettings(again);
    QCOMPARE(
        again.value("plot/plotted").toStringList().join(' '),
        QString("corvel/ATTITUDE/roll corvel/HEARTBEAT/type =2 * a\n0 corvel/ATTITUDE/roll later/ENGINE/temperature"));
    QCOMPARE(window.getPlot()->getPlots()->getCount(), 2);
}

void tst_monitorplayback::aSenderStaysChosenWhenItGetsAnotherName()
{
    RollWindow window;
    window.getPlot()->plot("corvel/ATTITUDE/roll");
    QVERIFY(window.play(m_flight));
    QComboBox* senders = nullptr;
    for (QComboBox* box : window.findChildren<QComboBox*>())
        if (box->accessibleName() == "Sender shown")
            senders = box;
    EVENTUALLY(senders->count() == 2);
    senders->setCurrentIndex(1);
    QCOMPARE(window.getDesk()->getLatest()->getSender(), QString("1:1"));
    QVERIFY(window.play(m_folder.write("other.tlog", record(30, 0, "roll", 7))));
    QCOMPARE(senders->currentText(), QString("1:1 @ flight.tlog"));
    QCOMPARE(window.getDesk()->getLatest()->getSender(), senders->currentText());
    EVENTUALLY(window.getPlot()->getSeries().size() == 2);
    window.jump(0);
    QCOMPARE(int(window.getPlot()->getSeries().size()), 2); // and no third of the old name
    QCOMPARE(window.getPlot()->getSeries().front()->getSender(), senders->currentText());
    // The tree shows the chosen one only, also where another source sent later.
    EVENTUALLY_IS(window.valueOf("ATTITUDE 1:1 @ flight.tlog", "roll"), "4.12345 rad");
}

void tst_monitorplayback::theWholeRecordingIsPlottedAndAClickGoesThere()
{
    RollWindow window;
    window.setPlayback(StreamSource::Playback());
    window.show();
    QVERIFY(window.openAddress(m_flight));
    StreamSource* const source = window.getSources()->getSession(0)->getSource();
    source->setPaused(true); // all that is played is the first message or so
    window.getPlot()->plot("corvel/ATTITUDE/roll");
    const auto points = [&]() {
        QStringList texts;
        for (const auto& series : window.getPlot()->getSeries())
            for (qint64 i = 0; i < series->getPoints().getCount(); ++i)
                texts.append(QString::number(series->getPoints().at(i).value));
        return texts.join(' ');
    };
    EVENTUALLY_IS(points(), "0.12345 1.12345 2.12345 3.12345 4.12345");
    QVERIFY(source->getCurrentTime() < (Start + 3) * 1000000);
    // From end to end, also beyond the last value.
    PlotView* const view = window.getPlot()->getView();
    const auto range = [&]() {
        return QString("%1 to %2").arg(view->xAxis->range().lower - Start).arg(view->xAxis->range().upper - Start);
    };
    EVENTUALLY_IS(range(), "0 to 9");
    view->replot();
    const auto place = [&](double second) {
        return QPoint(qRound(view->xAxis->coordToPixel(Start + second)), view->axisRect()->rect().center().y());
    };
    QSignalSpy sought(source, &StreamSource::sought);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, place(3));
    EVENTUALLY(sought.size() == 1);
    QVERIFY(qAbs(sought.first().first().toLongLong() - (Start + 3) * 1000000) < 50000);
    QVERIFY(!window.getPlot()->isPaused());
    EVENTUALLY_IS(window.getPlot()->getSeries()[0]->getCurrentText(), "3.12345 rad"); // no such message came
    // What is played afterwards is there already, and the line that tells where that is moves on.
    source->setPaused(false);
    EVENTUALLY(source->getState() == StreamSource::Finished);
    EVENTUALLY(qAbs(view->getPositions().value(0) - (Start + 9)) < 0.001);
    QCOMPARE(points(), QString("0.12345 1.12345 2.12345 3.12345 4.12345"));
    // Who drags wants the picture to stay.
    QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, place(3));
    QMouseEvent move(QEvent::MouseMove, place(5), view->mapToGlobal(place(5)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(view, &move);
    QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, place(5));
    QCOMPARE(sought.size(), 1);
    QVERIFY(window.getPlot()->isPaused());

    // Another flight a day later: by the time since the start the one lies over the other.
    QVERIFY(window.play(m_folder.write("later.tlog", record(30, 86400, "roll", 7) + record(30, 86407, "roll", 8))));
    EVENTUALLY(points().endsWith(" 4.12345 7 8"));
    window.getPlot()->setSinceStart(true);
    EVENTUALLY_IS(QString("%1 to %2").arg(view->xAxis->range().lower).arg(view->xAxis->range().upper), "0 to 9");
    QCOMPARE(window.getPlot()->getSeries()[1]->getShift(), double(Start + 86400));
    // So do what is computed from both, and from a field that nobody drew.
    window.getPlot()->getLegend()->selectAll();
    window.getPlot()->addDifference();
    EVENTUALLY(points().endsWith(" 7 8 -6.87655 -5.87655 -4.87655 -3.87655 -2.87655"));
    Formula::Fault fault;
    QVERIFY(window.getPlot()->addComputed(
        PlotExpression::parse("\"corvel/HEARTBEAT/type\" - a", window.getPlot()->getSeries(), &fault)));
    EVENTUALLY(
        points().endsWith(" 1.87655 0.87655 -0.12345 -1.12345 -2.12345 -2.12345 -2.12345 -2.12345 -2.12345 -2.12345"));
    EVENTUALLY(view->getPositions().contains(9) && view->getPositions().contains(7));
    // One that has the same times, and no line, is chosen: the click is for the one that has.
    window.getPlot()->setSinceStart(false);
    QVERIFY(window.play(m_folder.write("beside.tlog", record(0, 0, "type", 2) + record(0, 9, "type", 2))));
    window.getDesk()->chooseSource(window.getSources()->getSession(2));
    EVENTUALLY_IS(range(), "0 to 86407");
    view->replot();
    sought.clear();
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, place(3));
    EVENTUALLY(sought.size() == 1);
}

// Messages that say themselves what fields they have make another type when there are more.
void tst_monitorplayback::aLineGoesOnWhenItsTypeChanges()
{
    RollWindow window;
    const TestFolder folder;
    const auto record = [&folder](const char* name, const QList<QByteArray>& messages, int others = 0) {
        McapFixtures::Recording recording(McapFixtures::settings(McapWriter::NoCompression, 1000));
        const quint16 points = recording.addPoints("/points");
        for (int i = 0; i < others; ++i)
            recording.writer.writeMessage(points, 0, 1, McapFixtures::point(i));
        const quint16 channel =
            recording.writer.addChannel("/a", "json", recording.writer.addSchema("demo.Cart", "", ""));
        for (int i = 0; i < int(messages.size()); ++i)
            recording.writer.writeMessage(channel, 0, quint64(i + 1) * McapFixtures::Millisecond, messages.at(i));
        return folder.write(name, recording.finished());
    };
    const auto points = [&]() {
        QStringList texts;
        for (const auto& series : window.getPlot()->getSeries())
            for (qint64 i = 0; i < series->getPoints().getCount(); ++i)
                texts.append(QString::number(series->getPoints().at(i).value));
        return texts.join(' ');
    };
    QVERIFY(window.play(record("a.mcap", {"{\"x\": 1}", "{\"x\": 2}"}, 20000)));
    window.getPlot()->plot("json/demo.Cart/x");
    EVENTUALLY_IS(points(), "1 2");
    QVERIFY(window.play(record("b.mcap", {"{\"x\": 3, \"y\": 7}"})));
    EVENTUALLY_IS(points(), "1 2 3");
    // Of recordings that are read at once, the one that was opened first comes first, however long it takes.
    window.getPlot()->removeAll();
    window.getPlot()->plot("json/demo.Cart/x");
    EVENTUALLY_IS(points(), "1 2 3");
    const auto colors = [&]() {
        QStringList texts;
        for (const auto& series : window.getPlot()->getSeries())
            texts.append(series->getSender() + ' ' +
                         QString::number(window.getPlot()->getView()->getColorNumber(series.get())));
        return texts.join(", ");
    };
    QCOMPARE(colors(), QString("/a @ a.mcap 0, /a @ b.mcap 1"));
    for (const char* const expected : {"/a @ b.mcap 0, /a @ a.mcap 1", "/a @ a.mcap 0, /a @ b.mcap 1"}) {
        const auto& series = window.getPlot()->getSeries();
        window.getPlot()->putBefore(series[1].get(), {series[0].get()});
        QCOMPARE(colors(), QString(expected));
    }
    // One that was taken out comes back with all it had.
    window.getPlot()->getLegend()->setCurrentItem(window.getPlot()->getLegend()->topLevelItem(0));
    window.getPlot()->removeChosen();
    QCOMPARE(points(), QString("3"));
    window.getPlot()->plot("json/demo.Cart/x");
    EVENTUALLY_IS(points(), "3 1 2");
    QCOMPARE(colors(), QString("/a @ b.mcap 1, /a @ a.mcap 0"));
}

void tst_monitorplayback::whatCannotBeOpenedIsToldInOneBox()
{
    RollWindow window;
    QVERIFY(window.play(m_flight));
    QVERIFY(!window.openAll({m_folder.write("a.txt", "a letter"), m_flight, m_folder.filePath("missing"),
                             m_folder.path(), "udp:0.0.0.0:99999"}));
    QCOMPARE(window.getSources()->getCount(), 4);       // what a file is, is found out when it is read
    QCOMPARE(window.getTree()->topLevelItemCount(), 2); // and what is shown stays
    QCOMPARE(m_folder.relative(window.takeError()).remove(m_folder.path()),
             QString("missing: No such file or directory\n"
                     "udp:0.0.0.0:99999: \"99999\" is no port; ports are 1 to 65535"));
    // The one that fails last is told in the status line.
    const auto isTold = [&window](int source, const char* problem) {
        return window.getSources()->getSession(source)->getStateText().startsWith(problem);
    };
    EVENTUALLY(isTold(1, "failed: not recognised: it begins with 61 20"));
    EVENTUALLY(isTold(3, "failed: there is no recording in this folder"));
    QVERIFY2(window.getLastProblem().contains(": not recognised") || window.getLastProblem().contains(": there is no"),
             qPrintable(window.getLastProblem()));
}

void tst_monitorplayback::recordingsDoNotOverwriteWhatIsInUse()
{
    TestWindow window;
    QVERIFY(window.play(m_flight));
    QVERIFY(window.play(m_folder.write("copy.tlog", record(0, 0, "type", 2))));
    QVERIFY(QFile::link(m_flight, m_folder.filePath("link.tlog")));
    // What is said of a recording of one of the two in a file of that name.
    const auto record = [&](int source, const char* name) {
        QString error;
        SourceModel* const sources = window.getSources();
        const bool started = sources->startRecording(sources->getSession(source), m_folder.filePath(name), &error);
        return (started ? "started" : "") + m_folder.relative(error);
    };
    QCOMPARE(record(1, "link.tlog"), QString("link.tlog is being read; a recording needs another name."));
    QCOMPARE(record(0, "recorded.tlog"), QString("started"));
    QCOMPARE(record(1, "recorded.tlog"), QString("recorded.tlog is being recorded already."));
    QVERIFY(window.getSources()->getSession(0)->getRecorder().isRecording());
    window.getSources()->getSession(0)->stopRecording();
}

QTEST_MAIN(tst_monitorplayback)
#include "tst_monitorplayback.moc"
