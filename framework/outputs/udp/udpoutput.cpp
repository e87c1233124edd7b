#include "udpoutput.h"

#include "publishedstream.h"

#include <QCoreApplication>
#include <QHostInfo>

namespace
{

bool check(OutputAddress* address, QString* reason)
{
    if (address->host.isEmpty())
        *reason = QCoreApplication::translate("Output", "no host is named");
    else if (!address->path.isEmpty())
        *reason = QCoreApplication::translate("Output", "nothing can stand behind the port");
    return reason->isEmpty();
}

MessageOutput* connectTo(const OutputAddress& address, const PublishedStream* stream)
{
    return new UdpOutput(address, stream);
}

} // namespace

const OutputKind UdpOutputKind = {"udp",
                                  QT_TRANSLATE_NOOP("OutputKind", "UDP: MAVLink frames as datagrams"),
                                  "",
                                  1000,
                                  "udp:",
                                  "udp:HOST[:PORT]",
                                  "udp:192.168.1.10:14550",
                                  14550,
                                  OutputKind::AsItCameProperty,
                                  "tlog",
                                  "",
                                  check,
                                  nullptr,
                                  connectTo};

UdpOutput::UdpOutput(const OutputAddress& address, const StreamDecoder* decoder)
    : MessageOutput(decoder)
    , m_host(address.host)
    , m_port(address.port)
{
    if (!m_host.isNull())
        return;
    const QHostInfo info = QHostInfo::fromName(address.host);
    if (info.addresses().isEmpty())
        setError(QStringLiteral("%1: %2").arg(address.getName(), info.errorString()));
    else
        m_host = info.addresses().constFirst();
}

void UdpOutput::processReceived(const ReceivedMessage& message)
{
    if (m_socket.writeDatagram(message.data, message.size, m_host, m_port) == message.size)
        return;
    addDropped();
    m_problem = m_socket.errorString();
}

void UdpOutput::flush()
{
    if (m_problem != m_told && !m_problem.isEmpty())
        addNotice(m_problem);
    m_told = m_problem;
    m_problem.clear();
}
