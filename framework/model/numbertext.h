#ifndef NUMBERTEXT_H
#define NUMBERTEXT_H

#include <QString>

/** Texts of floating-point numbers that do not depend on the locale. NaN and infinities give "nan", "inf", "-inf". */
namespace NumberText
{

/** The shortest decimal text that reads back as the same single precision number; an exponent only where it is long. */
QString shortest(float value);

/** The shortest decimal text that reads back as the same double precision number. */
QString shortest(double value);

/** @p decimals digits behind the point; a negative zero loses its sign. */
QString fixed(double value, int decimals);

/** Mantissa and exponent, shortest when @p decimals is negative. */
QString scientific(double value, int decimals, bool singlePrecision);

} // namespace NumberText

#endif
