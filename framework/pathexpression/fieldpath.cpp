#include "fieldpath.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "fieldwalk.h"
#include "messageinfo.h"
#include "pathexpression.h"

static bool hasSubMessages(const FieldInfo* field)
{
    return field->getType().getTypeCode() == FieldType::SubMessageType;
}

static QString textOf(const FieldPath::Step& step)
{
    return step.field->isRepeated() && step.index >= 0 ? QString::fromLatin1("[%1]").arg(step.index) : QString();
}

FieldPath::FieldPath()
    : m_messageInfo(nullptr)
{
}

FieldPath::FieldPath(const MessageInfo* info)
    : m_messageInfo(info)
{
}

FieldPath FieldPath::fromExpression(const QString& text)
{
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(text);
    const QVector<FieldPath> matches = expression.getMatches();
    if (matches.size() != 1)
        return FieldPath();
    FieldPath path(matches.first().m_messageInfo);
    const QVector<Step>& steps = matches.first().m_steps;
    for (int i = 0; i < steps.size(); ++i) {
        const bool leadsOn = i + 1 < steps.size() && hasSubMessages(steps.at(i).field);
        path.append(steps.at(i).field, qMax(leadsOn ? 0 : int(NoIndex), steps.at(i).index));
    }
    return path;
}

void FieldPath::append(const FieldInfo* field, int index)
{
    const bool isComponent = !m_steps.isEmpty() && !hasSubMessages(m_steps.last().field);
    Step step;
    step.field = field;
    step.index = field->isRepeated() ? index : isComponent ? int(NoIndex) : 0;
    step.number = step.index < 0 && isComponent ? m_steps.last().number : step.index;
    m_steps.append(step);
}

bool FieldPath::append(const QString& name, int index)
{
    const MessageInfo* info = m_messageInfo;
    if (!m_steps.isEmpty())
        info = m_steps.last().field->getType().getSubMessageInfo();
    const FieldInfo* found = info ? info->getFieldInfo(name) : nullptr;
    if (!info && !m_steps.isEmpty()) {
        Q_FOREACH (const FieldInfo* field, m_steps.last().field->getSubFieldInfos()) {
            if (!found && field->getName() == name)
                found = field;
        }
    }
    if (found)
        append(found, index);
    return found;
}

bool FieldPath::isHidden() const
{
    for (int i = 0; i < m_steps.size(); ++i)
        if (Corvel::isHidden(m_steps.at(i).field))
            return true;
    return false;
}

FieldValue FieldPath::getValue(const Message* message) const
{
    return isWholeRepeatedField() ? FieldValue::invalid() : FieldWalk(*this, message).getValue();
}

QString FieldPath::getFieldName() const
{
    QString name;
    for (int i = 0; i < m_steps.size(); ++i) {
        if (i > 0)
            name += QLatin1Char('.');
        name += m_steps.at(i).field->getName() + textOf(m_steps.at(i));
    }
    return name;
}

QString FieldPath::getName() const
{
    if (!m_messageInfo)
        return QString();
    const QString type = m_messageInfo->getName();
    return m_steps.isEmpty() ? type : type + QLatin1Char('.') + getFieldName();
}

QString FieldPath::getExpression() const
{
    if (!m_messageInfo)
        return QString();
    PathExpression expression;
    const bool isOneField = m_steps.size() == 1;
    if (isOneField) // also tells fields of one name apart
        expression.setupToMatchUnique(getField());
    else
        expression.setupToMatchUnique(m_messageInfo);
    QString text = expression.getString(PathExpression::AllParts);
    for (int i = 0; i < m_steps.size(); ++i) {
        if (!isOneField)
            text += QLatin1Char('/') + PathExpression::escape(m_steps.at(i).field->getName());
        text += textOf(m_steps.at(i));
    }
    return text;
}
