#ifndef SIMULATORINPUT_H
#define SIMULATORINPUT_H

#include "byteinput.h"
#include "simulation.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

/**
 * A simulation as an input: raw MAVLink frames, in real time.
 *
 * @code
 * new StreamSource(new SimulatorInput, new MavlinkStreamDecoder(dialect, MavlinkStreamDecoder::RawLayout));
 * @endcode
 */
class SimulatorInput : public ByteInput
{
public:
    /** @param settings  the start time is replaced by the time of open() */
    explicit SimulatorInput(const Simulation::Settings& settings = Simulation::Settings());
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

    Simulation::Settings m_settings;
    std::unique_ptr<Simulation> m_simulation;
    SimulatedFrame m_next;
    Clock::time_point m_started; // when the simulation's start time was, by this clock
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_cancelled;
};

#endif
