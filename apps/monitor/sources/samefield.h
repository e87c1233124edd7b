#ifndef SAMEFIELD_H
#define SAMEFIELD_H

#include "fieldpath.h"

/**
 * Fields of types that took the place of another of their name.
 *
 * A type is never changed. When a channel is opened anew and its messages, or the schema, have other fields, another
 * type of that name is made, and to whoever looks at a field it is the same one as before.
 */
namespace SameField
{

/** Whether one can stand for the other: of one name and kind, and not of two formats. */
bool areSame(const MessageInfo* left, const MessageInfo* right);

/** What @p path is in the type @p info; no way at all when there is no such field, or it is another type. */
FieldPath in(const FieldPath& path, const MessageInfo* info);

/** Whether both lead to the same field of such types. */
inline bool areSame(const FieldPath& left, const FieldPath& right)
{
    return left == right || (left.getField() && right.getField() && in(left, right.getMessageInfo()) == right);
}

/** The types that are known and can stand for @p info, with itself. GUI thread. */
QVector<const MessageInfo*> typesLike(const MessageInfo* info);

/** Like FieldPath::fromExpression(), but of several types that can stand for one another the first is meant. */
FieldPath fromExpression(const QString& expression);

} // namespace SameField

#endif
