#ifndef LATESTMESSAGESOURCE_H
#define LATESTMESSAGESOURCE_H

#include "messageneed.h"
#include "messagereference.h"
#include "messagesource.h"

#include <QHash>
#include <QPair>
#include <QTimer>

class FormatInfo;

/**
 * Takes messages as fast as they come and hands on the newest of each type and sender, a limited number of times a
 * second.
 *
 * The newest messages are kept, so that a view that is added later can show at once what came before it. To have them
 * all it needs every type of the format.
 */
class LatestMessageSource : public MessageSource
{
    Q_OBJECT

public:
    explicit LatestMessageSource(QObject* parent = nullptr);
    ~LatestMessageSource() override;

    /** Needs all types of @p format from now on, or nothing when it is null. Forgets what it kept. */
    void setFormat(const FormatInfo* format);

    /** Hands on only what @p sender sent; empty means everybody. What is kept of it is handed on anew. */
    void setSender(const QString& sender);
    QString getSender() const { return m_sender; }

    /** The newest message of type @p info that passes the sender filter, or null. */
    MessageReference getLatest(const MessageInfo* info) const;

    /** Messages that were never handed on because a newer one of their type came before the tick. */
    quint64 getOvertakenCount() const { return m_overtaken; }

public Q_SLOTS:
    void processMessage(const Message* message);

private:
    struct Entry
    {
        MessageReference message;
        bool pending = false;
        quint64 order = 0;
    };

    void emitPending();
    bool passes(const Message* message) const { return m_sender.isEmpty() || message->getSender() == m_sender; }

    QHash<QPair<const MessageInfo*, QString>, Entry> m_entries;
    MessageNeed m_need;
    QTimer m_tick;
    QString m_sender;
    quint64 m_arrivals = 0;
    quint64 m_overtaken = 0;
};

#endif
