#include "vehiclemodel.h"

#include <algorithm>
#include <utility>

namespace
{

const double Gravity = 9.80665;
const double Pi = 3.14159265358979323846;

const double ArmedWait = 2;
const double GroundWait = 10;
const double CourseHeight = 30;
const double CourseRadius = 80;
const double CourseSpeed = 9;
const double SpeedUpTime = 5;
const int Laps = 3;
const double ClimbSpeed = 2.5;
const double SinkSpeed = 1.5;
const double TouchDownSpeed = 0.5;
const double HoverThrottle = 0.42;
const double HoverCurrent = 17;
const double IdleCurrent = 0.4;
const double Drag = 0.15; // 1/s
const double BatteryResistance = 0.03;

double limited(double value, double limit)
{
    return std::clamp(value, -limit, limit);
}

/** The angle from -pi to pi. */
double wrapped(double angle)
{
    return std::remainder(angle, 2 * Pi);
}

} // namespace

VehicleModel::VehicleModel(std::uint32_t seed, std::uint32_t stream, double waitOnGround)
    : m_numbers(seed, stream)
    , m_wait(waitOnGround)
    , m_windNorth(1.2, 4)
    , m_windEast(1.2, 4)
    , m_errorNorth(0.6, 20)
    , m_errorEast(0.6, 20)
    , m_errorUp(1.1, 30)
{
    m_yaw = (m_numbers.uniform() - 0.5) * 2;
}

void VehicleModel::advance()
{
    m_time += Step;
    m_phaseTime += Step;
    for (WanderingValue* const value : {&m_windNorth, &m_windEast, &m_errorNorth, &m_errorEast, &m_errorUp})
        value->advance(Step, &m_numbers);
    decide();
    moveTarget();
    accelerate();
    drainBattery();
}

QVector<VehicleEvent> VehicleModel::takeEvents()
{
    return std::exchange(m_events, QVector<VehicleEvent>());
}

Vector VehicleModel::getSpecificForce() const
{
    // Without wind and drag this would be thrust alone, along the vehicle's own axis.
    const double forward = std::cos(m_yaw) * m_acceleration.north + std::sin(m_yaw) * m_acceleration.east;
    const double right = -std::sin(m_yaw) * m_acceleration.north + std::cos(m_yaw) * m_acceleration.east;
    Vector force;
    force.north = forward * std::cos(m_pitch) + (Gravity + m_acceleration.up) * std::sin(m_pitch);
    force.east = right * std::cos(m_roll) - (Gravity + m_acceleration.up) * std::sin(m_roll);
    force.up = -(Gravity + m_acceleration.up) * std::cos(m_roll) * std::cos(m_pitch);
    return force;
}

Vector VehicleModel::getPositionError() const
{
    Vector error;
    error.north = m_errorNorth.get();
    error.east = m_errorEast.get();
    error.up = m_errorUp.get();
    return error;
}

double VehicleModel::getGroundSpeed() const
{
    return std::hypot(m_velocity.north, m_velocity.east);
}

double VehicleModel::getVoltage() const
{
    // Four cells: high at first, even for long, steep in the end.
    const double charge = getCharge();
    const double cell = 3.5 + 0.5 * charge + 0.2 * std::pow(charge, 8) - 0.5 * std::pow(1 - charge, 6);
    return 4 * cell - BatteryResistance * m_current;
}

double VehicleModel::getCharge() const
{
    return std::max(0.0, 1 - m_used / FullCharge);
}

void VehicleModel::enter(Phase phase)
{
    m_phase = phase;
    m_phaseTime = 0;
}

void VehicleModel::say(int severity, const QByteArray& text)
{
    m_events.append(VehicleEvent{severity, text});
}

void VehicleModel::decide()
{
    switch (m_phase) {
    case OnGround:
        if (m_phaseTime >= m_wait) {
            m_wait = GroundWait;
            say(6, "Arming motors");
            enter(Armed);
        }
        break;
    case Armed:
        if (m_phaseTime >= ArmedWait) {
            say(6, "Take-off to 30 m");
            enter(TakeOff);
        }
        break;
    case TakeOff:
        if (m_position.up > CourseHeight - 0.5) {
            m_angle = 0;
            m_laps = 0;
            say(6, "Round course started");
            enter(Course);
        }
        break;
    case Course:
        if (m_angle >= 2 * Pi * (m_laps + 1)) {
            ++m_laps;
            say(6, "Lap " + QByteArray::number(m_laps) + " of " + QByteArray::number(Laps) + " complete");
        }
        if (m_laps == Laps) {
            say(6, "Returning to start");
            enter(Return);
        }
        break;
    case Return:
        if (m_phaseTime > 8 && getGroundSpeed() < 0.7) {
            say(6, "Landing");
            enter(Landing);
        }
        break;
    case Landing:
        if (m_position.up <= 0) {
            say(6, "Landed");
            enter(Landed);
        }
        break;
    case Landed:
        if (m_phaseTime >= ArmedWait) {
            say(6, "Disarmed, battery changed");
            m_used = 0;
            m_energy = 0;
            m_batteryWarned = false;
            enter(OnGround);
        }
        break;
    }
}

void VehicleModel::moveTarget()
{
    m_targetVelocity = Vector();
    switch (m_phase) {
    case OnGround:
    case Armed:
    case Landed:
        m_target = Vector();
        break;
    case TakeOff:
        m_targetVelocity.up = m_target.up < CourseHeight ? ClimbSpeed : 0;
        break;
    case Course: {
        // A circle through the start, with the speed built up little by little and hills on the way.
        const double speed = CourseSpeed * (1 - std::exp(-m_phaseTime / SpeedUpTime));
        m_angle += speed / CourseRadius * Step;
        m_target.north = CourseRadius * (1 - std::cos(m_angle));
        m_target.east = CourseRadius * std::sin(m_angle);
        m_target.up = CourseHeight + 5 * std::sin(2 * m_angle);
        m_targetVelocity.north = speed * std::sin(m_angle);
        m_targetVelocity.east = speed * std::cos(m_angle);
        m_targetVelocity.up = 10 * std::cos(2 * m_angle) * speed / CourseRadius;
        return;
    }
    case Return:
        m_target.north = 0;
        m_target.east = 0;
        m_target.up = CourseHeight;
        break;
    case Landing:
        m_targetVelocity.up = -(m_position.up > 6 ? SinkSpeed : TouchDownSpeed);
        break;
    }
    m_target.up += m_targetVelocity.up * Step;
}

void VehicleModel::accelerate()
{
    if (!isFlying()) {
        m_velocity = Vector();
        m_acceleration = Vector();
        m_position.up = 0;
        m_rollRate = m_pitchRate = m_yawRate = 0;
        m_roll = 0.008; // the ground is not quite level
        m_pitch = -0.012;
        m_throttle = m_phase == OnGround ? 0 : 0.12;
        return;
    }

    double north = 0.6 * (m_target.north - m_position.north) + 1.4 * (m_targetVelocity.north - m_velocity.north);
    double east = 0.6 * (m_target.east - m_position.east) + 1.4 * (m_targetVelocity.east - m_velocity.east);
    const double wanted = std::hypot(north, east);
    if (wanted > 4) {
        north *= 4 / wanted;
        east *= 4 / wanted;
    }
    north += Drag * m_velocity.north;
    east += Drag * m_velocity.east;
    turn(std::cos(m_yaw) * north + std::sin(m_yaw) * east, -std::sin(m_yaw) * north + std::cos(m_yaw) * east);

    const double forward = -Gravity * std::tan(m_pitch);
    const double right = Gravity * std::tan(m_roll);
    m_acceleration.north =
        std::cos(m_yaw) * forward - std::sin(m_yaw) * right - Drag * (m_velocity.north - m_windNorth.get());
    m_acceleration.east =
        std::sin(m_yaw) * forward + std::cos(m_yaw) * right - Drag * (m_velocity.east - m_windEast.get());
    const double climb = limited(1.5 * (m_target.up - m_position.up) + 2.2 * (m_targetVelocity.up - m_velocity.up), 3);
    m_acceleration.up += 8 * (climb - m_acceleration.up) * Step;

    m_velocity.north += m_acceleration.north * Step;
    m_velocity.east += m_acceleration.east * Step;
    m_velocity.up += m_acceleration.up * Step;
    m_position.north += m_velocity.north * Step;
    m_position.east += m_velocity.east * Step;
    m_position.up += m_velocity.up * Step;
    m_throttle = std::clamp(HoverThrottle * (1 + m_acceleration.up / Gravity) / (std::cos(m_roll) * std::cos(m_pitch)),
                            0.0, 1.0);
}

/** Tilts towards the acceleration that is wanted, and turns the nose to where it flies. */
void VehicleModel::turn(double forward, double right)
{
    const double gust = 0.05 * m_numbers.normal();
    m_pitchRate = limited(6 * (-std::atan2(forward, Gravity) - m_pitch), 2) + gust;
    m_rollRate = limited(6 * (std::atan2(right, Gravity) - m_roll), 2) + 0.05 * m_numbers.normal();
    const double course = getGroundSpeed() > 1.5 ? std::atan2(m_velocity.east, m_velocity.north) : m_yaw;
    m_yawRate = limited(1.5 * wrapped(course - m_yaw), 1) + 0.02 * m_numbers.normal();
    m_pitch += m_pitchRate * Step;
    m_roll += m_rollRate * Step;
    m_yaw = wrapped(m_yaw + m_yawRate * Step);
}

void VehicleModel::drainBattery()
{
    m_current = IdleCurrent + HoverCurrent * std::pow(m_throttle / HoverThrottle, 1.5);
    m_used += m_current * Step;
    m_energy += m_current * getVoltage() * Step;
    if (getCharge() < 0.55 && !m_batteryWarned) {
        m_batteryWarned = true;
        say(4, "Battery below 55 %");
    }
}
