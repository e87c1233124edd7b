#ifndef LATESTMESSAGESOURCE_H
#define LATESTMESSAGESOURCE_H

#include "latestmessages.h"
#include "messagereference.h"
#include "messagesource.h"
#include "subject.h"

#include <QHash>
#include <QSet>
#include <QTimer>

#include <memory>
#include <vector>

class LiveStream;

/**
 * The display tick: hands on the newest message of each type and sender of all sources, a limited number of times a
 * second, and nothing while it is suspended. Where that takes longer, such as for thousands of senders, the window does
 * other things in between.
 *
 * The newest messages are kept, so that a view that is added later can show at once what came before it.
 */
class LatestMessageSource : public MessageSource
{
    Q_OBJECT

public:
    static const int DefaultRate = 20;

    explicit LatestMessageSource(QObject* parent = nullptr);
    ~LatestMessageSource() override;

    /** Shows what @p session receives, until it is removed. */
    void addSession(const LiveStream* session, LatestMessages* messages);
    void removeSession(const LiveStream* session);

    /** Hands on only what this sender sent, named as by getSender() of messages; empty means everybody. What others
     * sent is forgotten(), and what is kept of this one handed on, both at once. */
    void setSender(const QString& sender);
    QString getSender() const { return m_sender; }
    /** The sender has another name now, under which it stays chosen. */
    void renameSender(const QString& before, const QString& now);

    /** Whether there are sources, and all of them are recordings that are paused or over. */
    bool isStandingStill() const;

    /** The newest message of type @p info, from @p sender or from anybody, that passes the sender filter, or null;
     * of one sender, and while suspended, the one that was handed on last, where there was one. */
    MessageReference getLatest(const MessageInfo* info, const QString& sender = QString()) const;

    /** Messages of the sources that are open, since their last jump, that were never handed on because a newer one of
     * their type came before the tick. */
    quint64 getOvertakenCount() const;

    /** Ticks a second, 1 to 60. */
    void setRate(int rate);
    int getRate() const { return m_rate; }

    /** Whether views are to stay as they are, for one of any number of reasons; ends with showing what came. */
    void setSuspended(bool suspended);
    bool isSuspended() const { return m_suspended; }

    /** Hands on what came, without waiting for the tick; for what somebody has just asked for. */
    void showNow();

    /** Hands on everything that is kept once more, such as when its senders got other names. */
    void showAgain();
    /** Whether the message of newMessage(), for whom that is signalled just now, was handed on before. */
    bool isRepeating() const { return m_isRepeating; }

    /** Forgets what @p messages hold of one session, such as what stands at another place of a recording. */
    void forget(LatestMessages* messages);
    /** Takes what was handed on of @p messages for forgotten; before their types change. */
    void forgetShown(const LatestMessages& messages);

Q_SIGNALS:
    /** What was handed on of this type holds no more; newer messages of it follow where there are any. */
    void forgotten(const MessageInfo* info);
    /** Nothing more comes of a type from a sender, as it said itself; told behind what came before. */
    void senderGone(const MessageInfo* info, const QString& sender);
    /** What was just handed on of a type from a sender is from before the place to which a recording was taken. */
    void earlierShown(const MessageInfo* info, const QString& sender);
    /** Messages of another sender are handed on now, or of all; told before the first of them. */
    void senderChanged();

public Q_SLOTS:
    /** Something came: it is handed on at the next tick. */
    void noteArrival();

private:
    struct Session
    {
        const LiveStream* session;
        LatestMessages* messages;
    };

    /** What came and was not handed on yet. */
    struct Pending
    {
        quint64 order;
        LatestMessages* messages;
        const LiveStream* session;
        int place;
    };

    void beginTick();
    void goOn();
    void emitPending();
    void gatherPending();
    void dropGathered();
    void emitGathered(int milliseconds);
    void emitOne(const Pending& pending);
    void showRestOfForgotten();
    MessageReference makeMessage(const LiveStream* session, const LatestMessages::Entry& entry) const;

    std::vector<Session> m_sessions;
    QHash<Subject, MessageReference> m_shown; // handed on last, of each sender and of any
    QSet<const MessageInfo*> m_forgotten;     // which is still to be said
    QTimer m_tick;
    QTimer m_rest; // of what a tick has to hand on
    std::vector<Pending> m_pending;
    std::size_t m_next = 0;  // among these
    QVector<Subject> m_gone; // to be told behind them
    QString m_sender;
    int m_rate = DefaultRate;
    bool m_suspended = false;
    bool m_isRepeating = false;
};

#endif
