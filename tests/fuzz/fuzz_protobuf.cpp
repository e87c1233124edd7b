#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "schemafile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace
{

const char schemaText[] = R"(
syntax = "proto2";
package fuzz;
import "google/protobuf/timestamp.proto";
enum Color { RED = 0; GREEN = 1; }
message All {
  required int32 needed = 1;
  optional string text = 2;
  optional bytes blob = 3;
  optional Color color = 4;
  optional All child = 5;
  repeated All children = 6;
  repeated sint64 packed = 7 [packed = true];
  repeated double numbers = 8;
  optional group Pair = 9 { optional int32 left = 1; optional All all = 2; }
  oneof choice { int64 number = 10; New newer = 11; }
  map<string, All> by_name = 12;
  optional google.protobuf.Timestamp time = 13;
  extensions 100 to 199;
}
extend All { optional int32 extra = 100; }
message New { optional string name = 1; repeated string names = 2; }
)";

void readFields(const Message* message)
{
    for (const FieldInfo* field : message->getInfo()->getFieldInfos()) {
        const unsigned int count = field->getValueCount(message);
        if (!field->isRepeated() && count > 1)
            std::abort();
        for (unsigned int i = 0; i < count; ++i) {
            const FieldValue value = field->getValue(message, i);
            if (!value.isValid())
                std::abort(); // what is counted is there
            field->getInterpretedString(value, true);
            for (const FieldInfo* part : field->getSubFieldInfos())
                part->getValue(message, i);
            if (value.getSubMessage())
                readFields(value.getSubMessage());
        }
        if (field->getValue(message, count).isValid())
            std::abort();
    }
}

} // namespace

// A type with every kind of field.
static const MessageInfo* loadType()
{
    static ProtobufFormat format;
    return SchemaFile(QStringLiteral("fuzz.proto"), schemaText).load(&format, QStringLiteral("fuzz.All"));
}

// Decodes the input as a message of a fixed type and reads every field of it, as deep as it goes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const MessageInfo* const info = loadType();
    const MessageReference message = MessageReference::adopt(
        info->newMessage(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size))));
    readFields(message.get());
    return 0;
}
