#include "jsontypebuilder.h"

#include "problemfieldinfo.h"

JsonTypeBuilder::JsonTypeBuilder(const QString& name, QVector<MessageInfo*>* made)
    : m_name(name)
    , m_made(made)
{
}

const JsonMessageInfo* JsonTypeBuilder::build(const JsonShape* root)
{
    const JsonMessageInfo* const info = infoOf(root, m_name, true);
    // By and by instead of one within the other: types can contain themselves.
    while (!m_empty.empty()) {
        const Open next = m_empty.back();
        m_empty.pop_back();
        fill(next);
    }
    return info;
}

// A type that is received on its own and occurs as a part is two, for which it is must never change.
JsonMessageInfo* JsonTypeBuilder::infoOf(const JsonShape* shape, const QString& name, bool main)
{
    JsonMessageInfo* info = main ? nullptr : m_parts[shape];
    if (info)
        return info;
    // Where nothing is known at all, members are the more likely.
    const bool isObject = shape->kind == JsonShape::Object || (main && shape->kind == JsonShape::Nothing);
    info = new JsonMessageInfo(name, main, isObject);
    info->setShortDescriptiveText(shape->description.section(QLatin1Char('\n'), 0, 0));
    m_made->append(info);
    m_empty.push_back({info, shape});
    if (!main)
        m_parts[shape] = info;
    return info;
}

void JsonTypeBuilder::fill(const Open& open)
{
    if (open.info->isObject()) {
        for (const JsonShape::Member& member : open.shape->members)
            addField(open.info, member);
    } else {
        JsonShape* const shape = const_cast<JsonShape*>(open.shape); // which is only read
        addField(open.info, {QLatin1String(JsonMessageInfo::ValueName), shape, open.shape->description, true});
    }
    open.info->addField(new JsonUnknownFieldInfo);
    if (open.info->isMain())
        open.info->addField(new ProblemFieldInfo<JsonMessage>);
}

void JsonTypeBuilder::addField(JsonMessageInfo* info, const JsonShape::Member& member)
{
    const bool isRepeated = member.shape->kind == JsonShape::Array && member.shape->items;
    const JsonShape* const value = isRepeated ? member.shape->items : member.shape;
    const QString part = value->name.isEmpty() ? info->getName() + QLatin1Char('.') + member.name
                                               : m_name + QLatin1Char('.') + value->name;
    JsonFieldInfo* const field = new JsonFieldInfo(member.name, value->kind, typeOf(value, part),
                                                   {info, info->getMemberCount(), isRepeated, member.isRequired});
    field->setDescription(member.description.isEmpty() ? member.shape->description : member.description);
    field->setUnit(value->unit);
    field->setRangeText(value->rangeText);
    field->setEnumerators(value->enumerators, false);
    info->addMember(member.name, field);
}

FieldType JsonTypeBuilder::typeOf(const JsonShape* shape, const QString& name)
{
    switch (shape->kind) {
    case JsonShape::Boolean:
        return FieldType(FieldType::BoolType, 1, QStringLiteral("boolean"));
    case JsonShape::Integer:
        return FieldType(FieldType::SignedType, 8, QStringLiteral("integer"));
    case JsonShape::Number:
        return FieldType(FieldType::FloatType, 8, QStringLiteral("number"));
    case JsonShape::String:
        return FieldType(FieldType::TextType, 0, QStringLiteral("string"));
    case JsonShape::Bytes:
        return FieldType(FieldType::BytesType, 0, QStringLiteral("base64"));
    case JsonShape::Time:
        return FieldType(FieldType::TextType, 0, QStringLiteral("time"));
    case JsonShape::Duration:
        return FieldType(FieldType::TextType, 0, QStringLiteral("duration"));
    case JsonShape::Object:
    case JsonShape::Array:
        return FieldType(infoOf(shape, name, false));
    case JsonShape::Nothing:
    case JsonShape::Any:
        break;
    }
    return FieldType(FieldType::NoType, 0, QStringLiteral("any"));
}
