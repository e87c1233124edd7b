#ifndef CORVEL_H
#define CORVEL_H

#include "corvelframework_export.h"

class FieldInfo;

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

    /**
     * Whether the contents of @p field are to be kept from whoever looks, now: it, or the field that it is a component
     * of, is confidential, and such fields may not be shown. Whoever writes, draws or copies values asks this; a field
     * of a confidential sub-message is only hidden with that, which a FieldWalk knows.
     */
    static bool isHidden(const FieldInfo* field);

    /** How many digits behind the point FieldInfo::getInterpretedString() gives floating-point numbers; see below. */
    static int floatingPointDecimals();

    /**
     * Sets how many digits behind the point numbers of floating-point fields are shown with, 0 to 17; negative (the
     * default) shows as many as tell the value exactly. Fields with a scale have their own number of digits, and raw
     * values are always exact. A number that would be rounded to zero is shown with an exponent instead.
     */
    static void setFloatingPointDecimals(int decimals);

private:
    Corvel();
};

#endif
