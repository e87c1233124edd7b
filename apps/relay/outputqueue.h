#ifndef OUTPUTQUEUE_H
#define OUTPUTQUEUE_H

#include "segmentfolder.h"

#include <QHash>
#include <QSet>

#include <deque>
#include <memory>
#include <mutex>

/**
 * What waits for one output: a few megabytes in memory, and what is more in a folder, up to a limit beyond which the
 * oldest is dropped and counted.
 *
 * Where the folder is to be kept, everything that can be confirmed is written to it at once, so that a program that is
 * killed has lost nothing of it, and the next run goes on with what was not confirmed. Records are those of
 * PublishedStream, in blocks that can be read on their own from any file on.
 */
class OutputQueue
{
public:
    struct Settings
    {
        QString folder; ///< of this output alone; made when it is needed
        QString run;
        bool isKept = false;         ///< whether the folder outlives the program
        bool isAcknowledged = false; ///< whether confirm() is told what has arrived; else what was taken counts as that
        qint64 limit = 0;            ///< bytes in the folder
    };
    struct Block
    {
        QByteArray records;
        QString run; ///< which made the records
        quint64 messages = 0;
    };
    struct Counts
    {
        quint64 waitingMessages = 0; ///< not taken, or not confirmed
        qint64 waitingBytes = 0;
        qint64 bytesOnDisk = 0;
        quint64 dropped = 0;
    };

    explicit OutputQueue(const Settings& settings);
    ~OutputQueue();

    /** Looks what an earlier run left; false with @p error set when the folder cannot be used. */
    bool open(QString* error);

    /** Adds a record. @p channel is that of the message, or null for what is none; its own record is asked for once. */
    template <class ChannelRecord>
    void append(const quint32* channel, const QByteArray& record, const ChannelRecord& channelRecord)
    {
        if (channel && !m_channels.contains(*channel))
            addChannel(*channel, channelRecord(*channel));
        add(channel, record);
    }
    /** Lets the other side have what was added; true when there is something new. */
    bool seal();
    /** Writes down what is only in memory, where the folder is kept: nobody takes any more. */
    void keep();

    /** The next block; false when there is none now. */
    bool take(Block* block);
    /** So many more of the messages that were taken have arrived, in their order. */
    void confirm(quint64 messages);

    /** Whether more waits than memory is for, so that a recording should wait for it. */
    bool isFull() const;
    /** Whether the next block would cost the oldest. */
    bool isAtLimit() const;
    Counts getCounts() const;
    /** Messages that were there or sealed in all, and how many of these, from the oldest on, no end of the program can
     * take away: they are kept in the folder, were confirmed or dropped. */
    quint64 getTotal() const;
    quint64 getSafe() const;
    /** What went wrong with the folder since the last call. */
    QString takeProblem();

private:
    struct Entry
    {
        QByteArray records; // null when they are only on disk
        SegmentFolder::Place place;
        quint64 messages = 0;
        qint64 size = 0;
        quint64 before = 0; // messages, since there is the queue
    };

    /** What has to be said of a channel, and of which other one before. */
    struct Channel
    {
        QByteArray record;
        quint32 like = 0; // itself for none
    };

    void addChannel(quint32 number, const QByteArray& record);
    void declare(quint32 number, QSet<quint32>* declared, QByteArray* records) const;
    void add(const quint32* channel, const QByteArray& record);
    QByteArray declarations();
    void dropOldest();
    void popConfirmed();
    bool ensureFolder();

    const Settings m_settings;

    // The writer's own.
    QByteArray m_records;
    quint64 m_messages = 0;
    QSet<quint32> m_used;
    QHash<quint32, Channel> m_channels;
    QHash<QByteArray, quint32> m_types; // the channel that says it, by what is said of a type

    mutable std::mutex m_mutex; // for what follows
    QSet<quint32> m_declared;   // since the folder's current file began, or something was dropped
    std::unique_ptr<SegmentFolder> m_folder;
    std::deque<Entry> m_entries;
    std::size_t m_taken = 0; // how many of the entries
    quint64 m_confirmed = 0; // messages of the first entry
    qint64 m_bytesInMemory = 0;
    Counts m_counts;
    quint64 m_total = 0;
    quint64 m_unwritten = 0;    // entries that are only in memory
    bool m_hasDiskOnly = false; // then what follows goes there as well
    QString m_problem;
};

#endif
