#ifndef STREAMREADER_H
#define STREAMREADER_H

#include "playbackpacer.h"
#include "streambatch.h"

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
    /** Cancels, and waits until the thread has ended. */
    ~StreamReader() override;

    void setClock(PlaybackClock* clock);
    void setPlayback(const StreamSource::Playback& playback);

    /** Ends the thread soon, wherever it waits, and drops what is queued. */
    void cancel();

    /** The next batch; null when there is none now, and then batchesReady() comes with the next one. */
    std::unique_ptr<StreamBatch> takeBatch();
    /** Gives a batch back to be filled again. */
    void recycle(std::unique_ptr<StreamBatch> batch);

    const QString& getInputName() const { return m_inputName; }
    const StreamDecoder* getDecoder() const { return m_decoder.get(); }

Q_SIGNALS:
    /** There are batches to take. Comes from the reader thread. */
    void batchesReady();

protected:
    void run() override;

private:
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;

    void readUntilEnd();
    void takePlayback();
    void waitUntilDue(qint64 messageTime);
    qint64 batchAge();
    void noteFirstEntry();
    void flush();
    void flushState(StreamSource::State state, const QString& error = QString());

    // Set before the thread starts.
    std::unique_ptr<ByteInput> m_input; // destroyed by the thread, with m_mutex held
    std::unique_ptr<StreamDecoder> m_decoder;
    std::unique_ptr<PlaybackClock> m_clock;
    QString m_inputName;

    // The thread's own.
    std::unique_ptr<StreamBatch> m_batch;
    qint64 m_batchStart;
    PlaybackPacer m_pacer;
    bool m_paced;

    std::atomic<bool> m_cancelled;
    std::atomic<bool> m_playbackChanged;

    std::mutex m_mutex;             // for what follows
    std::condition_variable m_wake; // the queue has room, the playback changed, or it is all over
    StreamSource::Playback m_playback;
    std::deque<std::unique_ptr<StreamBatch>> m_queue;
    std::vector<std::unique_ptr<StreamBatch>> m_spare;
    bool m_announced; // batchesReady() was emitted, and the taker has not yet found the queue empty
};

#endif
