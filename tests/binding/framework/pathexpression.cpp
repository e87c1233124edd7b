#include "pathexpression.h"

#include "fieldinfo.h"
#include "messageinfo.h"
#include "minimodel.h"

const PathExpression::Parts PathExpression::AllParts = PathExpression::Parts(7);

static bool matches(const QString& pattern, const QString& text)
{
    return pattern == QLatin1String("*") || pattern == text;
}

PathExpression::PathExpression(QObject* parent)
    : QObject(parent)
{
}

PathExpression::~PathExpression() {}

void PathExpression::setString(QString text)
{
    setString(text, AllParts);
}

void PathExpression::setString(QString text, PathExpression::Parts parts)
{
    int place = 0;
    for (int i = 0; i < 3; ++i)
        if (parts & Part(1 << i))
            m_parts[i] = text.section(QLatin1Char('|'), place, place), ++place;
    Q_EMIT partsChanged(parts);
    Q_EMIT expressionChanged(getString(AllParts));
}

QString PathExpression::getString(PathExpression::Parts parts) const
{
    QStringList texts;
    for (int i = 0; i < 3; ++i)
        if (parts & Part(1 << i))
            texts.append(m_parts[i]);
    return texts.join(QLatin1String("|"));
}

void PathExpression::setStringPrefix(QString, PathExpression::Parts) {}

void PathExpression::completeEditing() {}

void PathExpression::setWildCard(PathExpression::Parts parts)
{
    setString(QLatin1String("*|*|*"), parts);
}

bool PathExpression::isWildCard(PathExpression::Parts parts) const
{
    for (int i = 0; i < 3; ++i)
        if ((parts & Part(1 << i)) && m_parts[i] != QLatin1String("*"))
            return false;
    return true;
}

QStringList PathExpression::getMatchingExpressionsStringList(PathExpression::Parts parts) const
{
    QStringList texts;
    for (const FieldInfo* field : getMatchingFieldInfos()) {
        PathExpression expression(nullptr);
        expression.setupToMatchUnique(field);
        if (!texts.contains(expression.getString(parts)))
            texts.append(expression.getString(parts));
    }
    return texts;
}

void PathExpression::setupToMatchUnique(const MessageInfo* info)
{
    setString(QLatin1String("mini|") + info->getName() + QLatin1String("|"));
}

void PathExpression::setupToMatchUnique(const FieldInfo* info)
{
    setString(QLatin1String("mini|") + info->getMessageInfos().at(0)->getName() + QLatin1Char('|') + info->getName());
}

void PathExpression::setConsiderSubMessages(bool) {}

QVector<const MessageInfo*> PathExpression::getMatchingMessageInfos() const
{
    QVector<const MessageInfo*> infos;
    for (const MessageInfo* info : MiniModel::infos)
        if (matches(m_parts[1], info->getName()))
            infos.append(info);
    return infos;
}

QVector<const FieldInfo*> PathExpression::getMatchingFieldInfos() const
{
    QVector<const FieldInfo*> fields;
    for (const MessageInfo* info : getMatchingMessageInfos())
        for (const FieldInfo* field : info->getFieldInfos())
            if (matches(m_parts[2], field->getName()))
                fields.append(field);
    return fields;
}
