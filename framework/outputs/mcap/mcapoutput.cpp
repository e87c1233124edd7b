#include "mcapoutput.h"

#include "definitions.h"
#include "message.h"
#include "messageinfo.h"

#include <QCoreApplication>

namespace
{

McapWriter::Settings settingsFor(const QByteArray& program)
{
    McapWriter::Settings settings;
    settings.writerName = program;
    return settings;
}

MessageOutput* create(const OutputKind::Surroundings& surroundings, const StreamDecoder* decoder)
{
    return new McapOutput(surroundings, decoder);
}

} // namespace

// A chunk is compressed, and the better the longer it is.
const OutputKind McapOutputKind = {"mcap", QT_TRANSLATE_NOOP("OutputKind", "MCAP recordings"), "mcap", 1000, create};

McapOutput::McapOutput(const OutputKind::Surroundings& surroundings, const StreamDecoder* decoder)
    : MessageOutput(decoder)
    , m_definitions(surroundings.definitions)
    , m_writer(surroundings.device, settingsFor(surroundings.program))
{
    m_writer.open();
}

void McapOutput::setDecoder(const StreamDecoder* decoder)
{
    MessageOutput::setDecoder(decoder);
    m_channelsOfDecoder.clear();
}

quint16 McapOutput::addChannel(const QString& topic, const MessageInfo* info)
{
    const TypeSchema schema = info ? m_definitions->schemaOf(info) : TypeSchema();
    if (!schema.isEmpty() && !m_schemas.contains(info))
        m_schemas.insert(info, m_writer.addSchema(schema.name.toUtf8(), schema.encoding, schema.data));
    return m_writer.addChannel(topic.toUtf8(), schema.messageEncoding, m_schemas.value(info));
}

quint16 McapOutput::channelOf(const ReceivedMessage& message)
{
    const quint64 key = quint64(message.id) << 32 | message.sender;
    const QHash<quint64, quint16>::const_iterator known = m_channelsOfDecoder.constFind(key);
    if (known != m_channelsOfDecoder.constEnd())
        return *known;
    QString topic = getDecoder()->getSenderName(message.sender);
    if (topic.isEmpty())
        topic = message.info ? message.info->getName() : getDecoder()->describeUnknown(message.id);
    const QString unknown = message.info ? QString() : getDecoder()->describeUnknown(message.id);
    const QPair<const MessageInfo*, QString> lasting(message.info, topic + QLatin1Char('\n') + unknown);
    if (!m_channels.contains(lasting))
        m_channels.insert(lasting, addChannel(topic, message.info));
    const quint16 channel = m_channels.value(lasting);
    m_channelsOfDecoder.insert(key, channel);
    return channel;
}

void McapOutput::processReceived(const ReceivedMessage& message)
{
    const qint64 time = message.time == Message::NoTime ? now() : message.time;
    m_writer.writeMessage(channelOf(message), message.sequence > 0 ? quint32(message.sequence) : 0,
                          quint64(time) * 1000, message.data, message.size);
}
