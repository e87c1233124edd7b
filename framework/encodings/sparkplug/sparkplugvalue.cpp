#include "sparkplugvalue.h"

#include <QtEndian>

#include <cmath>
#include <cstring>

using namespace Sparkplug;

namespace
{

const int DeepestTemplate = 8;
const quint64 LatestTime = Q_UINT64_C(253402300799999); // the year 9999

const char Null[] = "null";

QByteArray bytesOf(std::string_view view)
{
    return QByteArray(view.data(), int(view.size()));
}

QByteArray realText(double value, int digits)
{
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Infinity" : "Infinity";
    return QByteArray::number(value, 'g', digits);
}

QByteArray floatText(quint32 bits)
{
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return realText(double(value), 9);
}

QByteArray doubleText(quint64 bits)
{
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return realText(value, 17);
}

/** The low bits of a whole number as one of that type; writers put signed ones into wider fields in several ways. */
QByteArray wholeText(quint64 number, quint32 type)
{
    switch (type) {
    case Int8:
        return QByteArray::number(int(qint8(number)));
    case Int16:
        return QByteArray::number(int(qint16(number)));
    case Int32:
        return QByteArray::number(qint32(number));
    case Int64:
        return QByteArray::number(qint64(number));
    case UInt8:
        return QByteArray::number(uint(quint8(number)));
    case UInt16:
        return QByteArray::number(uint(quint16(number)));
    case UInt32:
        return QByteArray::number(quint32(number));
    default:
        return QByteArray::number(number);
    }
}

int sizeOf(quint32 type)
{
    switch (type) {
    case Int8:
    case UInt8:
        return 1;
    case Int16:
    case UInt16:
        return 2;
    case Int32:
    case UInt32:
    case Float:
        return 4;
    default:
        return 8;
    }
}

/** The type of the elements of an array. */
quint32 elementOf(quint32 array)
{
    return array == DateTimeArray ? quint32(DateTime) : array - FirstArray + Int8;
}

bool isArray(quint32 type)
{
    return type >= FirstArray && type <= LastArray;
}

QByteArray scalarText(const Value& value, quint32 type)
{
    const bool isCharacters = value.kind == Value::Characters;
    switch (type) {
    case Float:
    case Double:
        return value.kind == Value::FloatNumber    ? floatText(quint32(value.number))
               : value.kind == Value::DoubleNumber ? doubleText(value.number)
                                                   : QByteArray(Null);
    case Boolean:
        return value.kind != Value::Number ? QByteArray(Null) : value.number ? QByteArray("true") : QByteArray("false");
    case String:
    case Text:
    case Uuid:
        return isCharacters ? SparkplugValue::quoted(value.bytes) : QByteArray(Null);
    case Bytes:
    case File:
        return isCharacters ? '"' + bytesOf(value.bytes).toBase64() + '"' : QByteArray(Null);
    case DateTime:
        return value.kind == Value::Number ? SparkplugValue::timeText(value.number) : QByteArray(Null);
    default:
        return type >= Int8 && type <= UInt64 && value.kind == Value::Number ? wholeText(value.number, type)
                                                                             : QByteArray(Null);
    }
}

QByteArray scalarSchema(quint32 type)
{
    switch (type) {
    case Float:
    case Double:
        return "{\"type\":\"number\"";
    case Boolean:
        return "{\"type\":\"boolean\"";
    case String:
    case Text:
    case Uuid:
        return "{\"type\":\"string\"";
    case Bytes:
    case File:
        return "{\"type\":\"string\",\"contentEncoding\":\"base64\"";
    case DateTime:
        return SparkplugValue::timeSchema().chopped(1);
    default:
        return type >= Int8 && type <= UInt64 ? QByteArray("{\"type\":\"integer\"") : QByteArray();
    }
}

/** Elements that lie side by side, the lowest byte first. */
QByteArray packedText(std::string_view bytes, quint32 type)
{
    QByteArray text = "[";
    const std::size_t size = std::size_t(sizeOf(type));
    for (; bytes.size() >= size; bytes.remove_prefix(size)) {
        char wide[8] = {};
        std::memcpy(wide, bytes.data(), size);
        Value value;
        value.kind = type == Float ? Value::FloatNumber : type == Double ? Value::DoubleNumber : Value::Number;
        value.number = qFromLittleEndian<quint64>(wide);
        text += scalarText(value, type) + ',';
    }
    return (text.size() > 1 ? text.chopped(1) : text) + ']';
}

/** A number of booleans, and their bits from the highest of each byte down. */
QByteArray booleansText(std::string_view bytes)
{
    QByteArray text = "[";
    const quint64 told = bytes.size() < 4 ? 0 : qFromLittleEndian<quint32>(bytes.data());
    const quint64 count = qMin(told, bytes.size() < 4 ? 0 : 8 * quint64(bytes.size() - 4));
    for (quint64 i = 0; i < count; ++i)
        text += quint8(bytes[std::size_t(4 + i / 8)]) & 0x80 >> i % 8 ? "true," : "false,";
    return (text.size() > 1 ? text.chopped(1) : text) + ']';
}

QByteArray stringsText(std::string_view bytes)
{
    QByteArray text = "[";
    while (!bytes.empty()) {
        const std::size_t end = qMin(bytes.find('\0'), bytes.size());
        text += SparkplugValue::quoted(bytes.substr(0, end)) + ',';
        bytes.remove_prefix(qMin(end + 1, bytes.size()));
    }
    return (text.size() > 1 ? text.chopped(1) : text) + ']';
}

QByteArray arrayText(std::string_view bytes, quint32 type)
{
    return type == BooleanArray  ? booleansText(bytes)
           : type == StringArray ? stringsText(bytes)
                                 : packedText(bytes, elementOf(type));
}

QByteArray dataSetText(std::string_view bytes)
{
    DataSet table;
    if (!table.read(bytes))
        return Null;
    QByteArray text = "[";
    for (const std::vector<Value>& row : table.rows) {
        text += text.size() > 1 ? ",{" : "{";
        for (std::size_t i = 0; i < row.size() && i < table.columns.size() && i < table.types.size(); ++i)
            text += (i > 0 ? "," : "") + SparkplugValue::quoted(table.columns[i]) + ':' +
                    scalarText(row[i], table.types[i]);
        text += '}';
    }
    return text + ']';
}

QByteArray objectSchema(const QByteArray& properties)
{
    return "{\"type\":\"object\",\"properties\":{" + properties + '}';
}

QByteArray dataSetSchema(std::string_view bytes)
{
    DataSet table;
    table.read(bytes);
    QByteArray properties;
    for (std::size_t i = 0; i < table.columns.size() && i < table.types.size(); ++i) {
        const QByteArray schema = scalarSchema(table.types[i]);
        if (!schema.isEmpty())
            properties +=
                (properties.isEmpty() ? "" : ",") + SparkplugValue::quoted(table.columns[i]) + ':' + schema + '}';
    }
    return properties.isEmpty() ? QByteArray() : "{\"type\":\"array\",\"items\":" + objectSchema(properties) + '}';
}

} // namespace

QByteArray SparkplugValue::quoted(std::string_view utf8)
{
    // What is no UTF-8 must not make something else of what follows.
    const QByteArray valid = QString::fromUtf8(utf8.data(), int(utf8.size())).toUtf8();
    QByteArray text = "\"";
    for (const char character : valid) {
        if (character == '"' || character == '\\')
            text += QByteArray("\\") + character;
        else if (quint8(character) < 0x20)
            text += "\\u00" + QByteArray::number(quint8(character), 16).rightJustified(2, '0');
        else
            text += character;
    }
    return text + '"';
}

QByteArray SparkplugValue::timeText(quint64 milliseconds)
{
    if (milliseconds == 0 || milliseconds > LatestTime)
        return Null;
    return "{\"sec\":" + QByteArray::number(milliseconds / 1000) +
           ",\"nsec\":" + QByteArray::number(milliseconds % 1000 * 1000000) + '}';
}

QByteArray SparkplugValue::timeSchema()
{
    return "{\"title\":\"time\",\"type\":\"object\",\"properties\":{\"sec\":{\"type\":\"integer\"},\"nsec\":{\"type\":"
           "\"integer\"}}}";
}

quint32 SparkplugValue::typeOf(const Metric& metric)
{
    if (metric.type != UnknownType)
        return metric.type;
    return metric.value.kind == Value::Number         ? quint32(Int64)
           : metric.value.kind == Value::FloatNumber  ? quint32(Float)
           : metric.value.kind == Value::DoubleNumber ? quint32(Double)
           : metric.value.kind == Value::Characters   ? quint32(String)
                                                      : quint32(UnknownType);
}

QByteArray SparkplugValue::text(const Metric& metric, quint32 type, int depth)
{
    const Value& value = metric.value;
    if (metric.isNull || value.kind == Value::None)
        return Null;
    if (value.kind == Value::Characters && isArray(type))
        return arrayText(value.bytes, type);
    if (value.kind == Value::Characters && type == DataSetType)
        return dataSetText(value.bytes);
    if (value.kind != Value::Characters || type != TemplateType)
        return scalarText(value, type);
    if (depth >= DeepestTemplate)
        return Null;
    QByteArray members;
    for (const Metric& member : readTemplate(value.bytes))
        members += (members.isEmpty() ? "" : ",") + quoted(member.name) + ':' + text(member, typeOf(member), depth + 1);
    return '{' + members + '}';
}

QByteArray SparkplugValue::schema(const Metric& metric, quint32 type, int depth)
{
    QByteArray schema;
    if (isArray(type)) {
        const QByteArray element = scalarSchema(type == BooleanArray  ? quint32(Boolean)
                                                : type == StringArray ? quint32(String)
                                                                      : elementOf(type));
        schema = "{\"type\":\"array\",\"items\":" + element + '}';
    } else if (type == DataSetType) {
        schema = dataSetSchema(metric.value.bytes);
    } else if (type == TemplateType && depth < DeepestTemplate) {
        QByteArray properties;
        for (const Metric& member : readTemplate(metric.value.bytes)) {
            const QByteArray one = SparkplugValue::schema(member, typeOf(member), depth + 1);
            if (!one.isEmpty() && !member.name.empty())
                properties += (properties.isEmpty() ? "" : ",") + quoted(member.name) + ':' + one;
        }
        if (!properties.isEmpty())
            schema = objectSchema(properties);
    } else {
        schema = scalarSchema(type);
    }
    if (schema.isEmpty())
        return schema;
    if (!metric.unit.empty())
        schema += ",\"unit\":" + quoted(metric.unit);
    return schema + '}';
}
