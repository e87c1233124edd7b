#ifndef MAVLINKFIELDBUILDER_H
#define MAVLINKFIELDBUILDER_H

#include "fieldinfo.h"

struct MavlinkFieldDefinition;

/** Turns what a definition says of a field into its description. */
namespace MavlinkFieldBuilder
{

/**
 * A new field, owned by the caller.
 *
 * @param offset       where it begins in the payload
 * @param enumerators  of the enum that it names; empty when it names none or one that is not known
 * @param bitmask      whether that enum is a bit mask
 */
FieldInfo* create(const MavlinkFieldDefinition& definition, int offset,
                  const QVector<FieldInfo::Enumerator>& enumerators, bool bitmask);

} // namespace MavlinkFieldBuilder

#endif
