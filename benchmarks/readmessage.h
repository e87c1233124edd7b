#ifndef READMESSAGE_H
#define READMESSAGE_H

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagejson.h"
#include "messagereference.h"

#include <benchmark/benchmark.h>

#include <string>

inline void countBytes(benchmark::State& state, const QByteArray& bytes, std::size_t jsonSize)
{
    state.SetBytesProcessed(std::int64_t(state.iterations()) * bytes.size());
    state.counters["json"] = double(jsonSize);
}

/** Reads a message and prints it as corvel-dump does. */
inline void benchmarkFieldsToJson(benchmark::State& state, const MessageInfo* info, const QByteArray& bytes)
{
    MessageJson printer(state.range(0) != 0);
    std::string json;
    for (auto _ : state) {
        const MessageReference message = MessageReference::adopt(info->newMessage(bytes));
        json.clear();
        printer.appendFields(message.get(), &json);
        benchmark::DoNotOptimize(json.data());
    }
    countBytes(state, bytes, json.size());
}

/** What a message costs of which one field, "time", is looked at. */
inline void benchmarkOneField(benchmark::State& state, const MessageInfo* info, const QByteArray& bytes)
{
    const FieldInfo* const field = info->getFieldInfo(QStringLiteral("time"));
    for (auto _ : state) {
        const MessageReference message = MessageReference::adopt(info->newMessage(bytes));
        benchmark::DoNotOptimize(field->getValue(message.get(), 0).toDouble());
    }
    countBytes(state, bytes, 0);
}

#endif
