#include "dumpoptions.h"

#include "inputhelp.h"

#include <QCommandLineParser>
#include <QCoreApplication>

CommandLine::Result DumpOptions::parse(const QStringList& arguments, DumpOptions* options, QString* text)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Prints the messages of a recording or a live stream: one JSON object a line and message.\n\n"
            "INPUT is one of\n%1\n\nWhat it brings is found out: MAVLink with times (tlog) or without (raw), MCAP, "
            "or,\n"
            "with --type, messages of Protocol Buffers with lengths between them. Of UDP, TCP and serial ports these\n"
            "come one a datagram, or with varint lengths, unless --framing says something else.\n"
            "Problems go to the error stream. Exit status: 0; 1 for wrong usage; 2 for an input or a definition that\n"
            "cannot be read, an input that is not recognised, and an output that cannot be written.")
            .arg(inputHelp()));
    const QCommandLineOption interpreted(QStringLiteral("interpreted"),
                                         QStringLiteral("Print values as people read them, with units and names."));
    const QCommandLineOption stats(QStringLiteral("stats"),
                                   QStringLiteral("Print no messages but one JSON object of counts at the end."));
    const QCommandLineOption confidential(QStringLiteral("confidential"),
                                          QStringLiteral("Print confidential fields too, which are null else."));
    const QCommandLineOption select(QStringLiteral("select"),
                                    QStringLiteral("Print only the message types and fields that EXPRESSION names, "
                                                   "such as \"*/ATTITUDE/roll\"; can be repeated."),
                                    QStringLiteral("EXPRESSION"));
    parser.addOptions({interpreted, stats, select});
    parser.addOptions(SourceArguments::getOptions());
    parser.addOption(confidential);
    CommandLine::addInfoOptions(&parser);
    parser.addPositionalArgument(QStringLiteral("INPUT"), QStringLiteral("What to read."));

    const CommandLine::Result result = CommandLine::parse(&parser, arguments, text);
    if (result != CommandLine::Run)
        return result;
    if (!options->source.read(parser, text))
        return CommandLine::Wrong;
    const QStringList inputs = parser.positionalArguments();
    if (inputs.size() != 1) {
        *text = inputs.isEmpty() ? QStringLiteral("no input is named") : QStringLiteral("more than one input is named");
        return CommandLine::Wrong;
    }
    if (!InputAddress::parse(inputs.constFirst(), &options->input, text))
        return CommandLine::Wrong;
    options->selections = parser.values(select);
    options->interpreted = parser.isSet(interpreted);
    options->statistics = parser.isSet(stats);
    options->confidential = parser.isSet(confidential);
    if (options->interpreted && options->statistics) {
        *text = QStringLiteral("--stats prints no values that --interpreted could change");
        return CommandLine::Wrong;
    }
    return CommandLine::Run;
}
