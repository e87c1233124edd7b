#ifndef ENVELOPECONTAINER_H
#define ENVELOPECONTAINER_H

#include "container.h"

extern const Container EnvelopeContainer;

#endif
