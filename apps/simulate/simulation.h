#ifndef SIMULATION_H
#define SIMULATION_H

#include "simulatedvehicle.h"

#include <memory>
#include <vector>

/** Some vehicles, and a link that loses and damages some of what they send. */
class Simulation : public FrameSource
{
public:
    /** A time without reception, in seconds since the start. */
    struct Pause
    {
        double start;
        double length;
    };

    struct Settings
    {
        quint32 seed = 1;
        int senders = 1;        ///< vehicles, 1 to 255
        double rateFactor = 1;  ///< of the rates of all messages
        double dropRate = 0;    ///< share of frames that get lost, 0 to 1
        double corruptRate = 0; ///< share of frames of which a byte gets changed, 0 to 1
        qint64 startTime = 0;   ///< microseconds since 1970
        QVector<Pause> pauses;
        QVector<SimulatedVehicle::Settings> fleet; ///< in place of so many senders, when not empty

        /** Whether nothing is received at that time, in microseconds since 1970. */
        bool isPaused(qint64 time) const;
    };

    explicit Simulation(const Settings& settings);
    virtual ~Simulation();

    /**
     * The next frame of any vehicle; times never decrease. Frames go on for ever, and the same settings give the same.
     *
     * @return a frame without bytes for one that got lost
     */
    SimulatedFrame takeNext() override;

    const Settings& getSettings() const { return m_settings; }

private:
    Q_DISABLE_COPY(Simulation)

    Settings m_settings;
    std::unique_ptr<MavlinkDialect> m_dialect;
    std::vector<SimulatedVehicle> m_vehicles;
    RandomNumbers m_linkNumbers; // of its own, so that a bad link does not change the flight
};

#endif
