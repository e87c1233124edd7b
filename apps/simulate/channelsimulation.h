#ifndef CHANNELSIMULATION_H
#define CHANNELSIMULATION_H

#include "simulation.h"

#include <QMap>
#include <QVector>

class McapWriter;

/**
 * Devices that send messages on channels, each channel at a rate of its own, over a link that loses some. The same
 * settings give the same messages.
 */
class ChannelSimulation : public FrameSource
{
public:
    /** The rate at which bytes get changed is none of its business: who writes chunks changes bytes in them. */
    explicit ChannelSimulation(const Simulation::Settings& settings);
    virtual ~ChannelSimulation();

    /** What a recording says in its header about all that it holds; may be empty. */
    virtual QByteArray getProfile() const { return QByteArray(); }

    /** Adds the schemas and channels to what @p writer writes: the numbers there, by SimulatedFrame::channel. */
    QVector<quint16> describe(McapWriter* writer) const;

    SimulatedFrame takeNext() override;

protected:
    struct Encoding
    {
        const char* message;
        const char* schema;
    };

    struct Channel
    {
        QByteArray topic;
        QByteArray type; ///< full name
        qint64 interval; ///< microseconds, before the rates are multiplied
    };

    /** @return its number, from 0 */
    int addChannel(const Channel& channel);

    const Simulation::Settings& getSettings() const { return m_settings; }

private:
    Q_DISABLE_COPY(ChannelSimulation)

    struct Schedule
    {
        Channel channel;
        qint64 interval; // microseconds
        qint64 sent;
    };

    virtual Encoding getEncoding() const = 0;
    virtual QByteArray getSchema(const QByteArray& type) const = 0;
    /** What else a recording says about a channel. */
    virtual QMap<QByteArray, QByteArray> getMetadata(int channel) const;
    /** Called in the order of times, also for messages that get lost. */
    virtual QByteArray makeMessage(int channel, qint64 sinceStart) = 0;

    Simulation::Settings m_settings;
    QVector<Schedule> m_schedules; // of the channels
    RandomNumbers m_linkNumbers;   // of its own, so that a bad link does not change the drive
};

#endif
