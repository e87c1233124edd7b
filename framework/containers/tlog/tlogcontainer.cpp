#include "tlogcontainer.h"

#include "mavlinkdialect.h"
#include "mavlinkencoding.h"
#include "mavlinkstreamdecoder.h"
#include "tlogindex.h"

#include <QCoreApplication>

namespace
{

MavlinkDialect* dialectOf(const StreamOptions& options)
{
    return options.definitions->get<MavlinkEncoding>()->getDialect(options.definitionFile);
}

Container::Answer recognize(const StreamHead& head, const StreamOptions& options)
{
    if (!options.typeName.isEmpty())
        return Container::No;
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    if (!MavlinkStreamDecoder::detectLayout(head.bytes, &layout))
        return Container::More;
    return layout == MavlinkStreamDecoder::TlogLayout ? Container::Yes : Container::No;
}

void create(const StreamHead& head, const StreamOptions& options, OpenedStream* opened)
{
    opened->decoder.reset(new MavlinkStreamDecoder(dialectOf(options), MavlinkStreamDecoder::TlogLayout));
    if (head.files.size() == 1)
        opened->index.reset(new TlogIndex(head.files.constFirst().path, dialectOf(options)));
}

QVector<const FormatInfo*> getFormats(const StreamOptions& options)
{
    return {dialectOf(options)};
}

} // namespace

const Container TlogContainer = {"tlog",   QT_TRANSLATE_NOOP("Container", "MAVLink frames with times before them"),
                                 "*.tlog", "raw",
                                 true,     recognize,
                                 create,   getFormats};
