#ifndef CORVEL_MESSAGENEED_H
#define CORVEL_MESSAGENEED_H

#include "corvelframework_export.h"

#include <QVector>

class MessageInfo;
class MessageNeedManager;

/** A consumer's statement of the message types it wants delivered; withdrawn when the object goes. GUI thread only. */
class CORVELFRAMEWORK_EXPORT MessageNeed
{
public:
    /** A need of nothing yet, registered with @p manager, which must outlive it; null means the process-wide manager.
     */
    explicit MessageNeed(MessageNeedManager* manager);
    ~MessageNeed();

    /** Needs exactly this type from now on; null means none. */
    void setMessageNeeded(const MessageInfo* info);

    /** Needs exactly these types from now on. */
    void setMessagesNeeded(QVector<const MessageInfo*> infos);

    /**
     * Needs nothing any more.
     *
     * @param quietly  leaves out MessageNeedManager::needsChanged(), for callers that state a new need right away
     */
    void clearMessagesNeeded(bool quietly);

private:
    Q_DISABLE_COPY(MessageNeed)

    void replace(const QVector<const MessageInfo*>& infos, bool quietly);

    MessageNeedManager* m_manager;
    QVector<const MessageInfo*> m_infos;
};

#endif
