#ifndef JSONTEXT_H
#define JSONTEXT_H

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>

/** Appends JSON values to a text that is used again and again, and therefore seldom allocates. */
namespace JsonText
{

/** A string with its quotes. Bytes that are not UTF-8 become U+FFFD. */
void appendString(std::string* text, const char* bytes, std::size_t size);
void appendString(std::string* text, const QByteArray& utf8);
void appendString(std::string* text, const QString& string);

/** A string with its quotes. */
std::string toString(const QString& string);

void appendNumber(std::string* text, std::int64_t number);
void appendNumber(std::string* text, std::uint64_t number);
/** The shortest number that reads back the same; the strings "nan", "inf" and "-inf" for what JSON has no numbers for.
 */
void appendNumber(std::string* text, float number);
void appendNumber(std::string* text, double number);

/**
 * The string "2014-05-29T17:46:52.123456Z"; years beyond 9999 get a sign, as ISO 8601 has it.
 *
 * @param nanoseconds  three more digits, 0 to 999; none when it is negative
 */
void appendTime(std::string* text, std::int64_t microsecondsSince1970, int nanoseconds = -1);

/** Appends the members of an object or the elements of an array with the commas between them. */
class Separator
{
public:
    explicit Separator(std::string* text)
        : m_text(text)
    {
    }

    void next()
    {
        if (m_any)
            m_text->push_back(',');
        m_any = true;
    }

private:
    std::string* m_text;
    bool m_any = false;
};

} // namespace JsonText

#endif
