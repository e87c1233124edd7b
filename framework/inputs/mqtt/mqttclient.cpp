#include "mqttclient.h"

#include "envelope.h"
#include "mqttqueue.h"

#include <QCoreApplication>

#include <cstdlib>

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
            fail(MqttSetup::errorText(code, m_lastLog));
        mosquitto_disconnect(m_client);
    }
    mosquitto_destroy(m_client);
    m_client = nullptr;
    return version == MQTT_PROTOCOL_V5 && m_mayBeOlder && !m_stopped ? OtherVersion : Over;
}

bool MqttClient::configure(int version)
{
    QString error;
    m_client = m_settings.createClient(version, this, &error);
    if (!m_client) {
        fail(error);
        return false;
    }
    mosquitto_connect_v5_callback_set(m_client, processConnection);
    mosquitto_disconnect_v5_callback_set(m_client, processEnd);
    mosquitto_subscribe_v5_callback_set(m_client, processSubscription);
    mosquitto_message_v5_callback_set(m_client, processMessage);
    mosquitto_log_callback_set(m_client, processLog);
    return true;
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
            fail(MqttSetup::errorText(code, m_lastLog));
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
                                .arg(MqttSetup::refusal(code, client->m_version != MQTT_PROTOCOL_V5)));
    for (const QByteArray& filter : client->m_settings.filters)
        client->subscribe(filter);
}

void MqttClient::processEnd(mosquitto*, void* self, int code, const mqtt5__property*)
{
    MqttClient* const client = static_cast<MqttClient*>(self);
    if (code >= LeastFailure)
        client->fail(QCoreApplication::translate("MqttInput", "the server ends the connection: %1")
                         .arg(MqttSetup::refusal(code, false)));
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
        const QString text =
            QCoreApplication::translate("MqttInput", "the server refuses %1: %2")
                .arg(textOf(filter), client->m_version == MQTT_PROTOCOL_V5 ? MqttSetup::refusal(codes[0], false)
                                                                           : MqttSetup::refusal(0x87, false));
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
    // A schema that one of the filters brings need not be asked for.
    if (!envelope.find("schemaencoding").empty() && client->m_schemas.size() < MostSchemas)
        client->m_schemas.insert(message->topic);
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
