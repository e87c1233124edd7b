#ifndef LATERDECODER_H
#define LATERDECODER_H

#include "streamdecoder.h"

#include <atomic>
#include <memory>

/**
 * Stands for a decoder while it is not known yet what the stream is, and passes everything on to that one then.
 *
 * So whoever shows a stream has one decoder to ask, from before the first byte.
 */
class LaterDecoder : public StreamDecoder
{
public:
    /** What the stream is decoded with, on the thread that feeds; once. */
    void setDecoder(std::unique_ptr<StreamDecoder> decoder);

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    void restart(quint64 offset) override;
    quint64 getKeptOffset() const override;
    bool hasTimes() const override;
    QString getSenderName(quint32 sender) const override;
    void publishTypes(QStringList* problems) const override;
    QString describeUnknown(quint32 id) const override;
    TypeSchema getUnknownSchema(quint32 id) const override;
    quint64 getSequenceModulus() const override;
    const char* getRecordingName() const override;

private:
    std::unique_ptr<StreamDecoder> m_owned;
    std::atomic<StreamDecoder*> m_decoder{nullptr}; // the same, for any thread
};

#endif
