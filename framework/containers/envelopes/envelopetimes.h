#ifndef ENVELOPETIMES_H
#define ENVELOPETIMES_H

#include <QtGlobal>

#include <string_view>

/** What publishers write in attributes. */
namespace EnvelopeTimes
{

/** Nanoseconds since 1970 of a time as "2026-11-22T08:15:30.123456789Z"; 0 for what is none, or before 1970. */
qint64 read(std::string_view text);

/** The number of a message in its "RUN-NUMBER"; -1 for an identifier of another kind. */
qint64 readNumber(std::string_view identifier);

} // namespace EnvelopeTimes

#endif
