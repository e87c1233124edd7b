#include "mqttconnection.h"

#include "mqttsetup.h"

#include <QCoreApplication>
#include <QFile>
#include <QNetworkProxy>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTemporaryDir>

#include <cstring>

#include <mosquitto.h>
#include <mqtt_protocol.h>
#include <sys/ioctl.h>

namespace
{

const int KeepAliveSeconds = 20;
const int LookMs = 500;
const int LeaveMs = 200;
const quint32 SessionSeconds = 7 * 24 * 3600;
const int MostUnconfirmed = 65535;
const int LeastFailure = 0x80;
const int UnsupportedVersion = 0x84;
const int OldUnsupportedVersion = 1;
const int BlockSize = 128 * 1024;
const qint64 MostInBuffers = 1024 * 1024;
const int SmallPacket = 100;
const int MostReads = 256;

} // namespace

MqttConnection::MqttConnection(const MqttSetup& setup, bool isFive, void* owner, QObject* parent)
    : QObject(parent)
    , m_setup(setup)
    , m_isFive(isFive)
    , m_owner(owner)
    , m_client(setup.createClient(isFive ? MQTT_PROTOCOL_V5 : MQTT_PROTOCOL_V311, this))
    , m_socket(setup.isEncrypted ? new QSslSocket(this) : new QTcpSocket(this))
    , m_check(isFive)
    , m_block(BlockSize, Qt::Uninitialized)
{
    mosquitto_connect_v5_callback_set(m_client, processConnection);
    mosquitto_disconnect_v5_callback_set(m_client, processEnd);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        const int code = mosquitto_loop_misc(m_client);
        if (code != MOSQ_ERR_SUCCESS)
            end(MqttSetup::errorText(code));
        else
            send();
    });
}

MqttConnection::~MqttConnection()
{
    m_isEnded = true;
    m_reader.reset();
    m_writer.reset();
    mosquitto_destroy(m_client);
    m_socket->disconnect(this);
    if (m_pipe)
        m_pipe->disconnect(this);
}

void MqttConnection::open()
{
    m_socket->setProxy(QNetworkProxy::NoProxy);
    m_socket->setReadBufferSize(MostInBuffers);
    connect(m_socket, &QTcpSocket::errorOccurred, this, &MqttConnection::processError);
    connect(m_socket, &QTcpSocket::readyRead, this, &MqttConnection::handOn);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &MqttConnection::passOut);
    const QString host = QString::fromUtf8(m_setup.host);
    QSslSocket* const encrypted = qobject_cast<QSslSocket*>(m_socket);
    QString error;
    if (!encrypted) {
        connect(m_socket, &QTcpSocket::connected, this, &MqttConnection::establish);
        m_socket->connectToHost(host, m_setup.port);
    } else if (encrypt(&error)) {
        connect(encrypted, &QSslSocket::encrypted, this, &MqttConnection::establish);
        encrypted->connectToHostEncrypted(host, m_setup.port);
    } else {
        end(error);
    }
}

/** Takes the certificates that the setup names. */
bool MqttConnection::encrypt(QString* error)
{
    QSslSocket* const socket = static_cast<QSslSocket*>(m_socket);
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    const auto contentOf = [](const QByteArray& path) {
        QFile file(QFile::decodeName(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const auto fail = [error](const QByteArray& path) {
        *error = QCoreApplication::translate("MqttInput", "%1 is no certificate or key that can be used")
                     .arg(QFile::decodeName(path));
        return false;
    };
    if (!m_setup.authority.isEmpty()) {
        const QList<QSslCertificate> authorities = QSslCertificate::fromData(contentOf(m_setup.authority));
        if (authorities.isEmpty())
            return fail(m_setup.authority);
        configuration.setCaCertificates(authorities);
    }
    if (!m_setup.certificate.isEmpty()) {
        const QList<QSslCertificate> chain = QSslCertificate::fromData(contentOf(m_setup.certificate));
        if (chain.isEmpty())
            return fail(m_setup.certificate);
        const QByteArray bytes = contentOf(m_setup.key);
        QSslKey key(bytes, QSsl::Rsa);
        if (key.isNull())
            key = QSslKey(bytes, QSsl::Ec);
        if (key.isNull())
            return fail(m_setup.key);
        configuration.setLocalCertificateChain(chain);
        configuration.setPrivateKey(key);
    }
    socket->setSslConfiguration(configuration);
    return true;
}

/** There is a server; connects the library to this. */
void MqttConnection::establish()
{
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    // Others do not get at what is in a folder of this program alone, which is there for a moment.
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("s"));
    if (!folder.isValid() || !m_door.listen(path))
        return end(folder.isValid() ? m_door.errorString() : folder.errorString());
    mosquitto_property* properties = nullptr;
    if (m_isFive)
        mosquitto_property_add_int32(&properties, MQTT_PROP_MAXIMUM_PACKET_SIZE, MqttCheck::GreatestPacket);
    if (m_isFive && !m_setup.session.isEmpty())
        mosquitto_property_add_int32(&properties, MQTT_PROP_SESSION_EXPIRY_INTERVAL, SessionSeconds);
    // Those that nobody has confirmed, which takes longer than a server would think.
    if (!m_setup.session.isEmpty())
        mosquitto_int_option(m_client, MOSQ_OPT_RECEIVE_MAXIMUM, MostUnconfirmed);
    const int code = mosquitto_connect_bind_v5(m_client, QFile::encodeName(path).constData(), 0, KeepAliveSeconds,
                                               nullptr, properties);
    mosquitto_property_free_all(&properties);
    if (code == MOSQ_ERR_SUCCESS && m_door.waitForNewConnection(0))
        m_pipe = m_door.nextPendingConnection();
    const QString error = m_pipe                     ? QString()
                          : code == MOSQ_ERR_SUCCESS ? m_door.errorString()
                                                     : MqttSetup::errorText(code);
    m_door.close();
    if (!m_pipe)
        return end(error);
    connect(m_pipe, &QLocalSocket::readyRead, this, &MqttConnection::passOut);
    connect(m_pipe, &QLocalSocket::bytesWritten, this, &MqttConnection::handOn);
    m_pipe->setReadBufferSize(MostInBuffers);
    m_reader.reset(new QSocketNotifier(mosquitto_socket(m_client), QSocketNotifier::Read));
    m_writer.reset(new QSocketNotifier(mosquitto_socket(m_client), QSocketNotifier::Write));
    connect(m_reader.get(), &QSocketNotifier::activated, this, &MqttConnection::read);
    connect(m_writer.get(), &QSocketNotifier::activated, this, &MqttConnection::send);
    m_timer.start(LookMs);
    m_mayBeOlder = m_isFive;
    send();
    handOn(); // what came unasked
}

void MqttConnection::processError()
{
    const bool isClosed = m_socket->error() == QAbstractSocket::RemoteHostClosedError;
    if (m_pipe)
        return cut(isClosed || m_socket->error() == QAbstractSocket::NetworkError
                       ? MqttSetup::errorText(MOSQ_ERR_CONN_LOST)
                       : m_socket->errorString());
    const bool isUnencrypted =
        m_setup.isEncrypted && (isClosed || m_socket->error() == QAbstractSocket::SslHandshakeFailedError ||
                                m_socket->error() == QAbstractSocket::SslInternalError ||
                                m_socket->error() == QAbstractSocket::SslInvalidUserDataError);
    end(isUnencrypted ? QCoreApplication::translate("MqttInput", "no encrypted connection comes about: %1")
                            .arg(m_socket->errorString())
                      : m_socket->errorString());
}

/** Hands on what came, as far as it is checked and the library takes it. */
void MqttConnection::handOn()
{
    if (!m_pipe || m_isEnded)
        return;
    while (m_socket->bytesAvailable() > 0 && m_pipe->bytesToWrite() < MostInBuffers) {
        if (m_held == m_block.size())
            m_block.resize(2 * m_block.size());
        const qint64 read = m_socket->read(m_block.data() + m_held, m_block.size() - m_held);
        if (read <= 0)
            break;
        m_held += read;
        const bool isRight = m_check.check(m_block.constData(), m_held) >= 0;
        const qint64 checked = m_check.getChecked();
        m_pipe->write(m_block.constData(), checked);
        m_held -= checked;
        std::memmove(m_block.data(), m_block.constData() + checked, std::size_t(m_held));
        if (m_held < BlockSize / 2 && m_block.size() > BlockSize)
            m_block.resize(BlockSize);
        if (!isRight) {
            m_isCut = true;
            m_reason = m_check.getError();
            m_socket->abort();
            break;
        }
    }
    m_pipe->flush();
    // The library then reads to the end before it sees that there is one.
    if (m_isCut && m_socket->bytesAvailable() == 0 && m_pipe->state() == QLocalSocket::ConnectedState)
        m_pipe->disconnectFromServer();
}

void MqttConnection::cut(const QString& reason)
{
    if (m_isCut)
        return;
    m_isCut = true;
    m_reason = reason;
    handOn();
}

/** Hands out what the library sent. */
void MqttConnection::passOut()
{
    char block[16 * 1024];
    while (m_pipe && m_socket->bytesToWrite() < MostInBuffers) {
        const qint64 read = m_pipe->read(block, sizeof block);
        if (read <= 0)
            break;
        if (m_setup.session.isEmpty())
            m_socket->write(block, read);
        else
            holdConfirmations(QByteArray(block, int(read)));
    }
}

/** Hands out what the library sent, without the confirmations of messages. */
void MqttConnection::holdConfirmations(const QByteArray& block)
{
    m_sent += block;
    qint64 size = 0;
    while ((size = MqttCheck::sizeOf(m_sent.constData(), m_sent.size())) > 0 && size <= m_sent.size()) {
        const QByteArray packet = m_sent.left(int(size));
        m_sent.remove(0, int(size));
        if ((packet.at(0) & 0xf0) == CMD_PUBACK)
            m_unheard.push_back(packet);
        else
            m_socket->write(packet);
    }
}

void MqttConnection::confirm(quint64 count)
{
    passOut(); // what the library sent when the messages came
    for (; m_confirmed < count && !m_unheard.empty(); ++m_confirmed) {
        m_socket->write(m_unheard.front());
        m_unheard.pop_front();
    }
}

/** Lets the library read what there is: by itself it would take one packet at a time. */
void MqttConnection::read()
{
    int code = MOSQ_ERR_SUCCESS;
    int waiting = 0;
    do {
        const int packets = 1 + qMin(waiting / SmallPacket, MostReads);
        for (int i = 0; i < packets && code == MOSQ_ERR_SUCCESS && !m_isEnded; ++i)
            code = mosquitto_loop_read(m_client, 1);
        waiting = 0;
        const int socket = m_isEnded ? -1 : mosquitto_socket(m_client);
        if (socket < 0 || ioctl(socket, FIONREAD, &waiting) != 0)
            waiting = 0;
    } while (code == MOSQ_ERR_SUCCESS && waiting > 0);
    if (code != MOSQ_ERR_SUCCESS)
        end(reasonOf(code));
    if (m_isEnded)
        return;
    Q_EMIT handled();
    send();
}

void MqttConnection::send()
{
    if (m_isEnded || !m_writer)
        return;
    if (mosquitto_want_write(m_client))
        mosquitto_loop_write(m_client, 1); // what is wrong shows in reading, too
    m_writer->setEnabled(!m_isEnded && mosquitto_want_write(m_client));
}

/** Why the library ended: where the server is gone, this knows better. */
QString MqttConnection::reasonOf(int code) const
{
    return m_isCut ? m_reason : MqttSetup::errorText(code);
}

void MqttConnection::setPaused(bool paused)
{
    if (m_reader)
        m_reader->setEnabled(!paused && !m_isEnded);
}

void MqttConnection::end(const QString& reason)
{
    if (m_isEnded)
        return;
    m_isEnded = true;
    m_timer.stop();
    if (m_reader) {
        m_reader->setEnabled(false);
        m_writer->setEnabled(false);
    }
    QMetaObject::invokeMethod(
        this, [this, reason] { Q_EMIT ended(reason); }, Qt::QueuedConnection);
}

void MqttConnection::close()
{
    blockSignals(true);
    if (!m_isEnded && m_pipe) {
        end(QString());
        mosquitto_disconnect(m_client);
        while (m_pipe->waitForReadyRead(0))
            passOut();
        passOut();
        if (m_socket->bytesToWrite() > 0)
            m_socket->waitForBytesWritten(LeaveMs);
    }
    m_isEnded = true;
}

void MqttConnection::processConnection(mosquitto*, void* self, int code, int, const mqtt5__property*)
{
    MqttConnection* const connection = static_cast<MqttConnection*>(self);
    connection->m_mayBeOlder = connection->m_isFive && (code == UnsupportedVersion || code == OldUnsupportedVersion);
    if (code == 0)
        Q_EMIT connection->accepted();
    else
        connection->end(QCoreApplication::translate("MqttInput", "the server refuses the connection: %1")
                            .arg(MqttSetup::refusal(code, !connection->m_isFive)));
}

void MqttConnection::processEnd(mosquitto*, void* self, int code, const mqtt5__property*)
{
    MqttConnection* const connection = static_cast<MqttConnection*>(self);
    connection->end(code >= LeastFailure
                        ? QCoreApplication::translate("MqttInput", "the server ends the connection: %1")
                              .arg(MqttSetup::refusal(code, false))
                        : connection->reasonOf(code == 0 ? int(MOSQ_ERR_CONN_LOST) : code));
}
