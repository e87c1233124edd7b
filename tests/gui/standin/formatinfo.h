#ifndef FORMATINFO_H
#define FORMATINFO_H

#include <QString>

/** Stands in for a framework's format. */
class FormatInfo
{
public:
    QString getName() const { return name; }

    QString name;
};

#endif
