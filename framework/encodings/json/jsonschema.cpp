#include "jsonschema.h"

#include "jsonscalar.h"

#include <QUrl>

#include <algorithm>

namespace
{

const int GreatestSchemaSize = 16 * 1024 * 1024;
const std::size_t MostShapes = 100 * 1000;
const int MostReferences = 100; // one to the other

// Of an object in which a name is looked for one by one.
const quint32 FewMembers = 32;

// Of constants, for a tool tip.
const int LongestRange = 500;

JsonShape::Kind kindOf(const QString& type)
{
    return type == QLatin1String("object")    ? JsonShape::Object
           : type == QLatin1String("array")   ? JsonShape::Array
           : type == QLatin1String("string")  ? JsonShape::String
           : type == QLatin1String("number")  ? JsonShape::Number
           : type == QLatin1String("integer") ? JsonShape::Integer
           : type == QLatin1String("boolean") ? JsonShape::Boolean
           : type == QLatin1String("null")    ? JsonShape::Nothing
                                              : JsonShape::Any;
}

} // namespace

JsonSchema::JsonSchema(const JsonDocument& schema, JsonShapes* shapes)
    : m_schema(schema)
    , m_shapes(shapes)
    , m_isTooGreat(false)
{
}

bool JsonSchema::read(const QByteArray& schema, JsonShapes* shapes, QString* error)
{
    if (schema.size() > GreatestSchemaSize) {
        *error = tr("the schema is longer than %1 bytes").arg(GreatestSchemaSize);
        return false;
    }
    const JsonDocument document(schema);
    const QStringList& problems = document.getProblems();
    if (!problems.isEmpty()) {
        *error = tr("the schema is no JSON: %1").arg(problems.join(QStringLiteral("; ")));
        return false;
    }
    const JsonNode::Kind kind = document.at(0).kind;
    if (kind != JsonNode::Object && kind != JsonNode::True) {
        *error = tr("the schema is neither an object nor true");
        return false;
    }
    JsonSchema reader(document, shapes);
    shapes->setRoot(reader.shapeOf(0));
    if (reader.m_isTooGreat) {
        *error = tr("the schema is too large: more than %1 parts").arg(quint64(MostShapes));
        return false;
    }
    return true;
}

/** The value of a member; 0 when there is none. */
quint32 JsonSchema::find(quint32 node, const char* name) const
{
    if (m_schema.at(node).kind != JsonNode::Object || m_schema.at(node).count <= FewMembers)
        return m_schema.findMember(node, name);
    QHash<QString, quint32>& members = m_members[node];
    if (members.isEmpty())
        for (quint32 member = begin(node); member < end(node); member = end(member + 1))
            members.insert(m_schema.getText(member), member + 1);
    return members.value(QString::fromUtf8(name));
}

QString JsonSchema::textOf(quint32 node, const char* name) const
{
    const quint32 found = find(node, name);
    return found && m_schema.at(found).kind == JsonNode::String ? m_schema.getText(found) : QString();
}

/** The place that a reference "#/$defs/a" is to; 0 for the whole and for what there is not, which is left open. */
quint32 JsonSchema::resolve(const QString& reference) const
{
    quint32 node = 0;
    QStringList names = QUrl::fromPercentEncoding(reference.toUtf8()).split(QLatin1Char('/'));
    names.removeFirst();
    for (QString name : std::as_const(names)) {
        name.replace(QLatin1String("~1"), QLatin1String("/")).replace(QLatin1String("~0"), QLatin1String("~"));
        quint32 found = 0;
        if (m_schema.at(node).kind == JsonNode::Object) {
            found = find(node, name.toUtf8().constData());
        } else if (m_schema.at(node).kind == JsonNode::Array) {
            quint32 left = name.toUInt();
            for (quint32 element = begin(node); element < end(node) && !found; element = end(element))
                found = left-- == 0 ? element : 0;
        }
        if (!found)
            return 0;
        node = found;
    }
    return node;
}

/** What a part of the schema says; one that is still being read, where it is inside of itself. */
JsonShape* JsonSchema::shapeOf(quint32 node)
{
    QString name;
    bool isOpen = false;
    for (int i = 0; !isOpen && find(node, "$ref"); ++i) {
        const QString reference = textOf(node, "$ref");
        const quint32 target = reference.startsWith(QLatin1Char('#')) ? resolve(reference) : 0;
        isOpen = i == MostReferences || (target == 0 && reference != QLatin1String("#"));
        name = reference.section(QLatin1Char('/'), -1);
        node = isOpen ? node : target;
    }
    const auto known = m_known.find(node);
    if (known != m_known.end())
        return known->second;
    JsonShape* const shape = m_shapes->add();
    m_known.emplace(node, shape);
    if (m_known.size() > MostShapes)
        m_isTooGreat = true;
    shape->name = node == 0 ? QString() : name;
    if (isOpen || m_isTooGreat || m_schema.at(node).kind != JsonNode::Object)
        shape->isOpen = true;
    else
        fill(shape, node);
    return shape;
}

void JsonSchema::fill(JsonShape* shape, quint32 node)
{
    addTypes(shape, node);
    addMembers(shape, node);
    addItems(shape, node);
    addConstants(shape, node);
    addAlternatives(shape, node);
    if (recognizeTime(shape, node))
        return;
    if (shape->kind == JsonShape::String && textOf(node, "contentEncoding") == QLatin1String("base64"))
        shape->kind = JsonShape::Bytes;
    // What says nothing of its members is what messages make of it.
    const bool saysNothing = shape->kind == JsonShape::Nothing && !find(node, "type");
    shape->isOpen = shape->isOpen || saysNothing || (shape->kind == JsonShape::Object && shape->members.empty());
    describe(shape, node);
}

void JsonSchema::addType(JsonShape* shape, JsonShape::Kind kind)
{
    JsonShape other;
    other.kind = kind;
    m_shapes->merge(shape, &other);
}

void JsonSchema::addTypes(JsonShape* shape, quint32 node)
{
    const quint32 type = find(node, "type");
    if (type && m_schema.at(type).kind == JsonNode::Array) {
        for (quint32 element = begin(type); element < end(type); element = end(element))
            addType(shape, kindOf(m_schema.getText(element)));
    } else if (type) {
        addType(shape, kindOf(m_schema.getText(type)));
    } else if (find(node, "properties")) {
        addType(shape, JsonShape::Object);
    } else if (find(node, "items") || find(node, "prefixItems")) {
        addType(shape, JsonShape::Array);
    }
}

void JsonSchema::addMembers(JsonShape* shape, quint32 node)
{
    const quint32 properties = find(node, "properties");
    if (!properties || shape->kind != JsonShape::Object || m_schema.at(properties).kind != JsonNode::Object)
        return;
    QStringList required;
    const quint32 names = find(node, "required");
    if (names && m_schema.at(names).kind == JsonNode::Array)
        for (quint32 name = begin(names); name < end(names); name = end(name))
            required.append(m_schema.getText(name));
    for (quint32 name = begin(properties); name < end(properties); name = end(name + 1)) {
        const QString text = m_schema.getText(name);
        JsonShape* const part = shapeOf(name + 1);
        // The title of a time is its kind.
        const bool isTime = part->kind == JsonShape::Time || part->kind == JsonShape::Duration;
        const QString description = isTime ? textOf(name + 1, "description") : descriptionOf(name + 1);
        shape->members.push_back({text, part, description, required.contains(text)});
    }
}

void JsonSchema::addItems(JsonShape* shape, quint32 node)
{
    if (shape->kind != JsonShape::Array)
        return;
    for (const char* const word : {"prefixItems", "items"}) {
        const quint32 items = find(node, word);
        if (!items)
            continue;
        const bool isList = m_schema.at(items).kind == JsonNode::Array;
        const quint32 last = isList ? end(items) : items + 1;
        for (quint32 item = isList ? begin(items) : items; item < last; item = end(item)) {
            JsonShape* const part = shapeOf(item);
            if (!shape->items) {
                shape->items = part;
                continue;
            }
            JsonShape* const both = m_shapes->add();
            *both = *shape->items;
            m_shapes->merge(both, part);
            shape->items = both;
        }
    }
    if (!shape->items) {
        shape->items = m_shapes->add();
        shape->items->isOpen = true;
    }
}

void JsonSchema::addAlternatives(JsonShape* shape, quint32 node)
{
    for (const char* const word : {"allOf", "anyOf", "oneOf"}) {
        const quint32 list = find(node, word);
        if (!list || m_schema.at(list).kind != JsonNode::Array)
            continue;
        for (quint32 part = begin(list); part < end(list); part = end(part))
            m_shapes->merge(shape, shapeOf(part));
    }
}

/** Takes the values of which one is meant, a number with a title as one with a name. */
void JsonSchema::addConstants(JsonShape* shape, quint32 node)
{
    QStringList texts;
    const quint32 values = find(node, "enum");
    const quint32 constant = find(node, "const");
    const bool isList = values && m_schema.at(values).kind == JsonNode::Array;
    const quint32 first = isList ? begin(values) : constant;
    const quint32 last = isList ? end(values) : constant ? end(constant) : 0;
    for (quint32 value = first; value < last; value = end(value)) {
        texts.append(m_schema.getText(value));
        const JsonNode::Kind kind = m_schema.at(value).kind;
        FieldValue number;
        if (kind == JsonNode::Number) {
            const std::string_view raw = m_schema.getRaw(value);
            number = JsonScalar::toNumber(raw);
        }
        if (!find(node, "type"))
            addType(shape, kind == JsonNode::String                            ? JsonShape::String
                           : kind == JsonNode::True || kind == JsonNode::False ? JsonShape::Boolean
                           : kind == JsonNode::Null                            ? JsonShape::Nothing
                           : kind == JsonNode::Number && number.isInteger()    ? JsonShape::Integer
                           : kind == JsonNode::Number                          ? JsonShape::Number
                                                                               : JsonShape::Any);
        const QString title = textOf(node, "title");
        if (number.isInteger() && !isList && !title.isEmpty())
            shape->enumerators.append(FieldInfo::Enumerator(number.toUnsigned(), title, textOf(node, "description")));
    }
    if (isList)
        shape->rangeText = texts.join(QStringLiteral(", ")).left(LongestRange);
}

QString JsonSchema::descriptionOf(quint32 node) const
{
    const QString description = textOf(node, "description");
    return description.isEmpty() ? textOf(node, "title") : description;
}

void JsonSchema::describe(JsonShape* shape, quint32 node) const
{
    shape->description = descriptionOf(node);
    shape->unit = textOf(node, "unit");
    const quint32 least = find(node, "minimum");
    const quint32 greatest = find(node, "maximum");
    if (!shape->rangeText.isEmpty())
        return;
    if (least && greatest)
        shape->rangeText = tr("%1 to %2").arg(m_schema.getText(least), m_schema.getText(greatest));
    else if (least)
        shape->rangeText = tr("at least %1").arg(m_schema.getText(least));
    else if (greatest)
        shape->rangeText = tr("at most %1").arg(m_schema.getText(greatest));
}

/** Whether it is how times and durations are written where JSON has none, with "sec" and "nsec". */
bool JsonSchema::recognizeTime(JsonShape* shape, quint32 node) const
{
    const QString title = textOf(node, "title");
    const bool isDuration = title == QLatin1String("duration");
    if (shape->kind != JsonShape::Object || (!isDuration && title != QLatin1String("time")))
        return false;
    const auto isNamed = [shape](const char* name) {
        return std::any_of(shape->members.begin(), shape->members.end(),
                           [name](const JsonShape::Member& member) { return member.name == QLatin1String(name); });
    };
    if (shape->members.size() != 2 || !isNamed("sec") || !isNamed("nsec"))
        return false;
    shape->kind = isDuration ? JsonShape::Duration : JsonShape::Time;
    shape->members.clear();
    shape->description = textOf(node, "description");
    return true;
}
