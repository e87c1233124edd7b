#ifndef TREEROWS_H
#define TREEROWS_H

#include "messagereference.h"
#include "subjectrow.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QVector>

class AbstractMessageTreeWidgetItem;
class Desk;
class FieldPath;
class Message;
class MessageTreeWidget;
class PinnedTypes;
class QSettings;
class QTreeWidgetItem;
class SenderRow;

/**
 * Which rows the tree has, and which messages they get: a row for each type, for each type of each sender, or for each
 * sender with its types below. There are those that come, and those that the user ticks.
 *
 * A message is handed to the one row that it is for. Rows of fields are made where somebody looks.
 */
class TreeRows : public QObject
{
    Q_OBJECT

public:
    enum Arrangement
    {
        ByType,
        ByTypeAndSender,
        BySender
    };

    /** All borrowed. */
    TreeRows(MessageTreeWidget* tree, PinnedTypes* pins, Desk* desk, QObject* parent = nullptr);

    /** Makes all rows anew. */
    void setArrangement(Arrangement arrangement);
    Arrangement getArrangement() const { return m_arrangement; }

    /** Whether types get a row when they come, unless the user once took it away. */
    void setAddAutomatically(bool automatically) { m_addAutomatically = automatically; }
    bool mustAddAutomatically() const { return m_addAutomatically; }

    /** Gives all types a row that came, or takes all rows away, as the user's choice. */
    void chooseAll(bool inTree);
    /** Shows these in the tree, or not any more. */
    void set(const QVector<Subject>& subjects, bool inTree);
    /** Empties the rows of a type. */
    void forget(const MessageInfo* info);

    /** What the row is called that shows messages of a type from a sender. */
    Subject getSubject(const MessageInfo* info, const QString& sender) const;
    /** The row of that name; null where there is none, or none yet. */
    SubjectRow* find(const Subject& subject) const { return m_rows.value(subject); }
    const QHash<Subject, QPointer<SubjectRow>>& getRows() const { return m_rows; }
    /** Rows of senders, where there are any. */
    const QHash<QString, SenderRow*>& getSenderRows() const { return m_senderRows; }

    /** What a row of that name shows, or would show; may be null. */
    MessageReference getLatest(const Subject& subject) const;
    /** Makes the rows below @p item, if that was not done. */
    void open(QTreeWidgetItem* item);
    /** Makes the row of a type current and scrolls to it, or without a type to that of a sender, if there is one. */
    void reveal(const Subject& subject);
    /** The same of the row of a field, as far down as there are rows. */
    void revealField(const FieldPath& path, const QString& sender);
    /** Opens and unfolds everything, up to a number of rows that somebody could read. */
    void expandAll();

    /** What is pinned where @p item, which may be null, is or lies: a type, one of a sender, or a sender. */
    Subject getPinned(QTreeWidgetItem* item) const;
    /** What is pinned where a type of a sender is. */
    Subject getPinned(const Subject& subject) const;
    /** Pins that, and moves rows to their places. */
    void setPinned(const Subject& subject, bool pinned);
    bool isPinned(const Subject& subject) const;
    /** Draws the marks of what is pinned anew. */
    void followPalette();

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

Q_SIGNALS:
    void changed();
    /** All rows are others now. */
    void rearranged();

private Q_SLOTS:
    void processMessage(const Message* message);

private:
    typedef QVector<AbstractMessageTreeWidgetItem*> Rows;

    void choose(const QVector<Subject>& subjects, bool inTree);
    void processSeen(const QVector<Subject>& subjects);
    void renameSender(const QString& before, const QString& now);
    void makeRows();
    bool isToBeShown(const Subject& subject) const;
    void addRows(const QVector<Subject>& subjects);
    void addSenderRows(const QVector<Subject>& subjects);
    void removeRow(const Subject& subject);
    SubjectRow* createRow(const Subject& subject);
    void insertRows(QTreeWidgetItem* parent, Rows rows);
    void insertRowsOfTypes(SenderRow* parent, const QVector<const MessageInfo*>& types);
    void move(QTreeWidgetItem* item);
    void fill(SubjectRow* row);
    void followNames();

    MessageTreeWidget* m_tree;
    PinnedTypes* m_pins;
    Desk* m_desk;
    Arrangement m_arrangement = ByTypeAndSender;
    bool m_addAutomatically = true;
    QSet<QString> m_folded;         // the names of types whose rows the user folded last
    QHash<QString, bool> m_choices; // by the names of types, and perhaps senders: whether they are wanted in the tree
    QSet<Subject> m_subjects;       // that are in the tree
    QHash<Subject, QPointer<SubjectRow>> m_rows;
    QHash<QString, SenderRow*> m_senderRows;
};

#endif
