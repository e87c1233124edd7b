#ifndef CORVEL_FIELDTYPE_H
#define CORVEL_FIELDTYPE_H

#include "corvelframework_export.h"

#include <QString>

class MessageInfo;

/**
 * The type of one element of a field: a number of some width, a character, a text, or a whole sub-message.
 *
 * A plain value, held inside a FieldInfo.
 */
class CORVELFRAMEWORK_EXPORT FieldType
{
public:
    /** What kind of element it is. The numbers are part of the binary interface. */
    enum TypeCode
    {
        NoType = 0,           ///< not known
        SignedType = 1,       ///< signed integer
        UnsignedType = 2,     ///< unsigned integer
        CharType = 3,         ///< character
        UnsignedCharType = 4, ///< character, transmitted as unsigned
        FloatType = 5,        ///< floating-point number
        SubMessageType = 6,   ///< a message of another type
        BoolType = 7,         ///< true or false
        TextType = 8,         ///< a text of any length as one element
        BytesType = 9         ///< bytes of any length as one element
    };

    /** A type that is not known: code NoType, no name, size 0. */
    FieldType();

    /**
     * An element that is not a sub-message.
     *
     * @param code  what kind of element it is
     * @param size  bytes of one transmitted element; 0 when that varies
     * @param name  the format's own name of the type, such as "uint8_t"
     */
    FieldType(TypeCode code, int size, const QString& name);

    /** A sub-message of the type @p subMessageInfo, which must not be null and must outlive this object. */
    explicit FieldType(const MessageInfo* subMessageInfo);

    /** The TypeCode, as a number. */
    int getTypeCode() const { return m_typeCode; }

    /** Bytes of one transmitted element; 0 when that varies. */
    int getSize() const { return m_size; }

    /** The type as people of the format write it, such as "uint8_t"; for a sub-message the name of its type. */
    QString toShortString() const;

    /** The type of the sub-message, or null when elements are not sub-messages. */
    const MessageInfo* getSubMessageInfo() const;

private:
    int m_typeCode; // first, because it is read inline by other binaries
    int m_size;
    QString m_name;
    const MessageInfo* m_subMessageInfo;
};

#endif
