#include "findbar.h"
#include "language.h"
#include "mainwindow.h"
#include "monitoroptions.h"
#include "preferences.h"
#include "settingsfile.h"
#include "sourcemodel.h"
#include "theme.h"
#include "treepanel.h"
#include "typepanel.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <QStyle>
#include <QTimer>

#include <cstdio>

// Exit statuses: 0 ended by the user, 1 wrong usage, 2 what was asked for could not be opened or saved.

namespace
{

// Whoever asks for help, or asks wrongly, needs no display to get an answer.
MonitorOptions readOptions(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Language::install(QString());
    MonitorOptions options;
    options.read();
    return options;
}

void savePictureAndQuit(MainWindow* window, const QString& path)
{
    const bool saved = window->grab().save(path);
    if (!saved)
        std::fprintf(stderr, "corvel-monitor: %s cannot be written\n", qPrintable(path));
    QCoreApplication::exit(saved ? 0 : 2);
}

/** Uses what each of @p expressions names, now or later; the exit status where that cannot be, else 0. */
int wishAll(MainWindow* window, const char* use, const QStringList& expressions)
{
    for (const QString& expression : expressions) {
        QString fault;
        if (!window->getDesk()->wish(QLatin1String(use), expression, &fault))
            return std::fprintf(stderr, "corvel-monitor: this program was built without the %s\n", use), 2;
        if (!fault.isEmpty())
            return std::fprintf(stderr, "corvel-monitor: --%s %s: %s\n", use, qPrintable(expression),
                                qPrintable(fault)),
                   1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
#if QT_VERSION < 0x060000
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QCoreApplication::setApplicationName(QLatin1String("corvel-monitor"));
    QCoreApplication::setApplicationVersion(QLatin1String(CORVEL_VERSION));
    const MonitorOptions options = readOptions(argc, argv);
    QApplication application(argc, argv);

    QIcon icon;
    for (const int size : {32, 64, 128})
        icon.addFile(QStringLiteral(":/icons/corvel-monitor-%1.png").arg(size));
    QApplication::setWindowIcon(icon);

    Theme::initialize();
    const bool forPicture = !options.screenshot.isEmpty();
    std::unique_ptr<QSettings> settings;
    QString problem;
    if (!options.settings.isEmpty() || !forPicture)
        settings =
            SettingsFile::open(options.settings.isEmpty() ? SettingsFile::defaultPath() : options.settings, &problem);
    Preferences preferences;
    if (settings)
        preferences.restore(*settings);
    Language::install(preferences.language); // before anything is made that says something
    MainWindow window;
    const QSize title(0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight));
    if (options.size.isValid())
        window.resize(options.size);
    else if (!forPicture) // which is as large as it always is
        window.resize(window.size().boundedTo(window.screen()->availableSize() - title));
    window.setPlayback(options.playback);
    window.setSourceDefinitions(options.source);
    window.getPanels().find<TypePanel>()->chooseWhenSeen(options.forms);
    if (!options.forms.isEmpty())
        window.showPanel(QLatin1String("forms"));
    for (const QString& panel : options.panels)
        if (!window.showPanel(panel))
            return std::fprintf(stderr, "corvel-monitor: there is no panel %s\n", qPrintable(panel)), 1;
    bool opened = true;
    for (const QString& path : options.definitions)
        opened = window.loadDialect(path, QString()) && opened;
    if (!options.annotations.isEmpty())
        window.loadAnnotations(options.annotations);
    if (settings) {
        window.restoreSettings(*settings);
        window.setSettings(std::move(settings));
        if (!problem.isEmpty())
            window.showError(problem);
    }
    if (options.hasTheme)
        Theme::apply(options.theme);
    int status = wishAll(&window, "watch", options.watches);
    status = status ? status : wishAll(&window, "plot", options.plots);
    if (status)
        return status;
    opened = opened && window.openAll(options.inputs);
    if (opened && (options.hasDemonstration || options.startsWithDemonstration))
        window.openSimulation(options.startsWithDemonstration, options.demonstration);
    if (opened && !options.record.isEmpty()) {
        QString error = MainWindow::tr("There is nothing open to record.");
        SourceModel* const sources = window.getSources();
        opened = sources->getCount() > 0 && sources->startRecording(sources->getSession(0), options.record, &error);
        if (!opened)
            window.showError(error);
    }
    if (!opened) {
        std::fprintf(stderr, "corvel-monitor: %s\n", qPrintable(window.getLastProblem()));
        if (forPicture)
            return 2;
    }
    window.show();
    if (!options.find.isEmpty())
        window.getPanels().find<TreePanel>()->getFindBar()->find(options.find);
    if (forPicture) {
        QTimer::singleShot(int(options.after * 1000), &window,
                           [&]() { savePictureAndQuit(&window, options.screenshot); });
    }
    return QApplication::exec();
}
