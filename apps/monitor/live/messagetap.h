#ifndef MESSAGETAP_H
#define MESSAGETAP_H

#include "streamdecoder.h"

#include <QSet>

#include <functional>
#include <vector>

class LiveStream;
class Message;
class TapListener;

/** Hands on every single message of some types, of all sources; for what must not miss any, such as plots. */
class MessageTap
{
public:
    MessageTap() = default;
    MessageTap(const MessageTap&) = delete;
    MessageTap& operator=(const MessageTap&) = delete;

    /** Whether any listener asks for messages of this type. */
    bool wants(const MessageInfo* info) const { return !m_wanted.isEmpty() && m_wanted.contains(info); }
    /** Gives @p message to all listeners that ask for its type. They may come, go and ask for others meanwhile. */
    void deliver(const Message* message);

private:
    friend class TapListener;

    void add(TapListener* listener);
    void remove(const TapListener* listener);
    void follow();

    std::vector<TapListener*> m_listeners; // null for one that went while messages are given out
    QSet<const MessageInfo*> m_wanted;     // by any of them
    int m_deliveries = 0;                  // that are under way
};

/** One who asks for every message of some types, for as long as it lives. It is given what the others are given, too:
 * there is one object for each message. */
class TapListener
{
public:
    typedef std::function<void(const Message*)> Receiver;

    /** @param tap  borrowed, and has to outlive this */
    TapListener(MessageTap* tap, const Receiver& receive);
    ~TapListener();
    TapListener(const TapListener&) = delete;
    TapListener& operator=(const TapListener&) = delete;

    /** Asks for these types, and no longer for others. */
    void setTypes(const QSet<const MessageInfo*>& types);

private:
    friend class MessageTap;

    MessageTap* m_tap;
    Receiver m_receive;
    QSet<const MessageInfo*> m_types;
};

/** What a tap needs in each source: watches its stream. */
class SessionTap : public StreamSink
{
public:
    /** @param stream  knows the names of senders. Both borrowed. */
    SessionTap(MessageTap* tap, const LiveStream* stream)
        : m_tap(tap)
        , m_stream(stream)
    {
    }

    void processReceived(const ReceivedMessage& received) override;
    void processProblem(const StreamProblem&) override {}

private:
    MessageTap* m_tap;
    const LiveStream* m_stream;
};

#endif
