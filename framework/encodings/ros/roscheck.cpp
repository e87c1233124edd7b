#include "roscheck.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Ros;

static const int GreatestProblemCount = 20;
static const qint64 NanosPerSecond = 1000000000;

bool RosCheck::readsTo(const Plan& plan, Place place, bool isPlain)
{
    const bool isWhole = readStruct(plan, &place, isPlain);
    m_left = place.getLeft();
    return isWhole;
}

void RosCheck::note(quint32 at, const QString& text)
{
    if (m_problems.size() == GreatestProblemCount)
        m_problems.append(QCoreApplication::translate("RosMessage", "and more"));
    if (m_problems.size() > GreatestProblemCount)
        return;
    QString path;
    for (const Step& step : m_path) {
        path += (path.isEmpty() ? QString() : QStringLiteral(".")) + step.structure->members[step.member].name;
        if (step.index >= 0)
            path += QStringLiteral("[%1]").arg(step.index);
    }
    m_problems.append((path.isEmpty()
                           ? QCoreApplication::translate("RosMessage", "byte %1: ").arg(at)
                           : QCoreApplication::translate("RosMessage", "%1 at byte %2: ").arg(path).arg(at)) +
                      text);
}

bool RosCheck::fail(quint32 at, const QString& text)
{
    note(at, text + QCoreApplication::translate("RosMessage", "; the rest is not decoded"));
    return false;
}

bool RosCheck::failShort(const Place& place, quint64 size)
{
    return fail(
        place.at,
        QCoreApplication::translate("RosMessage", "takes %1 bytes where %2 are left").arg(size).arg(place.getLeft()));
}

bool RosCheck::readNode(const Node& node, Place* place)
{
    if (node.isFixed && node.isPlain) {
        const Place begin = *place;
        return m_wire.skip(node, place) || (node.kind == Kind::Struct ? readMembers(*node.plan, place)
                                                                      : failShort(begin, node.sizes[begin.getPhase()]));
    }
    if (node.kind == Kind::Bool) {
        if (place->getLeft() == 0)
            return failShort(*place, 1);
        const quint8 value = m_wire.read<quint8>(place->at++);
        if (value > 1)
            note(place->at - 1, QCoreApplication::translate("RosMessage", "%1 is no truth value").arg(value));
        return true;
    }
    if (node.kind == Kind::Struct)
        return readStruct(*node.plan, place, false);
    return isCollection(node.kind) ? readCollection(node, place) : readText(node, place);
}

bool RosCheck::readText(const Node& node, Place* place)
{
    quint32 length;
    const Place begin = *place;
    if (!m_wire.takeLength(place, &length))
        return failShort(begin, 4);
    const quint32 at = place->at - 4;
    const bool isNarrow = node.kind == Kind::String;
    const quint64 size = isNarrow ? length : m_wire.wideSize(length);
    if (size > place->getLeft())
        return failShort(*place, size);
    const bool isEnded = isNarrow && m_wire.hasTerminator() && length > 0;
    if (isEnded && *m_wire.getBytes(place->at + length - 1) != 0)
        note(at, QCoreApplication::translate("RosMessage", "a text without a zero byte at its end"));
    else if (node.count > 0 && length - quint32(isEnded) > node.count)
        note(at, QCoreApplication::translate("RosMessage", "%1 characters where the schema allows %2")
                     .arg(length - quint32(isEnded))
                     .arg(node.count));
    place->at += static_cast<quint32>(size);
    return true;
}

bool RosCheck::readCollection(const Node& node, Place* place)
{
    const Place begin = *place;
    Place inner = *place;
    quint32 count;
    if (!m_wire.open(node, &inner, &count))
        return failShort(begin, 4);
    if (node.hasHeader && !m_wire.skip(node, place))
        return fail(begin.at, QCoreApplication::translate("RosMessage", "is said to go beyond the end"));
    if (node.kind == Kind::Sequence && node.count > 0 && count > node.count)
        note(begin.at, QCoreApplication::translate("RosMessage", "%1 elements where the schema allows %2")
                           .arg(count)
                           .arg(node.count));
    const Node& element = *node.element;
    const bool isFixed = element.isFixed && element.isPlain;
    const quint64 end = isFixed ? endOf(element.sizes, inner.at, inner.origin, count) : inner.at;
    if (end > inner.limit || count > Wire::mostElements(element, inner))
        return fail(begin.at, QCoreApplication::translate("RosMessage", "%1 elements where %2 bytes are left")
                                  .arg(count)
                                  .arg(inner.getLeft()));
    inner.at = static_cast<quint32>(end);
    for (quint32 i = 0; i < count && !isFixed; ++i) {
        m_path.back().index = i;
        if (!readNode(element, &inner))
            return false;
    }
    m_path.back().index = -1;
    if (!node.hasHeader)
        place->at = inner.at;
    else if (inner.getLeft() > 0)
        return fail(begin.at, QCoreApplication::translate("RosMessage", "is said to be longer than its elements"));
    return true;
}

bool RosCheck::readStruct(const Plan& plan, Place* place, bool isPlain)
{
    if (isPlain || !plan.hasHeader)
        return readMembers(plan, place);
    Place inner = *place;
    quint32 size;
    if (!m_wire.takeLength(&inner, &size))
        return failShort(*place, 4);
    if (size > inner.getLeft() || size < plan.getLeast())
        return failShort(inner, std::max(size, plan.getLeast()));
    place->at = inner.at + size;
    inner.limit = place->at;
    const bool isWhole = readMembers(plan, &inner);
    m_isExact = m_isExact && inner.getLeft() == 0;
    return isWhole;
}

bool RosCheck::readMembers(const Plan& plan, Place* place)
{
    if (plan.isList())
        return readList(plan, place);
    const std::size_t count = plan.form == Plan::Union ? 1 : plan.parts.size();
    const Place begin = *place;
    for (std::size_t i = 0; i < count; ++i) {
        // A sender of an older version ends before what it does not have.
        if (plan.hasHeader && aligned(place->at, place->origin, plan.parts[i].node->alignment) >= place->limit) {
            m_isExact = false;
            return true;
        }
        if (!readMember(plan, i, place))
            return false;
    }
    int chosen = -1;
    Place inner = begin;
    if (plan.form == Plan::Union && m_wire.openCase(plan, &inner, &chosen) && chosen > 0 &&
        !readMember(plan, static_cast<std::size_t>(chosen), place))
        return false;
    if (plan.structure->isPadded && place->getLeft() == 0)
        return failShort(*place, 1);
    place->at += quint32(plan.structure->isPadded);
    if (plan.structure->meaning != Struct::NoTime) {
        const quint32 nanosAt = place->at - 4;
        const Kind kind = plan.parts[1].node->kind;
        const qint64 nanos = m_wire.readInteger(kind, nanosAt);
        if (nanos >= NanosPerSecond || nanos <= -NanosPerSecond)
            note(nanosAt,
                 QCoreApplication::translate("RosMessage", "%1 nanoseconds are no part of a second").arg(nanos));
    }
    return true;
}

bool RosCheck::readMember(const Plan& plan, std::size_t member, Place* place)
{
    const Plan::Part& part = plan.parts[member];
    m_path.push_back(Step{plan.structure, member, -1});
    bool good = true;
    if (part.isOptional) {
        bool isThere = false;
        const Place begin = *place;
        Place value = *place;
        good =
            m_wire.openOptional(&value, &isThere) ||
            (begin.getLeft() == 0
                 ? failShort(begin, 1)
                 : fail(begin.at, QCoreApplication::translate("RosMessage", "its head makes no sense or breaks off")));
        const bool isLimited = isThere && m_wire.hasMemberHeaders();
        if (good)
            place->at = isLimited ? value.limit : value.at;
        good = good && (!isThere || readNode(*part.node, isLimited ? &value : place));
    } else {
        good = readNode(*part.node, place);
    }
    m_path.pop_back();
    return good;
}

bool RosCheck::readList(const Plan& plan, Place* place)
{
    Listed listed;
    while (m_wire.takeListed(plan.form, place, &listed)) {
        if (listed.isEnd)
            return true;
        const int member = plan.find(listed.id);
        if (member < 0) {
            if (listed.isNeeded)
                note(listed.value.at,
                     QCoreApplication::translate("RosMessage", "member %1 must be understood, and is not known")
                         .arg(listed.id));
            continue;
        }
        m_path.push_back(Step{plan.structure, static_cast<std::size_t>(member), -1});
        const bool good = readNode(*plan.parts[static_cast<std::size_t>(member)].node, &listed.value);
        m_path.pop_back();
        if (!good)
            return false;
    }
    return fail(place->at, QCoreApplication::translate("RosMessage", "its list of members breaks off"));
}
