#include "idlscanner.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cstring>

using Ros::TextPlace;

namespace
{

/** One of several texts. */
struct Block
{
    int begin;
    int end;
    TextPlace place;
    std::vector<QString> includes;
};

// Not QChar::isDigit(), which knows those of all scripts.
bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

bool isWordCharacter(QChar character)
{
    return (character.unicode() < 0x80 && character.isLetterOrNumber()) || character == QLatin1Char('_');
}

std::vector<Block> blocksOf(const QString& text, QHash<QString, int>* byName)
{
    static const QRegularExpression separator(
        QStringLiteral("^==+[ \\t\\r]*\\n(?:IDL|MSG|SRV): *(\\S+)[^\\n]*(?:\\n|$)"),
        QRegularExpression::MultilineOption);
    static const QRegularExpression include(
        QStringLiteral("^[ \\t]*#[ \\t]*include[ \\t]*[\"<]([^\">\\n]+)\\.idl[\">]"),
        QRegularExpression::MultilineOption);
    std::vector<Block> blocks{{0, static_cast<int>(text.size()), {1, 1}, {}}};
    int counted = 0;
    int line = 1;
    for (QRegularExpressionMatchIterator found = separator.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const int begin = static_cast<int>(match.capturedEnd());
        line += static_cast<int>(std::count(text.begin() + counted, text.begin() + begin, QLatin1Char('\n')));
        counted = begin;
        blocks.back().end = static_cast<int>(match.capturedStart());
        byName->insert(match.captured(1), static_cast<int>(blocks.size()));
        blocks.push_back({begin, static_cast<int>(text.size()), {line, 1}, {}});
    }
    for (Block& block : blocks) {
        const QString part = text.mid(block.begin, block.end - block.begin);
        for (QRegularExpressionMatchIterator found = include.globalMatch(part); found.hasNext();)
            block.includes.push_back(found.next().captured(1));
    }
    return blocks;
}

} // namespace

IdlScanner::IdlScanner(const QString& text, int begin, int end, const TextPlace& place)
    : m_text(text)
    , m_at(begin)
    , m_end(end)
    , m_place(place)
{
}

std::vector<IdlToken> IdlScanner::scan(const QString& text)
{
    QHash<QString, int> byName;
    const std::vector<Block> blocks = blocksOf(text, &byName);
    std::vector<IdlToken> tokens;
    std::vector<char> isSeen(blocks.size(), 0);
    // A block is done when its includes are; one by one, since chains of them can be long.
    for (std::size_t first = 0; first < blocks.size(); ++first) {
        std::vector<std::pair<std::size_t, std::size_t>> open; // with the next include
        if (!isSeen[first])
            open.emplace_back(first, 0);
        isSeen[first] = 1;
        while (!open.empty()) {
            const Block& block = blocks[open.back().first];
            if (open.back().second < block.includes.size()) {
                const int included = byName.value(block.includes[open.back().second++], -1);
                if (included >= 0 && !isSeen[static_cast<std::size_t>(included)]) {
                    isSeen[static_cast<std::size_t>(included)] = 1;
                    open.emplace_back(included, 0);
                }
                continue;
            }
            open.pop_back();
            IdlScanner scanner(text, block.begin, block.end, block.place);
            for (IdlToken token = scanner.next(); token.kind != IdlToken::End; token = scanner.next())
                tokens.push_back(token);
        }
    }
    const TextPlace end{
        blocks.back().place.line + static_cast<int>(text.mid(blocks.back().begin).count(QLatin1Char('\n'))), 1};
    tokens.push_back({IdlToken::End, QString(), end, false});
    return tokens;
}

void IdlScanner::advance(int count)
{
    for (; count > 0 && m_at < m_end; --count) {
        const bool isLineEnd = m_text.at(m_at++) == QLatin1Char('\n');
        m_place = isLineEnd ? TextPlace{m_place.line + 1, 1} : TextPlace{m_place.line, m_place.column + 1};
    }
}

void IdlScanner::skipBlanks()
{
    for (;;) {
        const bool isLineComment = peek() == QLatin1Char('/') && peek(1) == QLatin1Char('/');
        if (isLineComment || (peek() == QLatin1Char('#') && m_place.column == 1)) {
            while (m_at < m_end && peek() != QLatin1Char('\n'))
                advance(1);
        } else if (peek() == QLatin1Char('/') && peek(1) == QLatin1Char('*')) {
            const int close = static_cast<int>(m_text.indexOf(QLatin1String("*/"), m_at + 2));
            advance(close < 0 ? m_end : close + 2 - m_at);
        } else if (m_at < m_end && peek().isSpace()) {
            advance(1);
        } else {
            return;
        }
    }
}

IdlToken IdlScanner::next()
{
    const int before = m_at;
    skipBlanks();
    IdlToken token{IdlToken::End, QString(), m_place, m_at == before};
    if (m_at >= m_end)
        return token;
    if (peek() == QLatin1Char('L') && (peek(1) == QLatin1Char('"') || peek(1) == QLatin1Char('\'')))
        advance(1);
    const QChar first = peek();
    const int begin = m_at;
    if (first == QLatin1Char('"') || first == QLatin1Char('\'')) {
        token.kind = IdlToken::Text;
        token.text = takeText(first);
        return token;
    }
    if (isDigit(first) || (first == QLatin1Char('.') && isDigit(peek(1)))) {
        token.kind = IdlToken::Integer;
        const bool isHex = first == QLatin1Char('0') && peek(1).toLower() == QLatin1Char('x');
        while (isWordCharacter(peek()) || peek() == QLatin1Char('.')) {
            const bool isExponent = !isHex && peek().toLower() == QLatin1Char('e');
            if (isExponent || peek() == QLatin1Char('.'))
                token.kind = IdlToken::Real;
            advance(1);
            if (isExponent && (peek() == QLatin1Char('-') || peek() == QLatin1Char('+')))
                advance(1);
        }
    } else if (isWordCharacter(first)) {
        token.kind = IdlToken::Name;
        while (isWordCharacter(peek()))
            advance(1);
    } else {
        token.kind = IdlToken::Sign;
        advance(first == QLatin1Char(':') && peek(1) == QLatin1Char(':') ? 2 : 1);
    }
    token.text = m_text.mid(begin, m_at - begin);
    // What would else be a word of the language can be a name with a "_" before it.
    if (token.kind == IdlToken::Name && token.text.size() > 1 && first == QLatin1Char('_'))
        token.text.remove(0, 1);
    return token;
}

QString IdlScanner::takeText(QChar quote)
{
    const TextPlace begin = m_place;
    QString text;
    advance(1);
    while (m_at < m_end && peek() != quote) {
        const bool isEscaped = peek() == QLatin1Char('\\');
        text += isEscaped ? takeEscaped() : peek();
        if (!isEscaped)
            advance(1);
    }
    if (m_at >= m_end)
        throw Ros::Fault{begin, QCoreApplication::translate("RosSchema", "the text does not end")};
    advance(1);
    return text;
}

QChar IdlScanner::takeEscaped()
{
    advance(1);
    const QChar letter = peek();
    const char* const letters = "ntvbrfa";
    const char* const found =
        letter.unicode() > 0 && letter.unicode() < 0x80 ? std::strchr(letters, letter.toLatin1()) : nullptr;
    const bool isHex = letter == QLatin1Char('x') || letter == QLatin1Char('u');
    if (!isHex && !isDigit(letter)) {
        advance(1);
        return found ? QLatin1Char("\n\t\v\b\r\f\a"[found - letters]) : letter;
    }
    const int most = letter == QLatin1Char('u') ? 4 : isHex ? 2 : 3;
    const int base = isHex ? 16 : 8;
    advance(isHex ? 1 : 0);
    uint code = 0;
    for (int i = 0; i < most; ++i) {
        bool good = false;
        const uint digit = QString(peek()).toUInt(&good, base);
        if (!good)
            break;
        code = code * static_cast<uint>(base) + digit;
        advance(1);
    }
    return QChar(static_cast<ushort>(code));
}
