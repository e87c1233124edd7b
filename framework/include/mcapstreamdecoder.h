#ifndef CORVEL_MCAPSTREAMDECODER_H
#define CORVEL_MCAPSTREAMDECODER_H

#include "selectivedecoder.h"
#include "streamdecoder.h"

#include <memory>

class Definitions;
class McapIndex;
struct InputFile;

/**
 * Finds the messages in an MCAP recording or stream.
 *
 * Messages of channels whose encoding and schema are known have a type; those of other channels, and of channels whose
 * schema is missing or wrong, are handed out with a null ReceivedMessage::info. ReceivedMessage::data is the payload
 * alone, its offset that of the chunk that it came in or, outside of chunks, of a message shortly before. A sender is a
 * channel, called by its topic.
 *
 * Chunks are read whole: what fails its checksum or does not decompress is dropped and reported, and the following
 * chunks are read. When lengths make no sense, the search goes on for a chunk whose lengths agree with one another. A
 * chunk of more than 128 MiB, compressed or not, is passed over, and so is any other record of that length. Of a chunk
 * that the end of the stream cuts off, the messages that are complete are handed out, although its checksum cannot be
 * checked.
 *
 * A record that is too short for its kind, or of the number 0, costs nothing but itself. What announced a channel may
 * be lost with a damaged chunk: then its announcement elsewhere is taken, such as from the summary, if there is an
 * index. Without one, messages of a channel that was not announced wait for that, 64 MiB of them and no longer than for
 * the end.
 *
 * Messages of a recording come in the order of their times, in which neither they nor chunks need to stand. A message
 * is held back until no later one can be earlier: this is exact with an index; without one it is assumed that messages
 * are displaced by one chunk at most and, outside of chunks, by a second (or 1 MiB, or a chunk), and told once where
 * they are not. The index of a file whose summary counts no messages by chunk may not know of those outside. At most
 * 256 MiB are held; beyond that the earliest messages are handed out, with a word about it. Live, messages outside of
 * chunks are handed out as they come.
 *
 * With a type filter, chunks that have none of the wanted messages, as the index tells, are not decompressed, and
 * neither they nor the file as a whole are checked.
 */
class CORVELFRAMEWORK_EXPORT McapStreamDecoder : public StreamDecoder, public SelectiveDecoder
{
public:
    enum Mode
    {
        Recording, ///< is to be played at the speed of its times
        Live       ///< comes as it happens: times are those of the sender's clock, and there is no end mark to miss
    };

    /** @param definitions  makes the types; must outlive the decoder and must not be null */
    explicit McapStreamDecoder(Definitions* definitions, Mode mode = Recording);
    virtual ~McapStreamDecoder();

    /**
     * Uses what is known of the file beforehand. Before the first byte is fed.
     *
     * @param index  not needed afterwards; must not be null
     */
    void setIndex(const McapIndex* index);
    /** Says of which files the stream consists: each is a recording of its own. Before the first byte is fed. */
    void setFiles(const QVector<InputFile>& files);

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    /** Channels that were announced are still known. */
    void restart(quint64 offset) override;
    void setTypeFilter(const TypeFilter& isWanted) override;
    bool hasTimes() const override;
    QString getSenderName(quint32 sender) const override;
    void publishTypes(QStringList* problems) const override;
    QString describeUnknown(quint32 id) const override;
    TypeSchema getUnknownSchema(quint32 id) const override;
    quint64 getSequenceModulus() const override;

    /** Whether a stream that begins with these bytes, 8 or more, is MCAP. */
    static bool isMcap(const QByteArray& head);

private:
    Q_DISABLE_COPY(McapStreamDecoder)

    struct Private;
    std::unique_ptr<Private> m_private;
};

#endif
