#ifndef DETECTINGDECODER_H
#define DETECTINGDECODER_H

#include "mavlinkstreamdecoder.h"

#include <atomic>

class Definitions;

/**
 * Decodes MAVLink of a layout that is told by the stream itself, for inputs whose beginning cannot be read twice. Where
 * an MCAP stream comes instead, a decoder of that takes its place.
 */
class DetectingDecoder : public StreamDecoder
{
public:
    /**
     * @param dialect      the message types; must outlive the decoder and must not be null
     * @param definitions  makes the types of MCAP streams; must outlive the decoder and must not be null
     */
    DetectingDecoder(const MavlinkDialect* dialect, Definitions* definitions);

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    StreamDecoder* takeSuccessor() override;
    /** What follows has the layout that was told before. */
    void restart(quint64 offset) override;
    /** False: what comes through a pipe is shown as it comes, also when it has times. */
    bool hasTimes() const override { return false; }
    /** Whether the stream told that it has times. Any thread may ask. */
    bool isTlog() const { return m_isTlog; }
    const MavlinkDialect* getDialect() const { return m_raw.getDialect(); }
    QString getSenderName(quint32 sender) const override { return m_raw.getSenderName(sender); }
    const char* getRecordingName() const override { return m_raw.getRecordingName(); }
    quint64 getSequenceModulus() const override { return m_raw.getSequenceModulus(); }

private:
    Definitions* const m_definitions;
    MavlinkStreamDecoder m_raw;
    MavlinkStreamDecoder m_tlog;
    std::atomic<bool> m_isTlog{false};
    MavlinkStreamDecoder* m_chosen; // null until the layout is known
    QByteArray m_head;              // what came before it was
    bool m_isMcap = false;
};

#endif
