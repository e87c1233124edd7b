#include "messagetypemodel.h"

#include "messageinfo.h"
#include "sourcesession.h"

#include <QLocale>

// A rate is that of the last five seconds: of what comes once a second, a shorter time would tell nonsense.
static const int MarkMilliseconds = 1000;
static const int MarkCount = 6;

MessageTypeModel::MessageTypeModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void MessageTypeModel::addSession(const SourceSession* session)
{
    m_sessions.append({session, session->getGeneration(), {}});
}

void MessageTypeModel::removeSession(const SourceSession* session)
{
    removeTypesOf(session);
    for (int i = 0; i < m_sessions.size(); ++i)
        if (m_sessions.at(i).session == session)
            m_sessions.removeAt(i--);
}

void MessageTypeModel::removeTypesOf(const SourceSession* session)
{
    for (int i = int(m_rows.size()) - 1; i >= 0; --i) {
        if (m_rows.at(i).session != session)
            continue;
        beginRemoveRows(QModelIndex(), i, i);
        m_rows.removeAt(i);
        endRemoveRows();
    }
    QSet<const MessageInfo*> left;
    for (const Row& row : std::as_const(m_rows))
        left.insert(row.info);
    const QSet<const MessageInfo*> before = m_seen;
    for (const MessageInfo* info : before) {
        if (!left.contains(info)) {
            m_seen.remove(info);
            Q_EMIT typeGone(info);
        }
    }
}

void MessageTypeModel::appendRows(Session* session, QVector<const MessageInfo*>* fresh)
{
    const QVector<StreamIdentities::Row>& identities = session->session->getIdentities().getRows();
    session->shown.resize(identities.size());
    for (int i = 0; i < identities.size(); ++i) {
        if (session->shown.at(i) || session->session->getCounters().getCount(i) == 0)
            continue;
        session->shown[i] = true;
        const MessageInfo* const info = identities.at(i).info;
        Row row;
        row.session = session->session;
        row.number = i;
        row.info = info;
        row.name = info ? info->getName() : tr("Unknown %1").arg(identities.at(i).typeName);
        row.count = 0;
        beginInsertRows(QModelIndex(), int(m_rows.size()), int(m_rows.size()));
        m_rows.append(row);
        endInsertRows();
        if (info && !m_seen.contains(info)) {
            m_seen.insert(info);
            fresh->append(info);
        }
    }
}

bool MessageTypeModel::hasOtherTypes(const SourceSession* session) const
{
    for (const Row& row : m_rows)
        if (row.session == session && row.info != session->getIdentities().getRows().at(row.number).info)
            return true;
    return false;
}

// At another place of a recording the same types come again: their rows stay, and with them what the user chose.
void MessageTypeModel::forgetRates(const SourceSession* session)
{
    for (Row& row : m_rows) {
        if (row.session != session)
            continue;
        row.marks.clear();
        row.rate = 0;
    }
}

void MessageTypeModel::refresh()
{
    if (!m_clock.isValid())
        m_clock.start();
    QVector<const MessageInfo*> fresh;
    for (Session& session : m_sessions) {
        if (session.generation != session.session->getGeneration()) {
            session.generation = session.session->getGeneration();
            forgetRates(session.session);
        }
        if (hasOtherTypes(session.session)) {
            Q_EMIT typesAboutToChange();
            removeTypesOf(session.session);
            session.shown.clear();
        }
        appendRows(&session, &fresh);
    }
    for (Row& row : m_rows)
        row.count = row.session->getCounters().getCount(row.number);
    if (m_marks.isEmpty() || m_clock.elapsed() - m_marks.last() >= MarkMilliseconds)
        noteCounts();
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, SenderColumn), index(int(m_rows.size()) - 1, RateColumn));
    for (const MessageInfo* info : std::as_const(fresh))
        Q_EMIT typeSeen(info);
}

void MessageTypeModel::noteCounts()
{
    m_marks.append(m_clock.elapsed());
    if (m_marks.size() > MarkCount)
        m_marks.removeFirst();
    for (Row& row : m_rows) {
        // What a server had from before did not come at any rate.
        row.marks.append(row.count - row.session->getCounters().getKeptCount(row.number));
        if (row.marks.size() > m_marks.size())
            row.marks.removeFirst();
        const qint64 since = m_marks.at(m_marks.size() - row.marks.size());
        const double seconds = double(m_marks.last() - since) / 1000;
        row.rate = seconds > 0 ? double(row.marks.last() - row.marks.first()) / seconds : 0;
    }
}

QStringList MessageTypeModel::getSenders() const
{
    QStringList senders;
    for (const Row& row : m_rows) {
        const QString name = row.session->getSenderName(row.number);
        if (!name.isEmpty() && !senders.contains(name))
            senders.append(name);
    }
    return senders;
}

const MessageInfo* MessageTypeModel::getMessageInfo(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).info : nullptr;
}

void MessageTypeModel::setInTree(const MessageInfo* info, bool inTree)
{
    if (inTree)
        m_inTree.insert(info);
    else
        m_inTree.remove(info);
    for (int i = 0; i < m_rows.size(); ++i)
        if (m_rows.at(i).info == info)
            Q_EMIT dataChanged(index(i, TypeColumn), index(i, TypeColumn));
}

int MessageTypeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int MessageTypeModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant MessageTypeModel::displayData(const Row& row, int column) const
{
    switch (column) {
    case TypeColumn:
        return row.name;
    case SenderColumn:
        return row.session->getSenderName(row.number);
    case CountColumn:
        return QLocale().toString(row.count);
    case RateColumn:
        // A rate below one is better told in more than one digit, or 0.2 and 0.25 look the same.
        return row.rate > 0 ? tr("%1 /s").arg(QLocale().toString(row.rate, 'f', row.rate < 9.95 ? 1 : 0)) : QString();
    default:
        return QVariant();
    }
}

QVariant MessageTypeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const Row& row = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return displayData(row, index.column());
    case SortRole:
        if (index.column() == CountColumn)
            return row.count;
        return index.column() == RateColumn ? QVariant(row.rate) : displayData(row, index.column());
    case Qt::CheckStateRole:
        if (index.column() == TypeColumn) // also of unknown types, so that all names begin in one line
            return m_inTree.contains(row.info) ? Qt::Checked : Qt::Unchecked;
        return QVariant();
    case Qt::ToolTipRole:
        if (index.column() == SenderColumn)
            return displayData(row, SenderColumn);
        if (!row.info)
            return tr("The loaded definitions do not know this type; its messages are counted only.");
        return row.info->getShortDescriptiveText();
    case Qt::TextAlignmentRole:
        return index.column() >= CountColumn ? int(Qt::AlignRight | Qt::AlignVCenter)
                                             : int(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return QVariant();
    }
}

bool MessageTypeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != TypeColumn || !getMessageInfo(index.row()))
        return false;
    Q_EMIT inTreeRequested(getMessageInfo(index.row()), value.toInt() == Qt::Checked);
    return true;
}

QVariant MessageTypeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section >= CountColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case TypeColumn:
        return tr("Type");
    case SenderColumn:
        return tr("Sender");
    case CountColumn:
        return tr("Count");
    default:
        return tr("Rate");
    }
}

Qt::ItemFlags MessageTypeModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid())
        return flags;
    if (!getMessageInfo(index.row()))
        return flags & ~Qt::ItemIsEnabled; // there is nothing to show of it
    return index.column() == TypeColumn ? flags | Qt::ItemIsUserCheckable : flags;
}
