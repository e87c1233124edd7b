#include "eventcauses.h"

#include "message.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <numeric>

static const int MostText = 2000; // characters that are kept of one

QString nameOf(Severity severity)
{
    static const char* const names[] = {
        QT_TRANSLATE_NOOP("Severity", "Emergency"),   QT_TRANSLATE_NOOP("Severity", "Alert"),
        QT_TRANSLATE_NOOP("Severity", "Critical"),    QT_TRANSLATE_NOOP("Severity", "Error"),
        QT_TRANSLATE_NOOP("Severity", "Warning"),     QT_TRANSLATE_NOOP("Severity", "Notice"),
        QT_TRANSLATE_NOOP("Severity", "Information"), QT_TRANSLATE_NOOP("Severity", "Debug")};
    return QCoreApplication::translate("Severity", names[int(severity)]);
}

int EventCauses::addSource(const QString& name)
{
    m_sources.append(name);
    return int(m_sources.size()) - 1;
}

int EventCauses::addField(const FieldPath& path)
{
    const auto known = m_fields.indexOf(path);
    if (known >= 0)
        return int(known);
    m_fields.append(path);
    return int(m_fields.size()) - 1;
}

static void widen(qint64* first, qint64* last, qint64 time)
{
    if (time == Message::NoTime)
        return;
    *first = *first == Message::NoTime ? time : qMin(*first, time);
    *last = qMax(*last, time); // no time is the least of all
}

int EventCauses::add(const Event& event)
{
    const int row = find(event);
    Cause& cause = m_rows[row];
    const Severity worst = qMin(cause.newest.severity, event.severity);
    cause.newest = event;
    cause.newest.severity = worst;
    cause.newest.text.truncate(MostText);
    cause.count += event.count;
    widen(&cause.firstTime, &cause.lastTime, event.time);
    widen(&cause.firstSeen, &cause.lastSeen, event.seen);
    cause.revision = ++m_revision;
    return row;
}

QVector<int> EventCauses::add(const EventCauses& others)
{
    QVector<int> rows;
    for (const Cause& other : others.m_rows) {
        Event event = other.newest;
        if (event.field >= 0)
            event.field = addField(others.m_fields.at(event.field));
        if (other.extent != One)
            event.most = 0;
        event.count = other.count;
        rows.append(add(event));
        Cause& cause = m_rows[rows.constLast()];
        cause.newest.most = other.newest.most;
        for (const qint64 time : {other.firstTime, other.lastTime})
            widen(&cause.firstTime, &cause.lastTime, time);
        for (const qint64 time : {other.firstSeen, other.lastSeen})
            widen(&cause.firstSeen, &cause.lastSeen, time);
    }
    return rows;
}

QVector<int> EventCauses::sortByTime()
{
    QVector<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [this](int left, int right) { return m_rows.at(left).firstTime < m_rows.at(right).firstTime; });
    QVector<Cause> rows;
    QVector<int> places(m_rows.size());
    for (const int row : std::as_const(order)) {
        places[row] = int(rows.size());
        rows.append(m_rows.at(row));
    }
    m_rows = rows;
    m_numbers.clear();
    m_groups.clear();
    return places;
}

int EventCauses::find(const Event& event)
{
    const Key key = {event.source, event.severity, event.type, event.sender,
                     (event.kind.isEmpty() ? event.text : event.kind).left(MostText)};
    const auto known = m_numbers.constFind(key);
    if (known != m_numbers.constEnd())
        return *known;
    Group& group = m_groups[{event.source, event.type}];
    if (group.count >= event.most)
        return rowOfRest(&group.rest, event);
    if (m_rows.size() >= MostRows - 1)
        return rowOfRest(&m_rest, event);
    ++group.count;
    m_numbers.insert(key, int(m_rows.size()));
    return append(event, One);
}

/** The row for what has none of its own, made when there is none; the last one there may be is for all of them. */
int EventCauses::rowOfRest(int* rest, const Event& event)
{
    if (*rest < 0 && m_rows.size() >= MostRows - 1)
        rest = &m_rest;
    if (*rest < 0)
        *rest = append(event, rest == &m_rest ? RestOfAll : RestOfType);
    return *rest;
}

int EventCauses::append(const Event& event, Extent extent)
{
    m_rows.append(Cause{event, 0, Message::NoTime, Message::NoTime, Message::NoTime, Message::NoTime, extent, 0});
    return int(m_rows.size()) - 1;
}

void EventCauses::clear()
{
    m_rows.clear();
    m_numbers.clear();
    m_groups.clear();
    m_rest = -1;
    ++m_revision;
    ++m_generation;
}

QString EventCauses::newestTextOf(const Cause& cause) const
{
    if (cause.newest.field >= 0 && m_fields.at(cause.newest.field).isHidden())
        return QCoreApplication::translate("EventCauses", "Hidden data");
    return cause.newest.text.simplified();
}

QString EventCauses::textOf(const Cause& cause) const
{
    if (cause.extent == RestOfAll)
        return QCoreApplication::translate("EventCauses",
                                           "The list is full with %1 rows: all others are counted here; last: %2")
            .arg(QLocale().toString(MostRows), newestTextOf(cause));
    if (cause.extent == RestOfType)
        return QCoreApplication::translate("EventCauses", "more than %1 different ones, all others; last: %2")
            .arg(QLocale().toString(cause.newest.most), newestTextOf(cause));
    return cause.getCount() > 1 && !cause.newest.kind.isEmpty() ? cause.newest.kind.simplified() : newestTextOf(cause);
}
