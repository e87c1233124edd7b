#include "natsinput.h"

#include "envelope.h"
#include "natskinds.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace
{

const qint64 MostBytes = 64 * 1024 * 1024;
const int SliceMs = 500; // how long may pass before it is looked what was not answered

const int AnswerChannel = -1; // those of subjects are their places in the address

/** Whether a subject is one of those that servers and requests need for themselves. */
bool isInternal(std::string_view subject)
{
    return subject.substr(0, 1) == "$" || subject.substr(0, 7) == "_INBOX.";
}

} // namespace

NatsInput::NatsInput(const InputAddress& address)
    : ByteInput(address.toString())
    , m_address(address)
    , m_cancelled(false)
    , m_connection(MostBytes)
    , m_requests(&m_connection, AnswerChannel)
    , m_schemas(&m_requests, QByteArray())
{
}

NatsInput::~NatsInput() {}

bool NatsInput::open()
{
    NatsSettings settings;
    QString error;
    bool isOpen =
        settings.read(m_address, &error) && m_connection.open(settings, m_cancelled, &error) && m_requests.open(&error);
    for (const QByteArray& subject : natsSubjects(m_address.path)) {
        isOpen = isOpen && m_connection.subscribe(int(m_isInternal.size()), subject, &error);
        m_isInternal.append(isInternal(std::string_view(subject.constData(), std::size_t(subject.size()))));
    }
    isOpen = isOpen && m_connection.flush(m_cancelled, &error);
    if (!isOpen)
        setError(error);
    return isOpen;
}

void NatsInput::cancel()
{
    m_cancelled = true;
    m_connection.wake();
}

ByteInput::Status NatsInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        if (m_cancelled)
            return Nothing;
        const int rest = int(qMax(qint64(0), timeoutMs - timer.elapsed()));
        for (const NatsConnection::Received& received : m_connection.take(qMin(rest, SliceMs)))
            write(received, bytes);
        m_schemas.giveUp(bytes);
        if (!bytes->isEmpty())
            return Data;
        if (m_connection.isOver()) {
            setError(m_connection.getError());
            return Failed;
        }
        if (timer.hasExpired(timeoutMs))
            return Nothing;
    }
}

void NatsInput::write(const NatsConnection::Received& received, QByteArray* bytes)
{
    if (received.channel == AnswerChannel) {
        quint64 number = 0;
        const QJsonObject answer = NatsRequests::read(received.message.get(), &number);
        m_schemas.process(number, answer, bytes);
        return;
    }
    Envelope envelope = readNatsMessage(received.message.get());
    if (isInternal(envelope.topic) && !m_isInternal.at(received.channel))
        return;
    envelope.time = received.time;
    if (!EnvelopeWriter(bytes).write(envelope))
        m_connection.addNotice(1, QCoreApplication::translate("NatsInput", "a message of %1 is too large")
                                      .arg(QString::fromUtf8(natsMsg_GetSubject(received.message.get()))));
    m_schemas.note(envelope);
}
