#ifndef CORVEL_MAVLINKSTREAMDECODER_H
#define CORVEL_MAVLINKSTREAMDECODER_H

#include "streamdecoder.h"

#include <QByteArray>
#include <QVector>

class MavlinkDialect;
class MavlinkMessageInfo;

namespace MavlinkFrame
{
struct Header;
}

/**
 * Finds MAVLink frames (v1, v2, signed v2) in a stream.
 *
 * A frame is handed out when its checksum and its length are right: a v1 payload must have the length of the
 * definition, a v2 payload may be shorter (trailing zeros were left out) or longer (the sender knows more fields).
 * Signatures are passed and not verified; one that breaks off costs the message nothing but itself. Senders are
 * "system:component". ReceivedMessage::data is the whole frame from the magic byte to the checksum or, when it is
 * complete, the signature; offsets are those of magic bytes, except where bytes are no frame. The
 * time stamp before a frame of a tlog belongs to neither.
 *
 * No good frame is lost to noise or to a bad frame before it. Of a frame that fails its checksum, the bytes that it
 * claims are searched, and the first frame among them that verifies wins: then the bad frame was noise or was cut. When
 * there is none and another frame seems to begin where the bad one ends, all of it is one failure. Else its first byte
 * is skipped, and the search goes on. A frame of an unknown type cannot be verified; it is handed out, with a null
 * ReceivedMessage::info, where another frame seems to begin at its end, nothing verifies inside, and there is at least
 * some definition with which its checksum would be right. (Of damaged ones, one in 256 has such a checksum.)
 *
 * Results don't depend on how the stream is cut into pieces. While a frame of a known type is incomplete, nothing
 * behind it is handed out, because a payload may well contain frames (file transfer, tunnels): at most 280 bytes are
 * held back, and none of them when the stream consists of good frames. (In a tlog a signed one waits for the time
 * behind it.) A header that fits no definition holds back nothing.
 *
 * The cost is linear in the stream whatever its bytes are: every magic byte is checked at most twice, over at most 265
 * bytes each time. Less than 2 KiB are ever kept.
 */
class CORVELFRAMEWORK_EXPORT MavlinkStreamDecoder : public StreamDecoder
{
public:
    /** How frames lie in the stream; detectLayout() tells for a recording. */
    enum Layout
    {
        RawLayout, ///< frame after frame, as they come live; times are those of arrival
        TlogLayout ///< before each frame 8 bytes: big-endian microseconds since 1970
    };

    /** @param dialect  the message types; must outlive the decoder and must not be null */
    MavlinkStreamDecoder(const MavlinkDialect* dialect, Layout layout);
    virtual ~MavlinkStreamDecoder();

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    void restart(quint64 offset) override;
    bool hasTimes() const override;
    QString getSenderName(quint32 sender) const override;
    const char* getRecordingName() const override;
    quint64 getSequenceModulus() const override;

    /** What it was made with. */
    const MavlinkDialect* getDialect() const;

    /** The key of a sender: system number in the high byte of the low half, component number in the low byte. */
    static quint32 senderKey(quint8 system, quint8 component) { return quint32(system) << 8 | component; }

    /**
     * Tells the layout of a recording from its first bytes (a few hundred are plenty; noise before the first frame is
     * allowed). Needs no dialect: frames that follow one another give themselves away.
     *
     * @return false when no plausible frame was found, and then @p layout is left alone
     */
    static bool detectLayout(const QByteArray& head, Layout* layout);

private:
    Q_DISABLE_COPY(MavlinkStreamDecoder)

    enum Answer
    {
        No,
        Yes,
        NotYet // depends on bytes to come
    };

    struct Window;
    struct Candidate;

    const MavlinkMessageInfo* find(quint32 id) const;
    int work(const Window& window, StreamSink* sink);
    bool resolve(const Window& window, StreamSink* sink);
    bool resolveSigned(const Window& window, Candidate candidate, StreamSink* sink);
    bool resolveFailed(const Window& window, const Candidate& candidate, StreamSink* sink);
    bool resolveCutOff(const Window& window, const Candidate& candidate, StreamSink* sink);
    Answer verifies(const Window& window, const Candidate& candidate) const;
    Answer findVerified(const Window& window, quint64 end, quint64* found);
    Answer isFollowed(const Window& window, quint64 end) const;
    bool hasTimeBefore(const Window& window, quint64 magic) const;
    void resumeInside(const Window& window, const Candidate& candidate, quint64 magic, StreamSink* sink);
    void passOver(quint64 position, StreamSink* sink);
    void reportMessage(const Window& window, const Candidate& candidate, StreamSink* sink);
    void reportBadFrame(const Window& window, const Candidate& candidate, StreamProblem::Kind kind, quint64 end,
                        StreamSink* sink);
    void reportSkipped(quint64 end, StreamSink* sink);
    void continueAt(quint64 end);

    const MavlinkDialect* m_dialect;
    Layout m_layout;
    QVector<const MavlinkMessageInfo*> m_commonTypes; // by id, null where the dialect has none
    QByteArray m_pending;                             // what was fed and is not decided yet, and the 8 bytes before
    qint64 m_arrivalTime;                             // of the bytes fed last
    // Positions in the stream.
    quint64 m_offset;   // of the first byte of m_pending, or of the next byte fed
    quint64 m_reported; // everything before has been reported
    quint64 m_position; // where the next magic byte is looked for
    quint64 m_searched; // no frame that verifies begins from m_position up to here
    bool m_inSync;      // whether a frame is to be expected at m_position
};

#endif
