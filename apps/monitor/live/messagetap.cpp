#include "messagetap.h"

#include "messagereference.h"
#include "sourcesession.h"

void SessionTap::processReceived(const ReceivedMessage& received)
{
    if (!m_tap || !m_tap->wants(received.info))
        return;
    const QString sender = m_session->getSenderName(received.sender);
    const MessageReference message = MessageReference::adopt(received.createMessage(sender));
    Q_EMIT m_tap->newMessage(message.get());
}
