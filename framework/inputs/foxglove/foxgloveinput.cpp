#include "foxgloveinput.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QtEndian>
#include <QTimer>
#include <QWebSocket>

#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
#include <QWebSocketHandshakeOptions>
#endif

namespace
{

const int ConnectTimeoutMs = 5000;
const int CancelCheckMs = 50;
const int GreatestPiece = 1 << 20;
const quint64 GreatestMessage = quint64(128) << 20;

const char Protocols[] = "foxglove.sdk.v1, foxglove.websocket.v1";

const quint8 MessageData = 1;
const int MessageDataHead = 1 + 4 + 8;
const int WarnLevel = 1;
const int ErrorLevel = 2;
const int GreatestStatus = 1000;
const int MostNotices = 1000;

// Qt takes the wanted protocols as an option since 6.4 and as a header before.
void openSocket(QWebSocket* socket, const QUrl& url)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
    QWebSocketHandshakeOptions options;
    options.setSubprotocols(QString::fromLatin1(Protocols).split(QStringLiteral(", ")));
    socket->open(url, options);
#else
    QNetworkRequest request(url);
    request.setRawHeader("Sec-WebSocket-Protocol", Protocols);
    socket->open(request);
#endif
}

McapWriter::Settings streamSettings()
{
    McapWriter::Settings settings;
    settings.chunkSize = 0; // as soon as it comes
    return settings;
}

QByteArray keyOf(const QByteArrayList& parts)
{
    QByteArray key;
    for (const QByteArray& part : parts)
        key += QByteArray::number(part.size()) + ':' + part;
    return key;
}

/** The encoding of schemas where a channel names only that of its messages. */
QByteArray usualSchemaEncoding(const QByteArray& encoding)
{
    return encoding == "json"   ? QByteArray("jsonschema")
           : encoding == "ros1" ? QByteArray("ros1msg")
           : encoding == "cdr"  ? QByteArray("ros2msg")
                                : encoding;
}

bool isBinary(const QByteArray& schemaEncoding)
{
    return schemaEncoding == "protobuf" || schemaEncoding == "flatbuffer";
}

const quint16 DefaultPort = 8765;

bool check(InputAddress* address, QString* reason)
{
    QUrl url(address->path, QUrl::StrictMode);
    *reason = QCoreApplication::translate("InputAddress", "this is no address; ws://HOST:PORT is one");
    if (!url.isValid() || url.host().isEmpty() || url.port() == 0)
        return false;
    if (url.port() < 0)
        url.setPort(DefaultPort);
    address->path = url.toString(QUrl::FullyEncoded);
    address->host = url.host();
    address->port = quint16(url.port());
    return true;
}

ByteInput* create(const InputAddress& address)
{
    return new FoxgloveInput(address);
}

const InputField Fields[] = {{"path", QT_TRANSLATE_NOOP("InputKind", "&Address:"),
                              QT_TRANSLATE_NOOP("InputKind", "The address of the server; wss:// is encrypted"),
                              "ws://localhost:8765", InputField::TextEditor, nullptr, false},
                             {}};

} // namespace

const InputKind FoxgloveInputKind = {"ws:// wss://",
                                     QT_TRANSLATE_NOOP("InputKind", "WebSocket: a Foxglove server"),
                                     "ws://HOST[:PORT][/PATH]",
                                     "ws://localhost:8765",
                                     DefaultPort,
                                     InputKind::LiveProperty | InputKind::WholeUrlProperty,
                                     "mcap",
                                     Fields,
                                     check,
                                     create};

FoxgloveInput::FoxgloveInput(const InputAddress& address)
    : ByteInput(address.toString())
    , m_address(address)
    , m_cancelled(false)
    , m_loop(nullptr)
    , m_quitting(false)
    , m_writer(&m_buffer, streamSettings())
    , m_lastSubscription(0)
    , m_greeted(false)
    , m_ended(false)
{
}

FoxgloveInput::~FoxgloveInput() {}

bool FoxgloveInput::open()
{
    m_buffer.open(QIODevice::WriteOnly);
    m_writer.open();
    m_socket.reset(new QWebSocket);
    m_socket->setProxy(QNetworkProxy::NoProxy);
    m_socket->setMaxAllowedIncomingMessageSize(GreatestMessage);
    m_socket->setMaxAllowedIncomingFrameSize(GreatestMessage);
    QObject::connect(m_socket.get(), &QWebSocket::textMessageReceived, m_socket.get(),
                     [this](const QString& text) { processText(text); });
    QObject::connect(m_socket.get(), &QWebSocket::binaryMessageReceived, m_socket.get(),
                     [this](const QByteArray& frame) { processData(frame); });
    openSocket(m_socket.get(), QUrl(m_address.path, QUrl::StrictMode));

    // Whoever does not say who he is speaks something else.
    QElapsedTimer timer;
    timer.start();
    while (!m_greeted && m_refusal.isEmpty() && !m_cancelled && timer.elapsed() < ConnectTimeoutMs &&
           m_socket->state() != QAbstractSocket::UnconnectedState)
        wait(int(ConnectTimeoutMs - timer.elapsed()));
    if (m_greeted)
        return true;
    if (m_cancelled)
        setError(QCoreApplication::translate("FoxgloveInput", "cancelled"));
    else if (!m_refusal.isEmpty())
        setError(m_refusal);
    else if (m_socket->state() == QAbstractSocket::ConnectedState)
        setError(QCoreApplication::translate("FoxgloveInput",
                                             "it does not speak the Foxglove protocol: no greeting within %1 s")
                     .arg(ConnectTimeoutMs / 1000));
    else if (m_socket->state() == QAbstractSocket::UnconnectedState)
        setError(m_socket->errorString());
    else
        setError(QCoreApplication::translate("FoxgloveInput", "no answer within %1 s").arg(ConnectTimeoutMs / 1000));
    m_socket->abort();
    return false;
}

void FoxgloveInput::wait(int timeoutMs)
{
    QEventLoop loop;
    QTimer timeout;
    QTimer check;
    timeout.setSingleShot(true);
    QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&check, &QTimer::timeout, &loop, [this, &loop] {
        if (m_cancelled || m_socket->state() == QAbstractSocket::UnconnectedState)
            loop.quit();
    });
    QObject::connect(m_socket.get(), &QWebSocket::disconnected, &loop, &QEventLoop::quit);
    timeout.start(timeoutMs);
    check.start(CancelCheckMs);
    m_loop = &loop;
    m_quitting = false;
    loop.exec();
    m_loop = nullptr;
}

ByteInput::Status FoxgloveInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    if (m_cancelled)
        return Nothing;
    if (m_buffer.buffer().isEmpty() && !m_ended) {
        if (m_socket->state() != QAbstractSocket::UnconnectedState && m_refusal.isEmpty())
            wait(timeoutMs);
        if (m_cancelled)
            return Nothing;
        if (m_socket->state() == QAbstractSocket::UnconnectedState || !m_refusal.isEmpty())
            end();
    }
    if (!m_buffer.buffer().isEmpty()) {
        *bytes = m_buffer.buffer();
        m_buffer.buffer().clear();
        m_buffer.seek(0);
        return Data;
    }
    if (!m_ended)
        return Nothing;
    return getErrorString().isEmpty() ? End : Failed;
}

/** The connection is over: what is handed on becomes a finished recording. */
void FoxgloveInput::end()
{
    m_ended = true;
    m_writer.close();
    const QWebSocketProtocol::CloseCode code = m_socket->closeCode();
    if (!m_refusal.isEmpty())
        setError(m_refusal);
    else if (code != QWebSocketProtocol::CloseCodeNormal && code != QWebSocketProtocol::CloseCodeGoingAway)
        setError(!m_lastStatus.isEmpty()             ? m_lastStatus
                 : m_socket->closeReason().isEmpty() ? m_socket->errorString()
                                                     : m_socket->closeReason());
    m_socket->abort();
}

void FoxgloveInput::refuse(const QString& reason)
{
    if (m_refusal.isEmpty())
        m_refusal = reason;
    if (m_loop)
        m_loop->quit();
}

void FoxgloveInput::processText(const QString& text)
{
    QJsonParseError error;
    // The parser drops a U+FEFF that a string begins with, unless it is written as an escape.
    const QString escaped = QString(text).replace(QChar(0xfeff), QLatin1String("\\ufeff"));
    const QJsonObject object = QJsonDocument::fromJson(escaped.toUtf8(), &error).object();
    const QString operation = object.value(QLatin1String("op")).toString();
    if (operation.isEmpty()) {
        refuse(QCoreApplication::translate("FoxgloveInput", "it does not speak the Foxglove protocol"));
    } else if (operation == QLatin1String("serverInfo")) {
        m_greeted = true;
        if (m_loop)
            m_loop->quit();
    } else if (operation == QLatin1String("advertise")) {
        for (const QJsonValue& channel : object.value(QLatin1String("channels")).toArray())
            advertise(channel.toObject());
        if (m_loop)
            m_loop->quit();
    } else if (operation == QLatin1String("unadvertise")) {
        for (const QJsonValue& channel : object.value(QLatin1String("channelIds")).toArray())
            unadvertise(quint32(channel.toDouble()));
    } else if (operation == QLatin1String("status")) {
        takeStatus(object);
    }
}

void FoxgloveInput::takeStatus(const QJsonObject& status)
{
    const int level = status.value(QLatin1String("level")).toInt();
    const QString text = status.value(QLatin1String("message")).toString().left(GreatestStatus);
    if (level >= ErrorLevel)
        m_lastStatus = text;
    StreamProblem notice;
    notice.kind = StreamProblem::ServerNotice;
    notice.id = quint32(qBound(0, level, ErrorLevel));
    notice.text = level >= ErrorLevel  ? QStringLiteral("error: ") + text
                  : level == WarnLevel ? QStringLiteral("warning: ") + text
                                       : text;
    if (m_notices.size() < MostNotices)
        m_notices.append(notice);
    if (m_loop)
        m_loop->quit();
}

QVector<StreamProblem> FoxgloveInput::takeNotices()
{
    QVector<StreamProblem> notices;
    notices.swap(m_notices);
    return notices;
}

void FoxgloveInput::advertise(const QJsonObject& channel)
{
    const quint32 id = quint32(channel.value(QLatin1String("id")).toDouble());
    const QByteArray topic = channel.value(QLatin1String("topic")).toString().toUtf8();
    const QByteArray encoding = channel.value(QLatin1String("encoding")).toString().toUtf8();
    const QByteArray schemaName = channel.value(QLatin1String("schemaName")).toString().toUtf8();
    QByteArray schemaEncoding = channel.value(QLatin1String("schemaEncoding")).toString().toUtf8();
    QByteArray schema = channel.value(QLatin1String("schema")).toString().toUtf8();
    if (schemaEncoding.isEmpty())
        schemaEncoding = usualSchemaEncoding(encoding);
    if (isBinary(schemaEncoding))
        schema = QByteArray::fromBase64(schema);

    const QByteArray schemaKey = keyOf({schemaName, schemaEncoding, schema});
    if (!schema.isEmpty() && !m_schemas.contains(schemaKey))
        m_schemas.insert(schemaKey, m_writer.addSchema(schemaName, schemaEncoding, schema));
    const quint16 schemaNumber = m_schemas.value(schemaKey);
    const QByteArray channelKey = keyOf({topic, encoding, QByteArray::number(schemaNumber)});
    if (!m_channels.contains(channelKey))
        m_channels.insert(channelKey, m_writer.addChannel(topic, encoding, schemaNumber));
    const quint16 number = m_channels.value(channelKey);
    if (number == 0)
        return; // one of too many: nothing can be said about its messages

    unadvertise(id);
    const quint32 subscription = ++m_lastSubscription;
    m_subscriptions.insert(id, subscription);
    m_subscribedChannel.insert(subscription, number);
    const QJsonObject wanted{{QStringLiteral("id"), double(subscription)}, {QStringLiteral("channelId"), double(id)}};
    const QJsonObject request{{QStringLiteral("op"), QStringLiteral("subscribe")},
                              {QStringLiteral("subscriptions"), QJsonArray{wanted}}};
    m_socket->sendTextMessage(QString::fromUtf8(QJsonDocument(request).toJson(QJsonDocument::Compact)));
}

void FoxgloveInput::unadvertise(quint32 channel)
{
    m_subscribedChannel.remove(m_subscriptions.take(channel));
}

void FoxgloveInput::processData(const QByteArray& frame)
{
    if (frame.size() < MessageDataHead || quint8(frame.at(0)) != MessageData)
        return;
    const quint16 channel = m_subscribedChannel.value(qFromLittleEndian<quint32>(frame.constData() + 1));
    // What was sent before the server knew that it is not wanted any more.
    if (channel == 0)
        return;
    m_writer.writeMessage(channel, 0, qFromLittleEndian<quint64>(frame.constData() + 5),
                          frame.constData() + MessageDataHead, int(frame.size()) - MessageDataHead);
    // Not before what has arrived meanwhile was taken too: a loop for each message would be slow.
    if (m_loop && m_buffer.buffer().size() >= GreatestPiece)
        m_loop->quit();
    else if (m_loop && !m_quitting)
        QTimer::singleShot(0, m_loop, &QEventLoop::quit);
    m_quitting = true;
}
