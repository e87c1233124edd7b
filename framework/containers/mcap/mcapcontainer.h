#ifndef MCAPCONTAINER_H
#define MCAPCONTAINER_H

#include "container.h"

/** MCAP recordings and streams. */
extern const Container McapContainer;

#endif
