#ifndef CORVEL_PATHVALUE_H
#define CORVEL_PATHVALUE_H

#include "fieldwalk.h"

/**
 * A value to which a path leads in a message, or the reason why there is none.
 *
 * PathExpression::getValues() and FieldPath::getValues() make them. Where a path goes on in each of several
 * sub-messages, or ends at a repeated field, there is one for each value.
 *
 * @code
 * PathExpression expression;
 * expression.setConsiderSubMessages(true);
 * expression.setString("plant/PUMP/motors/temperature");
 * Q_FOREACH (const PathValue& found, expression.getValues(message))
 *     show(found.path.getName() + ": " + found.getText()); // "PUMP.motors[1].temperature: 41 °C"
 * @endcode
 */
struct CORVELFRAMEWORK_EXPORT PathValue
{
    /** The way to this value alone, with all numbers. Its getField() and getIndex() are those of the value. */
    FieldPath path;
    /**
     * What is there: a whole field of characters that are one text as a text. Invalid when there is nothing. A
     * sub-message is borrowed and lives as long as the message.
     */
    FieldValue value;
    /**
     * FieldWalk::OneValue when there is a value. Else Absent, OutOfRange or Hidden; or AllValues or Branches, of a
     * repeated field that has no values.
     */
    FieldWalk::End end;

    bool isValid() const { return end == FieldWalk::OneValue; }
    /** The value as its field interprets it, with the unit; empty when there is none. */
    QString getText() const;
};

#endif
