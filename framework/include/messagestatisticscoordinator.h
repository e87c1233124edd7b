#ifndef MESSAGESTATISTICSCOORDINATOR_H
#define MESSAGESTATISTICSCOORDINATOR_H

#include "corvelevent.h"

#include <QList>

class MessageStatistics;

/** Holds the statistics of all message types received, and counts events by type. */
class CORVELFRAMEWORK_EXPORT MessageStatisticsCoordinator
{
public:
    /** Every statistics object that exists now, in the order of their first messages. Owned by the coordinator. */
    QList<MessageStatistics*> getAllMessageStatistics() const;

    /** How many events of that type there were. */
    unsigned int getEventCount(CorvelEvent::Type type) const;
};

#endif
