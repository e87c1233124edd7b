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

    int getTypeCode() const { return m_code; }
    QString toShortString() const;
    const MessageInfo* getSubMessageInfo() const;

private:
    int m_code; // first
    const MessageInfo* m_subMessageInfo;

    friend class FieldInfo;
    friend class MiniModel;
    FieldType()
        : m_code(NumberType)
        , m_subMessageInfo(nullptr)
    {
    }
};

#endif
