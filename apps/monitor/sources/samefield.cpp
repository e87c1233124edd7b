#include "samefield.h"

#include "fieldinfo.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "pathexpression.h"

#include <typeinfo>

bool SameField::areSame(const MessageInfo* left, const MessageInfo* right)
{
    if (left == right)
        return true;
    if (!left || !right || typeid(*left) != typeid(*right) || left->getName() != right->getName())
        return false;
    // One that a pass has just made belongs to no format yet.
    return !left->getFormatInfo() || !right->getFormatInfo() || left->getFormatInfo() == right->getFormatInfo();
}

FieldPath SameField::in(const FieldPath& path, const MessageInfo* info)
{
    if (path.getMessageInfo() == info)
        return path;
    if (!areSame(path.getMessageInfo(), info))
        return FieldPath();
    FieldPath same(info);
    for (const FieldPath::Step& step : path.getSteps())
        if (!same.append(step.field->getName(), step.index) ||
            same.getField()->isRepeated() != step.field->isRepeated())
            return FieldPath();
    return same;
}

QVector<const MessageInfo*> SameField::typesLike(const MessageInfo* info)
{
    QVector<const MessageInfo*> types(1, info);
    const QVector<const MessageInfo*> all =
        info->getFormatInfo() ? info->getFormatInfo()->getMessageInfos() : QVector<const MessageInfo*>();
    for (const MessageInfo* const other : all)
        if (other != info && areSame(info, other))
            types.append(other);
    return types;
}

FieldPath SameField::fromExpression(const QString& text)
{
    const FieldPath only = FieldPath::fromExpression(text);
    if (only.getField())
        return only;
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(text);
    const QVector<FieldPath> matches = expression.getMatches();
    for (const FieldPath& match : matches)
        if (!areSame(matches.constFirst(), match))
            return FieldPath();
    return matches.isEmpty() ? FieldPath() : FieldPath::fromExpression(matches.constFirst().getExpression());
}
