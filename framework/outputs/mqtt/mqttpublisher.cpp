#include "mqttpublisher.h"

#include "mqttconnection.h"

#include <QCoreApplication>

#include <mosquitto.h>
#include <mqtt_protocol.h>

namespace
{

const int LookMs = 20;
const int AnswerTimeoutMs = 10000;
const int ShortestPauseMs = 500;
const int LongestPauseMs = 30000;
const int LeastFailure = 0x80;
const int LeastOnTheWay = 1000; // messages; the server says how many it takes at most

} // namespace

MqttPublisher::MqttPublisher(const MqttSetup& setup, QObject* parent)
    : QObject(parent)
    , m_setup(setup)
    , m_timer(this)
{
    connect(&m_timer, &QTimer::timeout, this, &MqttPublisher::look);
    m_timer.start(LookMs);
}

MqttPublisher::~MqttPublisher()
{
    disconnect();
}

void MqttPublisher::look()
{
    if (!m_connection && (!m_since.isValid() || m_since.hasExpired(m_pauseMs)))
        connectNow();
    else if (m_connection && !m_isConnected && m_since.hasExpired(AnswerTimeoutMs))
        lose(QCoreApplication::translate("Output", "no answer within %1 s").arg(AnswerTimeoutMs / 1000));
}

void MqttPublisher::connectNow()
{
    m_since.start();
    m_connection.reset(new MqttConnection(m_setup, true, this));
    mosquitto_int_option(m_connection->getClient(), MOSQ_OPT_SEND_MAXIMUM, LeastOnTheWay);
    mosquitto_publish_v5_callback_set(m_connection->getClient(), processPublished);
    // Not in a callback of the library, since much is published now.
    connect(m_connection.get(), &MqttConnection::accepted, this, &MqttPublisher::begin, Qt::QueuedConnection);
    connect(m_connection.get(), &MqttConnection::ended, this, &MqttPublisher::lose);
    m_connection->open();
}

void MqttPublisher::begin()
{
    if (!m_connection)
        return;
    m_isConnected = true;
    m_pauseMs = 0;
    m_lastTold.clear();
    Q_EMIT told(QStringLiteral("connected"));
    Q_EMIT connected();
}

void MqttPublisher::lose(const QString& reason)
{
    const bool wasConnected = m_isConnected;
    m_connection->blockSignals(true);
    m_connection.release()->deleteLater(); // it may be what calls
    m_isConnected = false;
    m_pauseMs = wasConnected ? ShortestPauseMs : qBound(ShortestPauseMs, 2 * m_pauseMs, LongestPauseMs);
    m_since.start();
    if (wasConnected)
        Q_EMIT lost();
    if (reason != m_lastTold)
        Q_EMIT told(QCoreApplication::translate("Output", "%1; trying again").arg(reason));
    m_lastTold = reason;
}

int MqttPublisher::publish(const QByteArray& topic, const QByteArray& payload, bool isKept,
                           const QByteArray& contentType, const Properties& properties, QString* error)
{
    if (!m_isConnected)
        return 0;
    mosquitto_property* list = nullptr;
    mosquitto_property_add_string(&list, MQTT_PROP_CONTENT_TYPE, contentType.constData());
    for (const QPair<QByteArray, QByteArray>& property : properties)
        mosquitto_property_add_string_pair(&list, MQTT_PROP_USER_PROPERTY, property.first.constData(),
                                           property.second.constData());
    int number = 0;
    const int code = mosquitto_publish_v5(m_connection->getClient(), &number, topic.constData(), int(payload.size()),
                                          payload.constData(), 1, isKept, list);
    mosquitto_property_free_all(&list);
    switch (code) {
    case MOSQ_ERR_SUCCESS:
        m_connection->send();
        return number;
    case MOSQ_ERR_NO_CONN:
    case MOSQ_ERR_CONN_LOST:
    case MOSQ_ERR_ERRNO:
        return 0; // which the connection notices, too
    default:
        *error = MqttSetup::errorText(code);
        return 0;
    }
}

void MqttPublisher::disconnect()
{
    m_timer.stop();
    m_isConnected = false;
    if (m_connection)
        m_connection->close();
    m_connection.reset();
}

void MqttPublisher::processPublished(mosquitto*, void* self, int number, int code, const mqtt5__property*)
{
    Q_EMIT MqttConnection::ownerOf<MqttPublisher>(self)->arrived(
        number, code >= LeastFailure ? MqttSetup::refusal(code, false) : QString());
}
