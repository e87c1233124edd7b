#ifndef CUSTOMPLOT_H
#define CUSTOMPLOT_H

// The plotting library writes its signals and slots with Qt's keywords, which this project does without.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define emit Q_EMIT
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef slots
#undef emit
#undef foreach

#endif
