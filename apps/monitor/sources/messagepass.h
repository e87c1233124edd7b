#ifndef MESSAGEPASS_H
#define MESSAGEPASS_H

#include "messagetap.h"
#include "passinput.h"
#include "recordingpass.h"
#include "sourcefactory.h"

#include <QThread>

#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

/**
 * Reads the last messages of some types before a place out of a recording, on a thread of its own: from that place
 * back, stretch by stretch, so that the newest are there soon however long the recording is.
 *
 * What can be cut nowhere is read from its beginning. No more is kept than is wished for.
 */
class MessagePass : public QThread, private StreamSink
{
    Q_OBJECT

public:
    /** What is read. */
    struct Wish
    {
        /** Asked on the thread of the pass; @p sender is as the decoder calls it. */
        std::function<bool(const MessageInfo* info, const QString& sender)> isWanted;
        /** Of these types alone. */
        QSet<const MessageInfo*> types;
        StreamPlace place;
        int mostMessages;
        qint64 mostBytes;
        quint64 firstStretch = 1024 * 1024; ///< bytes; those before are longer, up to 16 times that
    };

    /**
     * @param more  the same recording once more, with which messages of other types are left out where that can be
     *              done; without an input it is done without
     */
    MessagePass(SourceParts parts, SourceParts more, const Wish& wish);
    /** Cancels, and waits until the thread has ended. */
    ~MessagePass() override;

    /** The next messages: in the order of the recording, and before all that were taken. False when there are none
     * now. */
    bool take(std::vector<EarlierMessage>* messages);
    /** Whether all was read and taken. */
    bool isOver() const;
    /** Whether it could be read, once it is over: the place was found again. */
    bool isGood() const { return m_isGood; }
    /** Whether it was bytes and not messages of which there were too many. */
    bool isFull() const { return m_isFull; }
    /** How far it is. */
    int getPercent() const { return m_percent; }
    /** Why it failed, once it is over; else empty. */
    QString getErrorString() const;

protected:
    void run() override;

private:
    /** The recording, opened. */
    struct Reader
    {
        explicit Reader(SourceParts parts)
            : input(std::move(parts.input), std::move(parts.opener))
        {
        }

        PassInput input;
        OpenedStream stream{};
    };

    /** Who sends a type. */
    struct Sender
    {
        bool isWanted;
        QString name;
    };

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}

    static bool open(Reader* reader);
    Reader* openSelective();
    void readBack();
    bool read(Reader* reader, quint64 begin, quint64 end);
    bool isBehindPlace(const ReceivedMessage& message) const;
    bool isPlace(const ReceivedMessage& message);
    void keep(const ReceivedMessage& message, const QString& sender);
    void handOver();
    bool isEnough() const { return m_messages >= m_wish.mostMessages || m_isFull; }

    const Wish m_wish;
    const std::unique_ptr<Reader> m_reader;
    const std::unique_ptr<Reader> m_more; // may be null
    std::atomic<bool> m_isCancelled{false};
    std::atomic<bool> m_isGood{false};
    std::atomic<bool> m_isFull{false};
    std::atomic<int> m_percent{0};

    // Of the thread.
    const StreamDecoder* m_decoder = nullptr;                           // that reads
    std::map<std::pair<const MessageInfo*, quint32>, Sender> m_senders; // as that has them
    quint64 m_anchor = 0;     // where the place is, or from where on it can be
    bool m_meetsPlace = true; // it is looked for
    bool m_isAtPlace = false; // nothing more is taken
    quint32 m_alike = 0;      // messages in a row that are like that of the place
    std::deque<EarlierMessage> m_stretch;
    qint64 m_stretchBytes = 0;
    int m_messages = 0; // that were handed over
    qint64 m_bytes = 0;

    mutable std::mutex m_mutex; // for what follows
    std::deque<std::vector<EarlierMessage>> m_found;
    bool m_ended = false;
    QString m_error;
};

#endif
