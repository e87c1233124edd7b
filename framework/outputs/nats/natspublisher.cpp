#include "natspublisher.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace
{

const int ShortestPauseMs = 500;
const int LongestPauseMs = 30000;
const int LeastOfServer = 500;

QString lastError(natsStatus status)
{
    const char* const text = nats_GetLastError(nullptr);
    const QString said = QString::fromUtf8(text ? text : "").section(QLatin1String("): "), -1);
    if (status == NATS_CONNECTION_AUTH_FAILED)
        return QCoreApplication::translate("Output", "user, password or token is wrong");
    return said.isEmpty() ? QString::fromUtf8(natsStatus_GetText(status)) : said;
}

} // namespace

/** What the threads of the library and that of the output both use. Stays until the program ends: calls of the library
 * can come late. */
struct NatsPublisher::Shared
{
    static void processLoss(natsConnection* connection, void* closure)
    {
        Shared* const shared = static_cast<Shared*>(closure);
        const char* text = nullptr;
        natsConnection_GetLastError(connection, &text);
        const std::lock_guard<std::mutex> lock(shared->mutex);
        shared->isConnected = false;
        if (!shared->isOver)
            shared->notices.append(
                QCoreApplication::translate("Output", "the connection is lost%1; trying again")
                    .arg(text && *text ? QStringLiteral(" (%1)").arg(QString::fromUtf8(text)) : QString()));
    }

    static void processReturn(natsConnection*, void* closure) { static_cast<Shared*>(closure)->begin(); }

    static void processEnd(natsConnection*, void* closure)
    {
        Shared* const shared = static_cast<Shared*>(closure);
        const std::lock_guard<std::mutex> lock(shared->mutex);
        shared->isConnected = false;
        shared->isClosed = true;
    }

    static void processAnswer(natsConnection*, natsSubscription*, natsMsg* message, void* closure)
    {
        const QByteArray subject = natsMsg_GetSubject(message);
        Answer answer{subject.mid(subject.lastIndexOf('.') + 1).toULongLong(), Answer::Stored, QString()};
        if (natsMsg_IsNoResponders(message)) {
            answer.kind = Answer::NotNow;
            answer.text = QCoreApplication::translate("Output", "no stream of JetStream takes what is published");
        } else {
            const QByteArray data(natsMsg_GetData(message), natsMsg_GetDataLength(message));
            const QJsonObject error = QJsonDocument::fromJson(data).object().value(QLatin1String("error")).toObject();
            if (!error.isEmpty()) {
                const bool isLater = error.value(QLatin1String("code")).toInt() >= LeastOfServer;
                answer.kind = isLater ? Answer::NotNow : Answer::Refused;
                answer.text = error.value(QLatin1String("description")).toString();
            }
        }
        natsMsg_Destroy(message);
        Shared* const shared = static_cast<Shared*>(closure);
        const std::lock_guard<std::mutex> lock(shared->mutex);
        shared->answers.push_back(answer);
    }

    void begin()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isConnected = true;
        ++connections;
        lastNotice.clear();
        notices.append(QStringLiteral("connected"));
    }

    void tell(const QString& text)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (text != lastNotice)
            notices.append(text);
        lastNotice = text;
    }

    /** Tries until there is a connection; on a thread of its own, since the library can wait for long. */
    static void run(const std::shared_ptr<Shared>& shared)
    {
        for (int pauseMs = ShortestPauseMs;; pauseMs = qMin(2 * pauseMs, LongestPauseMs)) {
            natsConnection* connection = nullptr;
            const natsStatus status = shared->connect(&connection);
            std::unique_lock<std::mutex> lock(shared->mutex);
            if (shared->isOver) {
                lock.unlock();
                shared->discard(connection);
                return;
            }
            if (status == NATS_OK) {
                shared->connection = connection;
                lock.unlock();
                shared->makeStream();
                shared->begin();
                return;
            }
            lock.unlock();
            shared->discard(connection);
            shared->tell(lastError(status) + QCoreApplication::translate("Output", "; trying again"));
            lock.lock();
            shared->isEnding.wait_for(lock, std::chrono::milliseconds(pauseMs), [&] { return shared->isOver; });
            if (shared->isOver)
                return;
        }
    }

    natsStatus connect(natsConnection** made)
    {
        natsOptions* options = nullptr;
        natsStatus status = natsOptions_Create(&options);
        const auto next = [&status](natsStatus result) {
            if (status == NATS_OK)
                status = result;
        };
        next(settings.setup.apply(options));
        next(natsOptions_SetDisconnectedCB(options, processLoss, this));
        next(natsOptions_SetReconnectedCB(options, processReturn, this));
        next(natsOptions_SetClosedCB(options, processEnd, this));
        if (status == NATS_OK)
            status = natsConnection_Connect(made, options);
        natsOptions_Destroy(options);
        natsInbox* name = nullptr;
        if (status == NATS_OK)
            status = natsInbox_Create(&name);
        if (status == NATS_OK) {
            inbox = name;
            status = natsConnection_Subscribe(&subscription, *made, (inbox + ".*").constData(), processAnswer, this);
        }
        natsInbox_Destroy(name);
        return status;
    }

    /** Destroys a connection, with the subscription that was made with it. */
    void discard(natsConnection* made)
    {
        natsSubscription_Destroy(subscription);
        subscription = nullptr;
        natsConnection_Destroy(made);
    }

    /** Makes the stream that the user named, unless it is there. */
    void makeStream()
    {
        if (settings.stream.isEmpty())
            return;
        jsCtx* context = nullptr;
        jsStreamInfo* info = nullptr;
        jsErrCode code = jsErrCode(0);
        natsStatus status = natsConnection_JetStream(&context, connection, nullptr);
        if (status == NATS_OK)
            status = js_GetStreamInfo(&info, context, settings.stream.constData(), nullptr, &code);
        if (status == NATS_NOT_FOUND) {
            jsStreamConfig stream;
            jsStreamConfig_Init(&stream);
            const char* subjects[] = {settings.subjects.constData()};
            stream.Name = settings.stream.constData();
            stream.Subjects = subjects;
            stream.SubjectsLen = 1;
            status = js_AddStream(&info, context, &stream, nullptr, &code);
        }
        if (status != NATS_OK)
            tell(QCoreApplication::translate("Output", "stream %1: %2")
                     .arg(QString::fromUtf8(settings.stream), lastError(status)));
        jsStreamInfo_Destroy(info);
        jsCtx_Destroy(context);
    }

    Settings settings;
    std::mutex mutex; // for what follows
    std::condition_variable isEnding;
    natsConnection* connection = nullptr;
    natsSubscription* subscription =
        nullptr; // to the answers; the connecting thread has it until there is a connection
    QByteArray inbox;
    bool isConnected = false;
    bool isClosed = false; // for good
    bool isOver = false;   // nobody wants it any more
    int connections = 0;
    std::vector<Answer> answers;
    QStringList notices;
    QString lastNotice;
};

NatsPublisher::NatsPublisher(const Settings& settings)
    : m_shared(std::make_shared<Shared>())
{
    static std::mutex mutex;
    static std::vector<std::shared_ptr<Shared>>* const all = new std::vector<std::shared_ptr<Shared>>;
    const std::lock_guard<std::mutex> lock(mutex);
    all->push_back(m_shared);
    m_shared->settings = settings;
    connect();
}

NatsPublisher::~NatsPublisher()
{
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    m_shared->isOver = true;
    m_shared->isEnding.notify_all();
    natsConnection* const connection = m_shared->connection;
    m_shared->connection = nullptr;
    lock.unlock();
    if (connection)
        m_shared->discard(connection);
}

void NatsPublisher::connect()
{
    const std::shared_ptr<Shared> shared = m_shared;
    std::thread([shared] { Shared::run(shared); }).detach();
}

bool NatsPublisher::isConnected() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->isConnected;
}

int NatsPublisher::getConnections() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->connections;
}

std::vector<NatsPublisher::Answer> NatsPublisher::takeAnswers()
{
    std::vector<Answer> answers;
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    answers.swap(m_shared->answers);
    return answers;
}

QStringList NatsPublisher::takeNotices()
{
    QStringList notices;
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    notices.swap(m_shared->notices);
    return notices;
}

void NatsPublisher::look()
{
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    if (!m_shared->isClosed)
        return;
    m_shared->isClosed = false;
    natsConnection* const connection = m_shared->connection;
    m_shared->connection = nullptr;
    lock.unlock();
    if (connection)
        m_shared->discard(connection);
    connect();
}

void NatsPublisher::publish(const QByteArray& subject, const QByteArray& payload, const Headers& headers,
                            quint64 number, QString* error)
{
    natsConnection* const connection = m_shared->connection; // only this thread takes it away
    if (!connection)
        return;
    if (payload.size() >= natsConnection_GetMaxPayload(connection)) {
        *error = QCoreApplication::translate("Output", "the message is too large for the server");
        return;
    }
    natsMsg* message = nullptr;
    const QByteArray reply = m_shared->inbox + '.' + QByteArray::number(number);
    natsStatus status =
        natsMsg_Create(&message, subject.constData(), reply.constData(), payload.constData(), int(payload.size()));
    for (const QPair<QByteArray, QByteArray>& header : headers)
        if (status == NATS_OK)
            status = natsMsgHeader_Set(message, header.first.constData(), header.second.constData());
    if (status == NATS_OK)
        status = natsConnection_PublishMsg(connection, message);
    natsMsg_Destroy(message);
    if (status == NATS_MAX_PAYLOAD || status == NATS_INVALID_SUBJECT || status == NATS_INVALID_ARG)
        *error = lastError(status);
}
