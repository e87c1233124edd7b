#ifndef ENVELOPENAMES_H
#define ENVELOPENAMES_H

#include "definitions.h"

#include <QHash>
#include <QString>

#include <mutex>

class MessageInfo;

/**
 * The numbers of senders and types that a decoder of envelopes gives out, and what they are called.
 *
 * Whoever counts keeps rows by them for good, and a broker can have any number of topics: there is an end to both, and
 * what comes beyond shares one. One thread gives numbers out; what they are called may be asked on any.
 */
class EnvelopeNames
{
public:
    /** The number of a sender; the same for the same name. */
    quint32 addSender(const QString& name);
    /** The number of a type; above those of MAVLink. */
    quint32 addType(const MessageInfo* info);
    /** The number of messages that cannot be decoded; the same for the same description. */
    quint32 addUnknown(const QString& description, const TypeSchema& schema);

    /** Whether that is the number of messages that cannot be decoded. */
    static bool isUnknown(quint32 id);

    QString getSender(quint32 sender) const;
    /** See addUnknown(); null for another number. */
    QString describe(quint32 id) const;
    TypeSchema getSchema(quint32 id) const;

private:
    struct Unknown
    {
        QString description;
        TypeSchema schema;
    };

    bool hasRoom(const QString& name);

    QHash<QString, quint32> m_senderNumbers;
    QHash<const MessageInfo*, quint32> m_typeNumbers;
    QHash<QString, quint32> m_unknownNumbers;
    qint64 m_kept = 0; // bytes of names

    mutable std::mutex m_mutex; // for what follows
    QHash<quint32, QString> m_senders;
    QHash<quint32, Unknown> m_unknown;
};

#endif
