#include "messagetypemodel.h"

#include "celldelegate.h"
#include "messageinfo.h"
#include "naturalorder.h"
#include "sourcesession.h"
#include "words.h"

#include <QLocale>

#include <algorithm>

static const int MostSingleRows = 500; // that are inserted one by one; views are faster to begin anew with more

MessageTypeModel::MessageTypeModel(const MessageStatisticsCoordinator* coordinator, QObject* parent)
    : QAbstractItemModel(parent)
    , m_coordinator(coordinator)
{
}

void MessageTypeModel::addSession(const SourceSession* session)
{
    m_sessions.append(Session{session, {}});
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
    beginResetModel();
    m_rows.erase(
        std::remove_if(m_rows.begin(), m_rows.end(), [session](const Row& row) { return row.session == session; }),
        m_rows.end());
    m_senderNames.clear();
    m_rowsBySubject.clear();
    for (int i = 0; i < m_senders.size(); ++i) {
        if (m_senders.at(i).session != session)
            continue;
        m_senderPlaces.remove({session, m_senders.at(i).number});
        m_senders[i] = Sender{nullptr, 0, QString()};
    }
    if (m_rows.isEmpty())
        m_senders.clear();
    arrange();
    endResetModel();
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
        if (session->shown.at(i) || !session->session->hasMessage(i))
            continue;
        session->shown[i] = true;
        const MessageInfo* const info = identities.at(i).info;
        Row row;
        row.session = session->session;
        row.number = i;
        row.info = info;
        row.name = info ? info->getName() : tr("Unknown %1").arg(identities.at(i).typeName);
        row.sender = findSender(session->session, identities.at(i).sender, i);
        rows.append(row);
        const Subject subject = {info, m_senders.at(row.sender).name};
        if (info && ++m_seen[subject] == 1) {
            ++m_senderCounts[info];
            fresh->append(subject);
        }
    }
    if (!rows.isEmpty())
        insert(rows);
}

/** The group below which a row is to lie, as the sender of that; a row at the top has none. */
int MessageTypeModel::groupOf(const Row& row) const
{
    return row.info ? row.sender : UnknownTypes;
}

void MessageTypeModel::insert(const QVector<Row>& rows)
{
    m_rowsBySubject.clear();
    if (rows.size() > MostSingleRows) {
        beginResetModel();
        m_rows += rows;
        arrange();
        endResetModel();
        return;
    }
    for (Row row : rows) {
        const int number = int(m_rows.size());
        if (row.info && !m_isFolded) {
            row.place = int(m_top.size());
            beginInsertRows(QModelIndex(), row.place, row.place);
            m_top.append(number);
            m_rows.append(row);
            endInsertRows();
            continue;
        }
        if (!m_groupsBySender.contains(groupOf(row))) {
            beginInsertRows(QModelIndex(), int(m_top.size()), int(m_top.size()));
            createGroup(groupOf(row));
            endInsertRows();
        }
        row.group = m_groupsBySender.value(groupOf(row));
        row.place = int(m_groups.at(row.group).rows.size());
        beginInsertRows(index(m_groups.at(row.group).top, 0), row.place, row.place);
        m_groups[row.group].rows.append(number);
        m_rows.append(row);
        endInsertRows();
    }
}

int MessageTypeModel::createGroup(int sender)
{
    const int group = int(m_groups.size());
    m_groups.append(Group{sender, int(m_top.size()), {}});
    m_groupsBySender.insert(sender, group);
    m_top.append(-1 - group);
    return group;
}

void MessageTypeModel::arrange()
{
    m_top.clear();
    m_groups.clear();
    m_groupsBySender.clear();
    for (int i = 0; i < m_rows.size(); ++i) {
        Row& row = m_rows[i];
        row.group = -1;
        if (row.info && !m_isFolded) {
            row.place = int(m_top.size());
            m_top.append(i);
            continue;
        }
        const bool isThere = m_groupsBySender.contains(groupOf(row));
        row.group = isThere ? m_groupsBySender.value(groupOf(row)) : createGroup(groupOf(row));
        row.place = int(m_groups.at(row.group).rows.size());
        m_groups[row.group].rows.append(i);
    }
    countGroups();
}

void MessageTypeModel::countGroups()
{
    for (Group& group : m_groups) {
        group.count = 0;
        for (const int row : std::as_const(group.rows))
            group.count += m_rows.at(row).count;
    }
}

void MessageTypeModel::setFolded(bool folded)
{
    if (m_isFolded == folded)
        return;
    beginResetModel();
    m_isFolded = folded;
    arrange();
    endResetModel();
}

// The pointer in an index is the number of the group above, from 1; 0 where there is none.
QModelIndex MessageTypeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column, parent.isValid() ? quintptr(-m_top.at(parent.row())) : 0);
}

QModelIndex MessageTypeModel::parent(const QModelIndex& index) const
{
    if (!index.isValid() || index.internalId() == 0)
        return QModelIndex();
    return createIndex(m_groups.at(int(index.internalId()) - 1).top, 0, quintptr(0));
}

int MessageTypeModel::rowOf(const QModelIndex& index) const
{
    if (!index.isValid())
        return -1;
    if (index.internalId() > 0)
        return m_groups.at(int(index.internalId()) - 1).rows.at(index.row());
    return qMax(-1, m_top.at(index.row()));
}

QModelIndex MessageTypeModel::indexOf(int row) const
{
    const Row& found = m_rows.at(row);
    return found.group < 0 ? index(found.place, 0) : index(found.place, 0, index(m_groups.at(found.group).top, 0));
}

const MessageTypeModel::Group* MessageTypeModel::groupAt(const QModelIndex& index) const
{
    return rowOf(index) < 0 ? &m_groups.at(-1 - m_top.at(index.row())) : nullptr;
}

QVector<int> MessageTypeModel::rowsAt(const QModelIndex& index) const
{
    const Group* const group = groupAt(index);
    return group ? group->rows : QVector<int>{rowOf(index)};
}

QString MessageTypeModel::getSender(const QModelIndex& index) const
{
    const Group* const group = groupAt(index);
    const int sender = group ? group->sender : m_rows.at(rowOf(index)).sender;
    return sender == UnknownTypes ? QString() : m_senders.at(sender).name;
}

bool MessageTypeModel::hasOtherTypes(const SourceSession* session) const
{
    for (const Row& row : m_rows)
        if (row.session == session && row.info != session->getIdentities().getRows().at(row.number).info)
            return true;
    return false;
}

void MessageTypeModel::refresh()
{
    m_isLostKnown = false;
    QVector<Subject> fresh;
    for (Session& session : m_sessions) {
        if (hasOtherTypes(session.session)) {
            Q_EMIT typesAboutToChange();
            removeTypesOf(session.session);
            session.shown.clear();
        }
        appendRows(&session, &fresh);
    }
    for (Row& row : m_rows)
        row.count = row.session->getCounters().getCount(row.number);
    countGroups();
    // Below others, who looks asks again: a signal for each of a thousand would cost more than all else.
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0, SenderColumn), index(rowCount() - 1, BytesColumn));
    if (!fresh.isEmpty())
        Q_EMIT seen(fresh);
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
        m_rowsBySubject.clear();
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
    const Group* const groups[] = {groupAt(left), groupAt(right)};
    // What is not known stands at the end of what is.
    const bool areUnknown[] = {groups[0] && groups[0]->sender == UnknownTypes,
                               groups[1] && groups[1]->sender == UnknownTypes};
    if (column < CountColumn && areUnknown[0] != areUnknown[1])
        return areUnknown[1];
    if (column == CountColumn)
        return countAt(left) < countAt(right);
    if (column > CountColumn)
        return figureAt(left) < figureAt(right);
    const int senders = NaturalOrder::compare(getSender(left), getSender(right));
    if (groups[0] || groups[1])
        return senders < 0;
    const int types = NaturalOrder::compare(m_rows.at(rowOf(left)).name, m_rows.at(rowOf(right)).name);
    return column == SenderColumn ? (senders != 0 ? senders < 0 : types < 0) : (types != 0 ? types < 0 : senders < 0);
}

int MessageTypeModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return int(m_top.size());
    return parent.internalId() == 0 && m_top.at(parent.row()) < 0 ? int(groupAt(parent)->rows.size()) : 0;
}

int MessageTypeModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QVector<Subject> MessageTypeModel::subjectsAt(const QModelIndex& index) const
{
    QVector<Subject> subjects;
    const QVector<int> rows = rowsAt(index);
    for (const int each : rows)
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

QVariant MessageTypeModel::displayData(const QModelIndex& index) const
{
    const Group* const group = groupAt(index);
    switch (index.column()) {
    case TypeColumn:
        if (!group)
            return m_rows.at(rowOf(index)).name;
        if (group->sender == UnknownTypes)
            return tr("Unknown types");
        return getSender(index).isEmpty() ? tr("Without a name") : getSender(index);
    case SenderColumn:
        return group ? QString() : getSender(index);
    case CountColumn:
        return QLocale().toString(countAt(index));
    default:
        return figureText(index);
    }
}

QVariant MessageTypeModel::toolTip(const QModelIndex& index) const
{
    const Group* const group = groupAt(index);
    if (index.column() == GapsColumn || index.column() == LostColumn || index.column() == RangeColumn)
        return headerData(index.column(), Qt::Horizontal, Qt::ToolTipRole);
    if (group)
        return group->sender == UnknownTypes ? tr("Identifiers that no definition knows: types whose definitions are "
                                                  "not loaded, and damaged frames")
                                             : QString();
    if (index.column() == SenderColumn)
        return getSender(index);
    const Row& row = m_rows.at(rowOf(index));
    return row.info ? row.info->getShortDescriptiveText()
                    : tr("The loaded definitions do not know this type; its messages are counted only.");
}

QVariant MessageTypeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return displayData(index);
    case Qt::ToolTipRole:
        return toolTip(index);
    case CellDelegate::KeptRole:
        return index.column() == SenderColumn ? QVariant(getSender(index)) : QVariant();
    case Qt::CheckStateRole:
        return index.column() == TypeColumn && !subjectsAt(index).isEmpty() ? checkState(index) : QVariant();
    case Qt::TextAlignmentRole:
        return index.column() >= CountColumn ? int(Qt::AlignRight | Qt::AlignVCenter)
                                             : int(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return QVariant();
    }
}

bool MessageTypeModel::hasWords(const QModelIndex& index, const QStringList& words) const
{
    const Row& row = m_rows.at(rowOf(index));
    return Words::areIn(words, {row.name, m_senders.at(row.sender).name});
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
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return QVariant();
    const bool isName = role == Qt::DisplayRole;
    switch (section) {
    case TypeColumn:
        return !isName ? QString() : m_isFolded ? tr("Sender and Type") : tr("Type");
    case SenderColumn:
        return isName ? tr("Sender") : QString();
    case CountColumn:
        return isName ? tr("Count") : QString();
    case RateColumn:
        return isName ? tr("Rate") : tr("The rate that the messages keep, as the statistics have it");
    case RangeColumn:
        return isName ? tr("Range") : tr("The slowest and the fastest rate there was, without the rarest twentieth");
    case GapsColumn:
        return isName ? tr("Gaps") : tr("Times in which messages did not come although they were due");
    case LostColumn:
        return isName ? tr("Lost") : tr("Numbers that the sender skipped, of all of its types together");
    case AgeColumn:
        return isName ? tr("Age") : tr("Since when nothing came, in the recording's own time where it is one");
    default:
        return isName ? tr("Bytes") : QString();
    }
}

Qt::ItemFlags MessageTypeModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (!index.isValid())
        return flags;
    if (subjectsAt(index).isEmpty() && !groupAt(index))
        return flags & ~Qt::ItemIsEnabled; // there is nothing to show of it
    const bool isTickable = index.column() == TypeColumn && !subjectsAt(index).isEmpty();
    return isTickable ? flags | Qt::ItemIsUserCheckable : flags;
}
