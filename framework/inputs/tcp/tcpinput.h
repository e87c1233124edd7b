#ifndef TCPINPUT_H
#define TCPINPUT_H

#include "byteinput.h"
#include "inputkind.h"

#include <atomic>
#include <memory>

class QTcpSocket;

extern const InputKind TcpInputKind;

/** Receives what a server sends. The end of the connection, whoever ends it, is the end of the input. */
class TcpInput : public ByteInput
{
public:
    explicit TcpInput(const InputAddress& address);
    ~TcpInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override { m_cancelled = true; }
    bool isLive() const override { return true; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return -1; }

private:
    InputAddress m_address;
    std::unique_ptr<QTcpSocket> m_socket;
    std::atomic<bool> m_cancelled;
};

#endif
