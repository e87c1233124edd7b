#ifndef CORVEL_MESSAGENEEDMANAGER_H
#define CORVEL_MESSAGENEEDMANAGER_H

#include "corvelframework_export.h"

#include <QHash>
#include <QObject>
#include <QVector>

class MessageInfo;
class MessageNeed;

/** Knows which message types are needed by at least one MessageNeed. GUI thread only. */
class CORVELFRAMEWORK_EXPORT MessageNeedManager : public QObject
{
    Q_OBJECT

public:
    explicit MessageNeedManager(QObject* parent = 0);
    virtual ~MessageNeedManager();

    /** The process-wide manager, which needs without a manager of their own register with; never null. */
    static MessageNeedManager* getInstance();

    /** Whether any consumer needs messages of type @p info; false for null. */
    bool isNeeded(const MessageInfo* info) const { return m_needs.contains(info); }

    /** The types needed now, in no order. */
    QVector<const MessageInfo*> getNeededMessageInfos() const;

Q_SIGNALS:
    /** A type became needed or is not needed any more. */
    void needsChanged();

private:
    friend class MessageNeed;

    void replaceNeeds(const QVector<const MessageInfo*>& old, const QVector<const MessageInfo*>& current, bool quietly);

    QHash<const MessageInfo*, int> m_needs; // how many consumers need a type; never 0
};

#endif
