#ifndef MESSAGENEED_H
#define MESSAGENEED_H

#include <QVector>

class MessageInfo;
class MessageNeedManager;

class MessageNeed
{
public:
    MessageNeed(MessageNeedManager* manager);
    ~MessageNeed();
    void setMessageNeeded(const MessageInfo* info);
    void setMessagesNeeded(QVector<const MessageInfo*> infos);
    void clearMessagesNeeded(bool flag);

private:
    Q_DISABLE_COPY(MessageNeed)
};

#endif
