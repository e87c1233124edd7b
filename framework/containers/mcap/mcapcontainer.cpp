#include "mcapcontainer.h"

#include "definitions.h"
#include "mcapindex.h"
#include "mcaprecord.h"
#include "mcapstreamdecoder.h"
#include "message.h"

#include <QCoreApplication>

#include <functional>
#include <numeric>

namespace
{

/** The index of a recording, which is made when it is needed: without a summary that takes its time. */
class LaterMcapIndex : public RecordingIndex
{
public:
    /** @param decoder  is given the index too; must live until it is made */
    LaterMcapIndex(const QVector<InputFile>& files, McapStreamDecoder* decoder)
        : m_files(files)
        , m_decoder(decoder)
    {
    }

    bool prepare(const GoOn& goOn) override
    {
        bool stopped = false;
        QString error; // a file that cannot be indexed is read all the same, and says then what is wrong
        m_index.reset(McapIndex::load(m_files, &error, [&](int percent) {
            stopped = goOn && !goOn(percent);
            return !stopped;
        }));
        if (m_index)
            m_decoder->setIndex(m_index.get());
        return !stopped;
    }

    qint64 getStartTime() const override { return m_index ? m_index->getStartTime() : qint64(Message::NoTime); }
    qint64 getEndTime() const override { return m_index ? m_index->getEndTime() : qint64(Message::NoTime); }
    quint64 findOffset(qint64 time) override { return m_index ? m_index->findOffset(time) : 0; }
    quint64 findCut(quint64 offset) override { return m_index ? m_index->findCut(offset) : 0; }

private:
    const QVector<InputFile> m_files;
    McapStreamDecoder* const m_decoder;
    std::unique_ptr<McapIndex> m_index;
};

// Of a recording that is told to be one the very beginning may be damaged.
const int LeastOfMagic = 5;

Container::Answer recognize(const StreamHead& head, const StreamOptions& options)
{
    if (McapStreamDecoder::isMcap(head.bytes))
        return Container::Yes;
    if (options.container != QLatin1String(McapContainer.name)) {
        const QByteArray magic = QByteArray::fromRawData(Mcap::Magic, Mcap::MagicSize);
        return magic.startsWith(head.bytes) ? Container::More : Container::No;
    }
    if (head.bytes.size() < Mcap::MagicSize)
        return Container::More;
    return std::inner_product(Mcap::Magic, Mcap::Magic + Mcap::MagicSize, head.bytes.constBegin(), 0, std::plus<int>(),
                              std::equal_to<char>()) >= LeastOfMagic
               ? Container::Yes
               : Container::No;
}

void create(const StreamHead& head, const StreamOptions& options, OpenedStream* opened)
{
    if (!options.typeName.isEmpty()) {
        opened->error = QCoreApplication::translate(
            "Container", "an MCAP recording says itself of what types its messages are; none can be named");
        return;
    }
    std::unique_ptr<McapStreamDecoder> decoder(new McapStreamDecoder(
        options.definitions, head.isLive ? McapStreamDecoder::Live : McapStreamDecoder::Recording));
    if (!head.files.isEmpty())
        opened->index.reset(new LaterMcapIndex(head.files, decoder.get()));
    decoder->setFiles(head.files);
    opened->needsIndex = true;
    opened->decoder = std::move(decoder);
}

QVector<const FormatInfo*> getFormats(const StreamOptions& options)
{
    return options.definitions->getSchemaFormats();
}

} // namespace

const Container McapContainer = {
    "mcap",    QT_TRANSLATE_NOOP("Container", "MCAP recordings"), "*.mcap *.mcap.zstd", "", true, recognize, create,
    getFormats};
