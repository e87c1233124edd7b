#ifndef MESSAGETYPEMODEL_H
#define MESSAGETYPEMODEL_H

#include "subject.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QPair>
#include <QSet>
#include <QStringList>
#include <QVector>

class MessageInfo;
class MessageStatistics;
class MessageStatisticsCoordinator;
class SourceSession;

/**
 * The message types that the sources received, a row for each source, type and sender, with a check box for being in
 * the tree. They can be folded: then each sender has a row, with those of its types below. What no definition knows
 * lies below a row of its own: damaged frames look like any number of types.
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
        RateColumn,  ///< as the statistics have it
        RangeColumn, ///< of the rates that there were, without the rarest
        GapsColumn,
        LostColumn, ///< by the numbers of the sender, whatever the type
        AgeColumn,
        BytesColumn,
        ColumnCount
    };

    /** @param coordinator  counts what the sources receive; borrowed */
    explicit MessageTypeModel(const MessageStatisticsCoordinator* coordinator, QObject* parent = nullptr);

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
    /** The types that a row is about; none for those that are not known. */
    QVector<Subject> subjectsAt(const QModelIndex& index) const;

    /** Whether some rows lie below others. */
    bool hasGroups() const { return !m_groups.isEmpty(); }
    /** What counts the messages of a type from a sender; null where none came. */
    const MessageStatistics* findStatistics(const Subject& subject) const;
    /** How often messages of a type come from a sender, and since when none did; empty where none came. */
    QStringList describe(const Subject& subject) const;

    /** How many rows there are, of types of senders. */
    int getCount() const { return int(m_rows.size()); }
    /** The type in @p row, or null for one that is not known. */
    const MessageInfo* getMessageInfo(int row) const;
    /** The type in @p row and who sends it; without a type for one that is not known. */
    Subject getSubject(int row) const;

    /** The user wants these in the tree, or not any more. */
    void request(const QVector<Subject>& subjects, bool inTree) { Q_EMIT inTreeRequested(subjects, inTree); }
    bool isInTree(const Subject& subject) const { return m_inTree.contains(subject); }
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
    static const int UnknownTypes = -1; // in the place of a sender

    struct Row
    {
        const SourceSession* session;
        int number; // among the session's identities
        const MessageInfo* info;
        QString name;
        int sender;     // in m_senders
        int group = -1; // below which it lies, or -1
        int place = -1; // there, or at the top
        quint64 count = 0;
    };
    /** A sender of a session. */
    struct Sender
    {
        const SourceSession* session; // null when it is gone
        int number;                   // among the session's identities
        QString name;
    };

    /** A sender with its rows while they are folded, or all that are not known. */
    struct Group
    {
        int sender; // or UnknownTypes
        int top;
        QVector<int> rows;
        quint64 count = 0;
    };

    QVariant displayData(const QModelIndex& index) const;
    QVariant toolTip(const QModelIndex& index) const;
    QVariant checkState(const QModelIndex& index) const;
    const Row* findRow(const Subject& subject) const;
    const MessageStatistics* statisticsOf(const Row& row) const;
    double figureOf(const Row& row, int column) const;
    /** What is shown in a column, of a group of all its rows together; a negative age is none. */
    double figureAt(const QModelIndex& index) const;
    QString figureText(const QModelIndex& index) const;
    QString rangeText(const Row& row) const;
    const Group* groupAt(const QModelIndex& index) const;
    QVector<int> rowsAt(const QModelIndex& index) const;
    quint64 countAt(const QModelIndex& index) const;
    quint64 lostOf(const Row& row) const;
    int groupOf(const Row& row) const;
    int createGroup(int sender);
    void arrange();
    void insert(const QVector<Row>& rows);
    void countGroups();
    struct Session
    {
        const SourceSession* session;
        QVector<bool> shown; // by the number of the row
    };

    bool hasOtherTypes(const SourceSession* session) const;
    void removeTypesOf(const SourceSession* session);
    int findSender(const SourceSession* session, int number, int row);
    void appendRows(Session* session, QVector<Subject>* fresh);

    const MessageStatisticsCoordinator* m_coordinator;
    QVector<Session> m_sessions;
    QVector<Row> m_rows;
    bool m_isFolded = false;
    QVector<int> m_top; // numbers of rows, or of groups below zero: -1 is the first
    QVector<Group> m_groups;
    QHash<int, int> m_groupsBySender;
    QVector<Sender> m_senders;
    mutable QStringList m_senderNames; // sorted; empty until somebody asks
    QHash<QPair<const SourceSession*, int>, int> m_senderPlaces;
    QHash<Subject, int> m_seen;                    // how many rows
    QHash<const MessageInfo*, int> m_senderCounts; // of what is seen
    QSet<Subject> m_inTree;
    mutable QHash<Subject, int> m_rowsBySubject;    // empty until somebody asks
    mutable QHash<QPair<int, int>, quint64> m_lost; // by stream and sender
    mutable bool m_isLostKnown = false;
};

#endif
