#include "robotcamera.h"

#include <cmath>
#include <limits>

namespace
{

const double PanelWidth = 0.8; // metres, of what is painted on the walls
const double TileWidth = 0.5;  // of the ground

struct Paint
{
    int red;
    int green;
    int blue;
};

const Paint Paints[][2] = {
    {{196, 164, 120}, {176, 142, 98}}, {{92, 120, 156}, {74, 98, 132}}, {{188, 92, 70}, {226, 214, 198}}};
const Paint Tiles[] = {{118, 120, 116}, {98, 100, 98}};

bool isOdd(double value, double width)
{
    return int(std::floor(value / width)) & 1;
}

RobotCamera::Pixel shaded(const Paint& paint, double depth)
{
    const double light = 1 / (1 + 0.05 * depth);
    return {quint8(paint.red * light), quint8(paint.green * light), quint8(paint.blue * light), depth};
}

} // namespace

RobotCamera::RobotCamera(const RobotPose& pose)
    : m_pose(pose)
{
    m_columns.reserve(Width);
    for (int i = 0; i < Width; ++i) {
        const double angle = -std::atan(right(i));
        const RobotPose ray = pose.mounted(0, angle);
        const RobotYard::Sight sight = RobotYard::look(ray);
        m_columns.append({sight.distance * std::cos(angle), sight.along, sight.surface,
                          std::cos(ray.heading) / std::cos(angle), std::sin(ray.heading) / std::cos(angle)});
    }
}

RobotCamera::Pixel RobotCamera::look(int column, int line) const
{
    const Column& seen = m_columns.at(column);
    const double slope = below(line);
    const double height = HeightAbove - slope * seen.depth;
    if (height > RobotYard::WallHeight)
        return {quint8(150 + line / 2), quint8(190 + line / 4), 235, std::numeric_limits<double>::infinity()};
    if (height >= 0)
        return shaded(Paints[seen.surface][isOdd(seen.along, PanelWidth)], seen.depth);
    const double depth = HeightAbove / slope;
    const bool odd = isOdd(m_pose.x + depth * seen.stepX, TileWidth) != isOdd(m_pose.y + depth * seen.stepY, TileWidth);
    return shaded(Tiles[odd], depth);
}
