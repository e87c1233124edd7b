#include "recordingopener.h"

#include "definitions.h"
#include "inputkind.h"
#include "mavlinkencoding.h"
#include "mavlinkstreamdecoder.h"
#include "mcapindex.h"
#include "mcapstreamdecoder.h"
#include "message.h"
#include "prefixedinput.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace
{

const int GreatestHead = 64 * 1024;
const int TimeoutMs = 100;

/** The index of an MCAP file, which is made when it is needed: without a summary that takes its time. */
class LaterMcapIndex : public RecordingIndex
{
public:
    /** @param decoder  is given the index too; must live until it is made */
    LaterMcapIndex(const QString& path, McapStreamDecoder* decoder)
        : m_path(path)
        , m_decoder(decoder)
    {
    }

    bool prepare(const GoOn& goOn) override
    {
        bool stopped = false;
        QString error; // a file that cannot be indexed is read all the same, and says then what is wrong
        m_index.reset(McapIndex::load(m_path, &error, [&](int percent) {
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

private:
    const QString m_path;
    McapStreamDecoder* const m_decoder;
    std::unique_ptr<McapIndex> m_index;
};

/** The first bytes of an input. */
struct Head
{
    QByteArray bytes;
    bool isAll = false; // nothing follows
};

class Opener
{
public:
    Opener(const InputAddress& address, const RecordingOptions& options, const std::function<bool()>& goOn)
        : m_address(address)
        , m_options(options)
        , m_goOn(goOn)
    {
        m_result.input.reset(ByteInput::create(address));
    }

    OpenedRecording run();

private:
    bool mustLook() const;
    bool look();
    bool recognize();
    bool makeDecoder();
    bool makeDelimited();
    bool fail(const QString& reason);
    bool isLive() const { return m_address.kind->isLive(); }

    bool isFile() const { return m_address.kind->isFile() && QFileInfo(m_address.path).isFile(); }

    const InputAddress m_address;
    RecordingOptions m_options; // what was not told is filled in
    const std::function<bool()> m_goOn;
    OpenedRecording m_result;
    Head m_head;
};

bool Opener::fail(const QString& reason)
{
    m_result.error = m_result.input->getName() + QStringLiteral(": ") + reason;
    return false;
}

bool Opener::mustLook() const
{
    if (isLive())
        return false;
    return m_options.format == RecordingOptions::DetectFormat ||
           (m_options.format == RecordingOptions::DelimitedFormat && !m_options.hasFraming);
}

/** Reads first bytes until they can be recognised; what was read comes once more from the input. */
bool Opener::look()
{
    if (!m_result.input->open()) {
        m_result.error = m_result.input->getErrorString();
        return false;
    }
    bool recognized = false;
    while (!recognized && !m_head.isAll && m_head.bytes.size() < GreatestHead) {
        if (m_goOn && !m_goOn())
            return false;
        QByteArray piece;
        const ByteInput::Status status = m_result.input->read(&piece, TimeoutMs);
        if (status == ByteInput::Failed) {
            m_result.error = m_result.input->getErrorString();
            return false;
        }
        m_head.isAll = status == ByteInput::End;
        m_head.bytes += piece;
        // A pipe may bring its first bytes one by one: the same is asked again with more.
        recognized = (!piece.isEmpty() || m_head.isAll) && recognize();
    }
    if (isFile())
        m_result.input.reset(ByteInput::create(m_address));
    else
        m_result.input.reset(new PrefixedInput(m_result.input.release(), m_head.bytes));
    if (recognized)
        return true;
    if (m_head.bytes.isEmpty())
        return fail(QCoreApplication::translate("RecordingOpener", "the input is empty"));
    ProtobufStreamDecoder::Framing framing = ProtobufStreamDecoder::VarintFraming;
    if (m_options.format == RecordingOptions::DelimitedFormat || !m_options.typeName.isEmpty())
        return fail(QCoreApplication::translate("RecordingOpener",
                                                "no lengths of messages found that lead from one to the next"));
    if (ProtobufStreamDecoder::detectFraming(m_head.bytes, m_head.isAll, &framing))
        return fail(QCoreApplication::translate(
            "RecordingOpener",
            "these look like messages of Protocol Buffers with lengths between them; a schema and a type "
            "must be named to read them"));
    return fail(QCoreApplication::translate("RecordingOpener", "no MAVLink frames found, and it is no MCAP recording"));
}

/** Whether it is plain what the input is; then the options say so. */
bool Opener::recognize()
{
    const bool typed = !m_options.typeName.isEmpty() || m_options.format == RecordingOptions::DelimitedFormat;
    if (m_options.format == RecordingOptions::DetectFormat) {
        if (m_head.bytes.size() < 8 && !m_head.isAll)
            return false;
        if (McapStreamDecoder::isMcap(m_head.bytes)) {
            m_options.format = RecordingOptions::McapFormat;
            return true;
        }
        MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
        if (!typed && MavlinkStreamDecoder::detectLayout(m_head.bytes, &layout)) {
            m_options.format = layout == MavlinkStreamDecoder::TlogLayout ? RecordingOptions::TlogFormat
                                                                          : RecordingOptions::RawMavlinkFormat;
            return true;
        }
    }
    if (!typed)
        return false;
    if (m_options.hasFraming || ProtobufStreamDecoder::detectFraming(m_head.bytes, m_head.isAll, &m_options.framing)) {
        m_options.format = RecordingOptions::DelimitedFormat;
        m_options.hasFraming = true;
        return true;
    }
    return false;
}

bool Opener::makeDelimited()
{
    QString name = m_options.typeName;
    if (name.isEmpty()) {
        const QStringList names = m_options.definitions->getTypeNames();
        if (names.size() != 1)
            return fail(
                names.isEmpty()
                    ? QCoreApplication::translate(
                          "RecordingOpener", "a schema and a type must be named to read messages of Protocol Buffers")
                    : QCoreApplication::translate("RecordingOpener",
                                                  "the schema has several types; one of them must be named"));
        name = names.constFirst();
    }
    QString error;
    const MessageInfo* const info = m_options.definitions->findType(name, &error);
    if (!info)
        return fail(error);
    if (!m_options.hasFraming)
        m_options.framing = m_address.kind->isDatagram() ? ProtobufStreamDecoder::DatagramFraming
                                                         : ProtobufStreamDecoder::VarintFraming;
    m_result.decoder.reset(new ProtobufStreamDecoder(m_options.definitions, info, m_options.framing));
    return true;
}

bool Opener::makeDecoder()
{
    const auto dialect = [this] {
        return m_options.definitions->get<MavlinkEncoding>()->getDialect(m_options.definitionFile);
    };
    switch (m_options.format) {
    case RecordingOptions::TlogFormat:
        m_result.decoder.reset(new MavlinkStreamDecoder(dialect(), MavlinkStreamDecoder::TlogLayout));
        return true;
    case RecordingOptions::RawMavlinkFormat:
    case RecordingOptions::DetectFormat:
        m_result.decoder.reset(new MavlinkStreamDecoder(dialect(), MavlinkStreamDecoder::RawLayout));
        return true;
    case RecordingOptions::DelimitedFormat:
        return makeDelimited();
    case RecordingOptions::McapFormat:
        break;
    }
    std::unique_ptr<McapStreamDecoder> decoder(new McapStreamDecoder(
        m_options.definitions, isLive() ? McapStreamDecoder::Live : McapStreamDecoder::Recording));
    if (isFile())
        m_result.index.reset(new LaterMcapIndex(m_address.path, decoder.get()));
    m_result.decoder = std::move(decoder);
    return true;
}

OpenedRecording Opener::run()
{
    const QString given = QLatin1String(m_address.kind->container);
    if (!given.isEmpty())
        RecordingOptions::parseFormat(given, &m_options.format);
    else if (isLive() && m_options.format == RecordingOptions::DetectFormat && !m_options.typeName.isEmpty())
        m_options.format = RecordingOptions::DelimitedFormat;
    if ((mustLook() && !look()) || !makeDecoder()) {
        m_result.input.reset();
        m_result.decoder.reset();
        m_result.index.reset();
    }
    return std::move(m_result);
}

} // namespace

RecordingOptions::RecordingOptions()
    : definitions(nullptr)
    , format(DetectFormat)
    , hasFraming(false)
    , framing(ProtobufStreamDecoder::VarintFraming)
{
}

bool RecordingOptions::parseFormat(const QString& text, Format* format)
{
    const QStringList names{QStringLiteral("tlog"), QStringLiteral("raw"), QStringLiteral("mcap"),
                            QStringLiteral("delimited")};
    const int index = int(names.indexOf(text));
    if (index < 0)
        return false;
    *format = static_cast<Format>(TlogFormat + index);
    return true;
}

bool RecordingOptions::parseFraming(const QString& text, ProtobufStreamDecoder::Framing* framing)
{
    const QStringList names{QStringLiteral("varint"), QStringLiteral("u32"), QStringLiteral("datagram")};
    const int index = int(names.indexOf(text));
    if (index < 0)
        return false;
    *framing = static_cast<ProtobufStreamDecoder::Framing>(index);
    return true;
}

OpenedRecording::OpenedRecording() {}
OpenedRecording::~OpenedRecording() {}
OpenedRecording::OpenedRecording(OpenedRecording&& other) = default;
OpenedRecording& OpenedRecording::operator=(OpenedRecording&& other) = default;

OpenedRecording openRecording(const InputAddress& address, const RecordingOptions& options,
                              const std::function<bool()>& goOn)
{
    return Opener(address, options, goOn).run();
}
