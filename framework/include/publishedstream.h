#ifndef CORVEL_PUBLISHEDSTREAM_H
#define CORVEL_PUBLISHEDSTREAM_H

#include "definitions.h"
#include "streamdecoder.h"

#include <QHash>

/** What is said once of all messages of a type from a sender, on their way to an output. */
struct CORVELFRAMEWORK_EXPORT PublishedChannel
{
    /** Where such messages are published below some prefix: the sender, or the sender and the type where it has many.
     * Of these, and in the order of levels, the names as they are. */
    QStringList getPath() const;
    /** The first 12 hexadecimal digits of the SHA-256 of the schema; empty where there is none. */
    QByteArray getSchemaHash() const;

    quint32 number = 0;
    QString sender;            ///< empty where the source tells no senders apart
    bool hasManyTypes = false; ///< whether senders of the source send messages of several types
    TypeSchema schema;         ///< its name is that of the type, its message encoding how the bytes are to be read
};

/**
 * A stream of messages that say themselves who sent them and what they mean, by which they reach outputs: what waits
 * for one is kept so, in memory and on disk (docs/relay.md has the format).
 *
 * As a decoder it finds messages without a MessageInfo: ReceivedMessage::id and ReceivedMessage::sender are the number
 * of a channel, and ReceivedMessage::offset is the number of the message, counted from 1 for each sender in the run
 * that made it.
 */
class CORVELFRAMEWORK_EXPORT PublishedStream : public StreamDecoder
{
public:
    /** @param run  what tells the numbers of this run of the program from those of others */
    explicit PublishedStream(const QString& run);

    const QString& getRun() const { return m_run; }
    /** The channel of a message that was found; one without names where that is not known. */
    const PublishedChannel& getChannel(quint32 number) const;

    /** Says what messages of the channel are; before the first of them. */
    static QByteArray channelRecord(const PublishedChannel& channel);
    /** What a channelRecord() says of the type; the same for channels that differ in their senders only. */
    static QByteArray typeOf(const QByteArray& channelRecord);
    /** As a channelRecord(), which is many times as large, for a channel of the type of another one that was told. */
    static QByteArray likeRecord(const QByteArray& channelRecord, quint32 other);
    /** Whether a record, of at least 5 bytes, is one of these. */
    static bool isChannelRecord(const char* record);
    /** Appends a message whose id is the number of its channel. */
    static void appendMessage(const ReceivedMessage& message, QByteArray* records);
    /** Appends bytes that were no message, for outputs that keep these, too. */
    static void appendDamage(const StreamProblem& problem, QByteArray* records);

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    void restart(quint64 offset) override;
    bool hasTimes() const override { return true; }
    QString getSenderName(quint32 sender) const override;
    QString describeUnknown(quint32 id) const override;
    TypeSchema getUnknownSchema(quint32 id) const override;

private:
    bool processRecord(const char* bytes, int size, StreamSink* sink);
    bool readChannel(const char* bytes, int size, bool isLike);

    QString m_run;
    QHash<quint32, PublishedChannel> m_channels;
    QByteArray m_rest;
};

#endif
