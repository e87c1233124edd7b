#ifndef CORVEL_OWNMESSAGE_H
#define CORVEL_OWNMESSAGE_H

#include "messagereference.h"

#include <QHash>
#include <QPair>

#include <functional>

class FieldInfo;

/**
 * A message of an application's own making, which has its sub-messages made when somebody looks at them, and keeps them
 * for as long as it lives.
 *
 * A FunctionFieldInfo asks it for them. RecordMessage has something to make them of.
 */
class CORVELFRAMEWORK_EXPORT OwnMessage : public Message
{
public:
    typedef std::function<const Message*()> Maker;

    /** @param info  the type; must not be null and must outlive the message */
    explicit OwnMessage(const MessageInfo* info, const QByteArray& data = QByteArray());

    /**
     * The sub-message that is the value number @p index of @p field: what @p make returned when it was first asked for.
     *
     * @param make  returns a new message, whose first reference this one takes over, or null for none
     * @return borrowed, valid for as long as this message; null for none
     */
    const Message* getSubMessage(const FieldInfo* field, unsigned int index, const Maker& make) const;

protected:
    virtual ~OwnMessage();

private:
    mutable QHash<QPair<const FieldInfo*, unsigned int>, MessageReference> m_subMessages;
};

/** A message that holds a copy of a @p Record, a structure of the application, in place of bytes. */
template <class Record>
class RecordMessage : public OwnMessage
{
public:
    /**
     * @param info    the type; must not be null and must outlive the message
     * @param record  what it says; copied
     */
    RecordMessage(const MessageInfo* info, const Record& record)
        : OwnMessage(info)
        , m_record(record)
    {
    }

    /** What @p message, which must not be null, says; null for a message that is no RecordMessage of this structure. */
    static const Record* of(const Message* message)
    {
        const RecordMessage* own = dynamic_cast<const RecordMessage*>(message);
        return own ? &own->m_record : 0;
    }

private:
    const Record m_record;
};

#endif
