#include "container.h"

#include "delimitedcontainer.h"
#include "envelopecontainer.h"
#include "mavlinkcontainer.h"
#include "mcapcontainer.h"
#include "recordingindex.h"
#include "streamdecoder.h"
#include "tlogcontainer.h"

#include <QCoreApplication>

// The table of containers: to add one, add its row here, where no earlier one takes its streams for its own.
const QVector<const Container*>& Container::getAll()
{
    static const QVector<const Container*> all{&McapContainer, &EnvelopeContainer, &TlogContainer, &MavlinkContainer,
                                               &DelimitedContainer};
    return all;
}

const Container* Container::find(const QString& name)
{
    for (const Container* container : getAll())
        if (name == QLatin1String(container->name))
            return container;
    return nullptr;
}

QString Container::getTitle() const
{
    return QCoreApplication::translate("Container", title);
}

OpenedStream Container::open(const StreamHead& head, const StreamOptions& options) const
{
    OpenedStream opened;
    create(head, options, &opened);
    if (opened.decoder)
        opened.decoder->setOrigin(this, getFormats(options));
    return opened;
}

QStringList StreamOptions::getFramings()
{
    return {QStringLiteral("varint"), QStringLiteral("u32"), QStringLiteral("datagram")};
}

OpenedStream::OpenedStream() {}
OpenedStream::~OpenedStream() {}
OpenedStream::OpenedStream(OpenedStream&& other) = default;
OpenedStream& OpenedStream::operator=(OpenedStream&& other) = default;
