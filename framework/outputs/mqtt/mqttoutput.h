#ifndef MQTTOUTPUT_H
#define MQTTOUTPUT_H

#include "eventoutput.h"
#include "mqttpublisher.h"
#include "outputkind.h"

#include <QHash>
#include <QSet>

#include <memory>

class PublishedStream;

extern const OutputKind MqttOutputKind;
extern const OutputKind MqttsOutputKind;

/**
 * Publishes messages through a broker of MQTT 5, as events of CloudEvents (docs/brokers.md), with a quality of service
 * of 1: what the broker has not confirmed is published again after a reconnection, with the same id. Schemas are
 * messages that the broker keeps; they go out once in each connection, before the first message that needs them.
 */
class MqttOutput : public EventOutput
{
public:
    MqttOutput(const OutputAddress& address, const PublishedStream* stream);
    ~MqttOutput() override;

    void close() override;
    bool isReady() const override;

private:
    void publish(std::size_t place) override;
    void publishSchema(const CloudEvent& event);
    void resume();
    void noteArrival(int number, const QString& refusal);
    void refuse(const Pending& pending, const QString& reason);

    std::unique_ptr<MqttPublisher> m_publisher;
    QSet<QByteArray> m_schemas;    // topics, in this connection
    QHash<int, quint64> m_numbers; // places in m_pending, from the first that ever was, by the broker's numbers
    QString m_refusal;             // that was told last
};

#endif
