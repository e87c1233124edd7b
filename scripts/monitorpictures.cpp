// Puts the monitor's window into states that only somebody's hands lead to, and saves a picture of each: dialogs, tool
// tips, views that are paused, a recording that grows, colours that change. For scripts/screenshots.
//
// usage: monitor_pictures FOLDER RECORDING [light|dark [bytes]]; with "bytes" the picture of these only

#include "connectdialog.h"
#include "findbar.h"
#include "language.h"
#include "messagespanel.h"
#include "messagetreewidget.h"
#include "plotseries.h"
#include "preferencesdialog.h"
#include "testwindow.h"
#include "theme.h"
#include "waitfor.h"

#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QFile>
#include <QHelpEvent>
#include <QPainter>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolTip>

#include <cstdio>

namespace
{

class Pictures
{
public:
    Pictures(const QString& folder, const QString& recording, Theme::Kind theme)
        : m_folder(folder)
        , m_recording(recording)
        , m_theme(theme)
    {
        Theme::apply(theme);
    }

    bool makeAll();
    bool makeBytes();

private:
    // Waits for what is never sure to come in time on a busy computer, too.
    void wait(const std::function<bool()>& condition) { m_isGood = waitFor(condition, 30000) && m_isGood; }
    void show(TestWindow* window);
    void showSimulation(TestWindow* window);
    void save(const TestWindow& window, const QString& name);

    void makeEmpty();
    void makePaused();
    void makeRecording();
    void makeConnect();
    void makeSettings();
    void makeFound();
    void makeToolTip();
    void makePlot();

    QString m_folder;
    QString m_recording;
    QTemporaryDir m_work;
    Theme::Kind m_theme;
    bool m_isGood = true;
};

void Pictures::show(TestWindow* window)
{
    Preferences preferences;
    preferences.theme = m_theme;
    preferences.decimals = 3;
    window->getDesk()->setPreferences(preferences);
    window->resize(1280, 800);
    window->show();
    QCoreApplication::processEvents();
}

void Pictures::showSimulation(TestWindow* window)
{
    show(window);
    window->openSimulation();
    wait([window]() { return window->getTree()->topLevelItemCount() >= 16; });
}

// The window with what lies on it. Without a screen, each window can be painted only by itself.
void Pictures::save(const TestWindow& window, const QString& name)
{
    QCoreApplication::processEvents();
    QPixmap picture = const_cast<TestWindow&>(window).grab();
    QPainter painter(&picture);
    const QWidgetList others = QApplication::topLevelWidgets();
    for (QWidget* other : others) {
        if (other == &window || !other->isVisible())
            continue;
        const QPoint place = window.mapFromGlobal(other->mapToGlobal(QPoint()));
        painter.drawPixmap(place, other->grab());
        painter.setPen(window.palette().color(QPalette::Dark));
        painter.drawRect(QRect(place, other->size()).adjusted(-1, -1, 0, 0));
    }
    painter.end();
    const QString path =
        QStringLiteral("%1/%2%3.png").arg(m_folder, name, m_theme == Theme::Dark ? QStringLiteral("-dark") : QString());
    m_isGood = picture.save(path) && m_isGood;
}

void Pictures::makeEmpty()
{
    TestWindow window;
    show(&window);
    save(window, QStringLiteral("empty"));
}

void Pictures::makePaused()
{
    TestWindow window;
    showSimulation(&window);
    window.getWatches()->pin(QStringLiteral("*/VFR_HUD/alt"));
    wait([&]() { return window.getSources()->getMessageRate() > 0; });
    window.setViewsPaused(true);
    save(window, QStringLiteral("paused"));
}

void Pictures::makeRecording()
{
    TestWindow window;
    showSimulation(&window);
    window.openAddress(m_recording);
    window.openAddress(QStringLiteral("tcp:127.0.0.1:1")); // where nobody listens
    SourceSession* const session = window.getSources()->getSession(0);
    QString error;
    m_isGood = session->startRecording(m_work.filePath(QStringLiteral("today.tlog")), &error) && m_isGood;
    wait([&]() { return session->getRecorder().getDuration() >= 2000; });
    wait([&]() { return window.getSources()->getSession(2)->getState() == SourceSession::Waiting; });
    save(window, QStringLiteral("recording"));
}

void Pictures::makeConnect()
{
    QFile schema(m_work.filePath(QStringLiteral("car.proto")));
    m_isGood = schema.open(QIODevice::WriteOnly) && m_isGood;
    schema.write("syntax = \"proto3\";\nmessage Car { strin name = 1; }\n");
    schema.close();
    TestWindow window;
    show(&window);
    SourceFactory factory;
    ConnectDialog dialog(
        &factory, [](const SourceOptions&, QString*) { return false; }, &window);
    SourceOptions options;
    options.address = QStringLiteral("udp:0.0.0.0:14550");
    options.definitions = schema.fileName();
    dialog.show();
    dialog.setOptions(options);
    save(window, QStringLiteral("connect"));
}

void Pictures::makeSettings()
{
    TestWindow window;
    showSimulation(&window);
    window.showPreferences();
    QDialog* const dialog = window.findChild<PreferencesDialog*>();
    const QList<QCheckBox*> boxes = dialog->findChildren<QCheckBox*>();
    for (QCheckBox* box : boxes)
        box->setChecked(true);
    save(window, QStringLiteral("settings"));
    dialog->reject();
}

void Pictures::makeFound()
{
    TestWindow window;
    showSimulation(&window);
    window.find<TreePanel>()->getFindBar()->find(QStringLiteral("xyzzy"));
    QElapsedTimer sinceThen; // the window looks four times a second
    sinceThen.start();
    wait([&]() { return sinceThen.elapsed() > 600; });
    save(window, QStringLiteral("found-nothing"));
}

void Pictures::makeToolTip()
{
    TestWindow window;
    showSimulation(&window);
    MessageTreeWidget* const tree = window.getTree();
    const QList<QTreeWidgetItem*> found = tree->findItems(QStringLiteral("base_mode"), Qt::MatchRecursive);
    if (!found.isEmpty()) {
        tree->setCurrentItem(found.first());
        const QPoint place = tree->visualItemRect(found.first()).center();
        QHelpEvent event(QEvent::ToolTip, place, tree->viewport()->mapToGlobal(place));
        QApplication::sendEvent(tree->viewport(), &event);
    }
    wait([]() { return QToolTip::isVisible(); });
    save(window, QStringLiteral("tooltip"));
    QToolTip::hideText();
    wait([]() { return !QToolTip::isVisible(); });
}

// Many units in little room, in colours that the window did not begin with.
void Pictures::makePlot()
{
    TestWindow window;
    const Theme::Kind theme = m_theme;
    m_theme = theme == Theme::Dark ? Theme::Light : Theme::Dark;
    showSimulation(&window);
    PlotPanel* const panel = window.getPlot();
    for (const char* field : {"ATTITUDE/roll", "VFR_HUD/alt", "VFR_HUD/airspeed", "SYS_STATUS/voltage_battery"})
        window.getPlot()->plot(QLatin1String("*/") + QLatin1String(field));
    window.findChild<QDockWidget*>(QStringLiteral("plot"))->raise();
    wait([&]() { return panel->getSeries().front()->getMessageCount() > 100; });
    m_theme = theme;
    Preferences preferences = window.getDesk()->getPreferences();
    preferences.theme = theme;
    window.getDesk()->setPreferences(preferences);
    panel->refresh();
    save(window, QStringLiteral("plot-narrow"));
}

// A message of the list with the bytes of one of its fields.
bool Pictures::makeBytes()
{
    TestWindow window;
    showSimulation(&window);
    Desk* const desk = window.getDesk();
    const FieldPath yaw = FieldPath::fromExpression(QStringLiteral("*/ATTITUDE/yaw"));
    window.find<TypePanel>()->chooseWhenSeen({QStringLiteral("ATTITUDE")});
    desk->chooseTypes({{yaw.getMessageInfo(), QString()}});
    MessagesPanel* const messages = window.find<MessagesPanel>();
    Q_EMIT desk->wanted(messages);
    Q_EMIT desk->bytesWanted();
    const QAbstractItemModel* const list = messages->getView()->model();
    wait([list]() { return list->rowCount() > 20; });
    messages->getView()->selectRow(list->rowCount() - 3);
    Q_EMIT desk->fieldWanted(yaw, QStringLiteral("1:1"));
    save(window, QStringLiteral("messages"));
    return m_isGood;
}

bool Pictures::makeAll()
{
    makeEmpty();
    makePaused();
    makeRecording();
    makeConnect();
    makeSettings();
    makeFound();
    makeToolTip();
    makePlot();
    makeBytes();
    return m_isGood;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Language::install(QString());
    Theme::initialize();
    const QStringList arguments = QApplication::arguments();
    Theme::Kind theme = Theme::Light;
    if (arguments.size() < 3 || (arguments.size() > 3 && !Theme::find(arguments.at(3), &theme))) {
        std::fprintf(stderr, "usage: monitor_pictures FOLDER RECORDING [light|dark]\n");
        return 1;
    }
    Pictures pictures(arguments.at(1), arguments.at(2), theme);
    if (arguments.size() > 4 ? pictures.makeBytes() : pictures.makeAll())
        return 0;
    std::fprintf(stderr, "monitor_pictures: not all states could be reached\n");
    return 2;
}
