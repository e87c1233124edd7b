#ifndef ROBOTSCHEMAS_H
#define ROBOTSCHEMAS_H

#include <QByteArray>

/** The definitions of the messages of a robot. */
namespace RobotSchemas
{

/** What a recording holds of a type, such as sensor_msgs/msg/Imu: its definition, and behind it all that it needs. */
QByteArray find(const QByteArray& type);

} // namespace RobotSchemas

#endif
