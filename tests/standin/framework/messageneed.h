#ifndef MESSAGENEED_H
#define MESSAGENEED_H

#include <QMap>
#include <QVector>

class MessageInfo;
class MessageNeedManager;

class MessageNeed
{
public:
    MessageNeed(MessageNeedManager*) {}
    ~MessageNeed() { needs.remove(this); }
    void setMessageNeeded(const MessageInfo* info) { needs[this] = QVector<const MessageInfo*>(info ? 1 : 0, info); }
    void setMessagesNeeded(QVector<const MessageInfo*> infos) { needs[this] = infos; }
    void clearMessagesNeeded(bool) { needs.remove(this); }

    static QMap<const MessageNeed*, QVector<const MessageInfo*>> needs;

private:
    Q_DISABLE_COPY(MessageNeed)
};

#endif
