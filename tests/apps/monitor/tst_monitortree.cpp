#include "changehighlighter.h"
#include "findbar.h"
#include "pinnedtypes.h"
#include "rowtooltips.h"
#include "silencewatch.h"
#include "testbase.h"
#include "theme.h"
#include "treeactions.h"
#include "treedesk.h"
#include "treefilter.h"
#include "treerow.h"
#include "waitfor.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QToolTip>

/** What somebody does with rows of the message tree. */
class tst_monitortree : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsKnowWhatTheyStandFor();
    void wordsAreFoundAsTheyAreAndAbbreviated();
    void theTreeShowsWhatIsLookedFor();
    void matchesFollowValues();
    void pinnedTypesStayOnTop();
    void rowsAreCopied();
    void toolTipsExplain();
    void changesAreShadedAndFade();
    void silentTypesAreGreyed();
};

void tst_monitortree::rowsKnowWhatTheyStandFor()
{
    TreeDesk desk;
    desk.send(desk.createNav(3.5));
    desk.sendCells(3);
    const auto describe = [&desk](const char* way) {
        const TreeRow row(desk.find(way));
        return row.getPath().getExpression() + " | " + row.getValueText() + " | " + (row.isNumeric() ? "number" : "");
    };
    QCOMPARE(describe("NAV_STATE"), QString("desk/NAV_STATE |  | "));
    QCOMPARE(describe("NAV_STATE/ground_speed"), QString("desk/NAV_STATE/ground_speed | 3.5 m/s | number"));
    QCOMPARE(describe("NAV_STATE/text"), QString("desk/NAV_STATE/text | hello \"you\" | "));
    QCOMPARE(describe("BATTERY/cells"), QString("desk/BATTERY/cells | 100, 101, 102 | "));
    QCOMPARE(describe("BATTERY/cells/cells [2]"), QString("desk/BATTERY/cells[2] | 102 | number"));
    QCOMPARE(describe("NAV_STATE/place/place [1]"), QString("desk/NAV_STATE/place[1] |  | "));
    QCOMPARE(describe("NAV_STATE/place/place [1]/x"), QString("desk/NAV_STATE/place[1]/x | 2.5 | number"));
    // The expression finds the way back.
    const FieldPath path = TreeRow(desk.find("NAV_STATE/place/place [1]/x")).getPath();
    QVERIFY(FieldPath::fromExpression(path.getExpression()) == path);
    QVERIFY(TreeRow(nullptr).isNull());
}

void tst_monitortree::wordsAreFoundAsTheyAreAndAbbreviated()
{
    const auto found = [](const char* text, const char* word) { return RowMatcher::isAbbreviated(text, word); };
    QVERIFY(found("GPS_RAW_INT", "raw"));
    QVERIFY(found("GPS_RAW_INT", "gri"));
    QVERIFY(found("GPS_RAW_INT", "gpra"));
    QVERIFY(found("groundSpeed2", "gs2"));
    QVERIFY(!found("GPS_RAW_INT", "gw")); // a letter in the midst of a word
    QVERIFY(!found("GLOBAL_POSITION_INT", "lat"));
}

void tst_monitortree::theTreeShowsWhatIsLookedFor()
{
    TreeDesk desk;
    desk.send(desk.createNav(3.5));
    desk.sendCells(2);
    FindBar* const bar = desk.panel.getFindBar();
    const auto shownFor = [&](const char* text) {
        bar->find(text);
        return desk.shown();
    };
    QCOMPARE(shownFor("gsp"), QString("NAV_STATE, .ground_speed"));
    QCOMPARE(shownFor("nav flying"), QString("NAV_STATE, .mode"));
    QCOMPARE(shownFor("battery"), QString("BATTERY, .cells"));
    QCOMPARE(shownFor("NAV_STATE/pl"), QString("NAV_STATE, .place"));
    QCOMPARE(shownFor("desk/NAV_STATE/place[1]/x"), QString("NAV_STATE, .place, ..place [1], ...x"));
    QCOMPARE(shownFor("NAV*/x"), QString());
    QVERIFY(!bar->getFilter()->getErrorString().isEmpty());

    // From match to match, round the end, and back to how it was.
    bar->find("x");
    QCOMPARE(bar->getFilter()->getMatchCount(), 3); // both x, and "text" contains one
    QStringList visited;
    for (int i = 0; i < 4; ++i) {
        bar->findNext();
        visited << desk.tree.currentItem()->parent()->text(0) + '.' + desk.tree.currentItem()->text(0);
    }
    QCOMPARE(visited.join(' '), QString("NAV_STATE.text place [0].x place [1].x NAV_STATE.text"));
    bar->findPrevious();
    QCOMPARE(desk.tree.currentItem(), desk.find("NAV_STATE/place/place [1]/x"));
    bar->close();
    desk.tree.collapseAll();
    const QString before = desk.shown();
    bar->find("flying");
    QTest::keyClick(bar->getEdit(), Qt::Key_Escape);
    QVERIFY(!bar->isVisible());
    QCOMPARE(desk.shown(), before);
}

void tst_monitortree::matchesFollowValues()
{
    TreeDesk desk;
    FindBar* const bar = desk.panel.getFindBar();
    desk.send(desk.createNav(3.5, 1));
    bar->find("flying");
    QCOMPARE(desk.shown(), QString());
    desk.send(desk.createNav(3.5, 2));
    QVERIFY(waitFor([&]() { return desk.shown() == "NAV_STATE, .mode"; }));
    // Rows that are hidden follow all the same, and rows that are made anew are looked at.
    QCOMPARE(desk.find("NAV_STATE/ground_speed")->text(1), QString("3.5 m/s"));
    desk.tree.setHideSecondaryFields(false);
    desk.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    QVERIFY(waitFor([&]() { return desk.shown() == "NAV_STATE, .mode"; }));
    desk.send(desk.createNav(3.5, 1));
    QVERIFY(waitFor([&]() { return desk.shown().isEmpty(); }));
}

void tst_monitortree::pinnedTypesStayOnTop()
{
    QTemporaryDir folder;
    QSettings settings(folder.filePath("pins.ini"), QSettings::IniFormat);
    {
        TreeDesk desk;
        desk.send(desk.createNav(1));
        desk.find("NAV_STATE")->setExpanded(true);
        desk.find("NAV_STATE/place")->setExpanded(true);
        QCOMPARE(desk.tree.topLevelItem(0)->text(0), QString("BATTERY"));
        desk.tree.setCurrentItem(desk.find("NAV_STATE/mode"));
        desk.panel.getActions()->getShowActions().last()->trigger();
        QCOMPARE(desk.tree.topLevelItem(0)->text(0), QString("NAV_STATE"));
        QVERIFY(!desk.tree.topLevelItem(0)->icon(0).isNull());
        QVERIFY(desk.find("NAV_STATE/place")->isExpanded());
        desk.panel.getPins()->saveSettings(settings);
    }
    TreeDesk desk;
    desk.tree.clear();
    desk.panel.getPins()->restoreSettings(settings);
    desk.add(desk.battery);
    desk.add(desk.nav);
    QCOMPARE(desk.tree.topLevelItem(0)->text(0), QString("NAV_STATE"));
    desk.panel.getPins()->setPinned(desk.nav, false);
    QCOMPARE(desk.tree.topLevelItem(0)->text(0), QString("BATTERY"));
    QVERIFY(desk.find("NAV_STATE")->icon(0).isNull());
}

void tst_monitortree::rowsAreCopied()
{
    TreeDesk desk;
    desk.send(desk.createNav(3.5), 86400000);
    desk.sendCells(2);
    const auto copied = [&desk](const char* way, int key, Qt::KeyboardModifiers modifiers) {
        desk.tree.setCurrentItem(desk.find(way));
        desk.tree.setFocus();
        QTest::keyClick(&desk.tree, Qt::Key(key), modifiers);
        return QGuiApplication::clipboard()->text();
    };
    desk.panel.getWidget()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(desk.panel.getWidget()));
    QCOMPARE(copied("NAV_STATE/mode", Qt::Key_C, Qt::ControlModifier), QString("FLYING (2)"));
    QCOMPARE(copied("NAV_STATE/mode", Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier), QString("2"));
    QCOMPARE(copied("BATTERY/cells", Qt::Key_C, Qt::ControlModifier), QString("100, 101"));
    QCOMPARE(copied("BATTERY/cells/cells [1]", Qt::Key_C, Qt::ControlModifier | Qt::AltModifier),
             QString("desk/BATTERY/cells[1]"));
    QCOMPARE(copied("BATTERY/cells", Qt::Key_J, Qt::ControlModifier), QString("[100,101]"));
    QCOMPARE(copied("NAV_STATE/place/place [1]", Qt::Key_J, Qt::ControlModifier), QString("{\"x\":2.5}"));
    QCOMPARE(copied("NAV_STATE", Qt::Key_J, Qt::ControlModifier),
             QString("{\"time\":\"1970-01-02T00:00:00.000000Z\",\"format\":\"desk\",\"sender\":null,"
                     "\"type\":\"NAV_STATE\",\"sequence\":null,\"fields\":{\"ground_speed\":3.5,\"mode\":2,"
                     "\"text\":\"hello \\\"you\\\"\",\"place\":[{\"x\":1.5},{\"x\":2.5}]}}"));
}

void tst_monitortree::toolTipsExplain()
{
    TreeDesk desk;
    desk.send(desk.createNav(3.5));
    const auto textFor = [&desk](const char* way) {
        return desk.panel.getToolTips()->textFor(TreeRow(desk.find(way)));
    };
    const QString speed = textFor("NAV_STATE/ground_speed");
    for (const char* part : {"ground_speed", "double", "Speed over &lt;ground&gt;", "m/s", "0 to 80", "3.5"})
        QVERIFY2(speed.contains(part), part);
    const QString mode = textFor("NAV_STATE/mode");
    QVERIFY(mode.contains("IDLE") && mode.contains("waits"));
    QVERIFY(mode.contains("<b>FLYING</b>") && !mode.contains("<b>IDLE</b>"));
    QVERIFY(textFor("NAV_STATE").contains("Where it is"));

    // The view asks for it.
    const QPoint place = desk.tree.visualItemRect(desk.find("NAV_STATE")).center();
    QHelpEvent help(QEvent::ToolTip, place, desk.tree.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(desk.tree.viewport(), &help);
    QVERIFY(QToolTip::text().contains("Where it is"));
    QToolTip::hideText();
}

void tst_monitortree::changesAreShadedAndFade()
{
    TreeDesk desk;
    qint64 now = 10000;
    ChangeHighlighter* const highlighter = desk.panel.getHighlighter();
    highlighter->setClock([&now]() { return now; });
    desk.find("NAV_STATE")->setExpanded(true);
    desk.send(desk.createNav(1));
    highlighter->update();
    const auto shade = [&](const char* field) {
        highlighter->update();
        return desk.find(QString("NAV_STATE/") + field)->background(1).color().alpha();
    };
    QVERIFY(!desk.find("NAV_STATE/ground_speed")->data(1, Qt::BackgroundRole).isValid());
    desk.send(desk.createNav(2));
    const int full = shade("ground_speed");
    QVERIFY(full > 80 && full < 160); // seen, and the text stays readable
    QVERIFY(!desk.find("NAV_STATE/mode")->data(1, Qt::BackgroundRole).isValid());
    now += 500;
    QVERIFY(shade("ground_speed") < full);
    // A value that changes all the time is shaded less than one that seldom does.
    desk.send(desk.createNav(3, 1));
    QVERIFY(shade("ground_speed") < full / 2);
    QCOMPARE(shade("mode"), full);
    now += 1100;
    highlighter->update();
    QVERIFY(!desk.find("NAV_STATE/mode")->data(1, Qt::BackgroundRole).isValid());
    // Off: what is shaded goes at once, and rows that are taken away meanwhile are not touched.
    desk.send(desk.createNav(4, 2));
    QVERIFY(shade("mode") > 0);
    Preferences preferences;
    preferences.highlight = false;
    desk.setPreferences(preferences);
    QVERIFY(!desk.find("NAV_STATE/mode")->data(1, Qt::BackgroundRole).isValid());
    desk.setPreferences(Preferences());
    desk.find("BATTERY")->setExpanded(true);
    desk.sendCells(3);
    desk.find("BATTERY/cells")->setExpanded(true);
    highlighter->update();
    desk.sendCells(1);
    highlighter->update();
    desk.tree.clear();
}

void tst_monitortree::silentTypesAreGreyed()
{
    TreeDesk desk;
    qint64 now = 1000;
    SilenceWatch* const watch = desk.panel.getSilence();
    watch->setClock([&now]() { return now; });
    const auto isGrey = [&desk](const char* way) {
        return desk.find(way)->data(0, Qt::ForegroundRole).isValid() &&
               desk.find(way)->data(1, Qt::ForegroundRole).isValid();
    };
    for (int i = 0; i < 5; ++i, now += 1000)
        desk.send(desk.createNav(i), 3600000 + now);
    desk.sendCells(1); // once is too little to tell
    now += 3000;
    watch->check();
    QVERIFY(!isGrey("NAV_STATE"));
    now += 2000;
    watch->check();
    QVERIFY(isGrey("NAV_STATE") && isGrey("NAV_STATE/mode") && isGrey("NAV_STATE/place/place [0]/x"));
    QCOMPARE(desk.find("NAV_STATE")->text(1), QString("no message for 6 s, since 01:00:05 UTC"));
    QVERIFY(desk.panel.getToolTips()->textFor(TreeRow(desk.find("NAV_STATE"))).contains("since 01:00:05"));
    QVERIFY(!isGrey("BATTERY"));
    // The colours of rows go with the palette, also while nothing is shown, and stay readable.
    desk.panel.getPins()->setPinned(desk.nav, true);
    const qint64 pin = desk.find("NAV_STATE")->icon(0).cacheKey();
    desk.getLatest()->setSuspended(true);
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    desk.tree.setPalette(dark);
    desk.getLatest()->setSuspended(false);
    QCOMPARE(desk.find("NAV_STATE/mode")->foreground(0).color(), Theme::faintText(dark));
    QVERIFY(Theme::faintText(dark).lightness() > 130 && Theme::faintText(QPalette(Qt::white)).lightness() < 130);
    QVERIFY(desk.find("NAV_STATE")->icon(0).cacheKey() != pin);
    desk.send(desk.createNav(9));
    QVERIFY(!desk.find("NAV_STATE/mode")->data(1, Qt::ForegroundRole).isValid());
    QCOMPARE(desk.find("NAV_STATE")->text(1), QString());
    // While the views are paused nothing can be told.
    desk.getLatest()->setSuspended(true);
    now += 60000;
    watch->check();
    desk.getLatest()->setSuspended(false);
    watch->check();
    QVERIFY(!isGrey("NAV_STATE"));
    // After a jump in a recording, what was before says nothing: the time since when may be still to come.
    now += 6000;
    watch->check();
    QVERIFY(isGrey("NAV_STATE") && desk.find("NAV_STATE")->text(1).contains("since"));
    Q_EMIT desk.getLatest()->forgotten(desk.nav);
    QVERIFY(!isGrey("NAV_STATE") && desk.find("NAV_STATE")->text(1).isEmpty());
    now += 60000;
    watch->check();
    QVERIFY(!isGrey("NAV_STATE"));
}

QTEST_MAIN(tst_monitortree)
#include "tst_monitortree.moc"
