#ifndef UDPINPUT_H
#define UDPINPUT_H

#include "byteinput.h"

#include <atomic>
#include <memory>

class QUdpSocket;

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

private:
    InputAddress m_address;
    std::unique_ptr<QUdpSocket> m_socket;
    std::atomic<bool> m_cancelled;
};

#endif
