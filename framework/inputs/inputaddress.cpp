#include "byteinput.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QUrl>

namespace
{

const quint16 DefaultUdpPort = 14550;
const quint16 DefaultTcpPort = 5760;
const quint16 DefaultWebSocketPort = 8765;

bool parsePort(const QString& text, quint16* port)
{
    // toUInt() alone would also take a sign and blanks.
    for (const QChar character : text)
        if (character < QLatin1Char('0') || character > QLatin1Char('9'))
            return false;
    bool right = false;
    const uint number = text.toUInt(&right);
    if (!right || number < 1 || number > 65535)
        return false;
    *port = static_cast<quint16>(number);
    return true;
}

// Takes "HOST", "HOST:PORT", ":PORT", "[IPV6]" and "[IPV6]:PORT" apart. An IPv6 address needs its brackets.
bool splitHostAndPort(const QString& text, QString* host, QString* port, QString* error)
{
    int end = 0;
    if (text.startsWith(QLatin1Char('['))) {
        end = int(text.indexOf(QLatin1Char(']')));
        if (end < 0) {
            *error = QCoreApplication::translate("InputAddress", "the bracket of the IPv6 address is not closed");
            return false;
        }
        *host = text.mid(1, end - 1);
        if (QHostAddress(*host).protocol() != QAbstractSocket::IPv6Protocol) {
            *error = QCoreApplication::translate("InputAddress", "\"%1\" is no IPv6 address").arg(*host);
            return false;
        }
        ++end;
    } else {
        if (text.count(QLatin1Char(':')) > 1) {
            *error = QCoreApplication::translate("InputAddress", "an IPv6 address stands in brackets");
            return false;
        }
        end = int(text.indexOf(QLatin1Char(':')));
        if (end < 0)
            end = int(text.size());
        *host = text.left(end);
    }
    const QString rest = text.mid(end);
    if (!rest.isEmpty() && !rest.startsWith(QLatin1Char(':'))) {
        *error = QCoreApplication::translate("InputAddress", "\"%1\" is not expected behind the host").arg(rest);
        return false;
    }
    *port = rest.mid(1);
    return true;
}

bool parseWebSocket(const QString& text, InputAddress* address, QString* error)
{
    QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() || url.port() == 0) {
        *error = QCoreApplication::translate("InputAddress", "%1: this is no address; ws://HOST:PORT is one").arg(text);
        return false;
    }
    if (url.port() < 0)
        url.setPort(DefaultWebSocketPort);
    address->kind = InputAddress::WebSocket;
    address->path = url.toString(QUrl::FullyEncoded);
    address->host = url.host();
    address->port = quint16(url.port());
    return true;
}

QString bracketed(const QString& host)
{
    return host.contains(QLatin1Char(':')) ? QLatin1Char('[') + host + QLatin1Char(']') : host;
}

} // namespace

InputAddress::InputAddress()
    : kind(StandardInput)
    , port(0)
{
}

bool InputAddress::parse(const QString& text, InputAddress* address, QString* error)
{
    InputAddress result;
    if (text.isEmpty()) {
        *error = QCoreApplication::translate("InputAddress", "no input is named");
        return false;
    }
    if (text.startsWith(QLatin1String("ws://")) || text.startsWith(QLatin1String("wss://"))) {
        if (!parseWebSocket(text, &result, error))
            return false;
        *address = result;
        return true;
    }
    const bool udp = text.startsWith(QLatin1String("udp:"));
    if (!udp && !text.startsWith(QLatin1String("tcp:"))) {
        if (text != QLatin1String("-")) {
            result.kind = File;
            result.path = text;
        }
        *address = result;
        return true;
    }

    QString rest = text.mid(4);
    if (rest.startsWith(QLatin1String("//")))
        rest.remove(0, 2);
    QString port;
    QString reason;
    result.kind = udp ? UdpListen : TcpConnect;
    result.port = udp ? DefaultUdpPort : DefaultTcpPort;
    if (!splitHostAndPort(rest, &result.host, &port, &reason)) {
        *error = text + QLatin1String(": ") + reason;
        return false;
    }
    if (!port.isEmpty() && !parsePort(port, &result.port)) {
        *error =
            QCoreApplication::translate("InputAddress", "%1: \"%2\" is no port; ports are 1 to 65535").arg(text, port);
        return false;
    }
    if (udp && result.host.isEmpty())
        result.host = QLatin1String("0.0.0.0");
    if (udp && QHostAddress(result.host).isNull()) {
        *error = QCoreApplication::translate("InputAddress",
                                             "%1: \"%2\" is no address to listen on; it is written in numbers")
                     .arg(text, result.host);
        return false;
    }
    if (!udp && result.host.isEmpty()) {
        *error = QCoreApplication::translate("InputAddress", "%1: no host is named").arg(text);
        return false;
    }
    *address = result;
    return true;
}

QString InputAddress::toString() const
{
    switch (kind) {
    case StandardInput:
        return QLatin1String("-");
    case UdpListen:
        return QString::fromLatin1("udp:%1:%2").arg(bracketed(host)).arg(port);
    case TcpConnect:
        return QString::fromLatin1("tcp:%1:%2").arg(bracketed(host)).arg(port);
    case File:
    case WebSocket:
        break;
    }
    return path;
}
