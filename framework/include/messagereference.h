#ifndef CORVEL_MESSAGEREFERENCE_H
#define CORVEL_MESSAGEREFERENCE_H

#include "message.h"

/** Holds one reference on a message, or none, for as long as it lives. */
class CORVELFRAMEWORK_EXPORT MessageReference
{
public:
    /** Holds nothing. */
    MessageReference();
    /** Takes a reference of its own on @p message, which may be null. */
    explicit MessageReference(const Message* message);
    MessageReference(const MessageReference& other);
    MessageReference& operator=(const MessageReference& other);
    ~MessageReference();

    /** Takes over the reference that the creator of a new message has, instead of adding one. Null is allowed. */
    static MessageReference adopt(const Message* message);

    /** The message, or null. */
    const Message* get() const { return m_message; }
    const Message* operator->() const { return m_message; }
    bool isNull() const { return !m_message; }

private:
    const Message* m_message;
};

#endif
