#include "messagelist.h"

#include "celldelegate.h"
#include "fieldsummary.h"
#include "message.h"
#include "messageinfo.h"
#include "playbacktime.h"

#include <QLocale>

#include <algorithm>
#include <iterator>

MessageList::MessageList(QObject* parent)
    : QAbstractTableModel(parent)
{
}

MessageList::Row MessageList::rowOf(const Message* message)
{
    return {message->getInfo(), message->getSender(),   message->getData(),
            message->getTime(), message->getSequence(), Message::NoTime};
}

// Parsed messages need several times the memory of their bytes, and keep it: so each look has one of its own.
MessageReference MessageList::messageOf(const Row& row)
{
    if (!row.info)
        return MessageReference();
    Message* const message = row.info->newMessage(row.data);
    message->setTime(row.time);
    message->setSequence(row.sequence);
    message->setSender(row.sender);
    return MessageReference::adopt(message);
}

void MessageList::add(const Message* message)
{
    Row row = rowOf(message);
    row.number = ++m_noted;
    qint64& last =
        m_times.insert(Subject{row.info, row.sender}, m_times.value({row.info, row.sender}, Message::NoTime)).value();
    if (last != Message::NoTime && row.time != Message::NoTime)
        row.interval = row.time - last;
    last = row.time;
    m_waitingBytes += row.data.size();
    m_waiting.push_back(std::move(row));
    while (int(m_waiting.size()) > MostMessages || (m_waitingBytes > MostBytes / 4 && m_waiting.size() > 1)) {
        m_waitingBytes -= m_waiting.front().data.size();
        m_waiting.pop_front();
        m_hasLost = m_isCut = true;
    }
}

void MessageList::addEarlier(const Message* message)
{
    take();
    const auto isLater = [](qint64 time, const Row& row) { return row.time != Message::NoTime && time < row.time; };
    const auto place = std::upper_bound(m_rows.begin(), m_rows.end(), message->getTime(), isLater);
    const int number = int(place - m_rows.begin());
    beginInsertRows(QModelIndex(), number, number);
    m_rows.insert(place, rowOf(message));
    m_bytes += message->getData().size();
    endInsertRows();
    m_times.insert({message->getInfo(), message->getSender()}, message->getTime());
}

void MessageList::addGap()
{
    m_times.clear();
    const std::deque<Row>& rows = m_waiting.empty() ? m_rows : m_waiting;
    if (!rows.empty() && rows.back().info)
        m_waiting.push_back(
            {nullptr, QString(), QByteArray(), Message::NoTime, Message::NoSequence, Message::NoTime, ++m_noted});
}

void MessageList::removeFirst(int count)
{
    if (count <= 0)
        return;
    beginRemoveRows(QModelIndex(), 0, count - 1);
    for (int i = 0; i < count; ++i) {
        m_bytes -= m_rows.front().data.size();
        m_rows.pop_front();
    }
    endRemoveRows();
}

void MessageList::take()
{
    if (m_waiting.empty())
        return;
    if (m_hasLost) // what is there would not be what came before
        removeFirst(int(m_rows.size()));
    m_hasLost = false;
    const int tooMany = qMax(0, int(m_rows.size() + m_waiting.size()) - MostMessages);
    qint64 bytes = m_bytes + m_waitingBytes;
    int gone = 0;
    for (; gone < int(m_rows.size()) && (gone < tooMany || bytes > MostBytes); ++gone)
        bytes -= m_rows[std::size_t(gone)].data.size();
    m_isFull = gone > tooMany || (m_isFull && tooMany == 0);
    m_isCut = m_isCut || gone > 0;
    removeFirst(gone);
    const int first = int(m_rows.size());
    beginInsertRows(QModelIndex(), first, first + int(m_waiting.size()) - 1);
    std::move(m_waiting.begin(), m_waiting.end(), std::back_inserter(m_rows));
    m_waiting.clear();
    m_bytes += m_waitingBytes;
    m_waitingBytes = 0;
    endInsertRows();
}

void MessageList::keep(const std::function<bool(const MessageInfo*, const QString&)>& isWanted)
{
    const auto isUnwanted = [&isWanted](const Row& row) { return row.info && !isWanted(row.info, row.sender); };
    take();
    if (std::none_of(m_rows.cbegin(), m_rows.cend(), isUnwanted))
        return;
    beginResetModel();
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), isUnwanted), m_rows.end());
    if (std::none_of(m_rows.cbegin(), m_rows.cend(), [](const Row& row) { return row.info; }))
        m_rows.clear();
    countBytes();
    m_isFull = false;
    endResetModel();
}

void MessageList::beginReading()
{
    take();
    m_times.clear(); // the last one may have been read by then
    m_readFrom = m_noted;
    for (Row& row : m_rows)
        row.reading = -1; // of another reading
    m_isCut = m_isFull = false;
}

void MessageList::removeNoted(const std::function<bool(const QString&)>& isOfThem)
{
    const auto isGone = [&](const Row& row) { return isOld(row) && row.reading < 0 && isOfThem(row.sender); };
    int count = 0;
    while (count < int(m_rows.size()) && (isGone(m_rows[std::size_t(count)]) || !m_rows[std::size_t(count)].info))
        ++count;
    removeFirst(count);
    const auto isOne = [&](const Row& row) { return row.info && isGone(row); };
    if (std::none_of(m_rows.cbegin(), m_rows.cend(), isOne))
        return;
    beginResetModel();
    m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(), isOne), m_rows.end());
    countBytes();
    endResetModel();
}

bool MessageList::addRead(const std::vector<EarlierMessage>& messages, int reading)
{
    if (m_isCut)
        return false;
    std::vector<Row> rows;
    for (const EarlierMessage& message : messages)
        rows.push_back(
            {message.info, message.sender, message.data, message.time, message.sequence, Message::NoTime, 0, reading});
    const bool isAlone = std::all_of(m_rows.cbegin(), m_rows.cend(),
                                     [&](const Row& row) { return !isOld(row) || row.reading == reading; });
    const bool isAll = isAlone ? putFirst(&rows) : merge(rows, reading);
    fillIntervals();
    return isAll;
}

/** Puts rows before all others, the last of them that there is room for; whether that is all. */
bool MessageList::putFirst(std::vector<Row>* rows)
{
    std::size_t count = 0;
    const std::size_t room = std::size_t(MostMessages) - std::min(m_rows.size(), std::size_t(MostMessages));
    qint64 bytes = m_bytes;
    for (; count < std::min(rows->size(), room); ++count) {
        const qint64 size = (*rows)[rows->size() - 1 - count].data.size();
        m_isFull = m_isFull || bytes + size > MostBytes;
        if (bytes + size > MostBytes)
            break;
        bytes += size;
    }
    if (count == 0)
        return rows->empty();
    beginInsertRows(QModelIndex(), 0, int(count) - 1);
    m_rows.insert(m_rows.begin(), std::make_move_iterator(rows->end() - std::ptrdiff_t(count)),
                  std::make_move_iterator(rows->end()));
    m_bytes = bytes;
    endInsertRows();
    return count == rows->size();
}

/** Puts rows among those of other recordings; whether there was room for all. */
bool MessageList::merge(const std::vector<Row>& rows, int reading)
{
    beginResetModel();
    const auto noted = std::find_if(m_rows.begin(), m_rows.end(), [this](const Row& row) { return !isOld(row); });
    std::deque<Row> merged;
    std::merge(m_rows.begin(), noted, rows.begin(), rows.end(), std::back_inserter(merged),
               [](const Row& left, const Row& right) { return left.time < right.time; });
    merged.insert(merged.end(), noted, m_rows.end());
    m_rows.swap(merged);
    countBytes();
    bool isAll = true;
    while (int(m_rows.size()) > MostMessages || m_bytes > MostBytes) {
        m_isFull = m_isFull || int(m_rows.size()) <= MostMessages;
        isAll = isAll && m_rows.front().reading != reading;
        m_bytes -= m_rows.front().data.size();
        m_rows.pop_front();
    }
    endResetModel();
    return isAll;
}

/** Finds out intervals that were not known before there was something in front of a row. */
void MessageList::fillIntervals()
{
    QHash<Subject, qint64> last;
    for (std::deque<Row>* const rows : {&m_rows, &m_waiting}) {
        for (Row& row : *rows) {
            if (!row.info) {
                last.clear();
                continue;
            }
            const auto before = last.find({row.info, row.sender});
            if (before == last.end()) {
                last.insert({row.info, row.sender}, row.time);
                continue;
            }
            if (row.interval == Message::NoTime && *before != Message::NoTime && row.time != Message::NoTime)
                row.interval = row.time - *before;
            *before = row.time;
        }
    }
    for (auto time = last.cbegin(); time != last.cend(); ++time)
        m_times.insert(time.key(), time.value());
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, IntervalColumn), index(int(m_rows.size()) - 1, IntervalColumn));
}

void MessageList::countBytes()
{
    m_bytes = 0;
    for (const Row& row : m_rows)
        m_bytes += row.data.size();
}

bool MessageList::getTimes(qint64* first, qint64* last) const
{
    bool any = false;
    for (const Row& row : m_rows) {
        if (row.time == Message::NoTime)
            continue;
        *first = any ? qMin(*first, row.time) : row.time;
        *last = any ? qMax(*last, row.time) : row.time;
        any = true;
    }
    return any;
}

void MessageList::clear()
{
    keep([](const MessageInfo*, const QString&) { return false; });
    m_times.clear();
}

void MessageList::renameSender(const QString& before, const QString& now)
{
    take();
    for (Row& row : m_rows)
        if (row.sender == before)
            row.sender = now;
    m_times.clear();
    renew();
}

bool MessageList::has(const Subject& subject) const
{
    const auto isIt = [&subject](const Row& row) { return row.info && subject.covers(row.info, row.sender); };
    return std::any_of(m_waiting.crbegin(), m_waiting.crend(), isIt) ||
           std::any_of(m_rows.crbegin(), m_rows.crend(), isIt);
}

MessageReference MessageList::getMessage(int row) const
{
    return messageOf(m_rows[std::size_t(row)]);
}

qint64 MessageList::getTime(int row) const
{
    return m_rows[std::size_t(row)].time;
}

void MessageList::setDigits(int digits)
{
    if (m_digits == digits)
        return;
    m_digits = digits;
    renew();
}

void MessageList::renew()
{
    for (const Row& row : m_rows)
        row.summary.clear();
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, 0), index(int(m_rows.size()) - 1, ColumnCount - 1));
}

int MessageList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int MessageList::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

// With microseconds: at thousands of messages a second nothing less tells them apart.
static QString timeText(qint64 time, bool withDate)
{
    const QString text = PlaybackTime::clockText(time);
    return (withDate ? text : text.mid(text.indexOf(QLatin1Char(' ')) + 1)) +
           QString::number((time % 1000 + 1000) % 1000).rightJustified(3, QLatin1Char('0'));
}

static QString intervalText(qint64 microseconds)
{
    const bool isLong = qAbs(microseconds) >= 1000000;
    return QString::number(double(microseconds) / (isLong ? 1e6 : 1e3), 'f', 3) + QLatin1String(isLong ? " s" : " ms");
}

QString MessageList::textOf(const Row& row, int column) const
{
    switch (column) {
    case TimeColumn:
        return row.time == Message::NoTime ? QString() : timeText(row.time, false);
    case IntervalColumn:
        return row.interval == Message::NoTime ? QString() : intervalText(row.interval);
    case SenderColumn:
        return row.sender;
    case TypeColumn:
        return row.info->getName();
    case SequenceColumn:
        return row.sequence == Message::NoSequence ? QString() : QString::number(row.sequence);
    case SizeColumn:
        return QLocale().toString(row.data.size());
    case SummaryColumn:
        if (row.summary.isNull())
            row.summary = FieldSummary::lineOf(messageOf(row).get(), m_digits) + QLatin1String("");
        return row.summary;
    default:
        return QString();
    }
}

QVariant MessageList::data(const QModelIndex& index, int role) const
{
    const Row& row = m_rows[std::size_t(index.row())];
    const bool isNumber =
        index.column() == IntervalColumn || index.column() == SequenceColumn || index.column() == SizeColumn;
    if (role == Qt::TextAlignmentRole && isNumber)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (!row.info)
        return role == Qt::DisplayRole && index.column() == SummaryColumn
                   ? QVariant(tr("Not noted: nobody could see the list."))
                   : QVariant();
    if (role == Qt::DisplayRole)
        return textOf(row, index.column());
    if (role == Qt::ToolTipRole && index.column() == TimeColumn && row.time != Message::NoTime)
        return timeText(row.time, true) + QLatin1String(" UTC");
    if (role == CellDelegate::KeptRole && index.column() == SenderColumn)
        return row.sender;
    return QVariant();
}

QVariant MessageList::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        switch (section) {
        case TimeColumn:
            return tr("Time");
        case IntervalColumn:
            return tr("Interval");
        case SenderColumn:
            return tr("Sender");
        case TypeColumn:
            return tr("Type");
        case SequenceColumn:
            return tr("Number");
        case SizeColumn:
            return tr("Bytes");
        case SummaryColumn:
            return tr("Values");
        default:
            break;
        }
    }
    if (orientation == Qt::Horizontal && role == Qt::ToolTipRole) {
        if (section == IntervalColumn)
            return tr("Time since the one before of the same type and sender");
        if (section == SequenceColumn)
            return tr("What the sender numbered it");
    }
    return QVariant();
}
