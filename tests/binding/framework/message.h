#ifndef MESSAGE_H
#define MESSAGE_H

#include "referencecountedobject.h"

#include <QMap>
#include <QVariant>

class FieldInfo;
class MessageInfo;

class Message : public ReferenceCountedObject
{
public:
    const MessageInfo* getInfo() const { return m_type; }

private:
    friend class FieldInfo;
    friend class MiniModel;
    explicit Message(const MessageInfo* type);
    ~Message() override;

    QMap<const FieldInfo*, QVariantList> m_contents;
    const MessageInfo* m_type;
};

#endif
