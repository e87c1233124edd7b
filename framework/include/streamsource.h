#ifndef STREAMSOURCE_H
#define STREAMSOURCE_H

#include "byteinput.h"
#include "messagesource.h"
#include "receptioncounters.h"

class StreamReader;

/**
 * Receives messages from an input on a thread of its own and emits those that are needed on the GUI thread.
 *
 * Reading, framing, checks and time stamps happen on the reader thread. Results reach the GUI thread in batches; every
 * message is counted there, and one is made and emitted only when its type is needed. The queue between the threads is
 * bounded: a reader that is ahead waits, so that nothing is lost and memory stays flat.
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
        Finished, ///< the input ended
        Failed    ///< the input could not be opened or read; getErrorString() tells why
    };

    /** How fast a recording is played. Live inputs are not slowed down. */
    struct CORVELFRAMEWORK_EXPORT Playback
    {
        Playback();

        double factor;            ///< 1 is real time; 0 is as fast as possible
        double messagesPerSecond; ///< for a stream without times; 0 is as fast as possible; the factor multiplies it
    };

    /**
     * @param input    owned from now on; must not be null
     * @param decoder  owned from now on; must not be null. Its format must outlive this object.
     */
    StreamSource(ByteInput* input, StreamDecoder* decoder, QObject* parent = 0);

    /** Stops and waits for the reader thread. */
    virtual ~StreamSource();

    void setPlayback(const Playback& playback);

    /** Starts reading; at most once. */
    void start();
    /** Ends reading soon; what is queued is dropped. The state becomes Finished. */
    void stop();

    State getState() const { return m_state; }
    QString getErrorString() const { return m_error; }

    /** What was received so far, whether it was needed or not. */
    const ReceptionCounters& getCounters() const { return m_counters; }
    const FormatInfo* getFormatInfo() const;
    /** How people of the format write a sender. */
    QString getSenderName(quint32 sender) const;

Q_SIGNALS:
    /** The state, one of State, changed. */
    void stateChanged(int state);
    /** A batch was worked off: getCounters() changed. */
    void received();
    /** Something was wrong with the stream: one line that says what and where. Limited in rate; counters are exact. */
    void problem(const QString& text);

private Q_SLOTS:
    void processBatches();

private:
    Q_DISABLE_COPY(StreamSource)
    void setState(State state);

    StreamReader* m_reader;
    State m_state;
    QString m_error;
    ReceptionCounters m_counters;
    QHash<quint32, QString> m_senderNames;
};

#endif
