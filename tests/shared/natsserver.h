#ifndef NATSSERVER_H
#define NATSSERVER_H

#include "testfolder.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

#include <utility>

#include <nats/nats.h>

/** A port of this machine that was free a moment ago. */
inline quint16 freeLoopbackPort()
{
    QTcpServer free;
    free.listen(QHostAddress::LocalHost);
    return free.serverPort();
}

/** A process of nats-server on a free port of this machine, which ends with this, or with the test. */
class NatsServer
{
public:
    /**
     * @param configuration  lines behind those of the port; "@" stands for the folder of the server
     * @param niceness       how far it gives way to other processes
     */
    explicit NatsServer(const QByteArray& configuration = QByteArray(), int niceness = 0)
        : m_niceness(niceness)
        , m_port(freeLoopbackPort())
    {
        QByteArray lines = configuration;
        lines.replace('@', m_folder.path().toUtf8());
        m_path = m_folder.write(QStringLiteral("server.conf"),
                                "listen: \"127.0.0.1:" + QByteArray::number(m_port) + "\"\n" + lines);
        start();
    }

    ~NatsServer() { kill(); }

    void start()
    {
        m_process.start(QStringLiteral("nice"),
                        {QStringLiteral("-n"), QString::number(m_niceness), QStringLiteral("setpriv"),
                         QStringLiteral("--pdeathsig"), QStringLiteral("KILL"), QStringLiteral(CORVEL_NATS_SERVER),
                         QStringLiteral("-c"), m_path});
        QElapsedTimer timer;
        timer.start();
        QTcpSocket probe;
        do {
            probe.abort();
            probe.connectToHost(QHostAddress::LocalHost, m_port);
        } while (!(probe.waitForConnected(100) && probe.waitForReadyRead(1000)) && timer.elapsed() < 10000);
    }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /** "127.0.0.1:PORT". */
    QString getHost() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }

private:
    TestFolder m_folder;
    QString m_path;
    QProcess m_process;
    const int m_niceness;
    const quint16 m_port;
};

/** A connection to one of the servers "HOST:PORT,HOST:PORT", which goes on with another; null where there is none. */
inline natsConnection* connectToNats(const QString& hosts)
{
    natsConnection* connection = nullptr;
    natsOptions* options = nullptr;
    natsOptions_Create(&options);
    QList<QByteArray> urls;
    for (const QString& host : hosts.split(QLatin1Char(',')))
        urls.append("nats://" + host.toUtf8());
    QVector<const char*> servers;
    for (const QByteArray& url : std::as_const(urls))
        servers.append(url.constData());
    natsOptions_SetServers(options, servers.data(), int(servers.size()));
    natsOptions_SetReconnectWait(options, 100);
    natsOptions_SetMaxReconnect(options, 1000);
    natsConnection_Connect(&connection, options);
    natsOptions_Destroy(options);
    return connection;
}

/** Somebody who publishes on servers, and keeps streams there. */
class NatsPublisher
{
public:
    typedef QVector<QPair<QByteArray, QByteArray>> Headers;

    explicit NatsPublisher(const QString& hosts)
        : m_connection(connectToNats(hosts))
    {
        natsConnection_JetStream(&m_stream, m_connection, nullptr);
    }

    ~NatsPublisher()
    {
        jsCtx_Destroy(m_stream);
        natsConnection_Destroy(m_connection);
    }

    /** Whether there is then a stream of a subject, which may take a while in a cluster. */
    bool addStream(const char* name, const char* subject, int replicas = 1,
                   jsRetentionPolicy retention = js_LimitsPolicy)
    {
        jsStreamConfig config;
        jsStreamConfig_Init(&config);
        config.Name = name;
        config.Subjects = &subject;
        config.SubjectsLen = 1;
        config.Replicas = replicas;
        config.Retention = retention;
        config.Storage = replicas > 1 ? js_FileStorage : js_MemoryStorage;
        natsStatus status = NATS_OK;
        QElapsedTimer timer;
        timer.start();
        do {
            status = js_AddStream(nullptr, m_stream, &config, nullptr, nullptr);
        } while (status != NATS_OK && timer.elapsed() < 30000);
        return status == NATS_OK;
    }

    /** The name of the server of a cluster that has the one consumer of a stream; empty for none. */
    QByteArray findConsumer(const char* name)
    {
        jsConsumerInfoList* consumers = nullptr;
        js_Consumers(&consumers, m_stream, name, nullptr, nullptr);
        const bool isOne = consumers && consumers->Count == 1 && consumers->List[0]->Cluster;
        const QByteArray server(isOne ? consumers->List[0]->Cluster->Leader : nullptr);
        jsConsumerInfoList_Destroy(consumers);
        return server;
    }

    /** Publishes, and waits until the server has it. */
    void publish(const QByteArray& subject, const QByteArray& payload, const Headers& headers = {})
    {
        natsMsg* const message = create(subject, payload, headers);
        natsConnection_PublishMsg(m_connection, message);
        natsConnection_Flush(m_connection);
        natsMsg_Destroy(message);
    }

    /** Whether it is in a stream then; @p id tells the server what it has already. */
    bool store(const QByteArray& subject, const QByteArray& payload, const Headers& headers = {},
               const QByteArray& id = QByteArray())
    {
        natsMsg* const message = create(subject, payload, headers);
        jsPubOptions options;
        jsPubOptions_Init(&options);
        options.MaxWait = 1000;
        options.MsgId = id.isEmpty() ? nullptr : id.constData();
        natsStatus status = NATS_OK;
        QElapsedTimer timer;
        timer.start();
        do {
            status = js_PublishMsg(nullptr, m_stream, message, &options, nullptr);
        } while (status != NATS_OK && !id.isEmpty() && timer.elapsed() < 30000);
        natsMsg_Destroy(message);
        return status == NATS_OK;
    }

private:
    static natsMsg* create(const QByteArray& subject, const QByteArray& payload, const Headers& headers)
    {
        natsMsg* message = nullptr;
        natsMsg_Create(&message, subject.constData(), nullptr, payload.constData(), int(payload.size()));
        for (const auto& header : headers)
            natsMsgHeader_Add(message, header.first.constData(), header.second.constData());
        return message;
    }

    natsConnection* const m_connection;
    jsCtx* m_stream = nullptr;
};

#endif
