#include "celldelegate.h"
#include "columngrower.h"
#include "eventmodel.h"
#include "eventpanel.h"
#include "layoutmenu.h"
#include "preferencesdialog.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"
#include "theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSlider>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QToolTip>
#include <QTreeView>

/** The window's room: what is where in it, on screens of any size, and what can be read there. */
class tst_monitorplaces : public TestBase
{
    Q_OBJECT

private:
    const TestFolder m_folder;

private Q_SLOTS:
    void everythingFitsASmallScreen();
    void aLowWindowHasOtherPlaces();
    void framesAreSeenInHighContrast();
    void placesAndLayoutsComeBack();
    void textsThatAreCutAreToldInFull();
};

void tst_monitorplaces::everythingFitsASmallScreen()
{
    TestWindow window;
    // What is left of 1280x800 at 150 %, without the desktop's own bars.
    const QSize room(850, 500);
    QStringList large;
    for (const QWidget* part : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (part->minimumSizeHint().expandedTo(room) != room)
            large.append(QString("%1 %2").arg(part->metaObject()->className(), part->objectName()));
    QCOMPARE(large.join(", "), QString());

    // The tree has its room, with the values in view, and what is empty has none.
    window.resize(853, 533);
    const QSignalSpy arranged(window.getDesk(), &Desk::arranged);
    window.show();
    EVENTUALLY(window.minimumSizeHint().height() <= room.height()); // docks have their places then
    const QTreeView* const events = window.find<EventPanel>()->getView();
    EVENTUALLY(events->viewport()->height() > 2 * events->fontMetrics().height()); // so many rows of them, at least
    window.openSimulation();
    EVENTUALLY(window.getTree()->width() * 2 > window.width());
    EVENTUALLY(window.getTree()->header()->sectionPosition(2) * 10 < window.getTree()->width() * 7);
    EVENTUALLY(arranged.size() == 1);
    bool isOver = false;
    QTimer::singleShot(0, &window, [&isOver]() { isOver = true; }); // behind what gives columns their widths
    EVENTUALLY(isOver);
    QVERIFY(window.getTree()->columnWidth(0) != 260); // of a window that is not arranged
    window.getTree()->header()->resizeSection(0, 400);
    window.getTree()->resize(420, 200); // as beside a plot
    EVENTUALLY(window.getTree()->header()->sectionPosition(2) * 10 < window.getTree()->width() * 7);
    window.resize(1800, 533); // and when there is room again
    EVENTUALLY(window.getTree()->columnWidth(0) == 400);
    window.resize(853, 533);
    window.getStatistics()->resize(200, 200); // half of it is for names, at least
    window.getStatistics()->show();
    EVENTUALLY(window.getStatistics()->columnWidth(0) * 2 >= window.getStatistics()->viewport()->width() - 1);
    const QDockWidget* const watches = window.findChild<QDockWidget*>("watches");
    QVERIFY(watches->isHidden());
    window.getDesk()->getFieldUses().first().take(FieldPath(), {QString(), false});
    QVERIFY(!watches->isHidden());

    // A plot that shares its place leaves no tabs of its own behind, and a long name takes no room.
    QVERIFY(window.showPanel("plot"));
    QVERIFY(!window.tabifiedDockWidgets(window.findChild<QDockWidget*>("plot")).isEmpty());
    const auto emptyTabs = [&window]() {
        int count = 0;
        for (const QTabBar* bar : window.findChildren<QTabBar*>())
            count += bar->isVisible() && bar->count() == 0 ? 1 : 0;
        return count;
    };
    EVENTUALLY(emptyTabs() == 0);
    window.statusBar()->findChild<QLabel*>()->setText(QString(300, 'x'));
    QVERIFY(window.minimumSizeHint().width() <= room.width());

    // What happened is read also in a narrow list.
    QDockWidget* const dock = window.findChild<QDockWidget*>("events");
    QVERIFY(window.showPanel("events")); // in front of the plot
    dock->setFloating(true);
    dock->resize(300, 200);
    EVENTUALLY(events->viewport()->width() <= 300);
    EVENTUALLY(events->columnWidth(EventModel::EventColumn) * 5 >= events->viewport()->width());
}

// Which docks are seen, with those that are tabs of the list of types in brackets.
static QString docksOf(const TestWindow& window)
{
    QStringList names;
    const QList<QDockWidget*> tabs = window.tabifiedDockWidgets(window.findChild<QDockWidget*>("types"));
    for (QDockWidget* const dock : window.findChildren<QDockWidget*>())
        if (!dock->isHidden())
            names.append(tabs.contains(dock) ? '(' + dock->objectName() + ')' : dock->objectName());
    names.sort();
    return names.join(' ');
}

void tst_monitorplaces::aLowWindowHasOtherPlaces()
{
    QSettings settings(m_folder.filePath("low.ini"), QSettings::IniFormat);
    const QString usual = "(forms) (statistics) events messages sources types";
    const QString low = "(forms) (sources) (statistics) types";
    {
        TestWindow window;
        const int height = 23 * window.fontMetrics().height(); // as of 1280x800 at 200 %
        window.resize(900, height);
        window.show();
        EVENTUALLY_IS(docksOf(window), low);
        window.findAction("Events")->trigger();
        EVENTUALLY_IS(docksOf(window), "(forms) (sources) (statistics) events types");
        window.findAction("Reset")->trigger();
        EVENTUALLY_IS(docksOf(window), low);
        window.findAction("Forms")->trigger();
        QCOMPARE(window.height(), height);
        window.saveSettings(settings);
    }
    settings.remove("window/geometry");
    {
        TestWindow window; // of another screen: what was arranged on the small one is not for it
        window.restoreSettings(settings);
        window.show();
        QCoreApplication::processEvents(); // it is arranged then
        EVENTUALLY_IS(docksOf(window), usual);
    }
    TestWindow window;
    window.resize(900, 23 * window.fontMetrics().height());
    window.restoreSettings(settings);
    window.show();
    EVENTUALLY_IS(docksOf(window), "(sources) (statistics) types");
}

void tst_monitorplaces::framesAreSeenInHighContrast()
{
    Theme::apply(Theme::Dark); // in a style that has frames of the colour of the window
    QPushButton button;
    QSlider slider(Qt::Horizontal);
    QScrollBar bar(Qt::Horizontal);
    QComboBox combo;
    for (QWidget* const widget : {static_cast<QWidget*>(&button), static_cast<QWidget*>(&slider),
                                  static_cast<QWidget*>(&bar), static_cast<QWidget*>(&combo)}) {
        widget->setPalette(QPalette(Qt::white, Qt::black, Qt::white, Qt::white, Qt::white, Qt::white, Qt::black));
        widget->resize(100, 20);
        const QImage image = widget->grab().toImage();
        int seen = 0; // beginning left of the arrow of a combo box
        for (int y = 0; y < image.height(); ++y)
            seen += qGray(image.pixel(image.width() * 3 / 10, y)) > 60 || qGray(image.pixel(1, y)) > 60;
        QVERIFY2(seen > 0, widget->metaObject()->className());
    }
    Theme::apply(Theme::System);
}

// How wide the list of types is, and whether events and tool bar are there.
static QString placesOf(const TestWindow& window)
{
    QString places = QString::number(window.findChild<QDockWidget*>("types")->width());
    for (const char* name : {"events", "tools"})
        places += window.findChild<QWidget*>(name)->isHidden() ? " -" : QString(" ") + name;
    return places;
}

void tst_monitorplaces::placesAndLayoutsComeBack()
{
    QSettings settings(m_folder.filePath("places.ini"), QSettings::IniFormat);
    {
        TestWindow window;
        window.show();
        EVENTUALLY_IS(placesOf(window), "384 events tools"); // 300 of 1,000 parts
        window.resizeDocks({window.findChild<QDockWidget*>("types")}, {333}, Qt::Horizontal);
        window.findAction("Events")->trigger();
        window.findAction("Tool Bar")->trigger();
        EVENTUALLY_IS(placesOf(window), "333 - -");
        window.findChild<LayoutMenu*>()->save("quiet & wide");
        window.saveSettings(settings);
        window.findAction("Reset")->trigger();
        EVENTUALLY_IS(placesOf(window), "384 events tools");
        window.findChild<LayoutMenu*>()->actions().last()->trigger();
        EVENTUALLY_IS(placesOf(window), "333 - -");
    }
    TestWindow window;
    window.restoreSettings(settings);
    window.show();
    EVENTUALLY_IS(placesOf(window), "333 - -");
    QCOMPARE(window.findChild<LayoutMenu*>()->actions().last()->text(), QString("quiet && wide"));
}

void tst_monitorplaces::textsThatAreCutAreToldInFull()
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
    model.item(0, 0)->setToolTip("here: a name that is far too long for its column\nand more"); // nothing twice
    QCOMPARE(tipOf(0), QString("<qt>here: a name that is far too long for its column<br>and more</qt>"));
    QToolTip::hideText();
    // A number that becomes longer gets more room.
    new ColumnGrower(&view, 1, 70);
    view.header()->setStretchLastSection(false);
    view.setColumnWidth(1, 20);
    model.item(0, 1)->setText("12,345,678,901,234,567,890");
    EVENTUALLY(view.columnWidth(1) > view.fontMetrics().horizontalAdvance("12,345,678"));

    PreferencesDialog dialog(Preferences(), false);
    dialog.show();
    dialog.findChildren<QCheckBox*>().last()->setChecked(true); // shows confidential data
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (label->wordWrap())
            QVERIFY(label->isVisible() && label->height() >= label->heightForWidth(label->width()));
    // Also of another language, which is longer.
    const QScrollArea* const area = dialog.findChild<QScrollArea*>();
    dialog.findChild<QLabel*>()->setText(QString(80, 'x'));
    EVENTUALLY(area->widget()->minimumSizeHint().width() > dialog.fontMetrics().horizontalAdvance('x') * 80);
    EVENTUALLY(area->widget()->width() <= area->viewport()->width());
}

QTEST_MAIN(tst_monitorplaces)
#include "tst_monitorplaces.moc"
