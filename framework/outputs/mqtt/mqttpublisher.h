#ifndef MQTTPUBLISHER_H
#define MQTTPUBLISHER_H

#include "mqttsetup.h"

#include <QElapsedTimer>
#include <QPair>
#include <QStringList>
#include <QTimer>
#include <QVector>

#include <memory>

class MqttConnection;
struct mosquitto;
struct mqtt5__property;

/**
 * A connection to a broker that is made again when it was lost, after a pause that grows; on a thread with an event
 * loop. It only publishes.
 */
class MqttPublisher : public QObject
{
    Q_OBJECT

public:
    typedef QVector<QPair<QByteArray, QByteArray>> Properties;

    MqttPublisher(const MqttSetup& setup, QObject* parent = nullptr);
    ~MqttPublisher() override;

    bool isConnected() const { return m_isConnected; }

    /**
     * Hands a message to the broker, which says with arrived() when it has it.
     *
     * @return its number; 0 when there is no connection, or when it can never be published, with @p error set
     */
    int publish(const QByteArray& topic, const QByteArray& payload, bool isKept, const QByteArray& contentType,
                const Properties& properties, QString* error);

    /** Hands out what is waiting, and ends the connection. */
    void disconnect();

Q_SIGNALS:
    /** A connection is there; what was not confirmed before it has to be published again. */
    void connected();
    void lost();
    /** The broker has the message of that number, or refuses it for a reason. */
    void arrived(int number, const QString& refusal);
    void told(const QString& text);

private:
    void look();
    void connectNow();
    void begin();
    void lose(const QString& reason);

    static void processPublished(mosquitto*, void* self, int number, int code, const mqtt5__property*);

    const MqttSetup m_setup;
    std::unique_ptr<MqttConnection> m_connection; // null while none is tried
    bool m_isConnected = false;
    QString m_lastTold;
    int m_pauseMs = 0;
    QElapsedTimer m_since; // the last try began, or failed
    QTimer m_timer;
};

#endif
