#ifndef CORVELEVENT_H
#define CORVELEVENT_H

#include <QString>

class CorvelEvent
{
public:
    enum Type
    {
        Fanfare = 1,
        CrcError = 2
    };

    explicit CorvelEvent(const QString& text)
        : message(text)
    {
    }
    QString getMessage() const { return message; }

    QString message;
};

#endif
