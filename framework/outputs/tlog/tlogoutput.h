#ifndef TLOGOUTPUT_H
#define TLOGOUTPUT_H

#include "messageoutput.h"
#include "outputkind.h"

extern const OutputKind TlogOutputKind;

/** Writes MAVLink as it came, with damaged frames and stray bytes, and times before frames. */
class TlogOutput : public MessageOutput
{
public:
    TlogOutput(QIODevice* device, const StreamDecoder* decoder);

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;
    void flush() override;
    void close() override { flush(); }

private:
    void writeTime(qint64 time);
    void write(const char* bytes, int size);

    QIODevice* m_device;
    QByteArray m_buffer; // what the device was not given yet
    qint64 m_lastTime;
};

#endif
