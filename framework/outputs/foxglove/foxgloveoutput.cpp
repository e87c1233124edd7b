#include "foxgloveoutput.h"

#include "foxgloveclient.h"
#include "message.h"
#include "publishedstream.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QJsonObject>
#include <QWebSocket>

#include <algorithm>

namespace
{

const int GreatestClients = 32;
const int LongestEndMs = 2000;

bool check(OutputAddress* address, QString* reason)
{
    if (address->host.isEmpty() || address->host == QLatin1String("localhost"))
        address->host = QStringLiteral("127.0.0.1");
    if (QHostAddress(address->host).isNull())
        *reason = QCoreApplication::translate("Output", "\"%1\" is no address of this computer; 0.0.0.0 stands for all")
                      .arg(address->host);
    else if (!address->path.isEmpty())
        *reason = QCoreApplication::translate("Output", "nothing can stand behind the port");
    return reason->isEmpty();
}

MessageOutput* connectTo(const OutputAddress& address, const PublishedStream* stream)
{
    return new FoxgloveOutput(address, stream);
}

quint64 nanoseconds(const ReceivedMessage& message)
{
    return quint64(message.time) * 1000 + quint64(qMax<qint16>(0, message.timeRest));
}

} // namespace

const OutputKind FoxgloveOutputKind = {"foxglove",
                                       QT_TRANSLATE_NOOP("OutputKind", "WebSocket: a server for Foxglove clients"),
                                       "",
                                       1000,
                                       "foxglove:",
                                       "foxglove:[ADDRESS][:PORT]",
                                       "foxglove:0.0.0.0:8765",
                                       8765,
                                       0,
                                       "",
                                       "",
                                       check,
                                       nullptr,
                                       connectTo};

FoxgloveOutput::FoxgloveOutput(const OutputAddress& address, const PublishedStream* stream)
    : MessageOutput(stream)
    , m_stream(stream)
    , m_server(QStringLiteral("corvel-relay"), QWebSocketServer::NonSecureMode)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
    m_server.setSupportedSubprotocols({QStringLiteral("foxglove.sdk.v1"), QStringLiteral("foxglove.websocket.v1")});
#endif
    QObject::connect(&m_server, &QWebSocketServer::newConnection, &m_context, [this] { greet(); });
    if (!m_server.listen(QHostAddress(address.host), address.port))
        setError(QStringLiteral("%1: %2").arg(address.getName(), m_server.errorString()));
}

FoxgloveOutput::~FoxgloveOutput() {}

void FoxgloveOutput::setDecoder(const StreamDecoder* decoder)
{
    MessageOutput::setDecoder(decoder);
    m_stream = static_cast<const PublishedStream*>(decoder); // of which OutputKind::connect() has it
    m_ids.clear();
}

void FoxgloveOutput::greet()
{
    while (QWebSocket* const socket = m_server.nextPendingConnection()) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
        const bool isKnown = !socket->subprotocol().isEmpty();
#else
        const bool isKnown = true; // that Qt can neither ask nor answer
#endif
        if (!isKnown || int(m_clients.size()) >= GreatestClients) {
            addNotice(QCoreApplication::translate("Output", "%1 was refused: %2")
                          .arg(socket->peerAddress().toString(),
                               isKnown ? QCoreApplication::translate("Output", "there are too many clients")
                                       : QCoreApplication::translate("Output", "it speaks no protocol of Foxglove")));
            QObject::connect(socket, &QWebSocket::disconnected, socket, &QObject::deleteLater);
            socket->close(isKnown ? QWebSocketProtocol::CloseCodeGoingAway
                                  : QWebSocketProtocol::CloseCodeProtocolError);
            continue;
        }
        FoxgloveClient* const client = new FoxgloveClient(socket, &m_context);
        m_clients.push_back(client);
        addNotice(QCoreApplication::translate("Output", "%1 is connected").arg(client->getName()));
        QObject::connect(client, &FoxgloveClient::gone, &m_context, [this, client] { remove(client); });
        QObject::connect(client, &FoxgloveClient::subscribed, &m_context,
                         [this, client](quint32 subscription, quint32 channel) {
                             if (channel >= 1 && channel <= quint32(m_channels.size()))
                                 client->addSubscription(subscription, channel);
                             else
                                 client->refuse(QStringLiteral("there is no channel %1").arg(channel));
                         });
        client->send({{QStringLiteral("op"), QStringLiteral("serverInfo")},
                      {QStringLiteral("name"), QStringLiteral("corvel-relay")},
                      {QStringLiteral("capabilities"), QJsonArray()},
                      {QStringLiteral("supportedEncodings"), QJsonArray()},
                      {QStringLiteral("metadata"), QJsonObject()},
                      {QStringLiteral("sessionId"), m_stream->getRun()}});
        client->advertise(m_channels);
    }
}

void FoxgloveOutput::remove(FoxgloveClient* client)
{
    addNotice(QCoreApplication::translate("Output", "%1 is gone").arg(client->getName()));
    m_clients.erase(std::find(m_clients.begin(), m_clients.end(), client));
    client->deleteLater();
}

QJsonObject FoxgloveOutput::describe(quint32 id, const PublishedChannel& channel)
{
    // Clients expect one type of a topic.
    QString topic = channel.sender.isEmpty() ? channel.schema.name : channel.sender;
    if (channel.hasManyTypes)
        topic += QLatin1Char('/') + channel.schema.name;
    const TypeSchema& schema = channel.schema;
    const bool isText = schema.encoding != "protobuf" && schema.encoding != "flatbuffer";
    return {{QStringLiteral("id"), int(id)},
            {QStringLiteral("topic"), topic},
            {QStringLiteral("encoding"), QString::fromUtf8(schema.messageEncoding)},
            {QStringLiteral("schemaName"), schema.name},
            {QStringLiteral("schemaEncoding"), QString::fromUtf8(schema.encoding)},
            {QStringLiteral("schema"),
             isText ? QString::fromUtf8(schema.data) : QString::fromLatin1(schema.data.toBase64())}};
}

/** The id of a channel of the stream, which is advertised when it is new. */
quint32 FoxgloveOutput::channelOf(quint32 number)
{
    quint32& id = m_ids[number];
    if (id != 0)
        return id;
    PublishedChannel channel = m_stream->getChannel(number);
    channel.number = 0;
    quint32& known = m_idsByContent[PublishedStream::channelRecord(channel)];
    if (known == 0) {
        known = quint32(m_channels.size()) + 1;
        m_channels.append(describe(known, channel));
        for (FoxgloveClient* client : m_clients)
            client->advertise({m_channels.last()});
    }
    id = known;
    return id;
}

void FoxgloveOutput::processReceived(const ReceivedMessage& message)
{
    const quint32 channel = channelOf(message.id);
    if (m_clients.empty())
        return;
    const QByteArray data(message.data, message.size);
    for (FoxgloveClient* client : m_clients)
        addDropped(quint64(client->sendMessage(channel, nanoseconds(message), data)));
}

void FoxgloveOutput::flush()
{
    for (FoxgloveClient* client : m_clients)
        client->tick();
}

void FoxgloveOutput::close()
{
    m_server.close();
    QElapsedTimer since;
    since.start();
    const auto isIdle = [](const FoxgloveClient* client) { return client->isIdle(); };
    while (!std::all_of(m_clients.begin(), m_clients.end(), isIdle) && !since.hasExpired(LongestEndMs))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    for (FoxgloveClient* client : m_clients)
        delete client;
    m_clients.clear();
}
