#include "roslayout.h"

#include <algorithm>

namespace Ros
{

quint64 endOf(const Sizes& sizes, quint64 at, quint64 from, quint64 count)
{
    // The phases of elements repeat, after eight of them at the latest.
    std::array<quint64, 8> seen;
    std::array<quint64, 8> ends;
    seen.fill(~quint64(0));
    for (quint64 i = 0; i < count && at < Endless; ++i) {
        const quint64 phase = (at - from) & 7;
        if (seen[phase] != ~quint64(0)) {
            const quint64 period = i - seen[phase];
            const quint64 bytes = at - ends[phase];
            const quint64 rounds = (count - i) / period;
            if (bytes == 0)
                return at;
            if (rounds > Endless / bytes)
                return Endless;
            at += rounds * bytes;
            for (i += rounds * period; i < count; ++i)
                at += sizes[(at - from) & 7];
            break;
        }
        seen[phase] = i;
        ends[phase] = at;
        at += sizes[phase];
    }
    return std::min(at, quint64(Endless));
}

Layout::Layout(const Schema& schema, const Rules& rules)
    : m_rules(rules)
    , m_plans(schema.structs.size())
    , m_structs(schema.structs.size(), nullptr)
{
    for (const Struct& structure : schema.structs)
        if (!m_structs[structure.index])
            fillPlan(&structure);
}

const Node* Layout::nodeOf(const Type* type)
{
    const Node*& known = type->kind == Kind::Struct ? m_structs[type->structure->index] : m_byType[type];
    if (known)
        return known;
    if (type->kind == Kind::Struct) {
        fillPlan(type->structure);
        return m_structs[type->structure->index];
    }
    Node node;
    node.kind = type->kind;
    node.count = type->count;
    if (isNumber(type->kind)) {
        node.size = static_cast<quint8>(sizeOf(type->kind));
        node.alignment = std::min<quint8>(std::min<quint8>(node.size, 8), m_rules.alignment);
        node.isFixed = true;
        node.isPlain = type->kind != Kind::Bool;
    } else if (isCollection(type->kind)) {
        node.element = nodeOf(type->element);
        const bool isShort =
            isNumber(type->element->kind) && (!type->element->enumeration || m_rules.headers < Rules::OfEnumerations);
        node.hasHeader = m_rules.headers >= Rules::OfCollections && !isShort;
        node.isFixed = type->kind == Kind::Array && node.element->isFixed && !node.hasHeader;
        node.isPlain = node.isFixed && node.element->isPlain;
        const bool hasCount = type->kind == Kind::Sequence || node.hasHeader;
        node.alignment = hasCount ? std::min<quint8>(4, m_rules.alignment) : node.element->alignment;
    } else {
        node.alignment = std::min<quint8>(4, m_rules.alignment);
        node.isPlain = false;
    }
    if (node.isFixed)
        measure(&node);
    m_nodes.push_back(node);
    known = &m_nodes.back();
    return known;
}

void Layout::measure(Node* node) const
{
    for (quint32 phase = 0; phase < 8; ++phase) {
        if (node->kind == Kind::Array)
            node->sizes[phase] = static_cast<quint32>(endOf(node->element->sizes, phase, 0, node->count) - phase);
        else
            node->sizes[phase] = static_cast<quint32>(aligned(phase, 0, node->alignment) + node->size - phase);
    }
}

void Layout::numberMembers(Plan* plan)
{
    const std::vector<Member>& members = plan->structure->members;
    for (int i = 0; i < static_cast<int>(members.size()); ++i) {
        const Member& member = members[static_cast<std::size_t>(i)];
        if (plan->isList())
            plan->numbers.emplace(member.id, i);
        else if (member.isDefaultCase)
            plan->other = i;
        for (std::size_t j = 0; j < member.cases.size() && !plan->isList(); ++j)
            plan->numbers.emplace(member.cases[j], i);
    }
}

void Layout::fillPlan(const Struct* structure)
{
    Plan& plan = m_plans[structure->index];
    plan.structure = structure;
    plan.form = structure->isUnion ? Plan::Union : Plan::InOrder;
    Node node;
    node.kind = Kind::Struct;
    if (structure->extensibility == Extensibility::Mutable && m_rules.headers == Rules::OfMembers)
        plan.form = Plan::ShortList;
    if (m_rules.headers >= Rules::OfStructs) {
        plan.hasHeader = structure->extensibility == Extensibility::Unspecified
                             ? m_rules.isAppendable
                             : structure->extensibility != Extensibility::Final;
        if (structure->extensibility == Extensibility::Mutable)
            plan.form = Plan::List;
    }
    node.isFixed = plan.form == Plan::InOrder && !plan.hasHeader;
    node.isPlain = node.isFixed && structure->meaning == Struct::NoTime;
    Sizes ends{0, 1, 2, 3, 4, 5, 6, 7};
    for (const Member& member : structure->members) {
        Plan::Part part;
        part.node = nodeOf(member.type);
        part.isOptional = member.isOptional;
        part.section = static_cast<quint32>(plan.ends.size());
        const bool isFixed = part.node->isFixed && !part.isOptional;
        for (quint32 phase = 0; phase < 8; ++phase) {
            const quint32 begin =
                static_cast<quint32>(part.isOptional ? ends[phase] : aligned(ends[phase], 0, part.node->alignment));
            part.offsets[phase] = begin - phase;
            const quint64 behind = quint64(ends[phase]) + part.node->sizes[ends[phase] & 7];
            ends[phase] = isFixed ? static_cast<quint32>(std::min<quint64>(Endless, behind)) : phase;
        }
        if (!isFixed)
            plan.ends.push_back(static_cast<quint32>(plan.parts.size()));
        node.isFixed = node.isFixed && isFixed;
        node.isPlain = node.isPlain && isFixed && part.node->isPlain;
        plan.parts.push_back(part);
    }
    numberMembers(&plan);
    for (quint32 phase = 0; phase < 8; ++phase)
        plan.rest[phase] = ends[phase] - phase + (structure->isPadded ? 1 : 0);
    node.sizes = plan.rest;
    node.plan = &plan;
    m_nodes.push_back(node);
    m_structs[structure->index] = &m_nodes.back();
}

} // namespace Ros
