#ifndef TREEFILTER_H
#define TREEFILTER_H

#include "rowmatcher.h"
#include "subject.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

class LatestMessageSource;
class Message;
class MessageTreeWidget;
class QTreeWidgetItem;
class SenderRow;
class SubjectRow;
class TreeRows;

/**
 * Shows only those rows of the message tree that somebody looks for, with the rows that they lie in.
 *
 * Rows are hidden, not removed: they follow their messages all the same. When values change, the rows of their type are
 * looked at again soon, a few milliseconds at a time; so are all when the text changes, but for what the first of these
 * can do. Rows of fields are made only where something in them may match. What is expanded to show a match is not
 * remembered as the user's wish, and collapsed again at the end.
 */
class TreeFilter : public QObject
{
    Q_OBJECT

public:
    /** All borrowed. @p rows have to be connected to @p latest before, so that they are up to date. */
    TreeFilter(MessageTreeWidget* tree, TreeRows* rows, LatestMessageSource* latest, QObject* parent = nullptr);

    /** Looks for @p text from now on; an empty text shows everything as it was before. */
    void setText(const QString& text);
    bool isActive() const { return !m_matcher.isEmpty(); }
    QString getErrorString() const { return m_matcher.getErrorString(); }

    /** Whether rows are still to be looked at since the text changed. */
    bool isBusy() const { return isActive() && m_isLooking; }
    /** The number of rows that match, of those that were looked at. */
    int getMatchCount() const { return m_matchCount; }
    /** Makes the next or the previous match the current row, round the end. False when there is none. */
    bool goToMatch(bool forward);

Q_SIGNALS:
    void matchCountChanged(int count);

private Q_SLOTS:
    void processMessage(const Message* message);

private:
    void processRows(const QModelIndex& parent, int first, int last);
    void followChanges();
    void updateAll();
    bool updateSender(SenderRow* row);
    bool updateType(SubjectRow* row, RowMatcher::Words above);
    bool canMatchBelow(const Subject& subject, RowMatcher::Words above) const;
    bool canMatchBelow(const SenderRow* row, RowMatcher::Words above) const;
    void lookFor(int milliseconds);
    void follow(const Subject& subject);
    bool isRawShown() const;
    void note(QTreeWidgetItem* item);
    RowMatcher::Words wordsAbove(const QTreeWidgetItem* row) const;
    int matchesIn(const QTreeWidgetItem* row) const;
    bool updateRow(QTreeWidgetItem* item, RowMatcher::Words above, bool insideMatch, int* matches);
    bool isMatch(QTreeWidgetItem* item, RowMatcher::Words* names) const;
    void collectMatches(QTreeWidgetItem* item, RowMatcher::Words above, QList<QTreeWidgetItem*>* matches) const;
    void showAll(QTreeWidgetItem* item);
    void expand(QTreeWidgetItem* item);
    void countMatches();

    MessageTreeWidget* m_tree;
    TreeRows* m_rows;
    RowMatcher m_matcher;
    QTimer m_timer;
    QSet<Subject> m_changed; // the rows of these are to be looked at again
    QHash<Subject, int> m_matches;
    QVector<Subject> m_toLookAt; // since the text changed, in the order of rows
    int m_next = 0;              // there
    bool m_isLooking = false;
    QSet<const QTreeWidgetItem*> m_expanded; // by us; compared only, as a row may be gone
    int m_matchCount = 0;
};

#endif
