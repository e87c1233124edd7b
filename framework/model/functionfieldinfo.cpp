#include "functionfieldinfo.h"

FunctionFieldInfo::FunctionFieldInfo(const QString& name, const FieldType& type, const Reader& read)
    : FieldInfo(name, type)
    , m_read(read)
{
}

FunctionFieldInfo::FunctionFieldInfo(const QString& name, const FieldType& type, const Counter& count,
                                     const Reader& read)
    : FieldInfo(name, type)
    , m_count(count)
    , m_read(read)
{
    setRepeated(true);
}

FunctionFieldInfo::~FunctionFieldInfo() = default;

FunctionFieldInfo* FunctionFieldInfo::ofSubMessages(const QString& name, const MessageInfo* info, const Counter& count,
                                                    const Maker& make)
{
    FunctionFieldInfo* const field = new FunctionFieldInfo(name, FieldType(info), Reader());
    field->m_count = count;
    field->setRepeated(bool(count));
    field->m_read = [field, make](const Message* message, unsigned int index) {
        const OwnMessage* const own = dynamic_cast<const OwnMessage*>(message);
        const OwnMessage::Maker makeThis = [&]() { return make(message, index); };
        return FieldValue::fromSubMessage(own ? own->getSubMessage(field, index, makeThis) : nullptr);
    };
    return field;
}

void FunctionFieldInfo::setOptional(const Presence& isPresent)
{
    m_isPresent = isPresent;
    FieldInfo::setOptional(true);
}

unsigned int FunctionFieldInfo::getValueCount(const Message* message) const
{
    if (!occursIn(message->getInfo()) || (m_isPresent && !m_isPresent(message)))
        return 0;
    return m_count ? m_count(message) : 1;
}

FieldValue FunctionFieldInfo::getValue(const Message* message, unsigned int index) const
{
    return index < getValueCount(message) ? m_read(message, index) : FieldValue::invalid();
}
