#include "messagestatisticscoordinator.h"

#include "message.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "sequencecounter.h"

#include <QStringList>

namespace
{

// Frames of unknown types cannot be verified: noise may look like any number of types and senders.
const int MaxUnknownTypes = 1000;

const quint64 GreatestOwnModulus = 65536;
const quint64 LeastTogether = 10; // so many messages tell whether they are numbered together

} // namespace

struct MessageStatisticsCoordinator::Sender
{
    Sender()
        : received(0)
        , numbered(0)
        , failed(0)
        , countedAt(0)
    {
    }

    QString name;
    quint64 received;
    quint64 numbered; // of these
    quint64 failed;
    quint64 countedAt; // the stream's numbered messages at the newest one
    SequenceCounter numbers;
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
        , numbered(0)
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

    void countNumber(Sender* sender, qint64 number, quint64 modulus);
    bool isNumberedTogether() const;

    int number;
    QString label;
    QHash<int, unsigned int> events;
    QVector<Row*> rows; // by number, null where there is none; without otherUnknown
    Row* otherUnknown;  // for what is beyond MaxUnknownTypes; null until then
    int unknownTypes;
    qint64 time;
    QList<int> knownSenders;  // whose messages are of known types
    QVector<Sender*> senders; // by number, null where there is none
    quint64 numbered;         // messages of all of them that had a number
    SequenceCounter together; // what these say as if they were of one sender
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

MessageStatisticsCoordinator::MessageStatisticsCoordinator()
    : m_gapsListed(true)
    , m_gapLimit(DefaultGapLimit)
    , m_spareGaps(DefaultGapLimit)
{
}

MessageStatisticsCoordinator::~MessageStatisticsCoordinator()
{
    qDeleteAll(m_streams);
    qDeleteAll(m_retired);
}

void MessageStatisticsCoordinator::setGapLimit(int limit)
{
    m_spareGaps += limit - m_gapLimit;
    m_gapLimit = limit;
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
    stream->numbered = 0;
    stream->together = SequenceCounter();
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
        next->m_spareGaps = &m_spareGaps;
        row->all.append(next);
    }
    // Whoever shows the object has a new row for it, with nothing unfolded.
    if (row->statistics != next)
        next->setGapsListed(m_gapsListed);
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

inline void MessageStatisticsCoordinator::Stream::countNumber(Sender* sender, qint64 number, quint64 modulus)
{
    ++sender->received;
    if (number < 0 || modulus == 0)
        return;
    ++numbered;
    ++sender->numbered;
    sender->numbers.count(quint64(number), modulus, numbered - sender->countedAt - 1);
    sender->countedAt = numbered;
    // Short numbers are each sender's own.
    if (modulus > GreatestOwnModulus)
        together.count(quint64(number), modulus, 0);
}

/** Whether one numbers the messages of all senders, so that those of a single one have holes that mean nothing. */
bool MessageStatisticsCoordinator::Stream::isNumberedTogether() const
{
    quint64 lost = 0;
    int counted = 0;
    Q_FOREACH (const Sender* sender, senders) {
        lost += sender ? sender->numbers.getLost() + sender->numbers.getRestarts() : 0;
        counted += sender && sender->numbered > 0 ? 1 : 0;
    }
    return counted > 1 && numbered >= LeastTogether && together.getSteps() * 10 >= (numbered - 1) * 9 &&
           together.getLost() + together.getRestarts() < lost;
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
    stream->countNumber(found->account, sequence, modulus);
    if (time != Message::NoTime)
        stream->time = time;
    return true;
}

void MessageStatisticsCoordinator::countNumber(int number, int sender, const QString& senderName, qint64 sequence,
                                               quint64 modulus)
{
    Stream* const stream = m_streams.value(number);
    Sender* known = stream->findSender(sender);
    if (!known) {
        known = new Sender;
        known->name = senderName;
        if (sender >= stream->senders.size())
            stream->senders.resize(sender + 1);
        stream->senders[sender] = known;
    }
    stream->countNumber(known, sequence, modulus);
}

void MessageStatisticsCoordinator::countFailure(int number, int sender)
{
    if (Sender* const known = m_streams.value(number)->findSender(sender))
        ++known->failed;
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

/** What the numbers of a sender say, or of all of a stream. */
MessageStatisticsCoordinator::SenderStatistics
MessageStatisticsCoordinator::statisticsOf(const Stream* stream, const SequenceCounter& numbers)
{
    SenderStatistics statistics;
    statistics.stream = stream->number;
    statistics.numbered = numbers.hasAny();
    statistics.lost = numbers.getLost();
    statistics.repeated = numbers.getRepeated();
    statistics.late = numbers.getLate();
    statistics.restarts = numbers.getRestarts();
    statistics.lastNumber = numbers.hasAny() ? qint64(numbers.getLast()) : -1;
    return statistics;
}

QList<MessageStatisticsCoordinator::SenderStatistics> MessageStatisticsCoordinator::getSenderStatistics() const
{
    QList<SenderStatistics> all;
    Q_FOREACH (const Stream* stream, m_streams) {
        if (!stream)
            continue;
        const bool together = stream->isNumberedTogether();
        SenderStatistics sum = statisticsOf(stream, stream->together);
        sum.sender = -1;
        for (int i = 0; i < stream->senders.size(); ++i) {
            const Sender* const sender = stream->senders.at(i);
            if (!sender)
                continue;
            SenderStatistics statistics = statisticsOf(stream, together ? SequenceCounter() : sender->numbers);
            statistics.sender = i;
            statistics.name = sender->name;
            statistics.received = sender->received;
            statistics.failed = sender->failed;
            sum.received += sender->received;
            sum.failed += sender->failed;
            all.append(statistics);
        }
        if (together)
            all.append(sum);
    }
    return all;
}
