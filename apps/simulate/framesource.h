#ifndef FRAMESOURCE_H
#define FRAMESOURCE_H

#include <QByteArray>

/** A MAVLink frame or a message of a channel, and when it is sent in microseconds since 1970. */
struct SimulatedFrame
{
    qint64 time = 0;
    QByteArray bytes;
    int channel = 0;      ///< of ChannelSimulation
    quint32 sequence = 0; ///< of the message in its channel, from 1; 0 for frames, which have it inside
};

/** Something that sends for ever. */
class FrameSource
{
public:
    virtual ~FrameSource() {}

    /** The next that is sent; times never decrease. Without bytes it got lost. */
    virtual SimulatedFrame takeNext() = 0;
};

#endif
