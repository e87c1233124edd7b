#include "silencewatch.h"

#include "latestmessagesource.h"
#include "message.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "senderrow.h"
#include "subjectrow.h"
#include "theme.h"
#include "treerows.h"

#include <QDateTime>
#include <QElapsedTimer>

#include <algorithm>

static const int CheckMilliseconds = 500;
static const int LeastSilence = 2000; // what comes and goes faster than anybody can read is no silence
static const int IntervalsKept = 8;
static const int IntervalsNeeded = 3;

SilenceWatch::SilenceWatch(MessageTreeWidget* tree, const TreeRows* rows, LatestMessageSource* latest, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_rows(rows)
    , m_latest(latest)
{
    QElapsedTimer elapsed;
    elapsed.start();
    m_clock = [elapsed]() { return elapsed.elapsed(); };
    connect(latest, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(latest, &LatestMessageSource::senderGone, this, &SilenceWatch::processGone);
    connect(latest, &LatestMessageSource::earlierShown, this, &SilenceWatch::processEarlier);
    // Rows that are made anew are as black as any.
    connect(rows, &TreeRows::rearranged, this, [this]() { m_silent.clear(); });
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
    noteArrival({message->getInfo(), QString()}, message);
    if (!message->getSender().isEmpty())
        noteArrival({message->getInfo(), message->getSender()}, message);
}

void SilenceWatch::noteArrival(const Subject& subject, const Message* message)
{
    const qint64 now = m_clock();
    Type& type = m_types[subject];
    if (m_latest->isRepeating() && type.lastArrival > 0 && !type.isEarlier)
        return; // under another name, say: that is no sign of life
    const bool wasSilent = !m_silent.isEmpty() && m_silent.contains(subject);
    if (type.lastArrival > 0 && !type.interrupted && !m_wasStill && !wasSilent) {
        type.intervals.append(now - type.lastArrival);
        if (type.intervals.size() > IntervalsKept)
            type.intervals.removeFirst();
    }
    type.lastArrival = qMax<qint64>(1, now);
    type.time = message->getTime();
    type.interrupted = false;
    type.isGone = false;
    type.isEarlier = false;
    if (wasSilent)
        speak(subject);
    if (!m_silent.isEmpty() && !subject.sender.isEmpty() && m_silent.contains({nullptr, subject.sender}))
        speak({nullptr, subject.sender});
}

void SilenceWatch::processGone(const MessageInfo* info, const QString& sender)
{
    const auto known = m_types.find({info, sender});
    if (known == m_types.end())
        return;
    known->isGone = true;
    // Whoever sends it is gone when all are.
    bool isAnyThere = false;
    for (auto type = m_types.constBegin(); type != m_types.constEnd(); ++type)
        isAnyThere = isAnyThere || (type.key().info == info && !type.key().sender.isEmpty() && !type->isGone);
    m_types[{info, QString()}].isGone = !isAnyThere;
    check();
}

void SilenceWatch::processEarlier(const MessageInfo* info, const QString& sender)
{
    // Of several senders, those of whom there is something newer are shown behind this.
    for (const Subject& subject : {Subject{info, sender}, Subject{info, QString()}}) {
        m_types[subject].isEarlier = true;
        showSilent(subject);
    }
}

/** Greys a row, if there is one. */
void SilenceWatch::showSilent(const Subject& subject)
{
    SubjectRow* const row = m_rows->find(subject);
    if (!row)
        return;
    m_silent.insert(subject);
    grey(row, true);
    say(row, describe(subject));
}

/** Something came of what was silent. */
void SilenceWatch::speak(const Subject& subject)
{
    m_silent.remove(subject);
    if (SubjectRow* const row = subject.info ? m_rows->find(subject) : nullptr) {
        grey(row, false);
        row->setValueText();
    }
    if (SenderRow* const row = subject.info ? nullptr : m_rows->getSenderRows().value(subject.sender)) {
        greyCells(row, false);
        row->setValueText();
    }
}

void SilenceWatch::forget(const MessageInfo* info)
{
    const QList<Subject> subjects = m_types.keys();
    for (const Subject& subject : subjects) {
        if (subject.info != info)
            continue;
        m_types.remove(subject);
        if (!m_silent.contains(subject))
            continue;
        speak(subject);
        if (SubjectRow* const row = m_rows->find(subject))
            say(row, QString());
    }
}

void SilenceWatch::renameSender(const QString& before, const QString& now)
{
    if (before.isEmpty() || now.isEmpty())
        return;
    const QList<Subject> subjects = m_types.keys();
    for (const Subject& subject : subjects) {
        if (subject.sender != before)
            continue;
        m_types.insert({subject.info, now}, m_types.take(subject));
        if (m_silent.remove(subject))
            m_silent.insert({subject.info, now});
    }
    if (m_silent.remove({nullptr, before}))
        m_silent.insert({nullptr, now});
}

qint64 SilenceWatch::expectedInterval(const Type& type) const
{
    QVector<qint64> sorted = type.intervals;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(qMax(0, int(sorted.size()) - 2));
}

bool SilenceWatch::canBeTold(const Type& type) const
{
    return type.isGone || type.isEarlier || type.intervals.size() >= IntervalsNeeded;
}

bool SilenceWatch::isOverdue(const Type& type, qint64 now) const
{
    if (type.isGone || type.isEarlier)
        return true;
    const qint64 silence = now - type.lastArrival;
    return silence > LeastSilence && canBeTold(type) && silence > m_intervals * expectedInterval(type);
}

// Whether all of its types are overdue that can be told; and when the last of them came.
bool SilenceWatch::isOverdue(const SenderRow* row, qint64 now, Type* last) const
{
    bool any = false;
    for (const MessageInfo* info : row->getTypes()) {
        const auto type = m_types.constFind({info, row->getSender()});
        if (type == m_types.constEnd() || !canBeTold(*type))
            continue;
        if (!isOverdue(*type, now))
            return false;
        any = true;
        if (type->lastArrival >= last->lastArrival)
            *last = *type;
    }
    return any;
}

void SilenceWatch::check()
{
    followStillness();
    if (m_intervals <= 0)
        return;
    const qint64 now = m_clock();
    for (auto row = m_rows->getRows().constBegin(); row != m_rows->getRows().constEnd(); ++row) {
        const auto found = m_types.constFind(row.key());
        if (!*row || found == m_types.constEnd() || !isOverdue(*found, now) || (m_wasStill && !found->isEarlier))
            continue;
        // Also rows that were silent before: there may be new rows below them, and time goes on.
        showSilent(row.key());
    }
    if (m_wasStill)
        return;
    for (SenderRow* const row : m_rows->getSenderRows()) {
        Type last;
        if (!isOverdue(row, now, &last))
            continue;
        m_silent.insert({nullptr, row->getSender()});
        greyCells(row, true);
        say(row, describe(last));
    }
}

void SilenceWatch::say(QTreeWidgetItem* row, const QString& text)
{
    const int column = m_tree->getColumnIndex(MessageTreeWidget::ValueColumn);
    if (column >= 0 && row->text(column) != text)
        row->setText(column, text);
}

void SilenceWatch::followPalette()
{
    for (const Subject& subject : std::as_const(m_silent)) {
        if (SubjectRow* const row = subject.info ? m_rows->find(subject) : nullptr)
            grey(row, true);
        if (SenderRow* const row = subject.info ? nullptr : m_rows->getSenderRows().value(subject.sender))
            greyCells(row, true);
    }
}

QString SilenceWatch::describe(const Subject& subject) const
{
    return m_silent.contains(subject) ? describe(m_types.value(subject)) : QString();
}

QString SilenceWatch::describe(const Type& type) const
{
    const qint64 seconds = (m_clock() - type.lastArrival) / 1000;
    const QString length = seconds < 120 ? tr("%1 s").arg(seconds) : tr("%1 min").arg(seconds / 60);
    if (type.isEarlier)
        return tr("as of %1 UTC; nothing since the jump")
            .arg(QDateTime::fromMSecsSinceEpoch(type.time / 1000, Qt::UTC).toString(QLatin1String("HH:mm:ss.zzz")));
    if (type.isGone)
        return tr("gone; the last message came %1 ago").arg(length);
    if (type.time == Message::NoTime)
        return tr("no message for %1").arg(length);
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(type.time / 1000, Qt::UTC);
    return tr("no message for %1, since %2 UTC").arg(length, time.toString(QLatin1String("HH:mm:ss")));
}

void SilenceWatch::greyCells(QTreeWidgetItem* item, bool silent)
{
    // Compared, because a brush of other colours stands there after a change of the palette.
    const QVariant wanted = silent ? QVariant(QBrush(Theme::faintText(m_tree->palette()))) : QVariant();
    for (int column = 0; column < m_tree->columnCount(); ++column)
        if (item->data(column, Qt::ForegroundRole) != wanted)
            item->setData(column, Qt::ForegroundRole, wanted);
}

void SilenceWatch::grey(QTreeWidgetItem* item, bool silent)
{
    greyCells(item, silent);
    for (int i = 0; i < item->childCount(); ++i)
        grey(item->child(i), silent);
}
