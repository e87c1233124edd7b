#ifndef MCAPREADER_H
#define MCAPREADER_H

#include "mcapchannels.h"
#include "mcapcopies.h"
#include "mcapindex.h"
#include "mcapmessageorder.h"
#include "mcaprecord.h"
#include "selectivedecoder.h"
#include "streamdecoder.h"

#include <QVector>

#include <map>

/** What McapStreamDecoder does: finds records in a stream and hands out the messages. */
class McapReader
{
public:
    /** @param mustEnd  whether a stream without an end mark was cut off */
    McapReader(Definitions* definitions, bool mustEnd);

    void setIndex(const McapIndex& index);
    void setFiles(const QVector<InputFile>& files);
    void setTypeFilter(const SelectiveDecoder::TypeFilter& isWanted);
    void feed(const char* bytes, quint64 size, StreamSink* sink);
    void finish(StreamSink* sink);
    void restart(quint64 offset);

    const McapChannels& getChannels() const { return m_channels; }

private:
    enum State
    {
        AtMagic,
        AtRecord,
        InRecord,
        InChunkHead,
        InChunkName,
        InChunk,
        Skipping,  // m_left bytes
        Searching, // for a record that makes sense, since m_searchStart
        AtEndMagic,
        AtEnd
    };

    typedef McapMessageOrder::Chunk Chunk;

    void feedPart(const char* bytes, quint64 size, StreamSink* sink);
    quint64 endOfFile() const;
    bool step();
    const char* take(quint64 size);
    void account(const char* bytes, quint64 size);
    bool isCrcWanted() const { return m_crcCovers && !m_leavesOut && (m_dataCrcIsWanted || m_summaryOffset != 0); }

    bool readMagic();
    bool readRecordHead();
    bool readRecord();
    bool isChunkWanted() const;
    bool readChunkHead();
    bool readChunkName();
    bool readChunk();
    bool readPlainChunk();
    bool skip();
    bool search(int least);
    bool isNext(const char* bytes);
    bool readEndMagic();
    bool passOverEnd();

    static QString whyImpossible(const Mcap::RecordHead& head);
    void startSearch(quint64 since, quint64 until, const QByteArray& consumed, const QString& reason);
    void endSearch(quint64 found);
    static bool isPlausible(const char* bytes, quint64 size);

    void processRecord(const char* body, quint64 size);
    void processMessage(const char* body, quint64 size);
    void processChunk(const char* bytes, quint64 size);
    void processRecords(std::unique_ptr<Chunk> chunk, quint64 size, quint32 crc);
    std::unique_ptr<Chunk> makeChunk();
    std::unique_ptr<Chunk> decompress(const char* bytes, quint64 size, bool* good, quint64* written, QByteArray* error);
    void parseChunk(Chunk* chunk, quint64 size, bool mustBeWhole);
    void holdChunk(std::unique_ptr<Chunk> chunk);
    int salvageChunk();
    void finishRecord();

    typedef std::map<quint16, McapCopies> Waiting; // by channel
    struct LaterStart
    {
        quint64 offset;
        quint64 earliest; // of chunks from that offset on
    };
    struct ChunkChannels
    {
        quint64 offset; // of the chunk
        std::vector<quint16> channels;
    };
    std::vector<LaterStart>::const_iterator laterStart(quint64 offset) const;
    void endStretch();
    /** The channel of a message; null when the message has to wait for it. */
    const McapChannels::Entry* channelOf(quint16 number, const char* body, quint64 size)
    {
        const McapChannels::Entry* const known = m_channels.find(number);
        return known ? known : missingChannelOf(number, body, size);
    }
    const McapChannels::Entry* missingChannelOf(quint16 number, const char* body, quint64 size);
    const McapChannels::Entry* meetChannel(quint16 number, const QByteArray& message);
    const McapChannels::Entry* makeUpChannel(quint16 number);
    void stopWaiting(Waiting::iterator waiting, const McapChannels::Entry* channel);
    void giveUpWaiting();
    void catchUpOnDefinitions();
    void recover(quint8 opcode, quint16 id);
    bool checkCrc(quint32 given, quint32 right, const QString& what);

    void report(StreamProblem::Kind kind, quint64 offset, quint64 length, const QString& text);
    void addDefinition(const QByteArray& record);
    void addDefinition(quint8 opcode, const char* body, quint64 size);
    void reportDefinition(const QString& text, const McapChannels::Entry* channel);

    McapChannels m_channels;
    McapMessageOrder m_order;
    Mcap::Decompressor m_decompressor;
    const bool m_mustEnd;              // it is a recording
    bool m_fed;                        // anything since the last end
    bool m_leapt;                      // and nothing was fed since
    std::vector<quint64> m_fileStarts; // in the stream
    std::size_t m_file;                // that is being fed
    quint64 m_fedEnd;                  // of what was fed
    QVector<McapIndex::Definition> m_definitions;
    StreamSink* m_sink; // of the call

    // What is fed, and what was fed before and is not complete.
    const char* m_input;
    quint64 m_inputSize;
    QByteArray m_backlog; // behind a search: what is to be read again
    std::vector<char> m_gathered;
    bool m_gatheredTaken;

    State m_state;
    quint64 m_position;     // in the stream, of the next byte to be worked off
    quint64 m_recordOffset; // of the record being read
    quint8 m_opcode;
    quint64 m_length; // of the record's body
    quint64 m_left;   // bytes to skip
    quint32 m_definitionProblems;

    QByteArray m_chunkHeadBytes;
    Mcap::ChunkHead m_chunkHead;
    std::unique_ptr<Chunk> m_plainChunk; // being filled, when there is nothing to decompress
    quint64 m_plainSize;
    quint32 m_plainCrc; // of these bytes

    QByteArray m_window; // that is searched
    quint64 m_windowOffset;
    quint64 m_searchStart;
    quint64 m_searchEnd; // where a record ends that is too long to be believed; the greatest number for none
    QString m_searchReason;
    bool m_searchIsQuiet;   // nothing speaks against that record so far
    bool m_searchIsForNext; // that record is wrong in itself, so that another has to follow

    quint32 m_crc; // of the data section, and then of the summary
    bool m_crcCovers;
    bool m_dataCrcIsWanted;
    quint64 m_summaryOffset;
    bool m_ended; // the footer was seen

    Waiting m_waiting; // messages of channels that were not announced
    quint64 m_waitingBytes;
    bool m_hasLost; // anything that may have announced channels

    // For the order of messages.
    bool m_hasIndex;
    quint64 m_indexEnd;                         // it knows of nothing from there on
    bool m_isInOrder;                           // by itself, as the index has it
    bool m_leavesOut;                           // what nobody wants
    std::vector<ChunkChannels> m_chunkChannels; // in the order of the stream; only then
    std::vector<LaterStart> m_starts;
    McapCopies m_stretch;   // messages outside of chunks, one behind the other
    quint64 m_stretchEnd;   // where another begins
    quint64 m_greatestTime; // of messages in chunks before the newest
    quint64 m_releasedTime; // up to which messages were handed out
    bool m_orderIsLost;
};

#endif
