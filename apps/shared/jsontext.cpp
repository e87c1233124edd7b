#include "jsontext.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace
{

const char ReplacementCharacter[] = "\xEF\xBF\xBD";

// The number of bytes of the character that begins at bytes, or 0 when that is no UTF-8.
std::size_t characterSize(const unsigned char* bytes, std::size_t size)
{
    const unsigned char lead = bytes[0];
    if (lead < 0x80)
        return 1;
    // The second byte's range keeps out surrogates, what is too long for its character, and what is beyond U+10FFFF.
    std::size_t length = 0;
    unsigned char least = 0x80;
    unsigned char greatest = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        least = lead == 0xE0 ? 0xA0 : least;
        greatest = lead == 0xED ? 0x9F : greatest;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        least = lead == 0xF0 ? 0x90 : least;
        greatest = lead == 0xF4 ? 0x8F : greatest;
    } else {
        return 0;
    }
    if (size < length || bytes[1] < least || bytes[1] > greatest)
        return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (bytes[i] < 0x80 || bytes[i] > 0xBF)
            return 0;
    return length;
}

void appendControl(std::string* text, unsigned char character)
{
    static const char digits[] = "0123456789abcdef";
    switch (character) {
    case '\n':
        text->append("\\n");
        break;
    case '\r':
        text->append("\\r");
        break;
    case '\t':
        text->append("\\t");
        break;
    default:
        text->append("\\u00");
        text->push_back(digits[character >> 4]);
        text->push_back(digits[character & 15]);
    }
}

template <typename Number>
void appendWithToChars(std::string* text, Number number)
{
    char buffer[64];
    const std::to_chars_result result = std::to_chars(buffer, buffer + sizeof buffer, number);
    text->append(buffer, result.ptr);
}

template <typename Real>
void appendReal(std::string* text, Real number)
{
    if (!std::isfinite(number)) {
        text->append(std::isnan(number) ? "\"nan\"" : number < 0 ? "\"-inf\"" : "\"inf\"");
    } else if (std::fabs(number) < std::ldexp(Real(1), std::numeric_limits<Real>::digits)) {
        appendWithToChars(text, number);
    } else {
        // Of great numbers the library would write digits that they do not have.
        char buffer[64];
        text->append(buffer, std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::scientific).ptr);
    }
}

void appendPadded(std::string* text, std::int64_t number, int digits)
{
    char buffer[24];
    char* place = buffer + sizeof buffer;
    for (; digits > 0 || number > 0; --digits, number /= 10)
        *--place = static_cast<char>('0' + number % 10);
    text->append(place, buffer + sizeof buffer);
}

struct Date
{
    std::int64_t year;
    int month;
    int day;
};

// The proleptic Gregorian calendar, counted in cycles of 400 years that begin on the first of March.
Date dateOfDay(std::int64_t daysSince1970)
{
    const std::int64_t daysOfCycle = 146097;
    const std::int64_t days = daysSince1970 + 719468;
    const std::int64_t cycle = (days >= 0 ? days : days - daysOfCycle + 1) / daysOfCycle;
    const std::int64_t day = days - cycle * daysOfCycle;
    const std::int64_t year = (day - day / 1460 + day / 36524 - day / 146096) / 365;
    const std::int64_t dayOfYear = day - (365 * year + year / 4 - year / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    Date date;
    date.day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    date.month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    date.year = year + cycle * 400 + (date.month <= 2 ? 1 : 0);
    return date;
}

} // namespace

void JsonText::appendString(std::string* text, const char* bytes, std::size_t size)
{
    text->push_back('"');
    const unsigned char* const characters = reinterpret_cast<const unsigned char*>(bytes);
    for (std::size_t i = 0; i < size;) {
        const std::size_t length = characterSize(characters + i, size - i);
        if (length == 0) {
            text->append(ReplacementCharacter);
            ++i;
            continue;
        }
        if (characters[i] == '"' || characters[i] == '\\')
            text->push_back('\\');
        if (characters[i] < 0x20)
            appendControl(text, characters[i]);
        else
            text->append(bytes + i, length);
        i += length;
    }
    text->push_back('"');
}

void JsonText::appendString(std::string* text, const QByteArray& utf8)
{
    appendString(text, utf8.constData(), static_cast<std::size_t>(utf8.size()));
}

void JsonText::appendString(std::string* text, const QString& string)
{
    appendString(text, string.toUtf8());
}

std::string JsonText::toString(const QString& string)
{
    std::string text;
    appendString(&text, string);
    return text;
}

void JsonText::appendNumber(std::string* text, std::int64_t number)
{
    appendWithToChars(text, number);
}

void JsonText::appendNumber(std::string* text, std::uint64_t number)
{
    appendWithToChars(text, number);
}

void JsonText::appendNumber(std::string* text, float number)
{
    appendReal(text, number);
}

void JsonText::appendNumber(std::string* text, double number)
{
    appendReal(text, number);
}

void JsonText::appendTime(std::string* text, std::int64_t microseconds, int nanoseconds)
{
    const std::int64_t perSecond = 1000000;
    const std::int64_t perDay = 86400 * perSecond;
    std::int64_t day = microseconds / perDay;
    std::int64_t rest = microseconds % perDay;
    if (rest < 0) {
        rest += perDay;
        --day;
    }
    const Date date = dateOfDay(day);
    text->push_back('"');
    if (date.year < 0 || date.year > 9999)
        text->push_back(date.year < 0 ? '-' : '+');
    appendPadded(text, date.year < 0 ? -date.year : date.year, 4);
    text->push_back('-');
    appendPadded(text, date.month, 2);
    text->push_back('-');
    appendPadded(text, date.day, 2);
    text->push_back('T');
    appendPadded(text, rest / (3600 * perSecond), 2);
    text->push_back(':');
    appendPadded(text, rest / (60 * perSecond) % 60, 2);
    text->push_back(':');
    appendPadded(text, rest / perSecond % 60, 2);
    text->push_back('.');
    appendPadded(text, rest % perSecond, 6);
    if (nanoseconds >= 0)
        appendPadded(text, nanoseconds, 3);
    text->append("Z\"");
}
