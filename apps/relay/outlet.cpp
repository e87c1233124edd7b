#include "outlet.h"

#include "outletworker.h"

Outlet::Outlet(const OutputAddress& address, const Settings& settings)
    : m_address(address)
    , m_settings(settings)
    , m_queue(settings.queue)
    , m_worker(new OutletWorker(this))
    , m_isWoken(false)
    , m_isEnding(false)
    , m_isAbandoned(false)
    , m_isEnded(false)
    , m_messages(0)
    , m_bytes(0)
    , m_flushed(0)
    , m_dropped(0)
{
    m_worker->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
}

Outlet::~Outlet()
{
    if (!m_thread.isRunning()) {
        delete m_worker;
        return;
    }
    m_thread.quit();
    m_thread.wait();
}

bool Outlet::start(QString* error)
{
    if (!m_queue.open(error))
        return false;
    m_thread.start();
    QMetaObject::invokeMethod(m_worker, "start", Qt::BlockingQueuedConnection);
    *error = getError();
    return error->isEmpty();
}

bool Outlet::takes(const StreamDecoder* decoder) const
{
    return !m_address.kind->takesBytesAsTheyCame() ||
           QLatin1String(m_address.kind->container) == QLatin1String(decoder->getRecordingName());
}

void Outlet::processMessage(MessagePublisher* publisher, MessagePublisher::Published* message)
{
    const ReceivedMessage& shaped =
        m_address.kind->takesBytesAsTheyCame() ? message->getOriginal() : message->getReadable();
    m_record.resize(0);
    PublishedStream::appendMessage(shaped, &m_record);
    m_queue.append(&shaped.id, m_record, [publisher](quint32 channel) {
        return PublishedStream::channelRecord(publisher->getChannel(channel));
    });
}

void Outlet::processDamage(const StreamProblem& problem)
{
    m_record.resize(0);
    PublishedStream::appendDamage(problem, &m_record);
    m_queue.append(nullptr, m_record, [](quint32) { return QByteArray(); });
}

void Outlet::seal()
{
    m_queue.seal();
    wake();
}

void Outlet::flush()
{
    if (m_address.kind->isFile())
        QMetaObject::invokeMethod(m_worker, "flush", Qt::QueuedConnection);
}

void Outlet::wake()
{
    if (!m_isWoken.exchange(true))
        QMetaObject::invokeMethod(m_worker, "work", Qt::QueuedConnection);
}

// A file keeps up with any recording for as long as the disk does; where a network is in between, others need not wait.
bool Outlet::isHolding() const
{
    if (m_isEnded || !getError().isEmpty())
        return false;
    return m_address.kind->isFile() ? m_queue.isFull() : m_queue.isAtLimit();
}

void Outlet::end()
{
    m_isEnding = true;
    seal();
}

void Outlet::abandon()
{
    m_queue.keep();
    m_isAbandoned = true;
    wake();
}

Outlet::Counts Outlet::getCounts() const
{
    Counts counts;
    counts.queue = m_queue.getCounts();
    counts.dropped = m_dropped + counts.queue.dropped;
    counts.messages = m_messages;
    counts.bytes = m_bytes;
    return counts;
}

QStringList Outlet::takeNotices()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QStringList notices;
    notices.swap(m_notices);
    return notices;
}

QString Outlet::getError() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_error;
}
