#ifndef ROBOTYARD_H
#define ROBOTYARD_H

/** A place and a direction in the yard. */
struct RobotPose
{
    /** The pose of something that is mounted @p ahead metres before the middle of this, and turned left by @p turn. */
    RobotPose mounted(double ahead, double turn) const;

    double x;       ///< metres to the east of the yard's middle
    double y;       ///< metres to the north
    double heading; ///< radians from the east to the left
};

/** Where the robot drives: 12 by 8 metres with walls round it, two pillars and a shed. */
namespace RobotYard
{

const double WallHeight = 2; ///< metres, of all that stands there

enum Surface
{
    Wall,
    Shed,
    Pillar
};

/** What is seen first in a direction. */
struct Sight
{
    double distance; ///< metres
    double along;    ///< metres along the surface from where it begins
    Surface surface;
};

/** What is seen from a place inside of the yard; there is always something. */
Sight look(const RobotPose& from);

} // namespace RobotYard

#endif
