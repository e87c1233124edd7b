#include "mqttclient.h"

#include "envelope.h"
#include "mqttconnection.h"
#include "mqttqueue.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <cstdlib>

#include <mosquitto.h>
#include <mqtt_protocol.h>

namespace
{

const int WaitMs = 50;
const int ConfirmMs = 5;
const std::chrono::seconds AnswerTime(5);
const std::chrono::seconds SchemaTime(3);

const std::size_t MostProperties = 1000;
const std::size_t MostSchemas = 20000;

// What refuses a subscription.
const int LeastFailure = 0x80;

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
    , m_thread(QThread::create([this] { run(); }))
{
    m_thread->start();
}

MqttClient::~MqttClient()
{
    m_stopped = true;
    m_thread->wait();
}

void MqttClient::run()
{
    runWith(true);
    if (m_mayBeOlder && !m_stopped)
        runWith(false);
    m_queue->end(m_error);
}

void MqttClient::runWith(bool isFive)
{
    m_isFive = isFive;
    m_isAccepted = false;
    m_mayBeOlder = false;
    m_error.clear();
    m_pending.clear();
    QEventLoop loop;
    QTimer timer;
    MqttConnection connection(m_settings, isFive, this);
    m_loop = &loop;
    m_connection = &connection;
    mosquitto_subscribe_v5_callback_set(connection.getClient(), processSubscription);
    mosquitto_message_v5_callback_set(connection.getClient(), processMessage);
    QObject::connect(&connection, &MqttConnection::accepted, &loop, [this] {
        m_isAccepted = true;
        for (const QByteArray& filter : m_settings.filters)
            subscribe(filter);
    });
    QObject::connect(&connection, &MqttConnection::handled, &loop, [&] {
        askForSchemas();
        followQueue();
    });
    QObject::connect(&connection, &MqttConnection::ended, &loop, [&](const QString& reason) {
        m_mayBeOlder = connection.mayBeOlder();
        fail(reason);
    });
    const Clock::time_point start = Clock::now();
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        followQueue();
        if (m_stopped)
            loop.quit();
        else if ((!m_isAccepted || !m_pending.empty()) && Clock::now() - start > AnswerTime)
            fail(QCoreApplication::translate("MqttInput", "no answer within %1 s").arg(qint64(AnswerTime.count())));
        else
            askForSchemas();
    });
    timer.start(m_settings.session.isEmpty() ? WaitMs : ConfirmMs);
    connection.open();
    loop.exec();
    connection.close();
}

/** With a session, takes no more than there is room for, and confirms what was passed on. */
void MqttClient::followQueue()
{
    if (m_settings.session.isEmpty())
        return;
    m_connection->setPaused(m_isHeld || m_queue->isFull());
    m_connection->confirm(m_confirmed);
}

void MqttClient::fail(const QString& error)
{
    m_loop->quit();
    if (m_error.isEmpty())
        m_error = error;
}

void MqttClient::subscribe(const QByteArray& filter)
{
    int mid = 0;
    if (mosquitto_subscribe_v5(m_connection->getClient(), &mid, filter.constData(),
                               m_settings.session.isEmpty() ? 0 : 1, 0, nullptr) == MOSQ_ERR_SUCCESS)
        m_pending.emplace(mid, filter);
}

void MqttClient::processSubscription(mosquitto*, void* self, int mid, int count, const int* codes,
                                     const mqtt5__property*)
{
    MqttClient* const client = MqttConnection::ownerOf<MqttClient>(self);
    const auto pending = client->m_pending.find(mid);
    if (pending == client->m_pending.end() || count < 1)
        return;
    const QByteArray filter = pending->second;
    client->m_pending.erase(pending);
    if (codes[0] < LeastFailure) {
        ++client->m_granted;
    } else {
        const QString text = QCoreApplication::translate("MqttInput", "the server refuses %1: %2")
                                 .arg(textOf(filter), client->m_isFive ? MqttSetup::refusal(codes[0], false)
                                                                       : MqttSetup::refusal(0x87, false));
        client->m_queue->addNotice(2, text);
        if (client->m_granted == 0 && client->m_pending.empty())
            client->fail(text);
    }
    if (client->m_pending.empty() && client->m_granted > 0)
        client->m_queue->setReceiving();
}

void MqttClient::processMessage(mosquitto*, void* self, const mosquitto_message* message,
                                const mqtt5__property* properties)
{
    MqttClient* const client = MqttConnection::ownerOf<MqttClient>(self);
    if (message->qos > 0)
        client->m_queue->countConfirmable();
    if (message->payloadlen > MqttCheck::GreatestPacket) {
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
    // One that one of the filters brings need not be asked for.
    if (!envelope.find("schemaencoding").empty() && m_schemas.size() < MostSchemas)
        m_schemas.insert(std::string(envelope.topic));
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
            mosquitto_subscribe_v5(m_connection->getClient(), nullptr, topic.c_str(), 0, 0, nullptr);
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
