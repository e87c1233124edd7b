#include "fieldtype.h"

#include "messageinfo.h"

FieldType::FieldType()
    : m_typeCode(NoType)
    , m_size(0)
    , m_subMessageInfo(nullptr)
{
}

FieldType::FieldType(TypeCode code, int size, const QString& name)
    : m_typeCode(code)
    , m_size(size)
    , m_name(name)
    , m_subMessageInfo(nullptr)
{
}

FieldType::FieldType(const MessageInfo* subMessageInfo)
    : m_typeCode(SubMessageType)
    , m_size(0)
    , m_subMessageInfo(subMessageInfo)
{
}

QString FieldType::toShortString() const
{
    return m_subMessageInfo ? m_subMessageInfo->getName() : m_name;
}

const MessageInfo* FieldType::getSubMessageInfo() const
{
    return m_subMessageInfo;
}
