#ifndef SERIALINPUT_H
#define SERIALINPUT_H

#include "byteinput.h"
#include "inputkind.h"

#include <atomic>
#include <memory>

class QSerialPort;

/**
 * Serial ports: "serial:/dev/ttyUSB0?baud=57600".
 *
 * Parameters: baud, bits a second; format, data bits, parity and stop bits, such as 8N1; flow, none, hardware (RTS/CTS)
 * or software (XON/XOFF).
 */
extern const InputKind SerialInputKind;

/**
 * Receives what a device sends on a serial port. Nothing is sent. A device that is unplugged is a failure; the same
 * address can be opened again when it is back.
 */
class SerialInput : public ByteInput
{
public:
    explicit SerialInput(const InputAddress& address);
    ~SerialInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override { m_cancelled = true; }
    bool isLive() const override { return true; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return -1; }

private:
    InputAddress m_address;
    std::unique_ptr<QSerialPort> m_port;
    std::atomic<bool> m_cancelled;
};

#endif
