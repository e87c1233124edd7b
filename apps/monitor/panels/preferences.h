#ifndef PREFERENCES_H
#define PREFERENCES_H

#include "theme.h"

class QSettings;

/** What the user can set that is no state of a view. */
struct Preferences
{
    /** No number of digits: as many as tell a value exactly. */
    static const int ExactDecimals = -1;
    static const int LongestTimeOut = 3600; ///< seconds

    int tickRate = 20;            ///< updates of the views a second, 1 to 60
    int silentIntervals = 5;      ///< missed intervals until a type is greyed; 0 for never
    double watchTimeOut = 3;      ///< seconds a watch keeps a value that is not brought anew; 0 for ever
    int decimals = ExactDecimals; ///< digits behind the point of floating-point numbers
    int digits = 5;               ///< significant ones of numbers with a fraction in the tree; 0 for all
    bool highlight = true;        ///< shades values that change
    Theme::Kind theme = Theme::System;
    QString language;    ///< its code; empty for that of the system
    QString annotations; ///< a file that is added to the definitions; may be empty

    void save(QSettings& settings) const;
    /** What is missing or makes no sense stays as it is. */
    void restore(QSettings& settings);
};

#endif
