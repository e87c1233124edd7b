#ifndef UDPOUTPUT_H
#define UDPOUTPUT_H

#include "messageoutput.h"
#include "outputkind.h"

#include <QHostAddress>
#include <QUdpSocket>

extern const OutputKind UdpOutputKind;

/** Sends MAVLink frames as they came, each in a datagram of its own. */
class UdpOutput : public MessageOutput
{
public:
    UdpOutput(const OutputAddress& address, const StreamDecoder* decoder);

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}
    void flush() override;
    void close() override {}

private:
    QUdpSocket m_socket;
    QHostAddress m_host;
    quint16 m_port;
    QString m_problem; // of the datagrams since the last flush
    QString m_told;
};

#endif
