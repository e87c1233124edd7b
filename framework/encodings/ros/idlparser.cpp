#include "idlparser.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QtEndian>

#include <algorithm>

using namespace Ros;

namespace
{

// By its limit in bits, as XTypes has it.
Kind kindOfWidth(quint64 bits, bool isSigned)
{
    if (bits <= 8)
        return isSigned ? Kind::Int8 : Kind::UInt8;
    if (bits <= 16)
        return isSigned ? Kind::Int16 : Kind::UInt16;
    return isSigned ? Kind::Int32 : bits <= 32 ? Kind::UInt32 : Kind::UInt64;
}

quint32 hashOf(const QString& name)
{
    const QByteArray hash = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Md5);
    return qFromLittleEndian<quint32>(hash.constData()) & 0x0fffffff;
}

} // namespace

IdlParser::IdlParser(Schema* schema, bool isRos)
    : m_schema(schema)
    , m_isRos(isRos)
    , m_at(0)
    , m_depth(0)
    , m_bound(0)
{
}

Struct* IdlParser::parse(const QString& text, const QString& name, Fault* fault)
{
    try {
        m_tokens = IdlScanner::scan(text);
        while (peek().kind != IdlToken::End)
            readDefinition();
    } catch (const Fault& found) {
        *fault = found;
        return nullptr;
    }
    addConstants();
    const QString wanted = QString(name).replace(QLatin1Char('/'), QStringLiteral("::"));
    Struct* const found = m_structs.value(wanted);
    if (!found)
        fault->text = QCoreApplication::translate("RosSchema", "there is no definition of %1").arg(name);
    return found && m_schema->check(&fault->text) ? found : nullptr;
}

const IdlToken& IdlParser::peek(int distance) const
{
    return m_tokens[std::min(m_at + static_cast<std::size_t>(distance), m_tokens.size() - 1)];
}

const IdlToken& IdlParser::take()
{
    const IdlToken& token = peek();
    if (m_at + 1 < m_tokens.size())
        ++m_at;
    return token;
}

bool IdlParser::takeIf(const char* word)
{
    const bool good = peek().is(word);
    if (good)
        take();
    return good;
}

void IdlParser::expect(const char* word)
{
    if (!takeIf(word))
        fail(QCoreApplication::translate("RosSchema", "\"%1\" is expected here").arg(QLatin1String(word)));
}

QString IdlParser::takeName()
{
    if (peek().kind != IdlToken::Name)
        fail(QCoreApplication::translate("RosSchema", "a name is expected here"));
    return take().text;
}

void IdlParser::fail(const QString& text) const
{
    throw Fault{peek().place, text};
}

QString IdlParser::scoped(const QString& name) const
{
    return (m_scope + QStringList(name)).join(QStringLiteral("::"));
}

QString IdlParser::shownName(const QString& scoped) const
{
    return m_isRos ? QString(scoped).replace(QStringLiteral("::"), QStringLiteral("/")) : scoped;
}

void IdlParser::countName()
{
    if (!m_schema->addName())
        fail(QCoreApplication::translate("RosSchema", "these are more names than any system has"));
}

void IdlParser::define(const QString& name, const Symbol& symbol)
{
    countName();
    // Enumerators and typedefs are often written down again.
    m_symbols.insert(scoped(name), symbol);
}

/** From the inside out. */
const IdlParser::Symbol* IdlParser::find(const QString& name) const
{
    if (name.startsWith(QLatin1String("::"))) {
        const auto found = m_symbols.constFind(name.mid(2));
        return found == m_symbols.constEnd() ? nullptr : &*found;
    }
    for (QStringList scope = m_scope;; scope.removeLast()) {
        const auto found = m_symbols.constFind((scope + QStringList(name)).join(QStringLiteral("::")));
        if (found != m_symbols.constEnd())
            return &*found;
        if (scope.isEmpty())
            return nullptr;
    }
}

void IdlParser::readDefinition()
{
    const Annotations annotations = readAnnotations();
    if (takeIf(";"))
        return;
    if (takeIf("module"))
        readModule();
    else if (takeIf("struct"))
        readStruct(annotations);
    else if (takeIf("union"))
        readUnion(annotations);
    else if (takeIf("enum"))
        readEnumeration(annotations, false);
    else if (takeIf("bitmask"))
        readEnumeration(annotations, true);
    else if (takeIf("typedef"))
        readTypedef();
    else if (takeIf("const"))
        readConstant();
    else
        fail(QCoreApplication::translate("RosSchema", "\"%1\" is no definition that can be read").arg(peek().text));
}

void IdlParser::readModule()
{
    m_scope.append(takeName());
    if (m_scope.size() > DeepestNesting)
        fail(QCoreApplication::translate("RosSchema", "nested too deeply"));
    expect("{");
    while (!takeIf("}")) {
        if (peek().kind == IdlToken::End)
            expect("}");
        readDefinition();
    }
    m_scope.removeLast();
    takeIf(";");
}

Struct* IdlParser::addStruct(const Annotations& annotations, bool isUnion)
{
    const QString name = takeName();
    const bool isKnown = m_structs.contains(scoped(name));
    if (peek().is(";") || isKnown) {
        if (!isKnown || peek().is(";"))
            return nullptr;
        fail(QCoreApplication::translate("RosSchema", "%1 is defined twice").arg(name));
    }
    Struct* const structure = m_schema->addStruct(shownName(scoped(name)));
    structure->description = annotations.description;
    structure->isUnion = isUnion;
    const QString kind = annotations.get("extensibility").text;
    if (annotations.has("final") || kind == QLatin1String("FINAL"))
        structure->extensibility = Extensibility::Final;
    else if (annotations.has("appendable") || kind == QLatin1String("APPENDABLE"))
        structure->extensibility = Extensibility::Appendable;
    else if (annotations.has("mutable") || kind == QLatin1String("MUTABLE"))
        structure->extensibility = Extensibility::Mutable;
    m_structs.insert(scoped(name), structure);
    m_names.clear();
    return structure;
}

void IdlParser::readStruct(const Annotations& annotations)
{
    const QString name = peek().text;
    Struct* const structure = addStruct(annotations, false);
    if (!structure)
        return;
    quint32 nextId = 0;
    if (takeIf(":")) {
        const Symbol* const base = find(readScopedName());
        if (!base || !base->type || base->type->kind != Kind::Struct || base->type->structure->isUnion)
            fail(QCoreApplication::translate("RosSchema", "what it is made from is no struct"));
        structure->members = base->type->structure->members;
        for (const Member& member : structure->members) {
            nextId = std::max(nextId, member.id + 1);
            m_names.insert(member.name);
            countName();
        }
    }
    expect("{");
    while (!takeIf("}"))
        readMembers(structure, annotations, &nextId);
    takeIf(";");
    structure->findMeaning();
    Symbol symbol;
    symbol.type = m_schema->addStructType(structure);
    define(name, symbol);
}

void IdlParser::addMember(Struct* structure, const Member& member)
{
    if (m_names.contains(member.name))
        fail(QCoreApplication::translate("RosSchema", "the name %1 is there twice").arg(member.name));
    m_names.insert(member.name);
    structure->members.push_back(member);
    countName();
}

void IdlParser::readMembers(Struct* structure, const Annotations& holder, quint32* nextId)
{
    const Annotations annotations = readAnnotations();
    const Type* const type = readType();
    do {
        Member member;
        member.place = peek().place;
        member.type = readDeclarator(type, &member.name);
        member.description = annotations.description;
        member.unit = textOf(annotations.get("unit"));
        if (member.unit.isEmpty() || !annotations.has("unit"))
            member.unit = unitIn(member.description);
        if (annotations.has("default"))
            member.defaultText = textOf(annotations.get("default"));
        member.isOptional = annotations.has("optional");
        member.id = *nextId;
        if (annotations.has("id"))
            member.id = static_cast<quint32>(annotations.get("id").bits) & 0x0fffffff;
        else if (annotations.has("hashid") || holder.get("autoid").text == QLatin1String("HASH"))
            member.id = hashOf(annotations.get("hashid").text.isEmpty() ? member.name : annotations.get("hashid").text);
        *nextId = member.id + 1;
        addMember(structure, member);
    } while (takeIf(","));
    expect(";");
}

void IdlParser::readUnion(const Annotations& annotations)
{
    const QString name = peek().text;
    Struct* const structure = addStruct(annotations, true);
    if (!structure)
        return;
    expect("switch");
    expect("(");
    readAnnotations();
    Member discriminator;
    discriminator.name = QStringLiteral("_d");
    discriminator.place = peek().place;
    discriminator.type = readType();
    if (!isInteger(discriminator.type->kind) && discriminator.type->kind != Kind::Bool)
        fail(QCoreApplication::translate("RosSchema", "a union cannot be told by that type"));
    addMember(structure, discriminator);
    expect(")");
    expect("{");
    while (!takeIf("}"))
        readCase(structure, discriminator.type);
    takeIf(";");
    Symbol symbol;
    symbol.type = m_schema->addStructType(structure);
    define(name, symbol);
}

void IdlParser::readCase(Struct* structure, const Type* discriminator)
{
    Member member;
    do {
        member.isDefaultCase = member.isDefaultCase || peek().is("default");
        if (takeIf("default")) {
            expect(":");
            continue;
        }
        expect("case");
        // Its values can be named as the enumeration has them, wherever that stands.
        const Value value = readValue();
        if (discriminator->enumeration && value.kind != Value::Integer)
            fail(QCoreApplication::translate("RosSchema", "\"%1\" is no value").arg(textOf(value)));
        member.cases.push_back(value.kind == Value::Text && value.text.size() == 1 ? value.text.at(0).unicode()
                                                                                   : integerOf(value));
        expect(":");
    } while (peek().is("case") || peek().is("default"));
    const Annotations annotations = readAnnotations();
    member.description = annotations.description;
    member.unit = textOf(annotations.get("unit"));
    if (!annotations.has("unit"))
        member.unit.clear();
    member.place = peek().place;
    member.type = readDeclarator(readType(), &member.name);
    member.id = annotations.has("id") ? static_cast<quint32>(annotations.get("id").bits) & 0x0fffffff
                                      : static_cast<quint32>(structure->members.size());
    addMember(structure, member);
    expect(";");
}

void IdlParser::readEnumeration(const Annotations& annotations, bool isBitmask)
{
    const QString name = takeName();
    m_schema->enumerations.emplace_back();
    Enumeration& enumeration = m_schema->enumerations.back();
    enumeration.name = shownName(scoped(name));
    enumeration.isBitmask = isBitmask;
    enumeration.kind = kindOfWidth(annotations.has("bit_bound") ? annotations.get("bit_bound").bits : 32, !isBitmask);
    expect("{");
    Value next;
    while (!takeIf("}")) {
        const Annotations inner = readAnnotations();
        const char* const number = isBitmask ? "position" : "value";
        if (inner.has(number))
            next = inner.get(number);
        const QString value = takeName();
        if (isBitmask && next.bits > 63)
            fail(QCoreApplication::translate("RosSchema", "%1 is no flag").arg(value));
        Symbol symbol;
        symbol.value = next;
        symbol.value.bits = isBitmask ? quint64(1) << next.bits : next.bits;
        enumeration.values.append(FieldInfo::Enumerator(symbol.value.bits, value, inner.description));
        define(value, symbol);
        define(name + QStringLiteral("::") + value, symbol);
        ++next.bits;
        next.isNegative = next.isNegative && next.bits != 0;
        if (!takeIf(",") && !peek().is("}"))
            expect("}");
    }
    takeIf(";");
    Type type;
    type.kind = enumeration.kind;
    type.name = enumeration.name;
    type.enumeration = &enumeration;
    Symbol symbol;
    symbol.type = m_schema->addType(type);
    define(name, symbol);
}

void IdlParser::readTypedef()
{
    const Type* const type = readType();
    do {
        QString name;
        Symbol symbol;
        symbol.type = readDeclarator(type, &name);
        define(name, symbol);
    } while (takeIf(","));
    expect(";");
}

void IdlParser::readConstant()
{
    const Type* const type = readType();
    Constant constant;
    constant.kind = type->kind;
    constant.name = takeName();
    expect("=");
    Symbol symbol;
    const TextPlace place = peek().place;
    symbol.value = readValue();
    constant.text = textOf(symbol.value);
    constant.bits = symbol.value.bits;
    const quint64 magnitude = symbol.value.isNegative ? ~symbol.value.bits + 1 : symbol.value.bits;
    if (isInteger(type->kind) && type->kind != Kind::Char && type->kind != Kind::WideChar &&
        (symbol.value.kind != Value::Integer || !fits(symbol.value.isNegative, magnitude, type->kind)))
        throw Fault{place, QCoreApplication::translate("RosSchema", "\"%1\" is no value of the type %2")
                               .arg(constant.text, type->name)};
    define(constant.name, symbol);
    m_constants.emplace_back(m_scope.join(QStringLiteral("::")), constant);
    expect(";");
}

/** Gives a struct the constants of the module that is called like it. */
void IdlParser::addConstants()
{
    static const QString suffix = QStringLiteral("_Constants");
    for (const auto& constant : m_constants)
        if (constant.first.endsWith(suffix))
            if (Struct* const structure = m_structs.value(constant.first.chopped(suffix.size())))
                structure->constants.push_back(constant.second);
}
