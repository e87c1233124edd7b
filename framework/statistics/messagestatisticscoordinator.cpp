#include "messagestatisticscoordinator.h"

#include "message.h"
#include "messageinfo.h"
#include "messagestatistics.h"

#include <QStringList>

namespace
{

// Frames of unknown types cannot be verified: noise may look like any number of types and senders.
const int MaxUnknownTypes = 1000;

} // namespace

struct MessageStatisticsCoordinator::Sender
{
    void countNumber(qint64 number, quint64 modulus);

    SenderStatistics statistics;
    quint64 settled; // bit n: the number that lies n before the newest one came, or was never expected
};

struct MessageStatisticsCoordinator::Row
{
    Row()
        : stream(0)
        , sender(0)
        , statistics(0)
        , account(0)
    {
    }
    ~Row() { qDeleteAll(all); }

    int stream;
    QString plainName;
    int sender;
    QString senderName;
    MessageStatistics* statistics; // null while nothing came since the stream was cleared
    QList<MessageStatistics*> all; // that there ever were, each with another type or name
    Sender* account;               // null until its first number was accounted for
};

struct MessageStatisticsCoordinator::Stream
{
    Stream()
        : number(0)
        , otherUnknown(0)
        , unknownTypes(0)
        , time(Message::NoTime)
    {
    }
    ~Stream()
    {
        qDeleteAll(rows);
        delete otherUnknown;
        qDeleteAll(senders);
    }

    Row* findRow(int row) const { return row >= 0 && row < rows.size() ? rows.at(row) : 0; }
    Sender* findSender(int sender) const { return sender >= 0 && sender < senders.size() ? senders.at(sender) : 0; }

    int number;
    QString label;
    QHash<int, unsigned int> events;
    QVector<Row*> rows; // by number, null where there is none; without otherUnknown
    Row* otherUnknown;  // for what is beyond MaxUnknownTypes; null until then
    int unknownTypes;
    qint64 time;
    QList<int> knownSenders;  // whose messages are of known types
    QVector<Sender*> senders; // by number, null where there is none
};

MessageStatisticsCoordinator::Origin::Origin(const MessageInfo* type, int number, const QString& name,
                                             const QString& unknown)
    : info(type)
    , sender(number)
    , senderName(name)
    , unknownName(unknown)
{
}

MessageStatisticsCoordinator::SenderStatistics::SenderStatistics()
    : stream(0)
    , sender(0)
    , numbered(false)
    , received(0)
    , lost(0)
    , repeated(0)
    , late(0)
    , restarts(0)
    , failed(0)
    , lastNumber(-1)
{
}

MessageStatisticsCoordinator::MessageStatisticsCoordinator() {}

MessageStatisticsCoordinator::~MessageStatisticsCoordinator()
{
    qDeleteAll(m_streams);
    qDeleteAll(m_retired);
}

int MessageStatisticsCoordinator::addStream()
{
    Stream* const stream = new Stream;
    stream->number = int(m_streams.size());
    m_streams.append(stream);
    return stream->number;
}

// Views tell statistics apart by their addresses and look again only now and then: at an address that were used anew
// meanwhile, they would leave a row with the old name. So objects stay with their rows, for which the same names come
// again after every jump in a recording; only what they hold is given back.
void MessageStatisticsCoordinator::clearRows(Stream* stream)
{
    for (int i = m_rows.size() - 1; i >= 0; --i) {
        Row* const row = m_rows.at(i);
        if (row->stream != stream->number)
            continue;
        row->statistics->reset();
        row->statistics = 0;
        row->account = 0;
        m_rows.removeAt(i);
    }
    stream->unknownTypes = 0;
    stream->time = Message::NoTime;
    stream->knownSenders.clear();
    qDeleteAll(stream->senders);
    stream->senders.clear();
    listAll();
}

void MessageStatisticsCoordinator::removeStream(int number)
{
    Stream* const stream = m_streams.value(number);
    if (!stream)
        return;
    clearRows(stream);
    m_streams[number] = 0;
    Q_FOREACH (Row* row, stream->rows) {
        if (!row)
            continue;
        m_retired += row->all;
        row->all.clear();
    }
    if (stream->otherUnknown) {
        m_retired += stream->otherUnknown->all;
        stream->otherUnknown->all.clear();
    }
    delete stream;
}

void MessageStatisticsCoordinator::clearStream(int number)
{
    Stream* const stream = m_streams.value(number);
    clearRows(stream);
    for (QHash<int, unsigned int>::const_iterator i = stream->events.constBegin(); i != stream->events.constEnd(); ++i)
        m_events[i.key()] -= i.value();
    stream->events.clear();
}

void MessageStatisticsCoordinator::clear()
{
    Q_FOREACH (Stream* stream, m_streams) {
        if (!stream)
            continue;
        clearRows(stream);
        stream->events.clear();
    }
    m_events.clear();
}

void MessageStatisticsCoordinator::setStreamLabel(int number, const QString& label)
{
    Stream* const stream = m_streams.value(number);
    if (stream->label == label)
        return;
    stream->label = label;
    rename(stream);
}

MessageStatistics* MessageStatisticsCoordinator::find(int number, int row) const
{
    const Stream* const stream = m_streams.value(number);
    const Row* const found = stream ? stream->findRow(row) : 0;
    return found ? found->statistics : 0;
}

MessageStatistics* MessageStatisticsCoordinator::findOrCreate(int number, int row, const Origin& origin)
{
    Stream* const stream = m_streams.value(number);
    Row* const found = stream->findRow(row);
    if (!found || !found->statistics)
        return create(stream, row, origin);
    if (found->statistics->m_info != origin.info)
        setType(stream, found, origin);
    return found->statistics;
}

MessageStatistics* MessageStatisticsCoordinator::create(Stream* stream, int number, const Origin& origin)
{
    const bool isOther = !origin.info && stream->unknownTypes >= MaxUnknownTypes;
    if (isOther && stream->otherUnknown && stream->otherUnknown->statistics)
        return stream->otherUnknown->statistics;
    if (!isOther && number >= stream->rows.size())
        stream->rows.resize(number + 1);
    Row*& row = isOther ? stream->otherUnknown : stream->rows[number];
    if (!row)
        row = new Row;
    row->stream = stream->number;
    row->sender = origin.sender;
    row->senderName = isOther ? QString() : origin.senderName;
    row->plainName = isOther       ? QString(QLatin1String("Unknown, others"))
                     : origin.info ? origin.info->getName()
                                   : origin.unknownName;
    if (origin.info)
        noteSender(stream, origin.sender);
    else if (!isOther)
        ++stream->unknownTypes;
    useObject(stream, row, origin.info);
    row->statistics->m_streamTime = &stream->time;
    m_rows.append(row);
    m_all.append(row->statistics);
    return row->statistics;
}

void MessageStatisticsCoordinator::setType(Stream* stream, Row* row, const Origin& origin)
{
    const bool hadSenders = stream->knownSenders.size() > 1;
    row->plainName = origin.info ? origin.info->getName() : origin.unknownName;
    row->senderName = origin.senderName;
    useObject(stream, row, origin.info);
    stream->unknownTypes = 0;
    stream->knownSenders.clear();
    Q_FOREACH (const Row* one, stream->rows) {
        if (!one || !one->statistics)
            continue;
        if (!one->statistics->m_info)
            ++stream->unknownTypes;
        else if (!stream->knownSenders.contains(one->sender))
            stream->knownSenders.append(one->sender);
    }
    if ((stream->knownSenders.size() > 1) != hadSenders)
        rename(stream);
    else
        listAll();
}

void MessageStatisticsCoordinator::noteSender(Stream* stream, int sender)
{
    if (stream->knownSenders.contains(sender))
        return;
    stream->knownSenders.append(sender);
    if (stream->knownSenders.size() == 2)
        rename(stream);
}

/** Lets the row go on in its object of that type and of the name that it has now. */
void MessageStatisticsCoordinator::useObject(const Stream* stream, Row* row, const MessageInfo* info)
{
    const QString name = nameOf(stream, row);
    MessageStatistics* next = 0;
    Q_FOREACH (MessageStatistics* statistics, row->all)
        if (statistics->m_info == info && statistics->m_name == name)
            next = statistics;
    if (!next) {
        next = new MessageStatistics(info, name);
        row->all.append(next);
    }
    if (row->statistics && row->statistics != next)
        next->takeOver(row->statistics);
    row->statistics = next;
}

QString MessageStatisticsCoordinator::nameOf(const Stream* stream, const Row* row)
{
    QStringList marks;
    if (stream->knownSenders.size() > 1 && !row->senderName.isEmpty())
        marks.append(row->senderName);
    if (!stream->label.isEmpty())
        marks.append(stream->label);
    if (marks.isEmpty())
        return row->plainName;
    return QString::fromLatin1("%1 (%2)").arg(row->plainName, marks.join(QLatin1String(", ")));
}

void MessageStatisticsCoordinator::rename(const Stream* stream)
{
    Q_FOREACH (Row* row, m_rows)
        if (row->stream == stream->number)
            useObject(stream, row, row->statistics->m_info);
    listAll();
}

void MessageStatisticsCoordinator::listAll()
{
    m_all.clear();
    Q_FOREACH (const Row* row, m_rows)
        m_all.append(row->statistics);
}

inline void MessageStatisticsCoordinator::Sender::countNumber(qint64 number, quint64 modulus)
{
    ++statistics.received;
    if (number < 0 || modulus == 0)
        return;
    statistics.numbered = true;
    if (statistics.lastNumber < 0) {
        statistics.lastNumber = number;
        return;
    }
    quint64 step = quint64(number) - quint64(statistics.lastNumber) + (number < statistics.lastNumber ? modulus : 0);
    if (step >= modulus) // seldom; it would be the slowest of all that is done for a message
        step %= modulus;
    const quint64 latest = qMin(modulus / 32, quint64(63));
    if (step == 0) {
        ++statistics.repeated;
        return;
    }
    if (step >= modulus - latest) {
        const quint64 bit = quint64(1) << (modulus - step);
        if (settled & bit) {
            ++statistics.repeated;
        } else {
            // It was taken for lost when its successors came.
            ++statistics.late;
            --statistics.lost;
            settled |= bit;
        }
        return;
    }
    // A loss that ends at 0 by chance is short, as losses mostly are.
    if (number == 0 && step > modulus / 8) {
        ++statistics.restarts;
        settled = ~quint64(0);
    } else {
        statistics.lost += step - 1;
        settled = (step < 64 ? settled << step : 0) | 1;
    }
    statistics.lastNumber = number;
}

bool MessageStatisticsCoordinator::countMessage(int number, int row, const MessageInfo* info, qint64 time,
                                                qint64 sequence, quint64 modulus)
{
    Stream* const stream = m_streams.value(number);
    Row* const found = stream ? stream->findRow(row) : 0;
    if (!found || !found->statistics || found->statistics->m_info != info)
        return false;
    if (!found->account)
        found->account = stream->findSender(found->sender);
    if (!found->account)
        return false;
    found->statistics->addReception(time);
    found->account->countNumber(sequence, modulus);
    if (time != Message::NoTime)
        stream->time = time;
    return true;
}

void MessageStatisticsCoordinator::countNumber(int number, int sender, const QString& senderName, qint64 sequence,
                                               quint64 modulus)
{
    Stream* const stream = m_streams.value(number);
    if (Sender* const known = stream->findSender(sender)) {
        known->countNumber(sequence, modulus);
        return;
    }
    Sender* const added = new Sender;
    added->settled = ~quint64(0);
    SenderStatistics& statistics = added->statistics;
    statistics.stream = number;
    statistics.sender = sender;
    statistics.name = senderName;
    statistics.received = 1;
    statistics.numbered = sequence >= 0 && modulus > 0;
    statistics.lastNumber = statistics.numbered ? sequence : -1;
    if (sender >= stream->senders.size())
        stream->senders.resize(sender + 1);
    stream->senders[sender] = added;
}

void MessageStatisticsCoordinator::countFailure(int number, int sender)
{
    if (Sender* const known = m_streams.value(number)->findSender(sender))
        ++known->statistics.failed;
}

void MessageStatisticsCoordinator::setCurrentTime(int number, qint64 time)
{
    m_streams.value(number)->time = time;
}

void MessageStatisticsCoordinator::countEvent(CorvelEvent::Type type, unsigned int count, int number)
{
    m_events[type] += count;
    if (Stream* const stream = m_streams.value(number))
        stream->events[type] += count;
}

QList<MessageStatistics*> MessageStatisticsCoordinator::getAllMessageStatistics() const
{
    return m_all;
}

unsigned int MessageStatisticsCoordinator::getEventCount(CorvelEvent::Type type) const
{
    return m_events.value(type);
}

QList<MessageStatisticsCoordinator::SenderStatistics> MessageStatisticsCoordinator::getSenderStatistics() const
{
    QList<SenderStatistics> all;
    Q_FOREACH (const Stream* stream, m_streams) {
        if (!stream)
            continue;
        Q_FOREACH (const Sender* sender, stream->senders)
            if (sender)
                all.append(sender->statistics);
    }
    return all;
}
