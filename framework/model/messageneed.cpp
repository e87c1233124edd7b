#include "messageneed.h"

#include "messageneedmanager.h"

MessageNeed::MessageNeed(MessageNeedManager* manager)
    : m_manager(manager ? manager : MessageNeedManager::getInstance())
{
}

MessageNeed::~MessageNeed()
{
    clearMessagesNeeded(false);
}

void MessageNeed::setMessageNeeded(const MessageInfo* info)
{
    QVector<const MessageInfo*> infos;
    if (info)
        infos.append(info);
    replace(infos, false);
}

void MessageNeed::setMessagesNeeded(QVector<const MessageInfo*> infos)
{
    replace(infos, false);
}

void MessageNeed::clearMessagesNeeded(bool quietly)
{
    replace(QVector<const MessageInfo*>(), quietly);
}

void MessageNeed::replace(const QVector<const MessageInfo*>& infos, bool quietly)
{
    const QVector<const MessageInfo*> old = m_infos;
    m_infos = infos;
    m_manager->replaceNeeds(old, infos, quietly);
}
