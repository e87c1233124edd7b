#ifndef CORVEL_MESSAGESOURCE_H
#define CORVEL_MESSAGESOURCE_H

#include "corvelframework_export.h"
#include "message.h" // connecting a member function needs it

#include <QObject>

/**
 * Emits messages as they are received.
 *
 * Lives on the GUI thread. A subclass that receives from elsewhere hands its messages to deliver().
 */
class CORVELFRAMEWORK_EXPORT MessageSource : public QObject
{
    Q_OBJECT

public:
    explicit MessageSource(QObject* parent = 0);
    virtual ~MessageSource();

    /**
     * Emits newMessage() when somebody needs messages of the type of @p message, which must not be null; else
     * unneededMessage().
     *
     * The caller keeps its reference; receivers that keep the message take their own.
     *
     * @return whether somebody needs it
     */
    bool deliver(const Message* message);

Q_SIGNALS:
    /** A message was received. Valid for the length of the call, and longer for who takes a reference. */
    void newMessage(const Message* message);
    /** A message was handed to deliver() that nobody needs: for who counts all. Valid as above. */
    void unneededMessage(const Message* message);
};

#endif
