#include "rosfieldinfo.h"

#include "timetext.h"

#include <QCoreApplication>

#include <algorithm>
#include <set>
#include <typeinfo>

using namespace Ros;

static const int MostUnknown = 100;

namespace
{

const Type& elementOf(const Type& type)
{
    return isCollection(type.kind) ? *type.element : type;
}

const Type& memberType(const RosMessageInfo* holder, std::size_t member)
{
    return *holder->getStruct()->members[member].type;
}

bool needsSlot(const Type& type)
{
    return elementOf(type).kind >= Kind::Struct || (isCollection(type.kind) && !isNumber(elementOf(type).kind));
}

/** Goes to the first byte that says something. */
void skipPadding(const Node& node, const Wire& wire, Place* place)
{
    const Node* inner = &node;
    while (inner->kind == Kind::Struct && !inner->plan->hasHeader && !inner->plan->parts.empty() &&
           !inner->plan->parts.front().isOptional)
        inner = inner->plan->parts.front().node;
    Wire::align(place,
                inner->kind == Kind::Struct && inner->plan->hasHeader ? wire.getLengthAlignment() : inner->alignment);
}

} // namespace

/** Whether there is nothing but values, and what aligns them. */
static bool hasOnlyValues(const Plan& plan, std::set<const Plan*>* known)
{
    if (!known->insert(&plan).second)
        return true;
    if (plan.form != Plan::InOrder || plan.hasHeader)
        return false;
    return std::none_of(plan.parts.begin(), plan.parts.end(), [known](const Plan::Part& part) {
        const Node* node = part.node;
        bool hasHeader = part.isOptional || node->hasHeader;
        for (; isCollection(node->kind); hasHeader = hasHeader || node->hasHeader)
            node = node->element;
        return hasHeader || (node->kind == Kind::Struct && !hasOnlyValues(*node->plan, known));
    });
}

bool isBytesOfRos(const Type& type)
{
    return isCollection(type.kind) && !type.element->enumeration &&
           (type.element->kind == Kind::UInt8 || type.element->kind == Kind::Int8 || type.element->kind == Kind::Char);
}

RosFieldInfo::RosFieldInfo(const QString& name, const FieldType& type, RosMessageInfo* holder, int member)
    : FieldInfo(name, type)
    , m_holder(holder)
    , m_member(static_cast<std::size_t>(member))
    , m_kind(elementOf(memberType(holder, m_member)).kind)
    , m_isBytes(isBytesOfRos(memberType(holder, m_member)))
    , m_isNumber(isNumber(memberType(holder, m_member).kind))
    , m_part(static_cast<const RosMessageInfo*>(type.getSubMessageInfo()))
    , m_slot(needsSlot(memberType(holder, m_member)) ? holder->addSlot() : -1)
{
    const Struct* const structure = holder->getStruct();
    setRepeated(isCollection(memberType(holder, m_member).kind) && !m_isBytes);
    setOptional(structure->members[m_member].isOptional || (structure->isUnion && member > 0));
}

const RosMessage* RosFieldInfo::ownMessage(const Message* message) const
{
    // What others made need not have the bytes that the type says.
    return message->getInfo() == m_holder && typeid(*message) == typeid(RosMessage)
               ? static_cast<const RosMessage*>(message)
               : nullptr;
}

const Node& RosFieldInfo::nodeIn(const RosMessage* message) const
{
    return *message->getView().getPlan().parts[m_member].node;
}

/** How many of the claimed elements there are; where that takes to walk over them, no more than @p most. */
unsigned int RosFieldInfo::countIn(const RosMessage* message, const Node& node, const Place& first, quint32 claimed,
                                   quint32 most) const
{
    const Node& element = *node.element;
    if (!element.isFixed)
        return message->countElements(m_slot, element, first, std::min(claimed, most), m_part != nullptr);
    const quint32 whole = Wire::countWhole(element, first, claimed);
    const bool isBroken = m_part && whole < claimed && Wire::elementAt(element, first, whole).getLeft() > 0;
    return whole + (isBroken ? 1 : 0);
}

unsigned int RosFieldInfo::getValueCount(const Message* message) const
{
    const RosMessage* const own = ownMessage(message);
    Place place;
    quint32 claimed;
    if (!own || !own->getView().find(static_cast<int>(m_member), &place))
        return 0;
    const Node& node = nodeIn(own);
    if (!isCollection(node.kind)) {
        return (m_part && place.getLeft() > 0) || own->getWire().skip(node, &place) ? 1 : 0;
    }
    if (!own->getWire().open(node, &place, &claimed))
        return 0;
    return m_isBytes ? 1 : countIn(own, node, place, claimed, claimed);
}

FieldValue RosFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const RosMessage* const own = ownMessage(message);
    Place place;
    if (!own)
        return FieldValue::invalid();
    if (m_isNumber) {
        if (index > 0 || !own->getView().find(static_cast<int>(m_member), &place))
            return FieldValue::invalid();
        return valueAt(own, index, nodeIn(own), place);
    }
    if (m_part && index == 0)
        if (const Message* const part = own->findPart(m_slot))
            return FieldValue::fromSubMessage(part);
    if (m_isBytes) {
        quint32 size;
        return index == 0 && findBytes(own, &place, &size)
                   ? FieldValue::fromBytes(QByteArray(own->getWire().getBytes(place.at), static_cast<int>(size)))
                   : FieldValue::invalid();
    }
    const Node* node;
    return findElement(own, index, &node, &place) ? valueAt(own, index, *node, place) : FieldValue::invalid();
}

bool RosFieldInfo::findBytes(const RosMessage* message, Place* place, quint32* size) const
{
    if (!message->getView().find(static_cast<int>(m_member), place) ||
        !message->getWire().open(nodeIn(message), place, size))
        return false;
    *size = std::min(*size, place->getLeft());
    return true;
}

quint32 RosFieldInfo::getByteCount(const Message* message) const
{
    const RosMessage* const own = ownMessage(message);
    Place place;
    quint32 size;
    return own && m_isBytes && findBytes(own, &place, &size) ? size : 0;
}

bool RosFieldInfo::findElement(const RosMessage* message, unsigned int index, const Node** element, Place* place) const
{
    if (!message->getView().find(static_cast<int>(m_member), place))
        return false;
    const Node& node = nodeIn(message);
    *element = &node;
    if (!isCollection(node.kind))
        return index == 0;
    quint32 claimed;
    *element = node.element;
    if (!message->getWire().open(node, place, &claimed) || index >= claimed)
        return false;
    // Of numbers whoever reads one sees that it is not there.
    if (!isNumber(m_kind) && index >= countIn(message, node, *place, claimed, index + 1))
        return false;
    if (node.element->isFixed) {
        *place = Wire::elementAt(*node.element, *place, index);
        return true;
    }
    *place = message->elementAt(m_slot, *place, index);
    return true;
}

FieldBytes::End RosFieldInfo::locate(const Holder& holder, int index, LocatedBytes* found) const
{
    const RosMessage* const own = ownMessage(holder.message);
    const Node* node;
    Place begin;
    // Of what is written in a way that is not known, the bytes are not looked at.
    if (!own || own->getWire().getBytes(0) != holder.bytes->constData())
        return FieldBytes::Untold;
    if (index < 0 || m_isBytes || m_isNumber) {
        node = &nodeIn(own);
        if (!own->getView().find(static_cast<int>(m_member), &begin))
            return FieldBytes::Untold;
    } else if (!findElement(own, static_cast<unsigned int>(index), &node, &begin)) {
        return FieldBytes::Untold;
    }
    skipPadding(*node, own->getWire(), &begin);
    Place end = begin;
    const quint32 limit = begin.limit;
    found->bytes.append({begin.at, own->getWire().skip(*node, &end) ? end.at : limit});
    return FieldBytes::Found;
}

QString RosFieldInfo::getNameOfRest(const QByteArray& message, qint64 byte) const
{
    if (m_holder->getTypes().isRos1())
        return QString();
    if (byte < 4)
        return QCoreApplication::translate("RosMessage", "how the message is written");
    const RosOpening opening(m_holder->getTypes(), m_holder->getStruct(), message);
    std::set<const Plan*> known;
    if (opening.wire.getBytes(0) != message.constData() || !hasOnlyValues(*opening.plan, &known))
        return QString();
    const View view(&opening.wire, opening.plan, opening.start);
    Place end;
    if (!view.find(int(opening.plan->parts.size()) - 1, &end) ||
        !opening.wire.skip(*opening.plan->parts.back().node, &end))
        return QString();
    if (byte < end.at)
        return QCoreApplication::translate("RosMessage", "padding, which aligns what follows");
    return end.getLeft() <= 3 ? QCoreApplication::translate("RosMessage", "padding at the end") : QString();
}

FieldValue RosFieldInfo::valueAt(const RosMessage* message, unsigned int index, const Node& node,
                                 const Place& place) const
{
    const Wire& wire = message->getWire();
    if (node.kind == Kind::Struct) {
        Place behind = place;
        if (place.getLeft() == 0 && !wire.skip(node, &behind))
            return FieldValue::invalid();
        return FieldValue::fromSubMessage(message->getPart(m_slot, index, m_part, node, place));
    }
    Place value = place;
    if (isNumber(node.kind)) {
        if (!Wire::align(&value, node.alignment) || value.getLeft() < node.size)
            return FieldValue::invalid();
        return numberAt(wire, value.at);
    }
    quint32 length;
    if (!wire.takeLength(&value, &length))
        return FieldValue::invalid();
    const quint64 size = node.kind == Kind::String ? length : wire.wideSize(length);
    if (size > value.getLeft())
        return FieldValue::invalid();
    return FieldValue::fromText(node.kind == Kind::String ? wire.readText(value.at, length)
                                                          : wire.readWide(value.at, static_cast<quint32>(size)));
}

FieldValue RosFieldInfo::numberAt(const Wire& wire, quint32 at) const
{
    switch (m_kind) {
    case Kind::Bool:
        return FieldValue::fromBool(wire.read<quint8>(at) != 0);
    case Kind::Char:
        return FieldValue::fromChar(wire.read<quint8>(at));
    case Kind::WideChar:
        return FieldValue::fromText(QString(QChar(wire.read<quint16>(at))));
    case Kind::Int8:
    case Kind::Int16:
    case Kind::Int32:
    case Kind::Int64:
        return FieldValue::fromSigned(wire.readInteger(m_kind, at), sizeOf(m_kind));
    case Kind::Float32:
        return FieldValue::fromFloat(wire.read<float>(at));
    case Kind::Float64:
        return FieldValue::fromDouble(wire.read<double>(at));
    case Kind::LongDouble:
        return FieldValue::fromDouble(wire.readQuadruple(at));
    default:
        return FieldValue::fromUnsigned(static_cast<quint64>(wire.readInteger(m_kind, at)), sizeOf(m_kind));
    }
}

/** One of the two numbers of a time. */
class RosTimeFieldInfo::Part : public FieldInfo, public FieldLocator
{
public:
    Part(const RosTimeFieldInfo* whole, const Member& member, int part)
        : FieldInfo(member.name,
                    FieldType(member.type->kind == Kind::UInt32 ? FieldType::UnsignedType : FieldType::SignedType, 4,
                              member.type->name))
        , m_whole(whole)
        , m_part(part)
    {
        setOptional(whole->isOptional());
        setRepeated(whole->isRepeated());
        setUnit(part == 0 ? QStringLiteral("s") : QStringLiteral("ns"));
    }

    unsigned int getValueCount(const Message* message) const override { return m_whole->getValueCount(message); }
    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        return m_whole->partOf(message, index, m_part);
    }
    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override
    {
        const RosMessage* const own = m_whole->ownMessage(holder.message);
        Place begin;
        if (!own || index < 0 || !m_whole->findPart(own, static_cast<unsigned int>(index), &begin))
            return FieldBytes::Untold;
        const qint64 at = begin.at + quint32(4 * m_part);
        found->bytes.append({at, at + 4});
        return FieldBytes::Found;
    }

private:
    const RosTimeFieldInfo* m_whole;
    int m_part;
};

RosTimeFieldInfo::RosTimeFieldInfo(const QString& name, const Struct* time, RosMessageInfo* holder, int member)
    : RosFieldInfo(name, FieldType(FieldType::TextType, 0, time->name), holder, member)
    , m_time(time)
{
    for (int part = 0; part < 2; ++part)
        addSubField(new Part(this, time->members[static_cast<std::size_t>(part)], part));
}

FieldValue RosTimeFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const FieldValue seconds = partOf(message, index, 0);
    if (!seconds.isValid())
        return seconds;
    const qint64 nanos = partOf(message, index, 1).toSigned();
    if (m_time->meaning == Struct::Time)
        return FieldValue::fromText(TimeText::ofTime(seconds.toSigned(), nanos));
    // The nanoseconds go forward also from a negative second, unlike what people read.
    const bool isBorrowed = seconds.toSigned() < 0 && nanos > 0 && nanos < TimeText::NanosPerSecond;
    return FieldValue::fromText(TimeText::ofDuration(seconds.toSigned() + (isBorrowed ? 1 : 0),
                                                     nanos - (isBorrowed ? TimeText::NanosPerSecond : 0)));
}

/** Where the two numbers of a time are. */
bool RosTimeFieldInfo::findPart(const RosMessage* message, unsigned int index, Place* place) const
{
    const Wire& wire = message->getWire();
    const Node* node;
    if (!findElement(message, index, &node, place))
        return false;
    Place behind = *place;
    return wire.skip(*node, &behind) && wire.enter(*node->plan, place) &&
           Wire::align(place, wire.getLengthAlignment()) && place->getLeft() >= 8;
}

FieldValue RosTimeFieldInfo::partOf(const Message* message, unsigned int index, int part) const
{
    const RosMessage* const own = ownMessage(message);
    Place place;
    if (!own || !findPart(own, index, &place))
        return FieldValue::invalid();
    const Kind kind = m_time->members[static_cast<std::size_t>(part)].type->kind;
    const qint64 number = own->getWire().readInteger(kind, place.at + quint32(4 * part));
    return kind == Kind::UInt32 ? FieldValue::fromUnsigned(static_cast<quint64>(number), 4)
                                : FieldValue::fromSigned(number, 4);
}

RosUnknownFieldInfo::RosUnknownFieldInfo()
    : FieldInfo(QStringLiteral("[unknown fields]"), FieldType(FieldType::TextType, 0, QStringLiteral("text")))
{
    setRepeated(true);
    setOptional(true);
    setRole(SecondaryRole);
}

QStringList RosUnknownFieldInfo::textsOf(const Message* message) const
{
    QStringList texts;
    if (!occursIn(message->getInfo()) || typeid(*message) != typeid(RosMessage))
        return texts;
    const RosMessage* const own = static_cast<const RosMessage*>(message);
    const Plan& plan = own->getView().getPlan();
    Place place = own->getView().getStart();
    Listed listed;
    while (plan.isList() && own->getWire().takeListed(plan.form, &place, &listed) && !listed.isEnd) {
        if (texts.size() == MostUnknown) {
            texts.append(QCoreApplication::translate("RosMessage", "and more"));
            break;
        }
        const QByteArray bytes(own->getWire().getBytes(listed.value.at), static_cast<int>(listed.value.getLeft()));
        if (plan.find(listed.id) < 0)
            texts.append(
                QStringLiteral("%1: %2").arg(listed.id).arg(getInterpretedString(FieldValue::fromBytes(bytes), false)));
    }
    return texts;
}

unsigned int RosUnknownFieldInfo::getValueCount(const Message* message) const
{
    return static_cast<unsigned int>(textsOf(message).size());
}

FieldValue RosUnknownFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const QStringList texts = textsOf(message);
    return index < static_cast<unsigned int>(texts.size()) ? FieldValue::fromText(texts.at(static_cast<int>(index)))
                                                           : FieldValue::invalid();
}
