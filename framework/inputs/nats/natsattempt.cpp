#include "natsattempt.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace
{

typedef std::chrono::steady_clock Clock;

const int GreetingTimeoutMs = 5000;
const int CancelCheckMs = 50;
const int GreatestGreeting = 64 * 1024;

/** An attempt to connect, on a thread of its own: with a server that falls silent the library waits for ever. */
struct Attempt
{
    static void run(std::shared_ptr<Attempt> attempt, natsOptions* options)
    {
        natsConnection* connection = nullptr;
        const natsStatus status = natsConnection_Connect(&connection, options);
        const char* const text = status == NATS_OK ? nullptr : nats_GetLastError(nullptr);
        natsOptions_Destroy(options);
        std::unique_lock<std::mutex> lock(attempt->mutex);
        attempt->isDone = true;
        attempt->status = status;
        attempt->error = QString::fromUtf8(text).section(QStringLiteral("): "), -1);
        attempt->connection = connection;
        const bool isAbandoned = attempt->isAbandoned;
        attempt->hasEnded.notify_all();
        lock.unlock();
        if (isAbandoned)
            natsConnection_Destroy(connection);
    }

    std::mutex mutex; // for what follows
    std::condition_variable hasEnded;
    bool isDone = false;
    bool isAbandoned = false; // nobody wants the connection any more
    natsStatus status = NATS_OK;
    QString error;
    natsConnection* connection = nullptr;
};

} // namespace

QJsonObject NatsAttempt::readGreeting(const NatsSetup::Server& server, const std::atomic<bool>& cancelled,
                                      QString* error)
{
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    QEventLoop loop;
    QTimer timeout;
    QTimer check;
    bool isDone = false;
    timeout.setSingleShot(true);
    QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&socket, &QTcpSocket::errorOccurred, &loop, &QEventLoop::quit);
    QObject::connect(&socket, &QTcpSocket::readyRead, &loop, [&] {
        isDone = socket.canReadLine() || socket.bytesAvailable() > GreatestGreeting;
        if (isDone)
            loop.quit();
    });
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (cancelled)
            loop.quit();
    });
    socket.connectToHost(server.host, server.port);
    timeout.start(GreetingTimeoutMs);
    check.start(CancelCheckMs);
    if (socket.state() != QAbstractSocket::UnconnectedState)
        loop.exec();
    const QByteArray line = socket.readLine(GreatestGreeting);
    const QJsonObject greeting =
        QJsonDocument::fromJson(line.startsWith("INFO ") ? line.mid(5) : QByteArray()).object();
    if (cancelled)
        *error = QCoreApplication::translate("ByteInput", "cancelled");
    else if (!greeting.isEmpty())
        error->clear();
    else if (isDone || !line.isEmpty())
        *error = QCoreApplication::translate("NatsInput", "what comes is no greeting of a NATS server");
    else if (socket.error() != QAbstractSocket::UnknownSocketError)
        *error = socket.errorString();
    else
        *error = QCoreApplication::translate("ByteInput", "no answer within %1 s").arg(GreetingTimeoutMs / 1000);
    return greeting;
}

natsConnection* NatsAttempt::connect(natsOptions* options, const std::atomic<bool>& cancelled, QString* error)
{
    const auto attempt = std::make_shared<Attempt>();
    std::thread(Attempt::run, attempt, options).detach();
    std::unique_lock<std::mutex> lock(attempt->mutex);
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(GreetingTimeoutMs);
    while (!attempt->isDone && !cancelled && Clock::now() < end)
        attempt->hasEnded.wait_for(lock, std::chrono::milliseconds(CancelCheckMs));
    attempt->isAbandoned = !attempt->isDone;
    if (attempt->isDone && attempt->status == NATS_OK)
        return attempt->connection;
    if (cancelled)
        *error = QCoreApplication::translate("ByteInput", "cancelled");
    else if (!attempt->isDone)
        *error = QCoreApplication::translate("ByteInput", "no answer within %1 s").arg(GreetingTimeoutMs / 1000);
    else
        *error = describe(attempt->status, attempt->error);
    return nullptr;
}

QString NatsAttempt::describe(natsStatus status, const QString& text)
{
    const QString detail = text.isEmpty() ? QString::fromUtf8(natsStatus_GetText(status)) : text;
    switch (status) {
    case NATS_CONNECTION_AUTH_FAILED:
        return QCoreApplication::translate("NatsInput", "user, password or token is wrong");
    case NATS_SECURE_CONNECTION_WANTED:
        return QCoreApplication::translate("NatsInput", "the server does not encrypt connections");
    case NATS_SSL_ERROR:
        return QCoreApplication::translate("NatsInput", "no encrypted connection comes about: %1").arg(detail);
    default:
        return detail;
    }
}
