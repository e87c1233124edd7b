#ifndef SPARKPLUGPAYLOAD_H
#define SPARKPLUGPAYLOAD_H

#include <QtGlobal>

#include <string_view>
#include <vector>

/** How payloads of Sparkplug B lie in bytes, which texts and bytes here point into. */
namespace Sparkplug
{

enum DataType
{
    UnknownType,
    Int8,
    Int16,
    Int32,
    Int64,
    UInt8,
    UInt16,
    UInt32,
    UInt64,
    Float,
    Double,
    Boolean,
    String,
    DateTime, ///< milliseconds since 1970
    Text,
    Uuid,
    DataSetType,
    Bytes,
    File,
    TemplateType,
    FirstArray = 22, ///< arrays of Int8 to UInt64, of Float and Double, of booleans, strings and times
    FloatArray = 30,
    DoubleArray,
    BooleanArray,
    StringArray,
    DateTimeArray,
    LastArray = DateTimeArray
};

/** A field of a message of Protocol Buffers. */
struct WireField
{
    quint32 number;
    int type;               ///< 0 varint, 1 and 5 fixed, 2 bytes
    quint64 value;          ///< unless it is bytes
    std::string_view bytes; ///< if it is
};

/** Takes a message of Protocol Buffers apart, field by field. */
class WireReader
{
public:
    explicit WireReader(std::string_view bytes)
        : m_rest(bytes)
    {
    }

    /** The next field; false at the end, or where there can be none. */
    bool next(WireField* field);
    /** Whether everything was a field. */
    bool isDone() const { return m_rest.empty(); }

private:
    bool readVarint(quint64* value);

    std::string_view m_rest;
};

/** A value as it is written, whatever it is of: a metric, a cell of a table, a parameter. */
struct Value
{
    enum Kind
    {
        None,
        Number, ///< whole, also booleans
        FloatNumber,
        DoubleNumber,
        Characters ///< also bytes, tables and templates
    };

    Kind kind = None;
    quint64 number = 0; ///< or the bits of a float or double
    std::string_view bytes;
};

struct Metric
{
    bool read(std::string_view bytes);

    std::string_view name; ///< empty where there is only an alias
    bool hasAlias = false;
    quint64 alias = 0;
    quint64 timestamp = 0; ///< milliseconds since 1970; 0 for none
    quint32 type = UnknownType;
    bool isHistorical = false;
    bool isNull = false;
    std::string_view unit; ///< of the property "engUnit"
    Value value;
};

struct Payload
{
    /** False where it is none. */
    bool read(std::string_view bytes);

    /** The metric of that name; null where there is none. */
    const Metric* find(std::string_view name) const;

    quint64 timestamp = 0; ///< milliseconds since 1970; 0 for none
    std::vector<Metric> metrics;
    bool hasNumber = false;
    quint64 number = 0;    ///< 0 to 255
    std::string_view uuid; ///< says what the body is
    std::string_view body;
};

struct DataSet
{
    bool read(std::string_view bytes);

    std::vector<std::string_view> columns;
    std::vector<quint32> types;
    std::vector<std::vector<Value>> rows;
};

/** The metrics of a template. */
std::vector<Metric> readTemplate(std::string_view bytes);

} // namespace Sparkplug

#endif
