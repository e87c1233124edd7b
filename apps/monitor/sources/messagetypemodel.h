#ifndef MESSAGETYPEMODEL_H
#define MESSAGETYPEMODEL_H

#include "receptioncounters.h"

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QSet>

class SourceSession;

/** The message types that the sources received, a row for each source, type and sender, with a check box for being in
 * the tree. */
class MessageTypeModel : public QAbstractTableModel
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

    /** What sorting goes by: numbers as numbers. */
    static const int SortRole = Qt::UserRole;

    explicit MessageTypeModel(QObject* parent = nullptr);

    /** Shows what @p session receives, until it is removed. */
    void addSession(const SourceSession* session);
    void removeSession(const SourceSession* session);

    /** Reads the counters of the sources anew; new types are announced by typeSeen(). */
    void refresh();

    /** Whether any source received that type. */
    bool contains(const MessageInfo* info) const { return m_seen.contains(info); }

    /** The names of all senders, each once; a source's own are there until it is closed. */
    QStringList getSenders() const;

    /** The type in @p row, or null for one that is not known. */
    const MessageInfo* getMessageInfo(int row) const;

    /** Shows types as being in the tree or not. */
    void setInTree(const MessageInfo* info, bool inTree);
    bool isInTree(const MessageInfo* info) const { return m_inTree.contains(info); }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /** A source has other definitions, so that its types go and others come. */
    void typesAboutToChange();
    /** A known type was received for the first time. */
    void typeSeen(const MessageInfo* info);
    /** No source that is still open has that type any more. */
    void typeGone(const MessageInfo* info);
    /** The user ticked a type or took its tick away. */
    void inTreeRequested(const MessageInfo* info, bool inTree);

private:
    struct Row
    {
        const SourceSession* session;
        ReceptionCounters::Row counter;
        int place; // among the rows of the session's counters; -1 while it has not come again
        QString name;
        QVector<quint64> marks; // the counts of the last seconds, oldest first
        double rate = 0;
    };

    QVariant displayData(const Row& row, int column) const;
    void noteCounts();
    void beginAnew(const SourceSession* session);
    bool hasOtherTypes(const SourceSession* session) const;
    int findRow(const SourceSession* session, const ReceptionCounters::Row& counter) const;
    void removeRows(const SourceSession* session);
    void appendRows(const SourceSession* session, int from, QVector<const MessageInfo*>* fresh);

    struct Session
    {
        const SourceSession* session;
        int generation;
        int count; // of its rows
    };

    QVector<Session> m_sessions;
    QVector<Row> m_rows;
    QSet<const MessageInfo*> m_seen;
    QSet<const MessageInfo*> m_inTree;
    QElapsedTimer m_clock;
    QVector<qint64> m_marks; // when the counts were noted
};

#endif
