#ifndef SILENCEWATCH_H
#define SILENCEWATCH_H

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
class MessageTreeWidgetItem;
class QTreeWidgetItem;

/**
 * Greys the rows of types that stopped arriving, and says since when.
 *
 * A type is silent when nothing came for five of its intervals, at least two seconds. Its interval is what its last
 * ones were, without the longest of them; types of which too little came to tell are never silent.
 */
class SilenceWatch : public QObject
{
    Q_OBJECT

public:
    /** Milliseconds that never run backwards. */
    typedef std::function<qint64()> Clock;

    /** Both borrowed. The tree has to be connected to @p latest before. */
    SilenceWatch(MessageTreeWidget* tree, LatestMessageSource* latest, QObject* parent = nullptr);

    /** For tests. */
    void setClock(const Clock& clock) { m_clock = clock; }

    /** How many intervals without a message make a type silent; 0 switches the watch off. */
    void setIntervals(int intervals);
    int getIntervals() const { return m_intervals; }

    bool isSilent(const MessageInfo* info) const { return m_silent.contains(info); }
    /** Since when and how long; empty for a type that is not silent. */
    QString describe(const MessageInfo* info) const;

    /** What came of a type holds no more, as after a jump in a recording: how often it comes is found out anew. */
    void forget(const MessageInfo* info);

    /** Looks what is silent now; called by a timer. */
    void check();
    /** Greys what is silent in the tree's colours. */
    void followPalette();

private Q_SLOTS:
    void processMessage(const Message* message);

private:
    struct Type
    {
        qint64 lastArrival = 0;    // on the clock
        qint64 time = 0;           // of the message, microseconds since 1970, or NoTime
        QVector<qint64> intervals; // the last ones, oldest first
        bool interrupted = false;  // nothing was shown since then
    };

    qint64 expectedInterval(const Type& type) const;
    void grey(QTreeWidgetItem* item, bool silent);
    MessageTreeWidgetItem* findRow(const MessageInfo* info) const;

    void followStillness();

    MessageTreeWidget* m_tree;
    const LatestMessageSource* m_latest;
    Clock m_clock;
    QTimer m_timer;
    int m_intervals = 5;
    bool m_wasStill = false;
    QHash<const MessageInfo*, Type> m_types;
    QSet<const MessageInfo*> m_silent;
};

#endif
