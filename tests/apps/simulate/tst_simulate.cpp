#include "definitions.h"
#include "drivesimulation.h"
#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "mcapstreamdecoder.h"
#include "message.h"
#include "messagereference.h"
#include "protobufformat.h"
#include "simulatorinput.h"
#include "testbase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QUdpSocket>

#include <cmath>

namespace
{

const qint64 Start = Q_INT64_C(1704110400000000); // 2024-01-01T12:00:00Z, the program's default

/** The frames of the first @p seconds that got through. */
QVector<SimulatedFrame> simulate(const Simulation::Settings& settings, double seconds)
{
    Simulation simulation(settings);
    QVector<SimulatedFrame> frames;
    for (;;) {
        const SimulatedFrame frame = simulation.takeNext();
        if (double(frame.time - settings.startTime) >= seconds * 1000000)
            return frames;
        if (!frame.bytes.isEmpty())
            frames.append(frame);
    }
}

QByteArray joined(const QVector<SimulatedFrame>& frames)
{
    QByteArray bytes;
    for (const SimulatedFrame& frame : frames)
        bytes += frame.bytes;
    return bytes;
}

Simulation::Settings defaults()
{
    Simulation::Settings settings;
    settings.startTime = Start;
    return settings;
}

/** Counts messages by sender and type, and keeps those of one type. */
class Receiver : public StreamSink
{
public:
    Receiver(StreamDecoder* decoder, const QByteArray& bytes, const MessageInfo* kept = nullptr)
        : m_decoder(decoder)
        , m_kept(kept)
    {
        decoder->feed(bytes.constData(), int(bytes.size()), Message::NoTime, this);
        decoder->finish(this);
    }

    void processReceived(const ReceivedMessage& message) override
    {
        ++total;
        ++senders[m_decoder->getSenderName(message.sender)];
        ++types[message.info ? message.info->getName() : QString()];
        const quint8 sequence = quint8(message.sequence);
        missed += quint8(sequence - m_next.value(message.sender, sequence));
        m_next[message.sender] = quint8(sequence + 1);
        if (m_kept && message.info == m_kept)
            messages.append(MessageReference::adopt(message.createMessage(QString())));
    }
    void processProblem(const StreamProblem& problem) override { problems.append(problem.describe(QString())); }

    double value(int index, const char* field) const
    {
        return m_kept->getFieldInfo(QLatin1String(field))->getValue(messages.at(index).get(), 0).toDouble();
    }
    double highest(const char* field) const
    {
        double highest = 0;
        for (int i = 0; i < messages.size(); ++i)
            highest = std::max(highest, std::abs(value(i, field)));
        return highest;
    }

    int total = 0;
    int missed = 0; // by sequence numbers
    QMap<QString, int> senders;
    QMap<QString, int> types;
    QStringList problems;
    QVector<MessageReference> messages;

private:
    const StreamDecoder* m_decoder;
    const MessageInfo* m_kept;
    QHash<quint32, quint8> m_next;
};

/** The frames of a vehicle, by the built-in definitions. */
class Flight : private QScopedPointer<MavlinkStreamDecoder>, public Receiver
{
public:
    explicit Flight(const QByteArray& bytes, const char* kept = "")
        : QScopedPointer(new MavlinkStreamDecoder(dialect(), MavlinkStreamDecoder::RawLayout))
        , Receiver(data(), bytes, dialect()->getMessageInfo(QLatin1String(kept)))
    {
    }

private:
    static const MavlinkDialect* dialect()
    {
        static const QScopedPointer<MavlinkDialect> builtIn(MavlinkDialect::loadBuiltIn());
        return builtIn.data();
    }
};

void checkNear(double value, double expected, double tolerance)
{
    QVERIFY2(std::abs(value - expected) < tolerance, qPrintable(QString::number(value)));
}

struct ProgramResult
{
    int status;
    QByteArray output;
    QString errors;
};

ProgramResult runProgram(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(CORVEL_SIMULATE_PROGRAM), arguments);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return ProgramResult{-1, QByteArray(), QStringLiteral("did not end")};
    }
    return ProgramResult{process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                         process.readAllStandardOutput(), QString::fromLocal8Bit(process.readAllStandardError())};
}

} // namespace

class TestSimulate : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void sendsTheSameForTheSameSeed();
    void sendsGoodFramesAtTheirRates();
    void tellsVehiclesApart();
    void movesAsItSays();
    void losesAndDamagesFramesAsAsked();
    void keepsSilentInPauses();
    void isAnInputInRealTime();
    void writesFilesAndStandardOutput();
    void writesRecordingsOfCars();
    void carsHaveNestedAndOptionalFields();
    void sendsDatagrams();
    void refusesWhatIsNotPossible_data();
    void refusesWhatIsNotPossible();
    void reportsWhatCannotBeWritten();
};

void TestSimulate::sendsTheSameForTheSameSeed()
{
    Simulation::Settings settings = defaults();
    settings.senders = 2;
    settings.dropRate = settings.corruptRate = 0.1;
    const QByteArray bytes = joined(simulate(settings, 30));
    QVERIFY(bytes.size() > 50000);
    QVERIFY(joined(simulate(settings, 30)) == bytes);
    settings.seed = 2;
    QVERIFY(joined(simulate(settings, 30)) != bytes);
}

void TestSimulate::sendsGoodFramesAtTheirRates()
{
    const QVector<SimulatedFrame> frames = simulate(defaults(), 60);
    const Flight flight(joined(frames));
    QCOMPARE(flight.problems, QStringList());
    QCOMPARE(flight.missed, 0);
    QCOMPARE(flight.total, int(frames.size()));
    QVERIFY(flight.types.size() >= 15);
    QCOMPARE(flight.types.value(QStringLiteral("HEARTBEAT")), 60);
    QCOMPARE(flight.types.value(QStringLiteral("GPS_RAW_INT")), 300);
    QCOMPARE(flight.types.value(QStringLiteral("ATTITUDE")), 3000);
    QCOMPARE(flight.types.value(QStringLiteral("PARAM_VALUE")), 12);
    QVERIFY(flight.types.value(QStringLiteral("STATUSTEXT")) >= 3);

    Simulation::Settings settings = defaults();
    settings.rateFactor = 2;
    checkNear(double(simulate(settings, 60).size()) / flight.total, 2, 0.01);
}

void TestSimulate::tellsVehiclesApart()
{
    Simulation::Settings settings = defaults();
    settings.senders = 3;
    const QVector<SimulatedFrame> frames = simulate(settings, 20);
    for (int i = 1; i < frames.size(); ++i)
        QVERIFY(frames.at(i).time >= frames.at(i - 1).time);
    const Flight flight(joined(frames));
    QCOMPARE(flight.missed, 0);
    // Autopilot and radio of each.
    QCOMPARE(QStringList(flight.senders.keys()).join(QLatin1Char(' ')), QStringLiteral("1:1 1:68 2:1 2:68 3:1 3:68"));
}

void TestSimulate::movesAsItSays()
{
    const QByteArray bytes = joined(simulate(defaults(), 160));
    const Flight positions(bytes, "GLOBAL_POSITION_INT");
    const double metres = 111194.9 / 1e7;
    double farthest = 0;
    for (int i = 0; i + 10 < positions.messages.size(); ++i) {
        // The way of a second, in metres, against the speeds in that second.
        double north = 0;
        double up = 0;
        for (int step = 0; step < 10; ++step) {
            north += 0.01 * (positions.value(i + step, "vx") + positions.value(i + step + 1, "vx")) / 2 * 0.1;
            up -= 0.01 * (positions.value(i + step, "vz") + positions.value(i + step + 1, "vz")) / 2 * 0.1;
        }
        checkNear((positions.value(i + 10, "lat") - positions.value(i, "lat")) * metres, north, 0.15);
        checkNear((positions.value(i + 10, "alt") - positions.value(i, "alt")) / 1000, up, 0.15);
        farthest = std::max(farthest, (positions.value(i, "lat") - positions.value(0, "lat")) * metres);
    }
    checkNear(positions.highest("relative_alt") / 1000, 37.5, 7.5);
    checkNear(farthest, 160, 20);

    const Flight battery(bytes, "BATTERY_STATUS");
    QCOMPARE(battery.value(0, "battery_remaining"), 100.0);
    checkNear(battery.value(150, "battery_remaining"), 67.5, 17.5);
    QVERIFY(battery.value(150, "voltages") < battery.value(0, "voltages"));
    checkNear(Flight(bytes, "ATTITUDE").highest("roll"), 0.35, 0.25);
}

void TestSimulate::losesAndDamagesFramesAsAsked()
{
    Simulation::Settings settings = defaults();
    const double all = simulate(settings, 120).size();
    settings.dropRate = 0.05;
    const Flight dropped(joined(simulate(settings, 120)));
    QCOMPARE(dropped.problems, QStringList());
    checkNear((all - dropped.total) / all, 0.05, 0.005);
    checkNear(dropped.missed, all - dropped.total, 5); // the last ones of each sender don't show

    settings.dropRate = 0;
    settings.corruptRate = 0.04;
    const Flight damaged(joined(simulate(settings, 120)));
    const double bad = all - damaged.total;
    checkNear(bad / all, 0.04, 0.005);
    checkNear(damaged.problems.filter(QStringLiteral("checksum failure")).size(), 0.85 * bad, 0.15 * bad);

    settings.dropRate = 1;
    QCOMPARE(int(simulate(settings, 10).size()), 0);
}

void TestSimulate::keepsSilentInPauses()
{
    Simulation::Settings settings = defaults();
    settings.pauses = {{2, 1.5}, {6, 0.5}};
    QStringList gaps;
    const QVector<SimulatedFrame> frames = simulate(settings, 10);
    for (int i = 1; i < frames.size(); ++i) {
        if (frames.at(i).time - frames.at(i - 1).time > 100000)
            gaps.append(QStringLiteral("%1 to %2")
                            .arg(double(frames.at(i - 1).time - Start) / 1e6, 0, 'f', 1)
                            .arg(double(frames.at(i).time - Start) / 1e6, 0, 'f', 1));
    }
    QCOMPARE(gaps, (QStringList{QStringLiteral("2.0 to 3.5"), QStringLiteral("6.0 to 6.5")}));
}

void TestSimulate::isAnInputInRealTime()
{
    SimulatorInput input;
    QVERIFY(input.open() && input.isLive());
    QByteArray all;
    QByteArray bytes;
    QElapsedTimer timer;
    timer.start();
    while (all.size() < 2000 && timer.elapsed() < 30000) {
        const ByteInput::Status status = input.read(&bytes, 20);
        QCOMPARE(status, bytes.isEmpty() ? ByteInput::Nothing : ByteInput::Data);
        all += bytes;
    }
    // What is due, and not all that there is: a vehicle sends about 140 frames a second.
    const Flight flight(all);
    QCOMPARE(flight.problems, QStringList());
    QVERIFY2(flight.total > 20 && flight.total < 20 + 200 * timer.elapsed() / 1000,
             qPrintable(QString::number(flight.total)));

    input.cancel();
    timer.start();
    QCOMPARE(input.read(&bytes, 10000), ByteInput::Nothing);
    QVERIFY(timer.elapsed() < 5000);
}

void TestSimulate::writesFilesAndStandardOutput()
{
    const QVector<SimulatedFrame> frames = simulate(defaults(), 5);
    const ProgramResult raw = runProgram({QStringLiteral("--duration=5"), QStringLiteral("-")});
    QCOMPARE(raw.status, 0);
    QVERIFY(raw.output == joined(frames));

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("flight.tlog"));
    QCOMPARE(runProgram({QStringLiteral("--duration=5"), path}).status, 0);
    QByteArray expected;
    for (const SimulatedFrame& frame : frames) {
        char time[8];
        qToBigEndian(frame.time, time);
        expected += QByteArray(time, 8) + frame.bytes;
    }
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll() == expected);

    // The time at the start is part of the data too.
    const ProgramResult later = runProgram({QStringLiteral("--duration=5"), QStringLiteral("--format=tlog"),
                                            QStringLiteral("--start=2030-02-03T04:05:06Z"), QStringLiteral("-")});
    QCOMPARE(later.output.size(), expected.size());
    QCOMPARE(qFromBigEndian<qint64>(later.output.constData()), Q_INT64_C(1896321906000000));
}

void TestSimulate::writesRecordingsOfCars()
{
    const auto decode = [](const QStringList& options, QStringList* problems) {
        const ProgramResult result =
            runProgram(options + QStringList{QStringLiteral("--format=mcap"), QStringLiteral("--senders=2"),
                                             QStringLiteral("--duration=30"), QStringLiteral("-")});
        Definitions definitions;
        McapStreamDecoder decoder(&definitions);
        const Receiver receiver(&decoder, result.output);
        *problems = receiver.problems;
        return receiver.senders;
    };
    typedef QMap<QString, int> Counts;
    const QString car = QStringLiteral("/vehicle/1");
    QStringList problems;
    const Counts all{{car, 600},
                     {QStringLiteral("/vehicle/1/parts"), 30},
                     {QStringLiteral("/vehicle/2"), 600},
                     {QStringLiteral("/vehicle/2/parts"), 30}};
    QCOMPARE(decode({}, &problems), all);
    QCOMPARE(problems, QStringList());
    checkNear(decode({QStringLiteral("--drop=0.25")}, &problems).value(car), 450, 50);
    QCOMPARE(problems, QStringList());
    // Half of the 30 chunks, and the checksum of everything.
    const int undamaged = decode({QStringLiteral("--corrupt=0.5")}, &problems).value(car);
    checkNear(undamaged, 300, 150);
    QCOMPARE(int(problems.size()), 1 + (600 - undamaged) / 20);
    QVERIFY(problems.constLast().contains(QLatin1String("the data of the file should have the CRC")));
}

/** What a car sends has all that messages of Protocol Buffers can have, also in what is absent. */
void TestSimulate::carsHaveNestedAndOptionalFields()
{
    Simulation::Settings settings = defaults();
    settings.seed = 5;
    DriveSimulation drive(settings);
    ProtobufFormat format;
    QString error;
    const MessageInfo* const info =
        format.addSchema(DriveSimulation::getSchema(), QStringLiteral("corvel.demo.Vehicle"), &error);
    QVERIFY2(info, qPrintable(error));
    QMap<QString, QSet<int>> counts; // of values, by field
    for (int i = 0; i < 1300; ++i) {
        const SimulatedFrame frame = drive.takeNext();
        if (frame.channel != 0)
            continue;
        const MessageReference message = MessageReference::adopt(info->newMessage(frame.bytes));
        for (const FieldInfo* field : info->getFieldInfos())
            counts[field->getName()].insert(int(field->getValueCount(message.get())));
    }
    QCOMPARE(counts.value(QStringLiteral("wheels")), QSet<int>{4});
    QCOMPARE(counts.value(QStringLiteral("pose")), QSet<int>{1});
    QCOMPARE(counts.value(QStringLiteral("ranges")), QSet<int>{8});
    QCOMPARE(counts.value(QStringLiteral("temperatures")), (QSet<int>{2, 3}));
    for (const char* optional : {"trailer", "motor", "engine", "target_speed"})
        QCOMPARE(counts.value(QLatin1String(optional)), (QSet<int>{0, 1}));
}

void TestSimulate::sendsDatagrams()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress(QHostAddress::LocalHost)));
    const QString output = QStringLiteral("udp:localhost:%1").arg(socket.localPort());
    const ProgramResult result = runProgram({QStringLiteral("--duration=0.2"), QStringLiteral("--speed=0"), output});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    int datagrams = 0;
    while (socket.hasPendingDatagrams() || socket.waitForReadyRead(100)) {
        QByteArray bytes(int(socket.pendingDatagramSize()), '\0');
        socket.readDatagram(bytes.data(), bytes.size());
        const Flight flight(bytes);
        QCOMPARE(flight.problems.size() + 10 * flight.total, 10);
        ++datagrams;
    }
    QVERIFY2(datagrams > 20, qPrintable(QString::number(datagrams)));
}

void TestSimulate::refusesWhatIsNotPossible_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* arguments, const char* text) {
        QTest::newRow(name) << QString::fromLatin1(arguments).split(QLatin1Char(' ')) << QString::fromLatin1(text);
    };
    row("no output", "--seed=1", "one output is needed");
    row("two outputs", "a.raw b.raw", "one output is needed");
    row("unknown option", "--sed=1 -", "Unknown option 'sed'");
    row("share", "--drop=1.5 -", "--drop: \"1.5\"");
    row("no number", "--corrupt=much -", "--corrupt: \"much\"");
    row("not a number", "--drop=nan -", "--drop: \"nan\"");
    row("no vehicle", "--senders=0 -", "--senders: \"0\"");
    row("rate", "--rate=0 -", "--rate: \"0\"");
    row("pause", "--pause=5 -", "--pause: \"5\"");
    row("time", "--start=yesterday -", "--start: \"yesterday\"");
    row("format", "--format=csv -", "--format: \"csv\"");
    row("address", "udp:host:port", "udp:host:port");
    row("datagrams of a recording", "--format=mcap udp:localhost:1", "--format: \"mcap\"");
}

void TestSimulate::refusesWhatIsNotPossible()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, text);
    const ProgramResult result = runProgram(arguments);
    QCOMPARE(result.status, 1);
    QVERIFY2(result.errors.contains(text), qPrintable(result.errors));
    QCOMPARE(result.output, QByteArray());
}

void TestSimulate::reportsWhatCannotBeWritten()
{
    const ProgramResult missing = runProgram({QStringLiteral("/nowhere/flight.tlog")});
    QCOMPARE(missing.status, 2);
    QVERIFY2(missing.errors.contains(QStringLiteral("/nowhere/flight.tlog: ")), qPrintable(missing.errors));
    const ProgramResult full = runProgram({QStringLiteral("/dev/full")});
    QCOMPARE(full.status, 2);
    QVERIFY2(full.errors.contains(QStringLiteral("/dev/full: ")), qPrintable(full.errors));
    const ProgramResult help = runProgram({QStringLiteral("--help")});
    QCOMPARE(help.status, 0);
    QVERIFY(help.output.contains("--corrupt"));
}

QTEST_GUILESS_MAIN(TestSimulate)
#include "tst_simulate.moc"
