#ifndef MESSAGE_H
#define MESSAGE_H

#include "fieldvalue.h"
#include "referencecountedobject.h"

#include <QList>
#include <QMap>

class FieldInfo;
class MessageInfo;

class Message : public ReferenceCountedObject
{
public:
    explicit Message(const MessageInfo* type)
        : info(type)
    {
    }
    const MessageInfo* getInfo() const { return info; }

    const MessageInfo* info;
    QMap<const FieldInfo*, QList<FieldValue>> values;
};

#endif
