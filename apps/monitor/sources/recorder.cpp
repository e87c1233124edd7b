#include "recorder.h"

#include "messageoutput.h"
#include "outputkind.h"
#include "recordingfile.h"

Recorder::Recorder(const Definitions* definitions, QObject* parent)
    : QObject(parent)
    , m_definitions(definitions)
{
    connect(&m_flushTimer, &QTimer::timeout, this, &Recorder::flush);
}

Recorder::~Recorder()
{
    stop();
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
    setDecoder(decoder);
    m_file = std::move(file);
    m_since.start();
    return true;
}

// Not before something comes: what a stream is may turn out with its first bytes.
void Recorder::begin()
{
    m_kind = &OutputKind::findFor(m_decoder);
    m_output.reset(m_kind->create({m_file.get(), "corvel-monitor", m_definitions}, m_decoder));
    m_flushTimer.start(m_kind->flushMilliseconds);
}

QString Recorder::stop()
{
    if (!m_file)
        return QString();
    if (!m_output)
        begin(); // also of nothing there is a recording
    m_flushTimer.stop();
    m_output->close();
    m_output.reset();
    m_file->close();
    const QString problem = m_file->getProblem();
    m_file.reset();
    return problem;
}

void Recorder::setDecoder(const StreamDecoder* decoder)
{
    m_decoder = decoder;
    m_isChecked = false;
    if (m_output)
        m_output->setDecoder(decoder);
}

qint64 Recorder::getSize() const
{
    return m_file ? m_file->getWrittenSize() : 0;
}

void Recorder::flush()
{
    m_output->flush();
    const QString problem = m_file->getProblem();
    if (!problem.isEmpty())
        fail(problem);
}

void Recorder::fail(const QString& reason)
{
    const QString text = tr("Recording to %1 ended: %2. What is in the file can be read.").arg(m_path, reason);
    stop();
    Q_EMIT failed(text);
}

void Recorder::processReceived(const ReceivedMessage& message)
{
    if (!m_file)
        return;
    if (!m_output)
        begin();
    if (!m_isChecked && &OutputKind::findFor(m_decoder) != m_kind) {
        fail(tr("other messages come now, which such a recording cannot keep"));
        return;
    }
    m_isChecked = true;
    m_output->processReceived(message);
}

void Recorder::processProblem(const StreamProblem& problem)
{
    if (!m_file || (!m_output && !problem.data)) // it can be told before it is known what comes
        return;
    if (!m_output)
        begin();
    m_output->processProblem(problem);
}
