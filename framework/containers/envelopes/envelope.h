#ifndef ENVELOPE_H
#define ENVELOPE_H

#include "corvelframework_export.h"

#include <QByteArray>

#include <string_view>
#include <utility>
#include <vector>

/**
 * A message as a broker hands it on, before anybody knows what is in it: a topic, what the publisher says of the
 * payload, and the payload.
 *
 * The texts are not owned: those that are read are valid for as long as the bytes that they were read from.
 */
struct CORVELFRAMEWORK_EXPORT Envelope
{
    enum Kind
    {
        Message,
        Gone,  ///< what the topic had is there no more; or, of a schema's topic, there is none
        Notice ///< what a server says, in the payload; about a topic, or none
    };

    typedef std::pair<std::string_view, std::string_view> Property;

    /** The value of the first property of that name; empty where there is none. */
    std::string_view find(std::string_view name) const;
    /** As find(), of an attribute of CloudEvents: with "ce-" before its name or without. */
    std::string_view attribute(std::string_view name) const;
    /** The topic at which the schema of the payload is kept, as the attribute "dataschema" names it after "mqtt:" or
     * "nats:"; empty where it is nowhere. A reader that does not know it asks for what is kept there. */
    std::string_view getSchemaTopic() const;

    Kind kind = Message;
    bool isKept = false;    ///< the server had it from before, and nobody knows since when
    qint64 time = 0;        ///< when the server or this computer got it, nanoseconds since 1970; 0 if it is not known
    quint64 sequence = 0;   ///< from 1 on, by one for each message that this reader is to get; 0 for none
    quint64 origin = 0;     ///< see ReceivedMessage::origin; 0 for none
    std::string_view topic; ///< levels with "/" or "." between them, UTF-8
    std::string_view contentType;     ///< a media type; may be empty
    std::vector<Property> properties; ///< in the publisher's order; names can repeat
    std::string_view payload;
};

/**
 * Writes envelopes one behind the other, such as an input does whose InputKind::container is "envelopes".
 *
 * @code
 * EnvelopeWriter writer(&bytes);
 * Envelope envelope;
 * envelope.topic = topic;
 * envelope.payload = std::string_view(data, size);
 * writer.write(envelope);
 * @endcode
 */
class CORVELFRAMEWORK_EXPORT EnvelopeWriter
{
public:
    /** @param bytes  what is written is appended; must outlive the writer */
    explicit EnvelopeWriter(QByteArray* bytes);

    /** Whether it was written, which one is not of which a part is too large: see EnvelopeReader. */
    bool write(const Envelope& envelope);

private:
    QByteArray* m_bytes;
};

/**
 * Reads what an EnvelopeWriter wrote.
 *
 * Each envelope begins with a mark, by which it is found again behind bytes that are none: little-endian are its size
 * from behind itself on (32 bits), kind and flags (8 each), the number of properties (16), time and sequence (64 each),
 * the sizes of topic and content type (16 each), the origin (64) if the flags say so, then for each property the sizes
 * of name and value (32 each) and both, and the payload last.
 */
class CORVELFRAMEWORK_EXPORT EnvelopeReader
{
public:
    enum Result
    {
        Whole,      ///< used is the size of the envelope
        Incomplete, ///< used is how many bytes there have to be at least
        Damaged     ///< used is how many bytes no envelope can begin in; one may begin behind them
    };

    /** Larger ones are not written, and not believed. */
    static const quint32 GreatestSize = 128 * 1024 * 1024;

    /** Reads the envelope that begins at @p bytes, of which there is at least one; it is of use where the result is
     * Whole.
     */
    static Result read(const char* bytes, qint64 size, Envelope* envelope, qint64* used);

    /** Whether a stream that begins so, with all of the mark, is one of envelopes. */
    static bool isEnvelope(const QByteArray& head);
    /** The mark. */
    static QByteArray getMark();
};

#endif
