#ifndef ROBOTMOUNTING_H
#define ROBOTMOUNTING_H

/** Where a robot has its sensors, in metres from the ground below its middle. */
namespace RobotMounting
{

const double GnssUp = 0.6;
const double LaserAhead = 0.15;
const double LaserUp = 0.3;
const double CameraAhead = 0.25;
const double CameraUp = 0.5;

} // namespace RobotMounting

#endif
