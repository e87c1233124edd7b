#include "channelsimulation.h"

#include "mcapwriter.h"

#include <QHash>

#include <algorithm>

ChannelSimulation::ChannelSimulation(const Simulation::Settings& settings)
    : m_settings(settings)
    , m_linkNumbers(settings.seed, 0)
{
}

ChannelSimulation::~ChannelSimulation() {}

int ChannelSimulation::addChannel(const Channel& channel)
{
    const qint64 interval = std::max<qint64>(1, qint64(double(channel.interval) / m_settings.rateFactor));
    m_schedules.append(Schedule{channel, interval, 0});
    return int(m_schedules.size()) - 1;
}

QMap<QByteArray, QByteArray> ChannelSimulation::getMetadata(int) const
{
    return QMap<QByteArray, QByteArray>();
}

QVector<quint16> ChannelSimulation::describe(McapWriter* writer) const
{
    const Encoding encoding = getEncoding();
    QHash<QByteArray, quint16> schemas;
    QVector<quint16> numbers;
    for (int i = 0; i < m_schedules.size(); ++i) {
        const Channel& channel = m_schedules.at(i).channel;
        if (!schemas.contains(channel.type))
            schemas.insert(channel.type, writer->addSchema(channel.type, encoding.schema, getSchema(channel.type)));
        numbers.append(
            writer->addChannel(channel.topic, encoding.message, schemas.value(channel.type), getMetadata(i)));
    }
    return numbers;
}

SimulatedFrame ChannelSimulation::takeNext()
{
    const auto next =
        std::min_element(m_schedules.begin(), m_schedules.end(), [](const Schedule& left, const Schedule& right) {
            return left.interval * left.sent < right.interval * right.sent;
        });
    const qint64 sinceStart = next->interval * next->sent++;
    SimulatedFrame frame;
    frame.time = m_settings.startTime + sinceStart;
    frame.channel = int(next - m_schedules.begin());
    frame.sequence = quint32(next->sent);
    frame.bytes = makeMessage(frame.channel, sinceStart);
    if (m_linkNumbers.uniform() < m_settings.dropRate || m_settings.isPaused(frame.time))
        frame.bytes.clear();
    return frame;
}
