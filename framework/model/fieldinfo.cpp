#include "fieldinfo.h"

#include "corvel.h"
#include "message.h"
#include "messageinfo.h"
#include "numbertext.h"
#include "utf8text.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QStringList>

#include <cmath>

// By TimeUnit.
static const qint64 countsPerSecond[] = {1, 1, 1000, 1000000, 1000000000};

static quint64 bitsOf(const FieldType& type)
{
    const int size = type.getSize();
    return size > 0 && size < 8 ? (quint64(1) << (8 * size)) - 1 : ~quint64(0);
}

// Beyond its width a number has nothing or, when it is negative, its sign.
static bool fits(quint64 number, quint64 width)
{
    const quint64 beyond = number & ~width;
    return beyond == 0 || (beyond == ~width && (number & (width / 2 + 1)) != 0);
}

FieldInfo::FieldInfo(const QString& name, const FieldType& type)
    : m_name(name)
    , m_type(type)
    , m_role(UnspecifiedRole)
    , m_virtual(false)
    , m_confidential(false)
    , m_optional(false)
    , m_repeated(false)
    , m_string(false)
    , m_bitmask(false)
    , m_outerMessageInfo(nullptr)
    , m_parent(nullptr)
    , m_scaleFactor(1)
    , m_decimals(-1)
    , m_timeUnit(NoTimeUnit)
    , m_timeOrSinceStart(false)
{
}

FieldInfo::~FieldInfo()
{
    for (int i = 0; i < m_subFields.size(); ++i)
        delete m_subFields.at(i);
}

bool FieldInfo::isPresentIn(const Message* message) const
{
    return getValueCount(message) > 0;
}

QVector<FieldValue> FieldInfo::getValues(const Message* message) const
{
    const unsigned int count = getValueCount(message);
    QVector<FieldValue> values;
    values.reserve(static_cast<int>(count));
    for (unsigned int i = 0; i < count; ++i)
        values.append(getValue(message, i));
    return values;
}

QString FieldInfo::getStringValue(const Message* message) const
{
    const unsigned int count = getValueCount(message);
    QByteArray characters;
    for (unsigned int i = 0; i < count; ++i) {
        const char character = static_cast<char>(getValue(message, i).toUnsigned());
        if (!character)
            break;
        characters.append(character);
    }
    return Utf8Text::decode(characters);
}

bool FieldInfo::occursIn(const MessageInfo* info) const
{
    return info && (m_messageInfos.contains(info) || info == m_outerMessageInfo);
}

void FieldInfo::describeAs(const FieldInfo& other)
{
    m_type = other.m_type;
    m_role = other.m_role;
    m_virtual = other.m_virtual;
    m_confidential = other.m_confidential;
    m_optional = other.m_optional;
    m_repeated = other.m_repeated;
    m_string = other.m_string;
    m_bitmask = other.m_bitmask;
    m_description = other.m_description;
    m_unit = other.m_unit;
    m_rangeText = other.m_rangeText;
    m_enumerators = other.m_enumerators;
    m_scaleFactor = other.m_scaleFactor;
    m_decimals = other.m_decimals;
    m_invalidValue = other.m_invalidValue;
    m_timeUnit = other.m_timeUnit;
    m_timeOrSinceStart = other.m_timeOrSinceStart;
}

void FieldInfo::addSubField(FieldInfo* field)
{
    field->m_parent = this;
    m_subFields.append(field);
}

void FieldInfo::enterMessageInfo(const MessageInfo* info)
{
    m_messageInfos.append(info);
    for (int i = 0; i < m_subFields.size(); ++i)
        const_cast<FieldInfo*>(m_subFields.at(i))->enterMessageInfo(info); // owned, and not yet shown to anyone
}

void FieldInfo::setEnumerators(const QVector<Enumerator>& enumerators, bool bitmask)
{
    m_enumerators.clear();
    for (int i = 0; i < enumerators.size(); ++i)
        if (!bitmask || fits(enumerators.at(i).value, bitsOf(m_type)))
            m_enumerators.append(enumerators.at(i));
    m_bitmask = bitmask;
}

void FieldInfo::setScale(double factor, int decimals)
{
    m_scaleFactor = factor;
    m_decimals = decimals;
}

void FieldInfo::setTimeUnit(TimeUnit unit, bool orSinceStart)
{
    m_timeUnit = unit;
    m_timeOrSinceStart = orSinceStart;
}

bool FieldInfo::isTimeOfDay(const FieldValue& value) const
{
    const qint64 leastSeconds = 1000000000;
    return !m_timeOrSinceStart || value.toSigned() / countsPerSecond[m_timeUnit] >= leastSeconds;
}

// An invalid value of a definition is a number that may be written in another type than the field's.
bool FieldInfo::means(const FieldValue& value, const FieldValue& other) const
{
    if (!other.isValid() || !value.isNumber())
        return false;
    if (value.isInteger() && other.isInteger())
        return value.toUnsigned() == other.toUnsigned();
    const double left = value.toDouble();
    const double right = other.toDouble();
    return left == right || (std::isnan(left) && std::isnan(right));
}

QString FieldInfo::textOfFlags(quint64 flags) const
{
    // A mask that is transmitted as a signed number must not show its sign in bits that it does not have.
    const quint64 width = bitsOf(m_type);
    flags &= width;
    QStringList names;
    quint64 rest = flags;
    for (int i = 0; i < m_enumerators.size(); ++i) {
        const quint64 flag = m_enumerators.at(i).value & width;
        if (flag == 0 ? flags == 0 : (flags & flag) == flag) {
            names.append(m_enumerators.at(i).name);
            rest &= ~flag;
        }
    }
    if (rest != 0)
        names.append(QLatin1String("0x") + QString::number(rest, 16));
    return names.isEmpty() ? QString(QLatin1Char('0')) : names.join(QLatin1String(" | "));
}

QString FieldInfo::textOfEnumerator(const FieldValue& value) const
{
    const QString number = value.toString(false, -1, FieldValue::PlainRepresentation, false);
    for (int i = 0; i < m_enumerators.size(); ++i) {
        const quint64 bits = m_enumerators.at(i).value;
        const FieldValue named =
            value.toDouble() < 0 ? FieldValue::fromSigned(static_cast<qint64>(bits)) : FieldValue::fromUnsigned(bits);
        if (means(value, named))
            return m_enumerators.at(i).name + QLatin1String(" (") + number + QLatin1Char(')');
    }
    return number;
}

// Empty for what is no time of the years 1 to 9999.
QString FieldInfo::textOfTime(const FieldValue& value) const
{
    static const int digitsOfUnit[] = {0, 0, 3, 6, 9};
    static const qint64 beginOfYear1 = -Q_INT64_C(62135596800);
    static const qint64 endOfYear9999 = Q_INT64_C(253402300799);
    const qint64 divisor = countsPerSecond[m_timeUnit];
    qint64 seconds;
    qint64 rest;
    if (value.toDouble() < 0) {
        seconds = value.toSigned() / divisor;
        rest = value.toSigned() % divisor;
        if (rest < 0) {
            rest += divisor;
            --seconds;
        }
    } else {
        const quint64 count = value.toUnsigned();
        seconds = static_cast<qint64>(qMin(count / divisor, static_cast<quint64>(endOfYear9999 + 1)));
        rest = static_cast<qint64>(count % divisor);
    }
    if (std::isnan(value.toDouble()) || seconds < beginOfYear1 || seconds > endOfYear9999)
        return QString();
    const QDateTime time = QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC).addSecs(seconds);
    QString text = time.toString(QLatin1String("yyyy-MM-ddThh:mm:ss"));
    if (const int digits = digitsOfUnit[m_timeUnit])
        text += QLatin1Char('.') + QString::number(rest).rightJustified(digits, QLatin1Char('0'));
    return text + QLatin1Char('Z');
}

static QString textOfBytes(const QByteArray& bytes)
{
    // Images and the like come as bytes as well: what a person looks at is their beginning and their length.
    const int greatestShown = 64;
    QString text = QString::fromLatin1(bytes.left(greatestShown).toHex().constData());
    if (bytes.size() > greatestShown)
        text += QChar(0x2026);
    if (!text.isEmpty())
        text += QLatin1Char(' ');
    return text + (bytes.size() == 1 ? QCoreApplication::translate("FieldInfo", "(1 byte)")
                                     : QCoreApplication::translate("FieldInfo", "(%1 bytes)").arg(bytes.size()));
}

static QString textOfNumber(const FieldValue& value)
{
    const FieldValue::Kind kind = value.getKind();
    const bool isReal =
        kind == FieldValue::FloatKind || kind == FieldValue::DoubleKind || kind == FieldValue::DecimalKind;
    const signed char decimals = isReal ? static_cast<signed char>(Corvel::floatingPointDecimals()) : -1;
    const double number = isReal ? std::fabs(value.toDouble()) : 0;
    // What would be rounded to zero says something else than zero.
    const bool vanishes = decimals >= 0 && number > 0 && number < 0.5 * std::pow(10.0, -decimals);
    return value.toString(false, decimals,
                          vanishes ? FieldValue::ScientificRepresentation : FieldValue::PlainRepresentation, false);
}

QString FieldInfo::getInterpretedString(const FieldValue& value, bool withUnit) const
{
    if (!value.isValid())
        return QString();
    if (means(value, m_invalidValue))
        return QCoreApplication::translate("FieldInfo", "not available");
    if (value.getKind() == FieldValue::BytesKind)
        return textOfBytes(value.toBytes());
    QString text;
    if (m_bitmask && value.isInteger())
        return textOfFlags(value.toUnsigned());
    if (!m_enumerators.isEmpty() && value.isNumber())
        return textOfEnumerator(value);
    if (m_timeUnit != NoTimeUnit && value.isNumber() && isTimeOfDay(value))
        text = textOfTime(value);
    if (!text.isEmpty())
        return text;
    // A count that is no time of our era is better shown as the number it is.
    if (value.isNumber() && m_decimals >= 0)
        text = NumberText::fixed(value.toDouble() * m_scaleFactor, m_decimals);
    else
        text = textOfNumber(value);
    if (withUnit && !m_unit.isEmpty()) {
        if (m_unit != QString(QChar(0xb0))) // the degree sign follows its number directly
            text += QLatin1Char(' ');
        text += m_unit;
    }
    return text;
}

QString FieldInfo::getRawString(const FieldValue& value) const
{
    if (value.getKind() == FieldValue::CharKind && !isStringField())
        return QString::number(value.toUnsigned());
    return value.toString(false, -1, FieldValue::PlainRepresentation, false);
}
