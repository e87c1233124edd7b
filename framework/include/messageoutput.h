#ifndef CORVEL_MESSAGEOUTPUT_H
#define CORVEL_MESSAGEOUTPUT_H

#include "streamdecoder.h"

#include <QStringList>

/**
 * Where the messages of one stream go, such as into a recording. Made by OutputKind::create() or OutputKind::connect().
 *
 * A message without a time gets that at which it is taken. Errors of a file are those of the device that is written to:
 * whoever has it looks there. One thread at a time.
 */
class CORVELFRAMEWORK_EXPORT MessageOutput : public StreamSink
{
public:
    ~MessageOutput() override;

    /**
     * Goes on with what another decoder finds, which records as the same kind: the source was opened again.
     *
     * @param decoder  is asked what types and senders are called; must live until the next call or the end. Outputs
     *                 with addresses need a PublishedStream.
     */
    virtual void setDecoder(const StreamDecoder* decoder);

    /** Hands everything that was taken to the device. For a timer, when messages may cease to come. */
    virtual void flush() = 0;
    /** Hands out what makes it complete. Nothing may follow. */
    virtual void close() = 0;

    /** Whether messages are to come now; what comes in spite of it is taken, too. */
    virtual bool isReady() const { return true; }
    /** How many of the newest messages that were taken may not have arrived yet. */
    virtual quint64 getPendingCount() const { return 0; }

    /** Messages that were taken and will never arrive, such as those that a slow client missed; one for each. */
    quint64 getDroppedCount() const { return m_dropped; }
    /** What is to be told since the last call: connections that were lost, clients that came. */
    QStringList takeNotices();
    /** Why it can never work, or does not any more; empty while it does. */
    const QString& getErrorString() const { return m_error; }

protected:
    /** @param decoder  as that of setDecoder() */
    explicit MessageOutput(const StreamDecoder* decoder);

    const StreamDecoder* getDecoder() const { return m_decoder; }
    void addNotice(const QString& text) { m_notices.append(text); }
    void addDropped(quint64 count = 1) { m_dropped += count; }
    void setError(const QString& text) { m_error = text; }
    /** Microseconds since 1970. */
    static qint64 now();

private:
    Q_DISABLE_COPY(MessageOutput)

    const StreamDecoder* m_decoder;
    quint64 m_dropped;
    QStringList m_notices;
    QString m_error;
};

#endif
