#ifndef CORVEL_FUNCTIONFIELDINFO_H
#define CORVEL_FUNCTIONFIELDINFO_H

#include "fieldinfo.h"
#include "ownmessage.h"

#include <type_traits>

/**
 * A field whose values a function reads out of a message: for the messages of an application, without a class for each
 * field.
 *
 * ofMember() describes a member of a structure that RecordMessage holds, whatever it is:
 *
 * | member | field |
 * | --- | --- |
 * | a number, an enumeration, bool, QString or QByteArray | one value |
 * | a QVector of these | repeated |
 * | another structure, of a type that is described already | a sub-message |
 * | a QVector of structures | a repeated sub-message |
 *
 * Units, descriptions, enumerators and the like are set as on every field, before it is added to its type.
 *
 * @code
 * struct Engine { double celsius; QVector<quint16> rpm; };
 * MessageInfo* type = new MessageInfo("ENGINE");
 * FunctionFieldInfo* temperature = FunctionFieldInfo::ofMember("temperature", &Engine::celsius);
 * temperature->setUnit("°C");
 * type->addField(temperature);
 * type->addField(FunctionFieldInfo::ofMember("rpm", &Engine::rpm));
 * const Engine engine = {81.5, {3000, 3010}};
 * widget->processMessage(MessageReference::adopt(new RecordMessage<Engine>(type, engine)).get());
 * @endcode
 *
 * Functions are called on the thread that reads the field, which for what is shown is the GUI thread, and only for
 * messages of types that have the field.
 */
class CORVELFRAMEWORK_EXPORT FunctionFieldInfo : public FieldInfo
{
public:
    /** Number of values in a message. */
    typedef std::function<unsigned int(const Message*)> Counter;
    /** Whether a message has the field at all. */
    typedef std::function<bool(const Message*)> Presence;
    /** The value with a number that is below their count. A sub-message has to live as long as the message. */
    typedef std::function<FieldValue(const Message*, unsigned int)> Reader;
    /** Makes the sub-message with a number that is below their count; the first reference is the caller's. */
    typedef std::function<const Message*(const Message*, unsigned int)> Maker;

    /** A field with one value in every message. @p read must not be empty. */
    FunctionFieldInfo(const QString& name, const FieldType& type, const Reader& read);
    /** A repeated field. Neither function may be empty. */
    FunctionFieldInfo(const QString& name, const FieldType& type, const Counter& count, const Reader& read);
    virtual ~FunctionFieldInfo();

    /**
     * A field of sub-messages, which are made when somebody looks at them and kept by their message: an OwnMessage;
     * others have none.
     *
     * @param info   their type; must not be null and must outlive the field
     * @param count  how many there are; without one (an empty function) there is always one, and it is not repeated
     */
    static FunctionFieldInfo* ofSubMessages(const QString& name, const MessageInfo* info, const Counter& count,
                                            const Maker& make);

    /** The field of a member of @p Record; see above. The caller's, to be given to MessageInfo::addField(). */
    template <class Record, class Value>
    static FunctionFieldInfo* ofMember(const QString& name, Value Record::*member);
    template <class Record, class Value>
    static FunctionFieldInfo* ofMember(const QString& name, QVector<Value> Record::*member);
    /** Likewise of a structure, or of several, whose type is @p info: not null, and outlives the field. */
    template <class Record, class SubRecord>
    static FunctionFieldInfo* ofMember(const QString& name, SubRecord Record::*member, const MessageInfo* info);
    template <class Record, class SubRecord>
    static FunctionFieldInfo* ofMember(const QString& name, QVector<SubRecord> Record::*member,
                                       const MessageInfo* info);

    /** Makes the field an optional one, which only messages have of which @p isPresent says so. */
    void setOptional(const Presence& isPresent);
    /** Says that the field is computed and not transmitted. */
    using FieldInfo::setVirtual;
    /** Says that a repeated field of characters is one text. */
    using FieldInfo::setStringField;

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;

private:
    template <class Record, class Value>
    static Counter countOf(QVector<Value> Record::*member);

    Counter m_count;      // may be empty: one
    Presence m_isPresent; // may be empty: always
    Reader m_read;
};

/** How a C++ type is a type of fields. For own kinds of numbers, specialise it. */
template <class Number>
struct FieldTypeOf
{
    static_assert(std::is_arithmetic<Number>::value || std::is_enum<Number>::value,
                  "a structure needs the description of its type");

    static FieldType type()
    {
        const int size = int(sizeof(Number));
        const QString bits = QString::number(8 * size);
        if (std::is_floating_point<Number>::value)
            return FieldType(FieldType::FloatType, size, QLatin1String("float") + bits);
        if (std::is_signed<Number>::value)
            return FieldType(FieldType::SignedType, size, QLatin1String("int") + bits);
        return FieldType(FieldType::UnsignedType, size, QLatin1String("uint") + bits);
    }

    static FieldValue value(Number number)
    {
        if (sizeof(Number) == sizeof(float) && std::is_floating_point<Number>::value)
            return FieldValue::fromFloat(float(number));
        if (std::is_floating_point<Number>::value)
            return FieldValue::fromDouble(double(number));
        if (std::is_signed<Number>::value)
            return FieldValue::fromSigned(qint64(number), int(sizeof(Number)));
        return FieldValue::fromUnsigned(quint64(number), int(sizeof(Number)));
    }
};

template <>
struct FieldTypeOf<bool>
{
    static FieldType type() { return FieldType(FieldType::BoolType, 1, QLatin1String("bool")); }
    static FieldValue value(bool truth) { return FieldValue::fromBool(truth); }
};

template <>
struct FieldTypeOf<QString>
{
    static FieldType type() { return FieldType(FieldType::TextType, 0, QLatin1String("string")); }
    static FieldValue value(const QString& text) { return FieldValue::fromText(text); }
};

template <>
struct FieldTypeOf<QByteArray>
{
    static FieldType type() { return FieldType(FieldType::BytesType, 0, QLatin1String("bytes")); }
    static FieldValue value(const QByteArray& bytes) { return FieldValue::fromBytes(bytes); }
};

template <class Record, class Value>
FunctionFieldInfo::Counter FunctionFieldInfo::countOf(QVector<Value> Record::*member)
{
    return [member](const Message* message) -> unsigned int {
        const Record* record = RecordMessage<Record>::of(message);
        return record ? static_cast<unsigned int>((record->*member).size()) : 0;
    };
}

template <class Record, class Value>
FunctionFieldInfo* FunctionFieldInfo::ofMember(const QString& name, Value Record::*member)
{
    return new FunctionFieldInfo(name, FieldTypeOf<Value>::type(), [member](const Message* message, unsigned int) {
        const Record* record = RecordMessage<Record>::of(message);
        return record ? FieldTypeOf<Value>::value(record->*member) : FieldValue::invalid();
    });
}

template <class Record, class Value>
FunctionFieldInfo* FunctionFieldInfo::ofMember(const QString& name, QVector<Value> Record::*member)
{
    return new FunctionFieldInfo(name, FieldTypeOf<Value>::type(), countOf(member),
                                 [member](const Message* message, unsigned int index) {
                                     const Record* record = RecordMessage<Record>::of(message);
                                     return FieldTypeOf<Value>::value((record->*member).at(int(index)));
                                 });
}

template <class Record, class SubRecord>
FunctionFieldInfo* FunctionFieldInfo::ofMember(const QString& name, SubRecord Record::*member, const MessageInfo* info)
{
    return ofSubMessages(name, info, Counter(), [=](const Message* message, unsigned int) -> const Message* {
        const Record* record = RecordMessage<Record>::of(message);
        return record ? new RecordMessage<SubRecord>(info, record->*member) : 0;
    });
}

template <class Record, class SubRecord>
FunctionFieldInfo* FunctionFieldInfo::ofMember(const QString& name, QVector<SubRecord> Record::*member,
                                               const MessageInfo* info)
{
    return ofSubMessages(name, info, countOf(member),
                         [=](const Message* message, unsigned int index) -> const Message* {
                             const Record* record = RecordMessage<Record>::of(message);
                             return new RecordMessage<SubRecord>(info, (record->*member).at(int(index)));
                         });
}

#endif
