#include "recordingdensity.h"

void RecordingDensity::setSpan(qint64 start, qint64 end)
{
    if (end < start)
        return;
    m_start = start;
    m_end = end;
    // In unsigned numbers, as the times of a damaged recording can be anything.
    m_width = qint64((quint64(end) - quint64(start)) / BinCount) + 1;
    m_counts.assign(BinCount, 0);
    m_damage.assign(BinCount, 0);
}

/** The bin of a time, which is remembered; -1 for none. */
int RecordingDensity::findBin(qint64 time)
{
    if (m_width == 0 || time < m_start || time > m_end)
        return -1;
    m_bin = int((quint64(time) - quint64(m_start)) / quint64(m_width));
    m_binStart = qint64(quint64(m_start) + quint64(m_bin) * quint64(m_width));
    const bool isWhole = quint64(m_end) - quint64(m_binStart) >= quint64(m_width);
    m_binEnd = isWhole ? m_binStart + m_width : m_end;
    return m_bin;
}

void RecordingDensity::addRow(int row)
{
    if (std::size_t(row) >= m_rows.size())
        m_rows.resize(std::size_t(row) + 1);
    ++m_filled;
    while (qint64(m_filled) * (BinCount >> m_shift) > MostCells && (BinCount >> m_shift) > LeastCells)
        coarsen();
    m_rows[std::size_t(row)].resize(std::size_t(BinCount >> m_shift));
}

void RecordingDensity::coarsen()
{
    ++m_shift;
    for (std::vector<Cell>& cells : m_rows) {
        for (std::size_t i = 0; i < cells.size() / 2; ++i) {
            const Cell& first = cells[2 * i];
            Cell merged = cells[2 * i + 1].count > 0 ? cells[2 * i + 1] : first;
            merged.count = first.count + cells[2 * i + 1].count;
            cells[i] = merged;
        }
        cells.resize(cells.size() / 2);
        cells.shrink_to_fit();
    }
}

void RecordingDensity::countDamage(qint64 time)
{
    if (m_width == 0)
        return;
    const int bin = findBin(qBound(m_start, time, m_end));
    ++m_damage[std::size_t(bin)];
}

RecordingDensity::Curve RecordingDensity::getRow(int row) const
{
    Curve curve;
    if (row < 0 || std::size_t(row) >= m_rows.size() || m_rows[std::size_t(row)].empty())
        return curve;
    curve.start = m_start;
    curve.width = m_width << m_shift;
    for (const Cell& cell : m_rows[std::size_t(row)])
        curve.counts.push_back(cell.count);
    return curve;
}

std::vector<RecordingDensity::Place> RecordingDensity::getPlacesBefore(qint64 time, qint64* from) const
{
    std::vector<Place> places;
    *from = time;
    if (m_width == 0 || time <= m_start)
        return places;
    const quint64 bin = (quint64(qMin(time, m_end)) - quint64(m_start)) / quint64(m_width);
    const std::size_t cell = std::size_t(bin) >> m_shift;
    *from = qint64(quint64(m_start) + quint64(cell << m_shift) * quint64(m_width));
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        const std::vector<Cell>& cells = m_rows[row];
        std::size_t i = cells.empty() ? 0 : cell;
        while (i > 0 && cells[i - 1].count == 0)
            --i;
        if (i > 0)
            places.push_back({int(row), cells[i - 1].time, cells[i - 1].offset});
    }
    return places;
}
