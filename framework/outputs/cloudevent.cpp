#include "cloudevent.h"

#include "publishedstream.h"

#include <QDateTime>

#include <cstring>

namespace
{

QByteArray levelOf(const QString& name, const CloudEvent::Topics& topics)
{
    QByteArray level = name.toUtf8();
    for (char& character : level)
        if (character == '\0' || std::strchr(topics.reserved, character))
            character = '_';
    // Of empty levels NATS knows nothing.
    return level.isEmpty() && topics.separator == '.' ? QByteArray("_") : level;
}

/** The media type of a message's bytes. */
QByteArray mediaType(const QByteArray& encoding)
{
    if (encoding.contains('/'))
        return encoding;
    return encoding == "ros1" ? QByteArray("application/x-ros1") : "application/" + encoding;
}

} // namespace

CloudEvent::CloudEvent(const PublishedChannel& channel, const Topics& topics)
    : m_topic(topics.prefix)
    , m_contentType(mediaType(channel.schema.messageEncoding))
{
    const QByteArray type = channel.schema.name.toUtf8();
    m_source = channel.sender.isEmpty() ? type : channel.sender.toUtf8();
    // The type is one level whatever it contains, but its dots stay.
    Topics ofTypes = topics;
    QByteArray reserved = QByteArray(topics.reserved).replace('.', "");
    ofTypes.reserved = reserved.constData();
    const QByteArray typeLevel =
        levelOf(QString(channel.schema.name).replace(QLatin1Char('/'), QLatin1Char('.')), ofTypes);
    const QStringList path = channel.getPath();
    const int levels = int(path.size());
    for (int i = 0; i < levels; ++i) {
        const bool isType = i == levels - 1 && (channel.hasManyTypes || channel.sender.isEmpty());
        m_topic += topics.separator + (isType ? typeLevel : levelOf(path.at(i), topics));
    }
    m_attributes = {{"specversion", "1.0"}, {"source", m_source}, {"type", type}};
    m_schema = channel.schema.data;
    if (m_schema.isEmpty())
        return;
    m_schemaTopic = topics.prefix + topics.separator + "_schemas" + topics.separator + typeLevel + topics.separator +
                    channel.getSchemaHash();
    m_schemaProperties = {
        {"type", type}, {"schemaencoding", channel.schema.encoding}, {"encoding", channel.schema.messageEncoding}};
    m_attributes.append({"dataschema", topics.scheme + ':' + m_schemaTopic});
}

QByteArray CloudEvent::idOf(const PublishedStream& stream, const ReceivedMessage& message)
{
    return stream.getRun().toLatin1() + '-' + QByteArray::number(message.offset);
}

QByteArray CloudEvent::timeOf(const ReceivedMessage& message)
{
    const qint64 milliseconds = message.time / 1000 - (message.time % 1000 < 0 ? 1 : 0);
    const qint64 rest = (message.time - milliseconds * 1000) * 1000 + qMax<qint16>(0, message.timeRest);
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC)
               .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz"))
               .toLatin1() +
           QByteArray::number(rest).rightJustified(6, '0') + 'Z';
}
