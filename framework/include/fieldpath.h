#ifndef CORVEL_FIELDPATH_H
#define CORVEL_FIELDPATH_H

#include "corvelframework_export.h"
#include "fieldvalue.h"

#include <QString>
#include <QVector>

class FieldInfo;
class Message;
class MessageInfo;
struct PathValue;

/**
 * The way from a message type to a field: through sub-messages and components, with the numbers of values.
 *
 * Made once, from names or by PathExpression::getMatches(), and then walked in as many messages as there are by a
 * FieldWalk, which handles no text. A value class, which borrows the descriptions.
 *
 * @code
 * FieldPath path(info);
 * if (path.append("batteries", 1) && path.append("voltage"))
 *     show(path.getField()->getInterpretedString(path.getValue(message), true));
 * @endcode
 */
class CORVELFRAMEWORK_EXPORT FieldPath
{
public:
    /** What stands where a repeated field has no number. */
    enum Index
    {
        NoIndex = -1,   ///< none was given: the field as a whole
        AllIndexes = -2 ///< each value on its own, "[*]"; walked like NoIndex
    };

    /** A field on the way. */
    struct Step
    {
        const FieldInfo* field;
        int index;  ///< from 0, which a plain field always has; or one of Index
        int number; ///< the same; of a component without a number, that of the field it is a part of

        bool operator==(const Step& other) const { return field == other.field && index == other.index; }
    };

    /** No way at all. */
    FieldPath();
    /** The way to a type itself, which fields are then appended to. Null is no way at all. */
    explicit FieldPath(const MessageInfo* info);

    /**
     * The value that @p expression names, when that is one field of one type; else null. Where it leads through a
     * repeated sub-message without a number, the first is meant.
     */
    static FieldPath fromExpression(const QString& expression);

    /** Goes on to a field, which must occur where the way has come to; a number is ignored where there are none. */
    void append(const FieldInfo* field, int index = NoIndex);
    /** The same by name, in the type, the sub-message or among the components; false, unchanged, if there is none. */
    bool append(const QString& name, int index = NoIndex);

    bool isNull() const { return !m_messageInfo; }
    /** Where the way begins; null for no way. */
    const MessageInfo* getMessageInfo() const { return m_messageInfo; }
    /** Outermost first; empty for the type itself. */
    const QVector<Step>& getSteps() const { return m_steps; }

    /** The field at the end, or null for a type. */
    const FieldInfo* getField() const { return m_steps.isEmpty() ? 0 : m_steps.last().field; }
    /** The number of the value at the end; negative for a repeated field as a whole, and for a type. */
    int getIndex() const { return m_steps.isEmpty() ? int(NoIndex) : m_steps.last().number; }
    /** Whether it is a repeated field with all of its values. */
    bool isWholeRepeatedField() const { return !m_steps.isEmpty() && getIndex() < 0; }

    /** Whether a field on the way is confidential, and such fields are not shown now. */
    bool isHidden() const;

    /** The value in @p message; invalid when there is none (a FieldWalk tells why), and for what is not one value. */
    FieldValue getValue(const Message* message) const;

    /**
     * All values in @p message, in order, through each of repeated sub-messages that have no number; where there are
     * none, why. Empty for a message of another type, null, and a path that leads to no field. See pathvalue.h.
     */
    QVector<PathValue> getValues(const Message* message) const;

    /** How people call it: "BATTERY_STATUS.voltages[2]". */
    QString getName() const;
    /** The fields alone: "voltages[2]". */
    QString getFieldName() const;
    /** The path expression that names it: "corvel/BATTERY_STATUS/voltages[2]". */
    QString getExpression() const;

    bool operator==(const FieldPath& other) const
    {
        return m_messageInfo == other.m_messageInfo && m_steps == other.m_steps;
    }

private:
    const MessageInfo* m_messageInfo;
    QVector<Step> m_steps;
};

#endif
