#include "mqttpublisher.h"

#include <QNetworkProxy>
#include <QTcpSocket>

#include <mosquitto.h>
#include <mqtt_protocol.h>

namespace
{

const int LookMs = 20;
const int KeepAliveSeconds = 20;
const int ReachTimeoutMs = 3000;
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
    if (!m_client) {
        if (!m_since.isValid() || m_since.hasExpired(m_pauseMs))
            connectNow();
        return;
    }
    if (!m_isConnected) {
        // The library takes care of how an encrypted connection begins.
        const int code = mosquitto_loop(m_client, 0, 1);
        if (m_isLost)
            lose(m_reason);
        else if (code != MOSQ_ERR_SUCCESS)
            lose(MqttSetup::errorText(code, m_lastLog));
        else if (m_since.hasExpired(AnswerTimeoutMs) && !m_isConnected)
            lose(QStringLiteral("no answer within %1 s").arg(AnswerTimeoutMs / 1000));
        else if (m_isAccepted)
            begin();
    } else {
        const int code = mosquitto_loop_misc(m_client);
        if (code != MOSQ_ERR_SUCCESS)
            lose(MqttSetup::errorText(code, m_lastLog));
    }
    if (m_isLost)
        lose(m_reason);
    watch();
}

void MqttPublisher::begin()
{
    m_isConnected = true;
    m_pauseMs = 0;
    m_lastTold.clear();
    Q_EMIT told(QStringLiteral("connected"));
    Q_EMIT connected();
}

/** The library would wait for minutes for a host that does not answer. */
bool MqttPublisher::isReachable(QString* error) const
{
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.connectToHost(QString::fromUtf8(m_setup.host), m_setup.port);
    const bool isReached = socket.waitForConnected(ReachTimeoutMs);
    *error = socket.errorString();
    socket.abort();
    return isReached;
}

void MqttPublisher::connectNow()
{
    m_since.start();
    m_isLost = false;
    m_lastLog.clear();
    QString error;
    if (!isReachable(&error)) {
        lose(error);
        return;
    }
    m_client = m_setup.createClient(MQTT_PROTOCOL_V5, this, &error);
    if (!m_client) {
        lose(error);
        return;
    }
    mosquitto_int_option(m_client, MOSQ_OPT_SEND_MAXIMUM, LeastOnTheWay);
    mosquitto_connect_v5_callback_set(m_client, processConnection);
    mosquitto_disconnect_v5_callback_set(m_client, processEnd);
    mosquitto_publish_v5_callback_set(m_client, processPublished);
    mosquitto_log_callback_set(m_client, processLog);
    const int code =
        mosquitto_connect_bind_v5(m_client, m_setup.host.constData(), m_setup.port, KeepAliveSeconds, nullptr, nullptr);
    if (code != MOSQ_ERR_SUCCESS)
        lose(MqttSetup::errorText(code, m_lastLog));
}

void MqttPublisher::lose(const QString& reason)
{
    const bool wasConnected = m_isConnected;
    m_reader.reset();
    m_writer.reset();
    if (m_client)
        mosquitto_destroy(m_client);
    m_client = nullptr;
    m_isConnected = false;
    m_isAccepted = false;
    m_isLost = false;
    m_pauseMs = wasConnected ? ShortestPauseMs : qBound(ShortestPauseMs, 2 * m_pauseMs, LongestPauseMs);
    m_since.start();
    if (wasConnected)
        Q_EMIT lost();
    if (reason != m_lastTold)
        Q_EMIT told(QStringLiteral("%1; trying again").arg(reason));
    m_lastTold = reason;
}

void MqttPublisher::watch()
{
    if (!m_isConnected || !m_client)
        return;
    const int socket = mosquitto_socket(m_client);
    if (socket < 0)
        return;
    if (!m_reader) {
        m_reader.reset(new QSocketNotifier(socket, QSocketNotifier::Read));
        m_writer.reset(new QSocketNotifier(socket, QSocketNotifier::Write));
        connect(m_reader.get(), &QSocketNotifier::activated, this, [this] { read(); });
        connect(m_writer.get(), &QSocketNotifier::activated, this, [this] { write(); });
    }
    m_writer->setEnabled(mosquitto_want_write(m_client));
}

void MqttPublisher::read()
{
    const int code = mosquitto_loop_read(m_client, 1);
    if (code != MOSQ_ERR_SUCCESS && !m_isLost) {
        m_isLost = true; // the notifier is not to be destroyed while it reports
        m_reason = MqttSetup::errorText(code, m_lastLog);
    }
    if (m_isLost) {
        m_reader->setEnabled(false);
        m_writer->setEnabled(false);
    } else {
        watch();
    }
}

void MqttPublisher::write()
{
    mosquitto_loop_write(m_client, 1); // what is wrong shows in reading, too
    m_writer->setEnabled(mosquitto_want_write(m_client));
}

int MqttPublisher::publish(const QByteArray& topic, const QByteArray& payload, bool isKept,
                           const QByteArray& contentType, const Properties& properties, QString* error)
{
    if (!m_isConnected || m_isLost)
        return 0;
    mosquitto_property* list = nullptr;
    mosquitto_property_add_string(&list, MQTT_PROP_CONTENT_TYPE, contentType.constData());
    for (const QPair<QByteArray, QByteArray>& property : properties)
        mosquitto_property_add_string_pair(&list, MQTT_PROP_USER_PROPERTY, property.first.constData(),
                                           property.second.constData());
    int number = 0;
    const int code = mosquitto_publish_v5(m_client, &number, topic.constData(), int(payload.size()),
                                          payload.constData(), 1, isKept, list);
    mosquitto_property_free_all(&list);
    switch (code) {
    case MOSQ_ERR_SUCCESS:
        watch();
        return number;
    case MOSQ_ERR_NO_CONN:
    case MOSQ_ERR_CONN_LOST:
    case MOSQ_ERR_ERRNO:
        m_isLost = true;
        m_reason = MqttSetup::errorText(code, m_lastLog);
        return 0;
    default:
        *error = MqttSetup::errorText(code, QString());
        return 0;
    }
}

void MqttPublisher::disconnect()
{
    if (!m_client)
        return;
    m_reader.reset();
    m_writer.reset();
    m_isConnected = false;
    mosquitto_disconnect_v5_callback_set(m_client, nullptr);
    mosquitto_disconnect(m_client);
    mosquitto_destroy(m_client);
    m_client = nullptr;
    m_timer.stop();
}

void MqttPublisher::processConnection(mosquitto*, void* self, int code, int, const mqtt5__property*)
{
    MqttPublisher* const publisher = static_cast<MqttPublisher*>(self);
    if (code != 0) {
        publisher->m_isLost = true;
        publisher->m_reason =
            QStringLiteral("the server refuses the connection: %1").arg(MqttSetup::refusal(code, false));
        return;
    }
    publisher->m_isAccepted = true;
}

void MqttPublisher::processEnd(mosquitto*, void* self, int code, const mqtt5__property*)
{
    MqttPublisher* const publisher = static_cast<MqttPublisher*>(self);
    if (publisher->m_isLost)
        return; // and it is known why
    publisher->m_isLost = true;
    publisher->m_reason =
        code >= LeastFailure ? QStringLiteral("the server ends the connection: %1").arg(MqttSetup::refusal(code, false))
                             : QStringLiteral("the connection is lost");
}

void MqttPublisher::processPublished(mosquitto*, void* self, int number, int code, const mqtt5__property*)
{
    Q_EMIT static_cast<MqttPublisher*>(self)->arrived(number, code >= LeastFailure ? MqttSetup::refusal(code, false)
                                                                                   : QString());
}

void MqttPublisher::processLog(mosquitto*, void* self, int level, const char* text)
{
    if (level == MOSQ_LOG_ERR)
        static_cast<MqttPublisher*>(self)->m_lastLog = QString::fromUtf8(text);
}
