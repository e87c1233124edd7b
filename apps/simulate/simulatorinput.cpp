#include "simulatorinput.h"

#include <QDateTime>

namespace
{

const int GreatestRead = 65536;

// After a sleep of the computer nobody wants to see what it missed.
const std::chrono::seconds GreatestLag(2);

} // namespace

SimulatorInput::SimulatorInput(const Simulation::Settings& settings)
    : ByteInput(QStringLiteral("simulated vehicle"))
    , m_settings(settings)
    , m_cancelled(false)
{
}

SimulatorInput::~SimulatorInput() {}

bool SimulatorInput::open()
{
    m_settings.startTime = QDateTime::currentMSecsSinceEpoch() * 1000;
    m_simulation.reset(new Simulation(m_settings));
    m_started = Clock::now();
    m_next = m_simulation->takeNext();
    return true;
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
    while (due() <= now && bytes->size() < GreatestRead) {
        bytes->append(m_next.bytes);
        m_next = m_simulation->takeNext();
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
