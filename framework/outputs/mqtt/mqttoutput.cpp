#include "mqttoutput.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace
{

const std::size_t MostPending = 1000;
const quint16 DefaultPort = 1883;
const quint16 DefaultEncryptedPort = 8883;

bool check(OutputAddress* address, QString* reason)
{
    while (address->path.endsWith(QLatin1Char('/')))
        address->path.chop(1);
    if (address->host.isEmpty())
        *reason = QCoreApplication::translate("Output", "no host is named");
    else if (address->path.isEmpty())
        *reason = QCoreApplication::translate("Output", "no prefix of the topics is named behind the host");
    else if (address->path.contains(QLatin1Char('+')) || address->path.contains(QLatin1Char('#')) ||
             address->path.startsWith(QLatin1Char('$')))
        *reason = QCoreApplication::translate("Output", "\"%1\" is no prefix of topics").arg(address->path);
    else if (address->parameters.contains(QStringLiteral("cert")) !=
             address->parameters.contains(QStringLiteral("key")))
        *reason = QCoreApplication::translate("Output", "a certificate (cert) and its key (key) belong together");
    return reason->isEmpty();
}

MessageOutput* connectTo(const OutputAddress& address, const PublishedStream* stream)
{
    return new MqttOutput(address, stream);
}

} // namespace

const OutputKind MqttOutputKind = {"mqtt",
                                   QT_TRANSLATE_NOOP("OutputKind", "MQTT: topics of a broker"),
                                   "",
                                   1000,
                                   "mqtt:",
                                   "mqtt://[USER@]HOST[:PORT]/PREFIX[?password-file=FILE]",
                                   "mqtt://localhost/fleet",
                                   DefaultPort,
                                   OutputKind::AcknowledgedProperty,
                                   "",
                                   "password-file",
                                   check,
                                   nullptr,
                                   connectTo};

const OutputKind MqttsOutputKind = {"mqtts",
                                    QT_TRANSLATE_NOOP("OutputKind", "MQTT, encrypted: topics of a broker"),
                                    "",
                                    1000,
                                    "mqtts:",
                                    "mqtts://[USER@]HOST[:PORT]/PREFIX[?password-file=FILE&ca=FILE&cert=FILE&key=FILE]",
                                    "mqtts://operator@broker.example/fleet?password-file=/etc/corvel/password",
                                    DefaultEncryptedPort,
                                    OutputKind::AcknowledgedProperty,
                                    "",
                                    "password-file ca cert key",
                                    check,
                                    nullptr,
                                    connectTo};

MqttOutput::MqttOutput(const OutputAddress& address, const PublishedStream* stream)
    : EventOutput({"mqtt", '/', "+#", address.path.toUtf8()}, stream)
{
    MqttSetup setup;
    setup.host = address.host.toUtf8();
    setup.port = address.port;
    setup.isEncrypted = address.kind == &MqttsOutputKind;
    QMap<QString, QString> parameters = address.parameters;
    parameters.insert(QStringLiteral("user"), address.user);
    QString error;
    if (!setup.read(parameters, &error)) {
        setError(error);
        return;
    }
    m_publisher.reset(new MqttPublisher(setup));
    QObject::connect(m_publisher.get(), &MqttPublisher::connected, m_publisher.get(), [this] { resume(); });
    QObject::connect(m_publisher.get(), &MqttPublisher::arrived, m_publisher.get(),
                     [this](int number, const QString& refusal) { noteArrival(number, refusal); });
    QObject::connect(m_publisher.get(), &MqttPublisher::told, m_publisher.get(),
                     [this](const QString& text) { addNotice(text); });
}

MqttOutput::~MqttOutput() {}

bool MqttOutput::isReady() const
{
    return m_publisher && m_publisher->isConnected() && m_pending.size() < MostPending;
}

/** What is not connected goes out later. */
void MqttOutput::publish(std::size_t place)
{
    Pending& pending = m_pending[place];
    if (!m_publisher || !m_publisher->isConnected())
        return;
    publishSchema(*pending.event);
    MqttPublisher::Properties properties = pending.event->getAttributes();
    properties.append({"id", pending.id});
    properties.append({"time", pending.time});
    QString error;
    const int number = m_publisher->publish(pending.event->getTopic(), pending.payload, false,
                                            pending.event->getContentType(), properties, &error);
    pending.isDone = !error.isEmpty();
    if (pending.isDone)
        refuse(pending, error);
    else if (number != 0)
        m_numbers.insert(number, m_popped + place);
}

void MqttOutput::publishSchema(const CloudEvent& event)
{
    if (event.getSchemaTopic().isEmpty() || m_schemas.contains(event.getSchemaTopic()))
        return;
    QString error;
    if (m_publisher->publish(event.getSchemaTopic(), event.getSchema(), true, "application/octet-stream",
                             event.getSchemaProperties(), &error) != 0 ||
        !error.isEmpty())
        m_schemas.insert(event.getSchemaTopic());
    if (!error.isEmpty())
        addNotice(QStringLiteral("%1: %2").arg(QString::fromUtf8(event.getSchemaTopic()), error));
}

/** Publishes again what the last connection did not confirm. */
void MqttOutput::resume()
{
    m_schemas.clear();
    m_numbers.clear();
    for (std::size_t i = 0; i < m_pending.size(); ++i)
        if (!m_pending[i].isDone)
            publish(i);
    popDone();
}

void MqttOutput::noteArrival(int number, const QString& refusal)
{
    const auto place = m_numbers.constFind(number);
    if (place == m_numbers.constEnd())
        return; // a schema
    Pending& pending = m_pending[std::size_t(*place - m_popped)];
    m_numbers.erase(place);
    pending.isDone = true;
    if (!refusal.isEmpty())
        refuse(pending, refusal);
    popDone();
}

void MqttOutput::refuse(const Pending& pending, const QString& reason)
{
    addDropped();
    const QString text = QStringLiteral("%1: %2").arg(QString::fromUtf8(pending.event->getTopic()), reason);
    if (text != m_refusal)
        addNotice(text);
    m_refusal = text;
}

void MqttOutput::close()
{
    if (m_publisher)
        m_publisher->disconnect();
}
