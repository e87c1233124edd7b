#include "jsonshape.h"

#include "jsondocument.h"

#include <algorithm>

namespace
{

// Of one object that has no schema. Names of which there are more are data, and stand among the unknown fields.
const std::size_t MostLearntMembers = 1000;
// Of a type.
const std::size_t MostShapes = 20000;

// Names that are looked at to find members, in all.
const std::size_t MostLookedAt = 100 * 1000 * 1000;

const int DeepestMerged = 8;

JsonShape::Kind kindOf(JsonNode::Kind kind)
{
    switch (kind) {
    case JsonNode::Object:
        return JsonShape::Object;
    case JsonNode::Array:
        return JsonShape::Array;
    case JsonNode::String:
        return JsonShape::String;
    case JsonNode::Number:
        return JsonShape::Number;
    case JsonNode::True:
    case JsonNode::False:
        return JsonShape::Boolean;
    case JsonNode::Null:
        return JsonShape::Nothing;
    case JsonNode::Odd:
        break;
    }
    return JsonShape::Any;
}

bool isNumber(JsonShape::Kind kind)
{
    return kind == JsonShape::Integer || kind == JsonShape::Number;
}

} // namespace

JsonShapes::JsonShapes()
    : m_root(add())
    , m_lookedAt(0)
{
    m_root->isOpen = true;
}

JsonShape* JsonShapes::add()
{
    m_shapes.emplace_back();
    return &m_shapes.back();
}

bool JsonShapes::isOpen() const
{
    return std::any_of(m_shapes.begin(), m_shapes.end(), [](const JsonShape& shape) { return shape.isOpen; });
}

/** The number of the member of that name, which is looked for at @p place first; that behind the last for none. */
std::size_t JsonShapes::findMember(const std::vector<JsonShape::Member>& members, const QString& name,
                                   std::size_t place)
{
    if (place < members.size() && members[place].name == name)
        return place;
    m_lookedAt += members.size();
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&](const JsonShape::Member& member) { return member.name == name; });
    return std::size_t(found - members.begin());
}

bool JsonShapes::learn(const JsonDocument& message)
{
    return !message.isEmpty() && learn(m_root, message, 0);
}

/** Makes an open shape one of values of that kind as well; whether it became another. */
bool JsonShapes::turnInto(JsonShape* shape, JsonShape::Kind kind)
{
    if (!shape->isOpen || shape->kind == kind || shape->kind == JsonShape::Any || kind == JsonShape::Nothing)
        return false;
    shape->kind = shape->kind == JsonShape::Nothing ? kind : JsonShape::Any;
    return true;
}

bool JsonShapes::learn(JsonShape* shape, const JsonDocument& message, quint32 node)
{
    const JsonNode::Kind kind = message.at(node).kind;
    bool changed = turnInto(shape, kindOf(kind));
    if (kind == JsonNode::Object && shape->kind == JsonShape::Object)
        return learnMembers(shape, message, node) || changed;
    if (kind != JsonNode::Array || shape->kind != JsonShape::Array)
        return changed;
    if (!shape->items) {
        shape->items = add();
        shape->items->isOpen = true;
    }
    for (quint32 element = node + 1; element < message.at(node).next; element = message.at(element).next)
        changed = learn(shape->items, message, element) || changed;
    return changed;
}

bool JsonShapes::learnMembers(JsonShape* shape, const JsonDocument& message, quint32 node)
{
    bool changed = false;
    std::size_t place = 0;
    for (quint32 name = node + 1; name < message.at(node).next; name = message.at(name + 1).next, ++place) {
        if (m_lookedAt > MostLookedAt)
            break;
        const QString text = message.getText(name);
        place = findMember(shape->members, text, place);
        if (place == shape->members.size()) {
            if (!shape->isOpen || place >= MostLearntMembers || m_shapes.size() >= MostShapes)
                continue;
            shape->members.push_back({text, add(), QString(), false});
            shape->members.back().shape->isOpen = true;
            changed = true;
        }
        changed = learn(shape->members[place].shape, message, name + 1) || changed;
    }
    return changed;
}

void JsonShapes::merge(JsonShape* left, const JsonShape* right, int depth)
{
    if (left == right || right->kind == JsonShape::Nothing) {
        left->isOpen = left->isOpen || right->isOpen;
        return;
    }
    if (left->kind == JsonShape::Nothing) {
        const JsonShape own = *left;
        *left = *right;
        left->isOpen = own.isOpen || right->isOpen;
        left->name = own.name;
        left->description = own.description.isEmpty() ? right->description : own.description;
        return;
    }
    left->isOpen = left->isOpen || right->isOpen;
    if (isNumber(left->kind) && isNumber(right->kind)) {
        left->kind = left->kind == right->kind ? left->kind : JsonShape::Number;
        left->enumerators += right->enumerators;
    } else if (left->kind != right->kind) {
        left->kind = JsonShape::Any;
    } else if (left->kind == JsonShape::Object) {
        std::size_t place = 0;
        for (const JsonShape::Member& member : right->members) {
            if (m_lookedAt > MostLookedAt)
                break;
            place = findMember(left->members, member.name, place);
            if (place == left->members.size()) {
                left->members.push_back(member);
            } else {
                JsonShape*& shape = left->members[place].shape;
                shape = merged(shape, member.shape, depth);
                ++place;
            }
        }
    } else if (left->kind == JsonShape::Array) {
        left->items = !left->items   ? right->items
                      : right->items ? merged(left->items, right->items, depth)
                                     : left->items;
    }
}

/** A new shape, for those that are merged may be parts of others, and these stay as they are. */
JsonShape* JsonShapes::merged(const JsonShape* left, const JsonShape* right, int depth)
{
    JsonShape* const both = add();
    *both = *left;
    // Shapes that contain themselves have no end.
    if (depth < DeepestMerged && m_shapes.size() < MostShapes)
        merge(both, right, depth + 1);
    return both;
}
