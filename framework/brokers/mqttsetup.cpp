#include "mqttsetup.h"

#include <QFile>
#include <QRandomGenerator>

#include <mutex>

#include <mosquitto.h>
#include <mqtt_protocol.h>

namespace
{

const char PasswordVariable[] = "CORVEL_MQTT_PASSWORD";
const int GreatestPassword = 65535;

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

const char* orNull(const QByteArray& text)
{
    return text.isEmpty() ? nullptr : text.constData();
}

} // namespace

bool MqttSetup::read(const QMap<QString, QString>& parameters, QString* error)
{
    for (const char* name : {"password-file", "ca", "cert", "key"}) {
        const QString path = parameters.value(QLatin1String(name));
        QFile file(path);
        if (!path.isEmpty() && !file.open(QIODevice::ReadOnly)) {
            *error = path + QLatin1String(": ") + file.errorString();
            return false;
        }
        if (file.isOpen() && qstrcmp(name, "password-file") == 0)
            password = file.readLine(GreatestPassword + 2).trimmed();
    }
    user = parameters.value(QStringLiteral("user")).toUtf8();
    if (password.isEmpty())
        password = qgetenv(PasswordVariable);
    authority = QFile::encodeName(parameters.value(QStringLiteral("ca")));
    certificate = QFile::encodeName(parameters.value(QStringLiteral("cert")));
    key = QFile::encodeName(parameters.value(QStringLiteral("key")));
    return true;
}

mosquitto* MqttSetup::createClient(int version, void* self, QString* error) const
{
    static std::once_flag initialized;
    std::call_once(initialized, [] { mosquitto_lib_init(); });
    mosquitto* const client = mosquitto_new(clientName().constData(), true, self);
    mosquitto_int_option(client, MOSQ_OPT_PROTOCOL_VERSION, version);
    mosquitto_int_option(client, MOSQ_OPT_TCP_NODELAY, 1);
    if (!user.isEmpty() || !password.isEmpty())
        mosquitto_username_pw_set(client, user.constData(), orNull(password));
    if (!isEncrypted)
        return client;
    int code = MOSQ_ERR_SUCCESS;
    if (authority.isEmpty())
        mosquitto_int_option(client, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
    if (!authority.isEmpty() || !certificate.isEmpty())
        code = mosquitto_tls_set(client, orNull(authority), authority.isEmpty() ? "/etc/ssl/certs" : nullptr,
                                 orNull(certificate), orNull(key), noPassword);
    if (code == MOSQ_ERR_SUCCESS)
        return client;
    *error = errorText(code, QString());
    mosquitto_destroy(client);
    return nullptr;
}

QString MqttSetup::refusal(int code, bool isOld)
{
    static const struct
    {
        int code;
        int oldCode;
        const char* text;
    } reasons[] = {
        {0x84, 1, "it speaks no such version of MQTT"},
        {0x85, 2, "it does not take the name of this program"},
        {0x86, 4, "user or password is wrong"},
        {0x87, 5, "not authorised"},
        {0x88, 3, "the server is unavailable"},
        {0x89, 0, "the server is busy"},
        {0x8a, 0, "this user or address is banned"},
        {0x8b, 0, "the server shuts down"},
        {0x8e, 0, "another program has connected under the same name"},
        {0x90, 0, "it does not take such a topic"},
        {0x95, 0, "the message is too large"},
        {0x97, 0, "a quota is used up"},
        {0x9a, 0, "it keeps no messages"},
        {0x9f, 0, "too many connections in a short time"},
    };
    for (const auto& reason : reasons)
        if (isOld ? code == reason.oldCode && code > 0 : code == reason.code)
            return QString::fromLatin1(reason.text);
    return QStringLiteral("reason 0x%1").arg(code, 2, 16, QLatin1Char('0'));
}

QString MqttSetup::errorText(int code, const QString& lastLog)
{
    switch (code) {
    case MOSQ_ERR_TLS:
        return QStringLiteral("no encrypted connection comes about") +
               (lastLog.isEmpty() ? QString() : QStringLiteral(": ") + lastLog);
    case MOSQ_ERR_PROTOCOL:
    case MOSQ_ERR_MALFORMED_PACKET:
        return QStringLiteral("what comes is no MQTT");
    case MOSQ_ERR_CONN_LOST:
        return QStringLiteral("the server has closed the connection");
    case MOSQ_ERR_ERRNO:
        return qt_error_string();
    default:
        return QString::fromUtf8(mosquitto_strerror(code));
    }
}
