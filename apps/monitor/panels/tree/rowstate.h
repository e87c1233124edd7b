#ifndef ROWSTATE_H
#define ROWSTATE_H

#include <QVector>

class FieldInfo;
class Message;
class MessageInfo;
class QTreeWidgetItem;

/** What rows of the message tree have to show now, told without a way to them: it is asked whenever they are drawn. */
namespace RowState
{

/** The message or sub-message that the field of a row is read from; null where there is none now. */
const Message* getHolder(const QTreeWidgetItem* item);

/** Whether the row of a field has nothing to show: it was left out, or says that there is no value. */
bool isUnset(const QTreeWidgetItem* item);

/** Whether there is a message that the row, or what it lies below, could show something of. */
bool hasMessage(const QTreeWidgetItem* item);

/** Whether a field is none of the type's own, but there for what is seldom in messages: "[problems]". */
bool isSeldom(const FieldInfo* field);

/** Whether the row shows numbers, whatever its text says now. */
bool isNumeric(const FieldInfo* field);

/** The fields of a type that is read in one line: one to four plain numbers and nothing else; else none. */
QVector<const FieldInfo*> getVector(const MessageInfo* info);

} // namespace RowState

#endif
