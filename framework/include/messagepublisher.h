#ifndef CORVEL_MESSAGEPUBLISHER_H
#define CORVEL_MESSAGEPUBLISHER_H

#include "publishedstream.h"

#include <memory>
#include <vector>

class ProtobufTranscoder;
class StreamIdentities;

/**
 * Makes of what several sources receive what outputs take: messages with what is to be known of them.
 *
 * Bytes stay as they came where other software can read them with a schema: Protocol Buffers, CDR, ROS 1, JSON, and
 * what a stream brings in an encoding that nobody here knows. What else there is is transcoded to Protocol Buffers. One
 * thread, that of the messages.
 */
class CORVELFRAMEWORK_EXPORT MessagePublisher
{
public:
    /** @param definitions  of the types; must outlive this object */
    explicit MessagePublisher(const Definitions* definitions);
    ~MessagePublisher();

    /** A message in both shapes, each of which is made when it is asked for. Valid until the next one. */
    class CORVELFRAMEWORK_EXPORT Published
    {
    public:
        /** With a schema that others can read: id is the number of a channel of the publisher. */
        const ReceivedMessage& getReadable();
        /** As it came, in the bytes of its own stream. */
        const ReceivedMessage& getOriginal();

    private:
        friend class MessagePublisher;
        MessagePublisher* m_publisher = nullptr;
        const ReceivedMessage* m_received = nullptr;
        ReceivedMessage m_readable;
        ReceivedMessage m_original;
        QByteArray m_bytes;
        int m_row = -1;
        int m_source = -1;
    };

    /**
     * The next message, for the outputs to take.
     *
     * @param source      a number from 0 for each source, whose rows are those of @p identities
     * @param decoder     that found it
     */
    Published& publish(int source, const ReceivedMessage& message, const StreamIdentities& identities,
                       const StreamDecoder* decoder);

    /** The channel that a message in one of its shapes belongs to. */
    const PublishedChannel& getChannel(quint32 number) const { return m_channels.at(number); }

private:
    Q_DISABLE_COPY(MessagePublisher)

    /** What is made of a row of a source. */
    struct Row
    {
        const MessageInfo* info = nullptr;
        bool isKnown = false;
        quint32 readable = 0;
        quint32 original = 0;
        std::size_t sender = 0;                   // of m_counts
        ProtobufTranscoder* transcoder = nullptr; // null where bytes stay as they are
        bool isNumbered = false;                  // whether sequence numbers count the messages of the channel
    };

    Row& rowOf(const Published& published);
    Row makeRow(const ReceivedMessage& message, const StreamIdentities& identities, const StreamDecoder* decoder);
    quint32 addChannel(PublishedChannel channel);

    const Definitions* m_definitions;
    std::vector<PublishedChannel> m_channels;
    QHash<QByteArray, quint32> m_numbers; // by all that a channel says
    QHash<const MessageInfo*, ProtobufTranscoder*> m_transcoderByInfo;
    std::vector<std::unique_ptr<ProtobufTranscoder>> m_transcoders;
    std::vector<std::vector<Row>> m_rows;  // by source
    QHash<QString, std::size_t> m_senders; // places in m_counts
    std::vector<quint64> m_counts;         // messages of each sender
    Published m_published;
};

#endif
