#ifndef FIELDPATH_H
#define FIELDPATH_H

#include "fieldvalue.h"

#include <QString>
#include <QVector>

class FieldInfo;
class Message;
class MessageInfo;

/** The way from a message type to one of its values: through fields, sub-messages and components, with their numbers.
 */
struct FieldPath
{
    /** A field on the way. */
    struct Step
    {
        const FieldInfo* field;
        int index; ///< the number of the value; -1 is the repeated field as a whole

        bool operator==(const Step& other) const { return field == other.field && index == other.index; }
    };

    const MessageInfo* messageInfo = nullptr;
    QVector<Step> steps; ///< outermost first; empty for the type itself

    /** What @p expression names, when that is one field of one type; else null. */
    static FieldPath fromExpression(const QString& expression);

    bool isNull() const { return !messageInfo; }
    /** The field at the end, or null for a type. */
    const FieldInfo* getField() const { return steps.isEmpty() ? nullptr : steps.last().field; }
    /** Whether it is a repeated field with all of its values. */
    bool isWholeRepeatedField() const;

    /** Whether a field on the way is confidential, and such fields are not shown now. */
    bool isHidden() const;

    /** The message or sub-message in @p message that the field at the end is read from; null when it is absent. */
    const Message* findHolder(const Message* message) const;
    /** The value in @p message; invalid when it is absent, and for what is not one value. */
    FieldValue getValue(const Message* message) const;

    /** How people call it: "BATTERY_STATUS.voltages[2]". */
    QString getName() const;
    /** The fields alone: "voltages[2]". */
    QString getFieldName() const;
    /** The path expression that names it: "corvel/BATTERY_STATUS/voltages[2]". */
    QString getExpression() const;

    bool operator==(const FieldPath& other) const { return messageInfo == other.messageInfo && steps == other.steps; }
};

#endif
