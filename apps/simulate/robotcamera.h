#ifndef ROBOTCAMERA_H
#define ROBOTCAMERA_H

#include "robotyard.h"

#include <QVector>

/** What a camera sees of the yard, with colours and depths. */
class RobotCamera
{
public:
    enum
    {
        Width = 320,
        Height = 240
    };

    struct Pixel
    {
        quint8 red;
        quint8 green;
        quint8 blue;
        double depth; ///< metres from the camera in the direction in which it looks; infinite in the sky
    };

    static constexpr double FocalLength = 228; ///< in pixels
    static constexpr double HeightAbove = 0.5; ///< metres above the ground

    explicit RobotCamera(const RobotPose& pose);

    /** What is seen there; columns are counted from the left, lines from above. */
    Pixel look(int column, int line) const;

    /** How far that is to the right of the middle, or below, in a depth of one metre. */
    static double right(int column) { return (column + 0.5 - Width / 2) / FocalLength; }
    static double below(int line) { return (line + 0.5 - Height / 2) / FocalLength; }

private:
    struct Column
    {
        double depth; // of what stands there
        double along;
        RobotYard::Surface surface;
        double stepX; // metres in the yard for a metre of depth
        double stepY;
    };

    RobotPose m_pose;
    QVector<Column> m_columns;
};

#endif
