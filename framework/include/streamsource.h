#ifndef STREAMSOURCE_H
#define STREAMSOURCE_H

#include "byteinput.h"
#include "messagesource.h"
#include "receptioncounters.h"

class PlaybackClock;
class QTimer;
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
 * connect(&source, SIGNAL(newMessage(const Message*)), &widget, SLOT(processMessage(const Message*)));
 * source.start();
 * @endcode
 */
class CORVELFRAMEWORK_EXPORT StreamSource : public MessageSource
{
    Q_OBJECT

public:
    enum State
    {
        Idle,     ///< not started
        Opening,  ///< the input is being opened
        Running,  ///< messages may come
        Finished, ///< the input ended, or stop() was called
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
     * @param decoder  owned from now on; must not be null. Its format must outlive this object.
     */
    StreamSource(ByteInput* input, StreamDecoder* decoder, QObject* parent = 0);

    /** Stops and waits for the reader thread. */
    virtual ~StreamSource();

    /** Plays at another speed, from the place where the recording is now. At any time. */
    void setPlayback(const Playback& playback);

    /** Replaces the clock that recordings are played by, which is owned from now on. Before start(); for tests. */
    void setClock(PlaybackClock* clock);

    /**
     * Tells @p observer of everything that is worked off, needed or not, in stream order and before it is delivered.
     *
     * Not owned. The observer must neither run an event loop nor delete this source.
     */
    void addObserver(StreamSink* observer) { m_observers.append(observer); }
    void removeObserver(StreamSink* observer) { m_observers.removeAll(observer); }

    /** Counts on from @p counters, such as those of a connection that was lost. Before start(). */
    void setCounters(const ReceptionCounters& counters) { m_counters = counters; }

    /** Starts reading; at most once. */
    void start();
    /** Ends reading soon without waiting for it; what is queued is dropped. The state becomes Finished. */
    void stop();

    State getState() const { return m_state; }
    /** Why the state is Failed; names the input. */
    QString getErrorString() const { return m_error; }

    /** What was received and worked off so far, whether it was needed or not. */
    const ReceptionCounters& getCounters() const { return m_counters; }
    const FormatInfo* getFormatInfo() const;
    /** The decoder, for those of its operations that may be called on any thread; never null. */
    const StreamDecoder* getDecoder() const;
    /** How people of the format write a sender. */
    QString getSenderName(quint32 sender) const;

Q_SIGNALS:
    /** The state, one of State, changed. What was received before has been emitted. */
    void stateChanged(int state);
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

    bool processRecord();
    bool processProblem();
    bool finishBatch();
    void emitReceived();
    void setState(State state);

    StreamReader* m_reader;
    Work* m_work;
    QTimer* m_workTimer;
    QTimer* m_problemTimer;
    QVector<StreamSink*> m_observers;
    State m_state;
    QString m_error;
    ReceptionCounters m_counters;
    QHash<quint32, QString> m_senderNames;
};

#endif
