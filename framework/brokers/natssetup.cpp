#include "natssetup.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QUrl>

#include <climits>
#include <vector>

namespace
{

const quint16 DefaultPort = 4222;
const int MostServers = 100;
const int ConnectTimeoutMs = 2000;
const int ReconnectWaitMs = 500;
const int PingIntervalMs = 10000;

} // namespace

bool NatsSetup::read(const QMap<QString, QString>& parameters, QString* error)
{
    credentials = QFile::encodeName(parameters.value(QStringLiteral("creds")));
    isEncrypted = parameters.value(QStringLiteral("tls")) == QLatin1String("on") ||
                  !parameters.value(QStringLiteral("ca")).isEmpty() ||
                  !parameters.value(QStringLiteral("cert")).isEmpty();
    return BrokerAccess::read(parameters, "CORVEL_NATS_PASSWORD", error, "creds");
}

bool NatsSetup::readServers(const Server& one, const QString& others, QString* reason)
{
    servers = {one};
    for (const QString& server : others.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QUrl url(QLatin1String("nats://") + server, QUrl::StrictMode);
        if (!url.isValid() || url.host().isEmpty() || url.port() == 0 || !url.path().isEmpty() ||
            !url.userInfo().isEmpty())
            *reason = QCoreApplication::translate("InputAddress", "\"%1\" is no server; HOST:PORT is one").arg(server);
        servers.append({url.host(), quint16(url.port(DefaultPort))});
    }
    if (servers.size() > MostServers)
        *reason = QCoreApplication::translate("InputAddress", "there are more than %1 servers").arg(MostServers);
    return reason->isEmpty();
}

natsStatus NatsSetup::apply(natsOptions* options, int first) const
{
    std::vector<QByteArray> urls;
    std::vector<const char*> places;
    for (int i = 0; i < servers.size(); ++i) {
        const Server& server = servers.at((first + i) % servers.size());
        const QString host =
            server.host.contains(QLatin1Char(':')) ? QStringLiteral("[%1]").arg(server.host) : server.host;
        urls.push_back(QStringLiteral("nats://%1:%2").arg(host).arg(server.port).toUtf8());
    }
    for (const QByteArray& url : urls)
        places.push_back(url.constData());
    natsStatus status = NATS_OK;
    const auto set = [&status](natsStatus result) {
        if (status == NATS_OK)
            status = result;
    };
    set(natsOptions_SetServers(options, places.data(), int(places.size())));
    set(natsOptions_SetNoRandomize(options, true));
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
