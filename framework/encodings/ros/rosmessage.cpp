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
    return RosMessage::make(this, data);
}

RosMessage* RosMessage::make(const RosMessageInfo* info, const QByteArray& data)
{
    return ::new (roomFor(info)) RosMessage(info, data);
}

// One allocation instead of two: most messages of which anybody asks for a part are thrown away soon.
void* RosMessage::roomFor(const RosMessageInfo* info)
{
    static_assert(alignof(Slot) <= alignof(RosMessage), "slots stand behind a message");
    return ::operator new(sizeof(RosMessage) + static_cast<std::size_t>(info->getSlotCount()) * sizeof(Slot));
}

RosMessage::RosMessage(const RosMessageInfo* info, const QByteArray& data)
    : Message(info, data)
    , m_whole(nullptr)
    , m_firstPart(nullptr)
    , m_nextPart(nullptr)
    , m_hasSlots(false)
    , m_hasElements(false)
{
}

RosMessage::RosMessage(const RosMessage* whole, const RosMessageInfo* info, const Ros::Plan* plan,
                       const Ros::Place& place)
    : Message(info)
    , m_whole(whole->m_whole ? whole->m_whole : whole)
    , m_wire(whole->m_wire)
    , m_firstPart(nullptr)
    , m_nextPart(nullptr)
    , m_hasSlots(false)
    , m_hasElements(false)
{
    m_view.emplace(&m_wire, plan, place);
    setTime(whole->getTime());
    setSequence(whole->getSequence());
    if (!whole->getSender().isEmpty())
        setSender(whole->getSender());
}

RosMessage::~RosMessage()
{
    for (const RosMessage *part = m_firstPart, *next; part; part = next) {
        next = part->m_nextPart;
        if (part->getReferenceCount() == 1) {
            delete part;
            continue;
        }
        part->outlive(getBytes());
        part->removeReference();
    }
    if (m_hasElements)
        std::destroy_n(getSlots(), static_cast<const RosMessageInfo*>(getInfo())->getSlotCount());
}

const QByteArray& RosMessage::getBytes() const
{
    if (m_whole)
        return m_whole->getBytes();
    return m_left.isNull() ? getData() : m_left;
}

/** Keeps the bytes: the message that they came in is about to go. */
void RosMessage::outlive(const QByteArray& bytes) const
{
    m_whole = nullptr;
    m_left = bytes;
    for (const RosMessage* part = m_firstPart; part; part = part->m_nextPart)
        part->outlive(bytes);
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
        m_view.emplace(&m_wire, layout.planOf(info->getStruct()), Ros::Place{quint32(data.size()), 4, 4});
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
        if (!m_whole && m_left.isNull())
            *m_problems = RosOpening(info->getTypes(), info->getStruct(), getData()).findProblems();
    }
    return *m_problems;
}

RosMessage::Slot& RosMessage::slotOf(int slot) const
{
    if (!m_hasSlots)
        std::uninitialized_value_construct_n(getSlots(), static_cast<const RosMessageInfo*>(getInfo())->getSlotCount());
    m_hasSlots = true;
    return getSlots()[slot];
}

RosMessage::Elements& RosMessage::elementsOf(int slot) const
{
    Slot& found = slotOf(slot);
    if (!found.elements)
        found.elements = std::make_unique<Elements>();
    m_hasElements = true;
    return *found.elements;
}

const Message* RosMessage::getPart(int slot, unsigned int index, const RosMessageInfo* info, const Ros::Node& node,
                                   const Ros::Place& place) const
{
    std::vector<const RosMessage*>* const others = index > 0 ? &elementsOf(slot).parts : nullptr;
    if (index > 0 && index > others->size())
        others->resize(index, nullptr);
    const RosMessage*& part = index > 0 ? (*others)[index - 1] : slotOf(slot).first;
    if (!part) {
        Ros::Place inside = place;
        m_wire.enter(*node.plan, &inside);
        part = ::new (roomFor(info)) RosMessage(this, info, node.plan, inside);
        part->m_nextPart = m_firstPart;
        m_firstPart = part;
    }
    return part;
}

unsigned int RosMessage::countElements(int slot, const Ros::Node& element, const Ros::Place& first, quint32 most,
                                       bool withLast) const
{
    Elements& found = elementsOf(slot);
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
    place.at = getSlots()[slot].elements->begins[index];
    return place;
}
