#ifndef CORVELEVENT_H
#define CORVELEVENT_H

#include <QString>

/** Stands in for a framework's event. */
class CorvelEvent
{
public:
    enum Type
    {
        OtherEvent = 0,
        CrcError = 2
    };

    QString getMessage() const { return message; }

    QString message;
};

#endif
