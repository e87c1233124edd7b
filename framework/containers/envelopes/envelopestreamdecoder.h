#ifndef ENVELOPESTREAMDECODER_H
#define ENVELOPESTREAMDECODER_H

#include "streamdecoder.h"

#include <memory>

struct StreamOptions;

/**
 * Finds the messages in a stream of envelopes, as inputs write what brokers hand on: docs/brokers.md says how it is
 * found out what they are.
 *
 * The sender of a message is its topic, without a last level that is the name of its type; of a MAVLink frame it is the
 * topic with system and component behind it. Times are those that the server has, else those of arrival; what the
 * server kept from before has none, and no number. ReceivedMessage::publishTime is what the publisher says.
 *
 * Messages that name a schema which did not come wait for it a few seconds. What cannot be decoded is told once a
 * topic, and handed out with a null ReceivedMessage::info. Of topics, the twenty thousand that were heard of last are
 * known.
 */
class EnvelopeStreamDecoder : public StreamDecoder
{
public:
    /** @param isLive  whether it comes as it happens */
    EnvelopeStreamDecoder(const StreamOptions& options, bool isLive);
    ~EnvelopeStreamDecoder() override;

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

private:
    struct Private;
    std::unique_ptr<Private> m_private;
};

#endif
