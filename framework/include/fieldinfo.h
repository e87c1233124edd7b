#ifndef CORVEL_FIELDINFO_H
#define CORVEL_FIELDINFO_H

#include "corvelframework_export.h"
#include "fieldtype.h"
#include "fieldvalue.h"

#include <QString>
#include <QVector>

class Message;
class MessageInfo;

/**
 * The description of a field of a message type: how it is called, what it means, and how to read it out of a message.
 *
 * A long-lived object whose address is the field's identity. A format derives its own class and implements
 * getValueCount() and getValue(). A field owns its component fields and is owned by its message type or its parent
 * field.
 */
class CORVELFRAMEWORK_EXPORT FieldInfo
{
public:
    /** What a field is for. 2 and 3 are the secondary roles, which a view can hide; all others are primary. */
    enum Role
    {
        UnspecifiedRole = 0, ///< nothing is known; shown like a primary field
        PrimaryRole = 1,     ///< what the message is about
        SecondaryRole = 2,   ///< a detail
        AddressRole = 3      ///< transport: who the message is for, and the like
    };

    /** One named value of a field, or one named flag. */
    struct Enumerator
    {
        Enumerator()
            : value(0)
        {
        }
        Enumerator(quint64 number, const QString& text, const QString& about = QString())
            : value(number)
            , name(text)
            , description(about)
        {
        }

        quint64 value; ///< signed values as their two's complement
        QString name;
        QString description; ///< may be empty
    };

    /** What the number in a time field counts, when the field holds a time of day. */
    enum TimeUnit
    {
        NoTimeUnit,
        Seconds,
        Milliseconds,
        Microseconds,
        Nanoseconds
    };

    FieldInfo(const QString& name, const FieldType& type);
    virtual ~FieldInfo();

    /** Whether @p message, of a type that the field occurs in, carries the field; the same as having values. */
    virtual bool isPresentIn(const Message* message) const;

    /**
     * The number of values of the field in @p message, which must not be null.
     *
     * 1 for a plain field, the number of elements for a repeated one, 0 for an optional field that is absent and for a
     * message whose type does not have the field.
     */
    virtual unsigned int getValueCount(const Message* message) const = 0;

    /** The value number @p index (from 0). An index beyond getValueCount() gives FieldValue::invalid(). */
    virtual FieldValue getValue(const Message* message, unsigned int index) const = 0;

    /** All values in order. */
    virtual QVector<FieldValue> getValues(const Message* message) const;

    /** The values of a repeated character field joined into a text, up to the first zero character. */
    virtual QString getStringValue(const Message* message) const;

    QString getName() const { return m_name; }
    const FieldType& getType() const { return m_type; }

    Role getRole() const { return m_role; }
    void setRole(Role role) { m_role = role; }

    /** Whether the field is computed from others instead of being transmitted. */
    bool isVirtual() const { return m_virtual; }
    /** Whether its contents are to be hidden unless Corvel::confidentialInformationDisplayEnabled(). */
    bool isConfidential() const { return m_confidential; }
    void setConfidential(bool confidential) { m_confidential = confidential; }
    /** Whether messages of its types may lack it. */
    bool isOptional() const { return m_optional; }
    /** Whether it may have several values. */
    bool isRepeated() const { return m_repeated; }
    /** Whether it is a repeated character field that is to be read as one text. */
    bool isStringField() const { return m_string; }

    /** Whether messages of type @p info have this field. Null is no type. */
    bool occursIn(const MessageInfo* info) const;
    /** The message types that have this field. */
    QVector<const MessageInfo*> getMessageInfos() const { return m_messageInfos; }

    /** The component fields, such as the flags of a bit mask, in order. */
    QVector<const FieldInfo*> getSubFieldInfos() const { return m_subFields; }
    /** The field that this is a component of; null for a field that stands directly in a message type. */
    const FieldInfo* getParentFieldInfo() const { return m_parent; }
    /** Adds a component field and takes ownership. To be called before the field is added to a message type. */
    void addSubField(FieldInfo* field);

    /** What the field means, in a sentence or more; empty when not known. */
    QString getDescription() const { return m_description; }
    void setDescription(const QString& text) { m_description = text; }

    /** The unit in which getInterpretedString() gives values, such as "m/s"; empty when there is none. */
    QString getUnit() const { return m_unit; }
    void setUnit(const QString& unit) { m_unit = unit; }

    /** Named values, or the flags of a bit mask; empty when there are none. */
    const QVector<Enumerator>& getEnumerators() const { return m_enumerators; }
    /** Whether the enumerators are flags that combine. */
    bool isBitmask() const { return m_bitmask; }
    /** Flags that a number of the field's size cannot have are left out. */
    void setEnumerators(const QVector<Enumerator>& enumerators, bool bitmask);

    /**
     * Makes getInterpretedString() multiply numbers.
     *
     * @param factor    what a transmitted number is multiplied with to give getUnit()
     * @param decimals  digits behind the point of the result, 0 to 17
     */
    void setScale(double factor, int decimals);
    double getScaleFactor() const { return m_scaleFactor; }

    /** The transmitted value that means "not available"; an invalid value (the default) means that there is none. */
    void setInvalidValue(const FieldValue& value) { m_invalidValue = value; }
    FieldValue getInvalidValue() const { return m_invalidValue; }
    /** Whether @p value is the transmitted value that means "not available". */
    bool isNotAvailable(const FieldValue& value) const { return means(value, m_invalidValue); }

    /**
     * Declares numbers to be a time since 1970 (UTC), shown as ISO 8601.
     *
     * @param orSinceStart  whether senders may as well count from their own start: what is less than 10^9 seconds
     *                      (2001, or 31 years of running) is then shown as the number it is, with the unit
     */
    void setTimeUnit(TimeUnit unit, bool orSinceStart = false);
    TimeUnit getTimeUnit() const { return m_timeUnit; }

    /** The least and the greatest value that make sense, as text; empty when not known. For tool tips. */
    QString getRangeText() const { return m_rangeText; }
    void setRangeText(const QString& text) { m_rangeText = text; }

    /**
     * The value as a person wants to read it: an enumerator as "NAME (3)"; the set flags of a bit mask by name, with
     * " | " between them and what has no name in hexadecimal; the value that means so as "not available"; a time as
     * ISO 8601; a scaled value with its decimals; of bytes the first 64 in hexadecimal and their number; the plain text
     * of all else.
     * An invalid value gives an empty text, a sub-message the name of its type.
     *
     * @param withUnit  appends the unit, when there is one
     */
    QString getInterpretedString(const FieldValue& value, bool withUnit) const;

    /** The value as transmitted; empty for an invalid value. */
    QString getRawString(const FieldValue& value) const;

protected:
    void setVirtual(bool isVirtual) { m_virtual = isVirtual; }
    void setOptional(bool optional) { m_optional = optional; }
    void setRepeated(bool repeated) { m_repeated = repeated; }
    void setStringField(bool isString) { m_string = isString; }

    /** Takes over how @p other is described and read as text, but for its name, its components and where it occurs. */
    void describeAs(const FieldInfo& other);
    /** Occurs in messages of type @p info, too, which does not have the field; null is none. */
    void setOuterMessageInfo(const MessageInfo* info) { m_outerMessageInfo = info; }

private:
    Q_DISABLE_COPY(FieldInfo)
    friend class MessageInfo;

    void enterMessageInfo(const MessageInfo* info);
    bool means(const FieldValue& value, const FieldValue& other) const;
    bool isTimeOfDay(const FieldValue& value) const;
    QString textOfFlags(quint64 flags) const;
    QString textOfEnumerator(const FieldValue& value) const;
    QString textOfTime(const FieldValue& value) const;

    QString m_name;
    FieldType m_type;
    Role m_role;
    bool m_virtual;
    bool m_confidential;
    bool m_optional;
    bool m_repeated;
    bool m_string;
    bool m_bitmask;
    QVector<const MessageInfo*> m_messageInfos;
    const MessageInfo* m_outerMessageInfo;
    QVector<const FieldInfo*> m_subFields;
    const FieldInfo* m_parent;
    QString m_description;
    QString m_unit;
    QString m_rangeText;
    QVector<Enumerator> m_enumerators;
    double m_scaleFactor;
    int m_decimals;
    FieldValue m_invalidValue;
    TimeUnit m_timeUnit;
    bool m_timeOrSinceStart;
};

#endif
