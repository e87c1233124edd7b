#include "silencewatch.h"

#include "latestmessagesource.h"
#include "message.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "theme.h"

#include <QDateTime>
#include <QElapsedTimer>

#include <algorithm>

static const int CheckMilliseconds = 500;
static const int LeastSilence = 2000; // what comes and goes faster than anybody can read is no silence
static const int IntervalsKept = 8;
static const int IntervalsNeeded = 3;

SilenceWatch::SilenceWatch(MessageTreeWidget* tree, LatestMessageSource* latest, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_latest(latest)
{
    QElapsedTimer elapsed;
    elapsed.start();
    m_clock = [elapsed]() { return elapsed.elapsed(); };
    connect(latest, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(&m_timer, &QTimer::timeout, this, &SilenceWatch::check);
    m_timer.start(CheckMilliseconds);
}

void SilenceWatch::setIntervals(int intervals)
{
    m_intervals = intervals;
    if (intervals > 0) {
        m_timer.start(CheckMilliseconds);
        return;
    }
    m_timer.stop();
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        grey(m_tree->topLevelItem(i), false);
    m_silent.clear();
}

// While nothing is shown or a recording is paused, nothing can be told, and what comes first afterwards may have come
// long before.
void SilenceWatch::followStillness()
{
    const bool isStill = m_latest->isSuspended() || m_latest->isStandingStill();
    if (m_wasStill && !isStill) {
        const qint64 now = m_clock();
        for (auto type = m_types.begin(); type != m_types.end(); ++type) {
            if (!m_silent.contains(type.key()))
                type->lastArrival = now;
            type->interrupted = true;
        }
    }
    m_wasStill = isStill;
}

void SilenceWatch::processMessage(const Message* message)
{
    followStillness();
    const qint64 now = m_clock();
    Type& type = m_types[message->getInfo()];
    if (type.lastArrival > 0 && !type.interrupted && !m_wasStill && !m_silent.contains(message->getInfo())) {
        type.intervals.append(now - type.lastArrival);
        if (type.intervals.size() > IntervalsKept)
            type.intervals.removeFirst();
    }
    type.lastArrival = qMax<qint64>(1, now);
    type.time = message->getTime();
    type.interrupted = false;
    if (m_silent.remove(message->getInfo()))
        if (MessageTreeWidgetItem* const row = findRow(message->getInfo()))
            grey(row, false);
}

void SilenceWatch::forget(const MessageInfo* info)
{
    m_types.remove(info);
    if (!m_silent.remove(info))
        return;
    if (MessageTreeWidgetItem* const row = findRow(info)) {
        grey(row, false);
        const int column = m_tree->getColumnIndex(MessageTreeWidget::ValueColumn);
        if (column >= 0)
            row->setText(column, QString());
    }
}

qint64 SilenceWatch::expectedInterval(const Type& type) const
{
    QVector<qint64> sorted = type.intervals;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(qMax(0, int(sorted.size()) - 2));
}

void SilenceWatch::check()
{
    followStillness();
    if (m_wasStill)
        return;
    const qint64 now = m_clock();
    for (int i = 0; i < m_tree->topLevelItemCount() && m_intervals > 0; ++i) {
        auto* const row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i));
        const auto found = row ? m_types.constFind(row->getMessageInfo()) : m_types.constEnd();
        if (found == m_types.constEnd() || found->intervals.size() < IntervalsNeeded)
            continue;
        if (now - found->lastArrival <= qMax<qint64>(LeastSilence, m_intervals * expectedInterval(*found)))
            continue;
        // Also rows that were silent before: there may be new rows below them, and time goes on.
        m_silent.insert(found.key());
        grey(row, true);
        const int column = m_tree->getColumnIndex(MessageTreeWidget::ValueColumn);
        if (column >= 0)
            row->setText(column, describe(found.key()));
    }
}

void SilenceWatch::followPalette()
{
    for (const MessageInfo* info : std::as_const(m_silent))
        if (MessageTreeWidgetItem* const row = findRow(info))
            grey(row, true);
}

QString SilenceWatch::describe(const MessageInfo* info) const
{
    if (!m_silent.contains(info))
        return QString();
    const Type type = m_types.value(info);
    const qint64 seconds = (m_clock() - type.lastArrival) / 1000;
    const QString length = seconds < 120 ? tr("%1 s").arg(seconds) : tr("%1 min").arg(seconds / 60);
    if (type.time == Message::NoTime)
        return tr("no message for %1").arg(length);
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(type.time / 1000, Qt::UTC);
    return tr("no message for %1, since %2 UTC").arg(length, time.toString(QLatin1String("HH:mm:ss")));
}

void SilenceWatch::grey(QTreeWidgetItem* item, bool silent)
{
    // Compared, because a brush of other colours stands there after a change of the palette.
    const QVariant wanted = silent ? QVariant(QBrush(Theme::faintText(m_tree->palette()))) : QVariant();
    for (int column = 0; column < m_tree->columnCount(); ++column)
        if (item->data(column, Qt::ForegroundRole) != wanted)
            item->setData(column, Qt::ForegroundRole, wanted);
    for (int i = 0; i < item->childCount(); ++i)
        grey(item->child(i), silent);
}

MessageTreeWidgetItem* SilenceWatch::findRow(const MessageInfo* info) const
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        auto* const row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i));
        if (row && row->getMessageInfo() == info)
            return row;
    }
    return nullptr;
}
