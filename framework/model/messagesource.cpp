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
    if (!MessageNeedManager::getInstance()->isNeeded(message->getInfo()))
        return false;
    Q_EMIT newMessage(message);
    return true;
}
