#ifndef CORVEL_FIELDVALUE_H
#define CORVEL_FIELDVALUE_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>

class Message;

/**
 * One value of a field in a message: a number, a character, a text, bytes or a sub-message.
 *
 * Three machine words; a copy costs no allocation. A default-constructed value is empty, which for every purpose is the
 * same as invalid(). A sub-message is not owned: it lives as long as the message that it was taken from.
 */
class CORVELFRAMEWORK_EXPORT FieldValue
{
public:
    /** How toString() writes a number. */
    enum RepresentationMode
    {
        PlainRepresentation = 0,       ///< decimal; the shortest text that reads back as the same value
        HexadecimalRepresentation = 1, ///< "0x" and as many digits as the type has; floating-point numbers stay decimal
        ScientificRepresentation = 2   ///< mantissa and exponent
    };

    /** What a value holds. */
    enum Kind
    {
        InvalidKind,
        SignedKind,
        UnsignedKind,
        FloatKind,
        DoubleKind,
        CharKind,
        BoolKind,
        TextKind,
        BytesKind,
        SubMessageKind,
        DecimalKind ///< a number with more digits than the others can have
    };

    /** An empty value. */
    FieldValue();
    FieldValue(const FieldValue& other);
    FieldValue& operator=(const FieldValue& other);
    ~FieldValue();

    /** The distinguished invalid value; its text is empty. */
    static FieldValue invalid();

    /** A signed integer that is transmitted in @p size bytes (1, 2, 4 or 8). */
    static FieldValue fromSigned(qint64 value, int size = 8);
    /** An unsigned integer that is transmitted in @p size bytes (1, 2, 4 or 8). */
    static FieldValue fromUnsigned(quint64 value, int size = 8);
    /** A number of single precision. */
    static FieldValue fromFloat(float value);
    /** A number of double precision. */
    static FieldValue fromDouble(double value);
    /**
     * A number that was transmitted as a text, with more digits than the other kinds tell: the text is what is shown.
     *
     * @param text     as JSON writes numbers
     * @param nearest  the nearest number of double precision, to compute with
     */
    static FieldValue fromDecimal(const QString& text, double nearest);
    /** One character; shown as the character itself when it is printable ASCII, else as its number. */
    static FieldValue fromChar(unsigned char value);
    static FieldValue fromBool(bool value);
    static FieldValue fromText(const QString& value);
    static FieldValue fromBytes(const QByteArray& value);
    /** A sub-message, which is borrowed; null gives an invalid value. */
    static FieldValue fromSubMessage(const Message* message);

    Kind getKind() const { return static_cast<Kind>(m_kind); }
    bool isValid() const { return m_kind != InvalidKind; }
    /** True for integers, floating-point numbers, characters and truth values. */
    bool isNumber() const;
    /** True for integers and characters. */
    bool isInteger() const;

    /** The value as a signed integer; floating-point numbers are cut and saturated, everything else gives 0. */
    qint64 toSigned() const;
    /** The value as an unsigned integer; negative numbers wrap as in C, everything that is no number gives 0. */
    quint64 toUnsigned() const;
    /** The value as a double; NaN for what is no number. Integers beyond 2^53 are rounded. */
    double toDouble() const;
    /** The text of a TextKind value, or of a DecimalKind; else empty. */
    QString toText() const;
    /** The bytes of a BytesKind value; else empty. */
    QByteArray toBytes() const;
    /** The sub-message, borrowed; null when there is none. */
    const Message* getSubMessage() const;

    /**
     * The value as text, without any knowledge of its field. NaN and infinities give "nan", "inf" and "-inf".
     *
     * @param showSign   writes "+" before positive numbers
     * @param precision  digits behind the point of a floating-point number; negative gives the shortest text that reads
     *                   back as the same value
     * @param mode       how numbers are written
     * @param grouped    separates thousands of decimal integers by a thin space
     */
    QString toString(bool showSign, signed char precision, RepresentationMode mode, bool grouped) const;

    /** Whether kind and value are the same; two NaNs of the same width are equal. */
    bool operator==(const FieldValue& other) const;
    bool operator!=(const FieldValue& other) const { return !(*this == other); }

private:
    struct Shared;

    unsigned char m_kind;
    unsigned char m_size; // bytes of the transmitted number, for hexadecimal text
    union
    {
        qint64 m_signed;
        quint64 m_unsigned;
        double m_double;
        const Message* m_message;
    };
    QExplicitlySharedDataPointer<Shared> m_shared; // texts, bytes and decimals only; null otherwise
};

#endif
