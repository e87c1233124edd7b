#include "playbackclock.h"

#include <chrono>

using std::chrono::duration_cast;
using std::chrono::microseconds;

PlaybackClock::~PlaybackClock() {}

qint64 PlaybackClock::now()
{
    return duration_cast<microseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

qint64 PlaybackClock::utc()
{
    return duration_cast<microseconds>(std::chrono::system_clock::now().time_since_epoch()).count();
}

void PlaybackClock::wait(std::condition_variable& wake, std::unique_lock<std::mutex>& lock, qint64 duration)
{
    wake.wait_for(lock, microseconds(duration));
}
