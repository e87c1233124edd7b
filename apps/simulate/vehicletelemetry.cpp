#include "vehicletelemetry.h"

#include "mavlinkencoder.h"

#include <algorithm>

namespace
{

const double Pi = 3.14159265358979323846;
const double Degrees = 180 / Pi;
const double HomeLatitude = 48.1;
const double HomeLongitude = 11.2;
const double HomeAltitude = 540;
const double MetresPerDegree = 111194.9;
const double Unknown16 = 65535;

const quint8 Autopilot = 1;
const int GroundStation = 6; // in HEARTBEAT
const quint8 TelemetryRadio = 68;

struct Parameter
{
    const char* name;
    double value;
};
const Parameter Parameters[] = {
    {"SYS_NUMBER", 1},     {"HOVER_THROTTLE", 0.42}, {"COURSE_RADIUS", 80}, {"COURSE_SPEED", 9},
    {"COURSE_HEIGHT", 30}, {"COURSE_LAPS", 3},       {"CLIMB_SPEED", 2.5},  {"SINK_SPEED", 1.5},
    {"LAND_SPEED", 0.5},   {"BAT_CAPACITY", 2200},   {"BAT_CELLS", 4},      {"BAT_WARN", 55},
};

double latitude(double north)
{
    return HomeLatitude + north / MetresPerDegree;
}

double longitude(double east)
{
    return HomeLongitude + east / (MetresPerDegree * std::cos(HomeLatitude / Degrees));
}

/** The angle in degrees from 0 up to but not 360. */
double heading(double radians)
{
    const double degrees = radians * Degrees;
    return degrees < 0 ? std::min(degrees + 360, 359.99) : degrees;
}

double pressure(double altitude)
{
    return 1013.25 * std::pow(1 - altitude / 44330.8, 5.2559);
}

void fillHeartbeat(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const bool armed = moment.model->isArmed();
    message->set("type", moment.kind);
    message->set("mavlink_version", 3);
    if (moment.kind == GroundStation) {
        message->set("autopilot", 8); // none
        message->set("system_status", 4);
        return;
    }
    message->set("autopilot", 0); // generic
    message->set("base_mode", 1 | 4 | 8 | 16 | (armed ? 128 : 0));
    message->set("custom_mode", moment.model->getPhase());
    message->set("system_status", moment.model->isFlying() ? 4 : 3);
}

void fillSystemStatus(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    // Gyroscope, accelerometer, magnetometer, barometer, satellites, attitude and position control, motors.
    const double sensors = 0x01 | 0x02 | 0x04 | 0x08 | 0x20 | 0x400 | 0x800 | 0x1000 | 0x4000 | 0x8000;
    message->set("onboard_control_sensors_present", sensors);
    message->set("onboard_control_sensors_enabled", sensors);
    message->set("onboard_control_sensors_health", sensors);
    message->set("load", 320 + 15 * moment.model->noise());
    message->set("voltage_battery", 1000 * moment.model->getVoltage());
    message->set("current_battery", 100 * moment.model->getCurrent());
    message->set("battery_remaining", 100 * moment.model->getCharge());
}

void fillSystemTime(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    message->set("time_unix_usec", double(moment.time));
    message->set("time_boot_ms", double(moment.sinceStart / 1000));
}

void fillSatellites(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const VehicleModel& model = *moment.model;
    const Vector error = model.getPositionError();
    const Vector velocity = model.getVelocity();
    const double altitude = HomeAltitude + model.getPosition().up + error.up;
    // The receiver needs a while after it is switched on.
    const bool fixed = moment.sinceStart > 3000000;
    message->set("time_usec", double(moment.time));
    message->set("fix_type", fixed ? 3 : 1);
    message->set("satellites_visible", fixed ? 12 + int(error.east * 2) : int(moment.sinceStart / 500000));
    message->set("eph", fixed ? 80 + 10 * std::abs(error.north) : Unknown16);
    message->set("epv", fixed ? 120 + 10 * std::abs(error.up) : Unknown16);
    message->set("vel", fixed ? 100 * model.getGroundSpeed() : Unknown16);
    message->set("cog", fixed ? 100 * heading(std::atan2(velocity.east, velocity.north)) : Unknown16);
    if (!fixed)
        return;
    message->set("lat", 1e7 * latitude(model.getPosition().north + error.north));
    message->set("lon", 1e7 * longitude(model.getPosition().east + error.east));
    message->set("alt", 1000 * altitude);
    message->set("alt_ellipsoid", 1000 * (altitude + 46.5));
    message->set("h_acc", 900);
    message->set("v_acc", 1400);
    message->set("vel_acc", 150);
}

void fillImu(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    VehicleModel& model = *moment.model;
    const Vector force = model.getSpecificForce();
    const double vibration = model.isFlying() ? 18 : 1;
    const double milliG = 1000 / 9.80665;
    message->set("time_boot_ms", double(moment.sinceStart / 1000));
    message->set("xacc", milliG * force.north + vibration * model.noise());
    message->set("yacc", milliG * force.east + vibration * model.noise());
    message->set("zacc", milliG * force.up + vibration * model.noise());
    message->set("xgyro", 1000 * model.getRollRate() + model.noise());
    message->set("ygyro", 1000 * model.getPitchRate() + model.noise());
    message->set("zgyro", 1000 * model.getYawRate() + model.noise());
    message->set("xmag", 210 * std::cos(model.getYaw()) + 2 * model.noise());
    message->set("ymag", -210 * std::sin(model.getYaw()) + 2 * model.noise());
    message->set("zmag", 430 + 2 * model.noise());
    message->set("temperature", 3600 + 400 * (1 - std::exp(-model.getTime() / 120)));
}

void fillPressure(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    message->set("time_boot_ms", double(moment.sinceStart / 1000));
    message->set("press_abs", pressure(HomeAltitude + moment.model->getPosition().up) + 0.02 * moment.model->noise());
    message->set("temperature", 2150 - 0.65 * moment.model->getPosition().up);
}

void fillAttitude(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    VehicleModel& model = *moment.model;
    message->set("time_boot_ms", double(moment.sinceStart / 1000));
    message->set("roll", model.getRoll() + 0.001 * model.noise());
    message->set("pitch", model.getPitch() + 0.001 * model.noise());
    message->set("yaw", model.getYaw() + 0.001 * model.noise());
    message->set("rollspeed", model.getRollRate() + 0.001 * model.noise());
    message->set("pitchspeed", model.getPitchRate() + 0.001 * model.noise());
    message->set("yawspeed", model.getYawRate() + 0.001 * model.noise());
}

void fillPosition(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const VehicleModel& model = *moment.model;
    const Vector position = model.getPosition();
    const Vector velocity = model.getVelocity();
    message->set("time_boot_ms", double(moment.sinceStart / 1000));
    message->set("lat", 1e7 * latitude(position.north));
    message->set("lon", 1e7 * longitude(position.east));
    message->set("alt", 1000 * (HomeAltitude + position.up));
    message->set("relative_alt", 1000 * position.up);
    message->set("vx", 100 * velocity.north);
    message->set("vy", 100 * velocity.east);
    message->set("vz", -100 * velocity.up);
    message->set("hdg", std::min(35999.0, std::floor(100 * heading(model.getYaw()))));
}

void fillOutputs(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    VehicleModel& model = *moment.model;
    const double middle = 1000 + 1000 * model.getThrottle();
    const double roll = 40 * model.getRollRate();
    const double pitch = 40 * model.getPitchRate();
    message->set("time_usec", double(moment.sinceStart & 0xffffffff));
    message->set("servo1_raw", middle - roll + pitch);
    message->set("servo2_raw", middle + roll - pitch);
    message->set("servo3_raw", middle + roll + pitch);
    message->set("servo4_raw", middle - roll - pitch);
}

void fillRemoteControl(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    message->set("time_boot_ms", double(moment.sinceStart / 1000));
    message->set("chancount", 8);
    for (int channel = 1; channel <= 18; ++channel) {
        const QByteArray field = "chan" + QByteArray::number(channel) + "_raw";
        // The sticks rest; switches stand at one end.
        const double value = channel > 8 ? Unknown16 : channel > 4 ? 1000 : 1500 + moment.model->noise();
        message->set(field.constData(), value);
    }
    message->set("rssi", 200 + 4 * moment.model->noise());
}

void fillNavigation(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const VehicleModel& model = *moment.model;
    const double north = model.getTarget().north - model.getPosition().north;
    const double east = model.getTarget().east - model.getPosition().east;
    const double bearing = std::atan2(east, north) * Degrees;
    message->set("nav_roll", model.getRoll() * Degrees);
    message->set("nav_pitch", model.getPitch() * Degrees);
    message->set("nav_bearing", bearing);
    message->set("target_bearing", bearing);
    message->set("wp_dist", std::hypot(north, east));
    message->set("alt_error", model.getTarget().up - model.getPosition().up);
    message->set("xtrack_error", model.isFlying() ? std::hypot(north, east) : 0);
}

void fillFlightDisplay(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    VehicleModel& model = *moment.model;
    message->set("airspeed", std::max(0.0, model.getGroundSpeed() + 0.3 * model.noise()));
    message->set("groundspeed", model.getGroundSpeed());
    message->set("heading", std::floor(heading(model.getYaw())));
    message->set("throttle", 100 * model.getThrottle());
    message->set("alt", HomeAltitude + model.getPosition().up);
    message->set("climb", model.getVelocity().up);
}

void fillBattery(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const VehicleModel& model = *moment.model;
    message->set("battery_function", 1); // all flight systems
    message->set("type", 1);             // lithium polymer
    message->set("temperature", 2400 + 8 * model.getCurrent() + 0.2 * model.getConsumedCharge());
    for (int cell = 0; cell < 10; ++cell)
        message->set("voltages", cell < 4 ? 250 * model.getVoltage() - 3 * cell : Unknown16, cell);
    message->set("current_battery", 100 * model.getCurrent());
    message->set("current_consumed", model.getConsumedCharge() / 3.6);
    message->set("energy_consumed", model.getConsumedEnergy() / 100);
    message->set("battery_remaining", 100 * model.getCharge());
    message->set("time_remaining",
                 std::max(1.0, VehicleModel::FullCharge * model.getCharge() / std::max(1.0, model.getCurrent())));
    message->set("charge_state", model.getCharge() < 0.55 ? 2 : 1);
}

void fillVibration(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    VehicleModel& model = *moment.model;
    const double level = model.isFlying() ? 8 : 0.1;
    message->set("time_usec", double(moment.time));
    message->set("vibration_x", level * (1 + 0.1 * model.noise()));
    message->set("vibration_y", level * (1 + 0.1 * model.noise()));
    message->set("vibration_z", 1.4 * level * (1 + 0.1 * model.noise()));
}

void fillLandedState(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const VehicleModel::Phase phase = moment.model->getPhase();
    const int state = phase == VehicleModel::TakeOff   ? 3
                      : phase == VehicleModel::Landing ? 4
                      : moment.model->isFlying()       ? 2
                                                       : 1;
    message->set("landed_state", state);
}

void fillRadio(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const Vector position = moment.model->getPosition();
    // Ten times the distance is a good deal weaker.
    const double distance = std::hypot(std::hypot(position.north, position.east), position.up) + 5;
    const double strength = 230 - 30 * std::log10(distance);
    message->set("rssi", strength + 2 * moment.model->noise());
    message->set("remrssi", strength - 6 + 2 * moment.model->noise());
    message->set("txbuf", 95);
    message->set("noise", 45 + 2 * moment.model->noise());
    message->set("remnoise", 48 + 2 * moment.model->noise());
}

void fillParameter(const TelemetryMoment& moment, MavlinkEncoder* message)
{
    const Parameter& parameter = Parameters[moment.index];
    message->setText("param_id", parameter.name);
    message->set("param_value", parameter.value);
    message->set("param_type", 9); // a number of single precision
    message->set("param_count", TelemetryType::parameterCount());
    message->set("param_index", moment.index);
}

} // namespace

int TelemetryType::parameterCount()
{
    return int(std::size(Parameters));
}

const QVector<TelemetryType>& TelemetryType::all()
{
    static const QVector<TelemetryType> types = {
        {"HEARTBEAT", 1, Autopilot, 0, fillHeartbeat},
        {"SYSTEM_TIME", 1, Autopilot, 0, fillSystemTime},
        {"BATTERY_STATUS", 1, Autopilot, 0, fillBattery},
        {"EXTENDED_SYS_STATE", 1, Autopilot, 0, fillLandedState},
        {"RADIO_STATUS", 1, TelemetryRadio, 0, fillRadio},
        {"SYS_STATUS", 2, Autopilot, 0, fillSystemStatus},
        {"VIBRATION", 2, Autopilot, 0, fillVibration},
        {"GPS_RAW_INT", 5, Autopilot, 0, fillSatellites},
        {"NAV_CONTROLLER_OUTPUT", 5, Autopilot, 0, fillNavigation},
        {"RC_CHANNELS", 5, Autopilot, 0, fillRemoteControl},
        {"PARAM_VALUE", 10, Autopilot, parameterCount(), fillParameter},
        {"SCALED_PRESSURE", 10, Autopilot, 0, fillPressure},
        {"SERVO_OUTPUT_RAW", 10, Autopilot, 0, fillOutputs},
        {"GLOBAL_POSITION_INT", 10, Autopilot, 0, fillPosition},
        {"VFR_HUD", 10, Autopilot, 0, fillFlightDisplay},
        {"SCALED_IMU", 25, Autopilot, 0, fillImu},
        {"ATTITUDE", 50, Autopilot, 0, fillAttitude},
    };
    return types;
}
