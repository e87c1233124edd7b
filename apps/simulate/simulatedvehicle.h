#ifndef SIMULATEDVEHICLE_H
#define SIMULATEDVEHICLE_H

#include "framesource.h"
#include "vehicletelemetry.h"

class MavlinkDialect;
class MavlinkMessageInfo;

/** A vehicle and what it sends, for ever. The same arguments give the same frames. */
class SimulatedVehicle
{
public:
    /** As HEARTBEAT tells it. */
    enum Kind
    {
        Quadrotor = 2,
        GroundStation = 6, ///< stands still, and says no more than that it is there
        Hexarotor = 13,
        Octorotor = 14
    };

    /** What makes it another one than the others. Times are seconds since the start. */
    struct Settings
    {
        int number = 1; ///< from 1 to 255: its system number. Each vehicle flies in its own way.
        Kind kind = Quadrotor;
        double switchedOn = 0;
        double silentFrom = 1e9; ///< from then on nothing is received
        double dropRate = 0;     ///< share of its frames that get lost, 0 to 1, besides what the link loses
    };

    /**
     * @param dialect     must have the types of TelemetryType and STATUSTEXT, and outlive the vehicle
     * @param startTime   the start, microseconds since 1970
     * @param rateFactor  what the rates of all messages are multiplied with; greater than 0
     */
    SimulatedVehicle(const MavlinkDialect* dialect, const Settings& settings, quint32 seed, qint64 startTime,
                     double rateFactor);

    /** When the next frame is sent. */
    qint64 getNextTime() const { return m_ready.first().time; }

    /** The next frame; times never decrease. Without bytes it got lost. */
    SimulatedFrame takeNext();

private:
    struct Schedule
    {
        const TelemetryType* type;
        const MavlinkMessageInfo* info;
        double phase;    // microseconds from the start to the first
        double interval; // microseconds
        int sent;

        qint64 due() const { return qint64(phase + interval * sent); }
        bool isOver() const { return type->count > 0 && sent >= type->count; }
    };

    void prepare();
    Schedule* findNext();
    bool advanceModel(qint64 until);
    void append(qint64 sinceStart, quint8 component, const MavlinkEncoder& message);

    const MavlinkMessageInfo* m_textInfo;
    Settings m_settings;
    qint64 m_startTime; // when it is switched on
    qint64 m_silentFrom;
    VehicleModel m_model;
    qint64 m_modelTime; // microseconds since the start
    QVector<Schedule> m_schedules;
    QVector<quint8> m_sequences; // by component
    QVector<SimulatedFrame> m_ready;
    RandomNumbers m_lossNumbers;
};

#endif
