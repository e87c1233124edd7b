#ifndef ROBOTMESSAGES_H
#define ROBOTMESSAGES_H

#include "cdrwriter.h"
#include "robotmodel.h"

/** A robot and what it sends: ROS 2 messages as CDR, which agree with one another. */
class RobotMessages
{
public:
    /**
     * @param prefix     what its frames begin with; may be empty
     * @param startTime  microseconds since 1970
     */
    RobotMessages(quint32 seed, quint32 number, const QByteArray& prefix, qint64 startTime);

    /** All that is sent from now on is sent at that time, in seconds since the start. Times must not decrease. */
    void advance(double time) { m_model.advance(time); }

    QByteArray imu();
    QByteArray fix();
    QByteArray jointStates();
    QByteArray odometry();
    QByteArray transforms();
    QByteArray diagnostics();
    QByteArray chatter();

    // These are in robotsights.cpp.
    QByteArray scan();
    QByteArray points();
    QByteArray image();

private:
    CdrWriter& header(CdrWriter* writer, const char* frame, double time) const;
    CdrWriter& transform(CdrWriter* writer, const char* parent, const char* child, double x, double y, double z,
                         const std::array<double, 4>& rotation) const;
    RobotPose odometryPose() const;

    const QByteArray m_prefix;
    const qint64 m_startTime;
    RobotModel m_model;
    RandomNumbers m_numbers;
    WanderingValue m_errorEast; // metres, of the position that satellites tell
    WanderingValue m_errorNorth;
    WanderingValue m_errorUp;
};

#endif
