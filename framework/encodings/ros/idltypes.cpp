#include "idlparser.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>
#include <limits>

using namespace Ros;

namespace
{

// What binds closest comes last.
const char* const signs[][3] = {{"|"}, {"^"}, {"&"}, {"<<", ">>"}, {"+", "-"}, {"*", "/", "%"}};
const int LevelCount = 6;

const int DeepestValue = 50;

// What others are about does not matter to who reads.
bool isKnown(const QString& annotation)
{
    static const char* const known[] = {"verbatim", "unit",          "default",   "id",    "hashid",
                                        "autoid",   "extensibility", "bit_bound", "value", "position"};
    return std::find(std::begin(known), std::end(known), annotation) != std::end(known);
}

} // namespace

IdlParser::Annotations IdlParser::readAnnotations()
{
    Annotations annotations;
    while (takeIf("@")) {
        const QString name = readScopedName();
        // What it looks like is of no interest.
        if (name == QLatin1String("annotation")) {
            while (!takeIf("}"))
                if (take().kind == IdlToken::End)
                    expect("}");
            takeIf(";");
            continue;
        }
        QHash<QString, Value> values;
        values.insert(QString(), Value());
        if (takeIf("(")) {
            if (isKnown(name))
                readArguments(&values);
            else
                skipArguments();
        }
        if (name != QLatin1String("verbatim"))
            annotations.values.insert(name, values.value(QString()));
        else if (values.value(QStringLiteral("language")).text == QLatin1String("comment"))
            annotations.description = paragraphs(values.value(QStringLiteral("text")).text.split(QLatin1Char('\n')));
    }
    return annotations;
}

void IdlParser::readArguments(QHash<QString, Value>* values)
{
    while (!takeIf(")")) {
        const bool isNamed = peek().kind == IdlToken::Name && peek(1).is("=");
        const QString key = isNamed ? takeName() : QString();
        if (isNamed)
            take();
        // A word that is no constant belongs to the annotation.
        const bool isWord = peek().kind == IdlToken::Name && (peek(1).is(")") || peek(1).is(",")) &&
                            !find(peek().text) && !peek().is("TRUE") && !peek().is("FALSE");
        Value value;
        value.kind = Value::Text;
        if (isWord)
            value.text = take().text;
        else
            value = readValue();
        values->insert(key, value);
        values->insert(QString(), values->value(QStringLiteral("value"), value));
        if (!takeIf(",") && !peek().is(")"))
            expect(")");
    }
}

void IdlParser::skipArguments()
{
    for (int depth = 1; depth > 0;) {
        if (peek().kind == IdlToken::End)
            expect(")");
        depth += int(peek().is("(")) - int(peek().is(")"));
        take();
    }
}

QString IdlParser::readScopedName()
{
    QString name;
    if (takeIf("::"))
        name = QStringLiteral("::");
    name += takeName();
    while (takeIf("::"))
        name += QStringLiteral("::") + takeName();
    return name;
}

bool IdlParser::readPrimitive(Type* type)
{
    static const struct
    {
        const char* name;
        Kind kind;
    } words[] = {
        {"boolean", Kind::Bool},  {"octet", Kind::UInt8},        {"char", Kind::Char},   {"wchar", Kind::WideChar},
        {"float", Kind::Float32}, {"double", Kind::Float64},     {"short", Kind::Int16}, {"long", Kind::Int32},
        {"int8", Kind::Int8},     {"uint8", Kind::UInt8},        {"int16", Kind::Int16}, {"uint16", Kind::UInt16},
        {"int32", Kind::Int32},   {"uint32", Kind::UInt32},      {"int64", Kind::Int64}, {"uint64", Kind::UInt64},
        {"string", Kind::String}, {"wstring", Kind::WideString},
    };
    const bool isUnsigned = takeIf("unsigned");
    for (const auto& word : words) {
        if (!takeIf(word.name))
            continue;
        type->kind = word.kind;
        type->name = QLatin1String(word.name);
        if (word.kind == Kind::Int32 && type->name == QLatin1String("long")) {
            if (takeIf("long")) {
                type->kind = Kind::Int64;
                type->name = QStringLiteral("long long");
            } else if (!isUnsigned && takeIf("double")) {
                type->kind = Kind::LongDouble;
                type->name = QStringLiteral("long double");
            }
        }
        if (isUnsigned) {
            type->name.prepend(QStringLiteral("unsigned "));
            type->kind = type->kind == Kind::Int16   ? Kind::UInt16
                         : type->kind == Kind::Int32 ? Kind::UInt32
                                                     : Kind::UInt64;
            if (word.kind != Kind::Int16 && word.kind != Kind::Int32)
                fail(QCoreApplication::translate("RosSchema", "\"%1\" is no type").arg(type->name));
        }
        return true;
    }
    return false;
}

const Type* IdlParser::readType()
{
    if (peek().is("sequence"))
        return readCollection();
    const QString word = peek().text;
    Type type;
    if (readPrimitive(&type)) {
        if ((type.kind == Kind::String || type.kind == Kind::WideString) && takeIf("<")) {
            ++m_bound;
            type.count = readSize();
            --m_bound;
            expect(">");
            type.name += QStringLiteral("<%1>").arg(type.count);
        }
        return m_schema->addType(type);
    }
    if (peek().kind != IdlToken::Name && !peek().is("::"))
        fail(QCoreApplication::translate("RosSchema", "a type is expected here"));
    const IdlToken first = peek();
    const QString name = readScopedName();
    const Symbol* const found = find(name);
    if (found && found->type)
        return found->type;
    const bool isTime = name.endsWith(QLatin1String("builtin_interfaces::msg::Time"));
    if (!isTime && !name.endsWith(QLatin1String("builtin_interfaces::msg::Duration")))
        throw Fault{first.place, QCoreApplication::translate("RosSchema", "the type %1 is not defined").arg(name)};
    Struct*& time = m_structs[name];
    if (!time)
        time = m_schema->addTime(shownName(name), isTime ? Struct::Time : Struct::Duration, Kind::Int32, Kind::UInt32,
                                 false);
    return m_schema->addStructType(time);
}

const Type* IdlParser::readCollection()
{
    take();
    if (++m_depth > DeepestNesting)
        fail(QCoreApplication::translate("RosSchema", "nested too deeply"));
    expect("<");
    ++m_bound;
    const Type* const element = readType();
    const quint32 bound = takeIf(",") ? readSize() : 0;
    --m_bound;
    expect(">");
    --m_depth;
    const QString size = bound > 0 ? QStringLiteral(", %1").arg(bound) : QString();
    return collectionOf(element, Kind::Sequence, bound, QStringLiteral("sequence<%1%2>").arg(element->name, size));
}

/** Elements that are collections become structs of their own, with the one field "values". */
const Type* IdlParser::collectionOf(const Type* element, Kind kind, quint32 count, const QString& name)
{
    if (isCollection(element->kind)) {
        Struct* const inner = m_schema->addStruct(element->name);
        inner->extensibility = Extensibility::Final;
        Member values;
        values.name = QStringLiteral("values");
        values.type = element;
        inner->members.push_back(values);
        element = m_schema->addStructType(inner);
    }
    Type type;
    type.kind = kind;
    // Names of what is within one another grow without end.
    type.name = name.left(200);
    type.count = count;
    type.element = element;
    return m_schema->addType(type);
}

/** A name, with the sizes of an array behind it; several of these are one array of as many elements. */
const Type* IdlParser::readDeclarator(const Type* type, QString* name)
{
    *name = takeName();
    if (!peek().is("["))
        return type;
    QString sizes;
    quint64 count = 1;
    while (takeIf("[")) {
        const quint32 size = readSize();
        sizes += QStringLiteral("[%1]").arg(size);
        count *= size;
        if (count >= Q_UINT64_C(0x80000000))
            fail(QCoreApplication::translate("RosSchema", "no message has as many elements"));
        expect("]");
    }
    return collectionOf(type, Kind::Array, static_cast<quint32>(count), type->name + sizes);
}

quint32 IdlParser::readSize()
{
    const Value size = readValue();
    if (size.kind != Value::Integer || size.isNegative || size.bits == 0 || size.bits > 0xffffffffu)
        fail(QCoreApplication::translate("RosSchema", "\"%1\" is no size").arg(textOf(size)));
    return static_cast<quint32>(size.bits);
}

IdlParser::Value IdlParser::readValue(int level)
{
    if (level == LevelCount)
        return readOperand();
    Value left = readValue(level + 1);
    for (;;) {
        QString sign;
        for (const char* known : signs[level]) {
            const bool isPair = known && known[1];
            const char first[] = {known ? known[0] : '\0', '\0'};
            if (!known || !peek().is(first) || (isPair && (!peek(1).is(first) || !peek(1).isJoined)) ||
                (isPair && m_bound > 0 && known[0] == '>'))
                continue;
            sign = QLatin1String(known);
            take();
            if (isPair)
                take();
            break;
        }
        if (sign.isEmpty())
            return left;
        left = combine(sign, left, readValue(level + 1));
    }
}

IdlParser::Value IdlParser::readOperand()
{
    if (++m_depth > DeepestValue)
        fail(QCoreApplication::translate("RosSchema", "nested too deeply"));
    Value value;
    if (takeIf("(")) {
        const int bound = m_bound;
        m_bound = 0;
        value = readValue();
        m_bound = bound;
        expect(")");
    } else if (takeIf("-")) {
        Value zero;
        value = readOperand();
        if (value.kind == Value::Integer && value.bits == quint64(1) << 63)
            value.isNegative = true;
        else
            value = combine(QStringLiteral("-"), zero, value);
    } else if (takeIf("+")) {
        value = readOperand();
    } else if (takeIf("~")) {
        value = readOperand();
        value.bits = ~value.bits;
        value.isNegative = !value.isNegative;
    } else if (peek().kind == IdlToken::Text) {
        value.kind = Value::Text;
        while (peek().kind == IdlToken::Text)
            value.text += take().text;
    } else if (peek().kind == IdlToken::Integer || peek().kind == IdlToken::Real) {
        QString text = peek().text;
        bool good = true;
        const bool isReal =
            peek().kind == IdlToken::Real || (text.endsWith(QLatin1Char('d')) && !text.startsWith(QLatin1String("0x")));
        if (isReal) {
            while (text.endsWith(QLatin1Char('d')) || text.endsWith(QLatin1Char('f')) ||
                   text.endsWith(QLatin1Char('l')))
                text.chop(1);
            value.kind = Value::Real;
            value.real = text.toDouble(&good);
        } else {
            // A zero before it makes it octal.
            value.bits = text.toULongLong(&good, 0);
        }
        if (!good)
            fail(QCoreApplication::translate("RosSchema", "\"%1\" is no number").arg(text));
        take();
    } else if (takeIf("TRUE")) {
        value.bits = 1;
    } else if (!takeIf("FALSE")) {
        const QString name = readScopedName();
        const Symbol* const found = find(name);
        if (!found || found->type)
            fail(QCoreApplication::translate("RosSchema", "%1 is no constant").arg(name));
        value = found->value;
    }
    --m_depth;
    return value;
}

qint64 IdlParser::integerOf(const Value& value)
{
    return static_cast<qint64>(value.bits);
}

QString IdlParser::textOf(const Value& value)
{
    if (value.kind == Value::Text)
        return value.text;
    if (value.kind == Value::Real)
        return QString::number(value.real, 'g', 17);
    return value.isNegative ? QString::number(integerOf(value)) : QString::number(value.bits);
}

IdlParser::Value IdlParser::combine(const QString& sign, const Value& left, const Value& right) const
{
    const char first = sign.at(0).toLatin1();
    Value result;
    if (left.kind == Value::Text || right.kind == Value::Text)
        fail(QCoreApplication::translate("RosSchema", "a text cannot be calculated with"));
    if (left.kind == Value::Real || right.kind == Value::Real) {
        const auto realOf = [](const Value& value) {
            return value.kind == Value::Real ? value.real
                   : value.isNegative        ? static_cast<double>(integerOf(value))
                                             : static_cast<double>(value.bits);
        };
        const double a = realOf(left);
        const double b = realOf(right);
        result.kind = Value::Real;
        result.real = first == '+' ? a + b : first == '-' ? a - b : first == '*' ? a * b : a / b;
        return result;
    }
    qint64 number = 0;
    const qint64 a = integerOf(left);
    const qint64 b = integerOf(right);
    const bool isSmall = (left.isNegative || a >= 0) && (right.isNegative || b >= 0);
    bool good = true;
    switch (first) {
    case '|':
    case '^':
    case '&':
        result.bits = first == '|'   ? left.bits | right.bits
                      : first == '^' ? left.bits ^ right.bits
                                     : left.bits & right.bits;
        result.isNegative = (left.isNegative || right.isNegative) && result.bits >> 63 != 0;
        return result;
    case '<':
    case '>':
        good = !right.isNegative && right.bits < 64;
        if (good)
            result.bits = first == '<' ? left.bits << right.bits : left.bits >> right.bits;
        break;
    case '+':
        good = isSmall && !__builtin_add_overflow(a, b, &number);
        break;
    case '-':
        good = isSmall && !__builtin_sub_overflow(a, b, &number);
        break;
    case '*':
        good = isSmall && !__builtin_mul_overflow(a, b, &number);
        break;
    default:
        good = isSmall && b != 0 && (a != std::numeric_limits<qint64>::min() || b != -1);
        if (good)
            number = first == '/' ? a / b : a % b;
    }
    if (!good)
        fail(QCoreApplication::translate("RosSchema", "a value that cannot be calculated"));
    if (first != '<' && first != '>') {
        result.bits = static_cast<quint64>(number);
        result.isNegative = number < 0;
    }
    return result;
}
