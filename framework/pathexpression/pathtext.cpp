#include "pathtext.h"

#include <QCoreApplication>

static const QLatin1Char separator('/');
static const QLatin1Char wildCard('*');
static const QLatin1Char escapeMark('\\');
static const QLatin1Char ordinalMark('#');
static const QLatin1Char indexBegin('[');
static const QLatin1Char indexEnd(']');
static const QLatin1Char emptyMark('0'); // behind the escape mark

static bool isSpecial(QChar character)
{
    return character == separator || character == wildCard || character == escapeMark || character == ordinalMark ||
           character == indexBegin || character == indexEnd;
}

/** The first place from @p from on of @p wanted without an escape mark, or -1. */
static int findUnescaped(const QString& text, QChar wanted, int from = 0)
{
    for (int i = from; i < text.size(); ++i) {
        if (text.at(i) == escapeMark)
            ++i;
        else if (text.at(i) == wanted)
            return i;
    }
    return -1;
}

/** Where the bracketed index that ends @p text begins, or -1. An empty pair of brackets is none. */
static int findTrailingIndex(const QString& text)
{
    int begin = -1;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == escapeMark)
            ++i;
        else if (text.at(i) == indexBegin)
            begin = i;
        else if (text.at(i) == indexEnd && i + 1 == text.size() && begin >= 0 && begin + 1 < i)
            return begin;
    }
    return -1;
}

PathSegment::PathSegment()
    : kind(Open)
    , ordinal(0)
    , index(NoIndex)
{
}

PathPattern::PathPattern()
    : hasIndexPart(false)
    , levels(0)
    , errorPosition(-1)
{
}

QString PathText::escape(const QString& name)
{
    if (name.isEmpty())
        return QString(escapeMark) + emptyMark;
    int special = 0;
    for (int i = 0; i < name.size(); ++i)
        special += isSpecial(name.at(i));
    if (!special)
        return name;
    QString text;
    text.reserve(name.size() + special);
    for (int i = 0; i < name.size(); ++i) {
        if (isSpecial(name.at(i)))
            text += escapeMark;
        text += name.at(i);
    }
    return text;
}

QString PathText::typeName(const QString& name)
{
    return QString(name).replace(separator, QLatin1Char('.'));
}

int PathText::split(const QString& text, int parts, QString* texts)
{
    int lastNamed = -1;
    for (int part = Format; part < PartCount; ++part) {
        if (!(parts & (1 << part)))
            continue;
        texts[part].clear();
        if (part != Index)
            lastNamed = part;
    }
    if (lastNamed < 0) {
        if (!(parts & (1 << Index)))
            return -1;
        texts[Index] = text;
        return Index;
    }
    int begin = 0;
    for (int part = Format; part < lastNamed; ++part) {
        if (!(parts & (1 << part)))
            continue;
        const int end = findUnescaped(text, separator, begin);
        if (end < 0) {
            texts[part] = text.mid(begin);
            return part;
        }
        texts[part] = text.mid(begin, end - begin);
        begin = end + 1;
    }
    texts[lastNamed] = text.mid(begin);
    const int index = (parts & (1 << Index)) ? findTrailingIndex(texts[lastNamed]) : -1;
    if (index < 0)
        return lastNamed;
    texts[Index] = texts[lastNamed].mid(index + 1);
    texts[Index].chop(1);
    texts[lastNamed].truncate(index);
    return Index;
}

QString PathText::join(const QString* texts, int parts)
{
    const bool hasIndex = (parts & (1 << Index)) && !texts[Index].isEmpty();
    int last = -1;
    for (int part = Format; part <= Field; ++part)
        if ((parts & (1 << part)) && (hasIndex || !texts[part].isEmpty()))
            last = part;
    if (last < 0)
        return (parts & (1 << Index)) ? texts[Index] : QString();
    QString text;
    bool first = true;
    for (int part = Format; part <= last; ++part) {
        if (!(parts & (1 << part)))
            continue;
        if (!first)
            text += separator;
        text += texts[part];
        first = false;
    }
    if (hasIndex)
        text += indexBegin + texts[Index] + indexEnd;
    return text;
}

namespace
{

/** Reads one level of a path. */
class SegmentParser
{
public:
    /**
     * @param typed  whether the text may end early, and its name be a prefix
     * @param field  whether an index may stand behind the name
     */
    SegmentParser(const QString& text, int begin, int end, bool typed, bool field)
        : m_text(text)
        , m_at(begin)
        , m_end(end)
        , m_typed(typed)
        , m_field(field)
        , m_hasName(false)
        , m_finished(false)
    {
    }

    PathSegment parse();
    const QString& error() const { return m_error; }
    int errorPosition() const { return m_at; }

private:
    bool atEnd() const { return m_at >= m_end; }
    bool fail(const QString& error)
    {
        m_error = error;
        return false;
    }
    bool parseCharacter();
    bool parseEscape();
    bool parseWildCard();
    bool parseOrdinal();
    bool parseIndex();

    const QString& m_text;
    int m_at;
    const int m_end;
    const bool m_typed;
    const bool m_field;
    bool m_hasName;  // also of the empty name
    bool m_finished; // nothing can be added to the name
    QString m_error;
    PathSegment m_segment;
};

PathSegment SegmentParser::parse()
{
    while (!atEnd() && parseCharacter()) {
    }
    if (m_segment.kind != PathSegment::Wild && m_hasName) {
        const bool prefix = m_typed && !m_finished;
        m_segment.kind = prefix ? PathSegment::Prefix : PathSegment::Name;
        if (prefix)
            m_segment.name = PathText::fold(m_segment.name);
    }
    return m_segment;
}

bool SegmentParser::parseCharacter()
{
    const QChar character = m_text.at(m_at);
    if (character == indexBegin)
        return parseIndex();
    if (character == separator)
        return fail(QCoreApplication::translate("PathExpression",
                                                "this part has one level only; a separator in a name is written \\/"));
    if (character == indexEnd)
        return fail(
            QCoreApplication::translate("PathExpression", "no bracket was opened; one in a name is written \\]"));
    if (character == ordinalMark && m_hasName && !m_segment.ordinal)
        return parseOrdinal();
    if (m_finished)
        return fail(m_field ? QCoreApplication::translate("PathExpression", "only an index can stand here")
                            : QCoreApplication::translate("PathExpression", "nothing can stand here"));
    if (character == escapeMark)
        return parseEscape();
    if (character == wildCard)
        return parseWildCard();
    if (character == ordinalMark)
        return fail(QCoreApplication::translate(
            "PathExpression", "the name before the # is missing; this character in a name is written \\#"));
    m_segment.name += character;
    m_hasName = true;
    ++m_at;
    return true;
}

bool SegmentParser::parseEscape()
{
    if (m_at + 1 >= m_end) {
        if (!m_typed)
            return fail(QCoreApplication::translate("PathExpression", "the character behind the \\ is missing"));
        m_at = m_end;
        return true;
    }
    const QChar character = m_text.at(m_at + 1);
    if (character == emptyMark && !m_hasName)
        m_finished = true;
    else if (isSpecial(character))
        m_segment.name += character;
    else
        return fail(QCoreApplication::translate(
            "PathExpression", "only / * # [ ] and \\ can stand behind a \\, or 0 alone for an empty name"));
    m_hasName = true;
    m_at += 2;
    return true;
}

bool SegmentParser::parseWildCard()
{
    if (m_hasName)
        return fail(QCoreApplication::translate("PathExpression",
                                                "the wildcard stands alone; a star in a name is written \\*"));
    m_segment.kind = PathSegment::Wild;
    m_finished = true;
    ++m_at;
    return true;
}

bool SegmentParser::parseOrdinal()
{
    int end = m_at + 1;
    while (end < m_end && m_text.at(end) >= QLatin1Char('0') && m_text.at(end) <= QLatin1Char('9'))
        ++end;
    bool ok = true;
    if (end > m_at + 1 || !m_typed || end < m_end)
        m_segment.ordinal = m_text.mid(m_at + 1, end - m_at - 1).toInt(&ok);
    else
        m_finished = true;
    if (!ok || (!m_finished && m_segment.ordinal < 1))
        return fail(QCoreApplication::translate(
            "PathExpression", "a number from 1 must follow the #; this character in a name is written \\#"));
    m_finished = true;
    m_at = end;
    return true;
}

static bool readIndex(const QString& text, int* index)
{
    if (text == QString(wildCard)) {
        *index = PathSegment::AllIndexes;
        return true;
    }
    bool ok = !text.isEmpty();
    for (int i = 0; i < text.size(); ++i)
        ok = ok && text.at(i) >= QLatin1Char('0') && text.at(i) <= QLatin1Char('9');
    if (ok)
        *index = text.toInt(&ok);
    return ok;
}

bool SegmentParser::parseIndex()
{
    if (!m_field)
        return fail(QCoreApplication::translate("PathExpression",
                                                "only fields have an index; a bracket in a name is written \\["));
    const int close = m_text.indexOf(indexEnd, m_at);
    if (close < 0 || close >= m_end) {
        if (!m_typed)
            return fail(QCoreApplication::translate("PathExpression", "the ] is missing"));
        m_finished = true;
        m_at = m_end;
        return true;
    }
    if (!readIndex(m_text.mid(m_at + 1, close - m_at - 1), &m_segment.index))
        return fail(QCoreApplication::translate("PathExpression", "an index is a number or *"));
    m_finished = true;
    if (close + 1 < m_end) {
        m_at = close + 1;
        return fail(QCoreApplication::translate("PathExpression", "nothing can stand behind an index"));
    }
    m_at = m_end;
    return true;
}

/** Reads all parts. */
class PatternParser
{
public:
    PatternParser(const QString* texts, int typedParts)
        : m_texts(texts)
        , m_typedParts(typedParts)
    {
    }

    PathPattern parse();

private:
    PathSegment parseSegment(int part, int begin, int end);
    void parseFields();
    void parseIndexPart();
    void fail(int part, int position, const QString& error);

    const QString* m_texts;
    const int m_typedParts;
    PathPattern m_pattern;
};

PathPattern PatternParser::parse()
{
    m_pattern.format = parseSegment(PathText::Format, 0, m_texts[PathText::Format].size());
    m_pattern.message = parseSegment(PathText::Message, 0, m_texts[PathText::Message].size());
    if (!m_texts[PathText::Field].isEmpty())
        parseFields();
    if (!m_texts[PathText::Index].isEmpty())
        parseIndexPart();
    if (!m_pattern.fields.isEmpty())
        m_pattern.levels = 3;
    else if (!m_texts[PathText::Message].isEmpty())
        m_pattern.levels = 2;
    else if (!m_texts[PathText::Format].isEmpty())
        m_pattern.levels = 1;
    return m_pattern;
}

PathSegment PatternParser::parseSegment(int part, int begin, int end)
{
    const bool typed = (m_typedParts & (1 << part)) && end == m_texts[part].size();
    SegmentParser parser(m_texts[part], begin, end, typed, part == PathText::Field);
    const PathSegment segment = parser.parse();
    if (!parser.error().isEmpty())
        fail(part, parser.errorPosition(), parser.error());
    return segment;
}

void PatternParser::parseFields()
{
    const QString& text = m_texts[PathText::Field];
    int begin = 0;
    while (begin >= 0) {
        if (m_pattern.fields.size() == PathText::maximumFieldLevels) {
            fail(PathText::Field, begin, QCoreApplication::translate("PathExpression", "the path has too many levels"));
            return;
        }
        const int end = findUnescaped(text, separator, begin);
        m_pattern.fields.append(parseSegment(PathText::Field, begin, end < 0 ? text.size() : end));
        begin = end < 0 ? -1 : end + 1;
    }
}

void PatternParser::parseIndexPart()
{
    if (m_pattern.fields.isEmpty())
        m_pattern.fields.append(PathSegment());
    PathSegment& last = m_pattern.fields.last();
    if (last.index != PathSegment::NoIndex)
        fail(PathText::Index, -1, QCoreApplication::translate("PathExpression", "nothing can stand behind an index"));
    else if (!readIndex(m_texts[PathText::Index], &last.index))
        fail(PathText::Index, 0, QCoreApplication::translate("PathExpression", "an index is a number or *"));
    m_pattern.hasIndexPart = true;
}

void PatternParser::fail(int part, int position, const QString& error)
{
    if (m_pattern.errorPosition >= 0)
        return;
    for (int before = PathText::Format; before < part; ++before)
        position += m_texts[before].size() + 1; // a separator, or the bracket before the index
    m_pattern.errorPosition = position;
    m_pattern.error = error;
}

} // namespace

PathPattern PathText::parse(const QString* texts, int typedParts)
{
    return PatternParser(texts, typedParts).parse();
}
