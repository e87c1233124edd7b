#include "messagesource.h"

#include "message.h"
#include "messageneedmanager.h"

MessageSource::MessageSource(QObject* parent)
    : QObject(parent)
{
}

MessageSource::~MessageSource() {}

bool MessageSource::deliver(const Message* message)
{
    const bool isNeeded = MessageNeedManager::getInstance()->isNeeded(message->getInfo());
    if (isNeeded)
        Q_EMIT newMessage(message);
    else
        Q_EMIT unneededMessage(message);
    return isNeeded;
}
