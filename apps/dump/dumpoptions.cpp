#include "dumpoptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

DumpOptions::Result DumpOptions::parse(const QStringList& arguments, DumpOptions* options, QString* text)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Prints the messages of a recording or a live stream: one JSON object a line and message.\n\n"
        "INPUT is a file, \"-\" for standard input, udp:[ADDRESS][:PORT] to listen for datagrams, or tcp:HOST[:PORT].\n"
        "Problems go to the error stream. Exit status: 0; 1 for wrong usage; 2 for an input or a definition that\n"
        "cannot be read, an input that is not recognised, and an output that cannot be written."));
    const QCommandLineOption interpreted(QStringLiteral("interpreted"),
                                         QStringLiteral("Print values as people read them, with units and names."));
    const QCommandLineOption stats(QStringLiteral("stats"),
                                   QStringLiteral("Print no messages but one JSON object of counts at the end."));
    const QCommandLineOption dialect(QStringLiteral("dialect"),
                                     QStringLiteral("MAVLink definition file (XML) instead of the built-in one."),
                                     QStringLiteral("FILE"));
    const QCommandLineOption annotations(QStringLiteral("annotations"),
                                         QStringLiteral("Annotation file (JSON), such as for virtual fields."),
                                         QStringLiteral("FILE"));
    const QCommandLineOption format(QStringLiteral("format"),
                                    QStringLiteral("How frames lie in the input, \"tlog\" or \"raw\", instead of "
                                                   "finding out."),
                                    QStringLiteral("NAME"));
    const QCommandLineOption confidential(QStringLiteral("confidential"),
                                          QStringLiteral("Print confidential fields too, which are null else."));
    const QCommandLineOption select(QStringLiteral("select"),
                                    QStringLiteral("Print only the message types and fields that EXPRESSION names, "
                                                   "such as \"*/ATTITUDE/roll\"; can be repeated."),
                                    QStringLiteral("EXPRESSION"));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Print this text."));
    const QCommandLineOption version(QStringList{QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Print the version."));
    parser.addOptions({interpreted, stats, select, dialect, annotations, format, confidential, help, version});
    parser.addPositionalArgument(QStringLiteral("INPUT"), QStringLiteral("What to read."));

    if (!parser.parse(arguments)) {
        *text = parser.errorText();
        return Wrong;
    }
    if (parser.isSet(help) || parser.isSet(version)) {
        *text = parser.isSet(help) ? parser.helpText()
                                   : QCoreApplication::applicationName() + QLatin1Char(' ') +
                                         QCoreApplication::applicationVersion() + QLatin1Char('\n');
        return InfoAsked;
    }
    for (const QCommandLineOption* option : {&dialect, &annotations, &format}) {
        if (parser.values(*option).size() > 1) {
            *text = QStringLiteral("--%1 can be given once").arg(option->names().constFirst());
            return Wrong;
        }
    }
    const QStringList inputs = parser.positionalArguments();
    if (inputs.size() != 1) {
        *text = inputs.isEmpty() ? QStringLiteral("no input is named") : QStringLiteral("more than one input is named");
        return Wrong;
    }
    if (!InputAddress::parse(inputs.constFirst(), &options->input, text))
        return Wrong;
    const QString layout = parser.value(format);
    if (layout == QLatin1String("tlog")) {
        options->layout = MavlinkStreamDecoder::TlogLayout;
    } else if (layout == QLatin1String("raw")) {
        options->layout = MavlinkStreamDecoder::RawLayout;
    } else if (parser.isSet(format)) {
        *text = QStringLiteral("--format is \"%1\"; it can be \"tlog\" or \"raw\"").arg(layout);
        return Wrong;
    }
    options->dialect = parser.value(dialect);
    options->annotations = parser.value(annotations);
    options->selections = parser.values(select);
    options->interpreted = parser.isSet(interpreted);
    options->statistics = parser.isSet(stats);
    options->confidential = parser.isSet(confidential);
    return Run;
}
