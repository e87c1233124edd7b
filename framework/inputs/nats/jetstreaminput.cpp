#include "jetstreaminput.h"

#include "jetstreamplace.h"
#include "message.h"
#include "natskinds.h"
#include "recordingindex.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QtEndian>
#include <QUrl>

namespace
{

// A server hands out so many bytes before it is told that they were read: 32 MiB, which small messages need more for.
const qint64 MostBytes = 512 * 1024 * 1024;

const int AnswerChannel = 0; // those of consumers are above

const int SliceMs = 200;
const std::chrono::milliseconds AnswerTime(2000);
const std::chrono::milliseconds RetryTime(500);
const qint64 OpenTimeMs = 5000;
const qint64 HeartbeatMs = 1000;
const qint64 GreatestSilenceMs = 3 * HeartbeatMs;
const qint64 NanosecondsPerMs = 1000 * 1000;

// Of a session. What was not acknowledged comes again with the next reader, and needs no other time.
const int MostUnacknowledged = 10000;
const qint64 AcknowledgeMs = 3600 * 1000;
const int FinishSliceMs = 20;
const int PieceSize = 64 * 1024;
const char SessionMark[] = "session of corvel-relay";
const char Acknowledgement[] = "+ACK";
// How long a reader that has just ended may seem to be there.
const std::chrono::seconds UntilFree(3);

// A cluster that has lost a server may deny for a moment that it has the stream.
const std::chrono::seconds UntilGone(20);

const QByteArray MessagePrefix("$JS.ACK.");

} // namespace

struct JetStreamInput::Times
{
    std::atomic<qint64> start{Message::NoTime};
    std::atomic<qint64> end{Message::NoTime};
};

class JetStreamInput::Index : public RecordingIndex
{
public:
    explicit Index(const std::shared_ptr<Times>& times)
        : m_times(times)
    {
    }

    qint64 getStartTime() const override { return m_times->start; }
    qint64 getEndTime() const override { return m_times->end; }
    quint64 findOffset(qint64 time) override { return time <= m_times->start ? 0 : quint64(time); }

private:
    const std::shared_ptr<Times> m_times;
};

JetStreamInput::JetStreamInput(const InputAddress& address)
    : ByteInput(address.toString())
    , m_address(address)
    , m_stream(streamOf(address))
    , m_subject(subjectOf(address))
    , m_sessionName(address.session.toUtf8())
    , m_goesOn(address.getValue(QStringLiteral("end")) == QLatin1String("follow"))
    , m_cancelled(false)
    , m_isFinished(false)
    , m_connection(MostBytes)
    , m_requests(&m_connection, AnswerChannel)
    , m_schemas(&m_requests, m_stream)
    , m_times(std::make_shared<Times>())
    , m_channel(AnswerChannel)
    , m_sessionRequest(0)
    , m_createRequest(0)
    , m_isWaiting(false)
    , m_reconnections(0)
    , m_consumerSequence(0)
    , m_pending(0)
    , m_startTime(0)
    , m_next(0)
    , m_sequence(0)
    , m_origin(0)
    , m_handedOut(0)
    , m_isAtEnd(false)
    , m_isStopped(false)
{
}

JetStreamInput::~JetStreamInput()
{
    stopConsumer();
}

QByteArray JetStreamInput::streamOf(const InputAddress& address)
{
    return QUrl::fromPercentEncoding(address.path.section(QLatin1Char('/'), 0, 0).toUtf8()).toUtf8();
}

QByteArray JetStreamInput::subjectOf(const InputAddress& address)
{
    return QUrl::fromPercentEncoding(address.path.section(QLatin1Char('/'), 1).toUtf8()).toUtf8();
}

bool JetStreamInput::open()
{
    NatsSettings settings;
    QString error;
    if (settings.read(m_address, &error) && m_connection.open(settings, m_cancelled, &error) &&
        m_requests.open(&error) && askForStream(&error)) {
        m_lastSuccess = Clock::now();
        startConsumer();
        enterSession();
        return getErrorString().isEmpty();
    }
    setError(error);
    return false;
}

/** Finds out whether the session can be had, which is no reason to be opened again and again. */
void JetStreamInput::enterSession()
{
    QElapsedTimer timer;
    timer.start();
    QByteArray none; // messages wait in the session
    while (needsConfirmation() && !m_cancelled && m_consumer.isEmpty() && getErrorString().isEmpty() &&
           !timer.hasExpired(OpenTimeMs)) {
        keepConsumer();
        work(SliceMs, &none);
    }
}

bool JetStreamInput::askForStream(QString* error)
{
    QElapsedTimer timer;
    timer.start();
    while (!m_cancelled && !timer.hasExpired(OpenTimeMs)) {
        // A cluster that is choosing who answers may have lost the question.
        const quint64 request = m_requests.send("STREAM.INFO." + m_stream, QJsonObject());
        QElapsedTimer patience;
        patience.start();
        while (!m_cancelled && !patience.hasExpired(OpenTimeMs / 4)) {
            for (NatsConnection::Received& received : m_connection.take(SliceMs)) {
                quint64 number = 0;
                const QJsonObject answer = NatsRequests::read(received.message.get(), &number);
                if (number == request)
                    return takeStream(answer, error);
            }
        }
    }
    *error = m_cancelled ? QCoreApplication::translate("ByteInput", "cancelled")
                         : QCoreApplication::translate(
                               "NatsInput",
                               "the server's JetStream does not answer within %1 s, or this user may not ask for it")
                               .arg(OpenTimeMs / 1000);
    return false;
}

bool JetStreamInput::takeStream(const QJsonObject& answer, QString* error)
{
    if (NatsRequests::getErrorCode(answer)) {
        *error = NatsRequests::describeError(answer);
        return false;
    }
    const QJsonObject state = answer.value(QLatin1String("state")).toObject();
    const QString retention =
        answer.value(QLatin1String("config")).toObject().value(QLatin1String("retention")).toString();
    if (retention == QLatin1String("workqueue")) {
        *error = QCoreApplication::translate("NatsInput",
                                             "the stream is a work queue: what one reads is taken from the others");
        return false;
    }
    // Another stream of the name has other messages under the same numbers.
    const QByteArray created = answer.value(QLatin1String("created")).toString().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(m_stream + '\n' + created, QCryptographicHash::Sha256);
    m_origin = qFromLittleEndian<quint64>(hash.constData());
    if (state.value(QLatin1String("messages")).toDouble() > 0) {
        m_times->start = JetStreamPlace::readTime(state.value(QLatin1String("first_ts")).toString());
        m_times->end = JetStreamPlace::readTime(state.value(QLatin1String("last_ts")).toString());
    }
    return true;
}

std::unique_ptr<RecordingIndex> JetStreamInput::createIndex()
{
    return std::unique_ptr<RecordingIndex>(new Index(m_times));
}

void JetStreamInput::cancel()
{
    m_cancelled = true;
    m_connection.wake();
}

void JetStreamInput::finish()
{
    m_isFinished = !m_sessionName.isEmpty();
}

void JetStreamInput::confirm(quint64 offset)
{
    m_receipts.confirm(offset);
    acknowledge();
}

void JetStreamInput::acknowledge()
{
    for (const QByteArray& reply : m_receipts.take())
        m_connection.publish(reply, Acknowledgement);
}

bool JetStreamInput::seek(qint64 offset)
{
    m_startTime = offset;
    m_next = 0;
    m_isAtEnd = false;
    m_isStopped = false;
    startConsumer();
    return true;
}

/** Asks for a consumer that begins with the next message that is wanted. */
void JetStreamInput::startConsumer()
{
    stopConsumer();
    m_reconnections = m_connection.getReconnections();
    m_deadline = Clock::now() + AnswerTime;
    m_isWaiting = false;
    if (!m_sessionName.isEmpty()) {
        m_sessionRequest = m_requests.send("CONSUMER.INFO." + m_stream + '.' + m_sessionName, QJsonObject());
        return;
    }
    QJsonObject config{{QStringLiteral("ack_policy"), QStringLiteral("none")},
                       {QStringLiteral("max_deliver"), 1},
                       {QStringLiteral("replay_policy"), QStringLiteral("instant")},
                       {QStringLiteral("flow_control"), true},
                       {QStringLiteral("idle_heartbeat"), double(HeartbeatMs * NanosecondsPerMs)},
                       {QStringLiteral("mem_storage"), true},
                       {QStringLiteral("num_replicas"), 1}};
    const QString policy = QStringLiteral("deliver_policy");
    if (m_next > 0) {
        config[policy] = QStringLiteral("by_start_sequence");
        config[QStringLiteral("opt_start_seq")] = double(m_next);
    } else if (m_startTime > 0) {
        config[policy] = QStringLiteral("by_start_time");
        config[QStringLiteral("opt_start_time")] = JetStreamPlace::writeTime(m_startTime);
    } else {
        config[policy] = QStringLiteral("all");
    }
    if (!m_subject.isEmpty())
        config[QStringLiteral("filter_subject")] = QString::fromUtf8(m_subject);
    createConsumer("CONSUMER.CREATE." + m_stream, config);
}

/** Asks for a consumer, or that one goes on with this reader. */
void JetStreamInput::createConsumer(const QByteArray& operation, QJsonObject config)
{
    const QByteArray inbox = NatsConnection::createInbox();
    QString error;
    if (!m_connection.subscribe(++m_channel, inbox, &error))
        return restartLater();
    config[QStringLiteral("deliver_subject")] = QString::fromLatin1(inbox);
    const QJsonObject wish{{QStringLiteral("stream_name"), QString::fromUtf8(m_stream)},
                           {QStringLiteral("config"), config}};
    m_createRequest = m_requests.send(operation, wish);
    m_deadline = Clock::now() + AnswerTime;
}

/** A consumer that the server keeps, and that begins with the first message. */
QJsonObject JetStreamInput::newSession() const
{
    QJsonObject config{{QStringLiteral("durable_name"), QString::fromUtf8(m_sessionName)},
                       {QStringLiteral("description"), QLatin1String(SessionMark)},
                       {QStringLiteral("deliver_policy"), QStringLiteral("all")},
                       {QStringLiteral("ack_policy"), QStringLiteral("explicit")},
                       {QStringLiteral("ack_wait"), double(AcknowledgeMs * NanosecondsPerMs)},
                       {QStringLiteral("max_ack_pending"), MostUnacknowledged},
                       {QStringLiteral("max_deliver"), -1},
                       {QStringLiteral("replay_policy"), QStringLiteral("instant")},
                       {QStringLiteral("flow_control"), true},
                       {QStringLiteral("idle_heartbeat"), double(HeartbeatMs * NanosecondsPerMs)}};
    if (!m_subject.isEmpty())
        config[QStringLiteral("filter_subject")] = QString::fromUtf8(m_subject);
    return config;
}

/** Takes what the server knows of the session, and becomes its reader: then what was not acknowledged comes again, in
 * its order and before all else. */
void JetStreamInput::takeSession(const QJsonObject& answer)
{
    m_sessionRequest = 0;
    const QString name = QString::fromUtf8(m_sessionName);
    QJsonObject config = answer.value(QLatin1String("config")).toObject();
    if (NatsRequests::getErrorCode(answer) == NatsRequests::NoSuchConsumer) {
        // Perhaps with its stream, and one that has been made since has other messages.
        if (m_next > 0)
            return fail(QCoreApplication::translate("NatsInput", "the server has the session %1 no more").arg(name));
        config = newSession();
    } else if (isRefused(answer)) {
        return;
    } else if (config.value(QLatin1String("description")).toString() != QLatin1String(SessionMark)) {
        return fail(QCoreApplication::translate(
                        "NatsInput", "the stream has a consumer %1 that is no session of this program; another name is "
                                     "needed")
                        .arg(name));
    } else if (config.value(QLatin1String("filter_subject")).toString().toUtf8() != m_subject) {
        const QString subject = config.value(QLatin1String("filter_subject")).toString();
        return fail(QCoreApplication::translate("NatsInput", "the session %1 is of the subject \"%2\"; what is read "
                                                             "of another one needs a session of another name")
                        .arg(name, subject.isEmpty() ? QStringLiteral(">") : subject));
    } else if (answer.value(QLatin1String("push_bound")).toBool()) {
        if (Clock::now() - m_lastSuccess < UntilFree)
            return restartLater();
        return fail(QCoreApplication::translate("NatsInput", "another program reads in the session %1").arg(name));
    }
    const QJsonObject delivered = answer.value(QLatin1String("delivered")).toObject();
    m_consumerSequence = quint64(delivered.value(QLatin1String("consumer_seq")).toDouble());
    m_pending = quint64(answer.value(QLatin1String("num_pending")).toDouble());
    m_session.begin(quint64(answer.value(QLatin1String("num_ack_pending")).toDouble()),
                    quint64(delivered.value(QLatin1String("stream_seq")).toDouble()));
    createConsumer("CONSUMER.DURABLE.CREATE." + m_stream + '.' + m_sessionName, config);
}

void JetStreamInput::stopConsumer()
{
    if (m_channel != AnswerChannel)
        m_connection.unsubscribe(m_channel);
    if (!m_consumer.isEmpty() && m_sessionName.isEmpty())
        m_requests.send("CONSUMER.DELETE." + m_stream + '.' + m_consumer, QJsonObject());
    m_consumer.clear();
    m_sessionRequest = 0;
    m_createRequest = 0;
    m_consumerSequence = 0;
}

void JetStreamInput::restartLater()
{
    stopConsumer();
    m_isWaiting = true;
    m_deadline = Clock::now() + RetryTime;
}

/** Whether what was asked for is refused; then it is tried again, or never again. */
bool JetStreamInput::isRefused(const QJsonObject& answer)
{
    const int code = NatsRequests::getErrorCode(answer);
    if (!code)
        return false;
    const bool isLate = Clock::now() - m_lastSuccess > UntilGone;
    if (isLate && code == NatsRequests::NoSuchStream) {
        fail(NatsRequests::describeError(answer));
        return true;
    }
    if (isLate) {
        m_lastSuccess = Clock::now();
        m_connection.addNotice(1, NatsRequests::describeError(answer));
    }
    restartLater();
    return true;
}

void JetStreamInput::takeConsumer(const QJsonObject& answer)
{
    m_createRequest = 0;
    if (isRefused(answer))
        return;
    m_lastSuccess = Clock::now();
    m_consumer = answer.value(QLatin1String("name")).toString().toUtf8();
    const QJsonObject delivered = answer.value(QLatin1String("delivered")).toObject();
    const quint64 sent = quint64(delivered.value(QLatin1String("consumer_seq")).toDouble());
    if (m_consumerSequence == 0) // what came already knows better
        m_pending = sent + quint64(answer.value(QLatin1String("num_pending")).toDouble());
}

/** Sees to it that there is a consumer. */
void JetStreamInput::keepConsumer()
{
    if (!m_connection.isConnected())
        return;
    const bool isLost = m_connection.getReconnections() != m_reconnections;
    const bool isUnanswered = (m_isWaiting || m_createRequest || m_sessionRequest) && Clock::now() > m_deadline;
    const bool isSilent = !m_consumer.isEmpty() && m_connection.getSilence(m_channel) > GreatestSilenceMs;
    if (isLost || isUnanswered || isSilent)
        startConsumer();
}

ByteInput::Status JetStreamInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    QElapsedTimer timer;
    timer.start();
    while (!m_cancelled) {
        if (m_isFinished || m_isStopped) {
            if (isOver())
                return End;
            if (timer.hasExpired(timeoutMs))
                return Nothing;
            continue;
        }
        keepConsumer();
        if (!getErrorString().isEmpty())
            return Failed;
        const int rest = m_session.hasNext() ? 0 : int(qMax(qint64(0), timeoutMs - timer.elapsed()));
        work(qMin(rest, SliceMs), bytes);
        while (bytes->size() < PieceSize && m_session.hasNext()) {
            const JetStreamSession::Item item = m_session.takeNext();
            handOut(item, bytes);
            m_receipts.add(m_handedOut + quint64(bytes->size()), item.reply);
        }
        m_schemas.giveUp(bytes);
        acknowledge(); // what came again
        m_handedOut += quint64(bytes->size());
        if (!bytes->isEmpty())
            return Data;
        if (isCaughtUp()) {
            m_isAtEnd = m_goesOn;
            m_isStopped = !m_goesOn;
        }
        if (m_connection.isOver())
            fail(m_connection.getError());
        else if (!m_isStopped && timer.hasExpired(timeoutMs))
            return Nothing;
    }
    return Nothing;
}

/** Takes nothing more; whether everything is acknowledged then. */
bool JetStreamInput::isOver()
{
    if (m_sessionName.isEmpty())
        return true;
    if (m_channel != AnswerChannel)
        m_connection.unsubscribe(m_channel);
    acknowledge();
    if (!m_receipts.isEmpty()) {
        m_connection.take(FinishSliceMs);
        return false;
    }
    QString error;
    m_connection.flush(m_cancelled, &error);
    return true;
}

void JetStreamInput::fail(const QString& reason)
{
    setError(reason);
}

/** Whether everything was handed on that was stored when the last message was sent. */
bool JetStreamInput::isCaughtUp() const
{
    return !m_consumer.isEmpty() && m_pending == 0 && m_session.isEmpty() && m_connection.isEmpty();
}

/** Takes what comes, or waits for it. */
void JetStreamInput::work(int timeoutMs, QByteArray* bytes)
{
    for (NatsConnection::Received& received : m_connection.take(timeoutMs)) {
        if (received.channel == AnswerChannel)
            processAnswer(received.message.get(), bytes);
        else if (received.channel != m_channel)
            continue; // of a consumer that was given up a moment ago
        else if (QByteArray(natsMsg_GetReply(received.message.get())).startsWith(MessagePrefix))
            processMessage(std::move(received.message), bytes);
        else
            processControl(received.message.get());
    }
}

void JetStreamInput::processAnswer(natsMsg* message, QByteArray* bytes)
{
    quint64 number = 0;
    const QJsonObject answer = NatsRequests::read(message, &number);
    if (number == m_createRequest && m_createRequest)
        takeConsumer(answer);
    else if (number == m_sessionRequest && m_sessionRequest)
        takeSession(answer);
    else
        m_schemas.process(number, answer, bytes);
}

/** Heartbeats, and questions whether the server may send more. */
void JetStreamInput::processControl(natsMsg* message)
{
    const std::string_view status = natsHeader(message, "Status");
    if (status != "100")
        return restartLater(); // the consumer is gone, for whatever reason
    const QByteArray reply = natsMsg_GetReply(message);
    const std::string_view stalled = natsHeader(message, "Nats-Consumer-Stalled");
    if (!reply.isEmpty())
        return m_connection.publish(reply);
    if (!stalled.empty())
        m_connection.publish(QByteArray(stalled.data(), int(stalled.size())));
    else
        m_session.settle();
    const std::string_view last = natsHeader(message, "Nats-Last-Consumer");
    if (!last.empty() && QByteArray(last.data(), int(last.size())).toULongLong() != m_consumerSequence)
        startConsumer();
}

void JetStreamInput::processMessage(NatsMessage message, QByteArray* bytes)
{
    const QByteArray reply = natsMsg_GetReply(message.get());
    const JetStreamPlace place{reply};
    const bool isSession = !m_sessionName.isEmpty();
    if (place.consumer != m_consumerSequence + 1 || (place.stream < m_next && !isSession))
        return startConsumer(); // nothing of this one is wanted any more
    m_consumerSequence = place.consumer;
    m_pending = place.pending;
    JetStreamSession::Item item{place.stream, place.time, reply, std::move(message)};
    if (!isSession)
        handOut(item, bytes);
    else if (!m_session.add(std::move(item)))
        m_receipts.add(m_handedOut, reply); // perhaps the acknowledgement has not arrived
}

void JetStreamInput::handOut(const JetStreamSession::Item& item, QByteArray* bytes)
{
    m_next = item.number + 1;
    const qint64 time = item.time / 1000;
    if (m_times->start == Message::NoTime)
        m_times->start = time;
    m_times->end = qMax(m_times->end.load(), time);

    Envelope envelope = readNatsMessage(item.message.get());
    envelope.time = item.time;
    envelope.origin = m_origin + item.number;
    // Schemas are no messages to those who count.
    if (envelope.find("schemaencoding").empty())
        envelope.sequence = ++m_sequence;
    if (!EnvelopeWriter(bytes).write(envelope))
        m_connection.addNotice(
            1, QCoreApplication::translate("NatsInput", "message %1 of the stream is too large").arg(item.number));
    m_schemas.note(envelope);
}
