#ifndef MINIMODEL_H
#define MINIMODEL_H

#include <QDateTime>
#include <QMap>
#include <QStringList>
#include <QVariant>
#include <QVector>

class EventLog;
class Message;
class MessageInfo;
class MessageStatistics;
class MessageStatisticsCoordinator;

/** Makes the framework's objects for the test program; the widgets do not know it. */
class MiniModel
{
public:
    /** A type with fields "name", or "name:traits", where traits are letters of "vcors2". */
    static MessageInfo* newInfo(const char* name, const QStringList& fields);
    /** Makes the field number @p field one of sub-messages. */
    static void setSubType(const MessageInfo* info, int field, const MessageInfo* subType);
    static Message* newMessage(const MessageInfo* info, const QList<QVariantList>& valuesOfFields);
    static QVariant fromMessage(const Message* message);
    static void deleteAllInfos();

    static QVector<MessageInfo*> infos;
    static int messagesAlive;
    static bool showConfidential;
    static QMap<const void*, QVector<const MessageInfo*>> needs; ///< by the address of the MessageNeed

    static void log(EventLog* log, const QDateTime& time, const char* message);
    static void clear(EventLog* log);
    /** Statistics of a type without a description; owned by the caller. */
    static MessageStatistics* addStatistics(MessageStatisticsCoordinator* coordinator, const char* name,
                                            unsigned int count);
};

#endif
