#ifndef UDPINPUT_H
#define UDPINPUT_H

#include "byteinput.h"
#include "inputkind.h"

#include <atomic>
#include <memory>

class QUdpSocket;

extern const InputKind UdpInputKind;

/** Receives datagrams on a port of its own. */
class UdpInput : public ByteInput
{
public:
    explicit UdpInput(const InputAddress& address);
    ~UdpInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override { m_cancelled = true; }
    bool isLive() const override { return true; }
    bool isDatagram() const override { return true; }
    qint64 getSize() const override { return -1; }
    qint64 getDroppedCount() const override;

private:
    InputAddress m_address;
    struct Batch;

    Status readBatch(QByteArray* bytes, int timeoutMs);

    std::unique_ptr<QUdpSocket> m_socket;
    std::unique_ptr<Batch> m_batch; // where the system gives several datagrams at once
    std::atomic<bool> m_cancelled;
};

#endif
