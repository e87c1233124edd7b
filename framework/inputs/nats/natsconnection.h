#ifndef NATSCONNECTION_H
#define NATSCONNECTION_H

#include "natsmessage.h"
#include "streamdecoder.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <atomic>
#include <memory>
#include <vector>

struct NatsSettings;

/**
 * A connection to a NATS server, or to one after the other of a cluster.
 *
 * When it is lost, the client's library looks for a server until there is one, and subscriptions go on. Messages come
 * on threads of the library and wait here for one that takes them; there is an end to how many.
 */
class NatsConnection
{
public:
    struct Received
    {
        int channel; ///< that it was subscribed for
        qint64 time; ///< of arrival, nanoseconds since 1970
        NatsMessage message;
    };

    /** @param mostBytes  that messages which wait may need; what comes beyond is dropped */
    explicit NatsConnection(qint64 mostBytes);
    ~NatsConnection();

    /** Waits a few seconds, but not after @p cancelled was set; false with the reason in @p error. */
    bool open(const NatsSettings& settings, const std::atomic<bool>& cancelled, QString* error);

    /** Has messages of a subject come, which are said to be of a channel. */
    bool subscribe(int channel, const QByteArray& subject, QString* error);
    /** No message of the channel comes any more, not even one that waits. */
    void unsubscribe(int channel);
    /** Waits until the server knows of all subscriptions; as open(). */
    bool flush(const std::atomic<bool>& cancelled, QString* error);
    void publish(const QByteArray& subject, const QByteArray& data = QByteArray(),
                 const QByteArray& reply = QByteArray());
    /** A subject that nobody else has. */
    static QByteArray createInbox();

    /** Waits for messages; those of about 64 KiB, in the order in which they came. */
    std::vector<Received> take(int timeoutMs);
    /** Whether no message waits. */
    bool isEmpty() const;
    /** Ends a take() that waits; any thread. */
    void wake();

    bool isConnected() const;
    /** How many times a connection that was lost came about again. */
    int getReconnections() const;
    /** Milliseconds since something came for the channel, or it was subscribed. */
    qint64 getSilence(int channel) const;
    /** Whether there will be no connection any more; getError() tells why. */
    bool isOver() const;
    QString getError() const;
    qint64 getDroppedCount() const;
    /** What there is to tell since the last call. */
    QVector<StreamProblem> takeNotices();
    void addNotice(int level, const QString& text);

private:
    Q_DISABLE_COPY(NatsConnection)

    struct Shared;
    struct Callbacks;
    struct Subscription
    {
        natsSubscription* handle;
        quintptr listener;
    };

    bool findServer(const NatsSettings& settings, const std::atomic<bool>& cancelled, bool* wantsEncryption, int* first,
                    QString* error);
    bool connect(const NatsSettings& settings, bool isEncrypted, int first, const std::atomic<bool>& cancelled,
                 QString* error);
    natsStatus setOptions(natsOptions* options, const NatsSettings& settings, bool isEncrypted, int first);

    std::shared_ptr<Shared> m_shared;         // with the callbacks
    natsConnection* m_connection;             // null before it is open
    quintptr m_listener;                      // of what happens to the connection
    QHash<int, Subscription> m_subscriptions; // by channel
};

#endif
