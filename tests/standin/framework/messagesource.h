#ifndef MESSAGESOURCE_H
#define MESSAGESOURCE_H

#include <QObject>

class Message;

class MessageSource : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void newMessage(const Message* message);
};

#endif
