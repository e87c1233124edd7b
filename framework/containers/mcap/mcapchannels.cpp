#include "mcapchannels.h"

#include "encoding.h"
#include "mcaprecord.h"
#include "utf8text.h"

#include <QCoreApplication>

#include <algorithm>

namespace
{

// More than any system has; a stream that goes on announcing must not fill the memory.
const quint64 MostDefinitionBytes = Q_UINT64_C(64) << 20;

// What tables take for an entry, about.
const quint64 EntryOverhead = 512;

const quint32 FirstUndecodableId = 0x80000000u;

} // namespace

McapChannels::McapChannels(Definitions* definitions)
    : m_definitions(definitions)
    , m_kept(0)
{
}

McapChannels::~McapChannels() {}

bool McapChannels::makeRoom(quint64 size)
{
    size += EntryOverhead;
    if (m_kept + size > MostDefinitionBytes)
        return false;
    m_kept += size;
    return true;
}

/** What makeRoom() was asked for, about. */
quint64 McapChannels::sizeOf(const Schema& schema)
{
    return quint64(schema.name.size() + schema.encoding.size() + schema.data.size()) + EntryOverhead;
}

void McapChannels::beginFile()
{
    for (auto schema = m_schemas.constBegin(); schema != m_schemas.constEnd(); ++schema) {
        const auto earlier = m_earlierSchemas.constFind(schema.key());
        if (earlier != m_earlierSchemas.constEnd() && earlier->version != schema->version)
            m_kept -= sizeOf(*earlier); // going to and fro between files must not use up the room
        m_earlierSchemas.insert(schema.key(), *schema);
    }
    m_schemas.clear();
    m_awaited.clear();
    std::fill(m_byNumber.begin(), m_byNumber.end(), nullptr);
    ++m_file;
    m_earlier.clear();
    for (auto entry = m_entries.rbegin(); entry != m_entries.rend(); ++entry)
        m_earlier[(*entry)->likeness].push_back(entry->get());
}

QString McapChannels::addSchema(const char* body, quint64 size)
{
    Mcap::Schema schema;
    if (!schema.read(Mcap::Cursor(body, size)))
        return QCoreApplication::translate("McapStream", "a schema's lengths do not fit its record");
    // The files of one recording announce the same.
    if (!m_schemas.contains(schema.id) && m_earlierSchemas.contains(schema.id))
        m_schemas.insert(schema.id, m_earlierSchemas.value(schema.id));
    const auto known = m_schemas.constFind(schema.id);
    if (known != m_schemas.constEnd() && known->name == schema.name && known->encoding == schema.encoding &&
        known->data == schema.data)
        return QString();
    if (schema.id == 0)
        return QCoreApplication::translate("McapStream", "a schema has the number 0, which means none");
    if (!makeRoom(size))
        return QCoreApplication::translate("McapStream",
                                           "schema %1 is one too many: 64 MiB of schemas and channels are known")
            .arg(Utf8Text::decode(schema.name));
    // What was read points into bytes that will be gone.
    const auto copied = [](const QByteArray& text) { return QByteArray(text.constData(), text.size()); };
    m_schemas.insert(schema.id, Schema{copied(schema.name), copied(schema.encoding), copied(schema.data),
                                       known == m_schemas.constEnd() ? 1 : known->version + 1});
    return QString();
}

QString McapChannels::addChannel(const char* body, quint64 size)
{
    Mcap::Channel channel;
    if (!channel.read(Mcap::Cursor(body, size)))
        return QCoreApplication::translate("McapStream", "a channel's lengths do not fit its record");
    const QByteArray record = QByteArray::fromRawData(body, int(size));
    const auto schema = m_schemas.constFind(channel.schema);
    const quint32 schemaVersion = schema == m_schemas.constEnd() ? 0 : schema->version;
    const auto known = m_announcements.constFind(channel.id);
    if (known != m_announcements.constEnd() && known->record == record && known->schemaVersion == schemaVersion &&
        (known->entry ? find(channel.id) == known->entry || known->entry->file != m_file
                      : m_awaited.contains(channel.id))) {
        if (known->entry)
            setNumber(channel.id, known->entry);
        return QString();
    }
    const QString topic = Utf8Text::decode(channel.topic);
    const quint64 replaced = known == m_announcements.constEnd() ? 0 : quint64(known->record.size()) + EntryOverhead;
    m_kept -= replaced;
    if (!makeRoom(size)) {
        m_kept += replaced;
        return QCoreApplication::translate("McapStream",
                                           "channel %1 is one too many: 64 MiB of schemas and channels are known")
            .arg(topic);
    }
    m_announcements.insert(channel.id, Announcement{QByteArray(body, int(size)), schemaVersion, nullptr});

    Type type;
    findType(channel, topic, &type);
    m_awaited.remove(channel.id);
    if (type.isAwaited) {
        m_awaited.insert(channel.id, Awaited{topic, type.schema});
        if (channel.id < m_byNumber.size())
            m_byNumber[channel.id] = nullptr;
    }
    Known* const entry = type.isAwaited ? nullptr : add(channel.id, type.info, topic, type.kind, type.schema);
    m_announcements[channel.id].entry = entry;
    if (!type.problem.isEmpty())
        return topic + QStringLiteral(": ") + type.problem;
    return type.info || type.isAwaited ? QString() : describe(entry->id);
}

/** What a channel's messages were announced as; what was read points into its record. */
TypeSchema McapChannels::schemaOf(const Mcap::Channel& channel) const
{
    const Schema schema = m_schemas.value(channel.schema);
    return {Utf8Text::decode(schema.name), QByteArray(channel.encoding.constData(), channel.encoding.size()),
            schema.encoding, schema.data};
}

/** Finds the type of a channel's messages, or why there is none. */
void McapChannels::findType(const Mcap::Channel& channel, const QString& topic, Type* type)
{
    const QString messages = Utf8Text::decode(channel.encoding);
    type->kind = messages.isEmpty() ? QCoreApplication::translate("McapStream", "no encoding") : messages;
    type->schema = schemaOf(channel);
    Encoding* const encoding = m_definitions->find(messages);
    if (!encoding || !encoding->hasSchemas())
        return;
    // What messages say themselves is not lost where a schema is missing, or is of no use.
    type->isAwaited = encoding->getTraits().isSelfDescribing;
    if (type->isAwaited && type->schema.name.isEmpty())
        type->schema.name = topic;
    const auto schema = m_schemas.constFind(channel.schema);
    if (schema == m_schemas.constEnd()) {
        if (channel.schema == 0 && type->isAwaited)
            return;
        type->kind += QCoreApplication::translate("McapStream", " without a schema");
        type->problem = channel.schema == 0
                            ? QCoreApplication::translate("McapStream", "the channel has no schema")
                            : QCoreApplication::translate("McapStream", "the channel's schema %1 was not announced")
                                  .arg(channel.schema);
        return;
    }
    type->kind = Utf8Text::decode(schema->name);
    if (schema->encoding.isEmpty() && type->isAwaited)
        return;
    // Writers that did not find a definition leave all but its name empty.
    QString error;
    if (schema->encoding.isEmpty() && schema->data.isEmpty())
        type->info = encoding->findType(type->kind, &error);
    if (type->info)
        return;
    if (encoding->readsSchema(schema->encoding))
        makeType(type);
    else
        type->problem = QCoreApplication::translate("McapStream", "the schema %1 is %2 and the messages are %3")
                            .arg(type->kind, Utf8Text::decode(schema->encoding), messages);
}

/** Makes the type that a schema describes, or finds out that this takes a message. */
void McapChannels::makeType(Type* type)
{
    QString error;
    type->info = m_definitions->find(Utf8Text::decode(type->schema.messageEncoding))->makeType(type->schema, &error);
    if (!error.isEmpty())
        type->problem =
            QCoreApplication::translate("McapStream", "the schema %1 cannot be used: %2").arg(type->schema.name, error);
    type->isAwaited = type->isAwaited && !type->info;
}

const McapChannels::Entry* McapChannels::meet(quint16 channel, const QByteArray& message, QString* problem)
{
    const Awaited awaited = m_awaited.take(channel);
    Type type;
    type.schema = awaited.schema;
    type.schema.sample = message;
    makeType(&type);
    if (!type.problem.isEmpty())
        *problem = awaited.topic + QStringLiteral(": ") + type.problem;
    Known* const entry = add(channel, type.info, awaited.topic, type.schema.name, awaited.schema);
    m_announcements[channel].entry = entry;
    return entry;
}

McapChannels::Known* McapChannels::add(quint16 channel, const MessageInfo* info, const QString& topic,
                                       const QString& kind, const TypeSchema& schema)
{
    const QString likeness = QStringLiteral("%1\n%2\n%3").arg(quintptr(info)).arg(topic, kind);
    if (Known* const earlier = takeEarlier(likeness)) {
        setNumber(channel, earlier);
        return earlier;
    }
    // A number that is given to another channel makes another sender: the statistics of the two must not mix.
    const quint32 version = m_versions[channel]++ & 0xffff;
    std::unique_ptr<Known> entry(
        new Known{{info, 0, version << 16 | channel, !m_isWanted || m_isWanted(info)}, likeness, m_file});
    if (info)
        entry->id = *m_ids.insert(info, m_ids.value(info, quint32(m_ids.size()) + 1));
    else
        entry->id = FirstUndecodableId + quint32(m_entries.size());
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_topics.insert(entry->sender, topic);
        if (!info)
            m_unknown.insert(
                entry->id,
                {QCoreApplication::translate("McapStream", "%1 (%2, not decodable)").arg(topic, kind), schema});
    }
    m_entries.push_back(std::move(entry));
    m_kept += EntryOverhead;
    setNumber(channel, m_entries.back().get());
    return m_entries.back().get();
}

/** The same channel of a file before, where it may have had another number; null when there is none. */
McapChannels::Known* McapChannels::takeEarlier(const QString& likeness)
{
    const auto alike = m_earlier.find(likeness);
    while (alike != m_earlier.end() && !alike->empty()) {
        Known* const entry = alike->back();
        alike->pop_back();
        if (entry->file != m_file) // else another number has it already
            return entry;
    }
    return nullptr;
}

void McapChannels::setNumber(quint16 channel, Known* entry)
{
    if (channel >= m_byNumber.size())
        m_byNumber.resize(std::size_t(channel) + 1, nullptr);
    m_byNumber[channel] = entry;
    entry->file = m_file;
}

const McapChannels::Entry* McapChannels::makeUp(quint16 channel)
{
    return add(channel, nullptr, QCoreApplication::translate("McapStream", "channel %1").arg(channel),
               QCoreApplication::translate("McapStream", "not announced"), TypeSchema());
}

QString McapChannels::getTopic(quint32 sender) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_topics.value(sender);
}

QString McapChannels::describe(quint32 id) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_unknown.value(id).description;
}

TypeSchema McapChannels::getSchema(quint32 id) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_unknown.value(id).schema;
}
