#include "messagetap.h"

#include "livestream.h"
#include "message.h"
#include "messagereference.h"

#include <algorithm>

void MessageTap::deliver(const Message* message)
{
    ++m_deliveries;
    // By number: what a listener does with a message can let others come and go.
    for (std::size_t i = 0; i < m_listeners.size(); ++i)
        if (m_listeners[i] && m_listeners[i]->m_types.contains(message->getInfo()))
            m_listeners[i]->m_receive(message);
    if (--m_deliveries == 0)
        m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), nullptr), m_listeners.end());
}

void MessageTap::add(TapListener* listener)
{
    m_listeners.push_back(listener);
}

void MessageTap::remove(const TapListener* listener)
{
    const auto place = std::find(m_listeners.begin(), m_listeners.end(), listener);
    if (m_deliveries > 0)
        *place = nullptr;
    else
        m_listeners.erase(place);
    follow();
}

void MessageTap::follow()
{
    m_wanted.clear();
    for (const TapListener* const listener : m_listeners)
        if (listener)
            m_wanted.unite(listener->m_types);
}

TapListener::TapListener(MessageTap* tap, const Receiver& receive)
    : m_tap(tap)
    , m_receive(receive)
{
    tap->add(this);
}

TapListener::~TapListener()
{
    m_tap->remove(this);
}

void TapListener::setTypes(const QSet<const MessageInfo*>& types)
{
    m_types = types;
    m_tap->follow();
}

void SessionTap::processReceived(const ReceivedMessage& received)
{
    const bool isAlike = m_place.isKnown && !m_place.isSought && received.offset == m_place.offset &&
                         received.time == m_place.time && received.timeRest == m_place.timeRest;
    m_place = {true,         false, received.time, received.timeRest, received.offset, isAlike ? m_place.alike + 1 : 0,
               m_place.leaps};
    if (!m_tap || !m_tap->wants(received.info))
        return;
    const QString sender = m_stream->getSenderName(received.row);
    const MessageReference message = MessageReference::adopt(received.createMessage(sender));
    m_tap->deliver(message.get());
}

void SessionTap::leap(qint64 time)
{
    m_place = {true, true, time, 0, 0, 0, m_place.leaps + 1};
}
