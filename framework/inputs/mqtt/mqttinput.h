#ifndef MQTTINPUT_H
#define MQTTINPUT_H

#include "byteinput.h"
#include "inputkind.h"
#include "mqttqueue.h"

#include <atomic>
#include <deque>
#include <memory>
#include <mutex>

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
    bool needsConfirmation() const override { return !m_address.session.isEmpty(); }
    void confirm(quint64 offset) override;
    bool isLive() const override { return true; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return -1; }
    qint64 getDroppedCount() const override { return m_queue.getDroppedCount(); }
    QVector<StreamProblem> takeNotices() override { return m_queue.takeNotices(); }

private:
    /** The end of a piece that was handed out, and how many messages are to be confirmed up to there. */
    struct Receipt
    {
        quint64 end;
        quint64 confirmable;
    };

    bool readSettings(MqttSettings* settings);

    const InputAddress m_address;
    std::atomic<bool> m_cancelled;
    std::atomic<bool> m_isFinished;
    MqttQueue m_queue;
    std::unique_ptr<MqttClient> m_client; // null before it is open
    quint64 m_handedOut = 0;              // bytes
    std::mutex m_mutex;                   // for what follows
    std::deque<Receipt> m_receipts;
};

#endif
