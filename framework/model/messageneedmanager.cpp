#include "messageneedmanager.h"

MessageNeedManager::MessageNeedManager(QObject* parent)
    : QObject(parent)
{
}

MessageNeedManager::~MessageNeedManager() {}

MessageNeedManager* MessageNeedManager::getInstance()
{
    // Never destroyed: a widget with static storage may withdraw its need when the program has all but ended.
    static MessageNeedManager* const instance = new MessageNeedManager;
    return instance;
}

QVector<const MessageInfo*> MessageNeedManager::getNeededMessageInfos() const
{
    return m_needs.keys().toVector();
}

void MessageNeedManager::replaceNeeds(const QVector<const MessageInfo*>& old,
                                      const QVector<const MessageInfo*>& current, bool quietly)
{
    bool changed = false;
    for (int i = 0; i < current.size(); ++i) // the new first: a type in both stays needed all the while
        changed |= ++m_needs[current.at(i)] == 1;
    for (int i = 0; i < old.size(); ++i) {
        if (--m_needs[old.at(i)] == 0) {
            m_needs.remove(old.at(i));
            changed = true;
        }
    }
    if (changed && !quietly)
        Q_EMIT needsChanged();
}
