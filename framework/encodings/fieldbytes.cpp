#include "fieldbytes.h"

#include "fieldinfo.h"
#include "fieldlocator.h"
#include "flagfieldinfo.h"
#include "message.h"
#include "messageinfo.h"

#include <QtAlgorithms>

#include <algorithm>

namespace
{

typedef FieldBytes::Range BitRange;

FieldLocator::Holder holderOf(const Message* message)
{
    return {message, &message->getData(), {{0, message->getData().size()}}};
}

/** The bits of a number that a flag consists of; numbers with flags have their lowest byte first. */
void narrow(QVector<BitRange>* ranges, quint64 flag)
{
    const qint64 begin = ranges->isEmpty() ? 0 : ranges->first().begin;
    const qint64 end = ranges->isEmpty() ? 0 : ranges->last().end;
    ranges->clear();
    for (; flag != 0; flag &= flag - 1) {
        const qint64 bit = begin + qint64(qCountTrailingZeroBits(flag));
        if (bit >= end)
            return;
        if (!ranges->isEmpty() && ranges->last().end == bit)
            ++ranges->last().end;
        else
            ranges->append({bit, bit + 1});
    }
}

/** Where the values of a field are, which the message has. */
FieldBytes::End locate(const FieldLocator::Holder& holder, const FieldInfo* field, int index, QVector<BitRange>* bits,
                       QVector<ByteRange>* inside)
{
    if (field->isVirtual())
        return FieldBytes::Computed;
    const auto* const flag = dynamic_cast<const FlagFieldInfo*>(field);
    const auto* const locator = dynamic_cast<const FieldLocator*>(flag ? field->getParentFieldInfo() : field);
    if (!locator || (flag && index < 0))
        return FieldBytes::Untold;
    LocatedBytes found;
    const FieldBytes::End end = locator->locate(holder, index, &found);
    if (end != FieldBytes::Found)
        return end;
    for (const ByteRange& range : std::as_const(found.bytes))
        if (range.begin < range.end)
            bits->append({8 * range.begin, 8 * range.end});
    if (flag)
        narrow(bits, flag->getBits());
    if (inside)
        *inside = found.inside;
    return bits->isEmpty() ? FieldBytes::LeftOff : FieldBytes::Found;
}

bool contains(const QVector<BitRange>& ranges, qint64 bit)
{
    return std::any_of(ranges.cbegin(), ranges.cend(),
                       [bit](const BitRange& range) { return range.begin <= bit && bit < range.end; });
}

/** Walks down to what has a bit. */
class Search
{
public:
    Search(qint64 bit, FieldBytes::Grain grain)
        : m_bit(bit)
        , m_grain(grain)
    {
    }

    bool find(const FieldLocator::Holder& holder, FieldPath* path) const
    {
        const QVector<const FieldInfo*> fields = holder.message->getInfo()->getFieldInfos();
        return std::any_of(fields.cbegin(), fields.cend(),
                           [&](const FieldInfo* field) { return findIn(holder, field, path); });
    }

private:
    bool findIn(const FieldLocator::Holder& holder, const FieldInfo* field, FieldPath* path) const
    {
        if (field->isVirtual() || !dynamic_cast<const FieldLocator*>(field))
            return false;
        const unsigned int count = field->getValueCount(holder.message);
        QVector<ByteRange> inside;
        const bool isMany = field->isRepeated();
        if (count == 0 || !hasBit(holder, field, isMany ? -1 : 0, &inside))
            return false;
        const int index = isMany && !field->isStringField() ? findValue(holder, field, int(count), &inside) : -1;
        path->append(field, index);
        if (isMany && index < 0)
            return true;
        const Message* const part = field->getValue(holder.message, index < 0 ? 0u : unsigned(index)).getSubMessage();
        if (part) {
            find({part, holder.bytes, inside}, path);
            return true;
        }
        const QVector<const FieldInfo*> components = field->getSubFieldInfos();
        for (const FieldInfo* const component : components) {
            const bool isFlag = dynamic_cast<const FlagFieldInfo*>(component);
            if ((isFlag && m_grain == FieldBytes::Bytes) || !hasBit(holder, component, qMax(0, index), nullptr))
                continue;
            path->append(component, index);
            break;
        }
        return true;
    }

    bool hasBit(const FieldLocator::Holder& holder, const FieldInfo* field, int index, QVector<ByteRange>* inside) const
    {
        QVector<BitRange> bits;
        return locate(holder, field, index, &bits, inside) == FieldBytes::Found && contains(bits, m_bit);
    }

    /** The number of the value that has it; values stand in their order. Negative for what stands between them. */
    int findValue(const FieldLocator::Holder& holder, const FieldInfo* field, int count,
                  QVector<ByteRange>* inside) const
    {
        int least = 0;
        while (count - least > 1) {
            const int middle = least + (count - least) / 2;
            QVector<BitRange> bits;
            const bool isBefore =
                locate(holder, field, middle, &bits, nullptr) == FieldBytes::Found && bits.first().begin <= m_bit;
            (isBefore ? least : count) = middle;
        }
        return hasBit(holder, field, least, inside) ? least : -1;
    }

    qint64 m_bit;
    FieldBytes::Grain m_grain;
};

} // namespace

QString FieldLocator::getNameOfRest(const QByteArray&, qint64) const
{
    return QString();
}

FieldBytes::FieldBytes(const FieldPath& path, const Message* message)
    : m_end(Untold)
{
    if (!message || path.getMessageInfo() != message->getInfo())
        return;
    FieldLocator::Holder holder = holderOf(message);
    const QVector<FieldPath::Step>& steps = path.getSteps();
    if (steps.isEmpty()) {
        m_end = Found;
        m_ranges.append({0, 8 * qint64(message->getData().size())});
    }
    const int last = int(steps.size()) - 1;
    for (int level = 0; level <= last; ++level) {
        const FieldPath::Step& step = steps.at(level);
        // Components stand where their whole field does.
        if (level < last && step.field->getType().getTypeCode() != FieldType::SubMessageType)
            continue;
        const unsigned int count = step.field->getValueCount(holder.message);
        m_end = Absent;
        if (count == 0 || (step.number >= 0 && unsigned(step.number) >= count))
            return;
        QVector<ByteRange> inside;
        m_end = locate(holder, step.field, step.number, &m_ranges, &inside);
        if (level == last || m_end != Found || step.number < 0)
            return;
        m_ranges.clear();
        m_end = Absent;
        holder = {step.field->getValue(holder.message, unsigned(step.number)).getSubMessage(), holder.bytes, inside};
        if (!holder.message)
            return;
    }
}

FieldPath FieldBytes::at(const Message* message, qint64 bit, Grain grain)
{
    FieldPath path(message->getInfo());
    if (bit >= 0 && bit < 8 * qint64(message->getData().size()))
        Search(bit, grain).find(holderOf(message), &path);
    return path;
}

QString FieldBytes::getNameOfRest(const Message* message, qint64 byte)
{
    const QVector<const FieldInfo*> fields = message->getInfo()->getFieldInfos();
    const auto* const locator = fields.isEmpty() ? nullptr : dynamic_cast<const FieldLocator*>(fields.first());
    return locator ? locator->getNameOfRest(message->getData(), byte) : QString();
}
