#ifndef MQTTCLIENT_H
#define MQTTCLIENT_H

#include "mqttsetup.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

class MqttConnection;
class MqttQueue;
class QEventLoop;
class QThread;
struct Envelope;
struct mosquitto;
struct mosquitto_message;
struct mqtt5__property;

/** What reading from a broker needs. */
struct MqttSettings : MqttSetup
{
    QVector<QByteArray> filters;
};

/**
 * Reads topics of a broker on a thread of its own, until the connection is lost or this is destroyed.
 *
 * It only reads: with a session that ends with the connection, under a name of its own, without a will, and with a
 * quality of service for which a server keeps nothing. Where a session is named, the server keeps what comes meanwhile
 * and what was not confirmed, and what has no room in the queue waits there.
 */
class MqttClient
{
public:
    /** @param queue  takes what is received, and what becomes of the connection; must outlive this */
    MqttClient(const MqttSettings& settings, MqttQueue* queue);
    /** Waits for the thread. */
    ~MqttClient();

    /** Takes leave of the server soon. */
    void stop() { m_stopped = true; }
    /** With a session: lets what comes from now on wait at the server. */
    void hold() { m_isHeld = true; }
    /** With a session: the server need not give the first @p count messages again. Any thread. */
    void confirm(quint64 count) { m_confirmed = count; }

private:
    typedef std::chrono::steady_clock Clock;

    void run();
    void runWith(bool isFive);
    void followQueue();
    void subscribe(const QByteArray& filter);
    void askForSchemas();
    void fail(const QString& error);

    static void processSubscription(mosquitto*, void* self, int mid, int count, const int* codes,
                                    const mqtt5__property*);
    static void processMessage(mosquitto*, void* self, const mosquitto_message* message,
                               const mqtt5__property* properties);
    void readProperties(const mqtt5__property* properties, Envelope* envelope);
    void noteSchema(const Envelope& envelope);

    const MqttSettings m_settings;
    MqttQueue* const m_queue;
    std::atomic<bool> m_stopped{false};
    std::atomic<bool> m_isHeld{false};
    std::atomic<quint64> m_confirmed{0};

    // All that follows belongs to the thread.
    MqttConnection* m_connection = nullptr;
    QEventLoop* m_loop = nullptr;
    bool m_isFive = false; // whether it is tried with MQTT 5
    bool m_isAccepted = false;
    bool m_mayBeOlder = false;           // the server may understand an older protocol
    QString m_error;                     // why it is over
    std::map<int, QByteArray> m_pending; // filters by the numbers of their requests
    int m_granted = 0;
    std::vector<std::unique_ptr<char, void (*)(void*)>> m_texts; // of the message at hand
    std::set<std::string> m_schemas;                             // topics that were asked for
    std::vector<std::string> m_wanted;                           // those that are to be asked for
    std::map<std::string, Clock::time_point> m_awaited;          // since when

    std::unique_ptr<QThread> m_thread; // last, so that all is there for it
};

#endif
