#include "messagetypemodel.h"

#include "messageinfo.h"
#include "naturalorder.h"
#include "sourcesession.h"

#include <QLocale>

#include <algorithm>

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
    QVector<Subject> lost;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).session != session || !m_rows.at(i).info)
            continue;
        const Subject subject = getSubject(i);
        if (--m_seen[subject] > 0)
            continue;
        m_seen.remove(subject);
        lost.append(subject);
        if (--m_senderCounts[subject.info] == 0)
            m_senderCounts.remove(subject.info);
    }
    for (int last = int(m_rows.size()) - 1; last >= 0; --last) {
        if (m_rows.at(last).session != session)
            continue;
        int first = last;
        while (first > 0 && m_rows.at(first - 1).session == session)
            --first;
        beginRemoveRows(QModelIndex(), first, last);
        m_rows.remove(first, last - first + 1);
        endRemoveRows();
        last = first;
    }
    for (int i = 0; i < m_senders.size(); ++i) {
        if (m_senders.at(i).session != session)
            continue;
        m_senderPlaces.remove({session, m_senders.at(i).number});
        m_senders[i] = Sender{nullptr, 0, QString()};
    }
    if (m_rows.isEmpty())
        m_senders.clear();
    if (!lost.isEmpty())
        Q_EMIT gone(lost);
}

int MessageTypeModel::findSender(const SourceSession* session, int number, int row)
{
    const auto found = m_senderPlaces.constFind({session, number});
    if (found != m_senderPlaces.constEnd())
        return *found;
    const int place = int(m_senders.size());
    m_senderPlaces.insert({session, number}, place);
    m_senders.append(Sender{session, number, session->getSenderName(row)});
    return place;
}

void MessageTypeModel::appendRows(Session* session, QVector<Subject>* fresh)
{
    const QVector<StreamIdentities::Row>& identities = session->session->getIdentities().getRows();
    session->shown.resize(identities.size());
    QVector<Row> rows;
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
        row.sender = findSender(session->session, identities.at(i).sender, i);
        row.count = 0;
        rows.append(row);
        const Subject subject = {info, m_senders.at(row.sender).name};
        if (info && ++m_seen[subject] == 1) {
            ++m_senderCounts[info];
            fresh->append(subject);
        }
    }
    if (rows.isEmpty())
        return;
    beginInsertRows(QModelIndex(), int(m_rows.size()), int(m_rows.size() + rows.size()) - 1);
    m_rows += rows;
    endInsertRows();
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
    QVector<Subject> fresh;
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
    if (!fresh.isEmpty())
        Q_EMIT seen(fresh);
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
    for (const Sender& sender : m_senders)
        if (!sender.name.isEmpty())
            senders.append(sender.name);
    std::sort(senders.begin(), senders.end(), NaturalOrder::isBefore);
    senders.erase(std::unique(senders.begin(), senders.end()), senders.end());
    return senders;
}

void MessageTypeModel::renameSender(const QString& before, const QString& now)
{
    bool any = false;
    for (Sender& sender : m_senders) {
        if (!sender.session || sender.name != before)
            continue;
        sender.name = now;
        any = true;
    }
    if (!any)
        return;
    const QList<const MessageInfo*> types = m_senderCounts.keys();
    for (const MessageInfo* info : types) {
        if (const int rows = m_seen.take({info, before}))
            m_seen.insert({info, now}, rows);
        if (m_inTree.remove({info, before}))
            m_inTree.insert({info, now});
    }
    Q_EMIT dataChanged(index(0, SenderColumn), index(int(m_rows.size()) - 1, SenderColumn));
}

const MessageInfo* MessageTypeModel::getMessageInfo(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).info : nullptr;
}

Subject MessageTypeModel::getSubject(int row) const
{
    return {m_rows.at(row).info, m_senders.at(m_rows.at(row).sender).name};
}

void MessageTypeModel::setInTree(const QVector<Subject>& subjects, bool inTree)
{
    for (const Subject& subject : subjects) {
        if (inTree)
            m_inTree.insert(subject);
        else
            m_inTree.remove(subject);
    }
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, TypeColumn), index(getCount() - 1, TypeColumn), {Qt::CheckStateRole});
}

bool MessageTypeModel::isBefore(int left, int right, int column) const
{
    const Row& one = m_rows.at(left);
    const Row& other = m_rows.at(right);
    if (column == CountColumn)
        return one.count < other.count;
    if (column == RateColumn)
        return one.rate < other.rate;
    const int types = NaturalOrder::compare(one.name, other.name);
    const int senders = NaturalOrder::compare(m_senders.at(one.sender).name, m_senders.at(other.sender).name);
    return column == SenderColumn ? (senders != 0 ? senders < 0 : types < 0) : (types != 0 ? types < 0 : senders < 0);
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
        return m_senders.at(row.sender).name;
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
    case Qt::CheckStateRole:
        if (index.column() == TypeColumn) // also of unknown types, so that all names begin in one line
            return m_inTree.contains(getSubject(index.row())) ? Qt::Checked : Qt::Unchecked;
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
    Q_EMIT inTreeRequested(getSubject(index.row()), value.toInt() == Qt::Checked);
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
