#ifndef SUBJECT_H
#define SUBJECT_H

#include <QHash>
#include <QString>

class MessageInfo;

/** What a row, a form, a watch or a curve is about: a message type, as one sender sends it or whoever does. */
struct Subject
{
    const MessageInfo* info; ///< null for everything that the sender sends
    QString sender;          ///< as Message::getSender() names it; empty for any

    /** Whether a message of type @p type from @p from is meant. */
    bool covers(const MessageInfo* type, const QString& from) const
    {
        return info == type && (sender.isEmpty() || sender == from);
    }
};

inline bool operator==(const Subject& left, const Subject& right)
{
    return left.info == right.info && left.sender == right.sender;
}

inline decltype(qHash(0)) qHash(const Subject& subject, decltype(qHash(0)) seed = 0)
{
    return qHash(quintptr(subject.info), seed) ^ qHash(subject.sender, seed);
}

#endif
