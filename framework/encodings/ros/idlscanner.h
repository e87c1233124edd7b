#ifndef IDLSCANNER_H
#define IDLSCANNER_H

#include "rosschema.h"

#include <vector>

/** A word, a number, a text or a sign of an IDL text. */
struct IdlToken
{
    enum Kind
    {
        End,
        Name,
        Integer,
        Real,
        Text,
        Sign ///< one character, or "::"
    };

    bool is(const char* word) const { return (kind == Sign || kind == Name) && text == QLatin1String(word); }

    Kind kind;
    QString text; ///< of a text what is between its quotes, with what is escaped
    Ros::TextPlace place;
    bool isJoined; ///< whether nothing stands between it and the one before
};

/**
 * Takes IDL texts apart, several of them behind lines of "=" and "IDL: name", without comments and what is for a
 * preprocessor. One that includes another comes behind it, whatever order they are in.
 */
class IdlScanner
{
public:
    /** Throws Ros::Fault. */
    static std::vector<IdlToken> scan(const QString& text);

private:
    IdlScanner(const QString& text, int begin, int end, const Ros::TextPlace& place);

    QChar peek(int distance = 0) const { return m_at + distance < m_end ? m_text.at(m_at + distance) : QChar(); }
    void advance(int count);
    void skipBlanks();
    IdlToken next();
    QString takeText(QChar quote);
    QChar takeEscaped();

    const QString& m_text;
    int m_at;
    const int m_end;
    Ros::TextPlace m_place;
};

#endif
