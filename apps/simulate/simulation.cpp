#include "simulation.h"

#include "mavlinkdialect.h"

#include <algorithm>

Simulation::Simulation(const Settings& settings)
    : m_settings(settings)
    , m_dialect(MavlinkDialect::loadBuiltIn())
    , m_linkNumbers(settings.seed, 0)
{
    QVector<SimulatedVehicle::Settings> fleet = settings.fleet;
    for (int number = 1; settings.fleet.isEmpty() && number <= settings.senders; ++number) {
        fleet.append(SimulatedVehicle::Settings());
        fleet.last().number = number;
    }
    for (const SimulatedVehicle::Settings& vehicle : std::as_const(fleet))
        m_vehicles.emplace_back(m_dialect.get(), vehicle, settings.seed, settings.startTime, settings.rateFactor);
}

Simulation::~Simulation() {}

SimulatedFrame Simulation::takeNext()
{
    const auto next = std::min_element(m_vehicles.begin(), m_vehicles.end(),
                                       [](const SimulatedVehicle& left, const SimulatedVehicle& right) {
                                           return left.getNextTime() < right.getNextTime();
                                       });
    SimulatedFrame frame = next->takeNext();

    // All numbers are drawn for each frame, so that one rate does not change where the other strikes.
    const bool dropped = m_linkNumbers.uniform() < m_settings.dropRate;
    const bool corrupted = m_linkNumbers.uniform() < m_settings.corruptRate;
    const int position = m_linkNumbers.below(qMax(1, int(frame.bytes.size())));
    const int difference = 1 + m_linkNumbers.below(255);
    if (corrupted && !frame.bytes.isEmpty())
        frame.bytes[position] = char(frame.bytes.at(position) ^ difference);
    if (dropped || m_settings.isPaused(frame.time))
        frame.bytes.clear();
    return frame;
}

bool Simulation::Settings::isPaused(qint64 time) const
{
    const double seconds = double(time - startTime) / 1000000;
    return std::any_of(pauses.begin(), pauses.end(), [seconds](const Pause& pause) {
        return seconds >= pause.start && seconds < pause.start + pause.length;
    });
}
