#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "transcript.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

static QStringList decode(const MavlinkDialect* dialect, MavlinkStreamDecoder::Layout layout, const QByteArray& stream,
                          int piece)
{
    MavlinkStreamDecoder decoder(dialect, layout);
    Transcript found(&decoder);
    feedAll(&decoder, stream, &found, piece);
    if (!found.uncovered(quint64(stream.size())).isEmpty())
        std::abort(); // bytes were left out or reported twice
    for (int i = 0; i < found.messages.size(); ++i)
        if (!stream.mid(found.messages.at(i).section(QLatin1Char(' '), 0, 0).toInt()).startsWith(found.payloads.at(i)))
            std::abort(); // not the bytes at that place
    return found.lines;
}

// The first byte is the layout and how the rest is cut into pieces; the rest is a stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const MavlinkDialect* const dialect = MavlinkDialect::loadBuiltIn();
    if (size < 1)
        return 0;
    const QByteArray stream(reinterpret_cast<const char*>(data + 1), int(size - 1));
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    MavlinkStreamDecoder::detectLayout(stream, &layout);
    layout = data[0] & 1 ? MavlinkStreamDecoder::TlogLayout : MavlinkStreamDecoder::RawLayout;
    const QStringList whole = decode(dialect, layout, stream, 1 << 20);
    if (whole != decode(dialect, layout, stream, 1 + (data[0] >> 1)))
        std::abort(); // the result depends on the pieces
    return 0;
}
