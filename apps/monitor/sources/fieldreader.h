#ifndef FIELDREADER_H
#define FIELDREADER_H

#include "fieldpass.h"
#include "passinput.h"
#include "streamdecoder.h"

#include <QElapsedTimer>

#include <unordered_map>

/** What one thread of a FieldPass reads with: sections of the recording, one after the other. */
class FieldReader : private StreamSink
{
public:
    FieldReader(FieldPass* pass, SourceParts parts);

    /** Opens the recording; false when that fails or is cancelled. */
    bool open();
    /** Reads sections until there are no more. */
    void work();
    /** Makes whoever opens or reads return soon. Any thread. */
    void cancel() { m_input.cancel(); }

    const PassInput& getInput() const { return m_input; }
    RecordingIndex* getIndex() const { return m_stream.index.get(); }

private:
    /** What is read of the messages of a type. */
    struct Want
    {
        int path;
        FieldPath field;
    };
    typedef std::vector<Want> Wants;
    struct Last
    {
        FieldPass::Piece* piece = nullptr;
        quint32 sender = 0;
    };

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}

    // With the lock held.
    const Wants& wantsOf(const MessageInfo* info);
    FieldPass::Piece* pieceOf(int path, quint32 sender);
    void handOver(FieldPass::Piece* piece);
    void handOverAll();

    FieldPass* m_pass;
    PassInput m_input;
    OpenedStream m_stream;
    FieldPass::Section* m_section = nullptr; // that is being read
    std::vector<Last> m_last;                // that got a value, by path
    std::unordered_map<const MessageInfo*, Wants> m_wants;
    const MessageInfo* m_wantedInfo = nullptr; // of the newest message
    const Wants* m_wanted = nullptr;
    std::vector<std::unique_ptr<FieldPass::Piece>> m_pieces; // that are being filled
    std::unordered_map<quint64, FieldPass::Piece*> m_byKey;  // by path and sender
    QElapsedTimer m_sinceShown;
};

#endif
