#include "mqttclient.h"

#include "envelope.h"
#include "mqttqueue.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <cstdlib>
#include <mutex>

#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <poll.h>
#include <sys/ioctl.h>

namespace
{

const int KeepAliveSeconds = 20;
const int WaitMs = 50;
const std::chrono::seconds AnswerTime(5);
const std::chrono::seconds SchemaTime(3);

const quint32 GreatestPacket = 16 * 1024 * 1024;
const std::size_t MostProperties = 1000;
const std::size_t MostSchemas = 20000;
const int SmallPacket = 100;
const int MostReads = 256;

// What refuses a subscription, or a connection of MQTT 5.
const int LeastFailure = 0x80;
const int UnsupportedVersion = 0x84;
const int OldUnsupportedVersion = 1;

QString textOf(const QByteArray& utf8)
{
    return QString::fromUtf8(utf8);
}

/** Why a connection or a subscription is refused. */
QString refusal(int code, bool isOld)
{
    static const struct
    {
        int code;
        int oldCode;
        const char* text;
    } reasons[] = {
        {UnsupportedVersion, OldUnsupportedVersion,
         QT_TRANSLATE_NOOP("MqttInput", "it speaks no such version of MQTT")},
        {0x85, 2, QT_TRANSLATE_NOOP("MqttInput", "it does not take the name of this program")},
        {0x86, 4, QT_TRANSLATE_NOOP("MqttInput", "user or password is wrong")},
        {0x87, 5, QT_TRANSLATE_NOOP("MqttInput", "not authorised")},
        {0x88, 3, QT_TRANSLATE_NOOP("MqttInput", "the server is unavailable")},
        {0x89, 0, QT_TRANSLATE_NOOP("MqttInput", "the server is busy")},
        {0x8a, 0, QT_TRANSLATE_NOOP("MqttInput", "this user or address is banned")},
        {0x8b, 0, QT_TRANSLATE_NOOP("MqttInput", "the server shuts down")},
        {0x8e, 0, QT_TRANSLATE_NOOP("MqttInput", "another program has connected under the same name")},
        {0x8f, 0, QT_TRANSLATE_NOOP("MqttInput", "it does not take such a filter")},
        {0x97, 0, QT_TRANSLATE_NOOP("MqttInput", "a quota is used up")},
        {0x9c, 0, QT_TRANSLATE_NOOP("MqttInput", "another server is to be used")},
        {0x9d, 0, QT_TRANSLATE_NOOP("MqttInput", "the server has moved")},
        {0x9f, 0, QT_TRANSLATE_NOOP("MqttInput", "too many connections in a short time")},
    };
    for (const auto& reason : reasons)
        if (code == reason.code || (isOld && code == reason.oldCode))
            return QCoreApplication::translate("MqttInput", reason.text);
    return QCoreApplication::translate("MqttInput", "reason 0x%1").arg(code, 2, 16, QLatin1Char('0'));
}

/** A name that no other program has. */
QByteArray clientName()
{
    return "corvel-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16).rightJustified(16, '0');
}

// Else the library would ask at the terminal for the password of a key.
int noPassword(char*, int, int, void*)
{
    return 0;
}

qint64 now()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

std::string_view viewOf(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

} // namespace

MqttClient::MqttClient(const MqttSettings& settings, MqttQueue* queue)
    : m_settings(settings)
    , m_queue(queue)
{
    static std::once_flag initialized;
    std::call_once(initialized, [] { mosquitto_lib_init(); });
    m_thread = std::thread([this] { run(); });
}

MqttClient::~MqttClient()
{
    m_stopped = true;
    m_thread.join();
}

void MqttClient::run()
{
    if (runWith(MQTT_PROTOCOL_V5) == OtherVersion)
        runWith(MQTT_PROTOCOL_V311);
    m_queue->end(m_error);
}

MqttClient::Outcome MqttClient::runWith(int version)
{
    m_version = version;
    m_answer = -1;
    m_isOver = false;
    m_error.clear();
    m_client = mosquitto_new(clientName().constData(), true, this);
    if (configure(version)) {
        mosquitto_property* properties = nullptr;
        if (version == MQTT_PROTOCOL_V5)
            mosquitto_property_add_int32(&properties, MQTT_PROP_MAXIMUM_PACKET_SIZE, GreatestPacket);
        const int code = mosquitto_connect_bind_v5(m_client, m_settings.host.constData(), m_settings.port,
                                                   KeepAliveSeconds, nullptr, properties);
        mosquitto_property_free_all(&properties);
        if (code == MOSQ_ERR_SUCCESS)
            loop();
        else
            fail(connectError(code));
        mosquitto_disconnect(m_client);
    }
    mosquitto_destroy(m_client);
    m_client = nullptr;
    return version == MQTT_PROTOCOL_V5 && m_mayBeOlder && !m_stopped ? OtherVersion : Over;
}

bool MqttClient::configure(int version)
{
    mosquitto_int_option(m_client, MOSQ_OPT_PROTOCOL_VERSION, version);
    mosquitto_int_option(m_client, MOSQ_OPT_TCP_NODELAY, 1);
    mosquitto_connect_v5_callback_set(m_client, processConnection);
    mosquitto_disconnect_v5_callback_set(m_client, processEnd);
    mosquitto_subscribe_v5_callback_set(m_client, processSubscription);
    mosquitto_message_v5_callback_set(m_client, processMessage);
    mosquitto_log_callback_set(m_client, processLog);
    const auto orNull = [](const QByteArray& text) { return text.isEmpty() ? nullptr : text.constData(); };
    if (!m_settings.user.isEmpty() || !m_settings.password.isEmpty())
        mosquitto_username_pw_set(m_client, m_settings.user.constData(), orNull(m_settings.password));
    if (!m_settings.isEncrypted)
        return true;
    int code = MOSQ_ERR_SUCCESS;
    if (m_settings.authority.isEmpty())
        mosquitto_int_option(m_client, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
    if (!m_settings.authority.isEmpty() || !m_settings.certificate.isEmpty())
        code = mosquitto_tls_set(m_client, orNull(m_settings.authority),
                                 m_settings.authority.isEmpty() ? "/etc/ssl/certs" : nullptr,
                                 orNull(m_settings.certificate), orNull(m_settings.key), noPassword);
    if (code != MOSQ_ERR_SUCCESS)
        fail(connectError(code));
    return code == MOSQ_ERR_SUCCESS;
}

/** What the library says of an error, and of what led to it. */
QString MqttClient::connectError(int code) const
{
    switch (code) {
    case MOSQ_ERR_TLS:
        return m_lastLog.isEmpty()
                   ? QCoreApplication::translate("MqttInput", "no encrypted connection comes about")
                   : QCoreApplication::translate("MqttInput", "no encrypted connection comes about: %1").arg(m_lastLog);
    case MOSQ_ERR_PROTOCOL:
    case MOSQ_ERR_MALFORMED_PACKET:
        return QCoreApplication::translate("MqttInput", "what comes is no MQTT");
    case MOSQ_ERR_CONN_LOST:
        return QCoreApplication::translate("MqttInput", "the server has closed the connection");
    case MOSQ_ERR_ERRNO:
        return qt_error_string();
    default:
        return QString::fromUtf8(mosquitto_strerror(code));
    }
}

void MqttClient::loop()
{
    const Clock::time_point start = Clock::now();
    while (!m_stopped && !m_isOver) {
        int code = MOSQ_ERR_SUCCESS;
        if (m_answer != 0) { // the library takes care of how an encrypted connection begins
            code = mosquitto_loop(m_client, WaitMs, 1);
        } else {
            pollfd waiting{mosquitto_socket(m_client), POLLIN, 0};
            if (mosquitto_want_write(m_client))
                waiting.events |= POLLOUT;
            const int ready = waiting.fd < 0 ? 0 : poll(&waiting, 1, WaitMs);
            if (waiting.fd < 0)
                code = MOSQ_ERR_CONN_LOST;
            else if (ready > 0 && waiting.revents & ~POLLOUT)
                code = read();
            if (code == MOSQ_ERR_SUCCESS && mosquitto_want_write(m_client))
                code = mosquitto_loop_write(m_client, 1);
            if (code == MOSQ_ERR_SUCCESS)
                code = mosquitto_loop_misc(m_client);
            askForSchemas();
        }
        // Servers that are older answer in a way that makes no sense, or not at all.
        m_mayBeOlder = m_mayBeOlder || (code != MOSQ_ERR_SUCCESS && code != MOSQ_ERR_TLS && m_answer < 0);
        if (code != MOSQ_ERR_SUCCESS)
            fail(connectError(code));
        else if ((m_answer != 0 || !m_pending.empty()) && Clock::now() - start > AnswerTime)
            fail(QCoreApplication::translate("MqttInput", "no answer within %1 s").arg(qint64(AnswerTime.count())));
    }
}

/** Reads what there is: the library itself would take one packet at a time. */
int MqttClient::read()
{
    int code = MOSQ_ERR_SUCCESS;
    int waiting = 0;
    do {
        const int packets = 1 + qMin(waiting / SmallPacket, MostReads);
        for (int i = 0; i < packets && code == MOSQ_ERR_SUCCESS && !m_stopped; ++i)
            code = mosquitto_loop_read(m_client, 1);
        waiting = 0;
        const int socket = mosquitto_socket(m_client);
        if (socket < 0 || ioctl(socket, FIONREAD, &waiting) != 0)
            waiting = 0;
    } while (code == MOSQ_ERR_SUCCESS && waiting > 0 && !m_stopped);
    return code;
}

void MqttClient::fail(const QString& error)
{
    m_isOver = true;
    if (m_error.isEmpty())
        m_error = error;
}

void MqttClient::subscribe(const QByteArray& filter)
{
    int mid = 0;
    if (mosquitto_subscribe_v5(m_client, &mid, filter.constData(), 0, 0, nullptr) == MOSQ_ERR_SUCCESS)
        m_pending.emplace(mid, filter);
}

void MqttClient::processConnection(mosquitto*, void* self, int code, int, const mqtt5__property*)
{
    MqttClient* const client = static_cast<MqttClient*>(self);
    client->m_answer = code;
    client->m_mayBeOlder = code == UnsupportedVersion || code == OldUnsupportedVersion;
    if (code != 0)
        return client->fail(QCoreApplication::translate("MqttInput", "the server refuses the connection: %1")
                                .arg(refusal(code, client->m_version != MQTT_PROTOCOL_V5)));
    for (const QByteArray& filter : client->m_settings.filters)
        client->subscribe(filter);
}

void MqttClient::processEnd(mosquitto*, void* self, int code, const mqtt5__property*)
{
    MqttClient* const client = static_cast<MqttClient*>(self);
    if (code >= LeastFailure)
        client->fail(
            QCoreApplication::translate("MqttInput", "the server ends the connection: %1").arg(refusal(code, false)));
}

void MqttClient::processSubscription(mosquitto*, void* self, int mid, int count, const int* codes,
                                     const mqtt5__property*)
{
    MqttClient* const client = static_cast<MqttClient*>(self);
    const auto pending = client->m_pending.find(mid);
    if (pending == client->m_pending.end() || count < 1)
        return;
    const QByteArray filter = pending->second;
    client->m_pending.erase(pending);
    if (codes[0] < LeastFailure) {
        ++client->m_granted;
    } else {
        const QString text = QCoreApplication::translate("MqttInput", "the server refuses %1: %2")
                                 .arg(textOf(filter), client->m_version == MQTT_PROTOCOL_V5 ? refusal(codes[0], false)
                                                                                            : refusal(0x87, false));
        client->m_queue->addNotice(2, text);
        if (client->m_granted == 0 && client->m_pending.empty())
            client->fail(text);
    }
    if (client->m_pending.empty() && client->m_granted > 0)
        client->m_queue->setReceiving();
}

void MqttClient::processLog(mosquitto*, void* self, int level, const char* text)
{
    if (level == MOSQ_LOG_ERR)
        static_cast<MqttClient*>(self)->m_lastLog = QString::fromUtf8(text);
}

void MqttClient::processMessage(mosquitto*, void* self, const mosquitto_message* message,
                                const mqtt5__property* properties)
{
    MqttClient* const client = static_cast<MqttClient*>(self);
    if (quint32(message->payloadlen) > GreatestPacket) {
        client->m_queue->addNotice(1,
                                   QCoreApplication::translate("MqttInput", "a message of %1 bytes of %2 is too large")
                                       .arg(QString::number(message->payloadlen), QString::fromUtf8(message->topic)));
        return;
    }
    Envelope envelope;
    envelope.topic = viewOf(message->topic);
    envelope.isKept = message->retain;
    envelope.time = now();
    envelope.payload = std::string_view(static_cast<const char*>(message->payload), std::size_t(message->payloadlen));
    if (properties)
        client->readProperties(properties, &envelope);
    if (!client->m_awaited.empty())
        client->m_awaited.erase(message->topic);
    client->m_queue->add(envelope);
    if (!envelope.properties.empty())
        client->noteSchema(envelope);
    client->m_texts.clear();
}

void MqttClient::readProperties(const mqtt5__property* properties, Envelope* envelope)
{
    const auto own = [this](char* text) {
        m_texts.emplace_back(text, std::free);
        return viewOf(text);
    };
    char* text = nullptr;
    if (mosquitto_property_read_string(properties, MQTT_PROP_CONTENT_TYPE, &text, false))
        envelope->contentType = own(text);
    char* name = nullptr;
    char* value = nullptr;
    const mosquitto_property* at =
        mosquitto_property_read_string_pair(properties, MQTT_PROP_USER_PROPERTY, &name, &value, false);
    while (at && envelope->properties.size() < MostProperties) {
        const std::string_view key = own(name);
        envelope->properties.emplace_back(key, own(value));
        at = mosquitto_property_read_string_pair(at, MQTT_PROP_USER_PROPERTY, &name, &value, true);
    }
}

/** Notes that the schema of a message is to be asked for. */
void MqttClient::noteSchema(const Envelope& envelope)
{
    const std::string_view topic = envelope.getSchemaTopic();
    if (topic.empty() || topic.find_first_of("+#") != std::string_view::npos || topic.front() == '$')
        return;
    const std::string key(topic);
    if (m_schemas.size() < MostSchemas && m_schemas.insert(key).second)
        m_wanted.push_back(key);
}

void MqttClient::askForSchemas()
{
    for (const std::string& topic : m_wanted) {
        bool isCovered = false; // and comes without being asked for
        for (const QByteArray& filter : m_settings.filters) {
            bool matches = false;
            mosquitto_topic_matches_sub(filter.constData(), topic.c_str(), &matches);
            isCovered = isCovered || matches;
        }
        if (!isCovered)
            mosquitto_subscribe_v5(m_client, nullptr, topic.c_str(), 0, 0, nullptr);
        m_awaited.emplace(topic, Clock::now());
    }
    m_wanted.clear();
    for (auto awaited = m_awaited.begin(); awaited != m_awaited.end();) {
        if (Clock::now() - awaited->second < SchemaTime) {
            ++awaited;
            continue;
        }
        Envelope envelope;
        envelope.kind = Envelope::Gone;
        envelope.topic = awaited->first;
        m_queue->add(envelope);
        awaited = m_awaited.erase(awaited);
    }
}
