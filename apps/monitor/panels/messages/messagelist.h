#ifndef MESSAGELIST_H
#define MESSAGELIST_H

#include "messagereference.h"
#include "subject.h"

#include <QAbstractTableModel>

#include <deque>
#include <functional>

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
        qint64 interval; // since the one before of its type and sender; NoTime when not known
        mutable QString summary;
    };

    static Row rowOf(const Message* message);
    static MessageReference messageOf(const Row& row);
    QString textOf(const Row& row, int column) const;
    void removeFirst(int count);

    std::deque<Row> m_rows;
    std::deque<Row> m_waiting;
    QHash<Subject, qint64> m_times; // of the last one of each
    qint64 m_bytes = 0;
    qint64 m_waitingBytes = 0;
    bool m_isFull = false;
    bool m_hasLost = false; // some that waited
    int m_digits = 0;
};

#endif
