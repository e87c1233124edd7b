#include "shellrun.h"
#include "simulatorinput.h"
#include "testbase.h"
#include "testfolder.h"

#include <QElapsedTimer>
#include <QUdpSocket>

#include <cmath>
#include <complex>
#include <cstring>

namespace
{

void checkNear(double value, double expected, double tolerance)
{
    QVERIFY2(std::abs(value - expected) < tolerance, qPrintable(QString::number(value)));
}

/** What corvel-dump counts in what is written with these options. */
QJsonObject statistics(const char* options)
{
    return ShellRun(QString("corvel-simulate %1 - | corvel-dump --stats -").arg(options)).object();
}

/** The fields of the messages that are written with these options, of those types that @p type names. */
QVector<QJsonObject> fieldsOf(const char* type, const char* options)
{
    const ShellRun run(QString("corvel-simulate %1 - | corvel-dump --select '%2' -").arg(options, type));
    QVector<QJsonObject> messages;
    for (const QByteArray& line : run.output.trimmed().split('\n'))
        messages.append(QJsonDocument::fromJson(line).object().value("fields").toObject());
    return messages;
}

} // namespace

/** What corvel-simulate writes, as corvel-dump reads it. */
class TestSimulate : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void writesAndRefuses();
    void movesAsItSays();
    void losesAndDamagesFramesAsAsked();
    void carsHaveNestedAndOptionalFields();
    void whatARobotSendsAgrees();
    void isAnInputInRealTime();
    void sendsDatagrams();
};

void TestSimulate::writesAndRefuses()
{
    static const TextRow rows[] = {
        // The same for the same seed.
        {"for seed in 1 1 2; do corvel-simulate --duration 30 --senders 2 --drop 0.1 --corrupt 0.1 --seed $seed - | "
         "cksum;"
         " done | uniq -c | sed 's/ [0-9]* [0-9]*$//'",
         "      2\n      1"},

        // Good frames, at their rates.
        {"corvel-simulate --duration 60 - | corvel-dump --stats - | grep -o -e '\"types.*\"unsup' -e "
         "'\"senders\":{\"1:1\":{.*'"
         " | sed 's/\"id\":[0-9]*,\"format\":\"corvel\",\"messages\"://g; s/,\"senders\":{\"1:[0-9]*\":[0-9]*}//g'",
         "'types':{'HEARTBEAT':{60},'GLOBAL_POSITION_INT':{600},'SCALED_IMU':{1500},'ATTITUDE':{3000},'PARAM_VALUE':{"
         "12},"
         "'SERVO_OUTPUT_RAW':{600},'SYS_STATUS':{120},'GPS_RAW_INT':{300},'VFR_HUD':{600},'SCALED_PRESSURE':{600},"
         "'RC_CHANNELS':{300},'NAV_CONTROLLER_OUTPUT':{300},'BATTERY_STATUS':{60},'VIBRATION':{120},'RADIO_STATUS':{60}"
         ","
         "'SYSTEM_TIME':{60},'EXTENDED_SYS_STATE':{60},'STATUSTEXT':{3}},'checksumFailures':{},'unknownIds':{},'unsup\n"
         "'senders':{'1:1':{'messages':8295,'lost':0,...},'1:68':{'messages':60,'lost':0,...}},'events':{}}"},
        {"corvel-simulate --duration 6 --rate 2 - | corvel-dump --stats - | grep -o '\"ATTITUDE\":.*' | cut -d , -f 3",
         "'messages':600"},

        // Vehicles, each with autopilot and radio, in the order of time.
        {"corvel-simulate --duration 20 --senders 3 - | corvel-dump - | grep -o '\"sender\":[^,]*' | sort -u",
         "'sender':'1:1'\n'sender':'1:68'\n'sender':'2:1'\n'sender':'2:68'\n'sender':'3:1'\n'sender':'3:68'"},
        {"corvel-simulate --duration 20 --senders 3 --format tlog - | corvel-dump - | cut -c 1-40 | sort -c", ""},
        {"corvel-simulate --duration 20 --senders 3 - | corvel-dump --stats - | grep -o '\"lost\":[^0]'", "= 1"},

        // Silence in pauses.
        {"corvel-simulate --duration 10 --format tlog --pause 2:1.5 --pause 6:0.5 - | corvel-dump -"
         " | awk -F '[:Z]' '$4 - last > 0.1 { printf \"%.1f to %.1f\\n\", last, $4 } { last = $4 }'",
         "2.0 to 3.5\n6.0 to 6.5"},

        // Files and standard output, with times and without.
        {"corvel-simulate --duration=5 flight.tlog; corvel-simulate --duration=5 --format=tlog - | cmp - flight.tlog;"
         " corvel-dump flight.tlog | sed -n '1s/,.*//p;$s/,.*//p'",
         "{'time':'2024-01-01T12:00:00.000000Z'\n{'time':'2024-01-01T12:00:04.9...Z'"},
        {"corvel-simulate --duration=5 flight.raw; corvel-simulate --duration=5 - | cmp - flight.raw;"
         " corvel-dump flight.tlog | sed 's/.*Z\",//' > timed; corvel-dump flight.raw | sed 's/.*null,//' | cmp - "
         "timed",
         ""},
        {"corvel-simulate --duration=1 --start=2030-02-03T04:05:06Z --format=tlog - | corvel-dump - | sed 's/,.*//;1q'",
         "{'time':'2030-02-03T04:05:06.000000Z'"},

        // Recordings of cars.
        {"corvel-simulate --format=mcap --senders=2 --duration=30 - | corvel-dump --stats - | grep -o '}.,\"senders.*'",
         "}],'senders':{'/vehicle/1':{'messages':600,'lost':0,...},'/vehicle/1/parts':{'messages':30,'lost':0,...},"
         "'/vehicle/2':{'messages':600,'lost':0,...},'/vehicle/2/parts':{'messages':30,'lost':0,...}},'events':{}}"},

        // Recordings of robots.
        {"for seed in 1 1 2; do corvel-simulate --robot --duration 2 --senders 2 --drop 0.1 --seed $seed - | cksum; "
         "done"
         " | uniq -c | sed 's/ [0-9]* [0-9]*$//'",
         "      2\n      1"},
        {"corvel-simulate --robot --duration=10 robot.mcap;"
         " corvel-dump --stats robot.mcap | grep -o -e '\"checksumF.*\"statistics' -e '}.,\"senders.*';"
         " corvel-dump robot.mcap | grep -c -F '[problems]'",
         "'checksumFailures':{},'unknownIds':{},'unsupportedFrames':0,'lengthMismatches':0,'skippedBytes':0,"
         "'truncatedFrames':0,'truncatedBytes':0,'statistics\n}],'senders':{"
         "'/imu/data':{'messages':1000,'lost':0,...},'/joint_states':{'messages':500,'lost':0,...},"
         "'/odom':{'messages':500,'lost':0,...},'/tf':{'messages':500,'lost':0,...},"
         "'/scan':{'messages':100,'lost':0,...},'/camera/image_raw':{'messages':100,'lost':0,...},"
         "'/points':{'messages':50,'lost':0,...},'/fix':{'messages':50,'lost':0,...},"
         "'/diagnostics':{'messages':10,'lost':0,...},'/chatter':{'messages':10,'lost':0,...}},'events':{}}\n0\n= 1"},
        {"head -c 40 robot.mcap | grep -a -o ros2; grep -a -o offered_qos_profiles robot.mcap | wc -l", "ros2\n20"},
        {"corvel-simulate --robot --senders=2 --duration=2 --drop=0.3 - | corvel-dump --stats - |"
         " grep -o -E '/robot_[12]/fix.:.\"messages\":[0-9],\"lost\":[1-9]'",
         "/robot_1/fix':{'messages':...,'lost':...\n/robot_2/fix':{'messages':...,'lost':..."},

        {"corvel-simulate --help | grep -c -e --corrupt", "1"},
        {"corvel-simulate --seed=1", "! ...one output is needed...\n! ...\n= 1"},
        {"corvel-simulate a.raw b.raw", "! ...one output is needed...\n! ...\n= 1"},
        {"corvel-simulate --sed=1 -", "! ...Unknown option 'sed'...\n! ...\n= 1"},
        {"corvel-simulate --drop=1.5 -", "! ...--drop: \"1.5\"...\n! ...\n= 1"},
        {"corvel-simulate --corrupt=much -", "! ...--corrupt: \"much\"...\n! ...\n= 1"},
        {"corvel-simulate --drop=nan -", "! ...--drop: \"nan\"...\n! ...\n= 1"},
        {"corvel-simulate --senders=0 -", "! ...--senders: \"0\"...\n! ...\n= 1"},
        {"corvel-simulate --rate=0 -", "! ...--rate: \"0\"...\n! ...\n= 1"},
        {"corvel-simulate --pause=5 -", "! ...--pause: \"5\"...\n! ...\n= 1"},
        {"corvel-simulate --pause=5:0 -", "! ...--pause: \"5:0\"...\n! ...\n= 1"},
        {"corvel-simulate --start=yesterday -", "! ...--start: \"yesterday\"...\n! ...\n= 1"},
        {"corvel-simulate --format=csv -", "! ...--format: \"csv\"...\n! ...\n= 1"},
        {"corvel-simulate udp:host:port", "! ...udp:host:port...\n! ...\n= 1"},
        {"corvel-simulate --format=mcap udp:localhost:1", "! ...--format: \"mcap\"...\n! ...\n= 1"},
        {"corvel-simulate --robot udp:localhost:1", "! ...--robot: \"udp:localhost:1\"...\n! ...\n= 1"},
        {"corvel-simulate --robot flight.tlog", "! ...--robot: \"flight.tlog\"...\n! ...\n= 1"},
        {"corvel-simulate --robot --format=raw -", "! ...--format: \"raw\"...\n! ...\n= 1"},
        {"corvel-simulate --robot --start=2038-01-19T03:13:58Z -", "! ...--start: \"2038-...\n! ...\n= 1"},
        {"corvel-simulate /nowhere/flight.tlog", "! corvel-simulate: /nowhere/flight.tlog: ...\n= 2"},
        {"corvel-simulate /dev/full", "! corvel-simulate: /dev/full: ...\n= 2"},
    };
    const TestFolder folder;
    check(rows, folder.path());
}

void TestSimulate::movesAsItSays()
{
    const QVector<QJsonObject> positions = fieldsOf("*/GLOBAL_POSITION_INT", "--duration 160");
    const auto at = [&positions](int i, const char* field) { return positions.at(i).value(field).toDouble(); };
    const double metres = 111194.9 / 1e7;
    double farthest = 0;
    double highest = 0;
    for (int i = 0; i + 10 < positions.size(); ++i) {
        // The way of a second, in metres, against the speeds in that second.
        double north = 0;
        double up = 0;
        for (int step = i; step < i + 10; ++step) {
            north += 0.01 * (at(step, "vx") + at(step + 1, "vx")) / 2 * 0.1;
            up -= 0.01 * (at(step, "vz") + at(step + 1, "vz")) / 2 * 0.1;
        }
        checkNear((at(i + 10, "lat") - at(i, "lat")) * metres, north, 0.15);
        checkNear((at(i + 10, "alt") - at(i, "alt")) / 1000, up, 0.15);
        farthest = std::max(farthest, (at(i, "lat") - at(0, "lat")) * metres);
        highest = std::max(highest, at(i, "relative_alt") / 1000);
    }
    checkNear(highest, 37.5, 7.5);
    checkNear(farthest, 160, 20);

    const QVector<QJsonObject> battery = fieldsOf("*/BATTERY_STATUS", "--duration 160");
    QCOMPARE(battery.at(0)["battery_remaining"].toInt(), 100);
    checkNear(battery.at(150)["battery_remaining"].toDouble(), 67.5, 17.5);
    QVERIFY(battery.at(150)["voltages"][0].toInt() < battery.at(0)["voltages"][0].toInt());
    double roll = 0;
    for (const QJsonObject& attitude : fieldsOf("*/ATTITUDE", "--duration 160"))
        roll = std::max(roll, std::abs(attitude["roll"].toDouble()));
    checkNear(roll, 0.35, 0.25);
}

void TestSimulate::losesAndDamagesFramesAsAsked()
{
    const double all = statistics("--duration 120")["messages"].toInt();
    const QJsonObject dropped = statistics("--duration 120 --drop 0.05");
    const double missing = all - dropped["messages"].toInt();
    QCOMPARE(dropped["events"].toObject(), QJsonObject());
    checkNear(missing / all, 0.05, 0.005);
    const QJsonValue senders = dropped["senders"];
    checkNear(senders["1:1"]["lost"].toInt() + senders["1:68"]["lost"].toInt(), missing, 5); // the last don't show
    QCOMPARE(statistics("--duration 10 --drop 1"), QJsonObject());

    const QJsonObject damaged = statistics("--duration 120 --corrupt 0.04");
    const double bad = all - damaged["messages"].toInt();
    checkNear(bad / all, 0.04, 0.005);
    checkNear(damaged["events"]["CRC error"].toInt(), 0.85 * bad, 0.15 * bad);

    const char cars[] = "--format=mcap --duration=30 ";
    const QJsonValue fewer = statistics(QByteArray(cars) + "--drop=0.25");
    checkNear(fewer["senders"]["/vehicle/1"]["messages"].toInt(), 450, 50);
    QCOMPARE(fewer["events"].toObject(), QJsonObject());
    // Half of the 30 chunks, and the checksum of everything.
    const ShellRun run(QString("corvel-simulate %1 --corrupt=0.5 - | corvel-dump --stats -").arg(cars));
    const QJsonObject half = run.object();
    const int undamaged = half["senders"]["/vehicle/1"]["messages"].toInt();
    checkNear(undamaged, 300, 150);
    QCOMPARE(half["events"].toObject(), (QJsonObject{{"CRC error", 1 + (600 - undamaged) / 20}}));
    QVERIFY2(run.errors.contains("the data of the file should have the CRC"), qPrintable(run.errors));
}

/** What a car sends has all that messages of Protocol Buffers can have, also in what is absent. */
void TestSimulate::carsHaveNestedAndOptionalFields()
{
    QMap<QString, QSet<int>> counts; // of values, by field
    for (const QJsonObject& car : fieldsOf("*/corvel.demo.Vehicle", "--format=mcap --seed=5 --duration=65"))
        for (const char* field :
             {"wheels", "pose", "ranges", "temperatures", "trailer", "motor", "engine", "target_speed"})
            counts[field].insert(car[field].isArray() ? int(car[field].toArray().size()) : car.contains(field));
    QCOMPARE(counts, (QMap<QString, QSet<int>>{{"wheels", {4}},
                                               {"pose", {1}},
                                               {"ranges", {8}},
                                               {"temperatures", {2, 3}},
                                               {"trailer", {0, 1}},
                                               {"motor", {0, 1}},
                                               {"engine", {0, 1}},
                                               {"target_speed", {0, 1}}}));
}

void TestSimulate::whatARobotSendsAgrees()
{
    const char robot[] = "--robot --duration=10";
    const auto odometry = fieldsOf("*/nav_msgs/msg/Odometry", robot);
    const auto joints = fieldsOf("*/sensor_msgs/msg/JointState", robot);
    const auto inertia = fieldsOf("*/sensor_msgs/msg/Imu", robot);
    const auto fixes = fieldsOf("*/sensor_msgs/msg/NavSatFix", robot);
    const auto scans = fieldsOf("*/sensor_msgs/msg/LaserScan", robot);
    const auto clouds = fieldsOf("*/sensor_msgs/msg/PointCloud2", robot);
    const auto angle = [](const QJsonValue& rotation) {
        return 2 * std::atan2(rotation["z"].toDouble(), rotation["w"].toDouble());
    };
    const QJsonValue start = fieldsOf("*/tf2_msgs/msg/TFMessage", robot).at(0)["transforms"][0]["transform"];
    // Where something is in the yard that lies so many metres before and to the left of the robot.
    const auto inYard = [&](int odometer, double ahead, double left) {
        const QJsonValue pose = odometry.at(odometer)["pose"]["pose"];
        const std::complex<double> origin(start["translation"]["x"].toDouble(), start["translation"]["y"].toDouble());
        const std::complex<double> position(pose["position"]["x"].toDouble(), pose["position"]["y"].toDouble());
        return origin +
               std::polar(1.0, angle(start["rotation"])) *
                   (position + std::polar(1.0, angle(pose["orientation"])) * std::complex<double>(ahead, left));
    };
    double driven = 0;
    for (int i = 0; i < odometry.size(); ++i) {
        const QJsonValue twist = odometry.at(i)["twist"]["twist"];
        const double speed = twist["linear"]["x"].toDouble();
        const double turning = twist["angular"]["z"].toDouble();
        checkNear(inertia.at(2 * i)["angular_velocity"]["z"].toDouble(), turning, 0.013);
        checkNear(inertia.at(2 * i)["linear_acceleration"]["y"].toDouble(), speed * turning, 0.13);
        checkNear(joints.at(i)["velocity"][0].toDouble() * 0.1, speed - 0.2 * turning, 1e-9);
        if (i > 0)
            driven += std::abs(inYard(i, 0, 0) - inYard(i - 1, 0, 0));
        const QJsonValue wheels = joints.at(i)["position"];
        checkNear((wheels[0].toDouble() + wheels[1].toDouble()) / 2 * 0.1, driven, 1e-3);
        if (i % 10 != 0)
            continue;
        const std::complex<double> place = inYard(i, 0, 0);
        checkNear((fixes.at(i / 10)["latitude"].toDouble() - 48.1) * 111194.9, place.imag(), 0.15);
        checkNear((fixes.at(i / 10)["longitude"].toDouble() - 11.2) * 74259, place.real(), 0.15);

        const QByteArray points = QByteArray::fromHex(clouds.at(i / 10)["data"].toString().toLatin1());
        for (int at = 0; at < points.size(); at += 16) {
            float point[3];
            std::memcpy(point, points.constData() + at, sizeof point);
            const std::complex<double> seen = inYard(i, double(point[2]) + 0.25, double(-point[0]));
            QVERIFY(std::isnan(point[0]) || (std::abs(seen.real()) < 6.001 && std::abs(seen.imag()) < 4.001 &&
                                             point[1] < 0.501f && point[1] > -1.501f));
        }
    }

    // All that the laser sees lies within the walls, which it sees, too.
    double farthestEast = 0;
    double farthestNorth = 0;
    for (int i = 1; i < scans.size(); ++i) {
        for (int beam = 0; beam < 360; ++beam) {
            const double direction = (beam - 180) * std::atan(1.0) / 45;
            const double range = scans.at(i)["ranges"][beam].toDouble();
            const std::complex<double> seen =
                inYard(i * 5 - 5 + beam / 72, 0.15 + range * std::cos(direction), range * std::sin(direction));
            farthestEast = std::max(farthestEast, std::abs(seen.real()));
            farthestNorth = std::max(farthestNorth, std::abs(seen.imag()));
        }
    }
    checkNear(farthestEast, 6.05, 0.06);
    checkNear(farthestNorth, 4.05, 0.06);
}

void TestSimulate::isAnInputInRealTime()
{
    // What is due, and not all that there is: a vehicle sends about 140 frames of 40 bytes a second, a robot 3 MB.
    static const struct
    {
        SimulatorInput::Device device;
        const char* begin;
        qint64 wanted;
        qint64 mostPerSecond;
    } inputs[] = {{SimulatorInput::Vehicle, "\xFD", 2000, 10000}, {SimulatorInput::Robot, "\x89MCAP", 800000, 4000000}};
    for (const auto& expected : inputs) {
        SimulatorInput input(Simulation::Settings(), expected.device);
        QVERIFY(input.open() && input.isLive());
        QByteArray all;
        QByteArray bytes;
        QElapsedTimer timer;
        timer.start();
        while (all.size() < expected.wanted && timer.elapsed() < 30000) {
            const ByteInput::Status status = input.read(&bytes, 20);
            QCOMPARE(status, bytes.isEmpty() ? ByteInput::Nothing : ByteInput::Data);
            all += bytes;
        }
        QVERIFY(all.startsWith(expected.begin));
        QVERIFY2(all.size() < expected.wanted + expected.mostPerSecond * timer.elapsed() / 1000,
                 qPrintable(QString::number(all.size())));

        input.cancel();
        timer.start();
        QCOMPARE(input.read(&bytes, 10000), ByteInput::Nothing);
        QVERIFY(timer.elapsed() < 5000);
    }
}

void TestSimulate::sendsDatagrams()
{
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress(QHostAddress::LocalHost)));
    QCOMPARE(
        ShellRun(QString("corvel-simulate --duration=0.2 --speed=0 udp:localhost:%1").arg(socket.localPort())).said(),
        QString());
    int datagrams = 0;
    while (socket.hasPendingDatagrams() || socket.waitForReadyRead(100)) {
        QByteArray bytes(int(socket.pendingDatagramSize()), '\0');
        socket.readDatagram(bytes.data(), bytes.size());
        QVERIFY(bytes.startsWith('\xFD') && bytes.size() == 12 + quint8(bytes.at(1))); // one frame
        ++datagrams;
    }
    QVERIFY2(datagrams > 20, qPrintable(QString::number(datagrams)));
}

QTEST_GUILESS_MAIN(TestSimulate)
#include "tst_simulate.moc"
