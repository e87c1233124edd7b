#include "celldelegate.h"
#include "corvel.h"
#include "findbar.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagetreewidget.h"
#include "preferencesdialog.h"
#include "statisticscsv.h"
#include "testbase.h"
#include "testwindow.h"
#include "waitfor.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QToolTip>
#include <QTreeView>

/** The window as a whole: everything can be reached and named, set and kept. */
class tst_monitorwindow : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlHasAName();
    void emptyViewsSayWhatToDoNext();
    void preferencesAreUsedAndKept();
    void statisticsAreSavedAsValues();
    void everythingFitsASmallScreen();
    void smallScreenLeavesTheTreeItsRoom();
    void confidentialDataIsWarnedOfInTheMenu();
    void textsThatAreCutAreToldInFull();
    void recordingIsSeenAndEndsByTheMenu();
};

static bool isInteractive(const QWidget* widget)
{
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QAbstractItemView*>(widget) ||
           qobject_cast<const QAbstractSpinBox*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractSlider*>(widget);
}

// What a screen reader has to say of a widget.
static QString nameOf(const QWidget* window, const QWidget* widget)
{
    if (!widget->accessibleName().isEmpty())
        return widget->accessibleName();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    for (const QLabel* label : window->findChildren<QLabel*>())
        if (label->buddy() == widget)
            return label->text();
    return QString();
}

static QStringList namelessIn(const QWidget* window)
{
    QStringList nameless;
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        const QString kind = widget->metaObject()->className();
        // Parts of widgets that Qt makes and names itself, and what only shows.
        const QWidget* const parent = widget->parentWidget();
        const bool isPart = kind == "QScrollBar" || kind == "QHeaderView" || kind == "QTabBar" ||
                            kind.startsWith("QDockWidget") || kind == "QToolBarExtension" ||
                            kind == "QTableCornerButton" || kind == "QComboBoxListView" || kind == "QMenu" ||
                            qobject_cast<const QComboBox*>(parent) || qobject_cast<const QAbstractSpinBox*>(parent) ||
                            qobject_cast<const QLineEdit*>(parent) || (parent && parent->inherits("QMenuBar")) ||
                            qobject_cast<const QAbstractItemView*>(parent);
        if (isInteractive(widget) && !isPart && nameOf(window, widget).isEmpty())
            nameless.append(kind + " in " + (parent ? parent->metaObject()->className() : "nothing"));
    }
    return nameless;
}

void tst_monitorwindow::everyControlHasAName()
{
    TestWindow window;
    window.show();
    window.openSimulation();
    QVERIFY(waitFor([&]() { return window.getTree()->topLevelItemCount() >= 5; }, 30000));
    window.find<TreePanel>()->getFindBar()->find("roll");
    window.getPlot()->plot("corvel/ATTITUDE/roll");
    QCOMPARE(namelessIn(&window).join(", "), QString());
    const PreferencesDialog dialog(Preferences(), true);
    QCOMPARE(namelessIn(&dialog).join(", "), QString());
    QVERIFY(window.getAboutText().contains("GPL-3.0-or-later")); // as its plot is
}

void tst_monitorwindow::emptyViewsSayWhatToDoNext()
{
    TestWindow window;
    window.show();
    int views = 0;
    for (const QAbstractItemView* view : window.findChildren<QAbstractItemView*>()) {
        if (!view->isVisible() || view->inherits("QComboBoxListView") || view->inherits("QHeaderView"))
            continue;
        ++views;
        bool says = view->model()->rowCount() > 0;
        for (const QLabel* label : view->viewport()->findChildren<QLabel*>())
            says = says || (label->isVisible() && label->text().size() > 20);
        QVERIFY2(says, qPrintable(view->accessibleName()));
    }
    QVERIFY(views >= 4);
}

void tst_monitorwindow::preferencesAreUsedAndKept()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("preferences.ini");
    const QPalette before = QApplication::palette();
    {
        TestWindow window;
        window.show();
        window.showPreferences();
        PreferencesDialog* const dialog = window.findChild<PreferencesDialog*>();
        QVERIFY(dialog);
        for (QSpinBox* box : dialog->findChildren<QSpinBox*>())
            box->setValue(box->maximum() == 60 ? 7 : box->maximum() == 17 ? 3 : box->value());
        dialog->findChild<QDoubleSpinBox*>()->setValue(0.5);
        QComboBox* const theme = dialog->findChild<QComboBox*>();
        theme->setCurrentIndex(theme->findData(Theme::Dark));
        for (QCheckBox* box : dialog->findChildren<QCheckBox*>())
            box->toggle(); // no shades, and confidential data
        dialog->accept();
        Q_EMIT dialog->applied();
        QCOMPARE(window.getDesk()->getLatest()->getRate(), 7);
        QCOMPARE(Corvel::floatingPointDecimals(), 3);
        QVERIFY(Corvel::confidentialInformationDisplayEnabled());
        QVERIFY(QApplication::palette().color(QPalette::Base).lightness() < 60);
        QSettings settings(path, QSettings::IniFormat);
        window.saveSettings(settings);
    }
    Corvel::setConfidentialInformationDisplayEnabled(false);
    Corvel::setFloatingPointDecimals(-1);
    TestWindow window;
    QSettings settings(path, QSettings::IniFormat);
    settings.setValue("preferences/silentIntervals", "many");
    window.restoreSettings(settings);
    QCOMPARE(window.getDesk()->getLatest()->getRate(), 7);
    QCOMPARE(Corvel::floatingPointDecimals(), 3);
    QVERIFY(!window.getDesk()->getPreferences().highlight);
    QCOMPARE(window.getDesk()->getPreferences().watchTimeOut, 0.5);
    QCOMPARE(window.getDesk()->getPreferences().silentIntervals, 5);
    QVERIFY(!Corvel::confidentialInformationDisplayEnabled()); // never without being asked
    settings.remove("preferences/watchTimeOut");
    settings.setValue("watches/timeOut", 7.5); // as an earlier version wrote it
    Preferences usual;
    usual.restore(settings);
    QCOMPARE(usual.watchTimeOut, 7.5);
    usual = Preferences();
    window.getDesk()->setPreferences(usual);
    QCOMPARE(Corvel::floatingPointDecimals(), -1);
    QCOMPARE(QApplication::palette().color(QPalette::Base), before.color(QPalette::Base));
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

void tst_monitorwindow::everythingFitsASmallScreen()
{
    TestWindow window;
    // What is left of 1280x800 at 150 %, without the desktop's own bars.
    const QSize room(850, 500);
    QStringList large;
    for (const QWidget* part : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (part->minimumSizeHint().width() > room.width() || part->minimumSizeHint().height() > room.height())
            large.append(QString("%1 %2").arg(part->metaObject()->className(), part->objectName()));
    QCOMPARE(large.join(", "), QString());
    QVERIFY(window.minimumSizeHint().height() <= room.height());
}

void tst_monitorwindow::smallScreenLeavesTheTreeItsRoom()
{
    TestWindow window;
    window.resize(853, 533);
    window.show();
    QHeaderView* const header = window.getTree()->header();
    QTRY_VERIFY(window.getTree()->width() * 2 > window.width());
    QTRY_VERIFY(header->sectionPosition(2) * 10 < window.getTree()->width() * 7); // the values are in view
    QVERIFY(window.findChild<QDockWidget*>("watches")->isHidden());
    window.getDesk()->getFieldUses().first().take(FieldPath());
    QVERIFY(!window.findChild<QDockWidget*>("watches")->isHidden());
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

void tst_monitorwindow::textsThatAreCutAreToldInFull()
{
    QStandardItemModel model(1, 2);
    model.setItem(0, 0, new QStandardItem("a name that is far too long for its column"));
    model.setItem(0, 1, new QStandardItem("short"));
    model.item(0, 0)->setToolTip("what it is");
    model.item(0, 1)->setToolTip("what that is");
    QTreeView view;
    view.setModel(&model);
    view.setItemDelegate(new CellDelegate(&view));
    view.setColumnWidth(0, 100);
    view.resize(400, 100);
    view.show();
    const auto tipOf = [&](int column) {
        const QPoint place = view.visualRect(model.index(0, column)).center();
        QHelpEvent event(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
        QApplication::sendEvent(view.viewport(), &event);
        return QToolTip::text();
    };
    QVERIFY2(tipOf(0).contains("far too long for its column<hr>what it is"), qPrintable(QToolTip::text()));
    QCOMPARE(tipOf(1), QString("what that is"));
    QToolTip::hideText();

    PreferencesDialog dialog(Preferences(), false);
    dialog.show();
    dialog.findChildren<QCheckBox*>().last()->setChecked(true); // shows confidential data
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->wordWrap())
            QVERIFY(label->isVisible() && label->height() >= label->heightForWidth(label->width()));
}

void tst_monitorwindow::recordingIsSeenAndEndsByTheMenu()
{
    QTemporaryDir folder;
    TestWindow window;
    window.show();
    // "RSC" for what can be done of Record, Stop Recording and Close Source.
    const auto enabled = [&window]() {
        QString letters;
        for (const char* text : {"Record...", "Stop Recording", "Close Source"})
            letters += window.findAction(text)->isEnabled() ? *text : '-';
        return letters;
    };
    QCOMPARE(enabled(), QString("---"));
    window.openSimulation();
    QCOMPARE(enabled(), QString("R-C"));
    SourceModel* const sources = window.getSources();
    QTRY_COMPARE(int(sources->getSession(0)->getState()), int(SourceSession::Receiving));
    QString error;
    QVERIFY(sources->getSession(0)->startRecording(folder.filePath("a.tlog"), &error));
    const QModelIndex state = sources->index(0, SourceModel::StateColumn);
    QVERIFY2(state.data().toString().startsWith("recording, "), qPrintable(state.data().toString()));
    QVERIFY(!state.data(Qt::DecorationRole).value<QIcon>().isNull());
    QCOMPARE(enabled(), QString("-SC"));
    window.findAction("Stop Recording")->trigger();
    QCOMPARE(state.data().toString(), QString("receiving"));
    QCOMPARE(enabled(), QString("R-C"));
}

QTEST_MAIN(tst_monitorwindow)
#include "tst_monitorwindow.moc"
