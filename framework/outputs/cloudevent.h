#ifndef CLOUDEVENT_H
#define CLOUDEVENT_H

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QVector>

class PublishedStream;
struct PublishedChannel;
struct ReceivedMessage;

/**
 * How messages of a channel are published through brokers: as events of CloudEvents 1.0, whose payload is the message's
 * bytes (docs/brokers.md).
 */
class CloudEvent
{
public:
    /** How a broker writes topics. */
    struct Topics
    {
        QByteArray scheme;    ///< of the name of a schema's topic: "mqtt"
        char separator;       ///< between levels
        const char* reserved; ///< what cannot stand within a level
        QByteArray prefix;
    };

    CloudEvent(const PublishedChannel& channel, const Topics& topics);

    const QByteArray& getTopic() const { return m_topic; }
    const QByteArray& getContentType() const { return m_contentType; }
    const QByteArray& getSource() const { return m_source; }

    /** Where the schema is to be found; empty where there is none. */
    const QByteArray& getSchemaTopic() const { return m_schemaTopic; }
    const QByteArray& getSchema() const { return m_schema; }
    /** What is said of it: type, schemaencoding, encoding. */
    const QVector<QPair<QByteArray, QByteArray>>& getSchemaProperties() const { return m_schemaProperties; }

    /** The attributes that differ from message to message. */
    static QByteArray idOf(const PublishedStream& stream, const ReceivedMessage& message);
    static QByteArray timeOf(const ReceivedMessage& message);
    /** Those that all messages of the channel have in common. */
    const QVector<QPair<QByteArray, QByteArray>>& getAttributes() const { return m_attributes; }

private:
    QByteArray m_topic;
    QByteArray m_contentType;
    QByteArray m_source;
    QByteArray m_schemaTopic;
    QByteArray m_schema;
    QVector<QPair<QByteArray, QByteArray>> m_schemaProperties;
    QVector<QPair<QByteArray, QByteArray>> m_attributes;
};

#endif
