#ifndef MQTTINPUT_H
#define MQTTINPUT_H

#include "byteinput.h"
#include "inputkind.h"
#include "mqttqueue.h"

#include <atomic>
#include <memory>

class MqttClient;
struct MqttSettings;

extern const InputKind MqttInputKind;
extern const InputKind MqttsInputKind;

/** Reads topics of an MQTT broker and hands them on as envelopes. Speaks MQTT 5, or 3.1.1 with a server that has no
 * other. */
class MqttInput : public ByteInput
{
public:
    explicit MqttInput(const InputAddress& address);
    ~MqttInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override;
    void finish() override;
    bool isLive() const override { return true; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return -1; }
    qint64 getDroppedCount() const override { return m_queue.getDroppedCount(); }
    QVector<StreamProblem> takeNotices() override { return m_queue.takeNotices(); }

private:
    bool readSettings(MqttSettings* settings);

    const InputAddress m_address;
    std::atomic<bool> m_cancelled;
    std::atomic<bool> m_isFinished;
    MqttQueue m_queue;
    std::unique_ptr<MqttClient> m_client; // null before it is open
};

#endif
