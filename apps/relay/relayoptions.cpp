#include "relayoptions.h"

#include "inputhelp.h"
#include "inputkind.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>

namespace
{

struct Unit
{
    const char* name;
    double factor;
};

const Unit sizes[] = {
    {"", 1}, {"k", 1024.}, {"M", 1024. * 1024}, {"G", 1024. * 1024 * 1024}, {"T", 1024. * 1024 * 1024 * 1024}};
const Unit times[] = {{"", 1000}, {"ms", 1}, {"s", 1000}, {"min", 60e3}, {"h", 3600e3}, {"d", 86400e3}};

/** Reads a number above 0 with a unit behind it. */
template <std::size_t Count>
bool readNumber(const QString& text, const Unit (&units)[Count], qint64* number)
{
    int digits = 0;
    while (digits < text.size() && (text.at(digits).isDigit() || text.at(digits) == QLatin1Char('.')))
        ++digits;
    for (const Unit& unit : units) {
        bool isRight = false;
        const double value = text.left(digits).toDouble(&isRight) * unit.factor;
        if (!isRight || text.mid(digits) != QLatin1String(unit.name))
            continue;
        if (value < 1 || value > 1e18)
            return false;
        *number = qint64(value);
        return true;
    }
    return false;
}

QString outputHelp()
{
    QString text;
    for (const OutputKind* kind : OutputKind::getAll()) {
        text += QStringLiteral("\n  %1\n      %2, such as %3")
                    .arg(QLatin1String(kind->usage), QLatin1String(kind->title), QLatin1String(kind->example));
        if (kind->defaultPort)
            text += QStringLiteral("; port %1 unless told").arg(kind->defaultPort);
    }
    return text.mid(1);
}

QCommandLineOption option(const char* name, const char* text, const char* value)
{
    return QCommandLineOption(QLatin1String(name), QLatin1String(text), QLatin1String(value));
}

/** Sorts what stands before --to, which is inputs, from what stands behind it. */
bool readAddresses(const QStringList& inputs, const QStringList& outputs, RelayOptions* options, QString* text)
{
    if (inputs.isEmpty() || outputs.isEmpty()) {
        *text =
            inputs.isEmpty() ? QStringLiteral("no input is named") : QStringLiteral("no output is named: --to OUTPUT");
        return false;
    }
    for (const QString& input : inputs) {
        InputAddress address;
        if (!InputAddress::parse(input, &address, text))
            return false;
        options->inputs.append(address);
    }
    for (const QString& output : outputs) {
        OutputAddress address;
        if (!OutputAddress::parse(output, &address, text))
            return false;
        for (const OutputAddress& other : options->outputs) {
            if (other.getName() == address.getName()) {
                *text = QStringLiteral("%1 is named twice").arg(address.getName());
                return false;
            }
        }
        options->outputs.append(address);
    }
    return true;
}

/** Names the sessions of all inputs that can have one, each another, since a server has one reader of a name. */
bool nameSessions(const QString& name, QVector<InputAddress>* inputs, QString* text)
{
    static const QRegularExpression right(QStringLiteral("^[A-Za-z0-9_-]{1,64}$"));
    if (!right.match(name).hasMatch()) {
        *text = QStringLiteral("--session: \"%1\" is no name; it has letters, digits, \"-\" and \"_\"").arg(name);
        return false;
    }
    int count = 0;
    for (InputAddress& address : *inputs)
        if (address.kind->properties & InputKind::SessionProperty)
            address.session = ++count == 1 ? name : QStringLiteral("%1-%2").arg(name).arg(count);
    if (count == 0)
        *text = QStringLiteral("--session: none of the inputs has a server that keeps one; those of mqtt://, mqtts:// "
                               "and jetstream:// do");
    return count > 0;
}

} // namespace

CommandLine::Result RelayOptions::parse(const QStringList& arguments, RelayOptions* options, QString* text)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Passes the messages of recordings and live streams on: any inputs to any outputs.\n\n"
            "INPUT is one of\n%1\n\nOUTPUT is one of\n%2\n\n"
            "Behind --to stands an output, and so do all arguments that follow it. Files keep what other\n"
            "software can read as it came, with its schemas; MAVLink becomes Protocol Buffers in MCAP. A live\n"
            "input that is lost is opened again. The program ends when all its recordings have, or with\n"
            "SIGTERM. Exit status: 0; 1 for wrong usage; 2 for an input or a definition that cannot be read,\n"
            "and an output that cannot be written.")
            .arg(inputHelp(), outputHelp()));
    const QCommandLineOption to = option("to", "Where messages go; outputs can follow one another.", "OUTPUT");
    const QCommandLineOption select =
        option("select",
               "Pass only messages of the types that EXPRESSION names, such as \"*/ATTITUDE @ 1:1\"; can be repeated.",
               "EXPRESSION");
    const QCommandLineOption splitSize =
        option("split-size", "Begin the next file after that many bytes: 1G, 100M.", "SIZE");
    const QCommandLineOption splitTime =
        option("split-time", "Begin the next file after that time: 1h, 10min.", "TIME");
    const QCommandLineOption keep = option(
        "keep", "With --split-size or --split-time: delete the oldest files when all are bigger than that.", "SIZE");
    const QCommandLineOption overwrite(QStringLiteral("overwrite"), QStringLiteral("Replace a file that is there."));
    const QCommandLineOption speed = option(
        "speed", "Play recordings so many times as fast as they were, instead of as fast as possible.", "FACTOR");
    const QCommandLineOption stats =
        option("stats-every", "Tell that often on the error stream what each output took, in a line: 10s.", "TIME");
    const QCommandLineOption buffer =
        option("buffer", "What may wait on disk for an output that is slow or gone; 1G unless told.", "SIZE");
    const QCommandLineOption bufferFolder =
        option("buffer-folder", "Where that waits, so that the next run goes on with it.", "FOLDER");
    const QCommandLineOption session = option(
        "session", "Let servers of mqtt: and jetstream: inputs keep under NAME what is not passed on yet.", "NAME");
    parser.addOptions({to, select, splitSize, splitTime, keep, overwrite, speed, stats, buffer, bufferFolder, session});
    parser.addOptions(SourceArguments::getOptions());
    CommandLine::addInfoOptions(&parser);
    parser.addPositionalArgument(QStringLiteral("INPUT..."), QStringLiteral("What to read."),
                                 QStringLiteral("INPUT..."));

    // More than one argument can stand behind --to, which the parser does not know.
    const int end = int(arguments.indexOf(QStringLiteral("--to")));
    const CommandLine::Result result = CommandLine::parse(&parser, arguments, text);
    if (result != CommandLine::Run)
        return result;
    if (!options->source.read(parser, text))
        return CommandLine::Wrong;
    QStringList inputs;
    QStringList outputs = parser.values(to);
    if (end >= 0) {
        QCommandLineParser before;
        before.addOptions(
            {to, select, splitSize, splitTime, keep, overwrite, speed, stats, buffer, bufferFolder, session});
        before.addOptions(SourceArguments::getOptions());
        before.parse(arguments.mid(0, end));
        inputs = before.positionalArguments();
        outputs += parser.positionalArguments().mid(inputs.size());
    } else {
        inputs = parser.positionalArguments();
    }
    if (!readAddresses(inputs, outputs, options, text) ||
        (parser.isSet(session) && !nameSessions(parser.value(session), &options->inputs, text)))
        return CommandLine::Wrong;
    const auto read = [&](const QCommandLineOption& one, const auto& units, qint64* number) {
        if (!parser.isSet(one) || readNumber(parser.value(one), units, number))
            return true;
        *text = QStringLiteral("--%1: \"%2\" is no number above 0 with a unit")
                    .arg(one.names().constFirst(), parser.value(one));
        return false;
    };
    if (!read(splitSize, sizes, &options->files.splitSize) || !read(splitTime, times, &options->files.splitTime) ||
        !read(keep, sizes, &options->files.keep) || !read(stats, times, &options->statsMs) ||
        !read(buffer, sizes, &options->buffer))
        return CommandLine::Wrong;
    options->files.splitTime *= 1000; // to microseconds
    if (options->files.keep > 0 && options->files.splitSize == 0 && options->files.splitTime == 0) {
        *text = QStringLiteral("--keep needs --split-size or --split-time: only whole files are deleted");
        return CommandLine::Wrong;
    }
    bool isNumber = true;
    if (parser.isSet(speed))
        options->speed = parser.value(speed).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(options->speed) || options->speed < 0) {
        *text = QStringLiteral("--speed: \"%1\" is no factor").arg(parser.value(speed));
        return CommandLine::Wrong;
    }
    options->files.isReplaced = parser.isSet(overwrite);
    options->bufferFolder = parser.value(bufferFolder);
    options->selections = parser.values(select);
    return CommandLine::Run;
}
