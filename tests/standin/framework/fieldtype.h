#ifndef FIELDTYPE_H
#define FIELDTYPE_H

#include <QString>

class MessageInfo;

class FieldType
{
public:
    enum TypeCode
    {
        NumberType = 17,
        CharType = 3,
        UnsignedCharType = 4,
        SubMessageType = 6
    };

    int getTypeCode() const { return code; }
    QString toShortString() const { return QString::fromLatin1("T%1").arg(code); }
    const MessageInfo* getSubMessageInfo() const { return subMessageInfo; }

    int code = NumberType; // first
    const MessageInfo* subMessageInfo = nullptr;
};

#endif
