#include "natssetup.h"

#include <QFile>

#include <climits>

namespace
{

const char PasswordVariable[] = "CORVEL_NATS_PASSWORD";
const int GreatestPassword = 65535;
const int ConnectTimeoutMs = 2000;
const int ReconnectWaitMs = 500;
const int PingIntervalMs = 10000;

} // namespace

bool NatsSetup::read(const QMap<QString, QString>& parameters, QString* error)
{
    for (const char* name : {"password-file", "creds", "ca", "cert", "key"}) {
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
    credentials = QFile::encodeName(parameters.value(QStringLiteral("creds")));
    authority = QFile::encodeName(parameters.value(QStringLiteral("ca")));
    certificate = QFile::encodeName(parameters.value(QStringLiteral("cert")));
    key = QFile::encodeName(parameters.value(QStringLiteral("key")));
    isEncrypted = parameters.value(QStringLiteral("tls")) == QLatin1String("on") || !authority.isEmpty() ||
                  !certificate.isEmpty();
    return true;
}

natsStatus NatsSetup::apply(natsOptions* options) const
{
    natsStatus status = NATS_OK;
    const auto set = [&status](natsStatus result) {
        if (status == NATS_OK)
            status = result;
    };
    set(natsOptions_SetName(options, "corvel"));
    set(natsOptions_SetTimeout(options, ConnectTimeoutMs));
    set(natsOptions_SetPingInterval(options, PingIntervalMs));
    set(natsOptions_SetMaxReconnect(options, INT_MAX));
    set(natsOptions_SetReconnectWait(options, ReconnectWaitMs));
    if (!user.isEmpty())
        set(natsOptions_SetUserInfo(options, user.constData(), password.constData()));
    else if (!password.isEmpty())
        set(natsOptions_SetToken(options, password.constData()));
    if (!credentials.isEmpty())
        set(natsOptions_SetUserCredentialsFromFiles(options, credentials.constData(), nullptr));
    if (isEncrypted)
        set(natsOptions_SetSecure(options, true));
    if (!authority.isEmpty())
        set(natsOptions_LoadCATrustedCertificates(options, authority.constData()));
    if (!certificate.isEmpty())
        set(natsOptions_LoadCertificatesChain(options, certificate.constData(), key.constData()));
    return status;
}
