#include "rosmessage.h"

#include <algorithm>

RosMessageInfo::RosMessageInfo(const QString& name, bool main, const std::shared_ptr<const RosTypes>& types,
                               const Ros::Struct* structure)
    : MessageInfo(name, main)
    , m_types(types)
    , m_struct(structure)
    , m_slotCount(0)
{
}

Message* RosMessageInfo::newMessage(const QByteArray& data) const
{
    return new RosMessage(this, data);
}

RosMessage::RosMessage(const RosMessageInfo* info, const QByteArray& data)
    : Message(info, data)
{
}

RosMessage::RosMessage(const RosMessage* whole, const RosMessageInfo* info, const Ros::Node& node, Ros::Place place)
    : Message(info)
    , m_shared(whole->m_shared.isNull() ? whole->getData() : whole->m_shared)
    , m_wire(whole->m_wire)
{
    m_wire.enter(*node.plan, &place);
    m_view.emplace(&m_wire, node.plan, place);
    setTime(whole->getTime());
    setSequence(whole->getSequence());
    if (!whole->getSender().isEmpty())
        setSender(whole->getSender());
}

RosMessage::~RosMessage()
{
    if (!m_slots)
        return;
    const int count = static_cast<const RosMessageInfo*>(getInfo())->getSlotCount();
    for (int slot = 0; slot < count; ++slot) {
        if (m_slots[slot].first)
            m_slots[slot].first->removeReference();
        if (m_slots[slot].elements)
            for (const RosMessage* part : m_slots[slot].elements->parts)
                if (part)
                    part->removeReference();
    }
}

void RosMessage::open() const
{
    const RosMessageInfo* const info = static_cast<const RosMessageInfo*>(getInfo());
    const QByteArray& data = getData();
    // Nearly all messages are written in one way, and there is nothing to be found out.
    const bool isCommon = data.size() >= 4 && data.at(0) == 0 && data.at(1) == 1 && quint64(data.size()) < Ros::Endless;
    if (isCommon && Q_BYTE_ORDER == Q_LITTLE_ENDIAN && info->getTypes().hasOneWay()) {
        const Ros::Layout& layout = info->getTypes().getLayout(RosTypes::Xcdr1Layout);
        m_wire = Ros::Wire(data.constData(), false, &layout.getRules(), Ros::WideText::Units);
        m_view.emplace(&m_wire, layout.planOf(info->getStruct()), Ros::Place{4, quint32(data.size()), 4});
        return;
    }
    const RosOpening opening(info->getTypes(), info->getStruct(), getData());
    m_wire = opening.wire;
    m_view.emplace(&m_wire, opening.plan, opening.start);
}

const QStringList& RosMessage::getProblems() const
{
    if (!m_problems) {
        m_problems.reset(new QStringList);
        const RosMessageInfo* const info = static_cast<const RosMessageInfo*>(getInfo());
        if (m_shared.isNull())
            *m_problems = RosOpening(info->getTypes(), info->getStruct(), getData()).findProblems();
    }
    return *m_problems;
}

RosMessage::Slot& RosMessage::slotOf(int slot) const
{
    if (!m_slots)
        m_slots.reset(
            new Slot[static_cast<std::size_t>(static_cast<const RosMessageInfo*>(getInfo())->getSlotCount())]);
    return m_slots[slot];
}

const Message* RosMessage::getPart(int slot, unsigned int index, const RosMessageInfo* info, const Ros::Node& node,
                                   const Ros::Place& place) const
{
    Slot& found = slotOf(slot);
    if (index > 0 && index > found.getElements().parts.size())
        found.elements->parts.resize(index, nullptr);
    const RosMessage*& part = index == 0 ? found.first : found.elements->parts[index - 1];
    if (!part)
        part = new RosMessage(this, info, node, place);
    return part;
}

unsigned int RosMessage::countElements(int slot, const Ros::Node& element, const Ros::Place& first, quint32 most,
                                       bool withLast) const
{
    Elements& found = slotOf(slot).getElements();
    Ros::Place place = first;
    if (!found.begins.empty())
        place.at = found.end;
    while (found.begins.size() < most && !found.isBroken && place.getLeft() > 0) {
        const quint32 begin = place.at;
        found.isBroken = !m_wire.skip(element, &place);
        if (!found.isBroken || withLast)
            found.begins.push_back(begin);
        found.end = place.at;
    }
    return std::min(most, static_cast<unsigned int>(found.begins.size()));
}

Ros::Place RosMessage::elementAt(int slot, const Ros::Place& first, unsigned int index) const
{
    Ros::Place place = first;
    place.at = m_slots[slot].elements->begins[index];
    return place;
}
