#include "fieldwalk.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "message.h"

// What can be inlined has to be static: operations of an exported class are not.
static FieldWalk::End endAt(const FieldInfo* field, unsigned int count, int index, FieldWalk::Access access)
{
    // A repeated field without values is there all the same, unless the message can lack it.
    if (count == 0 && (!field->isRepeated() || field->isOptional()))
        return FieldWalk::Absent;
    if (index >= 0 && static_cast<unsigned int>(index) >= count)
        return FieldWalk::OutOfRange;
    if (access == FieldWalk::WhatIsShown && Corvel::isHidden(field))
        return FieldWalk::Hidden;
    return index < 0 ? FieldWalk::AllValues : FieldWalk::OneValue;
}

FieldWalk::FieldWalk(const FieldPath& path, const Message* message, Access access)
    : m_path(&path)
    , m_access(access)
    , m_end(NoSuchField)
    , m_level(0)
    , m_first(0)
    , m_count(0)
    , m_field(nullptr)
    , m_message(nullptr)
{
    if (!message || message->getInfo() != path.getMessageInfo())
        return;
    if (!path.getSteps().isEmpty()) {
        walk(message);
        return;
    }
    m_end = WholeMessage;
    m_message = message;
}

FieldWalk::FieldWalk(const FieldWalk& trunk, const Message* message)
    : m_path(trunk.m_path)
    , m_access(trunk.m_access)
    , m_end(Absent)
    , m_level(trunk.m_level)
    , m_first(0)
    , m_count(0)
    , m_field(trunk.m_field)
    , m_message(nullptr)
{
    if (message)
        walk(message);
}

void FieldWalk::walk(const Message* message)
{
    const FieldPath::Step* const steps = m_path->getSteps().constData();
    const int last = static_cast<int>(m_path->getSteps().size()) - 1;
    for (int level = m_level; message; ++level) {
        const FieldInfo* const field = steps[level].field;
        // Components are read from the message that their whole field lies in.
        if (level < last && field->getType().getTypeCode() != FieldType::SubMessageType)
            continue;
        const unsigned int count = field->getValueCount(message);
        const int index = steps[level].number;
        const End end = endAt(field, count, index, m_access);
        if (level < last && end == OneValue) {
            message = field->getValue(message, static_cast<unsigned int>(index)).getSubMessage();
            m_end = Absent; // if there is none
            continue;
        }
        m_level = level + 1;
        m_field = field;
        m_message = message;
        m_end = level < last && end == AllValues ? Branches : end;
        m_first = end == OneValue ? static_cast<unsigned int>(index) : 0;
        m_count = end == AllValues ? count : end == OneValue ? 1 : 0;
        return;
    }
}

const Message* FieldWalk::getHolder() const
{
    return m_level == m_path->getSteps().size() ? m_message : nullptr;
}

FieldValue FieldWalk::getValue(unsigned int i) const
{
    const bool hasValues = m_end == OneValue || m_end == AllValues;
    return hasValues && i < m_count ? m_field->getValue(m_message, m_first + i) : FieldValue::invalid();
}

FieldWalk FieldWalk::getBranch(unsigned int i) const
{
    return FieldWalk(*this, m_end == Branches ? m_field->getValue(m_message, i).getSubMessage() : nullptr);
}
