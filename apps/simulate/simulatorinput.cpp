#include "simulatorinput.h"

#include "robotsimulation.h"

#include <QDateTime>

#include <algorithm>

namespace
{

const int GreatestRead = 65536;

// After a sleep of the computer nobody wants to see what it missed.
const std::chrono::seconds GreatestLag(2);

} // namespace

SimulatorInput::SimulatorInput(const Simulation::Settings& settings, Device device)
    : ByteInput(device == Robot ? QStringLiteral("simulated robot") : QStringLiteral("simulated vehicle"))
    , m_settings(settings)
    , m_device(device)
    , m_cancelled(false)
{
}

SimulatorInput::~SimulatorInput() {}

bool SimulatorInput::open()
{
    m_settings.startTime = QDateTime::currentMSecsSinceEpoch() * 1000;
    m_simulation = m_device == Robot ? startRobots() : std::make_unique<Simulation>(m_settings);
    m_started = Clock::now();
    m_next = m_simulation->takeNext();
    return true;
}

std::unique_ptr<FrameSource> SimulatorInput::startRobots()
{
    std::unique_ptr<RobotSimulation> robots = std::make_unique<RobotSimulation>(m_settings);
    McapWriter::Settings settings;
    settings.chunkSize = 0; // each message as soon as it comes
    settings.profile = robots->getProfile();
    m_buffer.open(QIODevice::WriteOnly);
    m_writer = std::make_unique<McapWriter>(&m_buffer, settings);
    m_writer->open();
    m_channels = robots->describe(m_writer.get());
    return robots;
}

ByteInput::Status SimulatorInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->resize(0);
    const Clock::time_point called = Clock::now();
    if (called - due() > GreatestLag)
        m_started += called - due();
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const Clock::time_point limit = std::min(due(), called + std::chrono::milliseconds(timeoutMs));
        if (m_wake.wait_until(lock, limit, [this] { return m_cancelled; }))
            return Nothing;
    }
    const Clock::time_point now = Clock::now();
    while (due() <= now && std::max(bytes->size(), m_buffer.buffer().size()) < GreatestRead) {
        if (!m_writer)
            bytes->append(m_next.bytes);
        else if (!m_next.bytes.isEmpty())
            m_writer->writeMessage(m_channels.at(m_next.channel), m_next.sequence, quint64(m_next.time) * 1000,
                                   m_next.bytes);
        m_next = m_simulation->takeNext();
    }
    if (m_writer) {
        bytes->swap(m_buffer.buffer());
        m_buffer.seek(0);
    }
    return bytes->isEmpty() ? Nothing : Data;
}

void SimulatorInput::cancel()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_cancelled = true;
    m_wake.notify_all();
}

bool SimulatorInput::isLive() const
{
    return true;
}

bool SimulatorInput::isDatagram() const
{
    return false;
}

qint64 SimulatorInput::getSize() const
{
    return -1;
}

SimulatorInput::Clock::time_point SimulatorInput::due() const
{
    return m_started + std::chrono::microseconds(m_next.time - m_settings.startTime);
}
