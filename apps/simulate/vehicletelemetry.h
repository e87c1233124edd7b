#ifndef VEHICLETELEMETRY_H
#define VEHICLETELEMETRY_H

#include "vehiclemodel.h"

class MavlinkEncoder;

/** What the messages are made of: the vehicle, and the time it is. */
struct TelemetryMoment
{
    VehicleModel* model; ///< not const, because noise moves its random numbers on
    qint64 time;         ///< microseconds since 1970
    qint64 sinceStart;   ///< microseconds since the vehicle was switched on
    int index;           ///< how many messages of the type were before
    int kind;            ///< as HEARTBEAT tells it
};

/** A type of message that a vehicle sends regularly. */
struct TelemetryType
{
    /** The types, those with the highest rate last. */
    static const QVector<TelemetryType>& all();

    /** The number of parameters; PARAM_VALUE is sent once for each. */
    static int parameterCount();

    const char* name;
    double hertz;
    quint8 component;
    int count; ///< how often in all; 0: for ever
    void (*fill)(const TelemetryMoment& moment, MavlinkEncoder* message);
};

#endif
