#include "messageinfo.h"

#include "fieldinfo.h"
#include "message.h"

MessageInfo::MessageInfo(const QString& name, bool main)
    : m_name(name)
    , m_main(main)
    , m_format(nullptr)
{
}

MessageInfo::~MessageInfo()
{
    for (int i = 0; i < m_fields.size(); ++i)
        delete m_fields.at(i);
}

const FieldInfo* MessageInfo::getFieldInfo(const QString& name) const
{
    for (int i = 0; i < m_fields.size(); ++i)
        if (m_fields.at(i)->getName() == name)
            return m_fields.at(i);
    return nullptr;
}

void MessageInfo::addField(FieldInfo* field)
{
    field->enterMessageInfo(this);
    m_fields.append(field);
}

Message* MessageInfo::newMessage(const QByteArray& data) const
{
    return new Message(this, data);
}
