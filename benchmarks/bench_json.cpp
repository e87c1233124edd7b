// Reading messages of JSON and printing them as corvel-dump does, held against the parser's own parsing and printing of
// the same bytes.

#include "definitions.h"
#include "encoding.h"
#include "readmessage.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <string>

namespace
{

/** A message of 100 objects, as programs write them, and the type that it is of. */
struct Data
{
    Data()
    {
        bytes = "{\"time\":1718713540.123456,\"source\":\"front \\u00e9\",\"objects\":[";
        for (int i = 0; i < 100; ++i) {
            bytes += i == 0 ? "" : ",";
            bytes += "{\"id\":" + QByteArray::number(1000000007 * qint64(i)) + ",\"name\":\"object number " +
                     QByteArray::number(i) + "\",\"active\":" + (i % 3 ? "true" : "false") +
                     ",\"position\":{\"x\":" + QByteArray::number(i / 7.0, 'g', 17) +
                     ",\"y\":" + QByteArray::number(i / 3.0, 'g', 8) + ",\"z\":0.25},\"ranges\":[";
            for (int j = 0; j < 20; ++j)
                bytes += (j == 0 ? "" : ",") + QByteArray::number(j * 1.25);
            bytes += "]}";
        }
        bytes += "]}";
        QString error;
        info = definitions.find(QStringLiteral("json"))
                   ->makeType({QStringLiteral("bench"), "json", "", "", bytes}, &error);
    }

    Definitions definitions;
    const MessageInfo* info;
    QByteArray bytes;
};

const Data& data()
{
    static const Data data;
    return data;
}

} // namespace

static void parserParseAndMinify(benchmark::State& state)
{
    const simdjson::padded_string bytes(data().bytes.constData(), std::size_t(data().bytes.size()));
    simdjson::dom::parser parser;
    std::string json;
    for (auto _ : state) {
        json = simdjson::minify(parser.parse(bytes));
        benchmark::DoNotOptimize(json.data());
    }
    countBytes(state, data().bytes, json.size());
}
BENCHMARK(parserParseAndMinify);

static void parserParse(benchmark::State& state)
{
    const simdjson::padded_string bytes(data().bytes.constData(), std::size_t(data().bytes.size()));
    simdjson::dom::parser parser;
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.parse(bytes).error());
    countBytes(state, data().bytes, 0);
}
BENCHMARK(parserParse);

static void fieldsToJson(benchmark::State& state)
{
    benchmarkFieldsToJson(state, data().info, data().bytes);
}
BENCHMARK(fieldsToJson)->ArgName("interpreted")->Arg(0)->Arg(1);

static void oneField(benchmark::State& state)
{
    benchmarkOneField(state, data().info, data().bytes);
}
BENCHMARK(oneField);

BENCHMARK_MAIN();
