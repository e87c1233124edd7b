#include "findbar.h"
#include "language.h"
#include "mainwindow.h"
#include "recordingopener.h"
#include "settingsfile.h"
#include "sourcemodel.h"
#include "theme.h"
#include "treetools.h"
#include "watchbar.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QLocale>
#include <QTimer>

#include <cstdio>

// Exit statuses: 0 ended by the user, 1 wrong usage, 2 what was asked for could not be opened or saved.

namespace
{

// Reads an option's number; false with a word on the error stream when it is none, or less than @p least.
bool readNumber(const QCommandLineParser& parser, const QString& option, double least, double* number)
{
    if (!parser.isSet(option))
        return true;
    bool ok = false;
    const double value = parser.value(option).toDouble(&ok);
    if (ok && value >= least) {
        *number = value;
        return true;
    }
    std::fprintf(stderr, "corvel-monitor: --%s takes a number of %g or more, not \"%s\"\n", qPrintable(option), least,
                 qPrintable(parser.value(option)));
    return false;
}

void savePictureAndQuit(MainWindow* window, const QString& path)
{
    const bool saved = window->grab().save(path);
    if (!saved)
        std::fprintf(stderr, "corvel-monitor: %s cannot be written\n", qPrintable(path));
    QCoreApplication::exit(saved ? 0 : 2);
}

} // namespace

int main(int argc, char** argv)
{
#if QT_VERSION < 0x060000
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    installLanguage(QLocale());
    QCoreApplication::setApplicationName(QLatin1String("corvel-monitor"));
    QCoreApplication::setApplicationVersion(QLatin1String(CORVEL_VERSION));

    QIcon icon;
    for (const int size : {32, 64, 128})
        icon.addFile(QStringLiteral(":/icons/corvel-monitor-%1.png").arg(size));
    QApplication::setWindowIcon(icon);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QLatin1String("Shows live what a device says: every field of every message type."));
    parser.addPositionalArgument(QLatin1String("input"),
                                 QLatin1String("A recording, \"-\" for standard input, udp:ADDRESS:PORT to listen, "
                                               "tcp:HOST:PORT to connect, or ws://HOST:PORT for a Foxglove server. "
                                               "Without one a simulated vehicle is shown."),
                                 QLatin1String("[input...]"));
    parser.addOptions({
        {QLatin1String("dialect"), QLatin1String("Use the MAVLink definitions in <file>."), QLatin1String("file")},
        {QLatin1String("annotations"), QLatin1String("Add the annotations in <file> to them."), QLatin1String("file")},
        {QLatin1String("schema"),
         QLatin1String("Decode inputs with the Protocol Buffers schema in <file>; can be repeated. MCAP recordings "
                       "bring their own."),
         QLatin1String("file")},
        {QLatin1String("import-path"), QLatin1String("Look for imports of the schema in <folder>; can be repeated."),
         QLatin1String("folder")},
        {QLatin1String("type"), QLatin1String("Full <name> of the type of all messages, such as demo.Car."),
         QLatin1String("name")},
        {QLatin1String("framing"),
         QLatin1String("How messages of --type lie in the input: varint or u32 for the length before each, or "
                       "datagram for none."),
         QLatin1String("name")},
        {QLatin1String("speed"), QLatin1String("Play a recording <factor> times as fast; 0 is as fast as possible."),
         QLatin1String("factor")},
        {QLatin1String("rate"), QLatin1String("Play a recording without times at <number> messages a second."),
         QLatin1String("number")},
        {QLatin1String("form"), QLatin1String("Show a form of the message type <type>; can be repeated."),
         QLatin1String("type")},
        {QLatin1String("watch"), QLatin1String("Watch the field that <expression> names; can be repeated."),
         QLatin1String("expression")},
        {QLatin1String("record"), QLatin1String("Record what the first input brings in <file>."),
         QLatin1String("file")},
        {QLatin1String("plot"), QLatin1String("Plot the field that <expression> names; can be repeated."),
         QLatin1String("expression")},
        {QLatin1String("find"), QLatin1String("Show only rows of the tree that match <text>."), QLatin1String("text")},
        {QLatin1String("palette"), QLatin1String("Colours of the window: system, light or dark."),
         QLatin1String("name")},
        {QLatin1String("screenshot"), QLatin1String("Save a picture of the window to <file> and exit."),
         QLatin1String("file")},
        {QLatin1String("after"), QLatin1String("Wait <seconds> before the picture is taken; default 5."),
         QLatin1String("seconds")},
        {QLatin1String("settings"),
         QLatin1String("Keep settings in <file> instead of the user's own; with --screenshot none are kept otherwise."),
         QLatin1String("file")},
        {QLatin1String("size"), QLatin1String("Size of the window, as <width>x<height>."), QLatin1String("size")},
    });
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application); // exits with 1 when an option is wrong

    StreamSource::Playback playback;
    double after = 5;
    if (!readNumber(parser, QLatin1String("speed"), 0, &playback.factor) ||
        !readNumber(parser, QLatin1String("rate"), 0, &playback.messagesPerSecond) ||
        !readNumber(parser, QLatin1String("after"), 0, &after))
        return 1;

    SourceOptions definitions;
    definitions.moreSchemas = parser.values(QLatin1String("schema"));
    if (!definitions.moreSchemas.isEmpty())
        definitions.definitions = definitions.moreSchemas.takeLast();
    definitions.importPaths = parser.values(QLatin1String("import-path"));
    definitions.typeName = parser.value(QLatin1String("type"));
    definitions.framing = parser.value(QLatin1String("framing"));
    RecordingOptions recording;
    if (!definitions.framing.isEmpty() && !RecordingOptions::parseFraming(definitions.framing, &recording.framing)) {
        std::fprintf(stderr, "corvel-monitor: --framing takes varint, u32 or datagram\n");
        return 1;
    }
    if (!definitions.typeName.isEmpty() && definitions.definitions.isEmpty()) {
        std::fprintf(stderr, "corvel-monitor: --type needs a --schema\n");
        return 1;
    }

    Theme::Kind theme = Theme::System;
    if (parser.isSet(QLatin1String("palette")) && !Theme::find(parser.value(QLatin1String("palette")), &theme)) {
        std::fprintf(stderr, "corvel-monitor: --palette takes system, light or dark\n");
        return 1;
    }

    Theme::initialize();
    MainWindow window;
    if (parser.isSet(QLatin1String("size"))) {
        const QStringList sides = parser.value(QLatin1String("size")).split(QLatin1Char('x'));
        if (sides.size() != 2 || sides.at(0).toInt() < 1 || sides.at(1).toInt() < 1) {
            std::fprintf(stderr, "corvel-monitor: --size takes <width>x<height>\n");
            return 1;
        }
        window.resize(sides.at(0).toInt(), sides.at(1).toInt());
    }
    const bool forPicture = parser.isSet(QLatin1String("screenshot"));
    window.setPlayback(playback);
    window.setSourceDefinitions(definitions);
    window.showFormsWhenSeen(parser.values(QLatin1String("form")));
    bool opened =
        !parser.isSet(QLatin1String("dialect")) ||
        window.loadDialect(parser.value(QLatin1String("dialect")), parser.value(QLatin1String("annotations")));
    if (parser.isSet(QLatin1String("annotations")) && !parser.isSet(QLatin1String("dialect")))
        window.loadAnnotations(parser.value(QLatin1String("annotations")));
    if (parser.isSet(QLatin1String("settings")) || !forPicture) {
        const QString path = parser.isSet(QLatin1String("settings")) ? parser.value(QLatin1String("settings"))
                                                                     : SettingsFile::defaultPath();
        QString problem;
        std::unique_ptr<QSettings> settings = SettingsFile::open(path, &problem);
        window.restoreSettings(*settings);
        window.setSettings(std::move(settings));
        if (!problem.isEmpty())
            window.showError(problem);
    }
    if (parser.isSet(QLatin1String("palette")))
        Theme::apply(theme);
    for (const QString& expression : parser.values(QLatin1String("watch")))
        window.getWatches()->pin(expression);
    for (const QString& expression : parser.values(QLatin1String("plot")))
        window.getTreeTools()->plot(expression);
    const QStringList inputs = parser.positionalArguments();
    opened = opened && window.openAll(inputs);
    if (opened && inputs.isEmpty())
        window.openSimulation(true);
    if (opened && parser.isSet(QLatin1String("record"))) {
        QString error;
        SourceModel* const sources = window.getSources();
        opened = sources->startRecording(sources->getSession(0), parser.value(QLatin1String("record")), &error);
        if (!opened)
            window.showError(error);
    }
    if (!opened) {
        std::fprintf(stderr, "corvel-monitor: %s\n", qPrintable(window.getLastProblem()));
        if (forPicture)
            return 2;
    }
    window.show();
    if (parser.isSet(QLatin1String("find")))
        window.getTreeTools()->getFindBar()->find(parser.value(QLatin1String("find")));
    if (forPicture) {
        QTimer::singleShot(int(after * 1000), &window,
                           [&]() { savePictureAndQuit(&window, parser.value(QLatin1String("screenshot"))); });
    }
    return QApplication::exec();
}
