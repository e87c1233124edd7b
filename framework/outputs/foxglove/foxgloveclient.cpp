#include "foxgloveclient.h"

#include <QHostAddress>
#include <QJsonDocument>
#include <QtEndian>
#include <QWebSocket>

namespace
{

const qint64 GreatestWaiting = 64 * 1024 * 1024;
// As much as the socket is given at once: it has no bound of its own.
const qint64 GreatestUnsent = 256 * 1024;
const int GreatestSubscriptions = 10000;
const int GreatestClientFrame = 1024 * 1024;
const int FrameHead = 1 + 4 + 8;
const int EarlyTicks = 2;

enum Level
{
    Warning = 1,
    Error = 2
};

bool readNumber(const QJsonValue& value, quint32* number)
{
    const double read = value.toDouble(-1);
    *number = quint32(qBound(0., read, 4294967295.));
    return double(*number) == read;
}

QJsonObject status(Level level, const QString& text)
{
    return {{QStringLiteral("op"), QStringLiteral("status")},
            {QStringLiteral("level"), int(level)},
            {QStringLiteral("message"), text}};
}

} // namespace

FoxgloveClient::FoxgloveClient(QWebSocket* socket, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
{
    m_socket->setParent(this);
    m_socket->setMaxAllowedIncomingFrameSize(GreatestClientFrame);
    m_socket->setMaxAllowedIncomingMessageSize(GreatestClientFrame);
    connect(m_socket, &QWebSocket::textMessageReceived, this, &FoxgloveClient::processText);
    connect(m_socket, &QWebSocket::binaryMessageReceived, this,
            [this] { refuse(QStringLiteral("this server takes no messages")); });
    connect(m_socket, &QWebSocket::bytesWritten, this, &FoxgloveClient::pump);
    connect(m_socket, &QWebSocket::disconnected, this, &FoxgloveClient::gone);
}

FoxgloveClient::~FoxgloveClient()
{
    m_socket->disconnect(this);
}

QString FoxgloveClient::getName() const
{
    return m_socket->peerAddress().toString() + QLatin1Char(':') + QString::number(m_socket->peerPort());
}

void FoxgloveClient::send(const QJsonObject& object)
{
    m_socket->sendTextMessage(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

void FoxgloveClient::refuse(const QString& text)
{
    send(status(Error, text));
}

void FoxgloveClient::processText(const QString& text)
{
    const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
    const QString op = object.value(QLatin1String("op")).toString();
    quint32 subscription = 0;
    quint32 channel = 0;
    if (op == QLatin1String("subscribe")) {
        for (const QJsonValue value : object.value(QLatin1String("subscriptions")).toArray()) {
            const QJsonObject wish = value.toObject();
            if (!readNumber(wish.value(QLatin1String("id")), &subscription) ||
                !readNumber(wish.value(QLatin1String("channelId")), &channel))
                refuse(QStringLiteral("a subscription needs the numbers id and channelId"));
            else if (m_channels.contains(subscription) || m_subscriptions.contains(channel))
                refuse(QStringLiteral("subscription %1 to channel %2: there is one already")
                           .arg(subscription)
                           .arg(channel));
            else if (m_channels.size() >= GreatestSubscriptions)
                refuse(QStringLiteral("there are too many subscriptions"));
            else
                Q_EMIT subscribed(subscription, channel);
        }
    } else if (op == QLatin1String("unsubscribe")) {
        for (const QJsonValue value : object.value(QLatin1String("subscriptionIds")).toArray())
            if (readNumber(value, &subscription))
                unsubscribe(subscription);
    } else {
        refuse(op.isEmpty() ? QStringLiteral("this is no request") : QStringLiteral("this server has no %1").arg(op));
    }
}

void FoxgloveClient::addSubscription(quint32 subscription, quint32 channel)
{
    m_channels.insert(subscription, channel);
    m_subscriptions.insert(channel, subscription);
    for (Waiting& waiting : m_early.take(channel).messages) {
        m_earlyBytes -= waiting.data.size();
        waiting.subscription = subscription;
        m_dropped += quint64(append(waiting));
    }
}

void FoxgloveClient::unsubscribe(quint32 subscription)
{
    if (m_channels.contains(subscription))
        m_subscriptions.remove(m_channels.take(subscription));
}

int FoxgloveClient::sendMessage(quint32 channel, quint64 time, const QByteArray& data)
{
    const auto subscription = m_subscriptions.constFind(channel);
    if (subscription != m_subscriptions.constEnd()) {
        const int dropped = append(Waiting{*subscription, time, data});
        m_dropped += quint64(dropped);
        return dropped;
    }
    const auto early = m_early.find(channel);
    if (early != m_early.end() && m_earlyBytes + data.size() < GreatestWaiting) {
        early->messages.push_back(Waiting{0, time, data});
        m_earlyBytes += data.size();
    }
    return 0;
}

/** How many others had to be dropped for it. */
int FoxgloveClient::append(const Waiting& waiting)
{
    m_waiting.push_back(waiting);
    m_waitingBytes += FrameHead + waiting.data.size();
    int dropped = 0;
    while (m_waitingBytes > GreatestWaiting && m_waiting.size() > 1) {
        m_waitingBytes -= FrameHead + m_waiting.front().data.size();
        m_waiting.pop_front();
        ++dropped;
    }
    pump();
    return dropped;
}

void FoxgloveClient::pump()
{
    while (!m_waiting.empty() && m_socket->bytesToWrite() < GreatestUnsent) {
        const Waiting waiting = m_waiting.front();
        m_waiting.pop_front();
        m_waitingBytes -= FrameHead + waiting.data.size();
        QByteArray frame(FrameHead, '\x01');
        qToLittleEndian(waiting.subscription, frame.data() + 1);
        qToLittleEndian(waiting.time, frame.data() + 5);
        m_socket->sendBinaryMessage(frame + waiting.data);
    }
}

void FoxgloveClient::advertise(const QJsonArray& channels)
{
    for (const QJsonValue channel : channels)
        m_early.insert(quint32(channel.toObject().value(QLatin1String("id")).toInt()), Early{EarlyTicks, {}});
    send({{QStringLiteral("op"), QStringLiteral("advertise")}, {QStringLiteral("channels"), channels}});
}

void FoxgloveClient::tick()
{
    for (auto early = m_early.begin(); early != m_early.end();) {
        if (--early->ticks > 0) {
            ++early;
            continue;
        }
        for (const Waiting& waiting : early->messages)
            m_earlyBytes -= waiting.data.size();
        early = m_early.erase(early);
    }
    if (m_dropped > 0)
        send(status(Warning,
                    QStringLiteral("%1 messages were dropped: they come faster than they are read").arg(m_dropped)));
    m_dropped = 0;
}

bool FoxgloveClient::isIdle() const
{
    return m_waiting.empty() && m_earlyBytes == 0 && m_socket->bytesToWrite() == 0;
}
