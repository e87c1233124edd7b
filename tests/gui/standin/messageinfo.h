#ifndef MESSAGEINFO_H
#define MESSAGEINFO_H

#include <QString>

/** Stands in for a framework's message type. */
class MessageInfo
{
public:
    QString getShortDescriptiveText() const { return description; }

    QString description;
};

#endif
