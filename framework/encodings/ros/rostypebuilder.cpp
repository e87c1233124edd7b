#include "rostypebuilder.h"

#include "problemfieldinfo.h"
#include "rosfieldinfo.h"
#include "rossummary.h"

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

using namespace Ros;

namespace
{

/** Constants belong to members by habit only: "STATUS_FIX" names a value of "status" of the same type. */
class Constants
{
public:
    explicit Constants(const Struct* structure)
        : m_names(structure->members.size())
        , m_lines(structure->members.size() + 1)
    {
        const std::vector<Member>& members = structure->members;
        QHash<QString, std::size_t> byName;
        for (std::size_t i = 0; i < members.size(); ++i)
            if (isInteger(kindOf(members[i])) && !isBytesOfRos(*members[i].type))
                byName.insert(members[i].name.toUpper(), i);
        // From behind, so that what stands next is known.
        std::size_t nextOfKind[32];
        std::fill(std::begin(nextOfKind), std::end(nextOfKind), members.size());
        std::size_t known = members.size();
        for (std::size_t i = structure->constants.size(); i-- > 0;) {
            const Constant& constant = structure->constants[i];
            while (known > constant.before) {
                --known;
                nextOfKind[static_cast<int>(kindOf(members[known]))] = known;
            }
            const std::size_t owner = ownerOf(constant, members, byName);
            const std::size_t next = nextOfKind[static_cast<int>(constant.kind)];
            if (owner < members.size())
                m_names[owner].prepend(FieldInfo::Enumerator(constant.bits, constant.name, constant.description));
            else
                m_lines[next < members.size() ? next : constant.before].prepend(lineOf(constant));
        }
    }

    const QVector<FieldInfo::Enumerator>& namesOf(std::size_t member) const { return m_names[member]; }
    /** The others that stand before it, a line each; behind the last member those that no member follows. */
    QString linesOf(std::size_t member) const { return m_lines[member].join(QString()); }
    QString lastLines() const { return m_lines.back().join(QString()); }

private:
    static Kind kindOf(const Member& member)
    {
        return isCollection(member.type->kind) ? member.type->element->kind : member.type->kind;
    }

    /** The longest name that it begins with. */
    static std::size_t ownerOf(const Constant& constant, const std::vector<Member>& members,
                               const QHash<QString, std::size_t>& byName)
    {
        for (int end = int(constant.name.lastIndexOf(QLatin1Char('_'))); end > 0;
             end = int(constant.name.lastIndexOf(QLatin1Char('_'), end - 1))) {
            const std::size_t found = byName.value(constant.name.left(end), members.size());
            if (found < members.size() && kindOf(members[found]) == constant.kind)
                return found;
        }
        return members.size();
    }

    static QString lineOf(const Constant& constant)
    {
        QString line = QLatin1Char('\n') + constant.name + QStringLiteral(" = ") + constant.text;
        if (!constant.description.isEmpty())
            line += QStringLiteral(": ") + QString(constant.description).replace(QLatin1Char('\n'), QLatin1Char(' '));
        return line;
    }

    std::vector<QVector<FieldInfo::Enumerator>> m_names;
    std::vector<QStringList> m_lines;
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
            field->setEnumerators(constants.namesOf(i), false);
        field->setDescription((description + constants.linesOf(i)).trimmed());
        if (!member.unit.isEmpty())
            field->setUnit(member.unit);
        info->addField(field);
    }
    if (structure->extensibility == Extensibility::Mutable)
        info->addField(new RosUnknownFieldInfo);
    if (!info->isMain())
        return;
    info->addField(new ProblemFieldInfo<RosMessage>);
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
