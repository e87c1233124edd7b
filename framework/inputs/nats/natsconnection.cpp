#include "natsconnection.h"

#include "natsattempt.h"
#include "natskinds.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QJsonObject>

#include <chrono>
#include <climits>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <unordered_map>

namespace
{

typedef std::chrono::steady_clock Clock;

const int GreetingTimeoutMs = 5000;
const int CancelCheckMs = 50;

const qint64 PieceSize = 64 * 1024;
const qint64 MessageOverhead = 200;
const int MostNotices = 1000;

qint64 now()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace

/** What threads of the library and that of the reader both use. */
struct NatsConnection::Shared
{
    explicit Shared(qint64 most)
        : mostBytes(most)
    {
    }

    void add(int channel, natsMsg* message);
    void tell(int level, const QString& text);
    void end(const QString& reason);

    const qint64 mostBytes;
    mutable std::mutex mutex; // for what follows
    std::condition_variable hasCome;
    std::deque<Received> waiting;
    qint64 size = 0;                         // bytes that these need
    QHash<int, Clock::time_point> lastHeard; // by channel
    qint64 dropped = 0;
    qint64 droppedTold = 0;
    int reconnections = 0;
    bool isConnected = false;
    bool isOver = false;
    bool isAwake = false; // nobody is to wait any more
    QString error;
    QVector<StreamProblem> notices;
};

/** Who is meant by a call of the library, which can come late: by number, since those who left have none any more. */
struct NatsConnection::Callbacks
{
    struct Listener
    {
        std::shared_ptr<Shared> shared;
        int channel;
    };

    struct Registry
    {
        std::mutex mutex;
        std::unordered_map<quintptr, Listener> listeners;
        quintptr last = 0;
    };

    static Registry& registry()
    {
        static Registry* const registry = new Registry; // for threads that outlive everything
        return *registry;
    }

    static quintptr add(const std::shared_ptr<Shared>& shared, int channel)
    {
        const std::lock_guard<std::mutex> lock(registry().mutex);
        registry().listeners[++registry().last] = {shared, channel};
        return registry().last;
    }

    static void remove(quintptr listener)
    {
        const std::lock_guard<std::mutex> lock(registry().mutex);
        registry().listeners.erase(listener);
    }

    static Listener find(void* closure)
    {
        const std::lock_guard<std::mutex> lock(registry().mutex);
        const auto found = registry().listeners.find(reinterpret_cast<quintptr>(closure));
        return found == registry().listeners.end() ? Listener{nullptr, 0} : found->second;
    }

    static QString lastErrorOf(natsConnection* connection)
    {
        const char* text = nullptr;
        const natsStatus status = natsConnection_GetLastError(connection, &text);
        return status == NATS_OK ? QString() : QString::fromUtf8(text && *text ? text : natsStatus_GetText(status));
    }

    static void processMessage(natsConnection*, natsSubscription*, natsMsg* message, void* closure)
    {
        const Listener listener = find(closure);
        if (listener.shared)
            listener.shared->add(listener.channel, message);
        else
            natsMsg_Destroy(message);
    }

    static void processLoss(natsConnection* connection, void* closure)
    {
        const Listener listener = find(closure);
        if (!listener.shared)
            return;
        const QString reason = lastErrorOf(connection);
        const QString text = QCoreApplication::translate(
            "NatsInput", "the connection is lost; it is tried again for as long as it takes");
        listener.shared->tell(1, reason.isEmpty() ? text : text + QStringLiteral(" (%1)").arg(reason));
        const std::lock_guard<std::mutex> lock(listener.shared->mutex);
        listener.shared->isConnected = false;
    }

    static void processReturn(natsConnection* connection, void* closure)
    {
        const Listener listener = find(closure);
        if (!listener.shared)
            return;
        char url[256] = "";
        natsConnection_GetConnectedUrl(connection, url, sizeof url);
        // A password that is in it is nobody's business.
        listener.shared->tell(0, QCoreApplication::translate("NatsInput", "connected again, to %1")
                                     .arg(QString::fromUtf8(url).section(QLatin1Char('@'), -1)));
        const std::lock_guard<std::mutex> lock(listener.shared->mutex);
        listener.shared->isConnected = true;
        ++listener.shared->reconnections;
        listener.shared->hasCome.notify_all();
    }

    static void processEnd(natsConnection* connection, void* closure)
    {
        const Listener listener = find(closure);
        if (listener.shared)
            listener.shared->end(QCoreApplication::translate("NatsInput", "the server has ended the connection: %1")
                                     .arg(lastErrorOf(connection)));
    }

    static void processError(natsConnection* connection, natsSubscription*, natsStatus status, void* closure)
    {
        const Listener listener = find(closure);
        if (!listener.shared || status == NATS_SLOW_CONSUMER) // what is dropped is counted
            return;
        const QString text = lastErrorOf(connection);
        listener.shared->tell(2, text.isEmpty() ? QString::fromUtf8(natsStatus_GetText(status)) : text);
    }
};

void NatsConnection::Shared::add(int channel, natsMsg* message)
{
    const qint64 bytes = natsMsg_GetDataLength(message) + MessageOverhead;
    Received received{channel, now(), NatsMessage(message)};
    const std::lock_guard<std::mutex> lock(mutex);
    lastHeard[channel] = Clock::now();
    if (size + bytes > mostBytes) {
        ++dropped;
        return;
    }
    size += bytes;
    waiting.push_back(std::move(received));
    if (waiting.size() == 1)
        hasCome.notify_all();
}

void NatsConnection::Shared::tell(int level, const QString& text)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (notices.size() >= MostNotices)
        return;
    StreamProblem notice;
    notice.kind = StreamProblem::ServerNotice;
    notice.id = quint32(level);
    notice.text = text;
    notices.append(notice);
    hasCome.notify_all();
}

void NatsConnection::Shared::end(const QString& reason)
{
    const std::lock_guard<std::mutex> lock(mutex);
    isConnected = false;
    isOver = true;
    error = reason;
    hasCome.notify_all();
}

NatsConnection::NatsConnection(qint64 mostBytes)
    : m_shared(std::make_shared<Shared>(mostBytes))
    , m_connection(nullptr)
    , m_listener(Callbacks::add(m_shared, 0))
{
}

NatsConnection::~NatsConnection()
{
    Callbacks::remove(m_listener);
    const QList<int> channels = m_subscriptions.keys();
    for (const int channel : channels)
        unsubscribe(channel);
    natsConnection_Destroy(m_connection);
}

bool NatsConnection::open(const NatsSettings& settings, const std::atomic<bool>& cancelled, QString* error)
{
    bool wantsEncryption = false;
    int first = 0;
    return findServer(settings, cancelled, &wantsEncryption, &first, error) &&
           connect(settings, settings.setup.isEncrypted || wantsEncryption, first, cancelled, error);
}

/** Finds a server that answers: the library would wait for that where nobody can end it. */
bool NatsConnection::findServer(const NatsSettings& settings, const std::atomic<bool>& cancelled, bool* wantsEncryption,
                                int* first, QString* error)
{
    for (int i = 0; i < settings.setup.servers.size() && !cancelled; ++i) {
        QString reason;
        const QJsonObject greeting = NatsAttempt::readGreeting(settings.setup.servers.at(i), cancelled, &reason);
        if (reason.isEmpty()) {
            *first = i;
            *wantsEncryption = greeting.value(QLatin1String("tls_required")).toBool();
            return true;
        }
        if (i == 0)
            *error = reason;
    }
    if (cancelled)
        *error = QCoreApplication::translate("ByteInput", "cancelled");
    return false;
}

bool NatsConnection::connect(const NatsSettings& settings, bool isEncrypted, int first,
                             const std::atomic<bool>& cancelled, QString* error)
{
    natsOptions* options = nullptr;
    natsStatus status = natsOptions_Create(&options);
    if (status == NATS_OK)
        status = setOptions(options, settings, isEncrypted, first);
    if (status != NATS_OK) {
        *error = NatsAttempt::describe(status, QString::fromUtf8(nats_GetLastError(nullptr)));
        natsOptions_Destroy(options);
        return false;
    }
    m_connection = NatsAttempt::connect(options, cancelled, error);
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->isConnected = m_connection != nullptr;
    return m_connection != nullptr;
}

natsStatus NatsConnection::setOptions(natsOptions* options, const NatsSettings& settings, bool isEncrypted, int first)
{
    natsStatus status = settings.setup.apply(options, first);
    const auto set = [&status](natsStatus result) {
        if (status == NATS_OK)
            status = result;
    };
    void* const closure = reinterpret_cast<void*>(m_listener);
    if (isEncrypted)
        set(natsOptions_SetSecure(options, true));
    set(natsOptions_SetDisconnectedCB(options, Callbacks::processLoss, closure));
    set(natsOptions_SetReconnectedCB(options, Callbacks::processReturn, closure));
    set(natsOptions_SetClosedCB(options, Callbacks::processEnd, closure));
    set(natsOptions_SetErrorHandler(options, Callbacks::processError, closure));
    return status;
}

bool NatsConnection::flush(const std::atomic<bool>& cancelled, QString* error)
{
    natsStatus status = NATS_TIMEOUT;
    QElapsedTimer timer;
    timer.start();
    while (status == NATS_TIMEOUT && !cancelled && !timer.hasExpired(GreetingTimeoutMs))
        status = natsConnection_FlushTimeout(m_connection, 2 * CancelCheckMs);
    if (cancelled)
        *error = QCoreApplication::translate("ByteInput", "cancelled");
    else if (status == NATS_TIMEOUT)
        *error = QCoreApplication::translate("ByteInput", "no answer within %1 s").arg(GreetingTimeoutMs / 1000);
    return !cancelled && status != NATS_TIMEOUT; // what else happens is told
}

bool NatsConnection::subscribe(int channel, const QByteArray& subject, QString* error)
{
    Subscription subscription{nullptr, Callbacks::add(m_shared, channel)};
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        m_shared->lastHeard[channel] = Clock::now();
    }
    const natsStatus status =
        natsConnection_Subscribe(&subscription.handle, m_connection, subject.constData(), Callbacks::processMessage,
                                 reinterpret_cast<void*>(subscription.listener));
    if (status != NATS_OK) {
        Callbacks::remove(subscription.listener);
        *error = QString::fromUtf8(natsStatus_GetText(status));
        return false;
    }
    // What waits is limited here, and by the bytes of it.
    natsSubscription_SetPendingLimits(subscription.handle, INT_MAX, int(qMin(m_shared->mostBytes, qint64(INT_MAX))));
    m_subscriptions.insert(channel, subscription);
    return true;
}

void NatsConnection::unsubscribe(int channel)
{
    if (!m_subscriptions.contains(channel))
        return;
    const Subscription subscription = m_subscriptions.take(channel);
    Callbacks::remove(subscription.listener);
    natsSubscription_Destroy(subscription.handle);
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->lastHeard.remove(channel);
    std::deque<Received> others;
    m_shared->size = 0;
    for (Received& received : m_shared->waiting) {
        if (received.channel == channel)
            continue;
        m_shared->size += natsMsg_GetDataLength(received.message.get()) + MessageOverhead;
        others.push_back(std::move(received));
    }
    m_shared->waiting = std::move(others);
}

void NatsConnection::publish(const QByteArray& subject, const QByteArray& data, const QByteArray& reply)
{
    if (reply.isEmpty())
        natsConnection_Publish(m_connection, subject.constData(), data.constData(), int(data.size()));
    else
        natsConnection_PublishRequest(m_connection, subject.constData(), reply.constData(), data.constData(),
                                      int(data.size()));
}

QByteArray NatsConnection::createInbox()
{
    natsInbox* inbox = nullptr;
    natsInbox_Create(&inbox);
    const QByteArray subject(inbox);
    natsInbox_Destroy(inbox);
    return subject;
}

std::vector<NatsConnection::Received> NatsConnection::take(int timeoutMs)
{
    std::vector<Received> taken;
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    if (m_shared->waiting.empty() && !m_shared->isAwake && !m_shared->isOver && timeoutMs > 0)
        m_shared->hasCome.wait_for(lock, std::chrono::milliseconds(timeoutMs));
    qint64 size = 0;
    while (!m_shared->waiting.empty() && size < PieceSize) {
        const qint64 bytes = natsMsg_GetDataLength(m_shared->waiting.front().message.get()) + MessageOverhead;
        if (size > 0 && size + bytes > PieceSize)
            break;
        size += bytes;
        m_shared->size -= bytes;
        taken.push_back(std::move(m_shared->waiting.front()));
        m_shared->waiting.pop_front();
    }
    return taken;
}

bool NatsConnection::isEmpty() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->waiting.empty();
}

void NatsConnection::wake()
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->isAwake = true;
    m_shared->hasCome.notify_all();
}

bool NatsConnection::isConnected() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->isConnected;
}

int NatsConnection::getReconnections() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->reconnections;
}

qint64 NatsConnection::getSilence(int channel) const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - m_shared->lastHeard.value(channel))
        .count();
}

bool NatsConnection::isOver() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->isOver;
}

QString NatsConnection::getError() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->error;
}

qint64 NatsConnection::getDroppedCount() const
{
    qint64 dropped = 0;
    for (const Subscription& subscription : m_subscriptions) {
        int64_t count = 0;
        if (natsSubscription_GetDropped(subscription.handle, &count) == NATS_OK)
            dropped += count;
    }
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return dropped + m_shared->dropped;
}

QVector<StreamProblem> NatsConnection::takeNotices()
{
    const qint64 dropped = getDroppedCount();
    qint64 more = 0;
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        more = m_shared->waiting.empty() ? dropped - m_shared->droppedTold : 0;
        m_shared->droppedTold += more;
    }
    if (more > 0)
        addNotice(
            1, QCoreApplication::translate("NatsInput", "%1 messages came faster than they were read, and were dropped")
                   .arg(more));
    QVector<StreamProblem> notices;
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    notices.swap(m_shared->notices);
    return notices;
}

void NatsConnection::addNotice(int level, const QString& text)
{
    m_shared->tell(level, text);
}
