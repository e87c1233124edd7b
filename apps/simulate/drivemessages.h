#ifndef DRIVEMESSAGES_H
#define DRIVEMESSAGES_H

#include <QByteArray>

/** A car, and when its messages are made. */
struct DriveMoment
{
    quint32 seed;
    quint32 number;
    double seconds; ///< since it started
    qint64 time;    ///< microseconds since 1970
};

/** What a car sends, serialized. */
namespace DriveMessages
{

/** A corvel.demo.Vehicle. */
QByteArray vehicle(const DriveMoment& moment);
/** A corvel.demo.Part: the car with its parts, their parts, and so on. */
QByteArray parts(const DriveMoment& moment);

} // namespace DriveMessages

#endif
