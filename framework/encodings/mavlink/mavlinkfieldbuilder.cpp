#include "mavlinkfieldbuilder.h"

#include "flagfieldinfo.h"
#include "mavlinkdefinition.h"
#include "mavlinkfieldinfo.h"
#include "mavlinkunits.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <iterator>
#include <limits>

namespace
{

struct NamedNumber
{
    const char* name;
    quint64 value;
};

const NamedNumber limitNames[] = {
    {"INT8_MAX", std::numeric_limits<qint8>::max()},
    {"UINT8_MAX", std::numeric_limits<quint8>::max()},
    {"INT16_MAX", std::numeric_limits<qint16>::max()},
    {"UINT16_MAX", std::numeric_limits<quint16>::max()},
    {"INT32_MAX", std::numeric_limits<qint32>::max()},
    {"UINT32_MAX", std::numeric_limits<quint32>::max()},
    {"INT64_MAX", std::numeric_limits<qint64>::max()},
    {"UINT64_MAX", std::numeric_limits<quint64>::max()},
    {"INT8_MIN", quint64(std::numeric_limits<qint8>::min())},
    {"INT16_MIN", quint64(std::numeric_limits<qint16>::min())},
    {"INT32_MIN", quint64(std::numeric_limits<qint32>::min())},
    {"INT64_MIN", quint64(std::numeric_limits<qint64>::min())},
};

// A negative number for an unsigned field means its bits.
FieldValue integerFor(const MavlinkFieldDefinition& definition, quint64 value)
{
    if (definition.typeCode == FieldType::SignedType || definition.typeCode == FieldType::FloatType)
        return FieldValue::fromSigned(static_cast<qint64>(value), definition.size);
    const quint64 mask = definition.size >= 8 ? ~quint64(0) : (quint64(1) << (8 * definition.size)) - 1;
    return FieldValue::fromUnsigned(static_cast<qint64>(value) < 0 ? value & mask : value, definition.size);
}

FieldValue numberFor(const MavlinkFieldDefinition& definition, const QString& text,
                     const QVector<FieldInfo::Enumerator>& enumerators)
{
    for (const NamedNumber* limit = std::begin(limitNames); limit != std::end(limitNames); ++limit)
        if (text == QLatin1String(limit->name))
            return integerFor(definition, limit->value);
    for (const FieldInfo::Enumerator& enumerator : enumerators)
        if (text == enumerator.name)
            return integerFor(definition, enumerator.value);
    bool ok = false;
    const qint64 number = text.toLongLong(&ok, 0);
    if (ok)
        return integerFor(definition, static_cast<quint64>(number));
    const double real = text.toDouble(&ok);
    return ok ? FieldValue::fromDouble(real) : FieldValue::invalid();
}

// "X" or, for every element of an array alike, "[X]". What depends on other elements cannot be told of a single value
// and is left as the number it is: "[X:]" (the first element decides) unless X is NaN, which is no number anywhere;
// "[0]" of real numbers, where zeros are usual and only all of them together mean something; lists that go by place.
FieldValue invalidValue(const MavlinkFieldDefinition& definition, const QVector<FieldInfo::Enumerator>& enumerators)
{
    QString text = definition.invalid;
    const bool perElement = text.startsWith(QLatin1Char('[')) && text.endsWith(QLatin1Char(']'));
    if (perElement)
        text = text.mid(1, text.size() - 2).trimmed();
    const bool byFirst = perElement && text.endsWith(QLatin1Char(':'));
    if (byFirst)
        text.chop(1);
    if (text.compare(QLatin1String("nan"), Qt::CaseInsensitive) == 0)
        return FieldValue::fromDouble(std::numeric_limits<double>::quiet_NaN());
    const FieldValue value = numberFor(definition, text, enumerators);
    if (byFirst || (perElement && definition.typeCode == FieldType::FloatType && value.toDouble() == 0))
        return FieldValue::invalid();
    return value;
}

QString rangeText(const MavlinkFieldDefinition& definition)
{
    if (!definition.least.isEmpty() && !definition.greatest.isEmpty())
        return QCoreApplication::translate("MavlinkDialect", "%1 to %2").arg(definition.least, definition.greatest);
    if (!definition.least.isEmpty())
        return QCoreApplication::translate("MavlinkDialect", "at least %1").arg(definition.least);
    if (!definition.greatest.isEmpty())
        return QCoreApplication::translate("MavlinkDialect", "at most %1").arg(definition.greatest);
    return QString();
}

FieldInfo::TimeUnit timeUnitOf(const QString& units)
{
    if (units == QLatin1String("s"))
        return FieldInfo::Seconds;
    if (units == QLatin1String("ms"))
        return FieldInfo::Milliseconds;
    if (units == QLatin1String("us"))
        return FieldInfo::Microseconds;
    if (units == QLatin1String("ns"))
        return FieldInfo::Nanoseconds;
    return FieldInfo::NoTimeUnit;
}

// Only the words tell a time of day from a duration.
void setTime(const MavlinkFieldDefinition& definition, FieldInfo* field)
{
    static const QRegularExpression unixTime(QStringLiteral("unix|since (1\\.1\\.)?1970"),
                                             QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression boot(QStringLiteral("\\bboot"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression otherEpoch(QStringLiteral("\\b(?!1970)(19|20)\\d\\d\\b")); // "since 2019"
    const FieldInfo::TimeUnit unit = timeUnitOf(definition.units);
    if (unit == FieldInfo::NoTimeUnit || definition.typeCode == FieldType::FloatType)
        return;
    if (!definition.name.contains(unixTime) && !definition.description.contains(unixTime))
        return;
    if (definition.description.contains(otherEpoch))
        return;
    field->setTimeUnit(unit, definition.description.contains(boot));
}

} // namespace

FieldInfo* MavlinkFieldBuilder::create(const MavlinkFieldDefinition& definition, int offset,
                                       const QVector<FieldInfo::Enumerator>& enumerators, bool bitmask)
{
    const FieldType type(definition.typeCode, definition.size, definition.typeName);
    MavlinkFieldInfo* field =
        new MavlinkFieldInfo(definition.name, type, offset, definition.count, definition.extension);
    field->setDescription(definition.description);
    field->setRangeText(rangeText(definition));
    const MavlinkUnit unit = MavlinkUnit::fromDefinition(definition.units, definition.multiplier);
    field->setUnit(unit.text);
    field->setScale(unit.factor, unit.decimals);
    if (!definition.invalid.isEmpty())
        field->setInvalidValue(invalidValue(definition, enumerators));
    setTime(definition, field);
    if (definition.count == 0 &&
        (definition.name == QLatin1String("target_system") || definition.name == QLatin1String("target_component")))
        field->setRole(FieldInfo::AddressRole);
    const bool isMask = (bitmask || definition.displayAsBitmask) && definition.typeCode != FieldType::FloatType;
    field->setEnumerators(enumerators, isMask);
    if (isMask)
        FlagFieldInfo::addFlagsTo(field);
    return field;
}
