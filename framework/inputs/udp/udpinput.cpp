#include "udpinput.h"

#include "serverfields.h"
#include "socketwait.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QUdpSocket>
#include <QVariant>

#if defined(Q_OS_LINUX)
#include <cstring>
#include <linux/sock_diag.h>
#include <poll.h>
#include <sys/socket.h>
#include <vector>
#endif

namespace
{

// What a burst needs while the reader waits for a view that is busy.
const int ReceiveBufferSize = 4 * 1024 * 1024;
const int GreatestDatagram = 65535;

bool check(InputAddress* address, QString* reason)
{
    if (address->host.isEmpty())
        address->host = QLatin1String("0.0.0.0");
    *reason = QCoreApplication::translate("InputAddress", "\"%1\" is no address to listen on; it is written in numbers")
                  .arg(address->host);
    return !QHostAddress(address->host).isNull();
}

ByteInput* create(const InputAddress& address)
{
    return new UdpInput(address);
}

const InputField Fields[] = {{"host", QT_TRANSLATE_NOOP("InputKind", "&Address to listen on:"),
                              QT_TRANSLATE_NOOP("InputKind", "An address of this computer; 0.0.0.0 is all of them"),
                              "0.0.0.0", InputField::TextEditor, nullptr, false},
                             ServerFields::port("14550"),
                             {}};

} // namespace

const InputKind UdpInputKind = {"udp:",
                                QT_TRANSLATE_NOOP("InputKind", "UDP: listen for datagrams"),
                                "udp:[ADDRESS][:PORT]",
                                "udp:0.0.0.0:14550",
                                14550,
                                InputKind::LiveProperty | InputKind::DatagramProperty,
                                "",
                                Fields,
                                check,
                                create};

#if defined(Q_OS_LINUX)
/** Datagrams that were received with one call, which takes most of the time that a datagram costs. */
struct UdpInput::Batch
{
    static const int Size = 32;

    Batch()
        : bytes(Size * GreatestDatagram)
    {
        std::memset(headers, 0, sizeof headers);
        for (int i = 0; i < Size; ++i) {
            pieces[i].iov_base = bytes.data() + i * GreatestDatagram;
            pieces[i].iov_len = GreatestDatagram;
            headers[i].msg_hdr.msg_iov = &pieces[i];
            headers[i].msg_hdr.msg_iovlen = 1;
        }
    }

    std::vector<char> bytes;
    iovec pieces[Size];
    mmsghdr headers[Size];
    int count = 0;
    int next = 0;
};

ByteInput::Status UdpInput::readBatch(QByteArray* bytes, int timeoutMs)
{
    const int descriptor = static_cast<int>(m_socket->socketDescriptor());
    if (m_batch->next == m_batch->count) {
        waitInSlices(
            timeoutMs, m_cancelled,
            [descriptor](int slice) {
                pollfd wait = {descriptor, POLLIN, 0};
                return poll(&wait, 1, slice) > 0;
            },
            [] { return true; });
        if (m_cancelled)
            return Nothing;
        m_batch->next = 0;
        m_batch->count = qMax(0, recvmmsg(descriptor, m_batch->headers, Batch::Size, MSG_DONTWAIT, nullptr));
        // Errors such as a datagram whose checksum is wrong are no reason to stop listening.
        if (m_batch->count == 0)
            return Nothing;
    }
    const int index = m_batch->next++;
    *bytes = QByteArray(static_cast<const char*>(m_batch->pieces[index].iov_base),
                        static_cast<int>(m_batch->headers[index].msg_len));
    return Data;
}

qint64 UdpInput::getDroppedCount() const
{
    quint32 values[SK_MEMINFO_VARS] = {};
    socklen_t size = sizeof values;
    const int descriptor = m_socket ? static_cast<int>(m_socket->socketDescriptor()) : -1;
    if (descriptor < 0 || getsockopt(descriptor, SOL_SOCKET, SO_MEMINFO, values, &size) != 0 ||
        size <= SK_MEMINFO_DROPS * sizeof values[0])
        return -1;
    return values[SK_MEMINFO_DROPS];
}
#else
struct UdpInput::Batch
{
};

ByteInput::Status UdpInput::readBatch(QByteArray*, int)
{
    return Nothing;
}

qint64 UdpInput::getDroppedCount() const
{
    return -1;
}
#endif

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
#if defined(Q_OS_LINUX)
    // Beyond what the system allows everybody, where the program may.
    const int descriptor = static_cast<int>(m_socket->socketDescriptor());
    setsockopt(descriptor, SOL_SOCKET, SO_RCVBUFFORCE, &ReceiveBufferSize, sizeof ReceiveBufferSize);
    m_batch.reset(new Batch);
#endif
    return true;
}

ByteInput::Status UdpInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    if (m_cancelled)
        return Nothing;
    if (m_batch)
        return readBatch(bytes, timeoutMs);
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
