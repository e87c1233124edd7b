#include "fleet.h"

Simulation::Settings createFleet()
{
    Simulation::Settings settings;
    for (int number = 1; number <= 12; ++number) {
        SimulatedVehicle::Settings vehicle;
        vehicle.number = number;
        settings.fleet.append(vehicle);
    }
    const auto vehicle = [&settings](int number) -> SimulatedVehicle::Settings& { return settings.fleet[number - 1]; };
    vehicle(3).kind = SimulatedVehicle::Hexarotor;
    vehicle(6).kind = SimulatedVehicle::Hexarotor;
    vehicle(9).kind = SimulatedVehicle::Octorotor;
    vehicle(4).dropRate = 0.05;
    vehicle(9).dropRate = 0.01;
    vehicle(7).silentFrom = 25;
    vehicle(12).switchedOn = 15;
    SimulatedVehicle::Settings station;
    station.number = 255;
    station.kind = SimulatedVehicle::GroundStation;
    settings.fleet.append(station);
    return settings;
}
