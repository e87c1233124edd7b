#ifndef PAYLOADTYPE_H
#define PAYLOADTYPE_H

#include "container.h"
#include "definitions.h"

struct Envelope;
class EnvelopeSchemas;
class MavlinkStreamDecoder;

/** What the payloads of a topic are. */
struct PayloadType
{
    enum What
    {
        Undecodable,
        SchemaAwaited, ///< it says of what type it is, and that is not known yet
        SingleMessage, ///< of the type info
        MavlinkFrames
    };

    What what = Undecodable;
    const MessageInfo* info = nullptr;
    bool isSchemaKnown = false; ///< whether its schema had come
    QString name;               ///< what it is called where it cannot be decoded
    QString problem;            ///< why it cannot be decoded
    TypeSchema schema;          ///< what is known of its type then, without the schema
};

/** Finds out what payloads are: by what the publisher says, by what the user said, and by what they look like. */
class PayloadTypes
{
public:
    explicit PayloadTypes(const StreamOptions& options);
    ~PayloadTypes();

    PayloadType find(const Envelope& envelope, const EnvelopeSchemas& schemas);

    /** Whether a payload that nobody knew by its looks may look like something. Cheap. */
    static bool mayLook(const Envelope& envelope);

    /** Decodes frames of one payload at a time. */
    MavlinkStreamDecoder* getMavlink();

private:
    /** Each sets what it finds; whether that is all there is to find. */
    bool findTold(const Envelope& envelope, const EnvelopeSchemas& schemas, PayloadType* type);
    bool findMapped(const Envelope& envelope, PayloadType* type);
    bool findLook(const Envelope& envelope, PayloadType* type);

    bool makeType(Encoding* encoding, const Envelope& envelope, PayloadType* type);
    bool isMavlink(const Envelope& envelope);

    const StreamOptions m_options;
    std::unique_ptr<MavlinkStreamDecoder> m_mavlink; // null before it is needed
};

#endif
