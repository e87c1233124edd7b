#ifndef FOXGLOVESERVER_H
#define FOXGLOVESERVER_H

#include "mcapfixtures.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QWebSocket>
#include <QWebSocketServer>

#include <memory>

/** A Foxglove server for one client, which says and sends what a test wants. */
class FoxgloveServer
{
public:
    explicit FoxgloveServer(const QString& protocol)
        : m_server(QStringLiteral("test"), QWebSocketServer::NonSecureMode)
    {
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
        if (!protocol.isEmpty())
            m_server.setSupportedSubprotocols({protocol});
#else
        Q_UNUSED(protocol);
#endif
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QWebSocketServer::newConnection, &m_server, [this] { greet(); });
    }

    QString address() const
    {
        return QStringLiteral("ws://127.0.0.1:%1").arg(m_server.serverPort());
    }

    /** A channel of the type Point of @p package, see McapFixtures::schema(). */
    static QJsonObject channel(int id, const QString& topic, const QString& encoding = QStringLiteral("protobuf"),
                               const QString& package = QStringLiteral("demo"), const char* more = nullptr)
    {
        return QJsonObject{{QStringLiteral("id"), id},
                           {QStringLiteral("topic"), topic},
                           {QStringLiteral("encoding"), encoding},
                           {QStringLiteral("schemaName"), package + QStringLiteral(".Point")},
                           {QStringLiteral("schema"),
                            encoding == QLatin1String("protobuf")
                                ? QString::fromLatin1(McapFixtures::schema(package.toLatin1(), more).toBase64())
                                : QStringLiteral("{}")}};
    }

    void send(const QJsonObject& object)
    {
        m_socket->sendTextMessage(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    }
    void advertise(const QJsonArray& channels)
    {
        send({{QStringLiteral("op"), QStringLiteral("advertise")}, {QStringLiteral("channels"), channels}});
    }
    /** Sends the point @p n to the subscription of that number, at @p n milliseconds. */
    void sendPoint(int subscription, int n)
    {
        using namespace McapFixtures;
        m_socket->sendBinaryMessage(QByteArray(1, '\x01') + little(quint32(subscription)) +
                                    little(quint64(n) * Millisecond) + point(n));
    }
    /** The number of the subscription that came as the @p index-th, from 0, since the client connected. */
    int subscription(int index) const
    {
        return number(index, QStringLiteral("id"));
    }
    /** What it is a subscription of. */
    int channelOf(int index) const
    {
        return number(index, QStringLiteral("channelId"));
    }

    /** Null before there is a client. */
    QWebSocket* socket() const
    {
        return m_socket.get();
    }

    QJsonArray subscriptions; ///< since the client connected
    QString greeting = QStringLiteral("{\"op\":\"serverInfo\",\"name\":\"test\",\"capabilities\":[]}");
    int clients = 0; ///< that connected

private:
    void greet()
    {
        subscriptions = QJsonArray();
        ++clients;
        m_socket.reset(m_server.nextPendingConnection());
        QObject::connect(m_socket.get(), &QWebSocket::textMessageReceived, m_socket.get(), [this](const QString& text) {
            const QJsonObject request = QJsonDocument::fromJson(text.toUtf8()).object();
            for (const QJsonValue& wanted : request.value(QLatin1String("subscriptions")).toArray())
                subscriptions.append(wanted);
        });
        m_socket->sendTextMessage(greeting);
    }

    int number(int index, const QString& key) const
    {
        return subscriptions.at(index).toObject().value(key).toInt();
    }

    QWebSocketServer m_server;
    std::unique_ptr<QWebSocket> m_socket;
};

#endif
