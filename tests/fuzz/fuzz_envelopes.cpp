#include "container.h"
#include "definitions.h"
#include "envelope.h"
#include "sparkplugscript.h"
#include "transcript.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

static QStringList decode(Definitions* definitions, const QByteArray& stream, int piece)
{
    StreamOptions options;
    options.definitions = definitions;
    const std::unique_ptr<StreamDecoder> decoder =
        Container::find(QStringLiteral("envelopes"))->open(StreamHead(), options).decoder;
    Transcript found(decoder.get());
    feedAll(decoder.get(), stream, &found, piece);
    return found.lines;
}

// The first byte is how the stream is cut into pieces. With an even one the rest is a stream; else it is payloads of
// Sparkplug, each behind a byte that says of which kind, and whether it lies compressed in another one, and a byte with
// its size.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Definitions definitions;
    if (size < 1)
        return 0;
    QByteArray stream(reinterpret_cast<const char*>(data + 1), int(size - 1));
    if (data[0] & 1) {
        static const char* const topics[] = {"NBIRTH/n",   "NDATA/n",   "NDEATH/n",
                                             "DBIRTH/n/d", "DDATA/n/d", "DDEATH/n/d"};
        QByteArray envelopes;
        for (int i = 0; i + 1 < stream.size();) {
            const std::string topic = std::string("spBv1.0/g/") + topics[quint8(stream.at(i)) % 6];
            QByteArray payload = stream.mid(i + 2, quint8(stream.at(i + 1)));
            const bool isPacked = quint8(stream.at(i)) >= 0x80;
            i += 2 + int(payload.size());
            if (isPacked)
                payload = SparkplugScript::part(4, "SPBV1.0_COMPRESSED") + SparkplugScript::part(5, payload);
            Envelope envelope;
            envelope.topic = topic;
            envelope.payload = std::string_view(payload.constData(), std::size_t(payload.size()));
            EnvelopeWriter(&envelopes).write(envelope);
        }
        stream = envelopes;
    }
    if (decode(&definitions, stream, 1 << 20) != decode(&definitions, stream, 1 + (data[0] >> 1)))
        std::abort(); // the result depends on the pieces
    QStringList problems;
    definitions.publish(&problems);
    return 0;
}
