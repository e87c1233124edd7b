#include "playbackpacer.h"

#include "message.h"

namespace
{

const double MicrosecondsPerSecond = 1e6;

// Messages of several senders may be a little out of order. A clock that is set goes back further.
const double GreatestStepBack = 1 * MicrosecondsPerSecond;

// Nobody waits a day for the next message: it is a clock that was set, such as one that began in 1970.
const double GreatestGap = 24 * 3600 * MicrosecondsPerSecond;

} // namespace

PlaybackPacer::PlaybackPacer()
    : m_started(false)
    , m_recordStart(0)
    , m_playStart(0)
    , m_lastTime(0)
    , m_lastDue(0)
    , m_messages(0)
{
}

void PlaybackPacer::setPlayback(const StreamSource::Playback& playback)
{
    m_playback = playback;
    m_started = false;
}

qint64 PlaybackPacer::dueTime(qint64 time, qint64 now)
{
    if (!isPacing())
        return now;
    if (time != Message::NoTime)
        return dueByTime(time, now);
    const double rate = m_playback.messagesPerSecond * m_playback.factor;
    if (!(rate > 0))
        return now;
    if (!m_started) {
        m_started = true;
        m_playStart = now;
        m_messages = 0;
    }
    // Counted from the start instead of added up, so that no rounding adds up.
    const double passed = static_cast<double>(m_messages++) * MicrosecondsPerSecond / rate;
    return m_playStart + static_cast<qint64>(passed);
}

qint64 PlaybackPacer::dueByTime(qint64 time, qint64 now)
{
    // In floating point, because the times of a damaged recording can be anything.
    const double step = static_cast<double>(time) - static_cast<double>(m_lastTime);
    if (!m_started || step < -GreatestStepBack || step > GreatestGap) {
        m_recordStart = time;
        m_playStart = m_started ? qMax(now, m_lastDue) : now;
        m_started = true;
    }
    m_lastTime = time;
    const double passed = (static_cast<double>(time) - static_cast<double>(m_recordStart)) / m_playback.factor;
    // 2^62 microseconds: further than any clock goes, and far from an overflow.
    m_lastDue = m_playStart + static_cast<qint64>(qBound(-4e18, passed, 4e18));
    return m_lastDue;
}
