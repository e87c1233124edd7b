#include "mqttinput.h"

#include "mqttclient.h"
#include "serverfields.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QUrl>

#include <mosquitto.h>

namespace
{

using namespace ServerFields;

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

const InputField Topics = {"path",
                           QT_TRANSLATE_NOOP("InputKind", "&Topics:"),
                           QT_TRANSLATE_NOOP("InputKind",
                                             "Filters with commas between them: \"+\" stands for one level, "
                                             "\"#\" for the rest"),
                           "#",
                           InputField::TextEditor,
                           nullptr,
                           false};
constexpr InputField Password =
    password(QT_TRANSLATE_NOOP("InputKind", "It is not kept; empty takes it from the file, or from the "
                                            "environment variable CORVEL_MQTT_PASSWORD"));

const InputField Fields[] = {Host, port("1883"), Topics, User, Password, PasswordFile, {}};

const InputField EncryptedFields[] = {Host,         port("8883"), Topics,      User, Password,
                                      PasswordFile, Authority,    Certificate, Key,  {}};

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
