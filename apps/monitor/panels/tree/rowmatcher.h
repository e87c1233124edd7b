#ifndef ROWMATCHER_H
#define ROWMATCHER_H

#include "pathexpression.h"

#include <QHash>
#include <QStringList>

class Message;
class MessageInfo;
class TreeRow;

/**
 * Decides what rows of the message tree somebody looks for.
 *
 * A text with a slash is a path expression, with or without its format. Any other text is words, each of which has to
 * be found in the type's name, the field's name or what is shown of its value: as it is, or in names as an abbreviation
 * of the beginnings of words ("gpr" is in GPS_RAW_INT).
 */
class RowMatcher
{
public:
    /** One bit for each word that was found. */
    typedef quint32 Words;

    RowMatcher();

    void setText(const QString& text);
    bool isEmpty() const { return m_words.isEmpty() && !m_isPath; }
    /** Whether the text is a path expression: then what matches does not depend on values. */
    bool isPath() const { return m_isPath; }
    /** What is wrong with the path expression; empty when nothing is. */
    QString getErrorString() const;

    Words findInName(const QString& name) const;
    Words findInValue(const QString& text) const;
    Words getAllWords() const { return m_allWords; }
    /** The words that are found in the names of any fields of a type. */
    Words findInFields(const MessageInfo* info) const;
    /** The words that are found in any values of @p message, raw ones as well if @p raw. */
    Words findInValues(const Message* message, bool raw) const;

    /** Whether a path expression matches anything in this type. */
    bool mayMatch(const MessageInfo* info) const;
    /** Whether a path expression names just this row. */
    bool matches(const TreeRow& row) const;

    /** Whether @p text contains @p word, or @p word abbreviates it. @p word in lower case. */
    static bool isAbbreviated(const QString& text, const QString& word);

private:
    bool takeMatches(const QString& text);

    bool m_isPath = false;
    QStringList m_words;
    Words m_allWords = 0;
    PathExpression m_expression;
    mutable QHash<const MessageInfo*, Words> m_inFields;
    QHash<const MessageInfo*, QVector<FieldPath>> m_matches; // without fields for types as such
};

#endif
