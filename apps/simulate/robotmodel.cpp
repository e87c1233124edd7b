#include "robotmodel.h"

#include <algorithm>
#include <cmath>

namespace
{

const double Pi = 3.14159265358979323846;

const double HalfLength = 3.5; // metres, of the figure of eight
const double HalfWidth = 1.75;
const double Step = 0.01;          // seconds
const double BatteryTime = 2400;   // seconds from full to empty
const double LeastCharge = 0.1;    // when it is replaced
const double Mass = 18;            // kilograms
const double RollingForce = 7;     // newtons
const double StandbyCurrent = 1.3; // amperes

struct Swing
{
    double middle; // radians
    double width;
    double speed; // radians a second
    double start;
    double weight; // newton metres when it is level
};

const Swing Arm[RobotModel::ArmCount] = {
    {0, 1.2, 0.4, 0, 0}, {0.7, 0.35, 0.7, 1, 9.5}, {-1.3, 0.4, 0.9, 2, 4.2}, {0.4, 0.5, 1.3, 0, 0.6}};

} // namespace

struct RobotModel::Curve
{
    double x;
    double y;
    double speedX;
    double speedY;
    double accelerationX;
    double accelerationY;
};

RobotModel::RobotModel(std::uint32_t seed, std::uint32_t stream)
    : m_time(0)
    , m_distance(0)
    , m_turned(0)
{
    RandomNumbers numbers(seed, stream);
    m_start = numbers.uniform() * 2 * Pi;
    m_direction = numbers.uniform() < 0.5 ? -1 : 1;
    m_charge = 0.6 + 0.35 * numbers.uniform();
}

void RobotModel::advance(double time)
{
    while (m_time < time) {
        const double next = std::min(time, m_time + Step);
        const double step = next - m_time;
        const Motion before = getMotion(m_time);
        const Motion after = getMotion(next);
        m_distance += (before.speed + after.speed) / 2 * step;
        m_turned += std::remainder(getPose(next).heading - getPose(m_time).heading, 2 * Pi);
        m_time = next;
    }
}

RobotModel::Curve RobotModel::curve(double time) const
{
    const double rate = m_direction * 2 * Pi / LapTime;
    const double angle = m_start + rate * time;
    return {HalfLength * std::sin(angle),
            HalfWidth * std::sin(2 * angle),
            HalfLength * std::cos(angle) * rate,
            HalfWidth * std::cos(2 * angle) * 2 * rate,
            HalfLength * -std::sin(angle) * rate * rate,
            HalfWidth * -std::sin(2 * angle) * 4 * rate * rate};
}

RobotPose RobotModel::getPose(double time) const
{
    const Curve now = curve(time);
    return {now.x, now.y, std::atan2(now.speedY, now.speedX)};
}

RobotModel::Motion RobotModel::getMotion(double time) const
{
    const Curve now = curve(time);
    const double speed = std::hypot(now.speedX, now.speedY);
    return {speed, (now.speedX * now.accelerationX + now.speedY * now.accelerationY) / speed,
            (now.speedX * now.accelerationY - now.speedY * now.accelerationX) / (speed * speed)};
}

std::array<RobotModel::Joint, RobotModel::JointCount> RobotModel::getJoints() const
{
    const Motion motion = getMotion(m_time);
    std::array<Joint, JointCount> joints;
    for (int i = 0; i < WheelCount; ++i) {
        const double side = (i == 0 ? -1 : 1) * WheelTrack / 2;
        joints[std::size_t(i)] = {(m_distance + side * m_turned) / WheelRadius,
                                  (motion.speed + side * motion.turnRate) / WheelRadius,
                                  (Mass * motion.acceleration + RollingForce) * WheelRadius / 2};
    }
    for (int i = 0; i < ArmCount; ++i) {
        const Swing& swing = Arm[i];
        const double phase = swing.start + swing.speed * m_time;
        const double position = swing.middle + swing.width * std::sin(phase);
        joints[std::size_t(WheelCount + i)] = {position, swing.width * swing.speed * std::cos(phase),
                                               swing.weight * std::cos(position)};
    }
    return joints;
}

double RobotModel::getBatteryCharge() const
{
    return 1 - std::fmod(1 - m_charge + m_time / BatteryTime, 1 - LeastCharge);
}

double RobotModel::getCurrent() const
{
    const Motion motion = getMotion(m_time);
    return StandbyCurrent + std::max(0.0, Mass * motion.acceleration + RollingForce) * motion.speed * 0.25;
}
