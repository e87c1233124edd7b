#ifndef RECORDINGOPENER_H
#define RECORDINGOPENER_H

#include "byteinput.h"
#include "protobufstreamdecoder.h"

#include <QStringList>

#include <functional>
#include <memory>

class Definitions;
class RecordingIndex;

/** What a user says about an input, and what its messages are described by. */
struct CORVELFRAMEWORK_EXPORT RecordingOptions
{
    enum Format
    {
        DetectFormat,     ///< tell it from the first bytes; MAVLink or, with a typeName, datagrams or delimited
                          ///< messages where there are none beforehand, as with sockets
        TlogFormat,       ///< MAVLink with times
        RawMavlinkFormat, ///< MAVLink frame after frame
        McapFormat,
        DelimitedFormat ///< messages of one Protocol Buffers type
    };

    RecordingOptions();

    Definitions* definitions; ///< must not be null; must outlive the decoder
    QString definitionFile;   ///< a loaded one that the source names; empty for those of every source
    Format format;
    QString typeName; ///< full name of the one type of delimited messages; empty where the schema has only one
    bool hasFraming;  ///< whether framing says anything; else it is told from the first bytes, or the usual one
    ProtobufStreamDecoder::Framing framing;

    /** Reads "tlog", "raw", "mcap" or "delimited"; false for anything else. */
    static bool parseFormat(const QString& text, Format* format);
    /** Reads "varint", "u32" or "datagram"; false for anything else. */
    static bool parseFraming(const QString& text, ProtobufStreamDecoder::Framing* framing);
};

/** All that is needed to read from an address, or what is wrong. */
struct CORVELFRAMEWORK_EXPORT OpenedRecording
{
    OpenedRecording();
    ~OpenedRecording();
    OpenedRecording(OpenedRecording&& other);
    OpenedRecording& operator=(OpenedRecording&& other);

    /** Whether there is an input and a decoder. */
    bool isGood() const { return input && decoder; }

    std::unique_ptr<ByteInput> input;
    std::unique_ptr<StreamDecoder> decoder;
    /** Null where there is none. It is not prepared yet; until that the decoder must live and get nothing to decode. */
    std::unique_ptr<RecordingIndex> index;
    QString error; ///< names the input; empty when all went well or @p goOn said no
};

/**
 * Turns an address into an input and a decoder that fits what comes from it.
 *
 * A file is looked into. Of a pipe or standard input the first bytes are waited for, which the input then hands out
 * again; whoever may not wait opens them on another thread or says what format it is. Nothing is read from sockets:
 * "ws:" addresses are Foxglove servers, others bring what @p options say.
 *
 * The input that comes back is to be opened by whoever reads it, as any other.
 *
 * @param goOn  asked every 100 ms while waiting: whether to go on; may be empty
 */
CORVELFRAMEWORK_EXPORT OpenedRecording openRecording(const InputAddress& address, const RecordingOptions& options,
                                                     const std::function<bool()>& goOn = std::function<bool()>());

#endif
