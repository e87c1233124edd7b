#ifndef FORMATINFO_H
#define FORMATINFO_H

#include <QString>

class FormatInfo
{
public:
    QString getName() const { return name; }

    QString name;
};

#endif
