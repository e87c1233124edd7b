#ifndef FIELDVALUE_H
#define FIELDVALUE_H

#include <QString>

class Message;

class FieldValue
{
public:
    enum RepresentationMode
    {
        AsItIs,
        InRoman
    };

    FieldValue(const QString& shown = QString(), const Message* message = nullptr)
        : text(shown)
        , subMessage(message)
    {
    }
    static FieldValue invalid() { return FieldValue(); }
    QString toString(bool, signed char, RepresentationMode mode, bool) const
    {
        return mode == AsItIs ? text : QLatin1String("MDCLXVI");
    }
    const Message* getSubMessage() const { return subMessage; }

    QString text;
    const Message* subMessage;
};

#endif
