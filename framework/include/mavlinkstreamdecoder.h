#ifndef MAVLINKSTREAMDECODER_H
#define MAVLINKSTREAMDECODER_H

#include "streamdecoder.h"

#include <QByteArray>

class MavlinkDialect;

/**
 * Finds MAVLink frames (v1, v2, signed v2) in a stream.
 *
 * A frame is handed out when its checksum and its length are right. After a frame that fails, and after bytes that are
 * no frame, the search goes on behind the first byte of the failure, so that a good frame is found even when it lies
 * within the length that a bad one claims. Signatures are passed and not verified. Senders are "system:component".
 */
class CORVELFRAMEWORK_EXPORT MavlinkStreamDecoder : public StreamDecoder
{
public:
    /** How frames lie in the stream. */
    enum Layout
    {
        RawLayout, ///< frame after frame; times are those of arrival
        TlogLayout ///< before each frame 8 bytes: big-endian microseconds since 1970
    };

    /** @param dialect  the message types; must outlive the decoder and must not be null */
    MavlinkStreamDecoder(const MavlinkDialect* dialect, Layout layout);
    virtual ~MavlinkStreamDecoder();

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    bool hasTimes() const override;
    const FormatInfo* getFormatInfo() const override;
    QString getSenderName(quint32 sender) const override;

    /** The key of a sender: system number in the high byte of the low half, component number in the low byte. */
    static quint32 senderKey(quint8 system, quint8 component) { return quint32(system) << 8 | component; }

    /**
     * Tells the layout of a recording from its first bytes (a few hundred are plenty; noise before the first frame is
     * allowed).
     *
     * @return false when no plausible frame was found, and then @p layout is left alone
     */
    static bool detectLayout(const QByteArray& head, Layout* layout);

private:
    // implementation's own members
    const MavlinkDialect* m_dialect;
    Layout m_layout;
    QByteArray m_pending;
    quint64 m_offset;
};

#endif
