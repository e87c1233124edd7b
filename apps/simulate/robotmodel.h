#ifndef ROBOTMODEL_H
#define ROBOTMODEL_H

#include "randomnumbers.h"
#include "robotyard.h"

#include <array>

/**
 * A robot with two driven wheels and an arm of four joints, which drives figures of eight round the pillars of the
 * yard. All times are seconds since the start.
 */
class RobotModel
{
public:
    enum
    {
        WheelCount = 2,
        ArmCount = 4,
        JointCount = WheelCount + ArmCount
    };

    struct Motion
    {
        double speed;        ///< metres a second
        double acceleration; ///< metres a second squared, ahead
        double turnRate;     ///< radians a second, to the left
    };

    struct Joint
    {
        double position; ///< radians
        double velocity; ///< radians a second
        double effort;   ///< newton metres
    };

    static constexpr double WheelRadius = 0.1; ///< metres
    static constexpr double WheelTrack = 0.4;  ///< metres from the left wheel to the right one

    RobotModel(std::uint32_t seed, std::uint32_t stream);

    /** Drives on until then, which must not be before the current time. */
    void advance(double time);

    double getTime() const { return m_time; }
    /** Rounds of the figure of eight, with a fraction. */
    double getLaps() const { return m_time / LapTime; }
    /** Metres driven until now. */
    double getDistance() const { return m_distance; }
    /** Radians turned to the left until now, whole turns included. */
    double getTurned() const { return m_turned; }
    /** The left wheel, the right one, and then the arm from its base on; now. */
    std::array<Joint, JointCount> getJoints() const;
    double getBatteryCharge() const; ///< 0 to 1, now; an empty battery is replaced by a full one
    double getCurrent() const;       ///< amperes, now

    RobotPose getPose(double time) const;
    Motion getMotion(double time) const;

private:
    struct Curve; // where it is on the figure of eight, and how that changes

    static constexpr double LapTime = 60;

    Curve curve(double time) const;

    double m_start;     // radians on the figure of eight
    double m_direction; // 1 or -1
    double m_charge;    // 0 to 1, at the start
    double m_time;
    double m_distance;
    double m_turned;
};

#endif
