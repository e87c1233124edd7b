#ifndef MESSAGETAP_H
#define MESSAGETAP_H

#include "streamdecoder.h"

#include <QObject>
#include <QSet>

class Message;
class SourceSession;

/** Hands on every single message of some types, of all sources; for what must not miss any, such as plots. */
class MessageTap : public QObject
{
    Q_OBJECT

public:
    explicit MessageTap(QObject* parent = nullptr)
        : QObject(parent)
    {
    }

    void setTypes(const QSet<const MessageInfo*>& types) { m_types = types; }
    bool wants(const MessageInfo* info) const { return !m_types.isEmpty() && m_types.contains(info); }

Q_SIGNALS:
    void newMessage(const Message* message);

private:
    QSet<const MessageInfo*> m_types;
};

/** What a tap needs in each source: watches its stream. */
class SessionTap : public StreamSink
{
public:
    /** @param session  knows the names of senders. Both borrowed. */
    SessionTap(MessageTap* tap, const SourceSession* session)
        : m_tap(tap)
        , m_session(session)
    {
    }

    void processReceived(const ReceivedMessage& received) override;
    void processProblem(const StreamProblem&) override {}

private:
    MessageTap* m_tap;
    const SourceSession* m_session;
};

#endif
