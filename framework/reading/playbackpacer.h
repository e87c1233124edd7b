#ifndef PLAYBACKPACER_H
#define PLAYBACKPACER_H

#include "streamsource.h"

/**
 * Tells when the messages of a recording are due.
 *
 * Pure arithmetic: the present is handed in, in microseconds of a clock that never goes back.
 */
class PlaybackPacer
{
public:
    PlaybackPacer();

    /** Plays so from the next message on, which is due at once. */
    void setPlayback(const StreamSource::Playback& playback);

    /** Whether any message can be due later than at once. */
    bool isPacing() const { return m_playback.factor > 0; }

    /**
     * When the next message of the recording is due; not after @p now for one that is due at once.
     *
     * @param time  the message's own time; Message::NoTime when the stream carries none
     */
    qint64 dueTime(qint64 time, qint64 now);

private:
    qint64 dueByTime(qint64 time, qint64 now);

    StreamSource::Playback m_playback;
    bool m_started;
    qint64 m_recordStart; // the message time that was, or is to be, played at m_playStart
    qint64 m_playStart;
    qint64 m_lastTime;
    qint64 m_lastDue;
    quint64 m_messages; // since m_playStart, of a stream without times
};

#endif
