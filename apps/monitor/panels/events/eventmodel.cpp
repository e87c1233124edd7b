#include "eventmodel.h"

#include "celldelegate.h"
#include "csvtext.h"
#include "icons.h"
#include "message.h"
#include "naturalorder.h"
#include "playbacktime.h"
#include "words.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

static const qint64 Day = Q_INT64_C(24) * 3600 * 1000 * 1000;

EventModel::EventModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void EventModel::setCauses(const EventCauses* causes, const QString& name)
{
    if (m_causes == causes && m_name == name)
        return;
    beginResetModel();
    m_causes = causes;
    m_name = name;
    m_rows.clear();
    m_revision = 0;
    m_generation = causes ? causes->getGeneration() : 0;
    if (causes) {
        m_rows = causes->getRows();
        m_revision = causes->getRevision();
    }
    followDays();
    endResetModel();
}

void EventModel::update()
{
    if (!m_causes || m_causes->getRevision() == m_revision)
        return;
    if (m_causes->getGeneration() != m_generation) {
        const EventCauses* const causes = m_causes;
        m_causes = nullptr;
        setCauses(causes, m_name);
        return;
    }
    const QVector<EventCauses::Cause>& causes = m_causes->getRows();
    int first = -1;
    int last = -1;
    for (int row = 0; row < m_rows.size(); ++row) {
        if (causes.at(row).revision <= m_revision)
            continue;
        m_rows[row] = causes.at(row);
        first = first < 0 ? row : first;
        last = row;
    }
    m_revision = m_causes->getRevision();
    const bool wasOfOneDay = m_isOfOneDay;
    const int known = int(m_rows.size());
    if (known < causes.size()) {
        beginInsertRows(QModelIndex(), known, int(causes.size()) - 1);
        m_rows += causes.mid(known);
        endInsertRows();
    }
    followDays();
    if (wasOfOneDay != m_isOfOneDay)
        renew();
    else if (first >= 0)
        Q_EMIT dataChanged(index(first, 0), index(last, ColumnCount - 1));
}

void EventModel::renew()
{
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

// Where all is of one day, nobody needs to read the date.
void EventModel::followDays()
{
    qint64 first = Message::NoTime;
    qint64 last = Message::NoTime;
    for (const EventCauses::Cause& cause : std::as_const(m_rows)) {
        if (cause.firstTime == Message::NoTime)
            continue;
        first = first == Message::NoTime ? cause.firstTime : qMin(first, cause.firstTime);
        last = qMax(last, cause.lastTime);
    }
    m_isOfOneDay = first == Message::NoTime || first / Day == last / Day;
}

int EventModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int EventModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString EventModel::originOf(const EventCauses::Cause& cause) const
{
    const QString source = m_name.isEmpty() ? m_causes->getSourceName(cause.newest.source) : m_name;
    if (cause.extent != EventCauses::One || cause.newest.sender.isEmpty())
        return cause.extent == EventCauses::RestOfAll ? QString() : source;
    return m_causes->hasSeveralSources() ? tr("%1 @ %2", "sender and source").arg(cause.newest.sender, source)
                                         : cause.newest.sender;
}

QString EventModel::timeText(qint64 time) const
{
    if (time == Message::NoTime)
        return QString();
    const QString text = PlaybackTime::clockText(time);
    return m_isOfOneDay ? text.section(QLatin1Char(' '), 1) : text;
}

static QString clockText(qint64 time, bool withDate)
{
    if (time == Message::NoTime)
        return QString();
    const QDateTime seen = QDateTime::fromMSecsSinceEpoch(time / 1000);
    const bool isOfToday = !withDate && seen.date() == QDate::currentDate();
    return seen.toString(QLatin1String(isOfToday ? "HH:mm:ss" : "yyyy-MM-dd HH:mm:ss"));
}

QString EventModel::textAt(int row, int column) const
{
    const EventCauses::Cause& cause = m_rows.at(row);
    switch (column) {
    case SeverityColumn:
        return nameOf(cause.newest.severity);
    case CountColumn:
        return QLocale().toString(cause.getCount());
    case EventColumn:
        return m_causes->textOf(cause);
    case SourceColumn:
        return originOf(cause);
    case FirstColumn:
        return timeText(cause.firstTime);
    case LastColumn:
        return timeText(cause.lastTime);
    case FirstSeenColumn:
        return clockText(cause.firstSeen, false);
    case LastSeenColumn:
        return clockText(cause.lastSeen, false);
    default:
        // What a message says is called by its type, and that is no word of ours.
        return cause.newest.field >= 0
                   ? cause.newest.type
                   : QCoreApplication::translate("CorvelEvent", cause.newest.type.toUtf8().constData());
    }
}

QString EventModel::toolTip(int row, int column) const
{
    const EventCauses::Cause& cause = m_rows.at(row);
    switch (column) {
    case EventColumn: {
        const QString newest = m_causes->newestTextOf(cause);
        return newest == m_causes->textOf(cause) ? QString() : tr("The last one: %1").arg(newest);
    }
    case FirstColumn:
    case LastColumn: {
        const qint64 time = column == FirstColumn ? cause.firstTime : cause.lastTime;
        return time == Message::NoTime ? QString() : tr("%1 UTC").arg(PlaybackTime::clockText(time));
    }
    case FirstSeenColumn:
    case LastSeenColumn:
        return clockText(column == FirstSeenColumn ? cause.firstSeen : cause.lastSeen, true);
    default:
        return QString(); // what is cut is told anyway
    }
}

// As system logs are read: from the worst, in red, to what hardly anybody wants to know.
static QIcon iconOf(Severity severity)
{
    struct Sign
    {
        Icons::Shape shape;
        Theme::Accent accent;
    };
    static const Sign signs[] = {
        {Icons::Severe, Theme::Bad},     {Icons::Severe, Theme::Bad},      {Icons::Severe, Theme::Bad},
        {Icons::Failed, Theme::Bad},     {Icons::Warning, Theme::Warning}, {Icons::Notice, Theme::Waiting},
        {Icons::Notice, Theme::Waiting}, {Icons::Minor, Theme::Plain},
    };
    return Icons::create(signs[int(severity)].shape, signs[int(severity)].accent);
}

QVariant EventModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return textAt(index.row(), index.column());
    case Qt::ToolTipRole:
        return toolTip(index.row(), index.column());
    case Qt::DecorationRole:
        return index.column() == SeverityColumn ? iconOf(getCause(index.row()).newest.severity) : QVariant();
    case CellDelegate::KeptRole:
        return index.column() == SourceColumn ? QVariant(textAt(index.row(), SourceColumn)) : QVariant();
    default:
        return QVariant();
    }
}

QVariant EventModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == CountColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return QVariant();
    const bool isName = role == Qt::DisplayRole;
    switch (section) {
    case SeverityColumn:
        return isName ? tr("Severity") : tr("How bad it is; of what vehicles say, as they say");
    case CountColumn:
        return isName ? tr("Count") : tr("How often it happened");
    case EventColumn:
        return isName ? tr("Event") : QString();
    case SourceColumn:
        return isName ? tr("Source") : tr("Whose message is concerned, or where it comes from");
    case FirstColumn:
        return isName ? tr("First") : tr("By the time of the messages (UTC), as in a recording");
    case LastColumn:
        return isName ? tr("Last") : tr("By the time of the messages (UTC), as in a recording");
    case FirstSeenColumn:
        return isName ? tr("First Seen") : tr("By the clock of this computer");
    case LastSeenColumn:
        return isName ? tr("Last Seen") : tr("By the clock of this computer");
    default:
        return isName ? tr("Type") : tr("What such events are called, or the message type that brings them");
    }
}

bool EventModel::hasWords(int row, const QStringList& words) const
{
    return Words::areIn(words, {textAt(row, EventColumn), textAt(row, SourceColumn), textAt(row, SeverityColumn),
                                textAt(row, TypeColumn)});
}

bool EventModel::isBefore(const QModelIndex& left, const QModelIndex& right) const
{
    const EventCauses::Cause& one = m_rows.at(left.row());
    const EventCauses::Cause& other = m_rows.at(right.row());
    switch (left.column()) {
    case SeverityColumn:
        return one.newest.severity < other.newest.severity;
    case CountColumn:
        return one.getCount() < other.getCount();
    case FirstColumn:
        return one.firstTime < other.firstTime;
    case LastColumn:
        return one.lastTime < other.lastTime;
    case FirstSeenColumn:
        return one.firstSeen < other.firstSeen;
    case LastSeenColumn:
        return one.lastSeen < other.lastSeen;
    default:
        return NaturalOrder::isBefore(textAt(left.row(), left.column()), textAt(right.row(), right.column()));
    }
}

static QString isoText(qint64 time)
{
    return time == Message::NoTime
               ? QString()
               : PlaybackTime::clockText(time).replace(QLatin1Char(' '), QLatin1Char('T')) + QLatin1Char('Z');
}

QByteArray EventModel::toCsv() const
{
    QByteArray csv =
        CsvText::line({QLatin1String("Severity"), QLatin1String("Type"), QLatin1String("Count"), QLatin1String("Event"),
                       QLatin1String("Last event"), QLatin1String("Source"), QLatin1String("First"),
                       QLatin1String("Last"), QLatin1String("First seen"), QLatin1String("Last seen")});
    for (int row = 0; row < m_rows.size(); ++row) {
        const EventCauses::Cause& cause = m_rows.at(row);
        csv += CsvText::line({textAt(row, SeverityColumn), cause.newest.type, QString::number(cause.getCount()),
                              textAt(row, EventColumn), m_causes->newestTextOf(cause), originOf(cause),
                              isoText(cause.firstTime), isoText(cause.lastTime), isoText(cause.firstSeen),
                              isoText(cause.lastSeen)});
    }
    return csv;
}
