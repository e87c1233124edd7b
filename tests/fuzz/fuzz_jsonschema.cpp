#include "definitions.h"
#include "encoding.h"
#include "messagereference.h"
#include "readfields.h"

#include <cstddef>
#include <cstdint>

// Makes a type of the input as a schema, with and without a message, and reads messages of it. Which messages, and
// whether the type is published, takes turns: each of these takes longer than to read a schema.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    Definitions definitions;
    Encoding* const json = definitions.find(QStringLiteral("json"));
    TypeSchema schema{QStringLiteral("T"), "json", "jsonschema", bytes};
    QString error;
    const MessageInfo* const closed = json->makeType(schema, &error);
    static const char* const samples[] = {"{\"a\":1,\"b\":[{\"a\":2}],\"c\":{\"a\":{\"a\":[[]]}}}",
                                          "[1,\"x\",{\"a\":null}]", "5"};
    for (std::size_t i = 0; i < (closed ? 1 : 2); ++i) {
        schema.sample = samples[(size + i) % 3];
        const MessageInfo* const info = json->makeType(schema, &error);
        if (!info || (closed && info != closed))
            std::abort(); // what leaves nothing open does not become another
        readFields(MessageReference::adopt(info->newMessage(schema.sample)).get(), true);
    }
    QStringList problems;
    if (size % 4 == 0)
        definitions.publish(&problems);
    return 0;
}
