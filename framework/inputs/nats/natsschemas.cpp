#include "natsschemas.h"

#include "envelope.h"

#include <QJsonArray>

namespace
{

const int MostTopics = 20000;
const std::chrono::seconds GreatestWait(3);
const std::chrono::seconds UntilNextTry(30);

bool isPlainSubject(std::string_view topic)
{
    return !topic.empty() && topic.size() < 4096 && topic.find_first_of(" *>\t\r\n") == std::string_view::npos &&
           topic.front() != '$' && topic.front() != '.' && topic.back() != '.' &&
           topic.find("..") == std::string_view::npos;
}

std::string_view viewOf(const QByteArray& bytes)
{
    return std::string_view(bytes.constData(), std::size_t(bytes.size()));
}

} // namespace

NatsSchemas::NatsSchemas(NatsRequests* requests, const QByteArray& stream)
    : m_requests(requests)
    , m_stream(stream)
{
}

void NatsSchemas::note(const Envelope& message)
{
    const std::string_view topic = message.getSchemaTopic();
    if (!isPlainSubject(topic))
        return;
    const QByteArray known = QByteArray::fromRawData(topic.data(), int(topic.size()));
    const auto asked = m_asked.find(known);
    if (asked == m_asked.end() ? m_asked.size() >= MostTopics : Clock::now() < *asked)
        return;
    const QByteArray subject(topic.data(), int(topic.size()));
    m_asked.insert(subject, Clock::now() + UntilNextTry);
    if (!m_stream.isEmpty())
        return askForMessage(m_stream, subject);
    const QJsonObject wish{{QStringLiteral("subject"), QString::fromUtf8(subject)}};
    m_open.insert(m_requests->send("STREAM.NAMES", wish), {subject, true, Clock::now()});
}

void NatsSchemas::askForMessage(const QByteArray& stream, const QByteArray& topic)
{
    const QJsonObject wish{{QStringLiteral("last_by_subj"), QString::fromUtf8(topic)}};
    m_open.insert(m_requests->send("STREAM.MSG.GET." + stream, wish), {topic, false, Clock::now()});
}

bool NatsSchemas::process(quint64 number, const QJsonObject& answer, QByteArray* bytes)
{
    if (!m_open.contains(number))
        return false;
    const Request request = m_open.take(number);
    if (request.isForStream) {
        const QByteArray stream = answer.value(QLatin1String("streams")).toArray().first().toString().toUtf8();
        if (stream.isEmpty())
            writeNone(request.topic, bytes);
        else
            askForMessage(stream, request.topic);
        return true;
    }
    const QJsonObject message = answer.value(QLatin1String("message")).toObject();
    if (message.isEmpty()) {
        writeNone(request.topic, bytes);
        return true;
    }
    m_asked[request.topic] = Clock::time_point::max();
    const QByteArray headers = QByteArray::fromBase64(message.value(QLatin1String("hdrs")).toString().toLatin1());
    const QByteArray data = QByteArray::fromBase64(message.value(QLatin1String("data")).toString().toLatin1());
    Envelope envelope;
    envelope.isKept = true;
    envelope.topic = viewOf(request.topic);
    envelope.payload = viewOf(data);
    readNatsHeaders(viewOf(headers), &envelope);
    if (!EnvelopeWriter(bytes).write(envelope))
        writeNone(request.topic, bytes);
    return true;
}

void NatsSchemas::giveUp(QByteArray* bytes)
{
    for (auto request = m_open.begin(); request != m_open.end();) {
        if (Clock::now() - request->time < GreatestWait) {
            ++request;
            continue;
        }
        writeNone(request->topic, bytes);
        request = m_open.erase(request);
    }
}

void NatsSchemas::writeNone(const QByteArray& topic, QByteArray* bytes)
{
    Envelope envelope;
    envelope.kind = Envelope::Gone;
    envelope.topic = viewOf(topic);
    EnvelopeWriter(bytes).write(envelope);
}
