#include "robotyard.h"

#include <cmath>
#include <limits>

namespace
{

const double Pi = 3.14159265358979323846;

struct Side
{
    double x;
    double y;
    double towardsX;
    double towardsY;
    RobotYard::Surface surface;
};

struct Round
{
    double x;
    double y;
    double radius;
};

const Side Sides[] = {
    {-6, -4, 6, -4, RobotYard::Wall},      {6, -4, 6, 4, RobotYard::Wall},        {6, 4, -6, 4, RobotYard::Wall},
    {-6, 4, -6, -4, RobotYard::Wall},      {4.2, 2.6, 5.4, 2.6, RobotYard::Shed}, {5.4, 2.6, 5.4, 3.4, RobotYard::Shed},
    {5.4, 3.4, 4.2, 3.4, RobotYard::Shed}, {4.2, 3.4, 4.2, 2.6, RobotYard::Shed},
};

const Round Rounds[] = {{1.9, 0, 0.35}, {-1.9, 0, 0.35}};

} // namespace

RobotPose RobotPose::mounted(double ahead, double turn) const
{
    return {x + ahead * std::cos(heading), y + ahead * std::sin(heading), heading + turn};
}

RobotYard::Sight RobotYard::look(const RobotPose& from)
{
    const double stepX = std::cos(from.heading);
    const double stepY = std::sin(from.heading);
    Sight sight = {std::numeric_limits<double>::infinity(), 0, Wall};
    for (const Side& side : Sides) {
        const double sideX = side.towardsX - side.x;
        const double sideY = side.towardsY - side.y;
        const double across = stepX * sideY - stepY * sideX;
        if (across == 0)
            continue;
        const double distance = ((side.x - from.x) * sideY - (side.y - from.y) * sideX) / across;
        const double share = ((side.x - from.x) * stepY - (side.y - from.y) * stepX) / across;
        if (distance > 0 && distance < sight.distance && share >= 0 && share <= 1)
            sight = {distance, share * std::hypot(sideX, sideY), side.surface};
    }
    for (const Round& round : Rounds) {
        const double nearest = (round.x - from.x) * stepX + (round.y - from.y) * stepY;
        const double beside = (round.x - from.x) * stepY - (round.y - from.y) * stepX;
        if (nearest < 0 || std::abs(beside) >= round.radius)
            continue;
        const double distance = nearest - std::sqrt(round.radius * round.radius - beside * beside);
        const double angle = std::atan2(from.y + distance * stepY - round.y, from.x + distance * stepX - round.x) + Pi;
        if (distance > 0 && distance < sight.distance)
            sight = {distance, round.radius * angle, Pillar};
    }
    return sight;
}
