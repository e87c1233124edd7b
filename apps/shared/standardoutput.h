#ifndef STANDARDOUTPUT_H
#define STANDARDOUTPUT_H

#include <QString>

/** What a program prints, when that may fail. */
namespace StandardOutput
{

/** Prints @p text; 0, or the errno of what went wrong. */
int print(const QString& text);

/**
 * Writes out what is still waiting, and tells on the error stream what went wrong, unless it is only that nobody reads
 * on.
 *
 * @param error  errno of what went wrong before, or 0
 * @return whether all that somebody wants to read was written
 */
bool finish(int error);

} // namespace StandardOutput

#endif
