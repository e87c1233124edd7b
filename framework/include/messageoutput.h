#ifndef MESSAGEOUTPUT_H
#define MESSAGEOUTPUT_H

#include "streamdecoder.h"

/**
 * Where the messages of one stream go, such as into a recording. Made by OutputKind::create().
 *
 * A message without a time gets that at which it is taken. Errors are those of the device that is written to: whoever
 * has it looks there. One thread at a time.
 */
class CORVELFRAMEWORK_EXPORT MessageOutput : public StreamSink
{
public:
    ~MessageOutput() override;

    /**
     * Goes on with what another decoder finds, which records as the same kind: the source was opened again.
     *
     * @param decoder  is asked what types and senders are called; must live until the next call or the end
     */
    virtual void setDecoder(const StreamDecoder* decoder);

    /** Hands everything that was taken to the device. For a timer, when messages may cease to come. */
    virtual void flush() = 0;
    /** Hands out what makes it complete. Nothing may follow. */
    virtual void close() = 0;

protected:
    /** @param decoder  as that of setDecoder() */
    explicit MessageOutput(const StreamDecoder* decoder);

    const StreamDecoder* getDecoder() const { return m_decoder; }
    /** Microseconds since 1970. */
    static qint64 now();

private:
    Q_DISABLE_COPY(MessageOutput)

    const StreamDecoder* m_decoder;
};

#endif
