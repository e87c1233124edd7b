#ifndef FIELDSUMMARY_H
#define FIELDSUMMARY_H

#include <QString>

class FieldInfo;
class Message;
class MessageInfo;

/** What a message says in short. */
namespace FieldSummary
{

/** A number as the text of a field has it, with as many significant digits where it has a fraction; 0 for all. */
QString shorter(const QString& number, const FieldInfo* field, int digits);

/** The first values of a message in one line: "roll 0.12 rad   pitch -0.03 rad   …". */
QString lineOf(const Message* message, int digits);

/** Whether messages of a type, or parts of them, can have contents that are hidden now. */
bool hasHidden(const MessageInfo* info);

} // namespace FieldSummary

#endif
