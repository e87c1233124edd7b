#ifndef EVENTOUTPUT_H
#define EVENTOUTPUT_H

#include "cloudevent.h"
#include "messageoutput.h"

#include <QHash>

#include <deque>
#include <memory>

class PublishedStream;

/** What outputs to brokers have in common: messages go out as events, and are kept here until the other side has them.
 */
class EventOutput : public MessageOutput
{
public:
    void setDecoder(const StreamDecoder* decoder) override;
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}
    void flush() override {}
    quint64 getPendingCount() const override { return quint64(m_pending.size()); }

protected:
    struct Pending
    {
        std::shared_ptr<const CloudEvent> event;
        QByteArray id;
        quint64 origin = 0; ///< see ReceivedMessage::origin
        QByteArray time;
        QByteArray payload;
        qint64 sentMs = -1; ///< by a clock of the output's; -1 before
        bool isDone = false;
    };

    EventOutput(const CloudEvent::Topics& topics, const PublishedStream* stream);

    /** Sends m_pending[place], or leaves it there for later. */
    virtual void publish(std::size_t place) = 0;
    /** Forgets what is done, from the oldest on. */
    void popDone();

    const CloudEvent::Topics m_topics;
    std::deque<Pending> m_pending;
    quint64 m_popped = 0; // how many there were before those

private:
    std::shared_ptr<const CloudEvent> eventOf(quint32 channel);

    const PublishedStream* m_stream;
    QHash<quint32, std::shared_ptr<const CloudEvent>> m_events; // by channel
};

#endif
