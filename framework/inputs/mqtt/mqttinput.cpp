#include "mqttinput.h"

#include "mqttclient.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QUrl>

#include <mosquitto.h>

namespace
{

const int AnswerTimeoutMs = 15000; // the client gives up before
const int SliceMs = 50;
const quint16 DefaultPort = 1883;
const quint16 DefaultEncryptedPort = 8883;
const int MostFilters = 100;

/** The filters of a path, in which a comma stands between them and "%" before what stands for another character. */
QVector<QByteArray> filtersOf(const QString& path)
{
    QVector<QByteArray> filters;
    for (const QString& filter : path.split(QLatin1Char(',')))
        filters.append(QUrl::fromPercentEncoding(filter.toUtf8()).toUtf8());
    return filters;
}

bool check(InputAddress* address, QString* reason)
{
    if (address->path.isEmpty())
        address->path = QStringLiteral("#");
    if (address->host.isEmpty())
        *reason = QCoreApplication::translate("InputAddress", "no host is named");
    const QVector<QByteArray> filters = filtersOf(address->path);
    if (filters.size() > MostFilters)
        *reason = QCoreApplication::translate("InputAddress", "there are more than %1 filters").arg(MostFilters);
    for (const QByteArray& filter : filters) {
        const QString text = QString::fromUtf8(filter);
        if (filter.startsWith("$share/"))
            *reason = QCoreApplication::translate(
                          "InputAddress", "\"%1\" is a subscription that is shared: it would take messages from others")
                          .arg(text);
        else if (filter.isEmpty() || filter.contains('\0') ||
                 mosquitto_sub_topic_check(filter.constData()) != MOSQ_ERR_SUCCESS)
            *reason = QCoreApplication::translate(
                          "InputAddress", "\"%1\" is no filter of topics; \"fleet/+/state\" and \"fleet/#\" are some")
                          .arg(text);
    }
    if (address->getValue(QStringLiteral("cert")).isEmpty() != address->getValue(QStringLiteral("key")).isEmpty())
        *reason = QCoreApplication::translate("InputAddress", "a certificate (cert) and its key (key) belong together");
    return reason->isEmpty();
}

ByteInput* create(const InputAddress& address)
{
    return new MqttInput(address);
}

const InputField Host = {"host",
                         QT_TRANSLATE_NOOP("InputKind", "&Host:"),
                         QT_TRANSLATE_NOOP("InputKind", "Name or address of the server"),
                         "localhost",
                         InputField::TextEditor,
                         nullptr,
                         false};
const InputField Topics = {"path",
                           QT_TRANSLATE_NOOP("InputKind", "&Topics:"),
                           QT_TRANSLATE_NOOP("InputKind",
                                             "Filters with commas between them: \"+\" stands for one level, "
                                             "\"#\" for the rest"),
                           "#",
                           InputField::TextEditor,
                           nullptr,
                           false};
const InputField User = {"user", QT_TRANSLATE_NOOP("InputKind", "&User:"), "", "", InputField::TextEditor, nullptr,
                         false};
const InputField Password = {"password",
                             QT_TRANSLATE_NOOP("InputKind", "Pass&word:"),
                             QT_TRANSLATE_NOOP("InputKind", "It is not kept; empty takes it from the file, or from the "
                                                            "environment variable CORVEL_MQTT_PASSWORD"),
                             "",
                             InputField::PasswordEditor,
                             nullptr,
                             false};
const InputField PasswordFile = {"password-file",
                                 QT_TRANSLATE_NOOP("InputKind", "Password f&ile:"),
                                 QT_TRANSLATE_NOOP("InputKind", "A file whose first line is the password"),
                                 "",
                                 InputField::FileEditor,
                                 nullptr,
                                 false};

const InputField Fields[] = {Host,
                             {"port", QT_TRANSLATE_NOOP("InputKind", "&Port:"),
                              QT_TRANSLATE_NOOP("InputKind", "The number of the port"), "1883", InputField::PortEditor,
                              nullptr, false},
                             Topics,
                             User,
                             Password,
                             PasswordFile,
                             {}};

const InputField EncryptedFields[] = {
    Host,
    {"port", QT_TRANSLATE_NOOP("InputKind", "&Port:"), QT_TRANSLATE_NOOP("InputKind", "The number of the port"), "8883",
     InputField::PortEditor, nullptr, false},
    Topics,
    User,
    Password,
    PasswordFile,
    {"ca", QT_TRANSLATE_NOOP("InputKind", "T&rusted:"),
     QT_TRANSLATE_NOOP("InputKind", "A file of certificates that are trusted; empty for those "
                                    "of the system"),
     "", InputField::FileEditor, nullptr, false},
    {"cert", QT_TRANSLATE_NOOP("InputKind", "&Certificate:"),
     QT_TRANSLATE_NOOP("InputKind", "A file with one's own certificate, if the server asks "
                                    "for it"),
     "", InputField::FileEditor, nullptr, false},
    {"key", QT_TRANSLATE_NOOP("InputKind", "K&ey:"),
     QT_TRANSLATE_NOOP("InputKind", "The file of the certificate's key, without a password"), "",
     InputField::FileEditor, nullptr, false},
    {}};

} // namespace

const InputKind MqttInputKind = {"mqtt:// mqtt:",
                                 QT_TRANSLATE_NOOP("InputKind", "MQTT: topics of a broker"),
                                 "mqtt://[USER@]HOST[:PORT]/TOPICS[?password-file=FILE]",
                                 "mqtt://localhost/fleet/+/state,plant/#",
                                 DefaultPort,
                                 InputKind::LiveProperty | InputKind::SessionProperty,
                                 "envelopes",
                                 Fields,
                                 check,
                                 create};

const InputKind MqttsInputKind = {"mqtts:// mqtts:",
                                  QT_TRANSLATE_NOOP("InputKind", "MQTT, encrypted: topics of a broker"),
                                  "mqtts://[USER@]HOST[:PORT]/TOPICS[?password-file=FILE&ca=FILE&cert=FILE&key=FILE]",
                                  "mqtts://operator@broker.example/fleet/+/state?password-file=/etc/corvel/password",
                                  DefaultEncryptedPort,
                                  InputKind::LiveProperty | InputKind::SessionProperty,
                                  "envelopes",
                                  EncryptedFields,
                                  check,
                                  create};

MqttInput::MqttInput(const InputAddress& address)
    : ByteInput(address.toString())
    , m_address(address)
    , m_cancelled(false)
    , m_isFinished(false)
{
}

MqttInput::~MqttInput() {}

bool MqttInput::open()
{
    MqttSettings settings;
    if (!readSettings(&settings))
        return false;
    m_client.reset(new MqttClient(settings, &m_queue));
    QElapsedTimer timer;
    timer.start();
    MqttQueue::State state = MqttQueue::Connecting;
    while (state == MqttQueue::Connecting && !m_cancelled && !m_isFinished && !timer.hasExpired(AnswerTimeoutMs))
        state = m_queue.wait(MqttQueue::Connecting, SliceMs);
    if (state == MqttQueue::Receiving && !m_cancelled)
        return true;
    setError(m_cancelled || m_isFinished ? QCoreApplication::translate("ByteInput", "cancelled")
             : state == MqttQueue::Ended
                 ? m_queue.getError()
                 : QCoreApplication::translate("ByteInput", "no answer within %1 s").arg(AnswerTimeoutMs / 1000));
    return false;
}

/** Fills in what the address says; false where a file that it names is not there. */
bool MqttInput::readSettings(MqttSettings* settings)
{
    settings->host = m_address.host.toUtf8();
    settings->port = m_address.port;
    settings->isEncrypted = m_address.kind == &MqttsInputKind;
    settings->filters = filtersOf(m_address.path);
    settings->session = m_address.session.toUtf8();
    QString error;
    if (!settings->read(m_address.parameters, &error)) {
        setError(error);
        return false;
    }
    if (!m_address.password.isEmpty())
        settings->password = m_address.password.toUtf8();
    return true;
}

void MqttInput::cancel()
{
    m_cancelled = true;
    m_queue.wake();
}

void MqttInput::finish()
{
    m_isFinished = !m_address.session.isEmpty();
    m_queue.wake();
}

void MqttInput::confirm(quint64 offset)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    while (!m_receipts.empty() && m_receipts.front().end <= offset) {
        m_client->confirm(m_receipts.front().confirmable);
        m_receipts.pop_front();
    }
}

ByteInput::Status MqttInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    if (m_cancelled)
        return Nothing;
    if (m_isFinished)
        m_client->hold();
    const MqttQueue::State state =
        m_queue.wait(MqttQueue::Receiving, m_isFinished ? qMin(timeoutMs, SliceMs) : timeoutMs);
    quint64 confirmable = 0;
    *bytes = m_queue.take(&confirmable);
    if (!bytes->isEmpty()) {
        m_handedOut += quint64(bytes->size());
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (needsConfirmation())
            m_receipts.push_back({m_handedOut, confirmable});
        return Data;
    }
    if (m_isFinished) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_receipts.empty())
            m_client->stop();
    }
    if (state != MqttQueue::Ended || m_cancelled)
        return Nothing;
    if (m_isFinished)
        return End;
    setError(m_queue.getError());
    return Failed;
}
