#include "options.h"

#include "robotsimulation.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QUrl>

namespace
{

const char Description[] =
    "Writes what a made-up multicopter sends: MAVLink version 2, 18 message types at 1 to 50 Hz. Or, as MCAP, what a\n"
    "car sends: nested messages of Protocol Buffers, 2 types at 20 and 1 Hz. Or what a robot sends: messages of ROS\n"
    "2, 10 types at 1 to 100 Hz, with laser scans, pictures and clouds of points.\n"
    "The same options write the same bytes.";

const char OutputHelp[] =
    "A file (a tlog or MCAP when its name ends with .tlog or .mcap, else a raw stream), - for standard output, or "
    "udp:HOST:PORT.";

const int DefaultPort = 14550;
const double FileDuration = 60;
const char FileStart[] = "2024-01-01T12:00:00Z";

/** Reads options and remembers the first that is wrong. */
class OptionReader
{
public:
    explicit OptionReader(const QCommandLineParser& parser)
        : m_parser(parser)
    {
    }

    const QString& getError() const { return m_error; }

    double number(const QString& name, double least, double greatest, double unset)
    {
        if (!m_parser.isSet(name))
            return unset;
        bool ok = false;
        const double value = m_parser.value(name).toDouble(&ok);
        if (!ok || !(value >= least && value <= greatest))
            refuse(name, m_parser.value(name));
        return value;
    }

    quint32 seed(const QString& name, quint32 unset)
    {
        if (!m_parser.isSet(name))
            return unset;
        bool ok = false;
        const quint32 value = m_parser.value(name).toUInt(&ok);
        if (!ok)
            refuse(name, m_parser.value(name));
        return value;
    }

    qint64 time(const QString& name, qint64 unset)
    {
        if (!m_parser.isSet(name))
            return unset;
        const QDateTime time = QDateTime::fromString(m_parser.value(name), Qt::ISODateWithMs);
        if (!time.isValid() || time.toMSecsSinceEpoch() < 0)
            refuse(name, m_parser.value(name));
        return time.toMSecsSinceEpoch() * 1000;
    }

    QVector<Simulation::Pause> pauses(const QString& name)
    {
        QVector<Simulation::Pause> result;
        for (const QString& text : m_parser.values(name)) {
            bool startOk = false;
            bool lengthOk = false;
            const double start = text.section(QLatin1Char(':'), 0, 0).toDouble(&startOk);
            const double length = text.section(QLatin1Char(':'), 1).toDouble(&lengthOk);
            if (!startOk || !lengthOk || !(start >= 0) || !(length > 0))
                refuse(name, text);
            result.append(Simulation::Pause{start, length});
        }
        return result;
    }

    /** "tlog", "mcap" or "raw"; @p unset when neither the option nor the path tells. */
    QString format(const QString& name, const QString& path, const QString& unset)
    {
        const QStringList formats{QStringLiteral("tlog"), QStringLiteral("mcap"), QStringLiteral("raw")};
        const QString format = m_parser.value(name);
        if (!format.isEmpty() && !formats.contains(format))
            refuse(name, format);
        if (!format.isEmpty())
            return format;
        const QString suffix = path.section(QLatin1Char('.'), -1);
        return path.contains(QLatin1Char('.')) && formats.contains(suffix) ? suffix : unset;
    }

    void refuse(const QString& name, const QString& value)
    {
        if (m_error.isEmpty())
            m_error = QStringLiteral("--%1: \"%2\" is not possible").arg(name, value);
    }

private:
    const QCommandLineParser& m_parser;
    QString m_error;
};

void addOptions(QCommandLineParser* parser)
{
    parser->setApplicationDescription(QLatin1String(Description));
    CommandLine::addInfoOptions(parser);
    parser->addPositionalArgument(QStringLiteral("output"), QLatin1String(OutputHelp));
    const auto add = [parser](const char* name, const char* text, const char* value) {
        parser->addOption(QCommandLineOption(QLatin1String(name), QLatin1String(text), QLatin1String(value)));
    };
    add("duration", "Seconds to simulate; 0 is for ever. Default 60, over UDP for ever.", "seconds");
    add("speed", "How fast: 1 is real time, 0 as fast as possible. Default 0, over UDP 1.", "factor");
    add("seed", "Another number is another flight or drive. Default 1.", "number");
    add("senders", "Vehicles, cars or robots, 1 to 255. Default 1.", "number");
    add("rate", "Multiplies the rates of all messages. Default 1.", "factor");
    add("drop", "Share of the frames that get lost, 0 to 1. Default 0.", "share");
    add("corrupt",
        "Share of the frames, or of an MCAP recording's chunks, of which a byte gets changed, 0 to 1. Default 0.",
        "share");
    add("pause", "No reception from START on for LENGTH seconds. Can be given several times.", "START:LENGTH");
    add("start", "Time at the start, ISO 8601. Default 2024-01-01T12:00:00Z, over UDP now.", "time");
    add("format", "tlog, raw or mcap, in place of what the file's name says.", "format");
    parser->addOption(QCommandLineOption(QStringLiteral("robot"), QStringLiteral("A robot. Always MCAP.")));
}

bool parseOutput(const QCommandLineParser& parser, Options* options, QString* error)
{
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() != 1) {
        *error = QStringLiteral("one output is needed, not %1").arg(arguments.size());
        return false;
    }
    const QString text = arguments.first();
    if (!text.startsWith(QLatin1String("udp:"))) {
        options->path = text == QLatin1String("-") ? QString() : text;
        return true;
    }
    const int prefix = text.startsWith(QLatin1String("udp://")) ? 6 : 4;
    const QUrl address(QStringLiteral("udp://") + text.mid(prefix), QUrl::StrictMode);
    if (!address.isValid() || !address.path().isEmpty() || address.port() == 0) {
        *error = QStringLiteral("%1: this is no address; udp:HOST:PORT is one").arg(text);
        return false;
    }
    options->host = address.host().isEmpty() ? QStringLiteral("127.0.0.1") : address.host();
    options->port = quint16(address.port(DefaultPort));
    return true;
}

} // namespace

CommandLine::Result Options::parse(const QStringList& arguments, Options* options, QString* text)
{
    QCommandLineParser parser;
    addOptions(&parser);
    const CommandLine::Result result = CommandLine::parse(&parser, arguments, text);
    if (result != CommandLine::Run)
        return result;
    if (!parseOutput(parser, options, text))
        return CommandLine::Wrong;

    OptionReader reader(parser);
    const bool live = !options->host.isEmpty();
    const double most = 1e9;
    Simulation::Settings& settings = options->settings;
    options->duration = reader.number(QStringLiteral("duration"), 0, most, live ? 0 : FileDuration);
    options->speed = reader.number(QStringLiteral("speed"), 0, most, live ? 1 : 0);
    const QString mcap = QStringLiteral("mcap");
    const QString robot = QStringLiteral("robot");
    options->isRobot = parser.isSet(robot);
    const QString format =
        reader.format(QStringLiteral("format"), options->path, options->isRobot ? mcap : QStringLiteral("raw"));
    options->withTimes = format == QLatin1String("tlog");
    options->isMcap = format == mcap;
    if (options->isMcap ? live : options->isRobot)
        parser.isSet(QStringLiteral("format")) ? reader.refuse(QStringLiteral("format"), format)
                                               : reader.refuse(robot, parser.positionalArguments().first());
    settings.seed = reader.seed(QStringLiteral("seed"), settings.seed);
    settings.senders = int(reader.number(QStringLiteral("senders"), 1, 255, settings.senders));
    settings.rateFactor = reader.number(QStringLiteral("rate"), 0.001, 1000, settings.rateFactor);
    settings.dropRate = reader.number(QStringLiteral("drop"), 0, 1, settings.dropRate);
    settings.corruptRate = reader.number(QStringLiteral("corrupt"), 0, 1, settings.corruptRate);
    settings.pauses = reader.pauses(QStringLiteral("pause"));
    const QString start = QStringLiteral("start");
    const QDateTime usual =
        live ? QDateTime::currentDateTimeUtc() : QDateTime::fromString(QLatin1String(FileStart), Qt::ISODate);
    settings.startTime = reader.time(start, usual.toMSecsSinceEpoch() * 1000);
    const double end = double(settings.startTime) + options->duration * 1000000;
    if (options->isRobot && end > double(RobotSimulation::getLastTime())) {
        const QString name = parser.isSet(start) ? start : QStringLiteral("duration");
        reader.refuse(name, parser.value(name));
    }
    *text = reader.getError();
    return text->isEmpty() ? CommandLine::Run : CommandLine::Wrong;
}
