#include "simulatedvehicle.h"

#include "mavlinkdialect.h"
#include "mavlinkencoder.h"

namespace
{

const qint64 StepTime = qint64(VehicleModel::Step * 1000000);

// Vehicles that start one after the other are easier to tell apart.
const double FirstWait = 5;
const double WaitBetweenVehicles = 7;
const double Never = 1e18;

const quint8 StationComponent = 190;
const std::uint32_t LossStream = 1000; // of random numbers, besides those that vehicles fly by

const MavlinkMessageInfo* findType(const MavlinkDialect* dialect, const char* name)
{
    const MessageInfo* const info = dialect->getMessageInfo(QLatin1String(name));
    Q_ASSERT_X(info, "SimulatedVehicle", name);
    return static_cast<const MavlinkMessageInfo*>(info);
}

} // namespace

SimulatedVehicle::SimulatedVehicle(const MavlinkDialect* dialect, const Settings& settings, quint32 seed,
                                   qint64 startTime, double rateFactor)
    : m_textInfo(findType(dialect, "STATUSTEXT"))
    , m_settings(settings)
    , m_startTime(startTime + qint64(settings.switchedOn * 1000000))
    , m_silentFrom(startTime + qint64(settings.silentFrom * 1000000))
    , m_model(seed, std::uint32_t(settings.number),
              settings.kind == GroundStation ? Never : FirstWait + WaitBetweenVehicles * (settings.number - 1))
    , m_modelTime(0)
    , m_sequences(256, quint8(0))
    , m_lossNumbers(seed, LossStream + std::uint32_t(settings.number))
{
    double share = 0;
    for (const TelemetryType& type : TelemetryType::all()) {
        if (settings.kind == GroundStation && type.name != QLatin1String("HEARTBEAT"))
            continue;
        const double interval = 1000000 / (type.hertz * rateFactor);
        // Spread out, so that not everything comes at once.
        m_schedules.append(Schedule{&type, findType(dialect, type.name), share * interval, interval, 0});
        share = std::fmod(share + 0.618034, 1);
    }
    prepare();
}

SimulatedFrame SimulatedVehicle::takeNext()
{
    SimulatedFrame frame = m_ready.takeFirst();
    if (frame.time >= m_silentFrom || m_lossNumbers.uniform() < m_settings.dropRate)
        frame.bytes.clear();
    if (m_ready.isEmpty())
        prepare();
    return frame;
}

/** Makes the next frames ready: what the vehicle says on the way to the next message, or that message. */
void SimulatedVehicle::prepare()
{
    Schedule* const next = findNext();
    const qint64 due = next->due();
    if (advanceModel(due))
        return;
    MavlinkEncoder message(next->info);
    next->type->fill(TelemetryMoment{&m_model, m_startTime + due, due, next->sent, m_settings.kind}, &message);
    append(due, m_settings.kind == GroundStation ? StationComponent : next->type->component, message);
    ++next->sent;
}

SimulatedVehicle::Schedule* SimulatedVehicle::findNext()
{
    Schedule* next = nullptr;
    for (Schedule& schedule : m_schedules) {
        if (!schedule.isOver() && (!next || schedule.due() < next->due()))
            next = &schedule;
    }
    return next;
}

/** Moves the model on to that time, or to where the vehicle says something before; true in that case. */
bool SimulatedVehicle::advanceModel(qint64 until)
{
    while (m_modelTime + StepTime <= until) {
        m_model.advance();
        m_modelTime += StepTime;
        const QVector<VehicleEvent> events = m_model.takeEvents();
        for (const VehicleEvent& event : events) {
            MavlinkEncoder message(m_textInfo);
            message.set("severity", event.severity);
            message.setText("text", event.text);
            append(m_modelTime, 1, message);
        }
        if (!events.isEmpty())
            return true;
    }
    return false;
}

void SimulatedVehicle::append(qint64 sinceStart, quint8 component, const MavlinkEncoder& message)
{
    MavlinkEncoder::FrameHeader header;
    header.system = quint8(m_settings.number);
    header.component = component;
    header.sequence = m_sequences[component]++;
    SimulatedFrame frame;
    frame.time = m_startTime + sinceStart;
    frame.bytes = message.toFrame(header);
    m_ready.append(frame);
}
