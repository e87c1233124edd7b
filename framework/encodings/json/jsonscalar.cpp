#include "jsonscalar.h"

#include "utf8text.h"

#include <QCoreApplication>

#include <charconv>
#include <limits>
#include <string>

namespace
{

// So many digits are always told apart by a double.
const std::size_t SurelyExactDigits = 15;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::size_t countDigits(std::string_view text)
{
    std::size_t count = 0;
    while (count < text.size() && isDigit(text[count]))
        ++count;
    return count;
}

/** The digits of a number from the first to the last that is not zero, and where the point is. */
struct Digits
{
    explicit Digits(std::string_view text)
    {
        qint64 place = 0;
        bool isBehindPoint = false;
        std::size_t i = text.front() == '-' ? 1 : 0;
        for (; i < text.size() && text[i] != 'e' && text[i] != 'E'; ++i) {
            if (text[i] == '.') {
                isBehindPoint = true;
                continue;
            }
            if (!digits.empty() || text[i] != '0')
                digits.push_back(text[i]);
            place += isBehindPoint ? -1 : 0;
        }
        for (; !digits.empty() && digits.back() == '0'; ++place)
            digits.pop_back();
        qint64 power = 0;
        if (i < text.size()) {
            i += text[i + 1] == '+' ? 2 : 1;
            if (std::from_chars(text.data() + i, text.data() + text.size(), power).ec != std::errc())
                power = std::numeric_limits<qint32>::max();
        }
        exponent = digits.empty() ? 0 : place + power;
    }

    bool operator==(const Digits& other) const { return digits == other.digits && exponent == other.exponent; }

    std::string digits;
    qint64 exponent; // of the last of them
};

FieldValue toReal(std::string_view text)
{
    double value = 0;
    const std::from_chars_result read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc() && text.size() <= SurelyExactDigits && text.find_first_of("eE") == text.npos)
        return FieldValue::fromDouble(value);
    const Digits given(text);
    if (read.ec == std::errc::result_out_of_range) {
        const bool isGreat = given.exponent + qint64(given.digits.size()) > 0;
        value = isGreat ? std::numeric_limits<double>::infinity() : 0;
        value = text.front() == '-' ? -value : value;
    } else {
        bool isExact = given.digits.empty();
        // The least numbers have fewer digits.
        if (given.digits.size() <= SurelyExactDigits && (value > 1e-300 || value < -1e-300))
            isExact = true;
        if (!isExact) {
            char shortest[32];
            const std::to_chars_result written = std::to_chars(shortest, shortest + sizeof(shortest), value);
            isExact = Digits(std::string_view(shortest, std::size_t(written.ptr - shortest))) == given;
        }
        if (isExact)
            return FieldValue::fromDouble(value);
    }
    return FieldValue::fromDecimal(QString::fromLatin1(text.data(), int(text.size())), value);
}

int hexDigit(char character)
{
    if (isDigit(character))
        return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/** The number of an escape "\u1234" that begins there; negative when there is none. */
int codeUnit(std::string_view text)
{
    if (text.size() < 6 || text[0] != '\\' || text[1] != 'u')
        return -1;
    int unit = 0;
    for (std::size_t i = 2; i < 6; ++i) {
        const int digit = hexDigit(text[i]);
        if (digit < 0)
            return -1;
        unit = unit * 16 + digit;
    }
    return unit;
}

/** What a character stands for behind a backslash; 0 for nothing. */
char meaningOf(char name)
{
    switch (name) {
    case '"':
    case '\\':
    case '/':
        return name;
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return 0;
    }
}

} // namespace

bool JsonScalar::isNumber(std::string_view text)
{
    if (!text.empty() && text.front() == '-')
        text.remove_prefix(1);
    const std::size_t whole = countDigits(text);
    if (whole == 0 || (whole > 1 && text.front() == '0'))
        return false;
    text.remove_prefix(whole);
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        const std::size_t digits = countDigits(text);
        if (digits == 0)
            return false;
        text.remove_prefix(digits);
    }
    if (!text.empty() && (text.front() == 'e' || text.front() == 'E')) {
        text.remove_prefix(1);
        if (!text.empty() && (text.front() == '+' || text.front() == '-'))
            text.remove_prefix(1);
        const std::size_t digits = countDigits(text);
        if (digits == 0)
            return false;
        text.remove_prefix(digits);
    }
    return text.empty();
}

bool JsonScalar::isNoFiniteNumber(std::string_view text)
{
    return text == "NaN" || text == "Infinity" || text == "-Infinity";
}

bool JsonScalar::hasOnlyPlainEscapes(std::string_view text)
{
    for (std::size_t place = text.find('\\'); place != text.npos; place = text.find('\\', place)) {
        const int unit = codeUnit(text.substr(place));
        if (unit >= 0 && QChar(static_cast<char16_t>(unit)).isSurrogate())
            return false;
        if (unit < 0 && (place + 1 == text.size() || !meaningOf(text[place + 1])))
            return false;
        place += unit >= 0 ? 6 : 2;
    }
    return true;
}

FieldValue JsonScalar::toNumber(std::string_view text)
{
    const char* const end = text.data() + text.size();
    if (text == "NaN")
        return FieldValue::fromDouble(std::numeric_limits<double>::quiet_NaN());
    if (isNoFiniteNumber(text))
        return FieldValue::fromDouble(text.front() == '-' ? -std::numeric_limits<double>::infinity()
                                                          : std::numeric_limits<double>::infinity());
    qint64 number = 0;
    const std::from_chars_result read = std::from_chars(text.data(), end, number);
    if (read.ptr != end)
        return toReal(text);
    if (read.ec == std::errc())
        return text == "-0" ? FieldValue::fromDouble(-0.0) : FieldValue::fromSigned(number);
    quint64 great = 0;
    if (std::from_chars(text.data(), end, great).ec == std::errc() && text.front() != '-')
        return FieldValue::fromUnsigned(great);
    double nearest = 0;
    if (std::from_chars(text.data(), end, nearest).ec != std::errc())
        nearest = std::numeric_limits<double>::infinity() * (text.front() == '-' ? -1 : 1);
    return FieldValue::fromDecimal(QString::fromLatin1(text.data(), int(text.size())), nearest);
}

QString JsonScalar::decode(std::string_view text, QString* problem)
{
    QString decoded;
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find('\\'), text.size());
        decoded += Utf8Text::decode(text.data(), static_cast<int>(plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        const int unit = codeUnit(text);
        if (unit >= 0) {
            const QChar character(static_cast<char16_t>(unit));
            const int low = character.isHighSurrogate() ? codeUnit(text.substr(6)) : -1;
            const bool isPair = low >= 0 && QChar(static_cast<char16_t>(low)).isLowSurrogate();
            const bool isHalf = character.isSurrogate() && !isPair;
            if (isHalf && problem)
                *problem = QCoreApplication::translate("JsonCheck", "half of a surrogate pair, shown as U+FFFD: %1")
                               .arg(QString::fromLatin1(text.data(), 6));
            decoded += isHalf ? QChar(QChar::ReplacementCharacter) : character;
            if (isPair)
                decoded += QChar(static_cast<char16_t>(low));
            text.remove_prefix(isPair ? 12 : 6);
            continue;
        }
        const char name = text.size() > 1 ? text[1] : '\0';
        if (const char meaning = meaningOf(name)) {
            decoded += QLatin1Char(meaning);
            text.remove_prefix(2);
            continue;
        }
        if (problem)
            *problem = QCoreApplication::translate("JsonCheck", "no escape of JSON, shown as it is: \\%1")
                           .arg(QLatin1Char(name >= ' ' && name <= '~' ? name : '?'));
        decoded += QLatin1Char('\\');
        text.remove_prefix(1);
    }
    return decoded;
}
