#ifndef STREAMREADER_H
#define STREAMREADER_H

#include "playbackpacer.h"
#include "recordingindex.h"
#include "streambatch.h"
#include "streamopener.h"

#include <QThread>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

class PlaybackClock;

/** The reader thread of a StreamSource: reads, decodes, paces, and queues batches for the GUI thread. */
class StreamReader : public QThread, private StreamSink
{
    Q_OBJECT

public:
    /** Takes over @p input and @p decoder. Whoever gets batchesReady() takes batches until there are none. */
    StreamReader(ByteInput* input, StreamDecoder* decoder);
    /** Takes over @p input and @p opener, which finds the decoder. */
    StreamReader(ByteInput* input, StreamOpener* opener);
    /** Cancels, and waits until the thread has ended. */
    ~StreamReader() override;

    void setClock(PlaybackClock* clock);
    /** Takes over @p index, which is used on this thread. Before the start. */
    void setIndex(RecordingIndex* index);
    void setPlayback(const StreamSource::Playback& playback);
    /** Holds a recording before its next message, or goes on. */
    void setPaused(bool paused);
    /** Lets one more message through while paused. */
    void step();
    /** Goes on at @p time of the recording; what is queued is dropped. */
    void seek(qint64 time);
    /** Goes on at the last message before @p time; what is queued is dropped. */
    void seekBefore(qint64 time);
    /** Decodes from the first byte on that is in no message yet with @p decoder, which is taken over. */
    void setDecoder(StreamDecoder* decoder);

    /** Ends the thread soon, wherever it waits, and drops what is queued. */
    void cancel();

    /** See ByteInput::finish(). */
    void finish();
    /** See ByteInput::confirm(). */
    void confirm(quint64 offset);

    /** The next batch; null when there is none now, and then batchesReady() comes with the next one. */
    std::unique_ptr<StreamBatch> takeBatch();
    /** Gives a batch back to be filled again. */
    void recycle(std::unique_ptr<StreamBatch> batch);

    /** How much of what takes long before the first message is done, in percent; -1 else. From any thread. */
    int getPreparedPercent() const { return m_preparedPercent; }

    const QString& getInputName() const { return m_inputName; }
    /** The first decoder. */
    std::shared_ptr<StreamDecoder> getDecoder() const { return m_decoder; }

Q_SIGNALS:
    /** There are batches to take. Comes from the reader thread. */
    void batchesReady();

protected:
    void run() override;

private:
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;

    void seek(qint64 time, bool before);
    bool openStream();
    void announceFacts(bool recognized);
    bool readUntilEnd();
    bool waitAtEnd();
    bool followCommands();
    bool goTo(qint64 time);
    qint64 findTimeBefore(qint64 time);
    void changeDecoder(std::shared_ptr<StreamDecoder> decoder);
    void feed(const QByteArray& bytes, qint64 arrivalTime);
    void passNoticesOn();
    void noteDone(quint64 end);
    const char* bytesOf(const StreamProblem& problem) const;
    bool isLeaving() const { return m_cancelled || m_interrupted; }
    void takePlayback();
    bool waitUntilDue(qint64 messageTime);
    qint64 batchAge();
    void noteFirstEntry();
    void flush();
    void flushState(StreamSource::State state, const QString& error = QString());

    // Set before the thread starts.
    std::unique_ptr<ByteInput> m_input;       // replaced and destroyed by the thread, with m_mutex held
    std::unique_ptr<StreamOpener> m_opener;   // null when the decoder was known
    std::shared_ptr<StreamDecoder> m_decoder; // later the thread's own
    std::unique_ptr<PlaybackClock> m_clock;
    std::unique_ptr<RecordingIndex> m_index;
    QString m_inputName;

    // The thread's own.
    std::unique_ptr<StreamBatch> m_batch;
    qint64 m_batchStart;
    PlaybackPacer m_pacer;
    bool m_paced;
    bool m_isCaughtUp;     // a recording that goes on is read as it does
    QByteArray m_tail;     // bytes fed, from the first one on that is in no message or problem yet, and some before
    quint64 m_tailOffset;  // where in the stream it begins
    quint64 m_done;        // everything before is in messages and problems
    qint64 m_arrivalTime;  // of the end of m_tail
    qint64 m_leaveOutTill; // messages before this time are left out; Message::NoTime for none

    std::atomic<bool> m_cancelled;
    std::atomic<int> m_preparedPercent;
    std::atomic<bool> m_interrupted; // there are commands, for which the decoder is left
    std::atomic<bool> m_paused;
    std::atomic<bool> m_playbackChanged;

    std::mutex m_mutex;             // for what follows
    std::condition_variable m_wake; // the queue has room, the playback changed, or it is all over
    StreamSource::Playback m_playback;
    int m_steps;
    std::optional<qint64> m_seekTime;
    bool m_seeksBefore; // m_seekTime is that of a message behind the one that is meant
    std::shared_ptr<StreamDecoder> m_nextDecoder;
    std::deque<std::unique_ptr<StreamBatch>> m_queue;
    std::vector<std::unique_ptr<StreamBatch>> m_spare;
    bool m_announced; // batchesReady() was emitted, and the taker has not yet found the queue empty
};

#endif
