#ifndef CORVEL_FIELDBYTES_H
#define CORVEL_FIELDBYTES_H

#include "fieldpath.h"

/**
 * Where a field stands in the bytes of a message, as Message::getData() has them, and which field stands at a place.
 *
 * Found as it is made, with what the field's encoding knows of it. Nothing is read beyond the bytes, however damaged
 * they are. GUI thread, as all of a message.
 */
class CORVELFRAMEWORK_EXPORT FieldBytes
{
public:
    enum End
    {
        Found,
        Absent,   ///< the message does not have the field, or not that value
        LeftOff,  ///< it has its value, which the sender needed no bytes for, such as zeros at the end
        Computed, ///< the field is computed from others
        Untold    ///< nobody can tell, such as of a field that says what is wrong, or where the message is damaged
    };

    /** Some bits. They are counted from the lowest of the first byte, so byte 2 has the bits 16 to 23. */
    struct Range
    {
        qint64 begin;
        qint64 end; ///< behind the last one
    };

    /** What is looked for at a place. */
    enum Grain
    {
        Bytes, ///< fields
        Bits   ///< the flags of a bit mask, too
    };

    /**
     * @param path     a path without steps means the whole message. Where it leads through a repeated sub-message
     *                 without saying which, that one is meant with all its values.
     * @param message  the one that was received, no sub-message; null, or one of another type, is Untold
     */
    FieldBytes(const FieldPath& path, const Message* message);

    End getEnd() const { return m_end; }
    /** In the order of the bytes; with what stands before a value to say what it is or how long. Empty unless Found. */
    const QVector<Range>& getRanges() const { return m_ranges; }

    /** The way to the field, as deep as there is one, whose value has that bit; without steps where none has. */
    static FieldPath at(const Message* message, qint64 bit, Grain grain);

    /** What stands in a byte that is no field's, such as "checksum"; empty when not known. */
    static QString getNameOfRest(const Message* message, qint64 byte);

private:
    End m_end;
    QVector<Range> m_ranges;
};

#endif
