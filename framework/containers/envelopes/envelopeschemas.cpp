#include "envelopeschemas.h"

#include "envelope.h"
#include "message.h"
#include "utf8text.h"

#include <QCryptographicHash>

namespace
{

const qint64 MostSchemaBytes = 64 * 1024 * 1024;
const qint64 MostWaitingBytes = 16 * 1024 * 1024;
const qint64 EntryOverhead = 512;

// A server answers at once; what is not there in that time is not there.
const qint64 GreatestWait = 5 * 1000 * 1000;

const int HashDigits = 12;
const std::string_view SchemaLevel = "/_schemas/";

QByteArray keyOf(std::string_view text)
{
    return QByteArray::fromRawData(text.data(), int(text.size()));
}

QByteArray copied(std::string_view text)
{
    return QByteArray(text.data(), int(text.size()));
}

/** How messages lie that such a schema is for. */
QByteArray usualEncoding(const QByteArray& schemaEncoding)
{
    return schemaEncoding == "jsonschema" ? QByteArray("json")
           : schemaEncoding == "ros1msg"  ? QByteArray("ros1")
           : schemaEncoding == "protobuf" ? schemaEncoding
                                          : QByteArray("cdr");
}

/** What a schema is that nobody says anything of. */
QByteArray guessEncoding(std::string_view schema)
{
    const char first = schema.empty() ? '\0' : schema.front();
    return first == '\n' ? QByteArray("protobuf") : first == '{' ? QByteArray("jsonschema") : QByteArray("ros2msg");
}

/** "PREFIX/_schemas/TYPE/HASH" taken apart, if the hash is that of what came there. */
struct SchemaTopic
{
    SchemaTopic(std::string_view topic, std::string_view schema)
    {
        const std::size_t level = topic.find(SchemaLevel);
        const std::size_t slash = topic.rfind('/');
        if (level == std::string_view::npos || slash < level + SchemaLevel.size())
            return;
        QCryptographicHash sum(QCryptographicHash::Sha256);
        sum.addData(keyOf(schema));
        const QByteArray hash = sum.result().toHex().left(HashDigits);
        if (hash != keyOf(topic.substr(slash + 1)))
            return;
        prefix = topic.substr(0, level);
        type = topic.substr(level + SchemaLevel.size(), slash - level - SchemaLevel.size());
    }

    std::string_view prefix;
    std::string_view type; // empty where it is no such topic
};

} // namespace

EnvelopeSchemas::Schema* EnvelopeSchemas::add(std::string_view topic, qint64 size)
{
    const auto known = m_schemas.find(keyOf(topic));
    if (known == m_schemas.end())
        size += qint64(topic.size()) + EntryOverhead;
    if (m_kept + size > MostSchemaBytes) {
        m_isFull = true;
        return nullptr;
    }
    m_kept += size;
    return known == m_schemas.end() ? &*m_schemas.insert(copied(topic), Schema()) : &*known;
}

bool EnvelopeSchemas::take(const Envelope& envelope)
{
    TypeSchema type;
    QByteArray guess;
    type.encoding = copied(envelope.find("schemaencoding"));
    if (type.encoding.isEmpty()) {
        // Who speaks an older protocol gets no properties.
        if (!envelope.properties.empty() || envelope.topic.find(SchemaLevel) == std::string_view::npos)
            return false;
        const SchemaTopic topic(envelope.topic, envelope.payload);
        if (topic.type.empty())
            return false;
        type.name = Utf8Text::decode(keyOf(topic.type));
        type.encoding = guessEncoding(envelope.payload);
        guess = copied(topic.prefix) + '\0' + copied(topic.type);
    } else {
        type.name = Utf8Text::decode(keyOf(envelope.attribute("type")));
        type.messageEncoding = copied(envelope.find("encoding"));
    }
    if (type.messageEncoding.isEmpty())
        type.messageEncoding = usualEncoding(type.encoding);
    type.data = copied(envelope.payload);
    const auto known = m_schemas.constFind(keyOf(envelope.topic));
    const bool isSame = known != m_schemas.constEnd() && known->type.data == type.data;
    if (Schema* const schema = add(envelope.topic, isSame ? 0 : qint64(envelope.payload.size()))) {
        schema->state = Known;
        schema->type = type;
        if (!guess.isEmpty())
            m_guesses.insert(guess, copied(envelope.topic));
    }
    return true;
}

EnvelopeSchemas::State EnvelopeSchemas::getState(std::string_view topic) const
{
    const auto known = m_schemas.constFind(keyOf(topic));
    return known != m_schemas.constEnd() ? known->state : m_isFull ? Missing : Unknown;
}

TypeSchema EnvelopeSchemas::find(std::string_view topic) const
{
    return m_schemas.value(keyOf(topic)).type;
}

std::string_view EnvelopeSchemas::topicFor(const Envelope& message) const
{
    const std::string_view told = message.getSchemaTopic();
    const bool saysNothing = message.properties.empty() && message.contentType.empty();
    return told.empty() && saysNothing && !m_guesses.isEmpty() ? guess(message.topic) : told;
}

std::string_view EnvelopeSchemas::guess(std::string_view topic) const
{
    const std::size_t slash = topic.rfind('/');
    const QByteArray type = slash == std::string_view::npos ? QByteArray() : copied(topic.substr(slash + 1));
    // Senders may have several levels, and so may what stands before them.
    for (std::size_t end = slash; end != std::string_view::npos && end > 0; end = topic.rfind('/', end - 1)) {
        const auto found = m_guesses.constFind(copied(topic.substr(0, end)) + '\0' + type);
        if (found != m_guesses.constEnd())
            return std::string_view(found->constData(), std::size_t(found->size()));
    }
    return std::string_view();
}

bool EnvelopeSchemas::keep(std::string_view topic, const Waiting& message)
{
    const qint64 size = message.bytes.size() + EntryOverhead;
    if (m_waiting + size > MostWaitingBytes)
        return false;
    Schema* const schema = add(topic, 0);
    if (!schema)
        return false;
    m_waiting += size;
    schema->waiting.push_back(message);
    return true;
}

QByteArray EnvelopeSchemas::findOverdue(qint64 arrivalTime) const
{
    if (m_waiting == 0)
        return QByteArray();
    for (auto schema = m_schemas.constBegin(); schema != m_schemas.constEnd(); ++schema) {
        if (schema->waiting.empty())
            continue;
        const qint64 since = schema->waiting.front().arrivalTime;
        if (arrivalTime == ::Message::NoTime || (since != ::Message::NoTime && arrivalTime - since > GreatestWait))
            return schema.key();
    }
    return QByteArray();
}

quint64 EnvelopeSchemas::findFirst() const
{
    quint64 first = ~Q_UINT64_C(0);
    if (m_waiting == 0)
        return first;
    for (const Schema& schema : m_schemas)
        for (const Waiting& waiting : schema.waiting)
            first = qMin(first, waiting.end - quint64(waiting.bytes.size()));
    return first;
}

std::vector<EnvelopeSchemas::Waiting> EnvelopeSchemas::release(std::string_view topic)
{
    std::vector<Waiting> waiting;
    const auto known = m_schemas.find(keyOf(topic));
    if (known == m_schemas.end())
        return waiting;
    waiting.swap(known->waiting);
    for (const Waiting& message : waiting)
        m_waiting -= message.bytes.size() + EntryOverhead;
    return waiting;
}

void EnvelopeSchemas::setMissing(std::string_view topic)
{
    if (Schema* const schema = add(topic, 0))
        if (schema->state == Unknown)
            schema->state = Missing;
}
