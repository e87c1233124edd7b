#ifndef SPARKPLUGVALUE_H
#define SPARKPLUGVALUE_H

#include "sparkplugpayload.h"

#include <QByteArray>

/** Values of Sparkplug as JSON, and the JSON schemas of these. */
namespace SparkplugValue
{

/** A text in quotes, with escapes. */
QByteArray quoted(std::string_view utf8);

/** A time of milliseconds since 1970; "null" for 0. */
QByteArray timeText(quint64 milliseconds);
QByteArray timeSchema();

/** The type of a metric that says none, by its value. */
quint32 typeOf(const Sparkplug::Metric& metric);

/** The value of a metric that is of that type, "null" where there is none or it cannot be. */
QByteArray text(const Sparkplug::Metric& metric, quint32 type, int depth = 0);
/** What such values are; empty where nothing can be said of them. */
QByteArray schema(const Sparkplug::Metric& metric, quint32 type, int depth = 0);

} // namespace SparkplugValue

#endif
