#ifndef CORVEL_FLAGFIELDINFO_H
#define CORVEL_FLAGFIELDINFO_H

#include "fieldinfo.h"

/** One flag of a bit mask field, as a component field that is true or false. Present and repeated as its parent is. */
class CORVELFRAMEWORK_EXPORT FlagFieldInfo : public FieldInfo
{
public:
    /**
     * @param field  the bit mask, to which the flag is then added with FieldInfo::addSubField(); must not be null
     * @param flag   name and bits of the flag; it is set when all its bits are
     */
    FlagFieldInfo(const FieldInfo* field, const Enumerator& flag);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;

    /** Its bits in the number of the bit mask. */
    quint64 getBits() const { return m_bits; }

    /** Adds one flag field to @p field for every enumerator of one bit or more. */
    static void addFlagsTo(FieldInfo* field);

private:
    const FieldInfo* m_field;
    quint64 m_bits;
};

#endif
