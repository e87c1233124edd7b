#ifndef FIELDPASS_H
#define FIELDPASS_H

#include "fieldpath.h"
#include "passinput.h"
#include "sourcefactory.h"
#include "streamdecoder.h"

#include <QThread>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

class QReadWriteLock;

/**
 * Reads fields out of a whole recording once, on a thread of its own, whatever is played of it meanwhile.
 *
 * Only messages of the wanted types, and of those that took their places, are looked into. Values are taken away from
 * time to time; the pass waits when nobody does. Messages without a time are left out.
 */
class FieldPass : public QThread, private StreamSink
{
    Q_OBJECT

public:
    struct Value
    {
        double time;   ///< seconds since 1970
        double number; ///< in the unit of the field; NaN where there is none
    };

    /** Values of one field of one sender, in the order of the recording. */
    struct Piece
    {
        int path;       ///< which of the wanted fields
        QString sender; ///< as the decoder calls it
        std::vector<Value> values;
    };

    /** @param paths  the fields, of types that are known already
     *  @param lock   held for reading while descriptions are read; borrowed */
    FieldPass(SourceParts parts, const QVector<FieldPath>& paths, QReadWriteLock* lock);
    /** Cancels, and waits until the thread has ended. */
    ~FieldPass() override;

    /** The next values; false when there are none now. */
    bool take(Piece* piece);
    /** Whether everything was read and taken, or reading failed. */
    bool isOver() const;
    /** How far it is. */
    int getPercent() const { return m_percent; }
    /** Why it failed, once it is over; else empty. */
    QString getErrorString() const;

    /** The number that @p path leads to in @p message, in the unit of the field; NaN where there is none or it means
     * "not available". Also of hidden fields. */
    static double numberOf(const FieldPath& path, const Message* message);
    /** Likewise of a value that was read. */
    static double numberOf(const FieldPath& path, const FieldValue& value);

protected:
    void run() override;

private:
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}

    struct Last
    {
        Piece* piece = nullptr;
        quint32 sender = 0;
    };

    /** What is read of the messages of a type. */
    struct Want
    {
        int path;
        FieldPath field;
    };
    typedef std::vector<Want> Wants;

    bool open(OpenedStream* stream);
    void read(StreamDecoder* decoder);
    // With the lock held.
    const Wants& wantsOf(const MessageInfo* info);
    void handOver(Piece* piece);
    void handOverAll();
    void fail(const QString& text);

    const QVector<FieldPath> m_paths;
    std::vector<Last> m_last; // that got a value, by path
    std::unordered_map<const MessageInfo*, Wants> m_wants;
    const MessageInfo* m_wantedInfo = nullptr; // of the newest message
    const Wants* m_wanted = nullptr;
    QReadWriteLock* m_lock;
    PassInput m_input;
    const StreamDecoder* m_decoder = nullptr;                     // while it reads
    std::unordered_map<quint64, std::unique_ptr<Piece>> m_pieces; // that are being filled, by path and sender
    std::atomic<int> m_percent{0};

    mutable std::mutex m_mutex; // for what follows
    std::condition_variable m_taken;
    std::deque<Piece> m_waiting;
    bool m_ended = false;
    QString m_error;
};

#endif
