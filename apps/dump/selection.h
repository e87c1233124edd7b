#ifndef SELECTION_H
#define SELECTION_H

#include "fieldpath.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

class FormatInfo;

/** The message types and fields that path expressions name; everything when there are none. */
class Selection
{
public:
    /** A field to print: the way to it, and the key to print it under. */
    struct Field
    {
        FieldPath path;
        QString key;
    };

    /**
     * Finds what @p expressions name in @p formats, and later in the formats of messages that come.
     *
     * @param complete  whether no other types will come; else what names nothing may do so later
     * @param error     set when false is returned: an expression is malformed or names nothing
     */
    bool setUp(const QStringList& expressions, const QVector<const FormatInfo*>& formats, bool complete,
               QString* error);

    /** Whether messages of the type are to be printed. A type that was not asked for before is looked up anew. */
    bool has(const MessageInfo* info);

    /** What is wrong when no more types come: an expression that names none of them; else empty. */
    QString getComplaint() const { return m_complaint; }

    /** The fields of a type to print, in the order of the expressions; empty means all of them. */
    QVector<Field> getFields(const MessageInfo* info) const { return m_fields.value(info); }

private:
    bool resolve(QString* error);

    bool m_all = true;
    QStringList m_expressions;
    QSet<const MessageInfo*> m_seen;
    QString m_complaint; // about the first expression that names nothing
    QHash<const MessageInfo*, QVector<Field>> m_fields;
};

#endif
