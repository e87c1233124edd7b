#include "dumpoptions.h"

#include "inputhelp.h"

#include <QCommandLineParser>
#include <QCoreApplication>

DumpOptions::Result DumpOptions::parse(const QStringList& arguments, DumpOptions* options, QString* text)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "Prints the messages of a recording or a live stream: one JSON object a line and message.\n\n"
            "INPUT is one of\n%1\n\nOf a file or standard input the format is found out: MAVLink with\n"
            "times (tlog) or without (raw), MCAP, or, with --type, messages of Protocol Buffers with lengths between "
            "them.\n"
            "UDP, TCP and serial ports bring raw MAVLink or, with --type, one message a datagram and messages with "
            "varint lengths.\n"
            "Problems go to the error stream. Exit status: 0; 1 for wrong usage; 2 for an input or a definition that\n"
            "cannot be read, an input that is not recognised, and an output that cannot be written.")
            .arg(inputHelp()));
    const QCommandLineOption interpreted(QStringLiteral("interpreted"),
                                         QStringLiteral("Print values as people read them, with units and names."));
    const QCommandLineOption stats(QStringLiteral("stats"),
                                   QStringLiteral("Print no messages but one JSON object of counts at the end."));
    const QCommandLineOption definitions(
        QStringList{QStringLiteral("definitions"), QStringLiteral("dialect"), QStringLiteral("schema")},
        QStringLiteral(
            "File of definitions: a MAVLink dialect (XML) instead of the built-in one, or a Protocol Buffers "
            "schema, a .proto text or a descriptor set; can be repeated. MCAP recordings bring their own."),
        QStringLiteral("FILE"));
    const QCommandLineOption annotations(QStringLiteral("annotations"),
                                         QStringLiteral("Annotation file (JSON), such as for virtual fields."),
                                         QStringLiteral("FILE"));
    const QCommandLineOption format(QStringLiteral("format"),
                                    QStringLiteral("What the input is, \"tlog\", \"raw\", \"mcap\" or \"delimited\", "
                                                   "instead of finding out."),
                                    QStringLiteral("NAME"));
    const QCommandLineOption importPath(QStringLiteral("import-path"),
                                        QStringLiteral("Folder in which imports of schemas are looked for; can be "
                                                       "repeated."),
                                        QStringLiteral("FOLDER"));
    const QCommandLineOption type(QStringLiteral("type"),
                                  QStringLiteral("Full name of the type of all messages, such as \"demo.Car\"."),
                                  QStringLiteral("NAME"));
    const QCommandLineOption framing(QStringLiteral("framing"),
                                     QStringLiteral("How messages of --type lie in the input, \"varint\" or \"u32\" "
                                                    "for the length before each, or \"datagram\" for none."),
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
    parser.addOptions({interpreted, stats, select, definitions, importPath, type, framing, annotations, format,
                       confidential, help, version});
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
    for (const QCommandLineOption* option : {&annotations, &format, &type, &framing}) {
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
    RecordingOptions& recording = options->recording;
    if (parser.isSet(format) && !RecordingOptions::parseFormat(parser.value(format), &recording.format)) {
        *text = QStringLiteral("--format is \"%1\"; it can be \"tlog\", \"raw\", \"mcap\" or \"delimited\"")
                    .arg(parser.value(format));
        return Wrong;
    }
    recording.hasFraming = parser.isSet(framing);
    if (recording.hasFraming && !RecordingOptions::parseFraming(parser.value(framing), &recording.framing)) {
        *text = QStringLiteral("--framing is \"%1\"; it can be \"varint\", \"u32\" or \"datagram\"")
                    .arg(parser.value(framing));
        return Wrong;
    }
    recording.typeName = parser.value(type);
    options->definitions = parser.values(definitions);
    options->importPaths = parser.values(importPath);
    options->annotations = parser.value(annotations);
    options->selections = parser.values(select);
    options->interpreted = parser.isSet(interpreted);
    options->statistics = parser.isSet(stats);
    options->confidential = parser.isSet(confidential);
    return Run;
}
