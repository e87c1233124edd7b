#ifndef TIMETEXT_H
#define TIMETEXT_H

#include <QString>

/** Texts of times and durations that are transmitted as seconds and nanoseconds. */
namespace TimeText
{

const qint64 NanosPerSecond = 1000000000;

/** "2024-06-18T12:25:40.5Z"; with the two numbers in words when they are no time of the years 1 to 9999. */
QString ofTime(qint64 seconds, qint64 nanos);

/** "-1.5 s", exactly; with the two numbers in words when their signs contradict each other. */
QString ofDuration(qint64 seconds, qint64 nanos);

} // namespace TimeText

#endif
