#ifndef MESSAGESTATISTICSCOORDINATOR_H
#define MESSAGESTATISTICSCOORDINATOR_H

#include "corvelevent.h"

#include <QList>

class MessageStatistics;

class MessageStatisticsCoordinator
{
public:
    QList<MessageStatistics*> getAllMessageStatistics() const;
    unsigned int getEventCount(CorvelEvent::Type type) const;

private:
    friend class MiniModel;
    QList<MessageStatistics*> m_all;
};

#endif
