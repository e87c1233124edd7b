#include "plotlines.h"

#include "samefield.h"

#include <algorithm>
#include <cmath>

static ComputedSeries* computed(const std::shared_ptr<PlotSeries>& line)
{
    return dynamic_cast<ComputedSeries*>(line.get());
}

void PlotLines::listRead()
{
    m_read.clear();
    std::copy_if(m_drawn.begin(), m_drawn.end(), std::back_inserter(m_read),
                 [](const auto& line) { return !computed(line); });
    m_read.insert(m_read.end(), m_undrawn.begin(), m_undrawn.end());
}

bool PlotLines::isDrawn(const PlotSeries* series) const
{
    return std::any_of(m_drawn.begin(), m_drawn.end(), [series](const auto& line) { return line.get() == series; });
}

void PlotLines::append(const std::shared_ptr<PlotSeries>& line)
{
    m_drawn.push_back(line);
    m_undrawn.erase(std::remove(m_undrawn.begin(), m_undrawn.end(), line), m_undrawn.end());
    listRead();
}

void PlotLines::remove(std::size_t index)
{
    const std::shared_ptr<PlotSeries> line = m_drawn[index];
    m_drawn.erase(m_drawn.begin() + std::ptrdiff_t(index));
    m_undrawn.push_back(line);
    dropUnused();
}

void PlotLines::clear()
{
    m_drawn.clear();
    m_undrawn.clear();
    m_removed.clear();
    listRead();
}

/** Forgets what is not drawn and of no use for what is. */
void PlotLines::dropUnused()
{
    const auto isUnused = [this](const auto& line) {
        return std::none_of(m_drawn.begin(), m_drawn.end(),
                            [&](const auto& drawn) { return computed(drawn) && computed(drawn)->reads(line.get()); });
    };
    m_undrawn.erase(std::remove_if(m_undrawn.begin(), m_undrawn.end(), isUnused), m_undrawn.end());
    listRead();
}

void PlotLines::sort(const std::function<bool(const PlotSeries*, const PlotSeries*)>& isBefore)
{
    std::stable_sort(m_drawn.begin(), m_drawn.end(),
                     [&](const auto& left, const auto& right) { return isBefore(left.get(), right.get()); });
    listRead();
}

QHash<const PlotSeries*, int> PlotLines::getRanks() const
{
    QHash<const PlotSeries*, int> ranks;
    for (const auto& line : m_drawn) {
        int rank = 0;
        while (m_drawn[std::size_t(rank)] != line &&
               (line->getPath().isNull() || !(m_drawn[std::size_t(rank)]->getPath() == line->getPath())))
            ++rank;
        ranks.insert(line.get(), rank);
    }
    return ranks;
}

const PlotSeries* PlotLines::findDrawn(const QString& wish) const
{
    for (const auto& line : m_drawn)
        if (line->getWish() == wish)
            return line.get();
    return nullptr;
}

bool PlotLines::getTimes(double* from, double* to) const
{
    bool any = false;
    for (const auto& line : m_drawn) {
        double first = 0;
        double last = 0;
        if (!line->getTimes(&first, &last))
            continue;
        *from = any ? std::min(*from, first) : first;
        *to = any ? std::max(*to, last) : last;
        any = true;
    }
    return any && *to > *from;
}

FieldPath PlotLines::pathOf(const FieldPath& field) const
{
    for (const auto& line : m_read)
        if (SameField::areSame(line->getPath(), field))
            return line->getPath();
    return field;
}

PlotSeries* PlotLines::find(const FieldPath& path, const QString& sender) const
{
    PlotSeries* anybodys = nullptr;
    for (const auto& line : m_read) {
        if (!(line->getPath() == path))
            continue;
        const bool isKnown = line->getMessageCount() > 0 || !line->getOrigin().sender.isEmpty();
        if (isKnown && line->getSender() == sender)
            return line.get();
        if (!isKnown && !anybodys)
            anybodys = line.get();
    }
    if (anybodys)
        anybodys->setSender(sender);
    return anybodys;
}

std::shared_ptr<PlotSeries> PlotLines::findOrMake(const PlotExpression::Operand& operand)
{
    const FieldPath field = SameField::fromExpression(operand.path);
    if (!field.getField() || field.isWholeRepeatedField())
        return nullptr;
    const FieldPath path = pathOf(field);
    for (const auto& line : m_read)
        if (line->getPath() == path && (operand.sender.isEmpty() || line->getSender() == operand.sender))
            return line;
    const auto line = std::make_shared<PlotSeries>(path);
    line->setSender(operand.sender);
    line->setOrigin({operand.sender, !operand.sender.isEmpty()});
    m_undrawn.push_back(line); // until it is known what is computed from it
    listRead();
    return line;
}

std::shared_ptr<PlotSeries> PlotLines::findUndrawn(const FieldPath& path, const QString& sender) const
{
    for (const auto& line : m_undrawn)
        if (line->getPath() == path && (sender.isEmpty() || line->getSender() == sender))
            return line;
    return nullptr;
}

bool PlotLines::isDrawnOfEach(const FieldPath& path) const
{
    return std::any_of(m_drawn.begin(), m_drawn.end(), [&path](const auto& line) {
        return line->getPath() == path && line->getOrigin().sender.isEmpty();
    });
}

bool PlotLines::isRemoved(const FieldPath& path, const QString& sender) const
{
    return std::find(m_removed.begin(), m_removed.end(), std::make_pair(path, sender)) != m_removed.end();
}

void PlotLines::forgetRemoved(const FieldPath& path, const QString& sender)
{
    const auto isMeant = [&](const auto& removed) {
        return removed.first == path && (sender.isEmpty() || removed.second == sender);
    };
    m_removed.erase(std::remove_if(m_removed.begin(), m_removed.end(), isMeant), m_removed.end());
}

void PlotLines::renameSender(const QString& before, const QString& now)
{
    for (const auto& line : m_read) {
        const bool isKnown = line->getMessageCount() > 0 || !line->getOrigin().sender.isEmpty();
        if (!isKnown || line->getSender() != before)
            continue;
        line->setSender(now);
        if (!line->getOrigin().sender.isEmpty())
            line->setOrigin({now, line->getOrigin().isTold});
    }
    for (auto& removed : m_removed)
        if (removed.second == before)
            removed.second = now;
}

void PlotLines::updateTypes()
{
    dropUnused();
    m_wanted.clear();
    m_paths.clear();
    for (const auto& line : m_read)
        if (!m_paths.contains(line->getPath()))
            m_paths.append(line->getPath());
    for (const FieldPath& path : std::as_const(m_paths)) {
        const QVector<const MessageInfo*> types = SameField::typesLike(path.getMessageInfo());
        for (const MessageInfo* const type : types)
            if (SameField::in(path, type).getField())
                m_wanted[type].append({path, SameField::in(path, type)});
    }
}

QSet<const MessageInfo*> PlotLines::getTypes() const
{
    const QList<const MessageInfo*> types = m_wanted.keys();
    return QSet<const MessageInfo*>(types.begin(), types.end());
}

bool PlotLines::compute(const std::function<bool()>& goOn)
{
    bool any = false;
    for (const auto& line : m_read) {
        const double change = line->takeChange();
        for (const auto& drawn : m_drawn)
            if (ComputedSeries* const series = std::isinf(change) && change > 0 ? nullptr : computed(drawn))
                series->follow(line.get(), change);
    }
    for (const auto& drawn : m_drawn)
        if (ComputedSeries* const series = computed(drawn))
            any = series->work(goOn) || any;
    return any;
}

bool PlotLines::isBehind() const
{
    return std::any_of(m_drawn.begin(), m_drawn.end(),
                       [](const auto& line) { return computed(line) && computed(line)->isBehind(); });
}
