#ifndef MESSAGETYPEMODEL_H
#define MESSAGETYPEMODEL_H

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QSet>
#include <QVector>

class MessageInfo;
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
    /** Types of a source go, and others come in their place. */
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
        int number; // among the session's identities
        const MessageInfo* info;
        QString name;
        quint64 count;
        QVector<quint64> marks; // the counts of the last seconds, oldest first
        double rate = 0;
    };

    QVariant displayData(const Row& row, int column) const;
    void noteCounts();
    struct Session
    {
        const SourceSession* session;
        int generation;
        QVector<bool> shown; // by the number of the row
    };

    bool hasOtherTypes(const SourceSession* session) const;
    void removeTypesOf(const SourceSession* session);
    void appendRows(Session* session, QVector<const MessageInfo*>* fresh);
    void forgetRates(const SourceSession* session);

    QVector<Session> m_sessions;
    QVector<Row> m_rows;
    QSet<const MessageInfo*> m_seen;
    QSet<const MessageInfo*> m_inTree;
    QElapsedTimer m_clock;
    QVector<qint64> m_marks; // when the counts were noted
};

#endif
