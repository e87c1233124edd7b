#include "envelopecontainer.h"

#include "definitions.h"
#include "envelope.h"
#include "envelopestreamdecoder.h"
#include "mavlinkencoding.h"

#include <QCoreApplication>

namespace
{

Container::Answer recognize(const StreamHead& head, const StreamOptions& options)
{
    if (EnvelopeReader::isEnvelope(head.bytes) || options.container == QLatin1String(EnvelopeContainer.name))
        return Container::Yes;
    return EnvelopeReader::getMark().startsWith(head.bytes) ? Container::More : Container::No;
}

void create(const StreamHead& head, const StreamOptions& options, OpenedStream* opened)
{
    if (!options.typeName.isEmpty() && !options.definitions->findType(options.typeName, &opened->error))
        return;
    opened->decoder.reset(new EnvelopeStreamDecoder(options, head.isLive));
}

QVector<const FormatInfo*> getFormats(const StreamOptions& options)
{
    QVector<const FormatInfo*> formats = options.definitions->getSchemaFormats();
    formats.prepend(options.definitions->getFormat(QLatin1String(MavlinkEncoding::name()), options.definitionFile));
    return formats;
}

} // namespace

const Container EnvelopeContainer = {
    "envelopes",   QT_TRANSLATE_NOOP("Container", "messages of a broker with their topics"),
    "*.envelopes", "",
    true,          recognize,
    create,        getFormats};
