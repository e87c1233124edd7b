#include "drivesimulation.h"
#include "frameoutput.h"
#include "robotsimulation.h"
#include "standardoutput.h"

#include <QCoreApplication>

#include <chrono>
#include <thread>

namespace
{

enum ExitStatus
{
    Success = 0,
    WrongUsage = 1,
    OutputFailure = 2
};

/** Waits until a simulated time has come. */
class Pacer
{
public:
    Pacer(double speed, qint64 startTime)
        : m_speed(speed)
        , m_startTime(startTime)
        , m_started(std::chrono::steady_clock::now())
    {
    }

    bool mustWait(qint64 time) const { return m_speed > 0 && due(time) > std::chrono::steady_clock::now(); }
    void wait(qint64 time) const { std::this_thread::sleep_until(due(time)); }

private:
    std::chrono::steady_clock::time_point due(qint64 time) const
    {
        const std::chrono::microseconds after(qint64(double(time - m_startTime) / m_speed));
        return m_started + after;
    }

    double m_speed;
    qint64 m_startTime;
    std::chrono::steady_clock::time_point m_started;
};

/** Null for what is no recording of channels. */
std::unique_ptr<ChannelSimulation> createChannels(const Options& options)
{
    if (options.isRobot)
        return std::make_unique<RobotSimulation>(options.settings);
    if (options.isMcap)
        return std::make_unique<DriveSimulation>(options.settings);
    return nullptr;
}

bool run(const Options& options, FrameSource* source, FrameOutput* output)
{
    if (!output->open())
        return false;
    const Pacer pacer(options.speed, options.settings.startTime);
    const double end = double(options.settings.startTime) + options.duration * 1000000;
    for (;;) {
        const SimulatedFrame frame = source->takeNext();
        if (options.duration > 0 && double(frame.time) >= end)
            return output->close();
        if (pacer.mustWait(frame.time)) {
            if (!output->flush())
                return false;
            pacer.wait(frame.time);
        }
        if (!frame.bytes.isEmpty() && !output->write(frame))
            return false;
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("corvel-simulate"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));

    Options options;
    QString text;
    switch (Options::parse(QCoreApplication::arguments(), &options, &text)) {
    case CommandLine::InfoAsked:
        return StandardOutput::finish(StandardOutput::print(text)) ? Success : OutputFailure;
    case CommandLine::Wrong:
        CommandLine::complain(text);
        CommandLine::complain(QStringLiteral("see corvel-simulate --help"));
        return WrongUsage;
    case CommandLine::Run:
        break;
    }

    const std::unique_ptr<ChannelSimulation> channels = createChannels(options);
    const std::unique_ptr<FrameOutput> output = FrameOutput::create(options, channels.get());
    std::unique_ptr<FrameSource> flight;
    if (!channels)
        flight = std::make_unique<Simulation>(options.settings);
    if (run(options, channels ? channels.get() : flight.get(), output.get()))
        return Success;
    CommandLine::complain(output->getError());
    return OutputFailure;
}
