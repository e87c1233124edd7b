#ifndef TESTFORMAT_H
#define TESTFORMAT_H

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"

#include <QHash>

/** A message whose values are simply set. Sub-messages live as long as it does. */
class TestMessage : public Message
{
public:
    explicit TestMessage(const MessageInfo* info)
        : Message(info)
    {
    }

    TestMessage* set(const FieldInfo* field, const QVector<FieldValue>& values)
    {
        m_values.insert(field, values);
        return this;
    }
    TestMessage* set(const FieldInfo* field, const FieldValue& value)
    {
        return set(field, QVector<FieldValue>(1, value));
    }
    TestMessage* set(const FieldInfo* field, double value) { return set(field, FieldValue::fromDouble(value)); }
    TestMessage* setText(const FieldInfo* field, const QByteArray& text)
    {
        QVector<FieldValue> values;
        for (int i = 0; i < text.size(); ++i)
            values.append(FieldValue::fromChar(static_cast<unsigned char>(text.at(i))));
        return set(field, values);
    }
    TestMessage* fill(const FieldInfo* field, int count, int first = 0)
    {
        QVector<FieldValue> values;
        for (int i = 0; i < count; ++i)
            values.append(FieldValue::fromSigned(first + i, 4));
        return set(field, values);
    }
    /** Takes over the creator's references on @p messages. */
    TestMessage* set(const FieldInfo* field, const QList<Message*>& messages)
    {
        QVector<FieldValue> values;
        for (int i = 0; i < messages.size(); ++i) {
            m_subMessages.append(MessageReference::adopt(messages.at(i)));
            values.append(FieldValue::fromSubMessage(messages.at(i)));
        }
        return set(field, values);
    }

    QVector<FieldValue> values(const FieldInfo* field) const { return m_values.value(field); }

private:
    QHash<const FieldInfo*, QVector<FieldValue>> m_values;
    QList<MessageReference> m_subMessages;
};

/** A field of TestMessages; every property can be set. */
class TestFieldInfo : public FieldInfo
{
public:
    enum Flag
    {
        Plain = 0,
        Optional = 1,
        Repeated = 2,
        String = 4 | Repeated,
        Virtual = 8,
        Confidential = 16,
        Secondary = 32
    };

    explicit TestFieldInfo(const QString& name, int flags = Plain,
                           const FieldType& type = FieldType(FieldType::FloatType, 8, QLatin1String("double")))
        : FieldInfo(name, (flags & 4) ? FieldType(FieldType::CharType, 1, QLatin1String("char")) : type)
    {
        setOptional(flags & Optional);
        setRepeated(flags & Repeated);
        setStringField(flags & 4);
        setVirtual(flags & Virtual);
        setConfidential(flags & Confidential);
        setRole((flags & Secondary) ? SecondaryRole : PrimaryRole);
    }

    unsigned int getValueCount(const Message* message) const override
    {
        return static_cast<unsigned int>(static_cast<const TestMessage*>(message)->values(this).size());
    }

    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        return static_cast<const TestMessage*>(message)->values(this).value(static_cast<int>(index));
    }
};

#endif
