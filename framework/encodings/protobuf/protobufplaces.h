#ifndef PROTOBUFPLACES_H
#define PROTOBUFPLACES_H

#include "fieldlocator.h"

#include <google/protobuf/descriptor.h>

#include <cstdint>

/** Where fields stand in the bytes of a message: what a parser reads and forgets. */
class ProtobufPlaces
{
public:
    /** @param holder  borrowed */
    explicit ProtobufPlaces(const FieldLocator::Holder* holder)
        : m_holder(holder)
    {
    }

    /** Where a field is that may come once; the last one counts, and of a sub-message all do, which are one then. */
    FieldBytes::End findOnly(const google::protobuf::FieldDescriptor* field, LocatedBytes* found) const;
    /** Where the value number @p index of @p count is; negative for all. */
    FieldBytes::End findOneOf(const google::protobuf::FieldDescriptor* field, int index, int count,
                              LocatedBytes* found) const;
    /** The same of the fields that @p type does not know. */
    FieldBytes::End findUnknown(const google::protobuf::Descriptor* type, int index, int count,
                                LocatedBytes* found) const;

private:
    /** A field on the wire. */
    struct Entry
    {
        std::uint32_t tag;
        qint64 begin;
        qint64 content; ///< behind the tag, and the length
        qint64 contentEnd;
        qint64 end;
    };

    template <typename Take>
    void forEach(Take take) const;

    const FieldLocator::Holder* m_holder;
};

#endif
