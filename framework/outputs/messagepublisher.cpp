#include "messagepublisher.h"

#include "message.h"
#include "messagereference.h"
#include "protobuftranscoder.h"
#include "streamidentities.h"

#include <QDateTime>

static bool isReadElsewhere(const TypeSchema& schema)
{
    for (const char* encoding : {"protobuf", "cdr", "ros1", "json"})
        if (schema.messageEncoding == encoding)
            return true;
    return false;
}

MessagePublisher::MessagePublisher(const Definitions* definitions)
    : m_definitions(definitions)
{
    m_published.m_publisher = this;
}

MessagePublisher::~MessagePublisher() {}

MessagePublisher::Published& MessagePublisher::publish(int source, const ReceivedMessage& message,
                                                       const StreamIdentities& identities, const StreamDecoder* decoder)
{
    m_published.m_received = &message;
    m_published.m_source = source;
    m_published.m_row = message.row;
    Row& row = rowOf(m_published);
    // A type of the same name can have become another.
    if (!row.isKnown || row.info != message.info)
        row = makeRow(message, identities, decoder);
    ReceivedMessage& original = m_published.m_original;
    original = message;
    original.info = nullptr;
    original.id = row.original;
    original.sender = row.original;
    original.offset = ++m_counts[row.sender];
    if (original.time == Message::NoTime)
        original.time = QDateTime::currentMSecsSinceEpoch() * 1000;
    m_published.m_readable = original;
    m_published.m_readable.data = nullptr;
    return m_published;
}

const ReceivedMessage& MessagePublisher::Published::getOriginal()
{
    return m_original;
}

const ReceivedMessage& MessagePublisher::Published::getReadable()
{
    if (m_readable.data)
        return m_readable;
    const Row& row = m_publisher->rowOf(*this);
    m_readable.id = row.readable;
    m_readable.sender = row.readable;
    m_readable.data = m_received->data;
    if (!row.isNumbered)
        m_readable.sequence = Message::NoSequence;
    if (!row.transcoder)
        return m_readable;
    const MessageReference message = MessageReference::adopt(m_received->createMessage(QString()));
    m_bytes = row.transcoder->encode(message.get());
    m_readable.data = m_bytes.constData();
    m_readable.size = int(m_bytes.size());
    return m_readable;
}

MessagePublisher::Row& MessagePublisher::rowOf(const Published& published)
{
    if (published.m_source >= int(m_rows.size()))
        m_rows.resize(std::size_t(published.m_source) + 1);
    std::vector<Row>& rows = m_rows[std::size_t(published.m_source)];
    if (published.m_row >= int(rows.size()))
        rows.resize(std::size_t(published.m_row) + 1);
    return rows[std::size_t(published.m_row)];
}

MessagePublisher::Row MessagePublisher::makeRow(const ReceivedMessage& message, const StreamIdentities& identities,
                                                const StreamDecoder* decoder)
{
    const StreamIdentities::Row& names = identities.getRows().at(message.row);
    Row row;
    row.info = message.info;
    row.isKnown = true;
    // Where senders number all their messages, a channel has only some of the numbers.
    row.isNumbered = decoder->getSequenceModulus() > 0xffffffff;
    PublishedChannel channel;
    channel.sender = identities.getSenderName(names.sender);
    channel.hasManyTypes = QLatin1String(decoder->getRecordingName()) == QLatin1String("tlog");
    channel.schema.name = names.typeName;
    const QString source = channel.sender.isEmpty() ? names.typeName : channel.sender;
    row.sender = m_senders.value(source, m_counts.size());
    if (row.sender == m_counts.size()) {
        m_senders.insert(source, row.sender);
        m_counts.push_back(0);
    }
    row.original = addChannel(channel);

    channel.schema = message.info ? m_definitions->schemaOf(message.info) : decoder->getUnknownSchema(message.id);
    if (message.info && !isReadElsewhere(channel.schema)) {
        ProtobufTranscoder*& transcoder = m_transcoderByInfo[message.info];
        if (!transcoder) {
            m_transcoders.emplace_back(new ProtobufTranscoder(message.info));
            transcoder = m_transcoders.back().get();
        }
        row.transcoder = transcoder;
        channel.schema = transcoder->getSchema();
    } else if (channel.schema.messageEncoding.isEmpty()) {
        channel.schema.messageEncoding = "application/octet-stream";
    }
    if (channel.schema.name.isEmpty())
        channel.schema.name = names.typeName;
    row.readable = addChannel(channel);
    return row;
}

quint32 MessagePublisher::addChannel(PublishedChannel channel)
{
    const QByteArray key = PublishedStream::channelRecord(channel);
    const auto known = m_numbers.constFind(key);
    if (known != m_numbers.constEnd())
        return *known;
    channel.number = quint32(m_channels.size());
    m_numbers.insert(key, channel.number);
    m_channels.push_back(channel);
    return channel.number;
}
