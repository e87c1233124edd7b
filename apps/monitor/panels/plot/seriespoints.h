#ifndef SERIESPOINTS_H
#define SERIESPOINTS_H

#include <QtGlobal>

#include <memory>
#include <vector>

/**
 * Values in the order of their times, with the least and the greatest of every stretch: however many there are, a
 * picture of any part of them is made of a few points per pixel, and has every extreme.
 *
 * A point without a value is NaN and breaks the line. A point takes 16 bytes, and half a byte for the stretches. A copy
 * shares the points until one of the two changes, and may be read and destroyed on another thread.
 */
class SeriesPoints
{
public:
    struct Point
    {
        double time; ///< seconds since 1970
        double value;
    };

    /** The least and the greatest value of some points. */
    struct Extremes
    {
        double least = 0;
        double greatest = 0;
        bool any = false; ///< whether there is a value at all
    };

    qint64 getCount() const { return m_count; }
    bool isEmpty() const { return m_count == 0; }
    /** Whether they are in the order of their times, without settle(). */
    bool isOrdered() const { return m_isOrdered; }
    const Point& at(qint64 i) const { return m_blocks[std::size_t(i >> BlockBits)][i & BlockMask]; }
    const Point& last() const { return at(m_count - 1); }

    /** Adds a point, at its place when it is hardly late; one that is later goes there with settle(). */
    void append(const Point& point);
    /** Puts all in order. */
    void settle();
    void clear();
    /** Removes what is earlier. Takes as long as all that stays. */
    void removeBefore(double time);
    /** Removes the points from number @p count on. Takes as long as what it removes. */
    void removeFrom(qint64 count);
    /** Of every four points of the older half only the least, the greatest and a missing one stay. */
    void thinOut();

    /** The first point that is not before @p time; getCount() when there is none. */
    qint64 findNotBefore(double time) const { return find(time, 0, false); }
    /** The first point that is later than @p time; getCount() when there is none. */
    qint64 findAfter(double time) const { return find(time, 0, true); }
    /** The extremes of the points from number @p from up to before number @p end. */
    Extremes getExtremes(qint64 from, qint64 end) const;

    /**
     * What a picture needs that shows @p pixels columns from one time to another: all points when they are few, else
     * the least and the greatest of each column, and where values are missing. A point beyond each side belongs to it.
     */
    std::vector<Point> reduce(double from, double to, int pixels) const;

private:
    enum
    {
        BlockBits = 12,
        BlockMask = (1 << BlockBits) - 1,
        LeafBits = 6, // points of the lowest stretches
        LevelBits = 4 // stretches in one above
    };

    struct Stretch
    {
        double least;
        double greatest; // less than the least where there is no value
    };

    static int shiftOf(std::size_t level) { return LeafBits + LevelBits * int(level); }
    static void take(Extremes* extremes, double least, double greatest);
    Point& place(qint64 i);
    qint64 find(double time, qint64 from, bool after) const;
    void appendColumn(qint64 from, qint64 end, std::vector<Point>* points) const;
    void push(const Point& point);
    void enter(qint64 i);
    void enterAnew(qint64 from);
    void truncate(qint64 count);
    void replace(const std::vector<Point>& points);

    std::vector<std::shared_ptr<Point[]>> m_blocks;
    qint64 m_count = 0;
    std::vector<std::vector<Stretch>> m_levels; // the lowest first
    bool m_isOrdered = true;
};

#endif
