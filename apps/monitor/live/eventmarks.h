#ifndef EVENTMARKS_H
#define EVENTMARKS_H

#include "eventcauses.h"
#include "message.h"

#include <vector>

/** When something was, and what. */
struct EventMark
{
    qint64 time;
    int row; ///< among the causes
};

/**
 * When causes happened in a recording: each at least once in 2,048 parts of it. Of very many, it has to be enough that
 * there is one of each severity in a part, so that memory stays flat.
 */
class EventMarks
{
public:
    /** What happens between these times, microseconds since 1970, is marked; nothing before this. */
    void setSpan(qint64 start, qint64 end)
    {
        m_start = start;
        // In unsigned numbers, as the times of a damaged recording can be anything.
        m_step = qint64((quint64(end) - quint64(start)) / Parts) + 1;
    }

    /** @param event  without a time, it was at the start */
    void add(const Event& event, int row)
    {
        if (m_step == 0 || m_marks.size() >= 2 * Most)
            return;
        const std::size_t place = m_marks.size() < Most ? std::size_t(row) + Severities : std::size_t(event.severity);
        if (place >= m_last.size())
            m_last.resize(place + 1, qint64(Message::NoTime));
        const qint64 time = event.time == Message::NoTime ? m_start : event.time;
        if (m_last[place] == time / m_step)
            return;
        m_last[place] = time / m_step;
        m_marks.append({time, row});
    }

    const QVector<EventMark>& get() const { return m_marks; }

private:
    static const int Parts = 2048;
    static const int Most = 20000;
    static const int Severities = 8;

    qint64 m_start = 0;
    qint64 m_step = 0;
    std::vector<qint64> m_last; // in which part there is a mark, by severity and then by row
    QVector<EventMark> m_marks;
};

#endif
