#ifndef CORVEL_MCAPWRITER_H
#define CORVEL_MCAPWRITER_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <memory>

class QIODevice;

/**
 * Writes an MCAP recording: schemas, channels, messages in chunks with checksums, and at the end an index and
 * statistics.
 *
 * What was written before the program was killed can be read: schemas and channels stand outside of chunks, and a chunk
 * is written out when it holds a certain number of bytes or when its messages span a certain time, whichever is first.
 *
 * @code
 * McapWriter writer(&file);
 * writer.open();
 * const quint16 schema = writer.addSchema("demo.Car", "protobuf", fileDescriptorSet);
 * const quint16 channel = writer.addChannel("/car", "protobuf", schema);
 * writer.writeMessage(channel, 0, nanoseconds, bytes);
 * if (!writer.close())
 *     complain(writer.getErrorString());
 * @endcode
 *
 * Once writing has failed, all operations do nothing but fail. One thread at a time.
 */
class CORVELFRAMEWORK_EXPORT McapWriter
{
public:
    enum Compression
    {
        NoCompression,
        Lz4,
        Zstd
    };

    struct CORVELFRAMEWORK_EXPORT Settings
    {
        /** zstd, chunks of 1 MiB or one second, no profile. */
        Settings();

        Compression compression;
        int chunkSize;         ///< bytes of records that make a chunk full; 0 writes messages outside of chunks
        quint64 chunkDuration; ///< nanoseconds between the first and the last message that make a chunk full
        QByteArray profile;    ///< of the header
        QByteArray writerName; ///< of the header: the program that writes
    };

    /** @param device  open for writing; must not be null, and must live until close(). Need not be seekable. */
    explicit McapWriter(QIODevice* device, const Settings& settings = Settings());

    /** Does not close(): without it the recording counts as unfinished, and the chunk begun is lost. */
    ~McapWriter();

    /** Writes the beginning of the file. */
    bool open();

    /**
     * Adds a schema. @p data is a serialized FileDescriptorSet where @p encoding is "protobuf".
     *
     * @return its number; 0, which means none, when there are 65535 already
     */
    quint16 addSchema(const QByteArray& name, const QByteArray& encoding, const QByteArray& data);

    /**
     * Adds a channel.
     *
     * @param schema    from addSchema(), or 0
     * @param metadata  what else is to be known of it, by name
     * @return its number, counted from 1; 0 when there are 65535 already
     */
    quint16 addChannel(const QByteArray& topic, const QByteArray& encoding, quint16 schema,
                       const QMap<QByteArray, QByteArray>& metadata = QMap<QByteArray, QByteArray>());

    /**
     * Adds a message to the current chunk.
     *
     * @param channel   from addChannel()
     * @param sequence  0 for none
     * @param time      nanoseconds since 1970; messages need not be in order
     */
    bool writeMessage(quint16 channel, quint32 sequence, quint64 time, const char* data, int size);
    /** The same with the time at which the sender sent it, which is else @p time. */
    bool writeMessage(quint16 channel, quint32 sequence, quint64 time, quint64 publishTime, const char* data, int size);
    bool writeMessage(quint16 channel, quint32 sequence, quint64 time, const QByteArray& data);

    /** Writes the current chunk out, however full it is. For a timer, when messages may cease to come. */
    bool flush();

    /** Writes the current chunk, the index and the end mark. The device stays open. */
    bool close();

    /** Messages taken so far. */
    quint64 getMessageCount() const;
    /** Bytes given to the device so far. */
    quint64 getWrittenSize() const;

    /** Why an operation failed. */
    QString getErrorString() const;

private:
    Q_DISABLE_COPY(McapWriter)

    struct Private;
    std::unique_ptr<Private> m_private;
};

#endif
