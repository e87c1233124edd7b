#include "demonstration.h"

#include "fleet.h"
#include "simulatorinput.h"

#include <QCoreApplication>

const QVector<Demonstration>& Demonstration::getAll()
{
    static const QVector<Demonstration> all = {
        {"vehicle", QT_TRANSLATE_NOOP("Demonstration", "simulated vehicle"),
         QT_TRANSLATE_NOOP("Demonstration", "&Simulated Vehicle"), "a vehicle that sends MAVLink", "raw",
         []() -> ByteInput* { return new SimulatorInput; }},
        {"robot", QT_TRANSLATE_NOOP("Demonstration", "simulated robot"),
         QT_TRANSLATE_NOOP("Demonstration", "S&imulated Robot"), "a robot that sends messages of ROS 2", "mcap",
         []() -> ByteInput* { return new SimulatorInput(Simulation::Settings(), SimulatorInput::Robot); }},
        {"fleet", QT_TRANSLATE_NOOP("Demonstration", "simulated fleet"),
         QT_TRANSLATE_NOOP("Demonstration", "Si&mulated Fleet"), "a dozen vehicles, some in trouble", "raw",
         []() -> ByteInput* { return new SimulatorInput(createFleet()); }},
    };
    return all;
}

const Demonstration* Demonstration::find(const QString& name)
{
    for (const Demonstration& each : getAll())
        if (name == QLatin1String(each.name))
            return &each;
    return nullptr;
}
