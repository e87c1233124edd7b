#ifndef SILENCEWATCH_H
#define SILENCEWATCH_H

#include "subject.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVector>

#include <functional>

class LatestMessageSource;
class Message;
class MessageInfo;
class MessageTreeWidget;
class QTreeWidgetItem;
class SenderRow;
class TreeRows;

/**
 * Greys the rows of types that stopped arriving, and says since when.
 *
 * A type is silent when nothing came for five of its intervals, at least two seconds. Its interval is what its last
 * ones were, without the longest of them; types of which too little came to tell are never silent. A sender is silent
 * when all of its types are that can be told. What one sender does says nothing about another. Who says that it is gone
 * is silent at once, and so is what is from before the place to which a recording was taken.
 */
class SilenceWatch : public QObject
{
    Q_OBJECT

public:
    /** Milliseconds that never run backwards. */
    typedef std::function<qint64()> Clock;

    /** All borrowed. @p rows have to be connected to @p latest before. */
    SilenceWatch(MessageTreeWidget* tree, const TreeRows* rows, LatestMessageSource* latest, QObject* parent = nullptr);

    /** For tests. */
    void setClock(const Clock& clock) { m_clock = clock; }

    /** How many intervals without a message make a type silent; 0 switches the watch off. */
    void setIntervals(int intervals);
    int getIntervals() const { return m_intervals; }

    /** Since when and how long; empty for what is not silent, or has no row. */
    QString describe(const Subject& subject) const;

    /** What came of a type holds no more, as after a jump in a recording: how often it comes is found out anew. */
    void forget(const MessageInfo* info);

    /** The sender has another name now. */
    void renameSender(const QString& before, const QString& now);

    /** Looks what is silent now; called by a timer. */
    void check();
    /** Greys what is silent in the tree's colours. */
    void followPalette();

private Q_SLOTS:
    void processMessage(const Message* message);
    void processGone(const MessageInfo* info, const QString& sender);
    void processEarlier(const MessageInfo* info, const QString& sender);

private:
    struct Type
    {
        qint64 lastArrival = 0;    // on the clock
        qint64 time = 0;           // of the message, microseconds since 1970, or NoTime
        QVector<qint64> intervals; // the last ones, oldest first
        bool interrupted = false;  // nothing was shown since then
        bool isGone = false;       // it said so itself
        bool isEarlier = false;    // from before the place of a jump
    };

    void noteArrival(const Subject& subject, const Message* message);
    qint64 expectedInterval(const Type& type) const;
    bool canBeTold(const Type& type) const;
    bool isOverdue(const Type& type, qint64 now) const;
    bool isOverdue(const SenderRow* row, qint64 now, Type* last) const;
    QString describe(const Type& type) const;
    void say(QTreeWidgetItem* row, const QString& text);
    void greyCells(QTreeWidgetItem* item, bool silent);
    void grey(QTreeWidgetItem* item, bool silent);
    void speak(const Subject& subject);
    void showSilent(const Subject& subject);

    void followStillness();

    MessageTreeWidget* m_tree;
    const TreeRows* m_rows;
    const LatestMessageSource* m_latest;
    Clock m_clock;
    QTimer m_timer;
    int m_intervals = 5;
    bool m_wasStill = false;
    QHash<Subject, Type> m_types; // of each sender, and of whoever sends
    QSet<Subject> m_silent;       // without a type for a sender; those that have rows
};

#endif
