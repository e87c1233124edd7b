#include "definitions.h"
#include "encoding.h"
#include "messagereference.h"
#include "readfields.h"

#include <cstddef>
#include <cstdint>

// Makes a type of the input as a schema, with and without a message, and reads messages of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    Definitions definitions;
    Encoding* const json = definitions.find(QStringLiteral("json"));
    TypeSchema schema{QStringLiteral("T"), "json", "jsonschema", bytes};
    QString error;
    const MessageInfo* const closed = json->makeType(schema, &error);
    for (const char* sample :
         {"{\"a\":1,\"b\":[{\"a\":2}],\"c\":{\"a\":{\"a\":[[]]}}}", "[1,\"x\",{\"a\":null}]", "5"}) {
        schema.sample = sample;
        const MessageInfo* const info = json->makeType(schema, &error);
        if (!info || (closed && info != closed))
            std::abort(); // what leaves nothing open does not become another
        readFields(MessageReference::adopt(info->newMessage(sample)).get(), true);
    }
    QStringList problems;
    definitions.publish(&problems);
    return 0;
}
