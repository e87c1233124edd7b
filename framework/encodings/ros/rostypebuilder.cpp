#include "rostypebuilder.h"

#include "rosfieldinfo.h"
#include "rossummary.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Ros;

namespace
{

/** Constants belong to members by habit only: "STATUS_FIX" names a value of "status" of the same type. */
class Constants
{
public:
    explicit Constants(const Struct* structure)
        : m_struct(structure)
    {
    }

    QVector<FieldInfo::Enumerator> namesOf(const Member& member) const
    {
        QVector<FieldInfo::Enumerator> names;
        for (const Constant& constant : m_struct->constants)
            if (isNumber(constant.kind) && isInteger(constant.kind) && ownerOf(constant) == &member)
                names.append(FieldInfo::Enumerator(constant.bits, constant.name, constant.description));
        return names;
    }

    /** The others of its type that stand before it and after the last such member, a line each. */
    QString linesOf(const Member& member) const
    {
        QString lines;
        for (const Constant& constant : m_struct->constants)
            if (!ownerOf(constant) && nextOf(constant) == &member)
                lines += QLatin1Char('\n') + lineOf(constant);
        return lines;
    }

    /** Those that stand behind all members. */
    QString lastLines() const
    {
        QString lines;
        for (const Constant& constant : m_struct->constants)
            if (!ownerOf(constant) && !nextOf(constant))
                lines += QLatin1Char('\n') + lineOf(constant);
        return lines;
    }

private:
    static Kind kindOf(const Member& member)
    {
        return isCollection(member.type->kind) ? member.type->element->kind : member.type->kind;
    }

    const Member* ownerOf(const Constant& constant) const
    {
        const Member* owner = nullptr;
        for (const Member& member : m_struct->members)
            if (kindOf(member) == constant.kind && isInteger(constant.kind) && !isBytesOfRos(*member.type) &&
                constant.name.startsWith(member.name.toUpper() + QLatin1Char('_')) &&
                (!owner || owner->name.size() < member.name.size()))
                owner = &member;
        return owner;
    }

    const Member* nextOf(const Constant& constant) const
    {
        const auto begin = m_struct->members.begin() + static_cast<std::ptrdiff_t>(constant.before);
        const auto end = m_struct->members.end();
        const auto same = std::find_if(begin, end, [&](const Member& m) { return kindOf(m) == constant.kind; });
        return same != end ? &*same : begin != end ? &*begin : nullptr;
    }

    static QString lineOf(const Constant& constant)
    {
        QString line = constant.name + QStringLiteral(" = ") + constant.text;
        if (!constant.description.isEmpty())
            line += QStringLiteral(": ") + QString(constant.description).replace(QLatin1Char('\n'), QLatin1Char(' '));
        return line;
    }

    const Struct* m_struct;
};

} // namespace

RosTypeBuilder::RosTypeBuilder(const std::shared_ptr<const RosTypes>& types, QVector<MessageInfo*>* made)
    : m_types(types)
    , m_made(made)
{
}

const RosMessageInfo* RosTypeBuilder::build(const Struct* structure)
{
    RosMessageInfo* const info = makeInfo(structure, true);
    while (!m_empty.empty()) {
        RosMessageInfo* const next = m_empty.back();
        m_empty.pop_back();
        fill(next);
    }
    return info;
}

RosMessageInfo* RosTypeBuilder::makeInfo(const Struct* structure, bool main)
{
    RosMessageInfo* const info = new RosMessageInfo(structure->name, main, m_types, structure);
    m_made->append(info);
    m_empty.push_back(info);
    return info;
}

RosMessageInfo* RosTypeBuilder::partInfo(const Struct* structure)
{
    RosMessageInfo*& info = m_parts[structure];
    if (!info)
        info = makeInfo(structure, false);
    return info;
}

void RosTypeBuilder::fill(RosMessageInfo* info)
{
    const Struct* const structure = info->getStruct();
    const Constants constants(structure);
    info->setShortDescriptiveText(
        (structure->description.section(QLatin1Char('\n'), 0, 0) + constants.lastLines()).trimmed());
    for (std::size_t i = 0; i < structure->members.size(); ++i) {
        const Member& member = structure->members[i];
        const Type& type = isCollection(member.type->kind) ? *member.type->element : *member.type;
        FieldInfo* const field = createField(member, info, static_cast<int>(i));
        QString description = member.description;
        if (!member.defaultText.isEmpty())
            description +=
                QLatin1Char('\n') + QCoreApplication::translate("RosSchema", "Default: %1").arg(member.defaultText);
        if (type.enumeration)
            field->setEnumerators(type.enumeration->values, type.enumeration->isBitmask);
        else
            field->setEnumerators(constants.namesOf(member), false);
        field->setDescription((description + constants.linesOf(member)).trimmed());
        if (!member.unit.isEmpty())
            field->setUnit(member.unit);
        info->addField(field);
    }
    if (structure->extensibility == Extensibility::Mutable)
        info->addField(new RosUnknownFieldInfo);
    if (!info->isMain())
        return;
    info->addField(new RosProblemFieldInfo);
    if (FieldInfo* const summary = RosSummaryFieldInfo::create(info))
        info->addField(summary);
}

FieldInfo* RosTypeBuilder::createField(const Member& member, RosMessageInfo* info, int number)
{
    const Type& type = *member.type;
    const Type& element = isCollection(type.kind) ? *type.element : type;
    if (element.kind == Kind::Struct && element.structure->meaning != Struct::NoTime)
        return new RosTimeFieldInfo(member.name, element.structure, info, number);
    if (isBytesOfRos(type))
        return new RosFieldInfo(member.name, FieldType(FieldType::BytesType, 0, type.name), info, number);
    return new RosFieldInfo(member.name, typeOf(element), info, number);
}

FieldType RosTypeBuilder::typeOf(const Type& type)
{
    switch (type.kind) {
    case Kind::Bool:
        return FieldType(FieldType::BoolType, 1, type.name);
    case Kind::Char:
        return FieldType(FieldType::UnsignedCharType, 1, type.name);
    case Kind::Int8:
    case Kind::Int16:
    case Kind::Int32:
    case Kind::Int64:
        return FieldType(FieldType::SignedType, sizeOf(type.kind), type.name);
    case Kind::Float32:
    case Kind::Float64:
        return FieldType(FieldType::FloatType, sizeOf(type.kind), type.name);
    case Kind::LongDouble:
        return FieldType(FieldType::FloatType, 8, type.name);
    case Kind::String:
    case Kind::WideString:
    case Kind::WideChar:
        return FieldType(FieldType::TextType, 0, type.name);
    case Kind::Struct:
        return FieldType(partInfo(type.structure));
    default:
        return FieldType(FieldType::UnsignedType, sizeOf(type.kind), type.name);
    }
}
