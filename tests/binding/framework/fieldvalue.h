#ifndef FIELDVALUE_H
#define FIELDVALUE_H

#include <QVariant>

class Message;

class FieldValue
{
public:
    enum RepresentationMode
    {
        AsItIs,
        InRoman
    };

    FieldValue();
    ~FieldValue();
    static FieldValue invalid();
    QString toString(bool, signed char, RepresentationMode mode, bool) const;
    const Message* getSubMessage() const;

private:
    friend class FieldInfo;
    QVariant m_content;
};

#endif
