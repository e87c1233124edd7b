#include "outletworker.h"

#include "messageoutput.h"
#include "outlet.h"

#include <QElapsedTimer>

static const int LookMs = 10;
static const int LongestWorkMs = 30;

OutletWorker::OutletWorker(Outlet* outlet)
    : m_outlet(outlet)
    , m_timer(this)
    , m_flushTimer(this)
{
    connect(&m_timer, &QTimer::timeout, this, &OutletWorker::work);
    connect(&m_flushTimer, &QTimer::timeout, this, &OutletWorker::flush);
}

OutletWorker::~OutletWorker() {}

void OutletWorker::start()
{
    const OutputKind* const kind = m_outlet->m_address.kind;
    m_stream.reset(new PublishedStream(m_outlet->m_settings.queue.run));
    if (kind->isFile())
        m_output.reset(new FileSeries(m_outlet->m_address, m_outlet->m_settings.files, m_stream.get()));
    else
        m_output.reset(kind->connect(m_outlet->m_address, m_stream.get()));
    tell();
    m_flushTimer.start(kind->flushMilliseconds);
    m_timer.start(LookMs);
}

void OutletWorker::work()
{
    m_outlet->m_isWoken = false;
    if (!m_output || m_isFinishing)
        return;
    if (!m_outlet->m_isAbandoned)
        takeBlocks();
    confirm();
    tell();
    const bool isDone = m_outlet->m_isEnding && m_outlet->m_queue.getCounts().waitingBytes == 0;
    if (isDone || m_outlet->m_isAbandoned)
        finish();
}

void OutletWorker::takeBlocks()
{
    QElapsedTimer since;
    since.start();
    OutputQueue::Block block;
    while (m_output->isReady() && m_outlet->m_queue.take(&block)) {
        followRun(block.run);
        m_stream->feed(block.records.constData(), int(block.records.size()), 0, this);
        confirm();
        if (since.elapsed() >= LongestWorkMs) {
            m_outlet->wake();
            break;
        }
    }
}

/** What an earlier run left has numbers of its own. */
void OutletWorker::followRun(const QString& run)
{
    if (run == m_stream->getRun())
        return;
    std::unique_ptr<PublishedStream> stream(new PublishedStream(run));
    m_output->setDecoder(stream.get());
    m_stream = std::move(stream);
}

void OutletWorker::processReceived(const ReceivedMessage& message)
{
    m_output->processReceived(message);
    ++m_taken;
    m_outlet->m_bytes += quint64(message.size);
}

void OutletWorker::processProblem(const StreamProblem& problem)
{
    m_output->processProblem(problem);
}

void OutletWorker::confirm()
{
    const quint64 arrived = m_taken - qMin(m_taken, m_output->getPendingCount());
    m_outlet->m_dropped = m_output->getDroppedCount();
    m_outlet->m_messages = arrived;
    if (arrived > m_confirmed && m_outlet->m_address.kind->isAcknowledged())
        m_outlet->m_queue.confirm(arrived - m_confirmed);
    m_confirmed = arrived;
}

void OutletWorker::flush()
{
    if (!m_output || m_isFinishing)
        return;
    m_output->flush();
    tell();
    if (m_output->getErrorString().isEmpty())
        m_outlet->m_flushed = m_outlet->m_queue.getSafe(); // what was taken from there
}

void OutletWorker::tell()
{
    if (!m_output)
        return;
    const QStringList notices = m_output->takeNotices();
    const QString problem = m_outlet->m_queue.takeProblem();
    const std::lock_guard<std::mutex> lock(m_outlet->m_mutex);
    m_outlet->m_notices += notices;
    if (!problem.isEmpty() && problem != m_problem)
        m_outlet->m_notices.append(problem);
    if (!problem.isEmpty())
        m_problem = problem;
    m_outlet->m_error = m_output->getErrorString();
}

void OutletWorker::finish()
{
    m_isFinishing = true; // an output can let events come while it closes
    m_output->flush();
    m_output->close();
    confirm();
    tell();
    m_output.reset();
    m_timer.stop();
    m_flushTimer.stop();
    m_outlet->m_isEnded = true;
}
