#include "seriespoints.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

static const double NoValue = std::numeric_limits<double>::quiet_NaN();
static const double Infinite = std::numeric_limits<double>::infinity();
// So many points may be moved to let one in between.
static const qint64 LatestPlace = 1 << 14;

static bool isEarlier(const SeriesPoints::Point& left, const SeriesPoints::Point& right)
{
    return left.time < right.time;
}

void SeriesPoints::append(const Point& point)
{
    qint64 at = m_count;
    if (m_isOrdered && m_count > 0 && point.time < last().time) {
        at = findAfter(point.time);
        m_isOrdered = m_count - at <= LatestPlace;
    }
    push(point);
    if (!m_isOrdered || at == m_count - 1) {
        enter(m_count - 1);
        return;
    }
    for (qint64 i = m_count - 1; i > at; --i)
        place(i) = this->at(i - 1);
    place(at) = point;
    enterAnew(at);
}

/** Counts the points anew in the stretches from that of number @p from on. */
void SeriesPoints::enterAnew(qint64 from)
{
    const qint64 first = from >> LeafBits << LeafBits;
    const qint64 count = m_count;
    truncate(first);
    for (m_count = first; m_count < count;)
        enter(m_count++);
}

void SeriesPoints::removeFrom(qint64 count)
{
    if (count <= 0)
        return clear();
    m_count = std::min(m_count, count);
    m_blocks.resize(std::size_t((m_count + BlockMask) >> BlockBits));
    enterAnew(m_count);
}

void SeriesPoints::push(const Point& point)
{
    if (std::size_t(m_count >> BlockBits) >= m_blocks.size())
        m_blocks.emplace_back(new Point[BlockMask + 1]);
    ++m_count;
    place(m_count - 1) = point;
}

/** The place of a point, to be written to, which no copy has. */
SeriesPoints::Point& SeriesPoints::place(qint64 i)
{
    std::shared_ptr<Point[]>& block = m_blocks[std::size_t(i >> BlockBits)];
    if (block.use_count() > 1) {
        const std::shared_ptr<Point[]> copied(new Point[BlockMask + 1]);
        std::copy(block.get(), block.get() + std::min(m_count - (i & ~qint64(BlockMask)), qint64(BlockMask + 1)),
                  copied.get());
        block = copied;
    } else {
        std::atomic_thread_fence(std::memory_order_acquire); // who had a copy has read it all
    }
    return block[i & BlockMask];
}

/** Counts point number @p i, the last of those that are counted, in the stretches that it lies in. */
void SeriesPoints::enter(qint64 i)
{
    const double value = at(i).value;
    for (std::size_t level = 0; level == 0 || i >> shiftOf(level - 1) > 0; ++level) {
        if (level == m_levels.size()) {
            m_levels.emplace_back();
            // The first of a level stands for what is below it already.
            if (level > 0)
                m_levels[level].push_back(m_levels[level - 1].front());
        }
        std::vector<Stretch>& stretches = m_levels[level];
        if (std::size_t(i >> shiftOf(level)) >= stretches.size())
            stretches.push_back({Infinite, -Infinite});
        if (std::isnan(value))
            continue;
        stretches.back().least = std::min(stretches.back().least, value);
        stretches.back().greatest = std::max(stretches.back().greatest, value);
    }
}

/** Forgets the stretches of the points from number @p count on, where one begins; those above are made anew. */
void SeriesPoints::truncate(qint64 count)
{
    if (m_levels.empty())
        return;
    m_levels[0].resize(std::size_t(count >> LeafBits));
    for (std::size_t level = 1; level < m_levels.size(); ++level) {
        const std::vector<Stretch>& below = m_levels[level - 1];
        std::vector<Stretch>& stretches = m_levels[level];
        const std::size_t whole = std::size_t(count >> shiftOf(level));
        stretches.resize(whole);
        for (std::size_t i = whole << LevelBits; i < below.size(); ++i) {
            if (i == whole << LevelBits)
                stretches.push_back({Infinite, -Infinite});
            stretches.back().least = std::min(stretches.back().least, below[i].least);
            stretches.back().greatest = std::max(stretches.back().greatest, below[i].greatest);
        }
    }
    while (!m_levels.empty() && m_levels.back().empty())
        m_levels.pop_back();
}

void SeriesPoints::clear()
{
    m_blocks.clear();
    m_levels.clear();
    m_count = 0;
    m_isOrdered = true;
}

void SeriesPoints::replace(const std::vector<Point>& points)
{
    clear();
    for (const Point& point : points) {
        push(point);
        enter(m_count - 1);
    }
}

void SeriesPoints::settle()
{
    if (m_isOrdered)
        return;
    std::vector<Point> points;
    points.reserve(std::size_t(m_count));
    for (qint64 i = 0; i < m_count; ++i)
        points.push_back(at(i));
    std::stable_sort(points.begin(), points.end(), isEarlier);
    replace(points);
}

void SeriesPoints::removeBefore(double time)
{
    std::vector<Point> points;
    for (qint64 i = findNotBefore(time); i < m_count; ++i)
        points.push_back(at(i));
    replace(points);
}

void SeriesPoints::thinOut()
{
    std::vector<Point> points;
    const qint64 half = m_count / 2;
    for (qint64 i = 0; i < half; i += 4) {
        const qint64 end = std::min(half, i + 4);
        qint64 least = end;
        qint64 greatest = end;
        qint64 missing = end;
        for (qint64 j = i; j < end; ++j) {
            const double value = at(j).value;
            if (std::isnan(value)) {
                missing = j;
                continue;
            }
            least = least == end || value < at(least).value ? j : least;
            greatest = greatest == end || value > at(greatest).value ? j : greatest;
        }
        for (qint64 j = i; j < end; ++j)
            if (j == least || j == greatest || j == missing)
                points.push_back(at(j));
    }
    for (qint64 i = half; i < m_count; ++i)
        points.push_back(at(i));
    const bool isOrdered = m_isOrdered;
    replace(points);
    m_isOrdered = isOrdered;
}

/** Searches from number @p from on, near to it first. */
qint64 SeriesPoints::find(double time, qint64 from, bool after) const
{
    const auto isBefore = [&](qint64 i) { return after ? at(i).time <= time : at(i).time < time; };
    qint64 step = 1;
    qint64 end = from;
    while (end < m_count && isBefore(end)) {
        from = end + 1;
        end += step;
        step *= 2;
    }
    end = std::min(end, m_count);
    while (from < end) {
        const qint64 middle = from + (end - from) / 2;
        if (isBefore(middle))
            from = middle + 1;
        else
            end = middle;
    }
    return from;
}

void SeriesPoints::take(Extremes* extremes, double least, double greatest)
{
    if (!(least <= greatest))
        return; // no value
    extremes->least = extremes->any ? std::min(extremes->least, least) : least;
    extremes->greatest = extremes->any ? std::max(extremes->greatest, greatest) : greatest;
    extremes->any = true;
}

SeriesPoints::Extremes SeriesPoints::getExtremes(qint64 from, qint64 end) const
{
    Extremes extremes;
    while (from < end) {
        // The greatest stretch that begins here and does not go beyond.
        std::size_t level = 0;
        while (level < m_levels.size() && (from & ((qint64(1) << shiftOf(level)) - 1)) == 0 &&
               from + (qint64(1) << shiftOf(level)) <= end)
            ++level;
        if (level == 0) {
            const double value = at(from).value;
            take(&extremes, value, value);
            ++from;
            continue;
        }
        const Stretch& stretch = m_levels[level - 1][std::size_t(from >> shiftOf(level - 1))];
        take(&extremes, stretch.least, stretch.greatest);
        from += qint64(1) << shiftOf(level - 1);
    }
    return extremes;
}

std::vector<SeriesPoints::Point> SeriesPoints::reduce(double from, double to, int pixels) const
{
    std::vector<Point> points;
    if (!m_isOrdered) { // as many as can be drawn, until it can be told which belong together
        for (qint64 i = 0; i < m_count; i += 1 + m_count / (qint64(64) * std::max(1, pixels)))
            points.push_back(at(i));
        std::stable_sort(points.begin(), points.end(), isEarlier);
        return points;
    }
    const qint64 begin = std::max(qint64(0), findNotBefore(from) - 1);
    const qint64 end = std::min(m_count, findAfter(to) + 1);
    if (end - begin <= qint64(4) * std::max(1, pixels)) {
        for (qint64 i = begin; i < end; ++i)
            points.push_back(at(i));
        return points;
    }
    // What lies beyond a side is no part of a column, or the extremes of that would be drawn there.
    qint64 at = findNotBefore(from);
    const qint64 last = findAfter(to);
    if (begin < at)
        points.push_back(this->at(begin));
    for (int pixel = 0; pixel < pixels && at < last; ++pixel) {
        const double time = pixel + 1 < pixels ? from + (to - from) * (pixel + 1) / pixels : Infinite;
        const qint64 next = std::min(last, find(time, at, false));
        appendColumn(at, next, &points);
        at = next;
    }
    if (last < end)
        points.push_back(this->at(last));
    return points;
}

/** Draws some points that lie in one column. */
void SeriesPoints::appendColumn(qint64 from, qint64 end, std::vector<Point>* points) const
{
    if (end - from <= 4) {
        for (; from < end; ++from)
            points->push_back(at(from));
        return;
    }
    const Extremes extremes = getExtremes(from, end);
    if (!extremes.any) {
        points->push_back(at(from));
        return;
    }
    // On from the extreme that is nearer to what came before, so that little is drawn twice.
    const double before = points->empty() ? NoValue : points->back().value;
    const bool isDown = before - extremes.least > extremes.greatest - before;
    points->push_back({at(from).time, isDown ? extremes.greatest : extremes.least});
    points->push_back({at(end - 1).time, isDown ? extremes.least : extremes.greatest});
    if (std::isnan(at(end - 1).value))
        points->push_back(at(end - 1));
}
