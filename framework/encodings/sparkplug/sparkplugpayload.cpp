#include "sparkplugpayload.h"

#include <QtEndian>

namespace Sparkplug
{

namespace
{

const int VarintType = 0;
const int Fixed64Type = 1;
const int BytesType = 2;
const int Fixed32Type = 5;
const int LongestVarint = 10;

const char UnitProperty[] = "engUnit";

/** A value of a message in which whole numbers, floats and so on are fields in a row, from @p first on. */
bool takeValue(const WireField& field, quint32 first, Value* value)
{
    // int, long, float, double, bool, string and, in metrics, bytes, table and template
    static const struct
    {
        int type;
        Value::Kind kind;
    } fields[] = {{VarintType, Value::Number},        {VarintType, Value::Number},    {Fixed32Type, Value::FloatNumber},
                  {Fixed64Type, Value::DoubleNumber}, {VarintType, Value::Number},    {BytesType, Value::Characters},
                  {BytesType, Value::Characters},     {BytesType, Value::Characters}, {BytesType, Value::Characters}};
    if (field.number < first || field.number >= first + sizeof fields / sizeof *fields ||
        field.type != fields[field.number - first].type)
        return false;
    value->kind = fields[field.number - first].kind;
    value->number = field.value;
    value->bytes = field.bytes;
    return true;
}

std::string_view readUnit(std::string_view properties)
{
    std::vector<std::string_view> keys;
    std::vector<std::string_view> values;
    WireField field;
    for (WireReader reader(properties); reader.next(&field);)
        if (field.type == BytesType && field.number <= 2)
            (field.number == 1 ? keys : values).push_back(field.bytes);
    for (std::size_t i = 0; i < keys.size() && i < values.size(); ++i)
        if (keys[i] == UnitProperty)
            for (WireReader reader(values[i]); reader.next(&field);)
                if (field.number == 8 && field.type == BytesType)
                    return field.bytes;
    return std::string_view();
}

} // namespace

bool WireReader::readVarint(quint64* value)
{
    *value = 0;
    for (int i = 0; i < LongestVarint && std::size_t(i) < m_rest.size(); ++i) {
        const quint8 byte = quint8(m_rest[std::size_t(i)]);
        *value |= quint64(byte & 0x7f) << 7 * i;
        if (byte < 0x80) {
            m_rest.remove_prefix(std::size_t(i) + 1);
            return true;
        }
    }
    return false;
}

bool WireReader::next(WireField* field)
{
    const std::string_view before = m_rest;
    quint64 key = 0;
    if (m_rest.empty() || !readVarint(&key) || key >> 3 == 0 || key >> 3 > 0x1fffffff) {
        m_rest = before;
        return false;
    }
    field->number = quint32(key >> 3);
    field->type = int(key & 7);
    field->value = 0;
    field->bytes = std::string_view();
    quint64 size = field->type == Fixed64Type ? 8 : 4;
    bool isGood = true;
    if (field->type == VarintType)
        return readVarint(&field->value) || (m_rest = before, false);
    if (field->type == BytesType)
        isGood = readVarint(&size);
    else
        isGood = field->type == Fixed64Type || field->type == Fixed32Type;
    if (!isGood || size > m_rest.size()) {
        m_rest = before;
        return false;
    }
    field->bytes = m_rest.substr(0, std::size_t(size));
    m_rest.remove_prefix(std::size_t(size));
    if (field->type == Fixed64Type)
        field->value = qFromLittleEndian<quint64>(field->bytes.data());
    else if (field->type == Fixed32Type)
        field->value = qFromLittleEndian<quint32>(field->bytes.data());
    return true;
}

bool Metric::read(std::string_view bytes)
{
    WireReader reader(bytes);
    WireField field;
    while (reader.next(&field)) {
        if (field.type == VarintType) {
            hasAlias = hasAlias || field.number == 2;
            alias = field.number == 2 ? field.value : alias;
            timestamp = field.number == 3 ? field.value : timestamp;
            type = field.number == 4 ? quint32(field.value) : type;
            isHistorical = field.number == 5 ? field.value != 0 : isHistorical;
            isNull = field.number == 7 ? field.value != 0 : isNull;
        } else if (field.type == BytesType && field.number == 1) {
            name = field.bytes;
        } else if (field.type == BytesType && field.number == 9) {
            unit = readUnit(field.bytes);
        }
        takeValue(field, 10, &value);
    }
    return reader.isDone();
}

bool Payload::read(std::string_view bytes)
{
    WireReader reader(bytes);
    WireField field;
    while (reader.next(&field)) {
        if (field.number == 1 && field.type == VarintType) {
            timestamp = field.value;
        } else if (field.number == 2 && field.type == BytesType) {
            metrics.emplace_back();
            if (!metrics.back().read(field.bytes))
                return false;
        } else if (field.number == 3 && field.type == VarintType) {
            hasNumber = field.value <= 255;
            number = field.value;
        } else if (field.type == BytesType && (field.number == 4 || field.number == 5)) {
            (field.number == 4 ? uuid : body) = field.bytes;
        }
    }
    return reader.isDone();
}

const Metric* Payload::find(std::string_view name) const
{
    for (const Metric& metric : metrics)
        if (metric.name == name)
            return &metric;
    return nullptr;
}

bool DataSet::read(std::string_view bytes)
{
    WireReader reader(bytes);
    WireField field;
    WireField cell;
    while (reader.next(&field)) {
        if (field.number == 2 && field.type == BytesType) {
            columns.push_back(field.bytes);
        } else if (field.number == 3 && field.type == VarintType) {
            types.push_back(quint32(field.value));
        } else if (field.number == 3 && field.type == BytesType) { // packed, as newer writers do
            std::string_view rest = field.bytes;
            for (; !rest.empty() && quint8(rest[0]) < 0x80; rest.remove_prefix(1))
                types.push_back(quint8(rest[0]));
        } else if (field.number == 4 && field.type == BytesType) {
            rows.emplace_back();
            for (WireReader row(field.bytes); row.next(&cell);) {
                Value value;
                if (cell.number == 1 && cell.type == BytesType)
                    for (WireReader element(cell.bytes); element.next(&cell);)
                        takeValue(cell, 1, &value);
                rows.back().push_back(value);
            }
        }
    }
    return reader.isDone();
}

std::vector<Metric> readTemplate(std::string_view bytes)
{
    std::vector<Metric> metrics;
    WireField field;
    for (WireReader reader(bytes); reader.next(&field);) {
        if (field.number != 2 || field.type != BytesType)
            continue;
        metrics.emplace_back();
        metrics.back().read(field.bytes);
    }
    return metrics;
}

} // namespace Sparkplug
