#include "rosmsgparser.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

using namespace Ros;

namespace
{

struct Primitive
{
    const char* name;
    Kind ros2;
    Kind ros1;
};

const Kind Unknown = Kind::Struct;

const Primitive primitives[] = {
    {"bool", Kind::Bool, Kind::Bool},          {"byte", Kind::UInt8, Kind::Int8},
    {"char", Kind::UInt8, Kind::UInt8},        {"int8", Kind::Int8, Kind::Int8},
    {"uint8", Kind::UInt8, Kind::UInt8},       {"int16", Kind::Int16, Kind::Int16},
    {"uint16", Kind::UInt16, Kind::UInt16},    {"int32", Kind::Int32, Kind::Int32},
    {"uint32", Kind::UInt32, Kind::UInt32},    {"int64", Kind::Int64, Kind::Int64},
    {"uint64", Kind::UInt64, Kind::UInt64},    {"float32", Kind::Float32, Kind::Float32},
    {"float64", Kind::Float64, Kind::Float64}, {"string", Kind::String, Kind::String},
    {"wstring", Kind::WideString, Unknown},
};

bool isNameCharacter(QChar character)
{
    return (character.isLetterOrNumber() && character.unicode() < 0x80) || character == QLatin1Char('_');
}

bool isName(const QString& text)
{
    return !text.isEmpty() && !text.at(0).isDigit() && std::all_of(text.begin(), text.end(), isNameCharacter);
}

bool isTypeName(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('/'));
    return parts.size() <= 3 && std::all_of(parts.begin(), parts.end(), isName);
}

bool isSeparator(const QString& line)
{
    return line.size() >= 2 && line.count(QLatin1Char('=')) == line.size();
}

bool areSame(const Struct& one, const Struct& other)
{
    return std::equal(one.members.begin(), one.members.end(), other.members.begin(), other.members.end(),
                      [](const Member& left, const Member& right) {
                          return left.name == right.name && left.type->name == right.type->name;
                      });
}

} // namespace

RosMsgParser::RosMsgParser(Dialect dialect, Schema* schema)
    : m_dialect(dialect)
    , m_schema(schema)
    , m_struct(nullptr)
    , m_isHead(true)
    , m_lastComment(nullptr)
    , m_at(0)
    , m_number(0)
{
}

bool RosMsgParser::fail(const QString& text, int column)
{
    if (m_fault.text.isEmpty())
        m_fault = {{m_number, 1 + (column < 0 ? m_at : column)}, text};
    return false;
}

Struct* RosMsgParser::parse(const QString& text, const QString& name, Fault* fault)
{
    const QString key = keyOf(name);
    const bool good = readDefinitions(text.split(QLatin1Char('\n')), name);
    if (good && !m_byKey.contains(key))
        addServiceEvent(key);
    if (good && !m_byKey.contains(key))
        m_fault.text = QCoreApplication::translate("RosSchema", "there is no definition of %1").arg(name);
    if (!m_fault.text.isEmpty() || !resolve() || !m_schema->check(&m_fault.text)) {
        *fault = m_fault;
        return nullptr;
    }
    return m_byKey.value(key);
}

bool RosMsgParser::readDefinitions(const QStringList& lines, const QString& name)
{
    begin(name);
    for (int i = 0; i < lines.size(); ++i) {
        const QString trimmed = lines.at(i).trimmed();
        const QString next = isSeparator(trimmed) && i + 1 < lines.size() ? lines.at(i + 1).trimmed() : QString();
        static const QRegularExpression title(QStringLiteral("^(?:MSG|SRV|IDL): *(.+)$"));
        const QRegularExpressionMatch found = title.match(next);
        m_number = i + 1;
        if (found.hasMatch()) {
            if (!end())
                return false;
            ++i;
            begin(found.captured(1));
            if (!isTypeName(m_name) || !m_schema->addName()) {
                m_number = i + 1;
                return fail(QCoreApplication::translate("RosSchema", "\"%1\" is no name of a type").arg(m_name), 0);
            }
        } else if (trimmed == QLatin1String("---") && m_parts.size() < 3) {
            addPart();
        } else if (!readLine(lines.at(i))) {
            return false;
        }
    }
    return end();
}

void RosMsgParser::begin(const QString& name)
{
    // Fields name what they need with or without the folder.
    const bool isShort = m_dialect == Ros2 && name.count(QLatin1Char('/')) == 1;
    m_name = isShort ? QString(name).replace(QLatin1Char('/'), QStringLiteral("/msg/")) : name;
    m_parts.clear();
    m_head.clear();
    m_isHead = true;
    addPart();
}

/** Begins a part of a service or an action, or the only one of a message. */
void RosMsgParser::addPart()
{
    m_struct = m_schema->addStruct(m_name);
    m_parts.push_back(m_struct);
    m_names.clear();
    m_above.clear();
    m_lastComment = nullptr;
}

void RosMsgParser::nameParts()
{
    static const char* const service[] = {"_Request", "_Response"};
    static const char* const action[] = {"_Goal", "_Result", "_Feedback"};
    QString base = m_name;
    for (const char* suffix : {"_Event", "_Request", "_Response"})
        if (base.endsWith(QLatin1String(suffix)))
            base.chop(int(qstrlen(suffix)));
    for (std::size_t i = 0; i < m_parts.size() && m_parts.size() > 1; ++i)
        m_parts[i]->name = base + QLatin1String(m_parts.size() == 2 ? service[i] : action[i]);
}

bool RosMsgParser::end()
{
    nameParts();
    m_parts.front()->description = paragraphs(m_head);
    for (Struct* part : m_parts) {
        if (part->members.empty()) {
            part->isPadded = m_dialect == Ros2;
            // What stands before the first separator is nothing where every definition has one.
            if (part->constants.empty() && m_byKey.contains(keyOf(part->name)))
                continue;
        }
        part->findMeaning();
        Struct*& known = m_byKey[keyOf(part->name)];
        if (known && !known->members.empty() && !areSame(*known, *part))
            return fail(QCoreApplication::translate("RosSchema", "%1 is defined twice").arg(part->name), 0);
        known = part;
    }
    return true;
}

void RosMsgParser::readComment(const QString& comment, bool isIndented)
{
    QString text = comment.mid(1);
    while (text.startsWith(QLatin1Char('#')))
        text.remove(0, 1);
    if (m_isHead)
        m_head.append(text);
    else if (isIndented && m_lastComment && m_above.isEmpty())
        *m_lastComment += QLatin1Char('\n') + text;
    else
        m_above.append(text);
}

void RosMsgParser::skipBlanks()
{
    while (m_at < m_line.size() && m_line.at(m_at).isSpace())
        ++m_at;
}

QString RosMsgParser::takeName()
{
    const int begin = m_at;
    while (m_at < m_line.size() && isNameCharacter(m_line.at(m_at)))
        ++m_at;
    return m_line.mid(begin, m_at - begin);
}

bool RosMsgParser::readLine(const QString& line)
{
    m_line = line;
    m_at = 0;
    skipBlanks();
    if (m_at == m_line.size()) {
        m_above.clear();
        m_isHead = m_isHead && m_head.isEmpty();
        return true;
    }
    if (m_line.at(m_at) == QLatin1Char('#')) {
        readComment(m_line.mid(m_at), m_at > 0);
        return true;
    }
    m_isHead = false;
    if (!m_schema->addName())
        return fail(QCoreApplication::translate("RosSchema", "these are more names than any system has"));
    const int typeColumn = m_at;
    int end = m_at;
    while (end < m_line.size() && !m_line.at(end).isSpace())
        ++end;
    Type type;
    if (!readType(m_line.mid(typeColumn, end - typeColumn), &type))
        return false;
    m_at = end;
    skipBlanks();
    const int nameColumn = m_at;
    const QString name = takeName();
    if (!isName(name))
        return fail(QCoreApplication::translate("RosSchema", "a name is missing behind the type"), nameColumn);
    skipBlanks();
    const bool isConstant = m_at < m_line.size() && m_line.at(m_at) == QLatin1Char('=');
    m_at += int(isConstant);
    skipBlanks();
    QString comment;
    const QString value = takeValue(type, isConstant, &comment);
    QString* const description = isConstant ? addConstant(name, type, value) : addMember(name, type, value, typeColumn);
    if (!description)
        return false;
    *description = m_above.join(QLatin1Char('\n')) + QLatin1Char('\n') + comment;
    m_above.clear();
    m_lastComment = description;
    return true;
}

/** What stands up to the comment. */
QString RosMsgParser::takeValue(const Type& type, bool isConstant, QString* comment)
{
    int hash = static_cast<int>(m_line.indexOf(QLatin1Char('#'), m_at));
    const QChar first = m_at < m_line.size() ? m_line.at(m_at) : QChar();
    const bool isText = type.kind == Kind::String || type.kind == Kind::WideString;
    // The end of a text of ROS 1 is that of the line; a quoted one of ROS 2 can have anything in it.
    if (isText && m_dialect == Ros1 && isConstant) {
        hash = -1;
    } else if (isText && m_dialect == Ros2 && (first == QLatin1Char('"') || first == QLatin1Char('\''))) {
        int close = m_at + 1;
        while (close < m_line.size() && m_line.at(close) != first)
            close += m_line.at(close) == QLatin1Char('\\') ? 2 : 1;
        if (close < m_line.size())
            hash = static_cast<int>(m_line.indexOf(QLatin1Char('#'), close));
    }
    if (hash >= 0)
        *comment = m_line.mid(hash + 1);
    return m_line.mid(m_at, hash < 0 ? -1 : hash - m_at).trimmed();
}

/** Returns where its description belongs; null where there is an error. */
QString* RosMsgParser::addConstant(const QString& name, const Type& type, const QString& value)
{
    Constant constant;
    constant.name = name;
    constant.kind = type.kind;
    constant.before = m_struct->members.size();
    if (!isNumber(type.kind) && type.kind != Kind::String && type.kind != Kind::WideString)
        fail(QCoreApplication::translate("RosSchema", "%1 cannot be a constant").arg(type.name), 0);
    else if (!readValue(value, &constant))
        fail(QCoreApplication::translate("RosSchema", "\"%1\" is no value of the type %2").arg(value, type.name));
    if (!m_fault.text.isEmpty())
        return nullptr;
    m_struct->constants.push_back(constant);
    return &m_struct->constants.back().description;
}

QString* RosMsgParser::addMember(const QString& name, const Type& type, const QString& value, int column)
{
    if (m_dialect == Ros1 && !value.isEmpty())
        fail(QCoreApplication::translate("RosSchema", "\"%1\" is too much").arg(value));
    else if (m_names.contains(name))
        fail(QCoreApplication::translate("RosSchema", "the name %1 is there twice").arg(name));
    if (!m_fault.text.isEmpty())
        return nullptr;
    m_names.insert(name);
    Member member;
    member.name = name;
    member.place = TextPlace{m_number, column + 1};
    member.defaultText = value;
    member.id = static_cast<quint32>(m_struct->members.size());
    member.type = m_schema->addType(type);
    m_struct->members.push_back(member);
    return &m_struct->members.back().description;
}

bool RosMsgParser::readValue(const QString& text, Constant* constant)
{
    constant->text = text;
    bool good = true;
    if (constant->kind == Kind::Bool) {
        const QString word = text.toLower();
        constant->bits = word == QLatin1String("true") || word == QLatin1String("1");
        good = constant->bits || word == QLatin1String("false") || word == QLatin1String("0");
    } else if (isInteger(constant->kind)) {
        good = toInteger(text, constant->kind, &constant->bits);
    } else if (isNumber(constant->kind)) {
        text.toDouble(&good);
        static const QRegularExpression special(QStringLiteral("^[+-]?(inf|infinity|nan)$"),
                                                QRegularExpression::CaseInsensitiveOption);
        good = good || special.match(text).hasMatch();
    }
    return good;
}

bool RosMsgParser::readSize(QString text, quint32* size)
{
    quint64 bits = 0;
    if (!text.at(0).isDigit() || !toInteger(text, Kind::UInt32, &bits) || bits == 0)
        return fail(QCoreApplication::translate("RosSchema", "\"%1\" is no size").arg(text));
    *size = static_cast<quint32>(bits);
    return true;
}

bool RosMsgParser::readType(const QString& word, Type* type)
{
    static const QRegularExpression form(
        QStringLiteral("^([A-Za-z][A-Za-z0-9_/]*)(?:<=([^\\[\\]]+))?(\\[(<=)?([^\\[\\]]*)\\])?$"));
    const QRegularExpressionMatch found = form.match(word);
    const QString base = found.captured(1);
    if (!found.hasMatch() || !isTypeName(base))
        return fail(QCoreApplication::translate("RosSchema", "\"%1\" is no type").arg(word));
    Type element;
    element.kind = Unknown;
    element.name = word.left(static_cast<int>(found.capturedStart(3) < 0 ? word.size() : found.capturedStart(3)));
    for (const Primitive& primitive : primitives)
        if (base == QLatin1String(primitive.name))
            element.kind = m_dialect == Ros1 ? primitive.ros1 : primitive.ros2;
    if (!found.captured(2).isEmpty()) {
        if ((element.kind != Kind::String && element.kind != Kind::WideString) ||
            !readSize(found.captured(2), &element.count))
            return fail(QCoreApplication::translate("RosSchema", "\"%1\" is no type").arg(word));
    }
    *type = element;
    if (found.captured(3).isEmpty())
        return true;
    Type collection;
    collection.name = word;
    collection.element = m_schema->addType(element);
    const QString size = found.captured(5);
    const bool isBounded = !found.captured(4).isEmpty();
    if (!size.isEmpty() ? !readSize(size, &collection.count) : isBounded)
        return fail(QCoreApplication::translate("RosSchema", "\"%1\" is no type").arg(word));
    collection.kind = size.isEmpty() || isBounded ? Kind::Sequence : Kind::Array;
    *type = collection;
    return true;
}
