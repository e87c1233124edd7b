#ifndef DRIVESIMULATION_H
#define DRIVESIMULATION_H

#include "simulation.h"

#include <QVector>

/**
 * Cars that drive round, and what they send as messages of Protocol Buffers: 20 times a second how each moves, and once
 * a second what it is made of. The same settings give the same messages.
 */
class DriveSimulation
{
public:
    struct Channel
    {
        QByteArray topic;
        QByteArray type; ///< full name
    };

    /** The rate at which bytes get changed is none of its business: see McapOutput. */
    explicit DriveSimulation(const Simulation::Settings& settings);

    /** What messages are described by: a serialized FileDescriptorSet. */
    static QByteArray getSchema();

    /** SimulatedFrame::channel counts these. */
    const QVector<Channel>& getChannels() const { return m_channels; }

    /** The next message of any car; times never decrease. Without bytes it got lost. */
    SimulatedFrame takeNext();

private:
    struct Schedule
    {
        qint64 interval; // microseconds
        qint64 sent;
    };

    Simulation::Settings m_settings;
    QVector<Channel> m_channels;
    QVector<Schedule> m_schedules; // of the channels
    RandomNumbers m_linkNumbers;
};

#endif
