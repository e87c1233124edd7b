#include "formatinfo.h"

#include "formatregistry.h"
#include "messageinfo.h"

FormatInfo::FormatInfo(const QString& name)
    : m_name(name)
    , m_registered(false)
{
}

FormatInfo::~FormatInfo()
{
    removeMessageInfos();
}

void FormatInfo::removeMessageInfos()
{
    if (m_registered)
        FormatRegistry::getInstance()->removeFormat(this);
    m_byName.clear();
    while (!m_messages.isEmpty()) {
        const MessageInfo* const info = m_messages.last();
        m_messages.resize(m_messages.size() - 1); // who hears that it goes may ask what there is
        delete info;
    }
}

void FormatInfo::addMessageInfo(MessageInfo* info)
{
    info->m_format = this;
    m_messages.append(info);
    if (!m_byName.contains(info->getName()))
        m_byName.insert(info->getName(), info);
}
