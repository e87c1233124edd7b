#include "eventoutput.h"

#include "publishedstream.h"

EventOutput::EventOutput(const CloudEvent::Topics& topics, const PublishedStream* stream)
    : MessageOutput(stream)
    , m_topics(topics)
    , m_stream(stream)
{
}

void EventOutput::setDecoder(const StreamDecoder* decoder)
{
    MessageOutput::setDecoder(decoder);
    m_stream = static_cast<const PublishedStream*>(decoder); // of which OutputKind::connect() has it
    m_events.clear();
}

std::shared_ptr<const CloudEvent> EventOutput::eventOf(quint32 channel)
{
    std::shared_ptr<const CloudEvent>& event = m_events[channel];
    if (!event)
        event.reset(new CloudEvent(m_stream->getChannel(channel), m_topics));
    return event;
}

void EventOutput::processReceived(const ReceivedMessage& message)
{
    Pending pending;
    pending.event = eventOf(message.id);
    pending.id = CloudEvent::idOf(*m_stream, message);
    pending.origin = message.origin;
    pending.time = CloudEvent::timeOf(message);
    pending.payload = QByteArray(message.data, message.size);
    m_pending.push_back(std::move(pending));
    publish(m_pending.size() - 1);
    popDone();
}

void EventOutput::popDone()
{
    while (!m_pending.empty() && m_pending.front().isDone) {
        m_pending.pop_front();
        ++m_popped;
    }
}
