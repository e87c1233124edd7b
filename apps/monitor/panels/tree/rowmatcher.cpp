#include "rowmatcher.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "treerow.h"

static const int MostWords = 32; // a bit each

RowMatcher::RowMatcher()
{
    m_expression.setConsiderSubMessages(true);
}

void RowMatcher::setText(const QString& text)
{
    m_words.clear();
    m_allWords = 0;
    m_matches.clear();
    m_inFields.clear();
    m_isPath = text.contains(QLatin1Char('/'));
    if (m_isPath) {
        // Whoever types "ATTITUDE/roll" means a type, whatever its format.
        if (!takeMatches(text.trimmed()) && !takeMatches(QLatin1String("*/") + text.trimmed()))
            takeMatches(text.trimmed());
        return;
    }
    m_words = text.toLower().simplified().split(QLatin1Char(' '));
    m_words.removeAll(QString());
    m_words = m_words.mid(0, MostWords);
    for (int i = 0; i < m_words.size(); ++i)
        m_allWords |= Words(1) << i;
}

bool RowMatcher::takeMatches(const QString& text)
{
    m_expression.setStringPrefix(text, PathExpression::AllParts);
    const bool hasFields = !m_expression.getString(PathExpression::FieldPart | PathExpression::IndexPart).isEmpty() ||
                           text.count(QLatin1Char('/')) > 1;
    if (hasFields) {
        const QVector<FieldPath> matches = m_expression.getMatches();
        for (const FieldPath& match : matches)
            m_matches[match.getMessageInfo()].append(match);
    } else {
        const QVector<const MessageInfo*> infos = m_expression.getMatchingMessageInfos();
        for (const MessageInfo* info : infos)
            m_matches.insert(info, {});
    }
    return !m_matches.isEmpty();
}

QString RowMatcher::getErrorString() const
{
    return m_isPath && m_matches.isEmpty() ? m_expression.errorString() : QString();
}

static bool isWordStart(const QString& text, int place)
{
    if (place == 0)
        return true;
    const QChar before = text.at(place - 1);
    const QChar here = text.at(place);
    return !before.isLetterOrNumber() || (before.isLower() && here.isUpper()) || before.isDigit() != here.isDigit();
}

// Each letter of the word follows the one before it, or begins a word.
static bool abbreviates(const QString& text, int place, const QString& word, int letter)
{
    if (letter == word.size())
        return true;
    for (int i = place; i < text.size(); ++i) {
        const bool fits = text.at(i).toLower() == word.at(letter);
        if (fits && ((letter > 0 && i == place) || isWordStart(text, i)) && abbreviates(text, i + 1, word, letter + 1))
            return true;
    }
    return false;
}

bool RowMatcher::isAbbreviated(const QString& text, const QString& word)
{
    return text.contains(word, Qt::CaseInsensitive) || abbreviates(text, 0, word, 0);
}

RowMatcher::Words RowMatcher::findInName(const QString& name) const
{
    Words found = 0;
    for (int i = 0; i < m_words.size(); ++i)
        if (isAbbreviated(name, m_words.at(i)))
            found |= Words(1) << i;
    return found;
}

RowMatcher::Words RowMatcher::findInValue(const QString& text) const
{
    Words found = 0;
    for (int i = 0; i < m_words.size(); ++i)
        if (text.contains(m_words.at(i), Qt::CaseInsensitive))
            found |= Words(1) << i;
    return found;
}

RowMatcher::Words RowMatcher::findInFields(const MessageInfo* info) const
{
    const auto known = m_inFields.constFind(info);
    if (known != m_inFields.constEnd())
        return *known;
    m_inFields.insert(info, 0); // a type can contain itself
    Words found = 0;
    QVector<const FieldInfo*> fields = info->getFieldInfos();
    for (int i = 0; i < fields.size(); ++i) {
        found |= findInName(fields.at(i)->getName());
        fields += fields.at(i)->getSubFieldInfos();
        if (const MessageInfo* const inner = fields.at(i)->getType().getSubMessageInfo())
            found |= findInFields(inner);
    }
    m_inFields.insert(info, found);
    return found;
}

RowMatcher::Words RowMatcher::findInValues(const Message* message, bool raw) const
{
    Words found = 0;
    QVector<const FieldInfo*> fields = message->getInfo()->getFieldInfos();
    for (int i = 0; i < fields.size() && found != m_allWords; ++i) {
        const FieldInfo* const field = fields.at(i);
        fields += field->getSubFieldInfos();
        if (Corvel::isHidden(field) || !field->occursIn(message->getInfo()))
            continue;
        if (field->isStringField()) {
            found |= findInValue(field->getStringValue(message));
            continue;
        }
        const unsigned int count = field->getValueCount(message);
        for (unsigned int j = 0; j < count && found != m_allWords; ++j) {
            const FieldValue value = field->getValue(message, j);
            if (const Message* const inner = value.getSubMessage()) {
                found |= findInValues(inner, raw) | findInFields(inner->getInfo());
                continue;
            }
            found |= findInValue(field->getInterpretedString(value, true));
            if (raw)
                found |= findInValue(field->getRawString(value));
        }
    }
    return found;
}

bool RowMatcher::mayMatch(const MessageInfo* info) const
{
    return m_matches.contains(info);
}

static bool isMeant(const FieldPath& wanted, const FieldPath& path, int level)
{
    const FieldPath::Step& step = path.getSteps().at(level);
    const FieldPath::Step& want = wanted.getSteps().at(level);
    if (step.field != want.field)
        return false;
    if (want.number >= 0)
        return step.number == want.number;
    const bool isLast = level + 1 == path.getSteps().size();
    return want.index == FieldPath::AllIndexes ? step.index >= 0
                                               : !isLast || step.index < 0 || !step.field->isRepeated();
}

bool RowMatcher::matches(const TreeRow& row) const
{
    const FieldPath& path = row.getPath();
    const auto found = m_matches.constFind(path.getMessageInfo());
    if (found == m_matches.constEnd())
        return false;
    const int count = int(path.getSteps().size());
    if (found->isEmpty())
        return count == 0;
    for (const FieldPath& wanted : *found) {
        bool same = wanted.getSteps().size() == count;
        for (int i = 0; same && i < count; ++i)
            same = isMeant(wanted, path, i);
        if (same)
            return true;
    }
    return false;
}
