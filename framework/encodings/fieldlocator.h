#ifndef FIELDLOCATOR_H
#define FIELDLOCATOR_H

#include "fieldbytes.h"

/** Bytes from @p begin to before @p end. */
struct ByteRange
{
    qint64 begin;
    qint64 end;
};

/** Where something stands, in the order of the bytes. */
struct LocatedBytes
{
    QVector<ByteRange> bytes;
    QVector<ByteRange> inside; ///< of a sub-message: where its fields are
};

/** What the description of a field implements, beside being a FieldInfo, that can tell where its values stand. */
class FieldLocator
{
public:
    /** A message that has the field, or a sub-message. */
    struct Holder
    {
        const Message* message;
        const QByteArray* bytes;   ///< of the whole message
        QVector<ByteRange> places; ///< in these, of this one
    };

    virtual ~FieldLocator() {}

    /**
     * Where the value number @p index is, which there is; negative for all of them.
     *
     * @param found  empty before; must not be null
     */
    virtual FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const = 0;

    /** What a byte of a message is in which no field stands. */
    virtual QString getNameOfRest(const QByteArray& message, qint64 byte) const;
};

#endif
