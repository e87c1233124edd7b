#ifndef CORVEL_MCAPINDEX_H
#define CORVEL_MCAPINDEX_H

#include "inputfile.h"
#include "recordingindex.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <vector>

/**
 * Where the chunks of an MCAP file lie, and what its summary says.
 *
 * Taken from the summary when the file has one with an index of its chunks, and no messages outside of them that the
 * summary tells of; else the file is walked from record to
 * record, as far as it goes. Then a chunk is decompressed only where it may be the first to name a channel. A long run
 * of messages outside of chunks counts as several chunks. Does not change once it is loaded, and may then be read on
 * any thread.
 */
class CORVELFRAMEWORK_EXPORT McapIndex : public RecordingIndex
{
public:
    /** A stretch of the file and the times of its messages, in nanoseconds since 1970. */
    struct CORVELFRAMEWORK_EXPORT Chunk
    {
        quint64 offset;
        quint64 length;
        quint64 start;
        quint64 end;
        bool isOrdered = true; ///< whether messages outside of chunks come in the order of their times
        std::vector<quint16> channels = std::vector<quint16>(); ///< of its messages; empty where nothing tells
    };

    /** A record that announces a schema or a channel. */
    struct CORVELFRAMEWORK_EXPORT Definition
    {
        quint64 offset;    ///< in the file, of the record or its chunk; 0 when it is from the summary
        QByteArray record; ///< with its head
    };

    virtual ~McapIndex();

    /**
     * Reads the index of a file.
     *
     * @param error  why null is returned; must not be null
     * @param goOn   as of prepare(), which has nothing left to do
     * @return owned by the caller; null when the file cannot be read or is no MCAP file, or @p goOn said no
     */
    static McapIndex* load(const QString& path, QString* error, const GoOn& goOn = GoOn());

    /** The index of a recording in several files, whose offsets go on from file to file. One that cannot be indexed has
     * none in it; null when that is so of all. */
    static McapIndex* load(const QVector<InputFile>& files, QString* error, const GoOn& goOn = GoOn());

    qint64 getStartTime() const override;
    qint64 getEndTime() const override;
    quint64 findOffset(qint64 time) override;
    /** The beginning of a chunk that is later, with all that follow, than all before it. */
    quint64 findCut(quint64 offset) override;

    /** In the order of the file. */
    const QVector<Chunk>& getChunks() const { return m_chunks; }
    /** Whether the file has a summary with an index, so that it is known to be complete. */
    bool hasSummary() const { return m_summary; }
    /** Whether there is, or may be, a checksum of all that comes before the summary. */
    bool hasDataChecksum() const { return m_dataChecksum; }
    /** The number of messages, or -1 when no summary tells it. */
    qint64 getMessageCount() const { return m_messages; }
    /** What announces schemas and channels, in the order of the file, without mere repetitions. */
    const QVector<Definition>& getDefinitions() const { return m_definitions; }

private:
    friend class McapIndexReader;
    McapIndex();
    void append(const McapIndex& next, quint64 offset);
    void findCuts();
    Q_DISABLE_COPY(McapIndex)

    QVector<Chunk> m_chunks;
    QVector<quint64> m_latestEnds; // of each chunk and those before
    QVector<Definition> m_definitions;
    bool m_summary;
    bool m_dataChecksum;
    qint64 m_messages;
    std::vector<quint64> m_cuts; // see findCut(), in order
};

#endif
