#ifndef MAVLINKENCODER_H
#define MAVLINKENCODER_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QString>

class MavlinkMessageInfo;

/**
 * Writes one MAVLink message: its fields by name, then the frame.
 *
 * @code
 * MavlinkEncoder heartbeat(dialect->find(0));
 * heartbeat.set("type", 2);
 * file.write(heartbeat.toFrame(header));
 * @endcode
 */
class CORVELFRAMEWORK_EXPORT MavlinkEncoder
{
public:
    /** What stands around the payload of a frame. */
    struct CORVELFRAMEWORK_EXPORT FrameHeader
    {
        int version = 2; ///< 1 or 2
        quint8 incompatibleFlags = 0;
        quint8 sequence = 0;
        quint8 system = 1;
        quint8 component = 1;
    };

    /** A message of the type @p info, which must not be null, with all fields zero. */
    explicit MavlinkEncoder(const MavlinkMessageInfo* info);

    /**
     * Sets a number.
     *
     * Integer fields get the nearest integer of their range (0 for NaN). Integers beyond 2^53 cannot be given exactly.
     *
     * @param field  must be a field of the type
     * @param index  element of an array
     */
    void set(const char* field, double value, int index = 0);

    /** Sets a text, cut to the field's length and filled up with zeros. */
    void setText(const char* field, const QByteArray& text);

    /** The payload in its full length. */
    const QByteArray& getPayload() const { return m_payload; }

    QByteArray toFrame(const FrameHeader& header) const;

    /**
     * A frame with this payload.
     *
     * A v2 frame loses the trailing zeros of the payload, except for its first byte. A payload for v1 must have the
     * right length. With the flag for signatures set, 13 zero bytes stand for one.
     */
    static QByteArray toFrame(const FrameHeader& header, quint32 id, quint8 crcExtra, const QByteArray& payload);

private:
    const MavlinkMessageInfo* m_info;
    QByteArray m_payload;
};

#endif
