#ifndef FIELDPASS_H
#define FIELDPASS_H

#include "fieldpath.h"
#include "sourcefactory.h"

#include <QThread>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class FieldReader;
class QReadWriteLock;
class RecordingIndex;

/**
 * Reads fields out of a whole recording once, on a thread of its own, or on two, whatever is played of it meanwhile.
 *
 * Only messages of the wanted types, and of those that took their places, are looked into. Values are taken away from
 * time to time; the pass waits when nobody does. Messages without a time are left out.
 *
 * Two threads take the next section of the recording in turns. What is given out is the same as of one, in the same
 * order for each field and sender.
 */
class FieldPass : public QThread
{
    Q_OBJECT

public:
    struct Value
    {
        double time;   ///< seconds since 1970
        double number; ///< in the unit of the field; NaN where there is none
    };

    /** Values of one field of one sender, in the order of the recording. There is one without values, at least, before
     * the first of them: so the order of fields and senders is that of the recording, too. */
    struct Piece
    {
        int path;       ///< which of the wanted fields
        QString sender; ///< as the decoder calls it
        std::vector<Value> values;
    };

    /** Bytes of a section, unless told. */
    static constexpr quint64 SectionSize = 16 * 1024 * 1024;

    /**
     * @param other  the same recording once more, for a second thread, which is there when the recording has more than
     *               one section; without an input there is one thread
     * @param paths  the fields, of types that are known already
     * @param lock   held for reading while descriptions are read; borrowed
     */
    FieldPass(SourceParts parts, SourceParts other, const QVector<FieldPath>& paths, QReadWriteLock* lock,
              quint64 sectionSize = SectionSize);
    /** Cancels, and waits until the threads have ended. */
    ~FieldPass() override;

    /** The next values; false when there are none now. */
    bool take(Piece* piece);
    /** Whether everything was read and taken, or reading failed. */
    bool isOver() const;
    /** How far it is. */
    int getPercent() const;
    /** Why it failed, once it is over; else empty. */
    QString getErrorString() const;
    /** How many sections there were so far. */
    int getSectionCount() const { return m_sectionCount; }

    /** The number that @p path leads to in @p message, in the unit of the field; NaN where there is none or it means
     * "not available". Also of hidden fields. */
    static double numberOf(const FieldPath& path, const Message* message);
    /** Likewise of a value that was read. */
    static double numberOf(const FieldPath& path, const FieldValue& value);

protected:
    void run() override;

private:
    friend class FieldReader;

    /** A stretch of the recording, which one thread reads, and what was read of it and not taken. */
    struct Section
    {
        quint64 begin;
        quint64 end;
        std::deque<Piece> pieces{};
        std::size_t values = 0; // in these
        bool isRead = false;
    };

    Section* nextSection();
    quint64 findEnd(quint64 begin) const;
    void handOver(Section* section, Piece piece);
    void endSection(Section* section, bool wasLast);
    void fail(const QString& text);

    const QVector<FieldPath> m_paths;
    const quint64 m_sectionSize;
    QReadWriteLock* m_lock;
    std::unique_ptr<FieldReader> m_reader;
    std::unique_ptr<FieldReader> m_other; // null for one thread
    RecordingIndex* m_index = nullptr;    // that cuts it; null for one section
    std::atomic<bool> m_cancelled{false};
    std::atomic<qint64> m_size{-1};
    std::atomic<qint64> m_bytes{0}; // that were read
    std::atomic<int> m_sectionCount{0};
    std::mutex m_cutting; // by one thread after the other

    mutable std::mutex m_mutex; // for what follows
    std::condition_variable m_wake;
    std::list<Section> m_sections; // from the first on that was not taken in whole
    quint64 m_next = 0;            // where the next begins
    bool m_isCut = false;          // there is no next
    bool m_ended = false;
    QString m_error;
};

#endif
