#ifndef MAVLINKCONTAINER_H
#define MAVLINKCONTAINER_H

#include "container.h"

/** MAVLink, frame after frame. */
extern const Container MavlinkContainer;

#endif
