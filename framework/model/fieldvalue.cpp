#include "fieldvalue.h"

#include "message.h"
#include "messageinfo.h"
#include "numbertext.h"

#include <cmath>
#include <limits>

struct FieldValue::Shared : public QSharedData
{
    QString text;
    QByteArray bytes;
};

static bool isReal(unsigned char kind)
{
    return kind == FieldValue::FloatKind || kind == FieldValue::DoubleKind || kind == FieldValue::DecimalKind;
}

FieldValue::FieldValue()
    : m_kind(InvalidKind)
    , m_size(0)
    , m_unsigned(0)
{
}

FieldValue::FieldValue(const FieldValue& other)
    : m_kind(other.m_kind)
    , m_size(other.m_size)
    , m_unsigned(other.m_unsigned)
    , m_shared(other.m_shared)
{
}

FieldValue& FieldValue::operator=(const FieldValue& other)
{
    m_kind = other.m_kind;
    m_size = other.m_size;
    m_unsigned = other.m_unsigned;
    m_shared = other.m_shared;
    return *this;
}

FieldValue::~FieldValue() {}

FieldValue FieldValue::invalid()
{
    return FieldValue();
}

FieldValue FieldValue::fromSigned(qint64 value, int size)
{
    FieldValue result;
    result.m_kind = SignedKind;
    result.m_size = static_cast<unsigned char>(size);
    result.m_signed = value;
    return result;
}

FieldValue FieldValue::fromUnsigned(quint64 value, int size)
{
    FieldValue result;
    result.m_kind = UnsignedKind;
    result.m_size = static_cast<unsigned char>(size);
    result.m_unsigned = value;
    return result;
}

FieldValue FieldValue::fromFloat(float value)
{
    FieldValue result = fromDouble(static_cast<double>(value));
    result.m_kind = FloatKind;
    result.m_size = 4;
    return result;
}

FieldValue FieldValue::fromDouble(double value)
{
    FieldValue result;
    result.m_kind = DoubleKind;
    result.m_size = 8;
    result.m_double = value;
    return result;
}

FieldValue FieldValue::fromDecimal(const QString& text, double nearest)
{
    FieldValue result = fromDouble(nearest);
    result.m_kind = DecimalKind;
    result.m_shared = new Shared;
    result.m_shared->text = text;
    return result;
}

FieldValue FieldValue::fromChar(unsigned char value)
{
    FieldValue result = fromUnsigned(value, 1);
    result.m_kind = CharKind;
    return result;
}

FieldValue FieldValue::fromBool(bool value)
{
    FieldValue result = fromUnsigned(value ? 1 : 0, 1);
    result.m_kind = BoolKind;
    return result;
}

FieldValue FieldValue::fromText(const QString& value)
{
    FieldValue result;
    result.m_kind = TextKind;
    result.m_shared = new Shared;
    result.m_shared->text = value;
    return result;
}

FieldValue FieldValue::fromBytes(const QByteArray& value)
{
    FieldValue result;
    result.m_kind = BytesKind;
    result.m_shared = new Shared;
    result.m_shared->bytes = value;
    return result;
}

FieldValue FieldValue::fromSubMessage(const Message* message)
{
    FieldValue result;
    if (message) {
        result.m_kind = SubMessageKind;
        result.m_message = message;
    }
    return result;
}

bool FieldValue::isNumber() const
{
    return isInteger() || isReal(m_kind) || m_kind == BoolKind;
}

bool FieldValue::isInteger() const
{
    return m_kind == SignedKind || m_kind == UnsignedKind || m_kind == CharKind;
}

qint64 FieldValue::toSigned() const
{
    if (isReal(m_kind)) {
        if (std::isnan(m_double))
            return 0;
        if (m_double >= 9223372036854775808.0)
            return std::numeric_limits<qint64>::max();
        if (m_double < -9223372036854775808.0)
            return std::numeric_limits<qint64>::min();
        return static_cast<qint64>(m_double);
    }
    return isNumber() ? m_signed : 0;
}

quint64 FieldValue::toUnsigned() const
{
    if (isReal(m_kind) && m_double >= 9223372036854775808.0)
        return m_double >= 18446744073709551616.0 ? std::numeric_limits<quint64>::max()
                                                  : static_cast<quint64>(m_double);
    return static_cast<quint64>(toSigned());
}

double FieldValue::toDouble() const
{
    switch (m_kind) {
    case SignedKind:
        return static_cast<double>(m_signed);
    case UnsignedKind:
    case CharKind:
    case BoolKind:
        return static_cast<double>(m_unsigned);
    case FloatKind:
    case DoubleKind:
    case DecimalKind:
        return m_double;
    default:
        return std::numeric_limits<double>::quiet_NaN();
    }
}

QString FieldValue::toText() const
{
    return m_shared ? m_shared->text : QString();
}

QByteArray FieldValue::toBytes() const
{
    return m_shared ? m_shared->bytes : QByteArray();
}

const Message* FieldValue::getSubMessage() const
{
    return m_kind == SubMessageKind ? m_message : nullptr;
}

static QString groupedThousands(QString digits)
{
    const int first = digits.startsWith(QLatin1Char('-')) ? 1 : 0;
    for (int place = digits.size() - 3; place > first; place -= 3)
        digits.insert(place, QChar(0x2009));
    return digits;
}

static QString realText(double value, bool single, signed char precision, FieldValue::RepresentationMode mode)
{
    if (mode == FieldValue::ScientificRepresentation)
        return NumberText::scientific(value, precision, single);
    if (precision >= 0)
        return NumberText::fixed(value, precision);
    return single ? NumberText::shortest(static_cast<float>(value)) : NumberText::shortest(value);
}

QString FieldValue::toString(bool showSign, signed char precision, RepresentationMode mode, bool grouped) const
{
    QString text;
    switch (m_kind) {
    case SignedKind:
    case UnsignedKind:
    case CharKind:
        if (m_kind == CharKind && mode == PlainRepresentation) {
            if (m_unsigned >= 0x20 && m_unsigned < 0x7f)
                return QString(QLatin1Char(static_cast<char>(m_unsigned)));
            return QString::number(m_unsigned);
        }
        if (mode == HexadecimalRepresentation) {
            const int digits = 2 * m_size;
            const quint64 mask = m_size >= 8 ? ~quint64(0) : (quint64(1) << (8 * m_size)) - 1;
            return QLatin1String("0x") +
                   QString::number(m_unsigned & mask, 16).rightJustified(digits, QLatin1Char('0'));
        }
        if (mode == ScientificRepresentation)
            text = NumberText::scientific(toDouble(), precision, false);
        else {
            text = m_kind == SignedKind ? QString::number(m_signed) : QString::number(m_unsigned);
            if (grouped)
                text = groupedThousands(text);
        }
        if (showSign && toDouble() > 0)
            text.prepend(QLatin1Char('+'));
        return text;
    case DecimalKind:
        if ((precision < 0 && mode != ScientificRepresentation) || !std::isfinite(m_double))
            return showSign && m_double > 0 ? QLatin1Char('+') + toText() : toText();
        text = realText(m_double, false, precision, mode);
        if (showSign && m_double > 0)
            text.prepend(QLatin1Char('+'));
        return text;
    case FloatKind:
    case DoubleKind:
        text = realText(m_double, m_kind == FloatKind, precision, mode);
        if (showSign && m_double > 0)
            text.prepend(QLatin1Char('+'));
        return text;
    case BoolKind:
        return QLatin1String(m_unsigned ? "true" : "false");
    case TextKind:
        return toText();
    case BytesKind:
        return QString::fromLatin1(toBytes().toHex().constData());
    case SubMessageKind:
        return m_message->getInfo()->getName();
    default:
        return QString();
    }
}

bool FieldValue::operator==(const FieldValue& other) const
{
    if (m_kind != other.m_kind)
        return false;
    switch (m_kind) {
    case InvalidKind:
        return true;
    case FloatKind:
    case DoubleKind:
        return m_double == other.m_double || (std::isnan(m_double) && std::isnan(other.m_double));
    case TextKind:
    case DecimalKind:
        return toText() == other.toText();
    case BytesKind:
        return toBytes() == other.toBytes();
    case SubMessageKind:
        return m_message == other.m_message;
    default:
        return m_unsigned == other.m_unsigned;
    }
}
