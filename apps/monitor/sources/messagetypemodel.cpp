#include "messagetypemodel.h"

#include "messageinfo.h"
#include "naturalorder.h"
#include "sourcesession.h"

#include <QLocale>

#include <algorithm>

// A rate is that of the last five seconds: of what comes once a second, a shorter time would tell nonsense.
static const int MarkMilliseconds = 1000;
static const int MarkCount = 6;

static const int MostSingleRows = 500; // that are inserted one by one; views are faster to begin anew with more

MessageTypeModel::MessageTypeModel(QObject* parent)
    : QAbstractItemModel(parent)
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
    if (m_isFolded)
        beginResetModel();
    for (int last = int(m_rows.size()) - 1; last >= 0; --last) {
        if (m_rows.at(last).session != session)
            continue;
        int first = last;
        while (first > 0 && m_rows.at(first - 1).session == session)
            --first;
        if (!m_isFolded)
            beginRemoveRows(QModelIndex(), first, last);
        m_rows.remove(first, last - first + 1);
        if (!m_isFolded)
            endRemoveRows();
        last = first;
    }
    m_senderNames.clear();
    for (int i = 0; i < m_senders.size(); ++i) {
        if (m_senders.at(i).session != session)
            continue;
        m_senderPlaces.remove({session, m_senders.at(i).number});
        m_senders[i] = Sender{nullptr, 0, QString()};
    }
    if (m_rows.isEmpty())
        m_senders.clear();
    if (m_isFolded) {
        fold();
        endResetModel();
    }
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
    m_senderNames.clear();
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
    if (m_isFolded) {
        insertFolded(rows);
        return;
    }
    beginInsertRows(QModelIndex(), int(m_rows.size()), int(m_rows.size() + rows.size()) - 1);
    m_rows += rows;
    endInsertRows();
}

void MessageTypeModel::insertFolded(const QVector<Row>& rows)
{
    if (rows.size() > MostSingleRows) {
        beginResetModel();
        m_rows += rows;
        fold();
        endResetModel();
        return;
    }
    for (const Row& added : rows) {
        int group = m_groupsBySender.value(added.sender, -1);
        if (group < 0) {
            group = int(m_groups.size());
            beginInsertRows(QModelIndex(), group, group);
            m_groups.append(Group{added.sender, {}});
            m_groupsBySender.insert(added.sender, group);
            endInsertRows();
        }
        const int place = int(m_groups.at(group).rows.size());
        beginInsertRows(index(group, 0), place, place);
        m_groups[group].rows.append(int(m_rows.size()));
        m_rows.append(added);
        m_rows.last().group = group;
        m_rows.last().place = place;
        endInsertRows();
    }
}

void MessageTypeModel::fold()
{
    m_groups.clear();
    m_groupsBySender.clear();
    for (int i = 0; i < m_rows.size() && m_isFolded; ++i) {
        Row& row = m_rows[i];
        if (!m_groupsBySender.contains(row.sender)) {
            m_groupsBySender.insert(row.sender, int(m_groups.size()));
            m_groups.append(Group{row.sender, {}});
        }
        row.group = m_groupsBySender.value(row.sender);
        row.place = int(m_groups.at(row.group).rows.size());
        m_groups[row.group].rows.append(i);
    }
    countGroups();
}

void MessageTypeModel::countGroups()
{
    for (Group& group : m_groups) {
        group.count = 0;
        group.rate = 0;
        for (const int row : std::as_const(group.rows)) {
            group.count += m_rows.at(row).count;
            group.rate += m_rows.at(row).rate;
        }
    }
}

void MessageTypeModel::setFolded(bool folded)
{
    if (m_isFolded == folded)
        return;
    beginResetModel();
    m_isFolded = folded;
    fold();
    endResetModel();
}

// The pointer in an index is the number of the sender's row above, from 1; 0 where there is none.
QModelIndex MessageTypeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : 0);
}

QModelIndex MessageTypeModel::parent(const QModelIndex& index) const
{
    return index.isValid() && index.internalId() > 0 ? createIndex(int(index.internalId()) - 1, 0, quintptr(0))
                                                     : QModelIndex();
}

int MessageTypeModel::rowOf(const QModelIndex& index) const
{
    if (!m_isFolded || !index.isValid())
        return index.row();
    return index.internalId() == 0 ? -1 : m_groups.at(int(index.internalId()) - 1).rows.at(index.row());
}

QModelIndex MessageTypeModel::indexOf(int row) const
{
    return m_isFolded ? index(m_rows.at(row).place, 0, index(m_rows.at(row).group, 0)) : index(row, 0);
}

QString MessageTypeModel::getSender(const QModelIndex& index) const
{
    const int row = rowOf(index);
    return m_senders.at(row < 0 ? m_groups.at(index.row()).sender : m_rows.at(row).sender).name;
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
    countGroups();
    // Below senders, who looks asks again: a signal for each of a thousand would cost more than all else.
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, SenderColumn), index(rowCount() - 1, RateColumn));
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
    if (!m_senderNames.isEmpty())
        return m_senderNames;
    QStringList senders;
    for (const Sender& sender : m_senders)
        if (!sender.name.isEmpty())
            senders.append(sender.name);
    std::sort(senders.begin(), senders.end(), NaturalOrder::isBefore);
    senders.erase(std::unique(senders.begin(), senders.end()), senders.end());
    m_senderNames = senders;
    return senders;
}

void MessageTypeModel::renameSender(const QString& before, const QString& now)
{
    bool any = false;
    for (Sender& sender : m_senders) {
        if (!sender.session || sender.name != before)
            continue;
        sender.name = now;
        m_senderNames.clear();
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
    Q_EMIT dataChanged(index(0, TypeColumn), index(rowCount() - 1, SenderColumn));
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
        Q_EMIT dataChanged(index(0, TypeColumn), index(rowCount() - 1, TypeColumn), {Qt::CheckStateRole});
}

bool MessageTypeModel::isBefore(const QModelIndex& left, const QModelIndex& right) const
{
    const int column = left.column();
    if (rowOf(left) < 0) {
        const Group& one = m_groups.at(left.row());
        const Group& other = m_groups.at(right.row());
        if (column == CountColumn)
            return one.count < other.count;
        if (column == RateColumn)
            return one.rate < other.rate;
        return NaturalOrder::isBefore(m_senders.at(one.sender).name, m_senders.at(other.sender).name);
    }
    const Row& one = m_rows.at(rowOf(left));
    const Row& other = m_rows.at(rowOf(right));
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
    if (!m_isFolded)
        return parent.isValid() ? 0 : getCount();
    if (!parent.isValid())
        return int(m_groups.size());
    return parent.internalId() == 0 ? int(m_groups.at(parent.row()).rows.size()) : 0;
}

int MessageTypeModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QString MessageTypeModel::rateText(double rate)
{
    // A rate below one is better told in more than one digit, or 0.2 and 0.25 look the same.
    return rate > 0 ? tr("%1 /s").arg(QLocale().toString(rate, 'f', rate < 9.95 ? 1 : 0)) : QString();
}

QVariant MessageTypeModel::groupData(const Group& group, int column) const
{
    const QString name = m_senders.at(group.sender).name;
    switch (column) {
    case TypeColumn:
        return name.isEmpty() ? tr("Without a name") : name;
    case CountColumn:
        return QLocale().toString(group.count);
    case RateColumn:
        return rateText(group.rate);
    default:
        return QVariant();
    }
}

QVector<Subject> MessageTypeModel::subjectsAt(const QModelIndex& index) const
{
    QVector<Subject> subjects;
    const int row = rowOf(index);
    for (const int each : row < 0 ? m_groups.at(index.row()).rows : QVector<int>{row})
        if (m_rows.at(each).info)
            subjects.append(getSubject(each));
    return subjects;
}

QVariant MessageTypeModel::checkState(const QModelIndex& index) const
{
    const QVector<Subject> subjects = subjectsAt(index);
    int ticked = 0;
    for (const Subject& subject : subjects)
        ticked += m_inTree.contains(subject) ? 1 : 0;
    if (ticked == 0)
        return Qt::Unchecked;
    return ticked == subjects.size() ? Qt::Checked : Qt::PartiallyChecked;
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
        return rateText(row.rate);
    default:
        return QVariant();
    }
}

QVariant MessageTypeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    if (role == Qt::CheckStateRole) // also of unknown types, so that all names begin in one line
        return index.column() == TypeColumn ? checkState(index) : QVariant();
    if (role == Qt::TextAlignmentRole)
        return index.column() >= CountColumn ? int(Qt::AlignRight | Qt::AlignVCenter)
                                             : int(Qt::AlignLeft | Qt::AlignVCenter);
    if (rowOf(index) < 0)
        return role == Qt::DisplayRole ? groupData(m_groups.at(index.row()), index.column()) : QVariant();
    const Row& row = m_rows.at(rowOf(index));
    switch (role) {
    case Qt::DisplayRole:
        return displayData(row, index.column());
    case Qt::ToolTipRole:
        if (index.column() == SenderColumn)
            return displayData(row, SenderColumn);
        if (!row.info)
            return tr("The loaded definitions do not know this type; its messages are counted only.");
        return row.info->getShortDescriptiveText();
    default:
        return QVariant();
    }
}

bool MessageTypeModel::hasWords(const QModelIndex& index, const QStringList& words) const
{
    const Row& row = m_rows.at(rowOf(index));
    for (const QString& word : words)
        if (!row.name.contains(word, Qt::CaseInsensitive) &&
            !m_senders.at(row.sender).name.contains(word, Qt::CaseInsensitive))
            return false;
    return true;
}

bool MessageTypeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const QVector<Subject> subjects = subjectsAt(index);
    if (role != Qt::CheckStateRole || index.column() != TypeColumn || subjects.isEmpty())
        return false;
    Q_EMIT inTreeRequested(subjects, value.toInt() == Qt::Checked);
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
        return m_isFolded ? tr("Sender and Type") : tr("Type");
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
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (!index.isValid())
        return flags;
    if (subjectsAt(index).isEmpty())
        return flags & ~Qt::ItemIsEnabled; // there is nothing to show of it
    return index.column() == TypeColumn ? flags | Qt::ItemIsUserCheckable : flags;
}
