#ifndef MAVLINKCRC_H
#define MAVLINKCRC_H

#include "corvelframework_export.h"

#include <QtGlobal>

/** The checksum of MAVLink frames and definitions: CRC-16/MCRF4XX (reflected polynomial 0x1021, not inverted). */
namespace MavlinkCrc
{

/** The checksum of @p size bytes, going on from @p start. */
CORVELFRAMEWORK_EXPORT quint16 calculate(const char* bytes, int size, quint16 start = 0xffff);

/** The checksum @p crc carried on over one byte more. */
CORVELFRAMEWORK_EXPORT quint16 add(quint16 crc, quint8 byte);

/** Whether add() makes @p next of @p crc with some byte, as it does in one of 256 cases by chance. */
CORVELFRAMEWORK_EXPORT bool canFollow(quint16 crc, quint16 next);

} // namespace MavlinkCrc

#endif
