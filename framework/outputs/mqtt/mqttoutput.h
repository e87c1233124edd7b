#ifndef MQTTOUTPUT_H
#define MQTTOUTPUT_H

#include "cloudevent.h"
#include "messageoutput.h"
#include "mqttpublisher.h"
#include "outputkind.h"

#include <QHash>
#include <QSet>

#include <deque>
#include <memory>

class PublishedStream;

extern const OutputKind MqttOutputKind;
extern const OutputKind MqttsOutputKind;

/**
 * Publishes messages through a broker of MQTT 5, as events of CloudEvents (docs/brokers.md), with a quality of service
 * of 1: what the broker has not confirmed is published again after a reconnection, with the same id. Schemas are
 * messages that the broker keeps; they go out once in each connection, before the first message that needs them.
 */
class MqttOutput : public MessageOutput
{
public:
    MqttOutput(const OutputAddress& address, const PublishedStream* stream);
    ~MqttOutput() override;

    void setDecoder(const StreamDecoder* decoder) override;
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}
    void flush() override;
    void close() override;
    bool isReady() const override;
    quint64 getPendingCount() const override { return quint64(m_pending.size()); }

private:
    struct Pending
    {
        std::shared_ptr<const CloudEvent> event;
        QByteArray id;
        QByteArray time;
        QByteArray payload;
        bool isDone;
    };

    std::shared_ptr<const CloudEvent> eventOf(quint32 channel);
    void publish(std::size_t place);
    void publishSchema(const CloudEvent& event);
    void resume();
    void noteArrival(int number, const QString& refusal);
    void refuse(const Pending& pending, const QString& reason);
    void popDone();

    const PublishedStream* m_stream;
    CloudEvent::Topics m_topics;
    std::unique_ptr<MqttPublisher> m_publisher;
    QHash<quint32, std::shared_ptr<const CloudEvent>> m_events; // by channel
    std::deque<Pending> m_pending;
    QSet<QByteArray> m_schemas;    // topics, in this connection
    QHash<int, quint64> m_numbers; // places in m_pending, from the first that ever was, by the broker's numbers
    quint64 m_popped = 0;
    QString m_refusal; // that was told last
};

#endif
