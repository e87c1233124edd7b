#include "mavlinkcontainer.h"

#include "mavlinkdialect.h"
#include "mavlinkencoding.h"
#include "mavlinkframe.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"

#include <QCoreApplication>

namespace
{

MavlinkDialect* dialectOf(const StreamOptions& options)
{
    return options.definitions->get<MavlinkEncoding>()->getDialect(options.definitionFile);
}

/** Whether a frame was found that is proven by its checksum, and that is none of a recording with times. */
class ProofSink : public StreamSink
{
public:
    explicit ProofSink(const QByteArray& head)
        : m_head(head)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        const int time = int(message.offset) - MavlinkFrame::TimeSize;
        hasProof = hasProof ||
                   (message.info &&
                    (time < 0 || !MavlinkFrame::isPlausibleTime(MavlinkFrame::readTime(m_head.constData() + time))));
    }
    void processProblem(const StreamProblem&) override {}

    bool hasProof = false;

private:
    const QByteArray m_head;
};

Container::Answer recognize(const StreamHead& head, const StreamOptions& options)
{
    if (options.container == QLatin1String(MavlinkContainer.name))
        return Container::Yes;
    if (!options.typeName.isEmpty())
        return Container::No;
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    if (MavlinkStreamDecoder::detectLayout(head.bytes, &layout))
        return layout == MavlinkStreamDecoder::RawLayout ? Container::Yes : Container::No;
    // Behind noise a single frame is little to go by, and all that a device may send for a while.
    MavlinkStreamDecoder decoder(dialectOf(options), MavlinkStreamDecoder::RawLayout);
    ProofSink sink(head.bytes);
    decoder.feed(head.bytes.constData(), int(head.bytes.size()), Message::NoTime, &sink);
    return sink.hasProof ? Container::Yes : Container::More;
}

void create(const StreamHead&, const StreamOptions& options, OpenedStream* opened)
{
    opened->decoder.reset(new MavlinkStreamDecoder(dialectOf(options), MavlinkStreamDecoder::RawLayout));
}

QVector<const FormatInfo*> getFormats(const StreamOptions& options)
{
    return {dialectOf(options)};
}

} // namespace

const Container MavlinkContainer = {
    "raw",     QT_TRANSLATE_NOOP("Container", "MAVLink frames"), "*.mavlink *.raw", "raw", false, recognize, create,
    getFormats};
