// Decoding messages of Protocol Buffers to JSON as corvel-dump prints them, held against the library's own parsing and
// JSON printing of the same bytes.

#include "readmessage.h"
#include "schemafile.h"

#include <benchmark/benchmark.h>
#include <google/protobuf/compiler/importer.h>
#include <google/protobuf/dynamic_message.h>
#include <google/protobuf/util/json_util.h>

#include <memory>

namespace
{

const char schemaText[] = R"(
syntax = "proto3";
package bench;
message Vector { double x = 1; double y = 2; double z = 3; }
message Base { Vector position = 1; Vector velocity = 2; Vector size = 3; optional double mass = 4; }
enum Kind { UNKNOWN = 0; CAR = 1; TRUCK = 2; }
message Light { bool on = 1; Kind kind = 2; uint32 level = 3; }
message Object {
  uint64 id = 1;
  Base base = 2;
  Kind kind = 3;
  string name = 4;
  repeated Light lights = 5;
  repeated float ranges = 6;
  map<string, int32> tags = 7;
  bytes raw = 8;
}
message View { int64 time = 1; repeated Object objects = 2; string source = 3; }
)";

void fillVector(google::protobuf::Message* vector, double start)
{
    for (int i = 0; i < 3; ++i)
        vector->GetReflection()->SetDouble(vector, vector->GetDescriptor()->field(i), start + i * 0.37);
}

/** The schema twice, and a message of 100 objects. */
class Data
{
public:
    static const Data& instance()
    {
        static const Data data;
        return data;
    }

    const MessageInfo* info;
    const google::protobuf::Message* prototype;
    QByteArray bytes;

private:
    Data()
        : m_file(QStringLiteral("bench.proto"), schemaText)
        , m_importer(&m_tree, nullptr)
    {
        info = m_file.load(&m_format, QStringLiteral("bench.View"));

        m_tree.MapPath("", m_file.getFolder().toStdString());
        const google::protobuf::FileDescriptor* const schema = m_importer.Import("bench.proto");
        if (!schema)
            std::abort();
        prototype = m_factory.GetPrototype(schema->FindMessageTypeByName("View"));
        const std::unique_ptr<google::protobuf::Message> view(prototype->New());
        view->GetReflection()->SetInt64(view.get(), field(*view, "time"), 1718713540123456);
        for (int i = 0; i < 100; ++i)
            fillObject(view->GetReflection()->AddMessage(view.get(), field(*view, "objects")), i);
        const std::string serialized = view->SerializeAsString();
        bytes = QByteArray(serialized.data(), static_cast<int>(serialized.size()));
    }

    static const google::protobuf::FieldDescriptor* field(const google::protobuf::Message& message, const char* name)
    {
        return message.GetDescriptor()->FindFieldByName(name);
    }

    static void fillObject(google::protobuf::Message* object, int number)
    {
        const google::protobuf::Reflection* const reflection = object->GetReflection();
        reflection->SetUInt64(object, field(*object, "id"), 1000000007ull * static_cast<unsigned>(number));
        reflection->SetEnumValue(object, field(*object, "kind"), number % 3);
        reflection->SetString(object, field(*object, "name"), "object number " + std::to_string(number));
        reflection->SetString(object, field(*object, "raw"), std::string(16, static_cast<char>(number)));
        google::protobuf::Message* const base = reflection->MutableMessage(object, field(*object, "base"));
        for (const char* name : {"position", "velocity", "size"})
            fillVector(base->GetReflection()->MutableMessage(base, field(*base, name)), number / 7.0);
        for (int i = 0; i < 4; ++i) {
            google::protobuf::Message* const light = reflection->AddMessage(object, field(*object, "lights"));
            light->GetReflection()->SetUInt32(light, field(*light, "level"), static_cast<unsigned>(i * number));
        }
        for (int i = 0; i < 20; ++i)
            reflection->AddFloat(object, field(*object, "ranges"), static_cast<float>(i) * 1.25f);
        for (const char* key : {"lane", "group"}) {
            google::protobuf::Message* const tag = reflection->AddMessage(object, field(*object, "tags"));
            tag->GetReflection()->SetString(tag, field(*tag, "key"), key);
            tag->GetReflection()->SetInt32(tag, field(*tag, "value"), number);
        }
    }

    const SchemaFile m_file;
    ProtobufFormat m_format;
    google::protobuf::compiler::DiskSourceTree m_tree;
    google::protobuf::compiler::Importer m_importer;
    google::protobuf::DynamicMessageFactory m_factory;
};

} // namespace

static void libraryParseAndJson(benchmark::State& state)
{
    const Data& data = Data::instance();
    std::string json;
    google::protobuf::util::JsonPrintOptions options;
    options.always_print_primitive_fields = true;
    options.always_print_enums_as_ints = true;
    options.preserve_proto_field_names = true;
    for (auto _ : state) {
        const std::unique_ptr<google::protobuf::Message> message(data.prototype->New());
        message->ParseFromArray(data.bytes.constData(), static_cast<int>(data.bytes.size()));
        json.clear();
        if (!google::protobuf::util::MessageToJsonString(*message, &json, options).ok())
            std::abort();
        benchmark::DoNotOptimize(json.data());
    }
    countBytes(state, data.bytes, json.size());
}
BENCHMARK(libraryParseAndJson);

static void libraryParse(benchmark::State& state)
{
    const Data& data = Data::instance();
    for (auto _ : state) {
        const std::unique_ptr<google::protobuf::Message> message(data.prototype->New());
        message->ParseFromArray(data.bytes.constData(), static_cast<int>(data.bytes.size()));
        benchmark::DoNotOptimize(message.get());
    }
    countBytes(state, data.bytes, 0);
}
BENCHMARK(libraryParse);

static void fieldsToJson(benchmark::State& state)
{
    benchmarkFieldsToJson(state, Data::instance().info, Data::instance().bytes);
}
BENCHMARK(fieldsToJson)->ArgName("interpreted")->Arg(0)->Arg(1);

static void oneField(benchmark::State& state)
{
    benchmarkOneField(state, Data::instance().info, Data::instance().bytes);
}
BENCHMARK(oneField);

BENCHMARK_MAIN();
