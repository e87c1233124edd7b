#ifndef CORVEL_STREAMSOURCE_H
#define CORVEL_STREAMSOURCE_H

#include "byteinput.h"
#include "messagesource.h"
#include "receptioncounters.h"
#include "streamidentities.h"

class PlaybackClock;
class QTimer;
class RecordingIndex;
class StreamOpener;
class StreamReader;

/**
 * Receives messages from an input on a thread of its own and emits those that are needed on the GUI thread.
 *
 * Reading, framing, checks and time stamps happen on the reader thread. Results reach the GUI thread in batches; every
 * message is counted there, and one is made and emitted only when its type is needed. The queue between the threads is
 * bounded: a reader that is ahead waits, so that nothing is lost and memory stays flat. The GUI thread works off
 * batches for a few milliseconds at a time, so that it stays responsive however fast messages come.
 *
 * @code
 * StreamSource source(ByteInput::create(address), new MavlinkStreamDecoder(dialect, MavlinkStreamDecoder::RawLayout));
 * connect(&source, SIGNAL(newMessage(const Message*)), widget, SLOT(processMessage(const Message*)));
 * source.start();
 * @endcode
 *
 * For an address that may be anything, such as a recording, there is a StreamOpener in place of the decoder.
 */
class CORVELFRAMEWORK_EXPORT StreamSource : public MessageSource
{
    Q_OBJECT

public:
    enum State
    {
        Idle,     ///< not started
        Opening,  ///< the input is being opened, and a recording looked through; stop() cancels that
        Running,  ///< messages may come
        Finished, ///< the input ended, or stop() was called; a seek() in a recording leads back to Running
        Failed    ///< the input could not be opened or read; getErrorString() tells why
    };

    /**
     * How fast a recording is played. Inputs that bring bytes in their own time are not slowed down, except by the
     * times that a stream itself carries.
     */
    struct CORVELFRAMEWORK_EXPORT Playback
    {
        /** Real time. */
        Playback();

        double factor;            ///< 1 is real time, 2 twice as fast; 0 (or less) is as fast as possible
        double messagesPerSecond; ///< for a stream without times; 0 is as fast as possible; the factor multiplies it
    };

    /**
     * @param input    owned from now on; must not be null
     * @param decoder  owned from now on; must not be null. The formats of its messages must outlive this object.
     */
    StreamSource(ByteInput* input, StreamDecoder* decoder, QObject* parent = 0);

    /**
     * Finds out on the reader thread what comes: for a recording in the state Opening, for what comes as it happens in
     * the state Running. Live streams are shown as they come, also those with times of their own.
     *
     * @param input   owned from now on; must not be null
     * @param opener  owned from now on; must not be null
     */
    StreamSource(ByteInput* input, StreamOpener* opener, QObject* parent = 0);

    /** Stops and waits for the reader thread. */
    virtual ~StreamSource();

    /** Plays at another speed, from the place where the recording is now. At any time. */
    void setPlayback(const Playback& playback);

    /** Replaces the clock that recordings are played by, which is owned from now on. Before start(); for tests. */
    void setClock(PlaybackClock* clock);

    /**
     * Tells @p observer of everything that is worked off, needed or not, in stream order and before it is delivered.
     *
     * Not owned. The observer may stop this source, but must neither run an event loop nor delete it.
     */
    void addObserver(StreamSink* observer) { m_observers.append(observer); }
    void removeObserver(StreamSink* observer) { m_observers.removeAll(observer); }

    /**
     * Goes on with the rows of an earlier connection of the same source; else this has its own. Before start().
     *
     * @param identities  not owned; must outlive this object
     */
    void setIdentities(StreamIdentities* identities);
    /** Who sends what: the rows that ReceivedMessage::row and getCounters() mean. */
    const StreamIdentities& getIdentities() const { return *m_identities; }

    /** Counts on from @p counters, such as those of a connection that was lost and whose rows this goes on with. At
     * any time. */
    void setCounters(const ReceptionCounters& counters) { m_counters = counters; }

    /** Makes jumps in a recording possible, with @p index, which is owned from now on. Before start(). */
    void setIndex(RecordingIndex* index);

    /** Starts reading; at most once. */
    void start();
    /** Ends reading soon without waiting for it; what is queued is dropped. The state becomes Finished. */
    void stop();

    /** Ends an input with a session once everything was confirmed that it has handed out; see ByteInput::finish(). */
    void finish();

    /** Holds a recording before its next message, or lets it go on. Live inputs go on whatever is said. */
    void setPaused(bool paused);
    /** See ByteInput::confirm(): how much of the stream was worked off, and that it is safe. */
    quint64 getHandedOut() const { return m_handedOut; }
    void confirm(quint64 offset);
    /** Whether stop() was called, after which nothing goes on. */
    bool isStopped() const { return m_stopped; }
    bool isPaused() const { return m_paused; }
    /** Lets one more message of a paused recording through. */
    void step();

    /** Whether seek() works. Known when the state is Running. */
    bool isSeekable() const { return m_seekable; }

    /**
     * Goes on at @p time of the recording, also after its end: the first message is one of that time or later. Counters
     * begin anew there, see sought(). What was received and is not worked off yet is dropped.
     *
     * @param time  microseconds since 1970
     */
    void seek(qint64 time);

    /** Goes back to the last message that is older than getCurrentTime(), as seek() does; at the start, to that. */
    void stepBack();

    /** The times of the first and last message of a recording that is seekable; else Message::NoTime. One that goes on
     * ends later and later. */
    qint64 getStartTime() const { return m_startTime; }
    qint64 getEndTime() const { return m_endTime; }
    /** The time of the newest message that was worked off and has one; Message::NoTime before. */
    qint64 getCurrentTime() const { return m_currentTime; }
    /** How many bytes lie before the end of the newest message, and bytes in all, or -1 when not known. */
    qint64 getPosition() const { return m_position; }
    qint64 getSize() const { return m_size; }
    /** Datagrams that the system dropped because they were not read soon enough; -1 when that is not known. */
    qint64 getDroppedCount() const { return m_dropped; }
    /** Whether the input brings bytes in their own time, see ByteInput::isLive(). Known when the state is Running. */
    bool isLive() const { return m_live; }

    /**
     * Decodes with @p decoder, which is owned from now on, from the first byte on that is in no message yet.
     *
     * decoderChanged() tells when that has happened; until then everything is as before.
     */
    void setDecoder(StreamDecoder* decoder);

    State getState() const { return m_state; }
    /** How far a recording is looked through in the state Opening, in percent; -1 when there is nothing to do. */
    int getPreparedPercent() const;
    /** Why the state is Failed; names the input. */
    QString getErrorString() const { return m_error; }

    /** What was received and worked off so far, whether it was needed or not. */
    const ReceptionCounters& getCounters() const { return m_counters; }
    /** The decoder, for those of its operations that may be called on any thread; never null. */
    const StreamDecoder* getDecoder() const;
    /** How people of the format write a sender. */
    QString getSenderName(quint32 sender) const;

Q_SIGNALS:
    /** It is known what comes: getDecoder() has a container, and a recording that has places can be sought. */
    void recognized();
    /** The state, one of State, changed. What was received before has been emitted. */
    void stateChanged(int state);
    /** The recording goes on at @p time: what was counted before is forgotten. */
    void sought(qint64 time);
    /** The system dropped @p count datagrams that are in no other count. */
    void datagramsDropped(qint64 count);
    /** What follows was decoded by another decoder, which getDecoder() gives. */
    void decoderChanged();
    /** Batches were worked off: getCounters() changed. */
    void received();
    /**
     * Something was wrong with the stream: one line that says what and where.
     *
     * Limited in rate: the first problem of a kind and message id comes at once, then at most one line a second for
     * all that followed of that kind, with their number. The counters are exact.
     */
    void problem(const QString& text);

private Q_SLOTS:
    void processBatches();
    void reportProblems();

private:
    Q_DISABLE_COPY(StreamSource)
    struct Work;

    StreamSource(StreamReader* reader, QObject* parent);

    bool processRecord();
    bool processProblem();
    bool publishTypes(quint64 offset);
    bool tell(const StreamProblem& problem);
    bool finishBatch();
    void emitReceived();
    void setState(State state);

    StreamReader* m_reader;
    Work* m_work;
    QTimer* m_workTimer;
    QTimer* m_problemTimer;
    QVector<StreamSink*> m_observers;
    State m_state;
    bool m_stopped;
    bool m_paused;
    bool m_seekable;
    bool m_live;
    qint64 m_size;
    qint64 m_dropped;
    qint64 m_position;
    quint64 m_handedOut;
    qint64 m_startTime;
    qint64 m_endTime;
    qint64 m_currentTime;
    QString m_error;
    ReceptionCounters m_counters;
    StreamIdentities* m_identities;
};

#endif
