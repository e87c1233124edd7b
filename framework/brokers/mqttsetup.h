#ifndef MQTTSETUP_H
#define MQTTSETUP_H

#include "brokeraccess.h"

struct mosquitto;

/** What a connection to a broker of MQTT needs, whoever makes it. */
struct MqttSetup : BrokerAccess
{
    /** As BrokerAccess::read(), with the environment variable CORVEL_MQTT_PASSWORD. */
    bool read(const QMap<QString, QString>& parameters, QString* error);

    /** A client of the library for it, under the name of the session or one that no other has; to be destroyed with
     * mosquitto_destroy(). Where to connect to, and what is encrypted, is left to MqttConnection. */
    mosquitto* createClient(int version, void* self) const;

    /** Why a connection, a subscription or a message is refused; codes are those of MQTT 5, or of 3.1.1 with @p isOld.
     */
    static QString refusal(int code, bool isOld);
    /** What an error of the library means. */
    static QString errorText(int code);

    QByteArray host;
    quint16 port = 0;
    bool isEncrypted = false;
    QByteArray session; ///< a name under which the server keeps what comes meanwhile; empty for none
};

#endif
