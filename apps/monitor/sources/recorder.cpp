#include "recorder.h"

#include "detectingdecoder.h"
#include "mavlinkstreamdecoder.h"
#include "mcapwriter.h"
#include "message.h"
#include "messageinfo.h"
#include "protobufformat.h"
#include "recordingfile.h"

#include <QDateTime>
#include <QtEndian>

// A chunk of MCAP is compressed, and the better the longer it is.
static const int TlogFlushMilliseconds = 100;
static const int McapFlushMilliseconds = 1000;
static const uchar MagicV1 = 0xFE;
static const uchar MagicV2 = 0xFD;
static const int FullBuffer = 64 * 1024;

static qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch() * 1000;
}

Recorder::Recorder(QObject* parent)
    : QObject(parent)
    , m_lastTime(Message::NoTime)
{
    connect(&m_flushTimer, &QTimer::timeout, this, &Recorder::flush);
}

Recorder::~Recorder()
{
    stop();
}

Recorder::Kind Recorder::kindFor(const StreamDecoder* decoder)
{
    const bool isMavlink =
        dynamic_cast<const MavlinkStreamDecoder*>(decoder) || dynamic_cast<const DetectingDecoder*>(decoder);
    return isMavlink ? TlogKind : McapKind;
}

bool Recorder::start(const QString& path, const StreamDecoder* decoder, QString* error)
{
    stop();
    std::unique_ptr<RecordingFile> file(new RecordingFile(path));
    if (!file->open(QIODevice::WriteOnly)) {
        *error = tr("%1 cannot be written: %2").arg(path, file->getProblem());
        return false;
    }
    m_path = path;
    m_decoder = decoder;
    m_kind = kindFor(decoder);
    m_lastTime = Message::NoTime;
    m_file = std::move(file);
    if (m_kind == McapKind) {
        McapWriter::Settings settings;
        settings.writerName = "corvel-monitor";
        m_mcap.reset(new McapWriter(m_file.get(), settings));
        m_mcap->open();
    }
    m_since.start();
    m_flushTimer.start(m_kind == McapKind ? McapFlushMilliseconds : TlogFlushMilliseconds);
    return true;
}

bool Recorder::stop()
{
    if (!m_file)
        return true;
    m_flushTimer.stop();
    if (m_mcap)
        m_mcap->close();
    else
        m_file->write(m_buffer);
    m_mcap.reset();
    m_buffer.clear();
    m_schemas.clear();
    m_channels.clear();
    m_file->close();
    const bool good = m_file->getProblem().isEmpty();
    m_file.reset();
    return good;
}

void Recorder::setDecoder(const StreamDecoder* decoder)
{
    m_decoder = decoder;
    m_channels.clear(); // its numbers of types and senders are its own
}

qint64 Recorder::getSize() const
{
    return m_file ? m_file->getWrittenSize() : 0;
}

void Recorder::flush()
{
    if (!m_file)
        return;
    if (m_mcap) {
        m_mcap->flush();
    } else {
        handOver();
    }
    const QString problem = m_file->getProblem();
    if (problem.isEmpty())
        return;
    const QString text = tr("Recording to %1 ended: %2. What is in the file can be read.").arg(m_path, problem);
    stop();
    Q_EMIT failed(text);
}

void Recorder::handOver()
{
    m_file->write(m_buffer);
    m_buffer.resize(0);
}

void Recorder::writeTime(qint64 time)
{
    char bytes[8];
    qToBigEndian(quint64(time), bytes);
    m_buffer.append(bytes, sizeof bytes);
}

int Recorder::channelOf(const ReceivedMessage& message)
{
    const quint64 key = quint64(message.id) << 32 | message.sender;
    QHash<quint64, int>::iterator channel = m_channels.find(key);
    if (channel != m_channels.end())
        return *channel;
    int schema = 0;
    if (message.info) {
        schema = m_schemas.value(message.info, -1);
        if (schema < 0)
            schema =
                m_mcap->addSchema(message.info->getName().toUtf8(), "protobuf", ProtobufFormat::schemaOf(message.info));
        m_schemas.insert(message.info, schema);
    }
    QString topic = m_decoder->getSenderName(message.sender);
    if (topic.isEmpty())
        topic = message.info ? message.info->getName() : m_decoder->describeUnknown(message.id);
    channel = m_channels.insert(
        key, m_mcap->addChannel(topic.toUtf8(), message.info ? "protobuf" : QByteArray(), quint16(schema)));
    return *channel;
}

void Recorder::processReceived(const ReceivedMessage& message)
{
    if (!m_file)
        return;
    m_lastTime = message.time == Message::NoTime ? now() : message.time;
    if (m_mcap) {
        m_mcap->writeMessage(quint16(channelOf(message)), message.sequence > 0 ? quint32(message.sequence) : 0,
                             quint64(m_lastTime) * 1000, message.data, message.size);
        return;
    }
    writeTime(m_lastTime);
    m_buffer.append(message.data, message.size);
    if (m_buffer.size() >= FullBuffer)
        handOver();
}

void Recorder::processProblem(const StreamProblem& problem)
{
    if (!m_file || m_mcap || !problem.data)
        return;
    // A bad frame has its time before it like a good one, also one of which there is only a bit; stray bytes stand for
    // themselves.
    const uchar first = problem.length > 0 ? uchar(problem.data[0]) : 0;
    const bool isCut = problem.kind == StreamProblem::TruncatedFrame && (first == MagicV1 || first == MagicV2);
    if (problem.hasFrame || isCut)
        writeTime(m_lastTime == Message::NoTime ? now() : m_lastTime);
    m_buffer.append(problem.data, int(problem.length));
    if (m_buffer.size() >= FullBuffer)
        handOver();
}
