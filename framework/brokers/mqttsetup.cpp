#include "mqttsetup.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <mutex>

#include <mosquitto.h>
#include <mqtt_protocol.h>

namespace
{

/** A name that no other program has. */
QByteArray clientName()
{
    return "corvel-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16).rightJustified(16, '0');
}

} // namespace

bool MqttSetup::read(const QMap<QString, QString>& parameters, QString* error)
{
    return BrokerAccess::read(parameters, "CORVEL_MQTT_PASSWORD", error);
}

mosquitto* MqttSetup::createClient(int version, void* self) const
{
    static std::once_flag initialized;
    std::call_once(initialized, [] { mosquitto_lib_init(); });
    mosquitto* const client =
        mosquitto_new((session.isEmpty() ? clientName() : session).constData(), session.isEmpty(), self);
    mosquitto_int_option(client, MOSQ_OPT_PROTOCOL_VERSION, version);
    if (!user.isEmpty() || !password.isEmpty())
        mosquitto_username_pw_set(client, user.constData(), password.isEmpty() ? nullptr : password.constData());
    return client;
}

QString MqttSetup::refusal(int code, bool isOld)
{
    static const struct
    {
        int code;
        int oldCode;
        const char* text;
    } reasons[] = {
        {0x84, 1, QT_TRANSLATE_NOOP("MqttInput", "it speaks no such version of MQTT")},
        {0x85, 2, QT_TRANSLATE_NOOP("MqttInput", "it does not take the name of this program")},
        {0x86, 4, QT_TRANSLATE_NOOP("MqttInput", "user or password is wrong")},
        {0x87, 5, QT_TRANSLATE_NOOP("MqttInput", "not authorised")},
        {0x88, 3, QT_TRANSLATE_NOOP("MqttInput", "the server is unavailable")},
        {0x89, 0, QT_TRANSLATE_NOOP("MqttInput", "the server is busy")},
        {0x8a, 0, QT_TRANSLATE_NOOP("MqttInput", "this user or address is banned")},
        {0x8b, 0, QT_TRANSLATE_NOOP("MqttInput", "the server shuts down")},
        {0x8e, 0, QT_TRANSLATE_NOOP("MqttInput", "another program has connected under the same name")},
        {0x8f, 0, QT_TRANSLATE_NOOP("MqttInput", "it does not take such a filter")},
        {0x90, 0, QT_TRANSLATE_NOOP("MqttInput", "it does not take such a topic")},
        {0x95, 0, QT_TRANSLATE_NOOP("MqttInput", "the message is too large")},
        {0x97, 0, QT_TRANSLATE_NOOP("MqttInput", "a quota is used up")},
        {0x9a, 0, QT_TRANSLATE_NOOP("MqttInput", "it keeps no messages")},
        {0x9c, 0, QT_TRANSLATE_NOOP("MqttInput", "another server is to be used")},
        {0x9d, 0, QT_TRANSLATE_NOOP("MqttInput", "the server has moved")},
        {0x9f, 0, QT_TRANSLATE_NOOP("MqttInput", "too many connections in a short time")},
    };
    for (const auto& reason : reasons)
        if (code == reason.code || (isOld && code == reason.oldCode))
            return QCoreApplication::translate("MqttInput", reason.text);
    return QCoreApplication::translate("MqttInput", "reason 0x%1").arg(code, 2, 16, QLatin1Char('0'));
}

QString MqttSetup::errorText(int code)
{
    switch (code) {
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
