#ifndef DRIVESIMULATION_H
#define DRIVESIMULATION_H

#include "channelsimulation.h"

/**
 * Cars that drive round, and what they send as messages of Protocol Buffers: 20 times a second how each moves, and once
 * a second what it is made of.
 */
class DriveSimulation : public ChannelSimulation
{
public:
    explicit DriveSimulation(const Simulation::Settings& settings);

private:
    Encoding getEncoding() const override;
    /** A serialized FileDescriptorSet. */
    QByteArray getSchema(const QByteArray& type) const override;
    QByteArray makeMessage(int channel, qint64 sinceStart) override;
};

#endif
