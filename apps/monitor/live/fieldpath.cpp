#include "fieldpath.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "pathexpression.h"

static QString indexText(const FieldPath::Step& step)
{
    return step.field->isRepeated() && step.index >= 0 ? QStringLiteral("[%1]").arg(step.index) : QString();
}

FieldPath FieldPath::fromExpression(const QString& text)
{
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(text);
    const QVector<PathExpression::Match> matches = expression.getMatches();
    FieldPath path;
    if (matches.size() != 1)
        return path;
    const PathExpression::Match& match = matches.first();
    path.messageInfo = match.messageInfo;
    for (int i = 0; i < match.fieldInfos.size(); ++i) {
        const FieldInfo* const field = match.fieldInfos.at(i);
        const int index = match.indexes.at(i);
        path.steps.append(Step{field, index >= 0 || field->isRepeated() ? qMax(-1, index) : 0});
    }
    // The way through a repeated sub-message leads through one of its values; which one is said in the name.
    for (int i = 0; i + 1 < path.steps.size(); ++i)
        path.steps[i].index = qMax(0, path.steps.at(i).index);
    return path;
}

bool FieldPath::isWholeRepeatedField() const
{
    return !steps.isEmpty() && steps.last().field->isRepeated() && steps.last().index < 0;
}

bool FieldPath::isHidden() const
{
    if (Corvel::confidentialInformationDisplayEnabled())
        return false;
    for (const Step& step : steps)
        if (step.field->isConfidential())
            return true;
    return false;
}

const Message* FieldPath::findHolder(const Message* message) const
{
    if (!message || message->getInfo() != messageInfo)
        return nullptr;
    for (int i = 0; i + 1 < steps.size() && message; ++i) {
        const Step& step = steps.at(i);
        // Components are read from the message that their whole field lies in.
        if (step.field->getType().getTypeCode() != FieldType::SubMessageType)
            continue;
        const unsigned int index = unsigned(qMax(0, step.index));
        const bool isThere = index < step.field->getValueCount(message);
        message = isThere ? step.field->getValue(message, index).getSubMessage() : nullptr;
    }
    return message;
}

FieldValue FieldPath::getValue(const Message* message) const
{
    const Message* const holder = findHolder(message);
    if (!holder || steps.isEmpty() || isWholeRepeatedField())
        return FieldValue::invalid();
    const Step& step = steps.last();
    const unsigned int index = unsigned(qMax(0, step.index));
    return index < step.field->getValueCount(holder) ? step.field->getValue(holder, index) : FieldValue::invalid();
}

QString FieldPath::getFieldName() const
{
    QString name;
    for (const Step& step : steps) {
        if (!name.isEmpty())
            name += QLatin1Char('.');
        name += step.field->getName() + indexText(step);
    }
    return name;
}

QString FieldPath::getName() const
{
    if (!messageInfo)
        return QString();
    return steps.isEmpty() ? messageInfo->getName() : messageInfo->getName() + QLatin1Char('.') + getFieldName();
}

QString FieldPath::getExpression() const
{
    if (!messageInfo)
        return QString();
    PathExpression expression;
    if (steps.size() == 1) // also tells fields of one name apart
        expression.setupToMatchUnique(steps.first().field);
    else
        expression.setupToMatchUnique(messageInfo);
    QString text = expression.getString(PathExpression::AllParts);
    if (steps.size() == 1)
        return text + indexText(steps.first());
    for (const Step& step : steps)
        text += QLatin1Char('/') + PathExpression::escape(step.field->getName()) + indexText(step);
    return text;
}
