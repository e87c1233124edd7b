#ifndef FOXGLOVECLIENT_H
#define FOXGLOVECLIENT_H

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>

#include <deque>
#include <vector>

class QWebSocket;

/**
 * One program that is connected to a FoxgloveOutput: what it subscribed to, and what waits for it.
 *
 * What waits is bounded: the oldest data is dropped, counted, and the client is told so once a second at most. What
 * steers the connection is never dropped.
 */
class FoxgloveClient : public QObject
{
    Q_OBJECT

public:
    /** @param socket  taken over */
    FoxgloveClient(QWebSocket* socket, QObject* parent);
    ~FoxgloveClient() override;

    QString getName() const;
    void send(const QJsonObject& object);
    /** Tells of channels. What comes of them until the client has had time to subscribe waits for that. */
    void advertise(const QJsonArray& channels);
    /** Sends a message where the channel is subscribed to; how many others had to be dropped for it. */
    int sendMessage(quint32 channel, quint64 time, const QByteArray& data);
    /** Once a second: tells the client of what was dropped since the last call, and waits no longer for subscriptions.
     */
    void tick();
    /** Whether everything was handed to the system that it wants or may still want. */
    bool isIdle() const;

Q_SIGNALS:
    /** It wants messages of a channel; the answer is addSubscription() or refuse(). */
    void subscribed(quint32 subscription, quint32 channel);
    void gone();

public Q_SLOTS:
    void addSubscription(quint32 subscription, quint32 channel);
    void refuse(const QString& text);

private:
    struct Waiting
    {
        quint32 subscription;
        quint64 time;
        QByteArray data; // shared by all clients
    };

    /** What came of a channel that is not subscribed to yet. */
    struct Early
    {
        int ticks; // that it is still kept
        std::vector<Waiting> messages;
    };

    void processText(const QString& text);
    int append(const Waiting& waiting);
    void unsubscribe(quint32 subscription);
    void pump();

    QWebSocket* m_socket;
    QHash<quint32, quint32> m_channels;      // by subscription
    QHash<quint32, quint32> m_subscriptions; // by channel
    std::deque<Waiting> m_waiting;
    qint64 m_waitingBytes = 0;
    QHash<quint32, Early> m_early; // by channel
    qint64 m_earlyBytes = 0;
    quint64 m_dropped = 0; // since it was told
};

#endif
