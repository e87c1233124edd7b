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

quint64 nanoseconds(qint64 time, qint16 rest)
{
    return quint64(time) * 1000 + quint64(qMax<qint16>(0, rest));
}

MessageOutput* create(const OutputKind::Surroundings& surroundings, const StreamDecoder* decoder)
{
    return new McapOutput(surroundings, decoder);
}

} // namespace

// A chunk is compressed, and the better the longer it is.
const OutputKind McapOutputKind = {"mcap",
                                   QT_TRANSLATE_NOOP("OutputKind", "MCAP recordings"),
                                   "mcap",
                                   1000,
                                   "",
                                   "FILE.mcap",
                                   "flight.mcap",
                                   0,
                                   0,
                                   "",
                                   "",
                                   nullptr,
                                   create,
                                   nullptr};

McapOutput::McapOutput(const OutputKind::Surroundings& surroundings, const StreamDecoder* decoder)
    : MessageOutput(decoder)
    , m_definitions(surroundings.definitions)
    , m_writer(surroundings.device, settingsFor(surroundings.program))
{
    m_identities.setDecoder(decoder);
    m_writer.open();
}

void McapOutput::setDecoder(const StreamDecoder* decoder)
{
    MessageOutput::setDecoder(decoder);
    m_identities.setDecoder(decoder);
}

quint16 McapOutput::addChannel(const QString& topic, const ReceivedMessage& message)
{
    const MessageInfo* const info = message.info;
    const TypeSchema schema = info ? m_definitions->schemaOf(info) : getDecoder()->getUnknownSchema(message.id);
    const bool hasSchema = !schema.encoding.isEmpty() || !schema.name.isEmpty();
    quint16 number = info ? m_schemas.value(info) : 0;
    if (hasSchema && number == 0)
        number = m_writer.addSchema(schema.name.toUtf8(), schema.encoding, schema.data);
    if (info && number != 0)
        m_schemas.insert(info, number);
    return m_writer.addChannel(topic.toUtf8(), schema.messageEncoding, number);
}

quint16 McapOutput::channelOf(const ReceivedMessage& message)
{
    const int row = m_identities.rowOf(message);
    if (row >= m_channels.size())
        m_channels.resize(row + 1);
    Channel& channel = m_channels[row];
    // A type of the same name can have become another.
    if (channel.number == 0 || channel.info != message.info) {
        const StreamIdentities::Row& names = m_identities.getRows().at(row);
        const QString sender = m_identities.getSenderName(names.sender);
        channel.number = addChannel(sender.isEmpty() ? names.typeName : sender, message);
        channel.info = message.info;
    }
    return channel.number;
}

void McapOutput::processReceived(const ReceivedMessage& message)
{
    const qint64 time = message.time == Message::NoTime ? now() : message.time;
    const quint64 logged = nanoseconds(time, message.timeRest);
    const quint64 published =
        message.publishTime == Message::NoTime ? logged : nanoseconds(message.publishTime, message.publishTimeRest);
    m_writer.writeMessage(channelOf(message), message.sequence > 0 ? quint32(message.sequence) : 0, logged, published,
                          message.data, message.size);
}
