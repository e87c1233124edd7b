#ifndef PLAYBACKCLOCK_H
#define PLAYBACKCLOCK_H

#include "corvelframework_export.h"

#include <QtGlobal>

#include <condition_variable>
#include <mutex>

/** The clock of a reader thread, and how it waits. Tests put one in its place that does not take real time. */
class CORVELFRAMEWORK_EXPORT PlaybackClock
{
public:
    virtual ~PlaybackClock();

    /** Microseconds from some fixed point; never goes back. */
    virtual qint64 now();
    /** Microseconds since 1970 (UTC). */
    virtual qint64 utc();
    /** Waits until @p wake is notified or @p microseconds have passed, or shorter; @p lock is held before and after. */
    virtual void wait(std::condition_variable& wake, std::unique_lock<std::mutex>& lock, qint64 microseconds);
};

#endif
