#ifndef SPARKPLUGBODY_H
#define SPARKPLUGBODY_H

#include "sparkplugpayload.h"

#include <QByteArray>
#include <QString>

/** Payloads of Sparkplug B that lie compressed in another one, as some nodes send them. */
namespace SparkplugBody
{

/** The size in bytes of the largest payload that is taken out of another one. */
const int GreatestSize = 16 * 1024 * 1024;

/**
 * Puts what is compressed in a payload in its place; does nothing where nothing is.
 *
 * @param bytes  gets the bytes that @p payload points into then, and has to live as long
 * @return false with @p error where what is there cannot be decompressed, or is too much
 */
bool unpack(Sparkplug::Payload* payload, QByteArray* bytes, QString* error);

} // namespace SparkplugBody

#endif
