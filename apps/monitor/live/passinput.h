#ifndef PASSINPUT_H
#define PASSINPUT_H

#include "streamopener.h"

#include <atomic>
#include <memory>
#include <mutex>

/** What a pass in the background reads: an input of its own for a recording that is open already. */
class PassInput
{
public:
    PassInput(std::unique_ptr<ByteInput> input, std::unique_ptr<StreamOpener> opener);

    /** Opens it, and finds out what it is; false when that fails, see getError(), or is cancelled. Waits. */
    bool open(OpenedStream* stream);
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
    std::atomic<bool> m_cancelled;
    std::mutex m_mutex; // for m_input while it changes
    std::unique_ptr<ByteInput> m_input;
};

#endif
