#include "ownmessage.h"

OwnMessage::OwnMessage(const MessageInfo* info, const QByteArray& data)
    : Message(info, data)
{
}

OwnMessage::~OwnMessage() = default;

const Message* OwnMessage::getSubMessage(const FieldInfo* field, unsigned int index, const Maker& make) const
{
    const QPair<const FieldInfo*, unsigned int> place(field, index);
    const QHash<QPair<const FieldInfo*, unsigned int>, MessageReference>::const_iterator kept =
        m_subMessages.constFind(place);
    if (kept != m_subMessages.constEnd())
        return kept->get();
    const MessageReference made = MessageReference::adopt(make());
    m_subMessages.insert(place, made);
    return made.get();
}
