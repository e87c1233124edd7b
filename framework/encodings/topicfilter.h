#ifndef TOPICFILTER_H
#define TOPICFILTER_H

#include "corvelframework_export.h"

#include <QString>

/**
 * Filters of the topics of brokers: of MQTT, with "+" for one level and "#" for the rest, or of NATS, whose levels
 * stand between dots, with "*" and ">". Which of the two it is, its wildcards say; without any it is a topic.
 */
namespace TopicFilter
{

/** Whether a topic is meant. */
CORVELFRAMEWORK_EXPORT bool matches(const QString& filter, const QString& topic);

/** What is wrong with a filter, in the user's language; empty for nothing. */
CORVELFRAMEWORK_EXPORT QString describeFault(const QString& filter);

} // namespace TopicFilter

#endif
