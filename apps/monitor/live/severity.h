#ifndef SEVERITY_H
#define SEVERITY_H

#include <QString>

/** How bad something is that happened, as system logs grade it: the worst first. */
enum class Severity
{
    Emergency,
    Alert,
    Critical,
    Error,
    Warning,
    Notice,
    Information,
    Debug
};

/** What people call it: "Warning". */
QString nameOf(Severity severity);

#endif
