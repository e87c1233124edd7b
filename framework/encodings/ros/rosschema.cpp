#include "rosschema.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace Ros
{

int sizeOf(Kind kind)
{
    static const int sizes[] = {1, 1, 1, 1, 2, 2, 2, 4, 4, 8, 8, 4, 8, 16};
    return isNumber(kind) ? sizes[static_cast<int>(kind)] : 0;
}

void Struct::findMeaning()
{
    static const QRegularExpression time(QStringLiteral("^builtin_interfaces(?:/msg|::msg|)(?:/|::)(Time|Duration)$"));
    const QRegularExpressionMatch found = time.match(name);
    if (found.hasMatch() && members.size() == 2 && members[0].type->kind == Kind::Int32 &&
        members[1].type->kind == Kind::UInt32)
        meaning = found.captured(1) == QLatin1String("Time") ? Time : Duration;
}

Struct* Schema::addStruct(const QString& name)
{
    structs.emplace_back();
    structs.back().name = name;
    structs.back().index = structs.size() - 1;
    return &structs.back();
}

const Type* Schema::addType(const Type& type)
{
    types.push_back(type);
    return &types.back();
}

const Type* Schema::addStructType(Struct* structure)
{
    Type type;
    type.kind = Kind::Struct;
    type.name = structure->name;
    type.structure = structure;
    return addType(type);
}

Struct* Schema::addTime(const QString& name, Struct::Meaning meaning, Kind seconds, Kind nanos, bool isRos1)
{
    Struct* const time = addStruct(name);
    time->meaning = meaning;
    for (const Kind kind : {seconds, nanos}) {
        Type type;
        type.kind = kind;
        type.name = kind == Kind::Int32 ? QStringLiteral("int32") : QStringLiteral("uint32");
        Member part;
        part.name = QLatin1String(time->members.empty() ? "sec" : isRos1 ? "nsec" : "nanosec");
        if (isRos1)
            part.name += QLatin1Char('s');
        part.type = addType(type);
        part.id = static_cast<quint32>(time->members.size());
        time->members.push_back(part);
    }
    return time;
}

namespace
{

/** Follows members down to what they consist of. */
class Descent
{
public:
    explicit Descent(const Schema& schema)
        : m_heights(schema.structs.size(), Unseen)
    {
    }

    /** How many structs are nested in it at most; -1 with @p error set. */
    int heightOf(const Struct* structure, int depth, QString* error)
    {
        int& height = m_heights[structure->index];
        if (height == Open)
            return fail(QCoreApplication::translate("RosSchema", "%1 is part of itself"), structure, error);
        if (height != Unseen)
            return height;
        if (depth >= DeepestNesting)
            return fail(QCoreApplication::translate("RosSchema", "%1 is nested too deeply"), structure, error);
        height = Open;
        int greatest = 0;
        for (const Member& member : structure->members) {
            int level = 1;
            const Type* type = member.type;
            for (; type->element; type = type->element)
                ++level;
            const int inner = type->structure ? heightOf(type->structure, depth + level, error) : 0;
            if (inner < 0)
                return inner;
            greatest = std::max(greatest, inner + level);
        }
        if (greatest > DeepestNesting)
            return fail(QCoreApplication::translate("RosSchema", "%1 has parts nested too deeply"), structure, error);
        m_heights[structure->index] = greatest;
        return greatest;
    }

private:
    enum
    {
        Unseen = -1,
        Open = -2
    };

    static int fail(const QString& text, const Struct* structure, QString* error)
    {
        *error = text.arg(structure->name);
        return -1;
    }

    std::vector<int> m_heights;
};

} // namespace

bool Schema::check(QString* error) const
{
    Descent descent(*this);
    for (const Struct& structure : structs)
        if (descent.heightOf(&structure, 0, error) < 0)
            return false;
    return true;
}

QString Fault::toString() const
{
    if (place.line == 0)
        return text;
    return QCoreApplication::translate("RosSchema", "line %1, column %2: %3")
        .arg(place.line)
        .arg(place.column)
        .arg(text);
}

QString decodeSchema(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes); // without the mark that files can begin with
    return text.contains(QChar(QChar::ReplacementCharacter)) ? QString::fromLatin1(bytes) : text;
}

QString paragraphs(const QStringList& lines)
{
    QStringList texts;
    bool goesOn = false;
    for (const QString& line : lines) {
        const QString text = line.simplified();
        if (text.isEmpty())
            goesOn = false;
        else if (goesOn)
            texts.last() += QLatin1Char(' ') + text;
        else
            texts.append(text);
        goesOn = !text.isEmpty();
    }
    return texts.join(QLatin1Char('\n'));
}

QString unitIn(const QString& comment)
{
    static const QRegularExpression bracket(QStringLiteral("\\[([^\\[\\]]*)\\]"));
    QRegularExpressionMatchIterator found = bracket.globalMatch(comment);
    if (!found.hasNext())
        return QString();
    const QString unit = found.next().captured(1).trimmed();
    return found.hasNext() || unit.contains(QLatin1Char(',')) ? QString() : unit;
}

bool fits(bool isNegative, quint64 magnitude, Kind kind)
{
    const int bits = 8 * sizeOf(kind);
    const bool isSigned = kind == Kind::Int8 || kind == Kind::Int16 || kind == Kind::Int32 || kind == Kind::Int64;
    if (isNegative && magnitude != 0)
        return isSigned && magnitude <= quint64(1) << (bits - 1);
    return bits - int(isSigned) >= 64 || magnitude >> (bits - int(isSigned)) == 0;
}

bool toInteger(const QString& text, Kind kind, quint64* bits)
{
    QString digits = text;
    const bool isNegative = digits.startsWith(QLatin1Char('-'));
    if (isNegative || digits.startsWith(QLatin1Char('+')))
        digits.remove(0, 1);
    int base = 10;
    if (digits.size() > 2 && digits.at(0) == QLatin1Char('0')) {
        const char letter = digits.at(1).toLower().toLatin1();
        base = letter == 'x' ? 16 : letter == 'o' ? 8 : letter == 'b' ? 2 : 10;
        if (base != 10)
            digits.remove(0, 2);
    }
    bool good = !digits.isEmpty() && digits.at(0).isLetterOrNumber();
    const quint64 magnitude = good ? digits.toULongLong(&good, base) : 0;
    *bits = isNegative ? ~magnitude + 1 : magnitude;
    return good && fits(isNegative, magnitude, kind);
}

} // namespace Ros
