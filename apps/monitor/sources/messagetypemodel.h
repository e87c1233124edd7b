#ifndef MESSAGETYPEMODEL_H
#define MESSAGETYPEMODEL_H

#include "subject.h"

#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QHash>
#include <QSet>
#include <QVector>

class MessageInfo;
class SourceSession;

/**
 * The message types that the sources received, a row for each source, type and sender, with a check box for being in
 * the tree. They can be folded: then each sender has a row, with those of its types below.
 */
class MessageTypeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        TypeColumn,
        SenderColumn,
        CountColumn,
        RateColumn,
        ColumnCount
    };

    explicit MessageTypeModel(QObject* parent = nullptr);

    /** Shows what @p session receives, until it is removed. */
    void addSession(const SourceSession* session);
    void removeSession(const SourceSession* session);

    /** Reads the counters of the sources anew; what is new is announced by seen(). */
    void refresh();

    /** Whether any source received that type. */
    bool contains(const MessageInfo* info) const { return m_senderCounts.contains(info); }
    /** Whether more than one sender sends this type. */
    bool isFromSeveral(const MessageInfo* info) const { return getSenderCount(info) > 1; }
    int getSenderCount(const MessageInfo* info) const { return m_senderCounts.value(info); }

    /** The names of all senders, each once and in natural order; a source's own are there until it is closed. */
    QStringList getSenders() const;
    /** Sender @p before is called @p now. */
    void renameSender(const QString& before, const QString& now);

    /** Whether rows of types lie below rows of their senders. */
    void setFolded(bool folded);
    bool isFolded() const { return m_isFolded; }
    /** The number of the row at @p index, from 0 to getCount(); -1 for a sender's. */
    int rowOf(const QModelIndex& index) const;
    QModelIndex indexOf(int row) const;
    /** The sender's name, also where @p index is one of its types. */
    QString getSender(const QModelIndex& index) const;

    /** How many rows there are, of types of senders. */
    int getCount() const { return int(m_rows.size()); }
    /** The type in @p row, or null for one that is not known. */
    const MessageInfo* getMessageInfo(int row) const;
    /** The type in @p row and who sends it; without a type for one that is not known. */
    Subject getSubject(int row) const;

    /** Shows types as being in the tree or not. */
    void setInTree(const QVector<Subject>& subjects, bool inTree);

    /** Whether one row stands before another below the same one when a column is sorted by. */
    bool isBefore(const QModelIndex& left, const QModelIndex& right) const;
    /** Whether the row of a type has all these words in its name or its sender's. */
    bool hasWords(const QModelIndex& index, const QStringList& words) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /** Types of a source go, and others come in their place. */
    void typesAboutToChange();
    /** These known types were received for the first time, each from this sender. */
    void seen(const QVector<Subject>& subjects);
    /** No source that is still open has these any more. */
    void gone(const QVector<Subject>& subjects);
    /** The user ticked types or took their ticks away. */
    void inTreeRequested(const QVector<Subject>& subjects, bool inTree);

private:
    struct Row
    {
        const SourceSession* session;
        int number; // among the session's identities
        const MessageInfo* info;
        QString name;
        int sender;     // in m_senders
        int group = -1; // while folded, and the place there
        int place = -1;
        quint64 count;
        QVector<quint64> marks; // the counts of the last seconds, oldest first
        double rate = 0;
    };
    /** A sender of a session. */
    struct Sender
    {
        const SourceSession* session; // null when it is gone
        int number;                   // among the session's identities
        QString name;
    };

    /** A sender with its rows, while they are folded. */
    struct Group
    {
        int sender;
        QVector<int> rows;
        quint64 count = 0;
        double rate = 0;
    };

    QVariant displayData(const Row& row, int column) const;
    QVariant groupData(const Group& group, int column) const;
    QVariant checkState(const QModelIndex& index) const;
    static QString rateText(double rate);
    QVector<Subject> subjectsAt(const QModelIndex& index) const;
    void fold();
    void insertFolded(const QVector<Row>& rows);
    void countGroups();
    void noteCounts();
    struct Session
    {
        const SourceSession* session;
        int generation;
        QVector<bool> shown; // by the number of the row
    };

    bool hasOtherTypes(const SourceSession* session) const;
    void removeTypesOf(const SourceSession* session);
    int findSender(const SourceSession* session, int number, int row);
    void appendRows(Session* session, QVector<Subject>* fresh);
    void forgetRates(const SourceSession* session);

    QVector<Session> m_sessions;
    QVector<Row> m_rows;
    bool m_isFolded = false;
    QVector<Group> m_groups;
    QHash<int, int> m_groupsBySender;
    QVector<Sender> m_senders;
    mutable QStringList m_senderNames; // sorted; empty until somebody asks
    QHash<QPair<const SourceSession*, int>, int> m_senderPlaces;
    QHash<Subject, int> m_seen;                    // how many rows
    QHash<const MessageInfo*, int> m_senderCounts; // of what is seen
    QSet<Subject> m_inTree;
    QElapsedTimer m_clock;
    QVector<qint64> m_marks; // when the counts were noted
};

#endif
