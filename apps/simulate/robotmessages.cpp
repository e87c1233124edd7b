#include "robotmessages.h"

#include "robotmounting.h"

#include <QPair>
#include <QVector>

#include <cmath>

namespace
{

const double Gravity = 9.80665;
const double YardLatitude = 48.1;
const double YardLongitude = 11.2;
const double YardAltitude = 590; // metres above the ellipsoid
const double MetresPerDegree = 111194.9;
const double Degrees = 180 / 3.14159265358979323846;

const double FixInterval = 0.2; // seconds
const double FixDeviation = 0.02;
const double FixDeviationUp = 0.04;
const double TurnRateDeviation = 0.002;
const double AccelerationDeviation = 0.02;

const double WeakLink = 0.45;
const double LowCharge = 0.25;
const double VeryLowCharge = 0.15;

const char* const JointNames[RobotModel::JointCount] = {"left_wheel_joint",   "right_wheel_joint", "arm_base_joint",
                                                        "arm_shoulder_joint", "arm_elbow_joint",   "arm_wrist_joint"};

typedef std::array<double, 4> Rotation; // x, y, z, w

/** A turn about an axis: 0 is x, 1 is y, 2 is z. */
Rotation turned(int axis, double angle)
{
    Rotation rotation = {0, 0, 0, std::cos(angle / 2)};
    rotation[std::size_t(axis)] = std::sin(angle / 2);
    return rotation;
}

template <std::size_t Count>
CdrWriter& reals(CdrWriter* writer, const std::array<double, Count>& values)
{
    for (const double value : values)
        writer->real(value);
    return *writer;
}

/** A square matrix with these variances from its upper left to its lower right. */
template <std::size_t Count>
void covariance(CdrWriter* writer, const std::array<double, Count>& variances)
{
    for (std::size_t row = 0; row < Count; ++row)
        for (std::size_t column = 0; column < Count; ++column)
            writer->real(row == column ? variances[row] : 0);
}

typedef QVector<QPair<const char*, QByteArray>> Entries;

void status(CdrWriter* writer, int level, const char* name, const QByteArray& message, const char* hardware,
            const Entries& entries)
{
    writer->number8(level).text(name).text(message).text(hardware).count(entries.size());
    for (const auto& entry : entries)
        writer->text(entry.first).text(entry.second);
}

QByteArray withUnit(double value, int decimals, const char* unit)
{
    return QByteArray::number(value, 'f', decimals) + ' ' + unit;
}

} // namespace

RobotMessages::RobotMessages(quint32 seed, quint32 number, const QByteArray& prefix, qint64 startTime)
    : m_prefix(prefix)
    , m_startTime(startTime)
    , m_model(seed, 2 * number)
    , m_numbers(seed, 2 * number + 1)
    , m_errorEast(FixDeviation, 20)
    , m_errorNorth(FixDeviation, 20)
    , m_errorUp(FixDeviationUp, 20)
{
}

CdrWriter& RobotMessages::header(CdrWriter* writer, const char* frame, double time) const
{
    const qint64 second = 1000000;
    const qint64 now = m_startTime + qint64(std::llround(time * double(second)));
    const qint64 rest = (now % second + second) % second; // a scan begins before the start, which may be 1970
    writer->number32(quint32((now - rest) / second)).number32(quint32(rest * 1000));
    return writer->text(*frame ? m_prefix + frame : QByteArray());
}

CdrWriter& RobotMessages::transform(CdrWriter* writer, const char* parent, const char* child, double x, double y,
                                    double z, const Rotation& rotation) const
{
    header(writer, parent, m_model.getTime()).text(m_prefix + child).real(x).real(y).real(z);
    return reals(writer, rotation);
}

/** Odometry begins where the robot was switched on. */
RobotPose RobotMessages::odometryPose() const
{
    const RobotPose start = m_model.getPose(0);
    const RobotPose now = m_model.getPose(m_model.getTime());
    const double ahead = std::cos(start.heading);
    const double aside = std::sin(start.heading);
    return {(now.x - start.x) * ahead + (now.y - start.y) * aside,
            (now.y - start.y) * ahead - (now.x - start.x) * aside, now.heading - start.heading};
}

QByteArray RobotMessages::imu()
{
    const double now = m_model.getTime();
    const RobotModel::Motion motion = m_model.getMotion(now);
    const auto noisy = [this](double value, double deviation) { return value + deviation * m_numbers.normal(); };
    CdrWriter writer;
    header(&writer, "imu_link", now);
    reals(&writer, turned(2, m_model.getPose(now).heading));
    covariance<3>(&writer, {1e-6, 1e-6, 1e-5});
    for (const double rate : {0.0, 0.0, motion.turnRate})
        writer.real(noisy(rate, TurnRateDeviation));
    const double turning = TurnRateDeviation * TurnRateDeviation;
    covariance<3>(&writer, {turning, turning, turning});
    for (const double acceleration : {motion.acceleration, motion.speed * motion.turnRate, Gravity})
        writer.real(noisy(acceleration, AccelerationDeviation));
    const double speeding = AccelerationDeviation * AccelerationDeviation;
    covariance<3>(&writer, {speeding, speeding, speeding});
    return writer.bytes();
}

QByteArray RobotMessages::fix()
{
    const int fixByGround = 2;
    const int systems = 1 | 8; // GPS and Galileo
    const int diagonalKnown = 2;
    for (WanderingValue* const error : {&m_errorEast, &m_errorNorth, &m_errorUp})
        error->advance(FixInterval, &m_numbers);
    const RobotPose pose = m_model.getPose(m_model.getTime());
    CdrWriter writer;
    header(&writer, "gnss_link", m_model.getTime()).number8(fixByGround).number16(systems);
    writer.real(YardLatitude + (pose.y + m_errorNorth.get()) / MetresPerDegree);
    writer.real(YardLongitude + (pose.x + m_errorEast.get()) / (MetresPerDegree * std::cos(YardLatitude / Degrees)));
    writer.real(YardAltitude + RobotMounting::GnssUp + m_errorUp.get());
    const double level = FixDeviation * FixDeviation;
    covariance<3>(&writer, {level, level, FixDeviationUp * FixDeviationUp});
    return writer.number8(diagonalKnown).bytes();
}

QByteArray RobotMessages::jointStates()
{
    const auto joints = m_model.getJoints();
    CdrWriter writer;
    header(&writer, "", m_model.getTime()).count(RobotModel::JointCount);
    for (const char* const name : JointNames)
        writer.text(m_prefix + name);
    for (const auto value : {&RobotModel::Joint::position, &RobotModel::Joint::velocity, &RobotModel::Joint::effort}) {
        writer.count(RobotModel::JointCount);
        for (const RobotModel::Joint& joint : joints)
            writer.real(joint.*value);
    }
    return writer.bytes();
}

QByteArray RobotMessages::odometry()
{
    const RobotPose pose = odometryPose();
    const RobotModel::Motion motion = m_model.getMotion(m_model.getTime());
    CdrWriter writer;
    header(&writer, "odom", m_model.getTime()).text(m_prefix + "base_link");
    writer.real(pose.x).real(pose.y).real(0);
    reals(&writer, turned(2, pose.heading));
    covariance<6>(&writer, {1e-3, 1e-3, 1e-6, 1e-6, 1e-6, 1e-3});
    reals<6>(&writer, {motion.speed, 0, 0, 0, 0, motion.turnRate});
    covariance<6>(&writer, {1e-4, 1e-6, 1e-6, 1e-6, 1e-6, 1e-4});
    return writer.bytes();
}

QByteArray RobotMessages::transforms()
{
    using namespace RobotMounting;
    const RobotPose start = m_model.getPose(0);
    const RobotPose odometry = odometryPose();
    const auto joints = m_model.getJoints();
    const double side = RobotModel::WheelTrack / 2;
    const double axle = RobotModel::WheelRadius;
    const Rotation none = turned(0, 0);
    CdrWriter writer;
    writer.count(12);
    transform(&writer, "map", "odom", start.x, start.y, 0, turned(2, start.heading));
    transform(&writer, "odom", "base_link", odometry.x, odometry.y, 0, turned(2, odometry.heading));
    transform(&writer, "base_link", "left_wheel", 0, side, axle, turned(1, joints[0].position));
    transform(&writer, "base_link", "right_wheel", 0, -side, axle, turned(1, joints[1].position));
    transform(&writer, "base_link", "arm_base", -0.1, 0, 0.25, turned(2, joints[2].position));
    transform(&writer, "arm_base", "arm_upper", 0, 0, 0.1, turned(1, -joints[3].position));
    transform(&writer, "arm_upper", "arm_fore", 0.35, 0, 0, turned(1, -joints[4].position));
    transform(&writer, "arm_fore", "arm_hand", 0.3, 0, 0, turned(1, -joints[5].position));
    transform(&writer, "base_link", "imu_link", 0, 0, axle, none);
    transform(&writer, "base_link", "gnss_link", 0, 0, GnssUp, none);
    transform(&writer, "base_link", "laser", LaserAhead, 0, LaserUp, none);
    // Of a camera x points to the right, y down and z ahead.
    transform(&writer, "base_link", "camera_optical_frame", CameraAhead, 0, CameraUp, {-0.5, 0.5, -0.5, 0.5});
    return writer.bytes();
}

QByteArray RobotMessages::diagnostics()
{
    const double now = m_model.getTime();
    const RobotPose pose = m_model.getPose(now);
    const double charge = m_model.getBatteryCharge();
    const double current = m_model.getCurrent();
    const double warming = 22 * (1 - std::exp(-now / 300));
    const double link = 1 - std::hypot(pose.x - 6, pose.y - 4) / 16 + 0.02 * m_numbers.normal();
    CdrWriter writer;
    header(&writer, "", now).count(4);
    status(&writer,
           charge < VeryLowCharge ? 2
           : charge < LowCharge   ? 1
                                  : 0,
           "battery", withUnit(100 * charge, 0, "%"), "battery",
           {{"voltage", withUnit(22.2 + 3 * charge - 0.06 * current, 2, "V")},
            {"current", withUnit(current, 2, "A")},
            {"charge", withUnit(100 * charge, 1, "%")},
            {"temperature", withUnit(24 + 0.3 * warming, 1, "C")}});
    status(&writer, 0, "drive", "driving", "motors",
           {{"left temperature", withUnit(24 + warming + 4 * current, 1, "C")},
            {"right temperature", withUnit(24.5 + warming + 4 * current, 1, "C")}});
    status(&writer, 0, "laser scanner", "turning", "laser",
           {{"turns", withUnit(600 + m_numbers.normal(), 1, "1/min")}});
    status(&writer, link < WeakLink ? 1 : 0, "radio link", link < WeakLink ? "weak" : "good", "radio",
           {{"quality", withUnit(100 * link, 0, "%")}, {"signal", withUnit(-80 + 45 * link, 0, "dBm")}});
    return writer.bytes();
}

QByteArray RobotMessages::chatter()
{
    return CdrWriter()
        .text("lap " + QByteArray::number(int(m_model.getLaps()) + 1) + ", " + withUnit(m_model.getDistance(), 1, "m") +
              " driven, battery " + withUnit(100 * m_model.getBatteryCharge(), 0, "%"))
        .bytes();
}
