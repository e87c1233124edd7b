#ifndef FLEET_H
#define FLEET_H

#include "simulation.h"

/** A dozen vehicles of several kinds and their ground station: one vehicle falls silent, one comes late, and the link
 * to some of them loses messages. */
Simulation::Settings createFleet();

#endif
