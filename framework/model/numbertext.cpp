#include "numbertext.h"

#include <QByteArray>

#include <cmath>
#include <cstring>

#if __cplusplus >= 201703L
#include <charconv>
#endif

namespace
{

// Numbers from 1e-5 to below 1e16 are written without an exponent.
const int LeastPlainExponent = -5;
const int GreatestPlainExponent = 15;

QString specialText(double value)
{
    if (std::isnan(value))
        return QLatin1String("nan");
    return QLatin1String(value < 0 ? "-inf" : "inf");
}

// "d.ddde[+-]xx" with the fewest digits that read back as the same number.
template <typename Real>
QByteArray shortestScientific(Real value)
{
#if __cplusplus >= 201703L
    char buffer[48];
    const std::to_chars_result end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    return QByteArray(buffer, static_cast<int>(end.ptr - buffer));
#else
    const int most = sizeof(Real) == sizeof(float) ? 8 : 16;
    for (int decimals = 0; decimals < most; ++decimals) {
        const QByteArray text = QByteArray::number(static_cast<double>(value), 'e', decimals);
        if (static_cast<Real>(text.toDouble()) == value)
            return text;
    }
    return QByteArray::number(static_cast<double>(value), 'e', most);
#endif
}

template <typename Real>
QString shortestText(Real value)
{
    if (!std::isfinite(value))
        return specialText(static_cast<double>(value));
    if (value == 0)
        return QLatin1String(std::signbit(value) ? "-0" : "0");
    const QByteArray text = shortestScientific(value);
    const int mark = text.indexOf('e');
    const int exponent = text.mid(mark + 1).toInt();
    const bool negative = text.at(0) == '-';
    QByteArray digits = text.mid(negative ? 1 : 0, mark - (negative ? 1 : 0));
    if (digits.size() > 1)
        digits.remove(1, 1); // the point
    QByteArray result = negative ? "-" : "";
    if (exponent < LeastPlainExponent || exponent > GreatestPlainExponent) {
        result += digits.at(0);
        if (digits.size() > 1)
            result += '.' + digits.mid(1);
        result += 'e' + QByteArray::number(exponent);
    } else if (exponent < 0) {
        result += "0." + QByteArray(-exponent - 1, '0') + digits;
    } else if (digits.size() <= exponent + 1) {
        result += digits + QByteArray(exponent + 1 - digits.size(), '0');
    } else {
        result += digits.left(exponent + 1) + '.' + digits.mid(exponent + 1);
    }
    return QString::fromLatin1(result.constData(), result.size());
}

} // namespace

QString NumberText::shortest(float value)
{
    return shortestText(value);
}

QString NumberText::shortest(double value)
{
    return shortestText(value);
}

QString NumberText::fixed(double value, int decimals)
{
    if (!std::isfinite(value))
        return specialText(value);
    QString text = QString::number(value, 'f', decimals);
    if (text.startsWith(QLatin1Char('-')) && text.toDouble() == 0)
        text.remove(0, 1);
    return text;
}

QString NumberText::scientific(double value, int decimals, bool singlePrecision)
{
    if (!std::isfinite(value))
        return specialText(value);
    if (decimals >= 0)
        return QString::number(value, 'e', decimals);
    const QByteArray text = singlePrecision ? shortestScientific(static_cast<float>(value)) : shortestScientific(value);
    return QString::fromLatin1(text.constData(), text.size());
}
