#ifndef MESSAGEFIXTURES_H
#define MESSAGEFIXTURES_H

#include "messageneedmanager.h"
#include "testformat.h"

#include <functional>

/** A message type whose fields are added in one line each. */
class TestInfo : public MessageInfo
{
public:
    explicit TestInfo(const char* name, bool isMain = true)
        : MessageInfo(QString::fromLatin1(name), isMain)
    {
    }

    TestFieldInfo* add(const char* name, int flags = TestFieldInfo::Plain)
    {
        return add(new TestFieldInfo(QString::fromLatin1(name), flags));
    }
    TestFieldInfo* add(const char* name, int flags, const MessageInfo* subMessage)
    {
        return add(new TestFieldInfo(QString::fromLatin1(name), flags, FieldType(subMessage)));
    }
    TestFieldInfo* add(TestFieldInfo* field)
    {
        addField(field);
        return field;
    }

    TestMessage* createMessage() const { return new TestMessage(this); }
};

/** Adds a component to @p field. */
inline TestFieldInfo* addComponent(TestFieldInfo* field, const char* name, int flags = TestFieldInfo::Plain)
{
    TestFieldInfo* component = new TestFieldInfo(QString::fromLatin1(name), flags);
    field->addSubField(component);
    return component;
}

/** A message that the test owns for as long as the fixture lives. */
class OwnedMessage
{
public:
    explicit OwnedMessage(const MessageInfo* info)
        : m_reference(MessageReference::adopt(new TestMessage(info)))
    {
    }

    TestMessage* operator->() const
    {
        return const_cast<TestMessage*>(static_cast<const TestMessage*>(m_reference.get()));
    }
    operator const Message*() const { return m_reference.get(); }

private:
    MessageReference m_reference;
};

/** Does something each time that the needs change, but not while it does it. */
class NeedListener : public QObject
{
    Q_OBJECT

public:
    explicit NeedListener(const std::function<void()>& reaction)
        : m_reaction(reaction)
    {
        connect(MessageNeedManager::getInstance(), SIGNAL(needsChanged()), SLOT(react()));
    }

private Q_SLOTS:
    void react()
    {
        const std::function<void()> reaction = m_reaction;
        m_reaction = nullptr;
        if (reaction)
            reaction();
        m_reaction = reaction;
    }

private:
    std::function<void()> m_reaction;
};

#endif
