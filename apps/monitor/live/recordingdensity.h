#ifndef RECORDINGDENSITY_H
#define RECORDINGDENSITY_H

#include <QtGlobal>

#include <vector>

/**
 * How many messages of a recording there are when, all of them and those of each row of its StreamIdentities, and where
 * the last ones of each row lie.
 *
 * The recording is cut into 2,048 bins. Rows of which there are very many have coarser ones, so that all of this takes
 * 12 MB at most, however long the recording is and whatever it brings.
 */
class RecordingDensity
{
public:
    static const int BinCount = 2048;

    /** How many there are, bin by bin. */
    struct Curve
    {
        qint64 start = 0;            ///< of the first bin, microseconds since 1970
        qint64 width = 0;            ///< of a bin in microseconds; 0 when nothing is known
        std::vector<quint32> counts; ///< empty when nothing is known
    };

    /** A message, by when it was and by where its decoder has to begin to find it. */
    struct Place
    {
        int row;
        qint64 time;
        quint64 offset;
    };

    /** What lies between these times, microseconds since 1970, is counted; before that, and without times, nothing. */
    void setSpan(qint64 start, qint64 end);

    /** @param time  of the message; Message::NoTime and times outside of the span are left out */
    void countMessage(int row, qint64 time, quint64 offset)
    {
        const int bin = binOf(time);
        if (bin < 0)
            return;
        ++m_counts[std::size_t(bin)];
        if (std::size_t(row) >= m_rows.size() || m_rows[std::size_t(row)].empty())
            addRow(row);
        Cell& cell = m_rows[std::size_t(row)][std::size_t(bin) >> m_shift];
        ++cell.count;
        cell.time = time;
        cell.offset = offset;
    }
    /** Something was damaged when it was @p time; what comes before the first time counts as at the start. */
    void countDamage(qint64 time);

    Curve getAll() const { return {m_start, m_width, m_counts}; }
    Curve getDamage() const { return {m_start, m_width, m_damage}; }
    Curve getRow(int row) const;

    /**
     * The last message of each row that lies in bins that end before @p time, and in @p from when these end: what lies
     * between that and @p time is to be looked for. At the start, @p from is @p time.
     */
    std::vector<Place> getPlacesBefore(qint64 time, qint64* from) const;

private:
    static const int MostCells = 512 * 1024;
    static const int LeastCells = 32; // of a row

    struct Cell
    {
        quint32 count = 0;
        qint64 time = 0; // of the last message
        quint64 offset = 0;
    };

    int binOf(qint64 time)
    {
        if (time >= m_binStart && time < m_binEnd) // as that of the message before
            return m_bin;
        return findBin(time);
    }
    int findBin(qint64 time);
    void addRow(int row);
    void coarsen();

    qint64 m_start = 0;
    qint64 m_end = -1;
    qint64 m_width = 0;
    int m_bin = -1;
    qint64 m_binStart = 0;
    qint64 m_binEnd = 0;
    std::vector<quint32> m_counts;
    std::vector<quint32> m_damage;
    std::vector<std::vector<Cell>> m_rows;
    int m_filled = 0; // of m_rows
    int m_shift = 0;  // a cell of a row is so many times two bins
};

#endif
