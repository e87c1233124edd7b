#ifndef DELIMITEDCONTAINER_H
#define DELIMITEDCONTAINER_H

#include "container.h"

/** Messages of one type, with lengths or nothing between them. */
extern const Container DelimitedContainer;

#endif
