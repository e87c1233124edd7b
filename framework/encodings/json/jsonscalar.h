#ifndef JSONSCALAR_H
#define JSONSCALAR_H

#include "fieldvalue.h"

#include <QString>

#include <string_view>

/** Single values of JSON. */
namespace JsonScalar
{

inline bool isSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
}

/** Whether a text is a number as JSON writes it. */
bool isNumber(std::string_view text);
/** Whether it is one of the words NaN, Infinity and -Infinity. */
bool isNoFiniteNumber(std::string_view text);

/** Whether nothing can be wrong with the escapes in a string; what is a surrogate may be. */
bool hasOnlyPlainEscapes(std::string_view text);

/** A number, or one of these words, without losing a digit. */
FieldValue toNumber(std::string_view text);

/**
 * The text of a string without its quotes.
 *
 * @param problem  what is wrong with an escape, in words; null when nobody wants to know. Half of a surrogate pair
 *                 becomes U+FFFD, any other wrong escape stays as it is
 */
QString decode(std::string_view text, QString* problem = nullptr);

} // namespace JsonScalar

#endif
