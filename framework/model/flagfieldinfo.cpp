#include "flagfieldinfo.h"

FlagFieldInfo::FlagFieldInfo(const FieldInfo* field, const Enumerator& flag)
    : FieldInfo(flag.name, FieldType(FieldType::BoolType, 0, QLatin1String("flag")))
    , m_field(field)
    , m_bits(flag.value)
{
    setDescription(flag.description);
    setOptional(field->isOptional());
    setRepeated(field->isRepeated());
}

unsigned int FlagFieldInfo::getValueCount(const Message* message) const
{
    return m_field->getValueCount(message);
}

FieldValue FlagFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const FieldValue flags = m_field->getValue(message, index);
    return flags.isValid() ? FieldValue::fromBool((flags.toUnsigned() & m_bits) == m_bits) : FieldValue::invalid();
}

void FlagFieldInfo::addFlagsTo(FieldInfo* field)
{
    for (int i = 0; i < field->getEnumerators().size(); ++i)
        if (field->getEnumerators().at(i).value != 0)
            field->addSubField(new FlagFieldInfo(field, field->getEnumerators().at(i)));
}
