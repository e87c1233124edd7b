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
    if (m_registered)
        FormatRegistry::getInstance()->removeFormat(this);
    for (int i = 0; i < m_messages.size(); ++i)
        delete m_messages.at(i);
}

void FormatInfo::addMessageInfo(MessageInfo* info)
{
    info->m_format = this;
    m_messages.append(info);
    if (!m_byName.contains(info->getName()))
        m_byName.insert(info->getName(), info);
}
