#include "natsoutput.h"

#include <QCoreApplication>

namespace
{

const std::size_t MostPending = 2000;
const int LookMs = 5;
const int AnswerTimeMs = 5000;
const int PauseMs = 1000;
const quint16 DefaultPort = 4222;

bool isSubject(const QString& subject)
{
    const QStringList levels = subject.split(QLatin1Char('.'));
    for (const QString& level : levels) {
        if (level.isEmpty())
            return false;
        for (const QChar character : level)
            if (character <= QLatin1Char(' ') || QStringLiteral("*>/").contains(character))
                return false;
    }
    return !subject.startsWith(QLatin1Char('$'));
}

bool check(OutputAddress* address, QString* reason)
{
    const QString stream = address->parameters.value(QStringLiteral("stream"));
    const QString tls = address->parameters.value(QStringLiteral("tls"), QStringLiteral("auto"));
    if (address->host.isEmpty())
        *reason = QCoreApplication::translate("Output", "no host is named");
    else if (!isSubject(address->path))
        *reason =
            QCoreApplication::translate("Output", "\"%1\" is no prefix of subjects; fleet and plant.hall are some")
                .arg(address->path);
    else if (stream.contains(QLatin1Char('.')) || (!stream.isEmpty() && !isSubject(stream)))
        *reason = QCoreApplication::translate("Output", "\"%1\" is no name of a stream").arg(stream);
    else if (tls != QLatin1String("auto") && tls != QLatin1String("on"))
        *reason = QCoreApplication::translate("Output", "tls is \"%1\"; it is auto or on").arg(tls);
    else if (address->parameters.contains(QStringLiteral("cert")) !=
             address->parameters.contains(QStringLiteral("key")))
        *reason = QCoreApplication::translate("Output", "a certificate (cert) and its key (key) belong together");
    return reason->isEmpty() && NatsSetup().readServers({}, address->servers, reason);
}

MessageOutput* connectTo(const OutputAddress& address, const PublishedStream* stream)
{
    return new NatsOutput(address, stream);
}

} // namespace

const OutputKind NatsOutputKind = {
    "nats",
    QT_TRANSLATE_NOOP("OutputKind", "NATS: a stream of JetStream"),
    "",
    1000,
    "nats:",
    "nats://[USER@]HOST[:PORT][,HOST:PORT...]/PREFIX[?stream=NAME&password-file=FILE&creds=FILE"
    "&tls=on&ca=FILE&cert=FILE&key=FILE]",
    "nats://localhost/fleet?stream=FLEET",
    DefaultPort,
    OutputKind::AcknowledgedProperty,
    "",
    "stream password-file creds tls ca cert key",
    check,
    nullptr,
    connectTo};

NatsOutput::NatsOutput(const OutputAddress& address, const PublishedStream* stream)
    : EventOutput({"nats", '.', ". *>\t\r\n", address.path.toUtf8()}, stream)
{
    NatsPublisher::Settings settings;
    QMap<QString, QString> parameters = address.parameters;
    parameters.insert(QStringLiteral("user"), address.user);
    QString error;
    if (!settings.setup.readServers({address.host, address.port}, address.servers, &error) ||
        !settings.setup.read(parameters, &error)) {
        setError(error);
        return;
    }
    settings.stream = parameters.value(QStringLiteral("stream")).toUtf8();
    settings.subjects = m_topics.prefix + ".>";
    m_publisher.reset(new NatsPublisher(settings));
    m_clock.start();
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
    m_timer.start(LookMs);
}

NatsOutput::~NatsOutput() {}

bool NatsOutput::isReady() const
{
    return m_publisher && m_publisher->isConnected() && m_publisher->getConnections() == m_connections &&
           m_pending.size() < MostPending && m_clock.elapsed() >= m_notBefore;
}

void NatsOutput::publish(std::size_t place)
{
    if (!m_publisher || !m_publisher->isConnected())
        return;
    Pending& pending = m_pending[place];
    publishSchema(*pending.event);
    NatsPublisher::Headers headers;
    for (const QPair<QByteArray, QByteArray>& attribute : pending.event->getAttributes())
        headers.append(qMakePair(QByteArray("ce-" + attribute.first), QByteArray(attribute.second)));
    headers.append(qMakePair(QByteArray("ce-id"), QByteArray(pending.id)));
    headers.append(qMakePair(QByteArray("ce-time"), QByteArray(pending.time)));
    headers.append(qMakePair(QByteArray("Content-Type"), QByteArray(pending.event->getContentType())));
    // What comes again when the program was killed, the server knows by what it came from.
    const QByteArray identity = pending.origin ? QByteArray::number(pending.origin, 16) : pending.id;
    headers.append(qMakePair(QByteArray("Nats-Msg-Id"), QByteArray(pending.event->getSource() + '/' + identity)));
    QString error;
    // Numbers begin with 1, because 0 stands for schemas.
    m_publisher->publish(pending.event->getTopic(), pending.payload, headers, m_popped + place + 1, &error);
    pending.sentMs = m_clock.elapsed();
    if (error.isEmpty())
        return;
    pending.isDone = true;
    addDropped();
    tellOnce(error);
}

void NatsOutput::publishSchema(const CloudEvent& event)
{
    if (event.getSchemaTopic().isEmpty() || m_schemas.contains(event.getSchemaTopic()))
        return;
    m_schemas.insert(event.getSchemaTopic());
    NatsPublisher::Headers headers = event.getSchemaProperties();
    headers.append(qMakePair(QByteArray("Content-Type"), QByteArray("application/octet-stream")));
    headers.append(qMakePair(QByteArray("Nats-Msg-Id"), QByteArray(event.getSchemaTopic())));
    QString error;
    m_publisher->publish(event.getSchemaTopic(), event.getSchema(), headers, 0, &error);
    if (!error.isEmpty())
        tellOnce(error);
}

void NatsOutput::look()
{
    m_publisher->look();
    for (const QString& notice : m_publisher->takeNotices())
        addNotice(notice);
    const int connections = m_publisher->getConnections();
    if (connections != m_connections) {
        m_connections = connections;
        m_schemas.clear();
        m_notBefore = 0;
        for (Pending& pending : m_pending)
            pending.sentMs = -1;
    }
    processAnswers();
    publishLate();
    popDone();
}

void NatsOutput::processAnswers()
{
    for (const NatsPublisher::Answer& answer : m_publisher->takeAnswers()) {
        if (answer.number <= m_popped || answer.number > m_popped + m_pending.size())
            continue; // of a schema, or the second one
        Pending& pending = m_pending[std::size_t(answer.number - m_popped - 1)];
        switch (answer.kind) {
        case NatsPublisher::Answer::Stored:
            pending.isDone = true;
            m_told.clear();
            break;
        case NatsPublisher::Answer::Refused:
            addDropped(pending.isDone ? 0 : 1);
            pending.isDone = true;
            tellOnce(answer.text);
            break;
        case NatsPublisher::Answer::NotNow:
            pending.sentMs = -1;
            m_schemas.clear();
            if (m_notBefore < m_clock.elapsed())
                m_notBefore = m_clock.elapsed() + PauseMs;
            tellOnce(answer.text + QCoreApplication::translate("Output", "; trying again"));
            break;
        }
    }
}

/** Publishes again what the server did not take, or did not answer. */
void NatsOutput::publishLate()
{
    const qint64 now = m_clock.elapsed();
    if (!m_publisher->isConnected() || now < m_notBefore)
        return;
    for (std::size_t i = 0; i < m_pending.size(); ++i) {
        const Pending& pending = m_pending[i];
        const bool isLate = pending.sentMs >= 0 && now - pending.sentMs > AnswerTimeMs;
        if (pending.isDone || (pending.sentMs >= 0 && !isLate))
            continue;
        // Where others listen to the subject, the server does not say that no stream does.
        if (isLate)
            tellOnce(QCoreApplication::translate(
                "Output", "nobody confirms what is published: a stream has to take it; trying again"));
        publish(i);
    }
}

void NatsOutput::tellOnce(const QString& text)
{
    if (text != m_told)
        addNotice(text);
    m_told = text;
}

void NatsOutput::close()
{
    m_timer.stop();
    m_publisher.reset();
}
