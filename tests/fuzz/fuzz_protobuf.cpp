#include "messagereference.h"
#include "readfields.h"
#include "schemafile.h"

#include <cstddef>
#include <cstdint>

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
    readPlaces(message.get());
    return 0;
}
