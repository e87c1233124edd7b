#ifndef MESSAGESTATISTICSCOORDINATOR_H
#define MESSAGESTATISTICSCOORDINATOR_H

#include "corvelevent.h"

#include <QHash>
#include <QList>

class MessageStatistics;

class MessageStatisticsCoordinator
{
public:
    QList<MessageStatistics*> getAllMessageStatistics() const
    {
        ++listsAsked;
        return statistics;
    }
    unsigned int getEventCount(CorvelEvent::Type type) const { return eventCounts.value(type); }

    QList<MessageStatistics*> statistics;
    QHash<int, unsigned int> eventCounts;
    mutable int listsAsked = 0; ///< how often the list was fetched
};

#endif
