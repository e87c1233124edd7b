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

/** Answers a signal with whatever it is given, but not the signals that it causes thereby. */
class Answer : public QObject
{
    Q_OBJECT

public:
    /** @param times  how often it answers; negative means each time */
    Answer(QObject* sender, const char* signal, const std::function<void()>& reaction, int times = -1)
        : m_reaction(reaction)
        , m_times(times)
    {
        connect(sender, signal, SLOT(react()));
    }

    /** Answers changes of the needs. */
    explicit Answer(const std::function<void()>& reaction)
        : m_reaction(reaction)
        , m_times(-1)
    {
        connect(MessageNeedManager::getInstance(), SIGNAL(needsChanged()), SLOT(react()));
    }

private Q_SLOTS:
    void react()
    {
        if (!m_reaction || m_times == 0)
            return;
        --m_times;
        const std::function<void()> reaction = m_reaction;
        m_reaction = nullptr;
        reaction();
        m_reaction = reaction;
    }

private:
    std::function<void()> m_reaction;
    int m_times;
};

#endif
