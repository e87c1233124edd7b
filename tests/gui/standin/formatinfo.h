#ifndef FORMATINFO_H
#define FORMATINFO_H

#include <QString>

/** Stands in for a framework's format. */
class FormatInfo
{
public:
    explicit FormatInfo(const QString& name)
        : m_name(name)
    {
    }

    QString getName() const { return m_name; }

private:
    QString m_name;
};

#endif
