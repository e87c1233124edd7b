#ifndef MAVLINKUNITS_H
#define MAVLINKUNITS_H

#include <QString>

/** How a transmitted number becomes one that a person reads. */
struct MavlinkUnit
{
    QString text;      ///< the unit of the result; empty when there is none
    double factor = 1; ///< what the transmitted number is multiplied with
    int decimals = -1; ///< digits behind the point of the result; -1 when it is not scaled

    /** From the "units" and "multiplier" of a definition, either of which may be empty. */
    static MavlinkUnit fromDefinition(const QString& units, const QString& multiplier);
};

#endif
