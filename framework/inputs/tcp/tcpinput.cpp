#include "tcpinput.h"

#include "serverfields.h"
#include "socketwait.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <QVariant>

#if defined(Q_OS_LINUX)
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace
{

const int ConnectTimeoutMs = 5000;
const int CancelCheckMs = 50;
const int PieceSize = 64 * 1024;

// A host that was switched off says no farewell: without a sign of life for about half a minute it is gone.
void watchForVanishedHost(QTcpSocket* socket)
{
    socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
#if defined(Q_OS_LINUX)
    const int descriptor = static_cast<int>(socket->socketDescriptor());
    const int options[][2] = {{TCP_KEEPIDLE, 15}, {TCP_KEEPINTVL, 5}, {TCP_KEEPCNT, 3}};
    for (const auto& option : options)
        setsockopt(descriptor, IPPROTO_TCP, option[0], &option[1], sizeof option[1]);
#endif
}

bool check(InputAddress* address, QString* reason)
{
    *reason = QCoreApplication::translate("InputAddress", "no host is named");
    return !address->host.isEmpty();
}

ByteInput* create(const InputAddress& address)
{
    return new TcpInput(address);
}

const InputField Fields[] = {ServerFields::Host, ServerFields::port("5760"), {}};

} // namespace

const InputKind TcpInputKind = {"tcp:",
                                QT_TRANSLATE_NOOP("InputKind", "TCP: connect to a server"),
                                "tcp:HOST[:PORT]",
                                "tcp:192.168.1.10:5760",
                                5760,
                                InputKind::LiveProperty,
                                "",
                                Fields,
                                check,
                                create};

TcpInput::TcpInput(const InputAddress& address)
    : ByteInput(address.toString())
    , m_address(address)
    , m_cancelled(false)
{
}

TcpInput::~TcpInput() {}

bool TcpInput::open()
{
    m_socket.reset(new QTcpSocket);
    m_socket->setProxy(QNetworkProxy::NoProxy);
    m_socket->setReadBufferSize(4 * PieceSize);

    // Only an event loop can look up a host and connect without blocking where cancel() does not reach.
    QEventLoop loop;
    QTimer cancelTimer;
    QTimer timeout;
    timeout.setSingleShot(true);
    QObject::connect(m_socket.get(), &QTcpSocket::connected, &loop, &QEventLoop::quit);
    QObject::connect(m_socket.get(), &QTcpSocket::errorOccurred, &loop, &QEventLoop::quit);
    QObject::connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&cancelTimer, &QTimer::timeout, &loop, [this, &loop] {
        if (m_cancelled)
            loop.quit();
    });
    m_socket->connectToHost(m_address.host, m_address.port, QIODevice::ReadOnly);
    timeout.start(ConnectTimeoutMs);
    cancelTimer.start(CancelCheckMs);
    // Connecting to an address of this machine can be over before the loop begins.
    if (m_socket->state() != QAbstractSocket::ConnectedState && m_socket->state() != QAbstractSocket::UnconnectedState)
        loop.exec();

    if (m_socket->state() == QAbstractSocket::ConnectedState && !m_cancelled) {
        watchForVanishedHost(m_socket.get());
        return true;
    }
    if (m_cancelled)
        setError(QCoreApplication::translate("ByteInput", "cancelled"));
    else if (m_socket->error() == QAbstractSocket::UnknownSocketError)
        setError(QCoreApplication::translate("ByteInput", "no answer within %1 s").arg(ConnectTimeoutMs / 1000));
    else
        setError(m_socket->errorString());
    m_socket->abort();
    return false;
}

ByteInput::Status TcpInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    if (m_cancelled)
        return Nothing;
    if (m_socket->bytesAvailable() == 0) {
        waitInSlices(
            timeoutMs, m_cancelled, [this](int slice) { return m_socket->waitForReadyRead(slice); },
            [this] { return m_socket->state() == QAbstractSocket::ConnectedState; });
        if (m_cancelled)
            return Nothing;
    }
    bytes->resize(PieceSize);
    const qint64 count = m_socket->read(bytes->data(), PieceSize);
    bytes->resize(static_cast<int>(qMax(qint64(0), count)));
    if (count > 0)
        return Data;
    if (m_socket->state() == QAbstractSocket::ConnectedState)
        return Nothing;
    if (m_socket->error() == QAbstractSocket::RemoteHostClosedError)
        return End;
    setError(m_socket->errorString());
    return Failed;
}
