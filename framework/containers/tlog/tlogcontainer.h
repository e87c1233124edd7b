#ifndef TLOGCONTAINER_H
#define TLOGCONTAINER_H

#include "container.h"

/** MAVLink with the time before each frame. */
extern const Container TlogContainer;

#endif
