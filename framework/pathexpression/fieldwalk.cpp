#include "fieldwalk.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "message.h"

FieldWalk::FieldWalk(const FieldPath& path, const Message* message, Access access)
    : m_path(&path)
    , m_access(access)
    , m_end(NoSuchField)
    , m_level(0)
    , m_count(0)
    , m_field(nullptr)
    , m_holder(nullptr)
    , m_trunk(nullptr)
{
    if (!message || message->getInfo() != path.getMessageInfo())
        return;
    if (path.getSteps().isEmpty()) {
        m_end = WholeMessage;
        m_holder = message;
        return;
    }
    walk(message);
}

FieldWalk::FieldWalk(const FieldWalk& trunk, const Message* message)
    : m_path(trunk.m_path)
    , m_access(trunk.m_access)
    , m_end(Absent)
    , m_level(trunk.m_level)
    , m_count(0)
    , m_field(trunk.m_field)
    , m_holder(nullptr)
    , m_trunk(nullptr)
{
    if (message)
        walk(message);
}

void FieldWalk::walk(const Message* message)
{
    const QVector<FieldPath::Step>& steps = m_path->getSteps();
    const int last = steps.size() - 1;
    while (message) {
        m_field = steps.at(m_level).field;
        if (m_level == last)
            return finish(message, m_path->getIndex());
        // Components are read from the message that their whole field lies in.
        if (m_field->getType().getTypeCode() == FieldType::SubMessageType)
            message = enter(message, m_path->getIndexAt(m_level));
        ++m_level;
    }
}

void FieldWalk::finish(const Message* message, int index)
{
    m_holder = message;
    if (index < 0) {
        countAll(message, AllValues);
        return;
    }
    const unsigned int number = static_cast<unsigned int>(index);
    if (isHidden()) {
        m_end = whyNone(message, number, Hidden);
        return;
    }
    m_value = m_field->getValue(message, number);
    m_end = m_value.isValid() ? OneValue : whyNone(message, number, OneValue);
    m_count = m_end == OneValue ? 1 : 0;
}

/** The sub-message of @p message that the way leads through; null where it ends or branches out. */
const Message* FieldWalk::enter(const Message* message, int index)
{
    if (index < 0) {
        countAll(message, Branches);
        m_trunk = message;
        return nullptr;
    }
    const unsigned int number = static_cast<unsigned int>(index);
    const Message* part = isHidden() ? nullptr : m_field->getValue(message, number).getSubMessage();
    if (!part)
        m_end = whyNone(message, number, isHidden() ? Hidden : Absent);
    return part;
}

void FieldWalk::countAll(const Message* message, End end)
{
    const unsigned int count = m_field->getValueCount(message);
    m_end = isAbsent(count) ? Absent : isHidden() ? Hidden : end;
    m_count = m_end == end ? count : 0;
}

/** Why @p message has no value of that number; @p otherwise when it has. */
FieldWalk::End FieldWalk::whyNone(const Message* message, unsigned int number, End otherwise) const
{
    const unsigned int count = m_field->getValueCount(message);
    if (number < count)
        return otherwise;
    return isAbsent(count) ? Absent : OutOfRange;
}

// A repeated field without values is there all the same, unless the message can lack it.
bool FieldWalk::isAbsent(unsigned int count) const
{
    return count == 0 && (!m_field->isRepeated() || m_field->isOptional());
}

bool FieldWalk::isHidden() const
{
    return m_access == WhatIsShown && Corvel::isHidden(m_field);
}

FieldValue FieldWalk::getValue(unsigned int i) const
{
    if (m_end == AllValues && i < m_count)
        return m_field->getValue(m_holder, i);
    return i == 0 ? m_value : FieldValue::invalid();
}

FieldWalk FieldWalk::getBranch(unsigned int i) const
{
    return FieldWalk(*this, m_end == Branches ? m_field->getValue(m_trunk, i).getSubMessage() : nullptr);
}
