#include "udpinput.h"

#include "socketwait.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QUdpSocket>
#include <QVariant>

namespace
{

// What a burst needs while the reader waits for a view that is busy.
const int ReceiveBufferSize = 4 * 1024 * 1024;
const int GreatestDatagram = 65535;

} // namespace

UdpInput::UdpInput(const InputAddress& address)
    : ByteInput(address.toString())
    , m_address(address)
    , m_cancelled(false)
{
}

UdpInput::~UdpInput() {}

bool UdpInput::open()
{
    m_socket.reset(new QUdpSocket);
    // Exclusively: two programs that share a port would silently take each other's datagrams.
    if (!m_socket->bind(QHostAddress(m_address.host), m_address.port, QAbstractSocket::DontShareAddress)) {
        setError(m_socket->error() == QAbstractSocket::AddressInUseError
                     ? QCoreApplication::translate("ByteInput", "the port is in use by another program")
                     : m_socket->errorString());
        return false;
    }
    m_socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, ReceiveBufferSize);
    return true;
}

ByteInput::Status UdpInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    if (m_cancelled)
        return Nothing;
    if (!m_socket->hasPendingDatagrams()) {
        waitInSlices(
            timeoutMs, m_cancelled, [this](int slice) { return m_socket->waitForReadyRead(slice); },
            [] { return true; });
        if (m_cancelled || !m_socket->hasPendingDatagrams())
            return Nothing;
    }
    bytes->resize(GreatestDatagram);
    const qint64 size = m_socket->readDatagram(bytes->data(), bytes->size());
    bytes->resize(static_cast<int>(qMax(qint64(0), size)));
    if (size >= 0)
        return Data;
    // A datagram whose checksum is wrong, and the like, is no reason to stop listening.
    if (m_socket->error() == QAbstractSocket::NetworkError || m_socket->error() == QAbstractSocket::TemporaryError ||
        m_socket->error() == QAbstractSocket::SocketTimeoutError)
        return Nothing;
    setError(m_socket->errorString());
    return Failed;
}
