#include "definitions.h"
#include "encoding.h"
#include "messagereference.h"
#include "readfields.h"

#include <cstddef>
#include <cstdint>

// Makes a type of the input, whose first byte says in which language it is, and reads a message of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const struct
    {
        const char* messages;
        const char* schema;
        const char* type;
    } kinds[] = {{"cdr", "ros2msg", "p/msg/T"},
                 {"ros1", "ros1msg", "p/T"},
                 {"cdr", "omgidl", "T"},
                 {"cdr", "ros2idl", "p/msg/T"}};
    if (size == 0)
        return 0;
    const auto& kind = kinds[data[0] % 4];
    const QByteArray schema(reinterpret_cast<const char*>(data) + 1, static_cast<int>(size - 1));
    Definitions definitions;
    QString error;
    const MessageInfo* const info =
        definitions.find(QLatin1String(kind.messages))
            ->makeType({QLatin1String(kind.type), kind.messages, kind.schema, schema}, &error);
    if (!info == error.isEmpty())
        std::abort(); // it is either there, or somebody says why not
    for (const char* bytes : {"0001000001000000010000000200000061000000", "000b0000ff000000010000000100000002"})
        if (info)
            readFields(MessageReference::adopt(info->newMessage(QByteArray::fromHex(bytes).repeated(3))).get());
    return 0;
}
