#include "addressform.h"
#include "connectdialog.h"
#include "corvel.h"
#include "findbar.h"
#include "formatinfo.h"
#include "mavlinkframes.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "preferencesdialog.h"
#include "settingsfile.h"
#include "shellrun.h"
#include "simulationbanner.h"
#include "startpage.h"
#include "statisticscsv.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"

#include <QAbstractSlider>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>

#include <memory>

/** The window as a whole, and the program: everything can be reached and named, set and kept. */
class tst_monitorwindow : public TestBase
{
    Q_OBJECT

private:
    const TestFolder m_folder;

private Q_SLOTS:
    void aSimulatedVehicleFillsTheViews();
    void emptyViewsSayWhatToDoNext();
    void preferencesAreUsedAndKept();
    void statisticsAreSavedAsValues();
    void whatIsWrongIsCountedAndGoesWhenItIsMended();
    void confidentialDataIsWarnedOfInTheMenu();
    void theStartPageOffersWhatWasOpenBefore();
    void whatNobodyRecognisesLeadsToTheDialog();
    void recordingIsSeenAndEndsByTheMenu();
    void aDamagedSettingsFileIsPutAside();
    void theProgramSavesPicturesAndSaysWhatIsWrong();
};

// What a screen reader has to say of a widget.
static QString nameOf(const QWidget* window, const QWidget* widget)
{
    if (!widget->accessibleName().isEmpty())
        return widget->accessibleName();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    if (qobject_cast<const QToolBar*>(widget))
        return widget->windowTitle();
    if (const auto* const tabs = qobject_cast<const QTabBar*>(widget)) // told as the one that is in front
        return tabs->count() > 0 ? tabs->tabText(tabs->currentIndex()) : QString("no tabs");
    for (const QLabel* label : window->findChildren<QLabel*>())
        if (label->buddy() == widget)
            return label->text();
    return QString();
}

// What a screen reader says of the labels.
static QStringList toldIn(const QWidget* window)
{
    QStringList told;
    for (QLabel* label : window->findChildren<QLabel*>())
        told.append(QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name));
    return told;
}

static bool isOneOf(const QWidget* widget, std::initializer_list<const char*> kinds)
{
    return widget && std::any_of(kinds.begin(), kinds.end(), [=](const char* kind) { return widget->inherits(kind); });
}

static QString namelessIn(const QWidget* window)
{
    QStringList nameless;
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        const bool isInteractive = widget->focusPolicy() & Qt::TabFocus ||
                                   isOneOf(widget, {"QToolBar", "QAbstractButton", "QAbstractItemView",
                                                    "QAbstractSpinBox", "QComboBox", "QLineEdit", "QAbstractSlider"});
        // Parts of widgets that Qt makes and names itself.
        const QString kind = widget->metaObject()->className();
        const bool isPart = isOneOf(widget, {"QScrollBar", "QHeaderView", "QComboBoxListView", "QToolBarExtension"}) ||
                            kind.startsWith("QDockWidget") || kind == "QTableCornerButton" ||
                            isOneOf(widget->parentWidget(),
                                    {"QComboBox", "QAbstractSpinBox", "QLineEdit", "QMenuBar", "QAbstractItemView"});
        if (isInteractive && !isPart && nameOf(window, widget).isEmpty())
            nameless.append(kind + " in " + widget->parentWidget()->metaObject()->className());
    }
    return nameless.join(", ");
}

// Letters that lead to two things at once, in a menu or in the window.
static QString ambiguousKeysIn(const QWidget* window)
{
    QStringList found;
    const auto check = [&found](const QString& where, const QStringList& texts) {
        QMap<QChar, QStringList> keys;
        for (QString text : texts) {
            const auto at = text.replace("&&", "").indexOf('&');
            if (at >= 0)
                keys[text.at(at + 1).toUpper()].append(text);
        }
        for (const QStringList& same : std::as_const(keys))
            if (same.size() > 1)
                found.append(where + ": " + same.join(", "));
    };
    const auto textsOf = [](const QWidget* menu) {
        QStringList texts;
        for (const QAction* action : menu->actions())
            texts.append(action->text());
        return texts;
    };
    for (const QMenu* menu : window->findChildren<QMenu*>())
        check(menu->title(), textsOf(menu));
    const auto* const main = qobject_cast<const QMainWindow*>(window);
    QStringList texts = main ? textsOf(main->menuBar()) : QStringList();
    for (const QAbstractButton* button : window->findChildren<QAbstractButton*>())
        if (!qobject_cast<const QToolButton*>(button) && (main || button->isVisible()))
            texts.append(button->text());
    for (const QLabel* label : window->findChildren<QLabel*>())
        if (label->buddy() && (main || label->isVisible()))
            texts.append(label->text());
    check("window", texts);
    return found.join("\n");
}

// Controls that are seen, take the focus and are not reached by Tab; or are reached and not seen.
static QString missedByTab(QWidget* window)
{
    QSet<QWidget*> reached;
    QStringList wrong;
    while (window->focusWidget() && !reached.contains(window->focusWidget())) {
        reached.insert(window->focusWidget());
        if (window->focusWidget()->visibleRegion().isEmpty())
            wrong.append(window->focusWidget()->metaObject()->className() + QString(" is not seen"));
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
    for (QWidget* widget : window->findChildren<QWidget*>())
        if (widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() && !widget->visibleRegion().isEmpty() &&
            !widget->focusProxy() && !reached.contains(widget))
            wrong.append(QString(widget->metaObject()->className()) + ' ' + widget->accessibleName());
    return wrong.join(", ");
}

void tst_monitorwindow::aSimulatedVehicleFillsTheViews()
{
    TestWindow window;
    window.find<TypePanel>()->chooseWhenSeen({"ATTITUDE"});
    window.getPlot()->plot("corvel/ATTITUDE/roll");
    window.show();
    window.openSimulation();
    EVENTUALLY(window.getTree()->topLevelItemCount() >= 10 && !window.valueOf("ATTITUDE", "roll").isEmpty());
    const QString before = window.valueOf("ATTITUDE", "roll");
    EVENTUALLY(window.valueOf("ATTITUDE", "roll") != before);
    EVENTUALLY(window.countedTypes().count(',') >= 10);
    EVENTUALLY_IS(window.events(), "1 opened");
    // The plot has every message, fifty a second, of which the other views show twenty.
    const PlotSeries* const series = window.getPlot()->getSeries().front().get();
    EVENTUALLY(series->getMessageCount() >= 30);
    quint64 received = 0;
    const QVector<StreamIdentities::Row> rows = window.getSource()->getIdentities().getRows();
    for (int i = 0; i < rows.size(); ++i)
        received += rows.at(i).typeName == "ATTITUDE" ? window.getSource()->getCounters().getCount(i) : 0;
    QCOMPARE(series->getMessageCount(), received);
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    QVERIFY(std::any_of(widgets.begin(), widgets.end(),
                        [](const QWidget* widget) { return widget->windowTitle() == "ATTITUDE"; })); // its form

    window.findAction("Simulated Robot")->trigger();
    EVENTUALLY_IS(window.valueOf("sensor_msgs/msg/Image", "[summary]"), "320 x 240 rgb8");

    // Every control has a name.
    window.find<TreePanel>()->getFindBar()->find("roll");
    QCOMPARE(namelessIn(&window), QString());
    window.find<TypePanel>()->getView()->setCurrentIndex(window.getTypes()->index(0, 0));
    const std::unique_ptr<QMenu> ofTypes(window.find<TypePanel>()->createMenu());
    QVERIFY(ofTypes->actions().size() > 5);
    QCOMPARE(ambiguousKeysIn(&window), QString());
    QCOMPARE(missedByTab(&window), QString());
    EVENTUALLY(!toldIn(&window).filter(QRegularExpression("^Matches: [0-9]+ matches$")).isEmpty());
    PreferencesDialog dialog(Preferences(), true);
    dialog.resize(dialog.width(), 12 * dialog.fontMetrics().height()); // on a small screen
    dialog.show();
    EVENTUALLY(dialog.isActiveWindow());
    QCOMPARE(namelessIn(&dialog), QString());
    QCOMPARE(ambiguousKeysIn(&dialog), QString());
    QVERIFY(dialog.height() < 15 * dialog.fontMetrics().height());
    QCOMPARE(missedByTab(&dialog), QString());
    window.findAction("Connect...")->trigger();
    const ConnectDialog* const connection = window.findChild<ConnectDialog*>();
    QComboBox* const kind = connection->findChild<AddressForm*>()->findChild<QComboBox*>();
    for (int i = 0; i < kind->count(); ++i) {
        kind->setCurrentIndex(i);
        QVERIFY2(ambiguousKeysIn(connection).isEmpty(), qPrintable(kind->currentText() + ambiguousKeysIn(connection)));
        QCOMPARE(namelessIn(connection), QString());
    }
    QVERIFY(window.getAboutText().contains("GPL-3.0-or-later")); // as its plot is
}

void tst_monitorwindow::emptyViewsSayWhatToDoNext()
{
    TestWindow window;
    window.show();
    // "Sources, Message types, Events" of those that are seen and do.
    const auto saying = [&window]() {
        QStringList names;
        for (const QAbstractItemView* view : window.findChildren<QAbstractItemView*>())
            for (const QLabel* label : view->viewport()->findChildren<QLabel*>())
                if (!view->visibleRegion().isEmpty() && label->isVisible() && label->text().size() > 20)
                    names.append(view->accessibleName());
        names.sort();
        return names.join(", ");
    };
    EVENTUALLY_IS(saying(), "Events, Message types, Sources");
    window.findChild<QDockWidget*>("sources")->widget()->findChild<QAbstractItemView*>()->resize(80, 40);
    EVENTUALLY_IS(saying(), "Events, Message types"); // but no part of a text
}

// What of the preferences is in use.
static QString used(TestWindow* window)
{
    const Preferences& preferences = window->getDesk()->getPreferences();
    return QString("%1 a second, %2 decimals, %3 s, %4 intervals, %5, %6, %7")
        .arg(window->getDesk()->getLatest()->getRate())
        .arg(Corvel::floatingPointDecimals())
        .arg(preferences.watchTimeOut)
        .arg(preferences.silentIntervals)
        .arg(preferences.highlight ? "shades" : "plain",
             Corvel::confidentialInformationDisplayEnabled() ? "confidential" : "hidden",
             QApplication::palette().color(QPalette::Base).lightness() < 60 ? "dark" : "light");
}

void tst_monitorwindow::preferencesAreUsedAndKept()
{
    QSettings settings(m_folder.filePath("preferences.ini"), QSettings::IniFormat);
    {
        TestWindow window;
        window.show();
        QCOMPARE(used(&window), QString("20 a second, -1 decimals, 3 s, 5 intervals, shades, hidden, light"));
        window.showPreferences();
        PreferencesDialog* const dialog = window.findChild<PreferencesDialog*>();
        for (QSpinBox* box : dialog->findChildren<QSpinBox*>())
            box->setValue(box->maximum() == 60 ? 7 : box->maximum() == 17 ? 3 : box->value());
        dialog->findChild<QDoubleSpinBox*>()->setValue(0.5);
        QComboBox* const theme = dialog->findChild<QComboBox*>();
        theme->setCurrentIndex(theme->findData(Theme::Dark));
        for (QCheckBox* box : dialog->findChildren<QCheckBox*>())
            box->toggle(); // no shades, and confidential data
        dialog->accept();
        Q_EMIT dialog->applied();
        QCOMPARE(used(&window), QString("7 a second, 3 decimals, 0.5 s, 5 intervals, plain, confidential, dark"));
        window.saveSettings(settings);
    }
    Corvel::setConfidentialInformationDisplayEnabled(false);
    Corvel::setFloatingPointDecimals(-1);
    TestWindow window;
    settings.setValue("preferences/silentIntervals", "many");
    window.restoreSettings(settings); // never what is confidential without being asked
    QCOMPARE(used(&window), QString("7 a second, 3 decimals, 0.5 s, 5 intervals, plain, hidden, dark"));
    settings.remove("preferences/watchTimeOut");
    settings.setValue("watches/timeOut", 7.5); // as an earlier version wrote it
    Preferences usual;
    usual.restore(settings);
    QCOMPARE(usual.watchTimeOut, 7.5);
    window.getDesk()->setPreferences(Preferences());
    QCOMPARE(used(&window), QString("20 a second, -1 decimals, 3 s, 5 intervals, shades, hidden, light"));
}

void tst_monitorwindow::statisticsAreSavedAsValues()
{
    FormatInfo format("a,b");
    MessageInfo* const info = new MessageInfo("KIND");
    format.addMessageInfo(info);
    MessageStatisticsCoordinator coordinator;
    const int stream = coordinator.addStream();
    MessageStatistics* const statistics = coordinator.findOrCreate(stream, 0, {info, 0, "1"});
    for (int i = 0; i < 20; ++i)
        statistics->addReception(1400000000000000 + i * 100000 + (i > 10 ? 300000 : 0));
    QCOMPARE(StatisticsCsv::toCsv(coordinator),
             QByteArray("Format,Type,Count,Interval (ms),Gaps,Missing,Without time,Intervals (ms: count)\r\n"
                        "\"a,b\",KIND,20,100,1,3,0,100: 20\r\n"));
}

void tst_monitorwindow::whatIsWrongIsCountedAndGoesWhenItIsMended()
{
    const MavlinkScript script;
    TestWindow window;
    QVERIFY(!window.openAddress("missing.raw"));
    QVERIFY(window.takeError().contains("missing.raw") && window.getLastProblem().contains("missing.raw"));
    QVERIFY(window.play(m_folder.write("good.raw", script.bytes("H1"))));
    QCOMPARE(window.getLastProblem(), QString());
    QVERIFY(window.play(m_folder.write("lossy.raw", script.bytes("H1 H2 H4 H5~12"))));
    QVERIFY(window.getLastProblem().contains("checksum failure"));
    EVENTUALLY(window.statusBar()->findChild<QLabel*>()->text() == "2 sources");
    QStringList counts;
    for (const QLabel* label : window.statusBar()->findChildren<QLabel*>())
        if (label->isVisible() && label->font().bold())
            counts.append(label->text());
    QCOMPARE(counts.join(", "), QString("20.0 % lost, 1 damaged"));
}

void tst_monitorwindow::confidentialDataIsWarnedOfInTheMenu()
{
    TestWindow window;
    window.show();
    QAction* const confidential = window.findAction("Confidential Data");
    QVERIFY(confidential);
    confidential->trigger();
    QVERIFY(Corvel::confidentialInformationDisplayEnabled());
    QMessageBox* const box = window.findChild<QMessageBox*>();
    QVERIFY(box);
    QCOMPARE(box->text(), PreferencesDialog::getConfidentialWarning());
    box->button(QMessageBox::Cancel)->click();
    QVERIFY(!Corvel::confidentialInformationDisplayEnabled());
    QVERIFY(!confidential->isChecked());
}

// What stands in the middle: what the start page offers, or the banner of a simulation, or neither.
static QString middleOf(const TestWindow& window)
{
    if (window.findChild<SimulationBanner*>()->isVisible())
        return "simulation";
    const StartPage* const page = window.findChild<StartPage*>();
    if (!page->isVisible())
        return "values";
    QStringList entries;
    for (const QToolButton* button : page->findChildren<QToolButton*>())
        entries.append(button->accessibleName());
    return entries.join(", ");
}

void tst_monitorwindow::theStartPageOffersWhatWasOpenBefore()
{
    const QString always = "Open Recording..., Connect..., Simulated Vehicle, Simulated Robot, Simulated Fleet";
    const QString path = m_folder.filePath("recent.ini");
    QSettings settings(path, QSettings::IniFormat);
    settings.setValue("recentFiles", QStringList{"/before.tlog"}); // as an earlier version wrote it
    {
        TestWindow window;
        window.restoreSettings(settings);
        window.show();
        QCOMPARE(middleOf(window), always + ", before.tlog");
        QCOMPARE(window.focusWidget()->accessibleName(), QString("Open Recording..."));
        window.openSimulation(true);
        QCOMPARE(middleOf(window), QString("simulation"));
        window.findAction("Connect...")->trigger();
        SourceOptions options;
        options.name = "north field";
        options.address = "mqtt://127.0.0.1:1/a";
        options.password = "secret";
        ConnectDialog* const dialog = window.findChild<ConnectDialog*>();
        dialog->setOptions(options);
        dialog->accept();
        QCOMPARE(middleOf(window), QString("values"));
        QCOMPARE(window.getSources()->getSession(0)->getName(), QString("north field"));
        const QString other = m_folder.write("other.raw", MavlinkScript().bytes("H1"));
        QVERIFY(window.openAll({other, "udp:127.0.0.1:24553", other}));
        window.saveSettings(settings);
    }
    settings.sync();
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray kept = file.readAll();
    QVERIFY2(kept.contains("north field") && !kept.contains("secret"), kept.constData());
    TestWindow window;
    window.restoreSettings(settings);
    window.show();
    QCOMPARE(middleOf(window), always + ", other.raw, before.tlog, udp:127.0.0.1:24553, north field");
    window.findAction("north field")->trigger(); // whose password is asked for again
    ConnectDialog* const dialog = window.findChild<ConnectDialog*>();
    QCOMPARE(dialog->getOptions().name, QString("north field"));
    dialog->reject();
    window.findAction("other.raw")->trigger();
    QCOMPARE(middleOf(window), QString("values"));
    QVERIFY(window.focusWidget() == window.getTree());
    window.findAction("Close Source")->trigger();
    QVERIFY(middleOf(window).startsWith(always + ", other.raw"));
    QCOMPARE(window.focusWidget()->accessibleName(), QString("Open Recording..."));
}

void tst_monitorwindow::whatNobodyRecognisesLeadsToTheDialog()
{
    TestWindow window;
    window.show();
    const QString path = m_folder.write("cars.bin", QByteArray("\x02\x08\x05\x02\x08\x06", 6));
    QVERIFY(window.openAddress(path));
    EVENTUALLY(window.findChild<ConnectDialog*>());
    ConnectDialog* const dialog = window.findChild<ConnectDialog*>();
    SourceOptions options = dialog->getOptions();
    QCOMPARE(options.address, path);
    options.definitions = m_folder.write("cars.proto", "syntax = \"proto3\";\nmessage Bike {\n  int32 n = 1;\n}\n");
    options.typeName = "Bike";
    options.framing = "varint";
    dialog->setOptions(options);
    dialog->accept();
    QVERIFY(window.isPlayed(0));
    QCOMPARE(window.getSources()->getCount(), 1); // in place of the one that failed
    QCOMPARE(window.countedTypes(), QString("Bike 2"));
}

void tst_monitorwindow::recordingIsSeenAndEndsByTheMenu()
{
    TestWindow window;
    window.show();
    // "RSC" for what can be done of Record, Stop Recording and Close Source, and the state of the source.
    const auto state = [&window]() {
        QString letters;
        for (const char* text : {"Record...", "Stop Recording", "Close Source"})
            letters += window.findAction(text)->isEnabled() ? *text : '-';
        const QString text = window.getSources()->index(0, SourceModel::StateColumn).data().toString();
        return letters + ' ' + text.section(',', 0, 0);
    };
    QCOMPARE(state(), QString("--- "));
    window.openSimulation();
    EVENTUALLY_IS(state(), "R-C receiving");
    QString error;
    QVERIFY(window.getSources()->getSession(0)->startRecording(m_folder.filePath("a.tlog"), &error));
    QCOMPARE(state(), QString("-SC recording"));
    const QModelIndex index = window.getSources()->index(0, SourceModel::StateColumn);
    QVERIFY(!index.data(Qt::DecorationRole).value<QIcon>().isNull());
    window.findAction("Stop Recording")->trigger();
    QCOMPARE(state(), QString("R-C receiving"));
}

void tst_monitorwindow::aDamagedSettingsFileIsPutAside()
{
    const QByteArray damage("[tree]\ncolumns=\0\0\0\xff\xfe", 20);
    const QString path = m_folder.write("monitor.ini", damage);
    QString problem;
    QVERIFY(SettingsFile::open(path, &problem)->allKeys().isEmpty());
    QVERIFY(problem.contains(path + ".damaged"));
    QFile aside(path + ".damaged");
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), damage);
}

void tst_monitorwindow::theProgramSavesPicturesAndSaysWhatIsWrong()
{
    static const TextRow rows[] = {
        {"corvel-monitor --start demo --screenshot a.png --after 2 --size 1200x750 --form ATTITUDE --watch "
         "corvel/VFR_HUD/groundspeed"
         " 2>/dev/null",
         ""},
        {"corvel-monitor --speed fast", "! ...--speed...\n= 1"},
        {"corvel-monitor --size 5 --after 1", "! ...--size takes <width>x<height>...\n= 1"},
        {"corvel-monitor --demo boat", "! ...--demo takes vehicle, robot or fleet...\n= 1"},
        {"{ corvel-monitor --panel map; echo \"= $?\"; } 2>&1 | tail -n 2",
         "corvel-monitor: there is no panel map\n= 1"},
        {"{ corvel-monitor --plot ATTITUDE/roll; echo \"= $?\"; corvel-monitor --plot '\"*/A/b\" + c'; corvel-monitor "
         "--plot 'Q0 + \"*/A/b\"'; "
         "corvel-monitor --plot '1 + \"*/A/b\" - \"a'; corvel-monitor --plot '\"*/A/b*\" + 1'; corvel-monitor --watch "
         "'a/b/c['; } 2>&1 | grep -v QStandard",
         "corvel-monitor: --plot ATTITUDE/roll: character 14: no field is named...as */ATTITUDE/roll...\n= 1\n"
         "...character 11: 'c' is no path in quotation marks...\n...character 1: 'Q0' is no path...\n...character 15: "
         "the quotation...\n...'*/A/b*': "
         "character 6: the wildcard...\n"
         "corvel-monitor: --watch a/b/c[: character 6: the ] is missing"},
        {"corvel-monitor --start now", "! ...--start takes page or demo...\n= 1"},
        {"{ corvel-monitor --record c.tlog --screenshot c.png; echo \"= $?\"; } 2>&1 | tail -n 2",
         "corvel-monitor: There is nothing open to record.\n= 2"},
        {"corvel-monitor --palette pink", "! ...--palette takes system, light or dark...\n= 1"},
        {"{ corvel-monitor /nowhere/flight.tlog --screenshot b.png; echo \"= $?\"; } 2>&1 | grep -v -e QStandard -e "
         "plugin",
         "...flight.tlog...\n= 2"},
    };
    check(rows, m_folder.path());
    QCOMPARE(QImage(m_folder.filePath("a.png")).size(), QSize(1200, 750));
}

QTEST_MAIN(tst_monitorwindow)
#include "tst_monitorwindow.moc"
