#include "definitions.h"
#include "encoding.h"
#include "messagereference.h"
#include "readfields.h"

#include <QJsonDocument>

#include <cstddef>
#include <cstdint>

static const MessageInfo* make(Definitions* definitions, const QByteArray& schema, const QByteArray& sample)
{
    QString error;
    Encoding* const json = definitions->find(QStringLiteral("json"));
    const MessageInfo* const info = json->makeType({QStringLiteral("T"), "json", "jsonschema", schema, sample}, &error);
    if (!info)
        std::abort();
    return info;
}

static MessageReference read(const MessageInfo* info, const QByteArray& bytes)
{
    const MessageReference message = MessageReference::adopt(info->newMessage(bytes));
    readFields(message.get(), true);
    readPlaces(message.get());
    return message;
}

// Reads the input as a message of the type that it is itself of, of that of a fixed message, and of a fixed schema.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    static const QByteArray fixed =
        "{\"a\":1,\"b\":\"x\",\"c\":{\"a\":[1,2],\"c\":null},\"d\":[{\"a\":true}],\"e\":[[1]]}";
    static const QByteArray schema = "{\"properties\":{\"a\":{\"type\":\"integer\"},\"b\":{\"type\":\"string\","
                                     "\"contentEncoding\":\"base64\"},\"c\":"
                                     "{\"$ref\":\"#\"},\"d\":{\"type\":\"array\",\"items\":{\"$ref\":\"#\"}},\"e\":{"
                                     "\"title\":\"time\",\"properties\":"
                                     "{\"sec\":{\"type\":\"integer\"},\"nsec\":{\"type\":\"integer\"}}}}}";
    static Definitions definitions;
    static const MessageInfo* const open = make(&definitions, "{}", fixed);
    static const MessageInfo* const closed = make(&definitions, schema, fixed);
    read(open, bytes);
    read(closed, bytes);
    // Types are kept for ever, so that of each message has definitions of its own.
    Definitions own;
    const MessageReference message = read(make(&own, QByteArray(), bytes), bytes);
    // What another parser reads is read to its end.
    if (QJsonDocument::fromJson(bytes).isNull())
        return 0;
    const FieldInfo* const problems = message->getInfo()->getFieldInfos().constLast();
    for (const FieldValue& problem : problems->getValues(message.get()))
        if (problem.toText().contains(QLatin1String("decoded")))
            std::abort();
    return 0;
}
