#ifndef PROBLEMFIELDINFO_H
#define PROBLEMFIELDINFO_H

#include "fieldinfo.h"
#include "message.h"

#include <typeinfo>

/** What is wrong with the bytes of a message, as texts: what the operation getProblems() of an encoding's messages
 * says. */
template <class OwnMessage>
class ProblemFieldInfo : public FieldInfo
{
public:
    ProblemFieldInfo()
        : FieldInfo(QStringLiteral("[problems]"), FieldType(FieldType::TextType, 0, QStringLiteral("text")))
    {
        setRepeated(true);
        setOptional(true);
    }

    unsigned int getValueCount(const Message* message) const override
    {
        // Others may make messages of the type as well.
        const bool isOwn = typeid(*message) == typeid(OwnMessage) && occursIn(message->getInfo());
        return isOwn ? static_cast<unsigned int>(static_cast<const OwnMessage*>(message)->getProblems().size()) : 0;
    }

    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        if (index >= getValueCount(message))
            return FieldValue::invalid();
        return FieldValue::fromText(static_cast<const OwnMessage*>(message)->getProblems().at(static_cast<int>(index)));
    }
};

#endif
