#ifndef MESSAGELIST_H
#define MESSAGELIST_H

#include "messagereference.h"
#include "recordingpass.h"
#include "subject.h"

#include <QAbstractTableModel>

#include <deque>
#include <functional>
#include <vector>

/**
 * The last messages of some types, oldest first.
 *
 * Of each its bytes are kept, which are shared with whoever else has them; what it says is made when somebody looks.
 * What comes waits until take() shows it, so that a hundred thousand messages a second are one change of the list.
 */
class MessageList : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        TimeColumn,
        IntervalColumn,
        SenderColumn,
        TypeColumn,
        SequenceColumn,
        SizeColumn,
        SummaryColumn,
        ColumnCount
    };

    static const int MostMessages = 10000;
    static const qint64 MostBytes = 64 * 1024 * 1024; ///< of all that are shown; a quarter of that waits at most

    explicit MessageList(QObject* parent = nullptr);

    /** Notes a message that came. */
    void add(const Message* message);
    /** Notes one that came before the others, at the place that its time says. */
    void addEarlier(const Message* message);
    /** From now on addRead() adds what was read of recordings, in place of what there is of them, see removeNoted(). */
    void beginReading();
    /** Takes out what was there of these senders at beginReading(), and gaps that nothing is left before. */
    void removeNoted(const std::function<bool(const QString& sender)>& isOfThem);
    /**
     * Adds what was read of a recording, which went before what was added of it and what was noted since
     * beginReading(). Of several recordings the times decide.
     *
     * @param reading  which of them, from 0
     * @return false when there was no room for all of it: what goes before need not be added
     */
    bool addRead(const std::vector<EarlierMessage>& messages, int reading);
    /** The times of the first and of the last that have one; false when none has. */
    bool getTimes(qint64* first, qint64* last) const;
    /** What comes from now on is not what followed upon the last one: some were not noted. */
    void addGap();
    /** Shows what came since the last time. */
    void take();
    /** How many wait for that. */
    int getWaitingCount() const { return int(m_waiting.size()); }

    /** Forgets all for which @p isWanted says no. */
    void keep(const std::function<bool(const MessageInfo*, const QString&)>& isWanted);
    void clear();
    void renameSender(const QString& before, const QString& now);
    /** Whether there is, or waits, any of a type from a sender. */
    bool has(const Subject& subject) const;

    /** A message of its own of the bytes in a row; null for a gap. */
    MessageReference getMessage(int row) const;
    /** The time of a row; Message::NoTime where it has none. */
    qint64 getTime(int row) const;
    const MessageInfo* getMessageInfo(int row) const { return m_rows[std::size_t(row)].info; }
    /** Whether messages went because of their bytes, and not for their number. */
    bool isFull() const { return m_isFull; }

    void setDigits(int digits);
    /** Makes what messages say anew. */
    void renew();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row
    {
        const MessageInfo* info; // null for a gap
        QString sender;
        QByteArray data;
        qint64 time;
        qint64 sequence;
        qint64 interval;    // since the one before of its type and sender; NoTime when not known
        quint64 number = 0; // as they were noted; 0 for those from before
        int reading = -1;   // of addRead()
        mutable QString summary = QString();
    };

    static Row rowOf(const Message* message);
    static MessageReference messageOf(const Row& row);
    QString textOf(const Row& row, int column) const;
    void removeFirst(int count);
    bool isOld(const Row& row) const { return row.number <= m_readFrom; }
    bool putFirst(std::vector<Row>* rows);
    bool merge(const std::vector<Row>& rows, int reading);
    void fillIntervals();
    void countBytes();

    std::deque<Row> m_rows;
    std::deque<Row> m_waiting;
    QHash<Subject, qint64> m_times; // of the last one of each
    qint64 m_bytes = 0;
    qint64 m_waitingBytes = 0;
    bool m_isFull = false;
    bool m_hasLost = false; // some that waited
    quint64 m_noted = 0;    // how many
    quint64 m_readFrom = 0; // of these, at beginReading()
    bool m_isCut = false;   // since then some of the first went
    int m_digits = 0;
};

#endif
