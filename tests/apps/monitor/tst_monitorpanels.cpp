#include "docklayout.h"
#include "pathexpressionlineedit.h"
#include "testbase.h"
#include "treedesk.h"
#include "watch.h"
#include "watchbar.h"
#include "watcheditor.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>

/** What panels are told, each on its desk and without the window. */
class tst_monitorpanels : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aPanelIsARowOfATable();
    void allWhoAskSeeEveryMessage();
    void watchesFollowTheirExpressions();
};

namespace
{

/** Writes down what it is told. */
class Listener : public Panel
{
public:
    explicit Listener(Desk* desk)
        : tap(desk->getTap(), [this](const Message* message) {
            messages.append(message);
            if (meanwhile)
                meanwhile();
        })
    {
    }

    QWidget* getWidget() override { return widget.get(); }
    void addActionsTo(const PanelMenus& menus) override { menus.view->addAction("Listen"); }
    void saveSettings(QSettings& settings) override { settings.setValue("listener", told.join(' ')); }
    void restoreSettings(QSettings& settings) override { told = settings.value("listener").toStringList(); }
    void followPreferences(const Preferences& preferences) override { told << QString::number(preferences.tickRate); }
    void tick() override { told << "tick"; }
    void setViewsPaused(bool paused) override { told << (paused ? "paused" : "resumed"); }
    void renew() override { told << "renewed"; }
    void forget(const MessageInfo* info) override { told << "forgot " + info->getName(); }
    bool isFilled() const override { return !messages.isEmpty(); }

    std::unique_ptr<QLabel> widget{new QLabel("listener")};
    QStringList told;
    QVector<const Message*> messages;
    std::function<void()> meanwhile;
    TapListener tap;
};

template <typename Kind>
Panel* create(Desk* desk)
{
    return new Kind(desk);
}

} // namespace

void tst_monitorpanels::aPanelIsARowOfATable()
{
    TreeDesk desk;
    QMainWindow window; // whose docks outlive what lies in them
    PanelSet panels(&desk, {{"first", "First", {PanelPlace::Left, 300, 0, nullptr, nullptr}, create<Listener>},
                            {"second", "Second", {PanelPlace::Left, 0, 0, "first", nullptr, true}, create<Listener>}});
    DockLayout docks(&window, &panels);
    QMenu menu;
    docks.addActionsTo(&menu);
    panels.addActionsTo({&menu, &menu, &menu, &menu, &menu, nullptr});
    QStringList entries;
    for (const QAction* action : menu.actions())
        entries << action->text();
    QCOMPARE(entries.join(", "), QString("First, Second, Listen, Listen"));
    QDockWidget* const second = window.findChild<QDockWidget*>("second");
    docks.arrange();
    QVERIFY(second->isHidden()); // until it is filled
    docks.show(second->widget());
    QVERIFY(!second->isHidden());
    const QByteArray both = docks.save();
    window.addDockWidget(Qt::BottomDockWidgetArea, second);
    second->setFloating(true);
    docks.reset();
    QVERIFY(second->isHidden() && !second->isFloating());
    QCOMPARE(int(window.dockWidgetArea(second)), int(Qt::LeftDockWidgetArea));
    QVERIFY(!docks.restore("nonsense") && docks.restore(both));
    QVERIFY(!second->isHidden());

    Preferences preferences;
    preferences.tickRate = 7;
    desk.setPreferences(preferences);
    desk.setPaused(true);
    desk.setPaused(false);
    desk.setConfidentialShown(false);
    Q_EMIT desk.getLatest()->forgotten(desk.nav);
    panels.tick();
    QTemporaryDir folder;
    QSettings settings(folder.filePath("panels.ini"), QSettings::IniFormat);
    panels.saveSettings(settings);
    panels.restoreSettings(settings);
    QCOMPARE(panels.find<Listener>()->told.join(", "), QString("7 paused resumed renewed forgot NAV_STATE tick"));
}

void tst_monitorpanels::allWhoAskSeeEveryMessage()
{
    TreeDesk desk;
    std::unique_ptr<Listener> two(new Listener(&desk));
    std::unique_ptr<Listener> three;
    Listener one(&desk);
    Listener last(&desk);
    one.tap.setTypes({desk.nav});
    last.tap.setTypes({desk.nav});
    two->tap.setTypes({desk.nav, desk.battery});
    desk.send(desk.createNav(1));
    desk.sendCells(1);
    QCOMPARE(one.messages.size(), 1);
    QCOMPARE(two->messages.size(), 2);
    QCOMPARE(two->messages.first(), one.messages.first()); // one object for both

    // Of those who ask, one goes and another comes while a message is given out.
    one.meanwhile = [&]() {
        two.reset();
        three.reset(new Listener(&desk));
        three->tap.setTypes({desk.battery});
        one.meanwhile = nullptr;
    };
    desk.send(desk.createNav(2));
    desk.sendCells(2);
    desk.send(desk.createNav(3));
    QCOMPARE(one.messages.size(), 3);
    QCOMPARE(last.messages.size(), 3);
    QCOMPARE(three->messages.size(), 1);
    three.reset();
    QVERIFY(desk.getTap()->wants(desk.nav) && !desk.getTap()->wants(desk.battery));
}

void tst_monitorpanels::watchesFollowTheirExpressions()
{
    TreeDesk desk;
    MessageInfo* const own = new MessageInfo("Point"); // the same type, received on its own
    TestFieldInfo* const ownX = new TestFieldInfo("x");
    own->addField(ownX);
    MessageInfo* const fix = new MessageInfo("geo/msg/Fix");
    fix->addField(new TestFieldInfo("y"));
    FormatRegistry::getInstance()->removeFormat(&desk.format);
    desk.format.addMessageInfo(own);
    desk.format.addMessageInfo(fix);
    FormatRegistry::getInstance()->addFormat(&desk.format);
    WatchBar bar(&desk);
    const auto texts = [&bar]() {
        QStringList texts;
        for (const Watch* watch : bar.getWatches())
            texts << watch->getName() + ' ' + watch->getText();
        return texts.join(" | ");
    };
    bar.pin("desk/NAV_STATE/place[1]/x", "height");
    bar.pin("desk/NAV_STATE/place[1]/x");
    QCOMPARE(texts(), QString("height N/A"));
    // What is typed offers what exists, and a wildcard pins every match: each type with a field of that name.
    PathExpressionLineEdit* const line = bar.getEditor()->findChild<PathExpressionLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, "*/NAV_STATE/mo");
    QCOMPARE(line->completer()->model()->rowCount(), 1);
    QCOMPARE(line->completer()->model()->index(0, 0).data().toString(), QString("desk/NAV_STATE/mode"));
    line->completer()->popup()->hide();
    bar.getEditor()->setExpression("desk/*/x");
    bar.getEditor()->findChild<QPushButton*>()->click();
    bar.pin("desk/NAV_STATE/place/x");
    bar.pin("desk/geo/msg/Fix/y");
    desk.send(desk.createNav(1));
    desk.send((new TestMessage(own))->set(ownX, 3.5));
    QCOMPARE(texts(),
             QString("height 2.5 m | Point.x N/A | Point.x 3.5 | NAV_STATE.place.x 1.5 m, 2.5 m | geo/msg/Fix.y N/A"));
    desk.send(new TestMessage(desk.nav));
    QCOMPARE(texts(), QString("height N/A | Point.x N/A | Point.x 3.5 | NAV_STATE.place.x N/A | geo/msg/Fix.y N/A"));
}

QTEST_MAIN(tst_monitorpanels)
#include "tst_monitorpanels.moc"
