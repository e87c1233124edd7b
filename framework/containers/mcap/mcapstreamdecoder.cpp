#include "mcapstreamdecoder.h"

#include "definitions.h"
#include "mcapreader.h"
#include "protobufencoding.h"

struct McapStreamDecoder::Private
{
    Private(Definitions* from, Mode how)
        : definitions(from)
        , mode(how)
        , reader(from, how == Recording)
    {
    }

    Definitions* const definitions;
    const Mode mode;
    McapReader reader;
};

McapStreamDecoder::McapStreamDecoder(Definitions* definitions, Mode mode)
    : m_private(new Private(definitions, mode))
{
}

McapStreamDecoder::~McapStreamDecoder() {}

void McapStreamDecoder::setIndex(const McapIndex* index)
{
    m_private->reader.setIndex(*index);
}

void McapStreamDecoder::setFiles(const QVector<InputFile>& files)
{
    m_private->reader.setFiles(files);
}

void McapStreamDecoder::feed(const char* bytes, int size, qint64, StreamSink* sink)
{
    m_private->reader.feed(bytes, quint64(size), sink);
}

void McapStreamDecoder::finish(StreamSink* sink)
{
    m_private->reader.finish(sink);
}

void McapStreamDecoder::restart(quint64 offset)
{
    m_private->reader.restart(offset);
}

void McapStreamDecoder::setTypeFilter(const TypeFilter& isWanted)
{
    m_private->reader.setTypeFilter(isWanted);
}

// Live, messages are shown as they come and not at the pace of the sender's clock.
bool McapStreamDecoder::hasTimes() const
{
    return m_private->mode == Recording;
}

QString McapStreamDecoder::getSenderName(quint32 sender) const
{
    return m_private->reader.getChannels().getTopic(sender);
}

void McapStreamDecoder::publishTypes(QStringList* problems) const
{
    m_private->definitions->publish(problems);
}

QString McapStreamDecoder::describeUnknown(quint32 id) const
{
    const QString text = m_private->reader.getChannels().describe(id);
    return text.isEmpty() ? StreamDecoder::describeUnknown(id) : text;
}

TypeSchema McapStreamDecoder::getUnknownSchema(quint32 id) const
{
    return m_private->reader.getChannels().getSchema(id);
}

quint64 McapStreamDecoder::getSequenceModulus() const
{
    return Q_UINT64_C(1) << 32;
}

bool McapStreamDecoder::isMcap(const QByteArray& head)
{
    return head.startsWith(QByteArray::fromRawData(Mcap::Magic, Mcap::MagicSize));
}
