#ifndef MESSAGEINFO_H
#define MESSAGEINFO_H

#include <QString>

/** Stands in for a framework's message type. */
class MessageInfo
{
public:
    explicit MessageInfo(const QString& description)
        : m_description(description)
    {
    }

    QString getShortDescriptiveText() const { return m_description; }

private:
    QString m_description;
};

#endif
