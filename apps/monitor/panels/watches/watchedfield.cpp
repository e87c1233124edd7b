#include "watchedfield.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "latestmessagesource.h"
#include "message.h"
#include "messageinfo.h"

static const int MostNamesakes = 4;
static const int MostValues = 20; // of a repeated sub-message; more nobody reads at a glance

static bool isSame(const PathExpression::Match& one, const PathExpression::Match& other)
{
    return one.messageInfo == other.messageInfo && one.fieldInfos == other.fieldInfos && one.indexes == other.indexes;
}

WatchedField::WatchedField(FieldValueLabel* label, LatestMessageSource* source)
    : m_label(label)
    , m_source(source)
{
    connect(source, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(source, &LatestMessageSource::forgotten, this, &WatchedField::forget);
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
    m_hidden = true; // nothing timed out yet
    renew();
    return field;
}

void WatchedField::renew()
{
    if (!m_match || (!m_hidden && m_label->text() == FieldValueLabel::tr("N/A")))
        return;
    const MessageReference latest = m_source->getLatest(m_match->messageInfo);
    if (!latest.isNull())
        processMessage(latest.get());
}

void WatchedField::forget(const MessageInfo* info)
{
    if (m_match && m_match->messageInfo == info)
        m_label->clearValue();
}

bool WatchedField::isHidden() const
{
    if (Corvel::confidentialInformationDisplayEnabled())
        return false;
    for (const FieldInfo* field : m_match->fieldInfos)
        if (field->isConfidential())
            return true;
    return false;
}

void WatchedField::processMessage(const Message* message)
{
    if (!m_match || message->getInfo() != m_match->messageInfo)
        return;
    m_hidden = isHidden();
    if (m_hidden) {
        m_label->setText(tr("Hidden data"));
        return;
    }
    QStringList texts;
    collectTexts(message, 0, &texts);
    if (texts.isEmpty())
        m_label->clearValue();
    else if (texts.size() > 1)
        m_label->setText(texts.join(QLatin1String(", ")));
}

// The label itself writes each value, and begins its time-out with that.
void WatchedField::collectTexts(const Message* message, int step, QStringList* texts)
{
    if (step + 1 == m_match->fieldInfos.size()) {
        m_label->processMessage(message);
        texts->append(m_label->text());
        return;
    }
    const FieldInfo* const field = m_match->fieldInfos.at(step);
    if (!field->getType().getSubMessageInfo()) // what follows is a component of it, in the same message
        return collectTexts(message, step + 1, texts);
    const int count = int(field->getValueCount(message));
    const int index = m_match->indexes.at(step);
    const int first = qMax(0, index);
    const int last = index >= 0 ? index : count - 1;
    for (int i = first; i <= last && i < count; ++i) {
        if (texts->size() >= MostValues) {
            if (texts->last() != QString(QChar(0x2026)))
                texts->append(QString(QChar(0x2026)));
            return;
        }
        if (const Message* const part = field->getValue(message, uint(i)).getSubMessage())
            collectTexts(part, step + 1, texts);
    }
}
