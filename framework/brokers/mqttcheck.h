#ifndef MQTTCHECK_H
#define MQTTCHECK_H

#include <QString>

/**
 * Looks at what a server of MQTT sends before the client's library does, which trusts servers: whether packets are of
 * kinds that servers send, and what they say of their own lengths is true. It looks where bytes lie and keeps none.
 */
class MqttCheck
{
public:
    /** The size in bytes of the largest packet that is wanted; with MQTT 3.1.1, of those that are no messages. */
    static const int GreatestPacket = 16 * 1024 * 1024;

    /** @param isFive  whether MQTT 5 is spoken, or 3.1.1 */
    explicit MqttCheck(bool isFive)
        : m_isFive(isFive)
    {
    }

    /** How many of the bytes may be handed on: whole packets, and of a message as much of its payload as is there. The
     * others have to come again, with those behind them. -1 for what is wrong, when getError() says what; what came
     * before it is getChecked() bytes. */
    qint64 check(const char* data, qint64 size);

    /** How many bytes the packet has that begins at @p data; -1 where too few are there to tell. */
    static qint64 sizeOf(const char* data, qint64 size);

    qint64 getChecked() const { return m_checked; }
    QString getError() const { return m_error; }

private:
    qint64 checkHead(const char* data, qint64 size);
    bool checkBody(int type, const char* body, qint64 size);
    bool checkProperties(const char** at, const char* end);
    bool refuse(const char* text, const QString& value = QString());

    const bool m_isFive;
    bool m_isAnswered = false; // the wish to connect
    const char* m_name = "";   // of the packet at hand
    qint64 m_packets = 0;      // that began
    qint64 m_payload = 0;      // bytes of a message that are still to come
    qint64 m_needed = 0;       // bytes without which nothing more can be said of a packet
    qint64 m_checked = 0;      // of the last check
    QString m_error;
};

#endif
