#ifndef VEHICLEMODEL_H
#define VEHICLEMODEL_H

#include "randomnumbers.h"

#include <QByteArray>
#include <QVector>

/** North, east and up, in metres or metres a second (squared). */
struct Vector
{
    double north = 0;
    double east = 0;
    double up = 0;
};

/** Something that the vehicle tells in words. */
struct VehicleEvent
{
    int severity; ///< as in STATUSTEXT: 6 is information, 4 a warning
    QByteArray text;
};

/**
 * The motion of a multicopter and what drives it: it starts, climbs, flies three round courses, comes back, lands, gets
 * a full battery and starts again.
 *
 * The attitude is what accelerates it, so that the two agree; wind pushes it, and position measurements wander.
 */
class VehicleModel
{
public:
    enum Phase
    {
        OnGround,
        Armed,
        TakeOff,
        Course,
        Return,
        Landing,
        Landed
    };

    /** Seconds of one step of the model. */
    static constexpr double Step = 0.005;
    /** What a full battery holds, in ampere seconds. */
    static constexpr double FullCharge = 2.2 * 3600;

    /** @param waitOnGround  seconds before the first start */
    VehicleModel(std::uint32_t seed, std::uint32_t stream, double waitOnGround);

    /** Moves on by one Step. */
    void advance();

    /** What the vehicle told since the last call. */
    QVector<VehicleEvent> takeEvents();

    Phase getPhase() const { return m_phase; }
    bool isArmed() const { return m_phase != OnGround; }
    bool isFlying() const { return m_phase >= TakeOff && m_phase <= Landing; }
    double getTime() const { return m_time; }

    const Vector& getPosition() const { return m_position; } ///< relative to the start
    const Vector& getVelocity() const { return m_velocity; }
    const Vector& getTarget() const { return m_target; }
    /** What an accelerometer feels, forward, right and down, in m/s^2. */
    Vector getSpecificForce() const;
    Vector getPositionError() const; ///< of the satellite receiver, metres

    double getRoll() const { return m_roll; } ///< radians, like all angles here
    double getPitch() const { return m_pitch; }
    double getYaw() const { return m_yaw; }
    double getRollRate() const { return m_rollRate; }
    double getPitchRate() const { return m_pitchRate; }
    double getYawRate() const { return m_yawRate; }

    double getGroundSpeed() const;
    double getThrottle() const { return m_throttle; } ///< 0 to 1
    double getCurrent() const { return m_current; }   ///< ampere
    double getVoltage() const;
    double getCharge() const;                             ///< what is left, 0 to 1
    double getConsumedCharge() const { return m_used; }   ///< ampere seconds
    double getConsumedEnergy() const { return m_energy; } ///< joule

    /** A normal random number of this vehicle, for the noise of its sensors. */
    double noise() { return m_numbers.normal(); }

private:
    void enter(Phase phase);
    void decide();
    void moveTarget();
    void accelerate();
    void turn(double forward, double right);
    void drainBattery();
    void say(int severity, const QByteArray& text);

    RandomNumbers m_numbers;
    double m_wait;
    double m_time = 0;
    Phase m_phase = OnGround;
    double m_phaseTime = 0;
    double m_angle = 0; // on the round course, radians flown
    int m_laps = 0;
    Vector m_position;
    Vector m_velocity;
    Vector m_acceleration;
    Vector m_target;
    Vector m_targetVelocity;
    double m_roll = 0;
    double m_pitch = 0;
    double m_yaw = 0;
    double m_rollRate = 0;
    double m_pitchRate = 0;
    double m_yawRate = 0;
    double m_throttle = 0;
    double m_current = 0;
    double m_used = 0;
    double m_energy = 0;
    bool m_batteryWarned = false;
    WanderingValue m_windNorth;
    WanderingValue m_windEast;
    WanderingValue m_errorNorth;
    WanderingValue m_errorEast;
    WanderingValue m_errorUp;
    QVector<VehicleEvent> m_events;
};

#endif
