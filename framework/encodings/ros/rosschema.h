#ifndef ROSSCHEMA_H
#define ROSSCHEMA_H

#include "fieldinfo.h"

#include <QString>

#include <deque>
#include <vector>

/**
 * What a schema of ROS or DDS says, in whichever language: structs, their members and the types of these.
 *
 * Nothing here knows of bytes; that is what Ros::Layout is for.
 */
namespace Ros
{

enum class Kind : quint8
{
    Bool, // numbers first
    Char,
    Int8,
    UInt8,
    Int16,
    UInt16,
    WideChar,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Float32,
    Float64,
    LongDouble,
    String,
    WideString,
    Struct, // also a union
    Array,
    Sequence
};

inline bool isNumber(Kind kind)
{
    return kind <= Kind::LongDouble;
}

inline bool isInteger(Kind kind)
{
    return kind >= Kind::Char && kind <= Kind::UInt64;
}

inline bool isCollection(Kind kind)
{
    return kind >= Kind::Array;
}

/** Bytes of a number; 0 of what is none. */
int sizeOf(Kind kind);

/** Named values of a number, or its flags. */
struct Enumeration
{
    QString name;
    QVector<FieldInfo::Enumerator> values;
    Kind kind = Kind::UInt32;
    bool isBitmask = false;
};

struct Struct;

struct Type
{
    Kind kind = Kind::Bool;
    QString name;                             ///< as the schema writes it: "string<=5"
    quint32 count = 0;                        ///< of an array; of all else that has a length the greatest, 0 for any
    const Type* element = nullptr;            ///< of a collection
    Struct* structure = nullptr;              ///< null where a name is not looked up yet
    const Enumeration* enumeration = nullptr; ///< of a number
};

/** A place in the text of a schema, from 1. */
struct TextPlace
{
    int line = 0;
    int column = 0;
};

struct Member
{
    QString name;
    const Type* type = nullptr;
    QString description;
    QString unit;
    QString defaultText;
    quint32 id = 0;
    bool isOptional = false;
    bool isDefaultCase = false;  ///< of a union
    std::vector<qint64> cases{}; ///< of a union
    TextPlace place{};
};

struct Constant
{
    QString name;
    Kind kind = Kind::Bool;
    QString text;     ///< of the value
    quint64 bits = 0; ///< of an integer
    QString description;
    std::size_t before = 0; ///< number of the member that it stands before
};

enum class Extensibility : quint8
{
    Unspecified,
    Final,
    Appendable,
    Mutable
};

struct Struct
{
    QString name;
    QString description;
    std::vector<Member> members{}; ///< of a union the discriminator first
    std::vector<Constant> constants{};
    Extensibility extensibility = Extensibility::Unspecified;
    bool isUnion = false;
    bool isPadded = false; ///< without members, and a byte all the same
    enum Meaning : quint8
    {
        NoTime,
        Time,
        Duration
    } meaning = NoTime;
    std::size_t index = 0;

    /** Takes it for a time or a duration where its name and its members say so. */
    void findMeaning();
};

/** Limits of what is read from a schema, for both languages. */
const int GreatestSchemaSize = 16 * 1024 * 1024;
const int MostNames = 250 * 1000;
const int DeepestNesting = 100;

struct Schema
{
    Struct* addStruct(const QString& name);
    /** Counts a name; false when there are more than any system has. */
    bool addName() { return ++names <= MostNames; }
    /** A type whose address stays. */
    const Type* addType(const Type& type);
    const Type* addStructType(Struct* structure);
    /** A time or a duration: two numbers of these names. */
    Struct* addTime(const QString& name, Struct::Meaning meaning, Kind seconds, Kind nanos, bool isRos1);

    /**
     * Whether it can be used: no type is part of itself, and nothing is nested too deeply. To be called once all types
     * are known.
     */
    bool check(QString* error) const;

    std::deque<Struct> structs{};
    std::deque<Type> types{};
    std::deque<Enumeration> enumerations{};
    int names = 0;
};

/** What makes a schema unusable, and where in its text; there may be no such place. */
struct Fault
{
    TextPlace place{};
    QString text;

    /** "line 3, column 7: text" */
    QString toString() const;
};

/** The text of a schema, which need not be UTF-8. */
QString decodeSchema(const QByteArray& bytes);

/** Lines of a comment as one paragraph a line. */
QString paragraphs(const QStringList& lines);

/** What stands in the only "[...]" of a comment, such as "m/s"; empty where it is no unit. */
QString unitIn(const QString& comment);

/**
 * The number that a text of digits is, with sign and base; false when it is none or does not fit @p kind.
 *
 * @param bits  a signed one as its two's complement
 */
bool toInteger(const QString& text, Kind kind, quint64* bits);

/** Whether a number fits an integer of that kind; a bit mask and the like. */
bool fits(bool isNegative, quint64 magnitude, Kind kind);

} // namespace Ros

#endif
