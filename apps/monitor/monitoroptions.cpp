#include "monitoroptions.h"

#include "definitions.h"
#include "inputhelp.h"
#include "sourcearguments.h"
#include "standardoutput.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace
{

[[noreturn]] void refuse(const QString& text)
{
    std::fprintf(stderr, "corvel-monitor: %s\n", qPrintable(text));
    std::exit(1);
}

[[noreturn]] void answer(const QString& text)
{
    std::exit(StandardOutput::finish(StandardOutput::print(text)) ? 0 : 2);
}

// Reads an option's number, which is to be @p least or more.
void readNumber(const QCommandLineParser& parser, const QString& option, double least, double* number)
{
    if (!parser.isSet(option))
        return;
    bool ok = false;
    *number = parser.value(option).toDouble(&ok);
    if (!ok || !(*number >= least))
        refuse(QStringLiteral("--%1 takes a number of %2 or more, not \"%3\"")
                   .arg(option)
                   .arg(least)
                   .arg(parser.value(option)));
}

// The options that Qt takes out of the command line when there is a display. Here they only are no mistakes.
void addOptionsOfQt(QCommandLineParser* parser, bool shown)
{
    for (const char* name : {"platform", "platformpluginpath", "platformtheme", "plugin", "qwindowgeometry", "geometry",
                             "qwindowicon", "icon", "qwindowtitle", "title", "session", "style", "stylesheet",
                             "display", "fontengine", "qmljsdebugger"}) {
        QCommandLineOption option(QLatin1String(name), QLatin1String("Of Qt's own."), QLatin1String("value"));
        option.setFlags(shown ? QCommandLineOption::Flags() : QCommandLineOption::HiddenFromHelp);
        parser->addOption(option);
    }
    for (const char* name : {"reverse", "widgetcount", "nograb", "dograb", "sync"}) {
        QCommandLineOption option(QLatin1String(name), QLatin1String("Of Qt's own."));
        option.setFlags(shown ? QCommandLineOption::Flags() : QCommandLineOption::HiddenFromHelp);
        parser->addOption(option);
    }
}

// "vehicle, robot or fleet"
QString demonstrationNames()
{
    QStringList names;
    for (const Demonstration& each : Demonstration::getAll())
        names.append(QLatin1String(each.name));
    const QString last = names.takeLast();
    return names.join(QLatin1String(", ")) + QLatin1String(" or ") + last;
}

QString demonstrationHelp()
{
    QStringList lines;
    for (const Demonstration& each : Demonstration::getAll())
        lines.append(QStringLiteral("%1, %2").arg(QLatin1String(each.name), QLatin1String(each.help)));
    return QLatin1String("Show a simulation: ") + lines.join(QLatin1String("; ")) + QLatin1Char('.');
}

} // namespace

void MonitorOptions::read()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows live what a device says: every field of every message type.\n\nAn input is one of\n%1")
            .arg(inputHelp()));
    parser.addPositionalArgument(QLatin1String("input"),
                                 QLatin1String("What to show. Without one the start page is shown."),
                                 QLatin1String("[input...]"));
    parser.addOptions({
        {QLatin1String("demo"), demonstrationHelp(), QLatin1String("name")},
        {QLatin1String("start"),
         QLatin1String("What to show without an input: page, from which something can be opened, or demo, a simulated "
                       "vehicle that goes when something is opened; default page."),
         QLatin1String("what")},
        {QLatin1String("speed"), QLatin1String("Play a recording <factor> times as fast; 0 is as fast as possible."),
         QLatin1String("factor")},
        {QLatin1String("rate"), QLatin1String("Play a recording without times at <number> messages a second."),
         QLatin1String("number")},
        {QLatin1String("panel"),
         QLatin1String(
             "Show the panel <name> in front: watches, sources, types, statistics, forms, events, messages, bytes, "
             "plot or compare; can be repeated."),
         QLatin1String("name")},
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
    parser.addOptions(SourceArguments::getOptions());
    parser.addHelpOption();
    parser.addVersionOption();
    addOptionsOfQt(&parser, QCoreApplication::arguments().contains(QLatin1String("--help-all")));
    // As Qt writes its own: "-platform" is the same as "--platform".
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    if (!parser.parse(QCoreApplication::arguments()))
        refuse(parser.errorText());
    if (parser.isSet(QLatin1String("help")) || parser.isSet(QLatin1String("help-all")))
        answer(parser.helpText());
    if (parser.isSet(QLatin1String("version")))
        answer(QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion() +
               QLatin1Char('\n'));

    readNumber(parser, QLatin1String("speed"), 0, &playback.factor);
    readNumber(parser, QLatin1String("rate"), 0, &playback.messagesPerSecond);
    readNumber(parser, QLatin1String("after"), 0, &after);

    SourceArguments arguments;
    QString error;
    if (!arguments.read(parser, &error))
        refuse(error);
    annotations = arguments.annotations;
    source.importPaths = arguments.importPaths;
    source.typeName = arguments.stream.typeName;
    source.framing = arguments.stream.framing;
    source.container = arguments.stream.container;
    source.topicTypes = arguments.topicTypes;
    // What messages are told apart by themselves is for every source; the rest is for those that are named here.
    const Definitions kinds;
    for (const QString& path : std::as_const(arguments.definitions))
        (kinds.hasNamedTypes(path) ? source.moreSchemas : definitions).append(path);
    if (!source.moreSchemas.isEmpty())
        source.definitions = source.moreSchemas.takeLast();
    if (!source.typeName.isEmpty() && source.definitions.isEmpty())
        refuse(QStringLiteral("--type needs a schema in --definitions"));

    hasDemonstration = parser.isSet(QLatin1String("demo"));
    if (hasDemonstration)
        demonstration = Demonstration::find(parser.value(QLatin1String("demo")));
    if (!demonstration)
        refuse(QStringLiteral("--demo takes %1").arg(demonstrationNames()));
    const QString start = parser.value(QLatin1String("start"));
    if (parser.isSet(QLatin1String("start")) && start != QLatin1String("page") && start != QLatin1String("demo"))
        refuse(QStringLiteral("--start takes page or demo"));
    hasTheme = parser.isSet(QLatin1String("palette"));
    if (hasTheme && !Theme::find(parser.value(QLatin1String("palette")), &theme))
        refuse(QStringLiteral("--palette takes system, light or dark"));
    if (parser.isSet(QLatin1String("size"))) {
        const QStringList sides = parser.value(QLatin1String("size")).split(QLatin1Char('x'));
        if (sides.size() != 2 || sides.at(0).toInt() < 1 || sides.at(1).toInt() < 1)
            refuse(QStringLiteral("--size takes <width>x<height>"));
        size = QSize(sides.at(0).toInt(), sides.at(1).toInt());
    }
    inputs = parser.positionalArguments();
    startsWithDemonstration = start == QLatin1String("demo") && inputs.isEmpty() && !hasDemonstration;
    panels = parser.values(QLatin1String("panel"));
    forms = parser.values(QLatin1String("form"));
    watches = parser.values(QLatin1String("watch"));
    plots = parser.values(QLatin1String("plot"));
    find = parser.value(QLatin1String("find"));
    record = parser.value(QLatin1String("record"));
    screenshot = parser.value(QLatin1String("screenshot"));
    settings = parser.value(QLatin1String("settings"));
}
