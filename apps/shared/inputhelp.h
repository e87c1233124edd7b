#ifndef INPUTHELP_H
#define INPUTHELP_H

#include <QString>

/** What addresses of inputs look like, for the help of a program: two lines for each kind, in English. */
QString inputHelp();

#endif
