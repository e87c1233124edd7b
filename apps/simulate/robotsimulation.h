#ifndef ROBOTSIMULATION_H
#define ROBOTSIMULATION_H

#include "channelsimulation.h"

#include <memory>
#include <vector>

class RobotMessages;

/**
 * Robots that drive figures of eight in a yard, and what they send as messages of ROS 2, from 100 times a second to
 * once. Topics and frames of several robots begin with the name of each.
 */
class RobotSimulation : public ChannelSimulation
{
public:
    explicit RobotSimulation(const Simulation::Settings& settings);
    ~RobotSimulation() override;

    /** The last time that the messages can tell, in microseconds since 1970. */
    static qint64 getLastTime();

    QByteArray getProfile() const override;

private:
    Encoding getEncoding() const override;
    QByteArray getSchema(const QByteArray& type) const override;
    QMap<QByteArray, QByteArray> getMetadata(int channel) const override;
    QByteArray makeMessage(int channel, qint64 sinceStart) override;

    std::vector<std::unique_ptr<RobotMessages>> m_robots;
};

#endif
