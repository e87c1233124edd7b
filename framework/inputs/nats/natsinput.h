#ifndef NATSINPUT_H
#define NATSINPUT_H

#include "byteinput.h"
#include "natsconnection.h"
#include "natsschemas.h"

#include <atomic>

/**
 * Reads subjects of a NATS server and hands them on as envelopes.
 *
 * It only reads: it joins no group, among whose members messages are divided. What a server keeps for itself, such as
 * answers to others, is left out unless it is asked for by name.
 */
class NatsInput : public ByteInput
{
public:
    explicit NatsInput(const InputAddress& address);
    ~NatsInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override;
    bool isLive() const override { return true; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return -1; }
    qint64 getDroppedCount() const override { return m_connection.getDroppedCount(); }
    QVector<StreamProblem> takeNotices() override { return m_connection.takeNotices(); }

private:
    void write(const NatsConnection::Received& received, QByteArray* bytes);

    const InputAddress m_address;
    std::atomic<bool> m_cancelled;
    NatsConnection m_connection;
    NatsRequests m_requests;
    NatsSchemas m_schemas;
    QVector<bool> m_isInternal; // for each subject, whether the server's own are asked for
};

#endif
