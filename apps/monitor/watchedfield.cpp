#include "watchedfield.h"

#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "latestmessagesource.h"
#include "message.h"
#include "messageinfo.h"

static const int MostNamesakes = 4;

static bool isSame(const PathExpression::Match& one, const PathExpression::Match& other)
{
    return one.messageInfo == other.messageInfo && one.fieldInfos == other.fieldInfos && one.indexes == other.indexes;
}

WatchedField::WatchedField(FieldValueLabel* label, LatestMessageSource* source)
    : m_label(label)
    , m_source(source)
{
    connect(source, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
}

// Of a type that is received on its own and also occurs as a part there are two of one name, but messages of only one.
static QVector<PathExpression::Match> withoutParts(const QVector<PathExpression::Match>& matches)
{
    QVector<PathExpression::Match> received;
    for (const PathExpression::Match& match : matches)
        if (match.messageInfo->isMain())
            received.append(match);
    return received.isEmpty() ? matches : received;
}

const FieldInfo* WatchedField::follow(const PathExpression& expression)
{
    std::optional<PathExpression::Match> match;
    // The ways are only looked at when there are few: an open expression has hundreds of thousands.
    const qsizetype count = expression.getMatchingFieldInfos().size();
    if (count > 0 && count <= MostNamesakes) {
        const QVector<PathExpression::Match> matches = withoutParts(expression.getMatches());
        if (matches.size() == 1)
            match = matches.first();
    }
    return setMatch(match);
}

void WatchedField::followNothing()
{
    setMatch(std::nullopt);
}

const FieldInfo* WatchedField::setMatch(const std::optional<PathExpression::Match>& match)
{
    const FieldInfo* const field = match ? match->fieldInfos.last() : nullptr;
    if (match && m_match && isSame(*match, *m_match))
        return field;
    m_match = match;
    m_label->setFieldInfo(field);
    if (match && match->indexes.last() >= 0)
        m_label->setIndex(uint(match->indexes.last()));
    else
        m_label->clearIndex();
    m_label->clearValue();
    if (match) {
        const MessageReference latest = m_source->getLatest(match->messageInfo);
        if (!latest.isNull())
            processMessage(latest.get());
    }
    return field;
}

void WatchedField::processMessage(const Message* message)
{
    if (!m_match || message->getInfo() != m_match->messageInfo)
        return;
    for (int i = 0; i + 1 < m_match->fieldInfos.size(); ++i) {
        const FieldInfo* const field = m_match->fieldInfos.at(i);
        if (!field->getType().getSubMessageInfo())
            continue; // what follows is a component of it, in the same message
        message = field->getValue(message, uint(qMax(0, m_match->indexes.at(i)))).getSubMessage();
        if (!message)
            return m_label->clearValue();
    }
    m_label->processMessage(message);
}
