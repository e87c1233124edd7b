#ifndef MOSQUITTOBROKER_H
#define MOSQUITTOBROKER_H

#include "testfolder.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

#include <atomic>
#include <thread>

#include <mosquitto.h>
#include <mqtt_protocol.h>

/** A process of mosquitto on a free port of this machine, which ends with this, and somebody who publishes there. */
class MosquittoBroker
{
public:
    typedef QVector<QPair<QByteArray, QByteArray>> Properties;

    /** @param configuration  lines behind that of the port */
    explicit MosquittoBroker(const QByteArray& configuration = "allow_anonymous true\n")
    {
        QTcpServer free;
        free.listen(QHostAddress::LocalHost);
        m_port = free.serverPort();
        free.close();
        const QString path =
            m_folder.write(QStringLiteral("broker.conf"),
                           "listener " + QByteArray::number(m_port) + " 127.0.0.1\nuser root\n" + configuration);
        m_process.start(QStringLiteral(CORVEL_MOSQUITTO), {QStringLiteral("-c"), path});
        QElapsedTimer timer;
        timer.start();
        QTcpSocket probe;
        do {
            probe.abort();
            probe.connectToHost(QHostAddress::LocalHost, m_port);
        } while (!probe.waitForConnected(100) && timer.elapsed() < 10000);
        mosquitto_lib_init();
        m_publisher = mosquitto_new(nullptr, true, this);
        mosquitto_int_option(m_publisher, MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
        mosquitto_publish_callback_set(
            m_publisher, [](mosquitto*, void* self, int) { ++static_cast<MosquittoBroker*>(self)->m_acknowledged; });
        mosquitto_loop_start(m_publisher);
    }

    ~MosquittoBroker()
    {
        mosquitto_disconnect(m_publisher);
        mosquitto_loop_stop(m_publisher, false);
        mosquitto_destroy(m_publisher);
        m_process.terminate();
        m_process.waitForFinished();
    }

    /** "127.0.0.1:PORT". */
    QString getHost() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    void kill() { m_process.kill(); }

    void publish(const QByteArray& topic, const QByteArray& payload, bool isKept = false,
                 const Properties& properties = {})
    {
        if (!m_isConnected)
            m_isConnected = mosquitto_connect(m_publisher, "127.0.0.1", m_port, 60) == MOSQ_ERR_SUCCESS;
        mosquitto_property* all = nullptr;
        for (const auto& property : properties) {
            if (property.first.isEmpty())
                mosquitto_property_add_string(&all, MQTT_PROP_CONTENT_TYPE, property.second.constData());
            else
                mosquitto_property_add_string_pair(&all, MQTT_PROP_USER_PROPERTY, property.first.constData(),
                                                   property.second.constData());
        }
        mosquitto_publish_v5(m_publisher, nullptr, topic.constData(), int(payload.size()), payload.constData(), 1,
                             isKept, all);
        mosquitto_property_free_all(&all);
        ++m_published;
        // What is kept has to be there when somebody comes.
        QElapsedTimer timer;
        timer.start();
        while (isKept && m_acknowledged < m_published && timer.elapsed() < 10000)
            std::this_thread::yield();
    }

private:
    TestFolder m_folder;
    QProcess m_process;
    quint16 m_port = 0;
    mosquitto* m_publisher = nullptr;
    bool m_isConnected = false;
    int m_published = 0;
    std::atomic<int> m_acknowledged{0};
};

#endif
