#ifndef CORVEL_FORMATINFO_H
#define CORVEL_FORMATINFO_H

#include "corvelframework_export.h"

#include <QHash>
#include <QString>
#include <QVector>

class MessageInfo;

/**
 * The description of a message format: a family of message types, such as one dialect. Owns its types.
 *
 * A FormatRegistry that knows it forgets it when it goes.
 */
class CORVELFRAMEWORK_EXPORT FormatInfo
{
public:
    explicit FormatInfo(const QString& name);
    virtual ~FormatInfo();

    QString getName() const { return m_name; }

    /** The types in the order in which they were added. */
    QVector<const MessageInfo*> getMessageInfos() const { return m_messages; }

    /** The type of that name, or null. */
    const MessageInfo* getMessageInfo(const QString& name) const { return m_byName.value(name); }

    /** Adds a type and takes ownership. Of two types of one name, getMessageInfo() finds the first. */
    void addMessageInfo(MessageInfo* info);

protected:
    /** Leaves the registry and deletes the types, the newest first, as later ones are made of earlier ones. For a
     * derived class whose messages need more of it than that, at its own end. */
    void removeMessageInfos();

private:
    Q_DISABLE_COPY(FormatInfo)
    friend class FormatRegistry;

    QString m_name;
    QVector<const MessageInfo*> m_messages;
    QHash<QString, const MessageInfo*> m_byName;
    mutable bool m_registered; // the registry's note, so that only formats it knows look for it when they go
};

#endif
