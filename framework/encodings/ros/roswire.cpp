#include "roswire.h"

#include "utf8text.h"

#include <algorithm>
#include <cmath>

namespace Ros
{

bool Wire::skip(const Node& node, Place* place) const
{
    if (node.isFixed) {
        const quint64 end = quint64(place->at) + node.sizes[place->getPhase()];
        if (end > place->limit)
            return false;
        place->at = static_cast<quint32>(end);
        return true;
    }
    quint32 count;
    if (node.kind == Kind::Struct) {
        return skipStruct(*node.plan, place);
    } else if (node.kind == Kind::String || node.kind == Kind::WideString) {
        if (!takeLength(place, &count))
            return false;
        const quint64 size = node.kind == Kind::String ? count : wideSize(count);
        if (size > place->getLeft())
            return false;
        place->at += static_cast<quint32>(size);
        return true;
    } else if (node.hasHeader) {
        if (!takeLength(place, &count) || count > place->getLeft())
            return false;
        place->at += count;
        return true;
    }
    if (!open(node, place, &count))
        return false;
    if (node.element->isFixed) {
        const quint64 end = endOf(node.element->sizes, place->at, place->origin, count);
        if (end > place->limit)
            return false;
        place->at = static_cast<quint32>(end);
        return true;
    }
    if (count > mostElements(*node.element, *place))
        return false;
    for (; count > 0; --count)
        if (!skip(*node.element, place))
            return false;
    return true;
}

bool Wire::skip(const Plan::Part& part, Place* place) const
{
    if (!part.isOptional)
        return skip(*part.node, place);
    bool isThere;
    Place value = *place;
    if (!openOptional(&value, &isThere))
        return false;
    // What has a header ends where that says.
    if (isThere && hasMemberHeaders())
        value.at = value.limit;
    else if (isThere && !skip(*part.node, &value))
        return false;
    place->at = value.at;
    return true;
}

bool Wire::skipStruct(const Plan& plan, Place* place) const
{
    if (plan.hasHeader) {
        quint32 size;
        if (!takeLength(place, &size) || size > place->getLeft() || size < plan.getLeast())
            return false;
        place->at += size;
        return true;
    }
    if (plan.form == Plan::Union) {
        int chosen;
        return openCase(plan, place, &chosen) && (chosen < 0 || skip(plan.parts[chosen], place));
    }
    if (plan.form != Plan::InOrder) {
        Listed listed;
        do {
            if (!takeListed(plan.form, place, &listed))
                return false;
        } while (!listed.isEnd);
        return true;
    }
    for (const quint32 end : plan.ends) {
        const Plan::Part& part = plan.parts[end];
        const quint64 at = quint64(place->at) + part.offsets[place->getPhase()];
        if (at > place->limit)
            return false;
        place->at = static_cast<quint32>(at);
        if (!skip(part, place))
            return false;
    }
    const quint64 at = quint64(place->at) + plan.rest[place->getPhase()];
    if (at > place->limit)
        return false;
    place->at = static_cast<quint32>(at);
    return true;
}

bool Wire::enter(const Plan& plan, Place* place) const
{
    quint32 size;
    if (!plan.hasHeader)
        return true;
    if (!takeLength(place, &size))
        return false;
    place->limit = place->at + std::min(size, place->getLeft());
    return true;
}

bool Wire::open(const Node& node, Place* place, quint32* count) const
{
    quint32 size;
    if (node.hasHeader) {
        if (!takeLength(place, &size))
            return false;
        place->limit = place->at + std::min(size, place->getLeft());
    }
    *count = node.count;
    return node.kind == Kind::Array || takeLength(place, count);
}

bool Wire::openOptional(Place* place, bool* isThere) const
{
    if (hasMemberHeaders()) {
        Listed listed;
        if (!takeShort(place, &listed) || listed.isEnd)
            return false;
        *isThere = listed.value.getLeft() > 0;
        if (*isThere)
            *place = listed.value;
        return true;
    }
    if (place->getLeft() == 0)
        return false;
    *isThere = read<quint8>(place->at++) != 0;
    return true;
}

bool Wire::takeShort(Place* place, Listed* listed) const
{
    const quint32 idBits = 0x3fff;
    const quint32 extended = 0x3f01;
    const quint32 end = 0x3f02;
    if (!align(place, 4) || place->getLeft() < 4)
        return false;
    const quint16 head = read<quint16>(place->at);
    quint32 size = read<quint16>(place->at + 2);
    place->at += 4;
    listed->id = head & idBits;
    listed->isNeeded = (head & 0x4000) != 0;
    listed->isEnd = listed->id == end;
    if (listed->isEnd)
        return true;
    if (listed->id == extended) {
        if (place->getLeft() < 8)
            return false;
        listed->id = read<quint32>(place->at) & 0x0fffffff;
        size = read<quint32>(place->at + 4);
        place->at += 8;
    }
    const bool good = size <= place->getLeft();
    listed->value = Place{place->at + std::min(size, place->getLeft()), place->at, place->at};
    place->at = listed->value.limit;
    return good;
}

bool Wire::takeListed(Plan::Form form, Place* place, Listed* listed) const
{
    if (form == Plan::ShortList)
        return takeShort(place, listed);
    listed->isEnd = aligned(place->at, place->origin, 4) >= place->limit;
    quint32 head;
    if (listed->isEnd)
        return true;
    if (!takeLength(place, &head))
        return false;
    listed->id = head & 0x0fffffff;
    listed->isNeeded = head >> 31 != 0;
    const quint32 code = head >> 28 & 7;
    quint64 size = quint64(1) << code;
    if (code > 3) {
        quint32 next;
        const quint32 begin = place->at;
        if (!takeLength(place, &next))
            return false;
        size = next;
        // The size is a part of the value.
        if (code > 4) {
            static const quint32 units[] = {1, 4, 8};
            size = 4 + quint64(next) * units[code - 5];
            place->at = begin;
        }
    }
    const bool good = size <= place->getLeft();
    listed->value = *place;
    listed->value.limit = place->at + static_cast<quint32>(std::min<quint64>(size, place->getLeft()));
    place->at = listed->value.limit;
    return good;
}

bool Wire::openCase(const Plan& plan, Place* place, int* chosen) const
{
    const Node& discriminator = *plan.parts[0].node;
    if (!align(place, discriminator.alignment) || place->getLeft() < discriminator.size)
        return false;
    *chosen = plan.find(readInteger(discriminator.kind, place->at));
    place->at += discriminator.size;
    return true;
}

quint64 Wire::wideSize(quint32 length) const
{
    return quint64(length) * (m_wide == WideText::Units ? 2 : m_wide == WideText::Bytes ? 1 : 4);
}

quint32 Wire::mostElements(const Node& element, const Place& first)
{
    const quint32 mostEmpty = 1000;
    const bool isEmpty = element.isFixed && element.sizes[0] == 0;
    return isEmpty ? std::max(mostEmpty, first.getLeft()) : first.getLeft();
}

quint32 Wire::countWhole(const Node& element, const Place& first, quint32 count)
{
    quint32 most = std::min(count, mostElements(element, first));
    if (endOf(element.sizes, first.at, first.origin, most) <= first.limit)
        return most;
    quint32 least = 0;
    while (most - least > 1) {
        const quint32 middle = least + (most - least) / 2;
        (endOf(element.sizes, first.at, first.origin, middle) <= first.limit ? least : most) = middle;
    }
    return least;
}

Place Wire::elementAt(const Node& element, const Place& first, quint32 index)
{
    Place place = first;
    if (isNumber(element.kind) && first.getLeft() > 0)
        align(&place, element.alignment);
    const quint64 at = isNumber(element.kind) ? place.at + quint64(index) * element.size
                                              : endOf(element.sizes, first.at, first.origin, index);
    place.at = static_cast<quint32>(std::min<quint64>(at, first.limit));
    return place;
}

qint64 Wire::readInteger(Kind kind, quint32 at) const
{
    switch (kind) {
    case Kind::Bool:
    case Kind::Char:
    case Kind::UInt8:
        return read<quint8>(at);
    case Kind::Int8:
        return read<qint8>(at);
    case Kind::Int16:
        return read<qint16>(at);
    case Kind::UInt16:
    case Kind::WideChar:
        return read<quint16>(at);
    case Kind::Int32:
        return read<qint32>(at);
    case Kind::UInt32:
        return read<quint32>(at);
    case Kind::Int64:
        return read<qint64>(at);
    case Kind::UInt64:
        return static_cast<qint64>(read<quint64>(at));
    default:
        return 0;
    }
}

double Wire::readQuadruple(quint32 at) const
{
    const bool isBigEndian = (Q_BYTE_ORDER == Q_BIG_ENDIAN) != m_isSwapped;
    const quint64 high = read<quint64>(isBigEndian ? at : at + 8);
    const quint64 low = read<quint64>(isBigEndian ? at + 8 : at);
    const int exponent = static_cast<int>(high >> 48 & 0x7fff);
    const double fraction = std::ldexp(static_cast<double>(high & Q_UINT64_C(0xffffffffffff)), -48) +
                            std::ldexp(static_cast<double>(low), -112);
    double value = exponent == 0 ? std::ldexp(fraction, -16382) : std::ldexp(1 + fraction, exponent - 16383);
    if (exponent == 0x7fff)
        value = fraction == 0 ? qInf() : qQNaN();
    return high >> 63 ? -value : value;
}

QString Wire::readText(quint32 at, quint32 size) const
{
    if (hasTerminator() && size > 0 && m_bytes[at + size - 1] == 0)
        --size;
    return Utf8Text::decode(m_bytes + at, static_cast<int>(size));
}

QString Wire::readWide(quint32 at, quint32 size) const
{
    QString text;
    if (m_wide == WideText::Words) {
        for (quint32 i = 0; i + 4 <= size; i += 4) {
            const uint character = read<quint32>(at + i);
            text += QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1);
        }
        return text;
    }
    for (quint32 i = 0; i + 2 <= size; i += 2)
        text += QChar(read<quint16>(at + i));
    return text;
}

bool View::find(int member, Place* place) const
{
    const Plan::Part& part = m_plan->parts[static_cast<std::size_t>(member)];
    *place = m_start;
    if (m_plan->form != Plan::InOrder) {
        if (m_plan->form != Plan::Union)
            return findListed(member, place);
        int chosen;
        return member == 0 || (m_wire->openCase(*m_plan, place, &chosen) && chosen == member);
    }
    if (part.section > 0 && !findSection(part.section, &place->at))
        return false;
    const quint64 at = quint64(place->at) + part.offsets[place->getPhase()];
    if (at > place->limit)
        return false;
    place->at = static_cast<quint32>(at);
    bool isThere = true;
    return !part.isOptional || (m_wire->openOptional(place, &isThere) && isThere);
}

bool View::findSection(quint32 section, quint32* at) const
{
    const std::size_t count = m_plan->ends.size();
    if (count > FewSections && !m_many)
        m_many.reset(new quint32[count]);
    quint32* const begins = m_many ? m_many.get() : m_few;
    const quint32 broken = Endless;
    while (m_known < section) {
        Place place = m_start;
        place.at = m_known > 0 ? begins[m_known - 1] : m_start.at;
        const Plan::Part& part = m_plan->parts[m_plan->ends[m_known]];
        if (place.at != broken) {
            const quint64 end = quint64(place.at) + part.offsets[place.getPhase()];
            place.at = static_cast<quint32>(std::min<quint64>(end, broken));
        }
        begins[m_known++] = place.at <= place.limit && m_wire->skip(part, &place) ? place.at : broken;
    }
    *at = begins[section - 1];
    return *at != broken;
}

bool View::findListed(int member, Place* place) const
{
    if (!m_listed) {
        const std::size_t count = m_plan->parts.size();
        m_listed.reset(new Place[count]);
        std::fill_n(m_listed.get(), count, Place{0, 0, Endless});
        Listed listed;
        Place next = m_start;
        while (m_wire->takeListed(m_plan->form, &next, &listed) && !listed.isEnd) {
            const int found = m_plan->find(listed.id);
            if (found >= 0 && m_listed[static_cast<std::size_t>(found)].at == Endless)
                m_listed[static_cast<std::size_t>(found)] = listed.value;
        }
    }
    *place = m_listed[static_cast<std::size_t>(member)];
    // A member that is marked as absent has no bytes.
    return place->at != Endless;
}

} // namespace Ros
