#ifndef CORVEL_RECORDINGINDEX_H
#define CORVEL_RECORDINGINDEX_H

#include "corvelframework_export.h"

#include <QtGlobal>

#include <functional>

/** Finds places in a recording by time, without decoding all of it. Used on one thread at a time. */
class CORVELFRAMEWORK_EXPORT RecordingIndex
{
public:
    /** Whether to go on, asked many times by what can take long; it is told how far that is, in percent. */
    typedef std::function<bool(int percent)> GoOn;

    virtual ~RecordingIndex();

    /**
     * Reads what the other operations need, which can mean all of the recording. Before them, on the thread that uses
     * the index.
     *
     * @param goOn  may be empty
     * @return false when it said no; then there are no times
     */
    virtual bool prepare(const GoOn& goOn);

    /** The time of the first message, in microseconds since 1970; Message::NoTime when there is none. */
    virtual qint64 getStartTime() const = 0;
    /** The time of the last message, in microseconds since 1970; Message::NoTime when there is none. */
    virtual qint64 getEndTime() const = 0;

    /**
     * Where in the file to go on reading so that no message from @p time on is missed; earlier ones may come first.
     *
     * @param time  microseconds since 1970; one before the start gives the beginning of the file
     */
    virtual quint64 findOffset(qint64 time) = 0;

    /**
     * The last place at or before byte @p offset that cuts the recording in two: what is decoded from the beginning up
     * to there, and what from there on, is together, in this order, what is decoded of the whole. 0, which is always
     * one, where no other is near; unless told, there is not.
     */
    virtual quint64 findCut(quint64 offset);
};

#endif
