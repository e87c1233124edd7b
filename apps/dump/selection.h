#ifndef SELECTION_H
#define SELECTION_H

#include "pathexpression.h"

#include <QHash>
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
        PathExpression::Match match;
        QString key;
    };

    /**
     * Finds what @p expressions name in @p format.
     *
     * @param error  set when false is returned: an expression is malformed or names nothing
     */
    bool setUp(const QStringList& expressions, const FormatInfo* format, QString* error);

    /** Whether messages of the type are to be printed. */
    bool has(const MessageInfo* info) const { return m_all || m_fields.contains(info); }

    /** The fields of a type to print, in the order of the expressions; empty means all of them. */
    QVector<Field> getFields(const MessageInfo* info) const { return m_fields.value(info); }

private:
    bool m_all = true;
    QHash<const MessageInfo*, QVector<Field>> m_fields;
};

#endif
