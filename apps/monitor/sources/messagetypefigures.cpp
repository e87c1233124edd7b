#include "messagetypemodel.h"

#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "sourcesession.h"

#include <QLocale>
#include <QMap>

static const double LongestNow = 1; // seconds; what comes faster than anybody can read is there now
static const int RarestShare = 40;  // one of so many at either end says nothing about the range

const MessageStatistics* MessageTypeModel::statisticsOf(const Row& row) const
{
    return m_coordinator->find(row.session->getStream(), row.number);
}

const MessageTypeModel::Row* MessageTypeModel::findRow(const Subject& subject) const
{
    if (m_rowsBySubject.isEmpty())
        for (int i = int(m_rows.size()) - 1; i >= 0; --i)
            m_rowsBySubject.insert(getSubject(i), i); // of several of one name the first
    const int row = m_rowsBySubject.value(subject, -1);
    return row < 0 ? nullptr : &m_rows.at(row);
}

const MessageStatistics* MessageTypeModel::findStatistics(const Subject& subject) const
{
    const Row* const row = findRow(subject);
    return row ? statisticsOf(*row) : nullptr;
}

quint64 MessageTypeModel::lostOf(const Row& row) const
{
    // Asked for only where somebody looks: there may be a thousand senders.
    if (!m_isLostKnown) {
        m_lost.clear();
        const QList<MessageStatisticsCoordinator::SenderStatistics> all = m_coordinator->getSenderStatistics();
        for (const MessageStatisticsCoordinator::SenderStatistics& sender : all)
            m_lost.insert({sender.stream, sender.sender}, sender.lost);
        m_isLostKnown = true;
    }
    return m_lost.value({row.session->getStream(), m_senders.at(row.sender).number});
}

double MessageTypeModel::figureOf(const Row& row, int column) const
{
    const MessageStatistics* const statistics = statisticsOf(row);
    switch (column) {
    case GapsColumn:
        return statistics ? statistics->getNumberOfGaps() : 0;
    case LostColumn:
        return double(lostOf(row));
    case AgeColumn:
        return row.session->getAge(row.number);
    case BytesColumn:
        return double(row.session->getCounters().getByteCount(row.number));
    default:
        return statistics && statistics->isCurrentlyRegular() ? 1000.0 / double(statistics->getLastInterval()) : 0;
    }
}

double MessageTypeModel::figureAt(const QModelIndex& index) const
{
    const Group* const group = groupAt(index);
    if (!group)
        return figureOf(m_rows.at(rowOf(index)), index.column());
    if (index.column() == LostColumn)
        return group->sender == UnknownTypes ? 0 : figureOf(m_rows.at(group->rows.first()), LostColumn);
    double sum = index.column() == AgeColumn ? -1 : 0;
    for (const int row : group->rows) {
        const double one = figureOf(m_rows.at(row), index.column());
        if (index.column() != AgeColumn)
            sum += one;
        else if (one >= 0)
            sum = sum < 0 ? one : qMin(sum, one);
    }
    return sum;
}

static QString ageText(double age)
{
    const auto seconds = qint64(age);
    return seconds < 120 ? MessageTypeModel::tr("%1 s").arg(seconds) : MessageTypeModel::tr("%1 min").arg(seconds / 60);
}

static QString rateText(const MessageStatistics* statistics)
{
    const bool isRegular = statistics && statistics->isCurrentlyRegular();
    return isRegular ? MessageStatistics::getIntervalString(statistics->getLastInterval()) : QString();
}

QString MessageTypeModel::rangeText(const Row& row) const
{
    const MessageStatistics* const statistics = statisticsOf(row);
    QMap<qint64, quint64> intervals;
    quint64 count = 0;
    const QHash<long long, unsigned int> counts =
        statistics ? statistics->getIntervalCountHash() : QHash<long long, unsigned int>();
    for (auto interval = counts.constBegin(); interval != counts.constEnd(); ++interval) {
        if (interval.key() <= 0)
            continue;
        intervals.insert(interval.key(), *interval);
        count += *interval;
    }
    if (count == 0)
        return QString();
    quint64 passed = 0;
    qint64 shortest = -1;
    qint64 longest = -1;
    for (auto interval = intervals.constBegin(); interval != intervals.constEnd(); ++interval) {
        passed += *interval;
        if (shortest < 0 && passed > count / RarestShare)
            shortest = interval.key();
        if (passed - *interval < count - count / RarestShare)
            longest = interval.key();
    }
    const QString fast = MessageStatistics::getIntervalString(quint64(shortest));
    const QString slow = MessageStatistics::getIntervalString(quint64(longest));
    return fast == slow ? fast : slow + QStringLiteral(" \u2013 ") + fast;
}

QString MessageTypeModel::figureText(const QModelIndex& index) const
{
    const QLocale locale;
    const bool isOne = rowOf(index) >= 0;
    if (isOne && index.column() == RateColumn)
        return rateText(statisticsOf(m_rows.at(rowOf(index))));
    if (index.column() == RangeColumn)
        return isOne ? rangeText(m_rows.at(rowOf(index))) : QString();
    const double figure = figureAt(index);
    switch (index.column()) {
    case RateColumn:
        return figure > 0 ? tr("%1 Hz").arg(locale.toString(figure, 'f', figure < 9.95 ? 1 : 0)) : QString();
    case AgeColumn:
        return figure < 0 ? QString() : ageText(figure);
    default:
        return figure > 0 ? locale.toString(quint64(figure)) : QString();
    }
}

quint64 MessageTypeModel::countAt(const QModelIndex& index) const
{
    const Group* const group = groupAt(index);
    return group ? group->count : m_rows.at(rowOf(index)).count;
}

QStringList MessageTypeModel::describe(const Subject& subject) const
{
    const Row* const row = findRow(subject);
    if (!row)
        return {};
    QStringList texts;
    const MessageStatistics* const statistics = statisticsOf(*row);
    const QString rate = rateText(statistics);
    if (!rate.isEmpty())
        texts.append(statistics->getLastInterval() > 1000 ? tr("every %1").arg(rate) : rate);
    // What comes once a second is not a second late half of the time.
    const double due = rate.isEmpty() ? 0 : 2e-3 * double(statistics->getLastInterval());
    const double age = row->session->getAge(row->number);
    if (age >= 0)
        texts.append(age < qMax(LongestNow, due) ? tr("now") : tr("%1 ago").arg(ageText(age)));
    return texts;
}
