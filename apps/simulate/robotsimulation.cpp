#include "robotsimulation.h"

#include "robotmessages.h"
#include "robotschemas.h"

#include <limits>

namespace
{

const struct
{
    const char* topic;
    const char* type;
    qint64 interval; // microseconds
    bool isReliable; // sent again when it did not arrive
    QByteArray (RobotMessages::*make)();
} Topics[] = {
    {"/imu/data", "sensor_msgs/msg/Imu", 10000, false, &RobotMessages::imu},
    {"/joint_states", "sensor_msgs/msg/JointState", 20000, true, &RobotMessages::jointStates},
    {"/odom", "nav_msgs/msg/Odometry", 20000, true, &RobotMessages::odometry},
    {"/tf", "tf2_msgs/msg/TFMessage", 20000, true, &RobotMessages::transforms},
    {"/scan", "sensor_msgs/msg/LaserScan", 100000, false, &RobotMessages::scan},
    {"/camera/image_raw", "sensor_msgs/msg/Image", 100000, false, &RobotMessages::image},
    {"/points", "sensor_msgs/msg/PointCloud2", 200000, false, &RobotMessages::points},
    {"/fix", "sensor_msgs/msg/NavSatFix", 200000, false, &RobotMessages::fix},
    {"/diagnostics", "diagnostic_msgs/msg/DiagnosticArray", 1000000, true, &RobotMessages::diagnostics},
    {"/chatter", "std_msgs/msg/String", 1000000, true, &RobotMessages::chatter},
};
const int TopicCount = int(sizeof Topics / sizeof *Topics);

// Keeps the last ten, for those who listen then; how reliable stands between the two.
const char ServiceBegin[] = "- history: 1\n  depth: 10\n  reliability: ";
const char ServiceEnd[] = "\n  durability: 2\n"
                          "  deadline:\n    sec: 9223372036\n    nsec: 854775807\n"
                          "  lifespan:\n    sec: 9223372036\n    nsec: 854775807\n"
                          "  liveliness: 1\n"
                          "  liveliness_lease_duration:\n    sec: 9223372036\n    nsec: 854775807\n"
                          "  avoid_ros_namespace_conventions: false";

} // namespace

RobotSimulation::RobotSimulation(const Simulation::Settings& settings)
    : ChannelSimulation(settings)
{
    for (int number = 1; number <= settings.senders; ++number) {
        const QByteArray name = settings.senders > 1 ? "robot_" + QByteArray::number(number) : QByteArray();
        m_robots.emplace_back(
            new RobotMessages(settings.seed, quint32(number), name.isEmpty() ? name : name + '/', settings.startTime));
        for (const auto& topic : Topics)
            addChannel({(name.isEmpty() ? name : '/' + name) + topic.topic, topic.type, topic.interval});
    }
}

RobotSimulation::~RobotSimulation() {}

qint64 RobotSimulation::getLastTime()
{
    return std::numeric_limits<qint32>::max() * Q_INT64_C(1000000);
}

QByteArray RobotSimulation::getProfile() const
{
    return "ros2";
}

ChannelSimulation::Encoding RobotSimulation::getEncoding() const
{
    return {"cdr", "ros2msg"};
}

QByteArray RobotSimulation::getSchema(const QByteArray& type) const
{
    return RobotSchemas::find(type);
}

QMap<QByteArray, QByteArray> RobotSimulation::getMetadata(int channel) const
{
    const char* const reliability = Topics[channel % TopicCount].isReliable ? "1" : "2";
    return {{"offered_qos_profiles", QByteArray(ServiceBegin) + reliability + ServiceEnd}};
}

QByteArray RobotSimulation::makeMessage(int channel, qint64 sinceStart)
{
    RobotMessages* const robot = m_robots.at(std::size_t(channel / TopicCount)).get();
    robot->advance(double(sinceStart) / 1000000);
    return (robot->*Topics[channel % TopicCount].make)();
}
