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

/** How far a stream was handed out: up to a message, or to the place that was sought when nothing came from there. */
struct StreamPlace
{
    bool isKnown = false; ///< anything was
    bool isSought = false;
    qint64 time = 0;     ///< of the message, or that was sought
    qint16 timeRest = 0; ///< of the message, as what follows; see ReceivedMessage
    quint64 offset = 0;
    quint32 alike = 0; ///< how many went just before it whose time and offset are the same
    int leaps = 0;     ///< how often another place was sought
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

    const StreamPlace& getPlace() const { return m_place; }
    /** The stream goes on at @p time. */
    void leap(qint64 time);
    /** It begins anew. */
    void begin() { m_place.isKnown = false; }

private:
    MessageTap* m_tap;
    const LiveStream* m_stream;
    StreamPlace m_place;
};

#endif
