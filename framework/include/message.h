#ifndef CORVEL_MESSAGE_H
#define CORVEL_MESSAGE_H

#include "corvelframework_export.h"
#include "referencecountedobject.h"

#include <QByteArray>
#include <QString>

class MessageInfo;

/**
 * One received message: its type and the bytes it came in.
 *
 * Nothing is decoded when a message is made; FieldInfo::getValue() reads a field out of the bytes when somebody asks.
 * Messages are made with new, are owned through their reference count and belong to the GUI thread.
 */
class CORVELFRAMEWORK_EXPORT Message : public ReferenceCountedObject
{
public:
    /** The time of a message whose time is not known. */
    static const qint64 NoTime;
    /** The sequence number of a message of a format that has none. */
    static const qint64 NoSequence = -1;

    /**
     * A message of the type @p info with one reference, the caller's.
     *
     * @param info  the type; must not be null and must outlive the message
     * @param data  the message as received, header included; may be empty for types whose fields need no bytes
     */
    explicit Message(const MessageInfo* info, const QByteArray& data = QByteArray());

    /** The message's type; never null. */
    const MessageInfo* getInfo() const { return m_info; }

    /** The message as received. */
    const QByteArray& getData() const { return m_data; }

    /** When it was sent or received, in microseconds since 1970 (UTC); NoTime when not known. */
    qint64 getTime() const { return m_time; }
    void setTime(qint64 microseconds) { m_time = microseconds; }

    /** The sender's number of the message, counted by the sender; NoSequence when the format has none. */
    qint64 getSequence() const { return m_sequence; }
    void setSequence(qint64 sequence) { m_sequence = sequence; }

    /** Who sent it, in the format's own notation such as "1:1"; empty when the format tells no senders apart. */
    const QString& getSender() const { return m_sender; }
    void setSender(const QString& sender) { m_sender = sender; }

protected:
    virtual ~Message();

private:
    const MessageInfo* m_info;
    QByteArray m_data;
    qint64 m_time;
    qint64 m_sequence;
    QString m_sender;
};

#endif
