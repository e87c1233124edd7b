#include "valuetext.h"

#include <QLocale>

#include <cmath>

static int endOfDigits(const QString& text, int place)
{
    while (place < text.size() && text.at(place) >= QLatin1Char('0') && text.at(place) <= QLatin1Char('9'))
        ++place;
    return place;
}

// Where a decimal number ends that the text begins with; 0 where there is none.
static int endOfNumber(const QString& text)
{
    const int start = text.startsWith(QLatin1Char('-')) || text.startsWith(QLatin1Char('+')) ? 1 : 0;
    int end = endOfDigits(text, start);
    if (end == start)
        return 0;
    if (end < text.size() && text.at(end) == QLatin1Char('.'))
        end = endOfDigits(text, end + 1);
    if (end < text.size() && text.at(end).toLower() == QLatin1Char('e')) {
        const bool hasSign = end + 1 < text.size() && QStringLiteral("+-").contains(text.at(end + 1));
        const int first = end + (hasSign ? 2 : 1);
        if (endOfDigits(text, first) > first)
            end = endOfDigits(text, first);
    }
    return end;
}

ValueText ValueText::split(const QString& text)
{
    const int end = endOfNumber(text);
    const QString unit = text.mid(end);
    if (end == 0 || (!unit.isEmpty() && unit.at(0) != QLatin1Char(' ') && unit != QString(QChar(0xb0))))
        return {QString(), text};
    return {text.left(end), unit.trimmed()};
}

int ValueText::getIntegerSize() const
{
    const int start = number.startsWith(QLatin1Char('-')) || number.startsWith(QLatin1Char('+')) ? 1 : 0;
    return endOfDigits(number, start);
}

QString ValueText::bounded(const QString& text, int characters, int lines)
{
    QString shown = text.left(characters);
    auto end = shown.indexOf(QLatin1Char('\n'));
    for (int line = 1; end >= 0 && line < lines; ++line)
        end = shown.indexOf(QLatin1Char('\n'), end + 1);
    if (end >= 0)
        shown.truncate(end);
    return shown.size() < text.size() ? shown + QChar(0x2026) : text;
}

QString ValueText::rounded(const QString& number, int digits, int decimals)
{
    const bool hasFraction =
        number.contains(QLatin1Char('.')) || number.contains(QLatin1Char('e'), Qt::CaseInsensitive);
    bool isNumber = false;
    const double value = QLocale::c().toDouble(number, &isNumber);
    if (digits <= 0 || !hasFraction || !isNumber || value == 0 || !std::isfinite(value))
        return number;
    const int exponent = int(std::floor(std::log10(std::fabs(value))));
    const bool isLong = exponent < -digits || exponent > 15;
    const QString text = isLong ? QString::number(value, 'e', digits - 1)
                                : QString::number(value, 'f', qMax(decimals, digits - 1 - exponent));
    return text.size() <= number.size() ? text : number;
}
