#include "envelopetimes.h"

#include <charconv>

namespace
{

const int NanosecondDigits = 9;
const qint64 Nanoseconds = 1000 * 1000 * 1000;
const int LatestYear = 2261; // that nanoseconds reach

/** Takes numbers of fixed width out of a text, and notes when they are not there. */
class Digits
{
public:
    explicit Digits(std::string_view text)
        : m_text(text)
    {
    }

    int take(std::size_t count)
    {
        int number = 0;
        const char* const end = m_text.data() + count;
        m_good = m_good && m_text.size() >= count && m_text[0] != '-' &&
                 std::from_chars(m_text.data(), end, number).ptr == end;
        m_text.remove_prefix(m_good ? count : 0);
        return m_good ? number : 0;
    }

    bool takeOne(std::string_view characters)
    {
        const bool isThere = m_good && !m_text.empty() && characters.find(m_text[0]) != std::string_view::npos;
        if (isThere)
            m_text.remove_prefix(1);
        return isThere;
    }

    void expect(std::string_view characters) { m_good = takeOne(characters) && m_good; }

    /** Digits behind a point. */
    qint64 takeFraction()
    {
        qint64 fraction = 0;
        int digits = 0;
        for (; !m_text.empty() && m_text[0] >= '0' && m_text[0] <= '9'; m_text.remove_prefix(1))
            if (digits++ < NanosecondDigits)
                fraction = 10 * fraction + (m_text[0] - '0');
        m_good = m_good && digits > 0;
        for (; digits < NanosecondDigits; ++digits)
            fraction *= 10;
        return fraction;
    }

    char front() const { return m_text.empty() ? '\0' : m_text[0]; }
    bool isDone() const { return m_good && m_text.empty(); }

private:
    std::string_view m_text;
    bool m_good = true;
};

/** Days since 1970; years begin in March for this, so that the leap day is the last one. */
qint64 daysOf(int year, int month, int day)
{
    year -= month <= 2 ? 1 : 0;
    const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return qint64(year) * 365 + year / 4 - year / 100 + year / 400 + dayOfYear - 719468;
}

} // namespace

qint64 EnvelopeTimes::read(std::string_view text)
{
    Digits digits(text);
    const int year = digits.take(4);
    digits.expect("-");
    const int month = digits.take(2);
    digits.expect("-");
    const int day = digits.take(2);
    digits.expect("Tt ");
    const int hour = digits.take(2);
    digits.expect(":");
    const int minute = digits.take(2);
    digits.expect(":");
    const int second = digits.take(2);
    const qint64 fraction = digits.takeOne(".") ? digits.takeFraction() : 0;
    int offset = 0; // minutes east of Greenwich
    if (!digits.takeOne("Zz")) {
        const int sign = digits.front() == '-' ? -1 : 1;
        digits.expect("+-");
        const int hours = digits.take(2);
        digits.expect(":");
        offset = sign * (60 * hours + digits.take(2));
    }
    if (!digits.isDone() || year < 1970 || year > LatestYear || month < 1 || month > 12 || day < 1 || day > 31)
        return 0;
    const qint64 minutes = (daysOf(year, month, day) * 24 + hour) * 60 + minute - offset;
    const qint64 time = (minutes * 60 + second) * Nanoseconds + fraction;
    return qMax(qint64(0), time);
}

qint64 EnvelopeTimes::readNumber(std::string_view identifier)
{
    const std::size_t dash = identifier.find('-');
    if (dash == std::string_view::npos || dash == 0 || dash + 1 == identifier.size())
        return -1;
    qint64 number = -1;
    const char* const end = identifier.data() + identifier.size();
    const std::from_chars_result read = std::from_chars(identifier.data() + dash + 1, end, number);
    return read.ptr == end && read.ec == std::errc() && number >= 0 ? number : -1;
}
