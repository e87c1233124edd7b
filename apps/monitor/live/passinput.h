#ifndef PASSINPUT_H
#define PASSINPUT_H

#include "streamopener.h"

#include <atomic>
#include <functional>
#include <limits>
#include <memory>
#include <mutex>

class QReadWriteLock;

/** What a pass in the background reads: an input of its own for a recording that is open already. */
class PassInput
{
public:
    PassInput(std::unique_ptr<ByteInput> input, std::unique_ptr<StreamOpener> opener);

    /** Opens it, and finds out what it is; false when that fails, see getError(), or is cancelled. Waits. */
    bool open(OpenedStream* stream);
    /**
     * Decodes what lies from @p begin on before @p end, which are cuts (see RecordingIndex), or up to where the
     * recording is there; false when @p goOn said no, it was cancelled, or reading failed, see getError().
     *
     * @param lock  held for reading while bytes are decoded and @p goOn runs; may be null
     * @param goOn  told after each piece how many bytes that were
     */
    bool decode(const OpenedStream& stream, quint64 begin, quint64 end, StreamSink* sink, QReadWriteLock* lock,
                const std::function<bool(qint64 bytes)>& goOn);
    /** What ends where the recording does. */
    static constexpr quint64 Everything = std::numeric_limits<quint64>::max();
    /** Whether it takes little to open it once more: what is decompressed into other files takes long. */
    bool isAsItIs() const;

    /** For the thread that opened it. */
    ByteInput* get() const { return m_input.get(); }
    /** Why it could not be opened; empty when it was cancelled. */
    const QString& getError() const { return m_error; }

    /** Makes whoever opens or reads it return soon. Any thread. */
    void cancel();
    bool isCancelled() const { return m_cancelled; }

private:
    Q_DISABLE_COPY(PassInput)

    std::unique_ptr<StreamOpener> m_opener;
    QString m_error;
    quint64 m_position = 0; // where reading goes on
    std::atomic<bool> m_cancelled;
    std::mutex m_mutex; // for m_input while it changes
    std::unique_ptr<ByteInput> m_input;
};

#endif
