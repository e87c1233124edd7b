#include "drivesimulation.h"
#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "mcapstreamdecoder.h"
#include "message.h"
#include "messagereference.h"
#include "protobufformat.h"
#include "receptioncounters.h"
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

/** Counts messages by topic and type. */
class CarReceiver : public StreamSink
{
public:
    explicit CarReceiver(const StreamDecoder* decoder)
        : m_decoder(decoder)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        ++counts[m_decoder->getSenderName(message.sender) + QLatin1Char(' ') +
                 (message.info ? message.info->getName() : QString())];
    }
    void processProblem(const StreamProblem& problem) override { problems.append(problem.describe(QString())); }

    QMap<QString, int> counts;
    QStringList problems;

private:
    const StreamDecoder* m_decoder;
};

/** Counts, and keeps the messages of one type. */
class Receiver : public StreamSink
{
public:
    explicit Receiver(const MavlinkDialect* dialect, const QByteArray& bytes, const QString& kept = QString())
        : m_kept(dialect->getMessageInfo(kept))
    {
        MavlinkStreamDecoder decoder(dialect, MavlinkStreamDecoder::RawLayout);
        decoder.feed(bytes.constData(), int(bytes.size()), Message::NoTime, this);
        decoder.finish(this);
    }
    ~Receiver()
    {
        for (const Message* const message : messages)
            message->removeReference();
    }

    void processReceived(const ReceivedMessage& message) override
    {
        counters.countMessage(message);
        const quint8 sequence = quint8(message.sequence);
        if (m_next.contains(message.sender))
            missed += quint8(sequence - m_next.value(message.sender));
        m_next[message.sender] = quint8(sequence + 1);
        if (m_kept && message.info == m_kept)
            messages.append(message.createMessage(QString()));
    }
    void processProblem(const StreamProblem& problem) override
    {
        counters.countProblem(problem);
        ++problems;
    }

    double value(int index, const char* field) const
    {
        const FieldInfo* const info = m_kept->getFieldInfo(QLatin1String(field));
        return info->getValue(messages.at(index), 0).toDouble();
    }

    ReceptionCounters counters;
    int missed = 0; // by sequence numbers
    int problems = 0;
    QVector<const Message*> messages;

private:
    const MessageInfo* m_kept;
    QHash<quint32, quint8> m_next;
};

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
    void initTestCase();
    void sendsTheSameForTheSameSeed();
    void sendsGoodFramesAtTheirRates();
    void tellsVehiclesApart();
    void movesAsItSays();
    void losesAndDamagesFramesAsAsked();
    void keepsSilentInPauses();
    void isAnInputInRealTime();
    void stopsWaitingWhenCancelled();
    void writesFilesAndStandardOutput();
    void writesRecordingsOfCars();
    void carsHaveNestedAndOptionalFields();
    void sendsDatagrams();
    void refusesWhatIsNotPossible_data();
    void refusesWhatIsNotPossible();
    void reportsWhatCannotBeWritten();

private:
    QScopedPointer<MavlinkDialect> m_dialect;
};

void TestSimulate::initTestCase()
{
    m_dialect.reset(MavlinkDialect::loadBuiltIn());
}

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
    const Receiver received(m_dialect.data(), joined(frames));
    QCOMPARE(received.problems, 0);
    QCOMPARE(received.missed, 0);
    QCOMPARE(received.counters.getMessageCount(), quint64(frames.size()));
    QHash<QString, quint64> counts;
    for (const ReceptionCounters::Row& row : received.counters.getRows())
        counts.insert(row.info->getName(), row.count);
    QVERIFY(counts.size() >= 15);
    QCOMPARE(counts.value(QStringLiteral("HEARTBEAT")), quint64(60));
    QCOMPARE(counts.value(QStringLiteral("GPS_RAW_INT")), quint64(300));
    QCOMPARE(counts.value(QStringLiteral("ATTITUDE")), quint64(3000));
    QCOMPARE(counts.value(QStringLiteral("PARAM_VALUE")), quint64(12));
    QVERIFY(counts.value(QStringLiteral("STATUSTEXT")) >= 3);

    Simulation::Settings settings = defaults();
    settings.rateFactor = 2;
    const Receiver faster(m_dialect.data(), joined(simulate(settings, 60)));
    const double factor = double(faster.counters.getMessageCount()) / double(received.counters.getMessageCount());
    QVERIFY2(std::abs(factor - 2) < 0.01, qPrintable(QString::number(factor)));
}

void TestSimulate::tellsVehiclesApart()
{
    Simulation::Settings settings = defaults();
    settings.senders = 3;
    const QVector<SimulatedFrame> frames = simulate(settings, 20);
    for (int i = 1; i < frames.size(); ++i)
        QVERIFY(frames.at(i).time >= frames.at(i - 1).time);
    const Receiver received(m_dialect.data(), joined(frames));
    QCOMPARE(received.missed, 0);
    QSet<quint32> senders;
    for (const ReceptionCounters::Row& row : received.counters.getRows())
        senders.insert(row.sender);
    // Autopilot and radio of each.
    QCOMPARE(senders, (QSet<quint32>{0x101, 0x144, 0x201, 0x244, 0x301, 0x344}));
}

void TestSimulate::movesAsItSays()
{
    const QByteArray bytes = joined(simulate(defaults(), 160));
    const Receiver positions(m_dialect.data(), bytes, QStringLiteral("GLOBAL_POSITION_INT"));
    double highest = 0;
    double farthest = 0;
    for (int i = 0; i + 10 < positions.messages.size(); ++i) {
        // The way of a second, in metres, against the speeds in that second.
        double north = 0;
        double up = 0;
        for (int step = 0; step < 10; ++step) {
            north += 0.01 * (positions.value(i + step, "vx") + positions.value(i + step + 1, "vx")) / 2 * 0.1;
            up -= 0.01 * (positions.value(i + step, "vz") + positions.value(i + step + 1, "vz")) / 2 * 0.1;
        }
        const double metres = 111194.9 / 1e7;
        QVERIFY(std::abs((positions.value(i + 10, "lat") - positions.value(i, "lat")) * metres - north) < 0.15);
        QVERIFY(std::abs((positions.value(i + 10, "alt") - positions.value(i, "alt")) / 1000 - up) < 0.15);
        highest = std::max(highest, positions.value(i, "relative_alt") / 1000);
        farthest = std::max(farthest, (positions.value(i, "lat") - positions.value(0, "lat")) * metres);
    }
    QVERIFY2(highest > 30 && highest < 45, qPrintable(QString::number(highest)));
    QVERIFY2(farthest > 140 && farthest < 180, qPrintable(QString::number(farthest)));

    const Receiver battery(m_dialect.data(), bytes, QStringLiteral("BATTERY_STATUS"));
    const double start = battery.value(0, "battery_remaining");
    const double later = battery.value(150, "battery_remaining");
    QVERIFY2(start == 100 && later < 85 && later > 50, qPrintable(QString::number(later)));
    QVERIFY(battery.value(150, "voltages") < battery.value(0, "voltages"));

    const Receiver attitudes(m_dialect.data(), bytes, QStringLiteral("ATTITUDE"));
    double steepest = 0;
    for (int i = 0; i < attitudes.messages.size(); ++i)
        steepest = std::max(steepest, std::abs(attitudes.value(i, "roll")));
    QVERIFY2(steepest > 0.1 && steepest < 0.6, qPrintable(QString::number(steepest)));
}

void TestSimulate::losesAndDamagesFramesAsAsked()
{
    Simulation::Settings settings = defaults();
    const double all = simulate(settings, 120).size();
    settings.dropRate = 0.05;
    const Receiver dropped(m_dialect.data(), joined(simulate(settings, 120)));
    QCOMPARE(dropped.problems, 0);
    const double missed = all - double(dropped.counters.getMessageCount());
    QVERIFY2(std::abs(missed / all - 0.05) < 0.005, qPrintable(QString::number(missed / all)));
    QVERIFY(std::abs(dropped.missed - missed) < 5); // the last ones of each sender don't show

    settings.dropRate = 0;
    settings.corruptRate = 0.04;
    const Receiver damaged(m_dialect.data(), joined(simulate(settings, 120)));
    const double bad = all - double(damaged.counters.getMessageCount());
    QVERIFY2(std::abs(bad / all - 0.04) < 0.005, qPrintable(QString::number(bad / all)));
    QVERIFY(damaged.counters.getChecksumFailureCount() > 0.7 * bad);
    QVERIFY(damaged.counters.getChecksumFailureCount() <= bad);

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
    QVERIFY(input.open());
    QVERIFY(input.isLive());
    QByteArray all;
    QByteArray bytes;
    QElapsedTimer timer;
    timer.start();
    while (all.size() < 2000 && timer.elapsed() < 30000) {
        const ByteInput::Status status = input.read(&bytes, 20);
        QVERIFY(status == ByteInput::Data || status == ByteInput::Nothing);
        QCOMPARE(status == ByteInput::Nothing, bytes.isEmpty());
        all += bytes;
    }
    // What is due, and not all that there is: a vehicle sends about 140 frames a second.
    const Receiver received(m_dialect.data(), all);
    const qint64 count = qint64(received.counters.getMessageCount());
    QCOMPARE(received.problems, 0);
    QVERIFY(count > 20);
    QVERIFY2(count < 20 + 200 * timer.elapsed() / 1000, qPrintable(QString::number(count)));
}

void TestSimulate::stopsWaitingWhenCancelled()
{
    Simulation::Settings settings;
    settings.rateFactor = 0.001;
    SimulatorInput input(settings);
    QVERIFY(input.open());
    QByteArray bytes;
    while (input.read(&bytes, 0) == ByteInput::Data) {
    }
    QElapsedTimer timer;
    timer.start();
    input.cancel();
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
        ProtobufFormat format;
        McapStreamDecoder decoder(&format);
        CarReceiver receiver(&decoder);
        decoder.feed(result.output.constData(), int(result.output.size()), Message::NoTime, &receiver);
        decoder.finish(&receiver);
        *problems = receiver.problems;
        return receiver.counts;
    };
    typedef QMap<QString, int> Counts;
    const QString car = QStringLiteral("/vehicle/1 corvel.demo.Vehicle");
    QStringList problems;
    const Counts all{{car, 600},
                     {QStringLiteral("/vehicle/1/parts corvel.demo.Part"), 30},
                     {QStringLiteral("/vehicle/2 corvel.demo.Vehicle"), 600},
                     {QStringLiteral("/vehicle/2/parts corvel.demo.Part"), 30}};
    QCOMPARE(decode({}, &problems), all);
    QCOMPARE(problems, QStringList());
    const int kept = decode({QStringLiteral("--drop=0.25")}, &problems).value(car);
    QVERIFY2(kept > 400 && kept < 500, qPrintable(QString::number(kept)));
    QCOMPARE(problems, QStringList());
    // Half of the 30 chunks, and the checksum of everything.
    const int undamaged = decode({QStringLiteral("--corrupt=0.5")}, &problems).value(car);
    QVERIFY2(undamaged > 150 && undamaged < 450, qPrintable(QString::number(undamaged)));
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
        const Receiver received(m_dialect.data(), bytes);
        QCOMPARE(received.problems, 0);
        QCOMPARE(received.counters.getMessageCount(), quint64(1));
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
