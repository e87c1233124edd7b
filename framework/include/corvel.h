#ifndef CORVEL_H
#define CORVEL_H

#include "corvelframework_export.h"

/** Switches that hold for the whole process. To be called on the GUI thread. */
class CORVELFRAMEWORK_EXPORT Corvel
{
public:
    /** Whether the contents of confidential fields may be shown; false until an application switches it on. */
    static bool confidentialInformationDisplayEnabled();

    /**
     * Allows or forbids showing confidential fields.
     *
     * Widgets ask when they build their rows: what is already shown changes with the next rebuild or reconfiguration.
     */
    static void setConfidentialInformationDisplayEnabled(bool enabled);

private:
    Corvel();
};

#endif
