#ifndef MCAPDEFINITIONS_H
#define MCAPDEFINITIONS_H

#include "mcapindex.h"
#include "mcaprecord.h"

#include <QHash>
#include <QSet>

#include <vector>

class QFile;

/**
 * Collects what announces schemas and channels while a file is walked from record to record.
 *
 * Those inside of chunks are looked for too, which means to decompress the chunk. The index of its messages, where it
 * has one, tells whether that is of any use: a channel that was announced before has nothing new to say.
 */
class McapDefinitions
{
public:
    explicit McapDefinitions(QFile* file);

    /** Takes a record, head included, that announces something at that place of the file. */
    void add(quint64 offset, const char* record, quint64 size);

    /** The walk comes to a chunk. */
    void beginChunk(quint64 offset, quint64 length);
    /** The walk comes to the body of an index of messages. */
    void addMessageIndex(const char* body, quint64 size);
    /** The walk comes to anything else, or to its end. */
    void endChunk();

    /** Everything found, in the order of the file. */
    QVector<McapIndex::Definition> take();

private:
    struct Place
    {
        quint64 offset;
        quint64 length;
    };

    void scan(const Place& chunk);
    bool isNews() const;

    QFile* m_file;
    QVector<McapIndex::Definition> m_found;
    QHash<quint16, QByteArray> m_schemas;  // the newest record of a number
    QHash<quint16, QByteArray> m_channels; // the same, since the newest schema of theirs
    quint64 m_bytes;
    QSet<quint16> m_named; // channels that were announced
    Mcap::Decompressor m_decompressor;

    bool m_inChunk; // or in what belongs to it
    Place m_chunk;
    bool m_hasIndex;
    QVector<quint16> m_indexed;   // channels of its messages
    std::vector<Place> m_skipped; // chunks that were not decompressed
};

#endif
