#ifndef MQTTCONNECTION_H
#define MQTTCONNECTION_H

#include "mqttcheck.h"

#include <QByteArray>
#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <deque>
#include <memory>

class QTcpSocket;
struct MqttSetup;
struct mosquitto;
struct mqtt5__property;

/**
 * One connection to a broker, on a thread with an event loop.
 *
 * The client's library does not have it itself, because it ends the program for some of what a server can send. It is
 * connected to a socket of this machine, to which whole checked blocks are handed on (MqttCheck); what it sends goes
 * out as it is.
 */
class MqttConnection : public QObject
{
    Q_OBJECT

public:
    /** @param setup  must outlive this; so must @p owner, which getOwner() gives to callbacks */
    MqttConnection(const MqttSetup& setup, bool isFive, void* owner, QObject* parent = nullptr);
    ~MqttConnection() override;

    /** Begins; what becomes of it the signals say. */
    void open();
    /** The library's client, with callbacks of this for the beginning and the end; the others are for the owner to set
     * before open(). */
    mosquitto* getClient() const { return m_client; }
    /** The owner of the connection that the library calls back with @p self. */
    template <class Owner>
    static Owner* ownerOf(void* self)
    {
        return static_cast<Owner*>(static_cast<MqttConnection*>(self)->m_owner);
    }

    /** Whether the server may understand an older protocol: it said so, or nothing that makes sense. */
    bool mayBeOlder() const { return m_mayBeOlder; }

    /** To be called when the library was given something to send. */
    void send();
    /**
     * With a session, has the server hear of the first @p count messages, since there is the connection, that it wants
     * to be confirmed. The library confirms a message before anybody has it; that is held back here, in its order.
     */
    void confirm(quint64 count);
    /** Lets what comes wait at the server, or go on. */
    void setPaused(bool paused);
    /** Sends what is there, takes leave of the server and says nothing more. */
    void close();

Q_SIGNALS:
    /** The server takes us. In a callback of the library. */
    void accepted();
    /** Something came, and was dealt with. */
    void handled();
    /** It is over, for a reason; once, and not from within a call. */
    void ended(const QString& reason);

private:
    bool encrypt(QString* error);
    void establish();
    void processError();
    void handOn();
    void passOut();
    void holdConfirmations(const QByteArray& block);
    void cut(const QString& reason);
    void end(const QString& reason);
    QString reasonOf(int code) const;
    void read();
    static void processConnection(mosquitto*, void* self, int code, int flags, const mqtt5__property*);
    static void processEnd(mosquitto*, void* self, int code, const mqtt5__property*);

    const MqttSetup& m_setup;
    const bool m_isFive;
    void* const m_owner;
    mosquitto* m_client;
    QTcpSocket* m_socket; // to the server; a child of this
    MqttCheck m_check;
    QLocalServer m_door;
    QLocalSocket* m_pipe = nullptr;   // to the library; a child of m_door
    QByteArray m_sent;                // by the library, that is no whole packet yet
    std::deque<QByteArray> m_unheard; // confirmations that are held back
    quint64 m_confirmed = 0;          // how many went out
    QByteArray m_block;               // what came; its first m_held bytes are there and not handed on
    qint64 m_held = 0;
    bool m_isCut = false; // the server sends nothing more
    QString m_reason;     // why
    bool m_isEnded = false;
    bool m_mayBeOlder = false;
    QTimer m_timer;
    std::unique_ptr<QSocketNotifier> m_reader; // of the library's end
    std::unique_ptr<QSocketNotifier> m_writer;
};

#endif
