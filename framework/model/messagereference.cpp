#include "messagereference.h"

MessageReference::MessageReference()
    : m_message(nullptr)
{
}

MessageReference::MessageReference(const Message* message)
    : m_message(message)
{
    if (m_message)
        m_message->addReference();
}

MessageReference::MessageReference(const MessageReference& other)
    : m_message(other.m_message)
{
    if (m_message)
        m_message->addReference();
}

MessageReference& MessageReference::operator=(const MessageReference& other)
{
    if (other.m_message)
        other.m_message->addReference();
    if (m_message)
        m_message->removeReference();
    m_message = other.m_message;
    return *this;
}

MessageReference::~MessageReference()
{
    if (m_message)
        m_message->removeReference();
}

MessageReference MessageReference::adopt(const Message* message)
{
    MessageReference reference;
    reference.m_message = message;
    return reference;
}
