#ifndef SIMULATORINPUT_H
#define SIMULATORINPUT_H

#include "byteinput.h"
#include "mcapwriter.h"
#include "simulation.h"

#include <QBuffer>

#include <chrono>
#include <condition_variable>
#include <mutex>

/**
 * A simulation as an input, in real time: of vehicles as raw MAVLink frames, or of robots as an MCAP stream.
 *
 * @code
 * new StreamSource(new SimulatorInput, new MavlinkStreamDecoder(dialect, MavlinkStreamDecoder::RawLayout));
 * @endcode
 */
class SimulatorInput : public ByteInput
{
public:
    enum Device
    {
        Vehicle,
        Robot
    };

    /** @param settings  the start time is replaced by the time of open() */
    explicit SimulatorInput(const Simulation::Settings& settings = Simulation::Settings(), Device device = Vehicle);
    virtual ~SimulatorInput();

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override;
    bool isLive() const override;
    bool isDatagram() const override;
    qint64 getSize() const override;

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point due() const;
    std::unique_ptr<FrameSource> startRobots();

    Simulation::Settings m_settings;
    Device m_device;
    std::unique_ptr<FrameSource> m_simulation;
    QBuffer m_buffer;
    std::unique_ptr<McapWriter> m_writer; // of robots
    QVector<quint16> m_channels;          // there
    SimulatedFrame m_next;
    Clock::time_point m_started; // when the simulation's start time was, by this clock
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_cancelled;
};

#endif
