#include "delimitedcontainer.h"

#include "definitions.h"
#include "message.h"
#include "protobufstreamdecoder.h"

#include <QCoreApplication>

namespace
{

// Whoever begins with a longer message than this is taken at the word of its length.
const int GreatestFirst = 60 * 1024;

class CountingSink : public StreamSink
{
public:
    void processReceived(const ReceivedMessage&) override { ++messages; }
    void processProblem(const StreamProblem&) override {}

    int messages = 0;
};

Container::Answer recognize(const StreamHead& head, const StreamOptions& options)
{
    if (options.typeName.isEmpty() && options.container != QLatin1String(DelimitedContainer.name))
        return Container::No;
    // Of what a device sends nobody waits for more.
    if (!options.framing.isEmpty() || head.isLive)
        return Container::Yes;
    ProtobufStreamDecoder::Framing framing = ProtobufStreamDecoder::VarintFraming;
    if (!ProtobufStreamDecoder::detectFraming(head.bytes, head.isAll, &framing))
        return Container::More;
    if (head.isAll || head.bytes.size() >= GreatestFirst)
        return Container::Yes;
    // Before a length has led to an end, nearly everything looks like one.
    ProtobufStreamDecoder decoder(options.definitions, nullptr, framing);
    CountingSink sink;
    decoder.feed(head.bytes.constData(), int(head.bytes.size()), Message::NoTime, &sink);
    return sink.messages > 0 ? Container::Yes : Container::More;
}

void create(const StreamHead& head, const StreamOptions& options, OpenedStream* opened)
{
    QString name = options.typeName;
    if (name.isEmpty()) {
        const QStringList names = options.definitions->getTypeNames();
        if (names.size() != 1) {
            opened->error =
                names.isEmpty()
                    ? QCoreApplication::translate(
                          "Container", "a schema and a type must be named to read messages of Protocol Buffers")
                    : QCoreApplication::translate("Container",
                                                  "the schema has several types; one of them must be named");
            return;
        }
        name = names.constFirst();
    }
    const MessageInfo* const info = options.definitions->findType(name, &opened->error);
    if (!info)
        return;
    ProtobufStreamDecoder::Framing framing =
        head.isDatagram ? ProtobufStreamDecoder::DatagramFraming : ProtobufStreamDecoder::VarintFraming;
    const int told = int(StreamOptions::getFramings().indexOf(options.framing));
    if (told >= 0)
        framing = static_cast<ProtobufStreamDecoder::Framing>(told);
    else if (!head.isLive)
        ProtobufStreamDecoder::detectFraming(head.bytes, head.isAll, &framing);
    opened->decoder.reset(new ProtobufStreamDecoder(options.definitions, info, framing));
}

QVector<const FormatInfo*> getFormats(const StreamOptions& options)
{
    return options.definitions->getSchemaFormats();
}

} // namespace

const Container DelimitedContainer = {
    "delimited",
    QT_TRANSLATE_NOOP("Container", "messages of Protocol Buffers with lengths before them, whose type must be named"),
    "*.osi *.bin",
    "",
    false,
    recognize,
    create,
    getFormats};
