#include "messagestatisticscoordinator.h"

#include "keyindex.h"
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
    int stream;
    quint32 id;
    QString plainName;
    quint32 sender;
    QString senderName;
    MessageStatistics* statistics;
    Sender* account; // null until its first number was accounted for
};

struct MessageStatisticsCoordinator::Stream
{
    int number;
    QString label;
    QHash<int, unsigned int> events;
    Row* findRow(quint32 id, quint32 sender) const
    {
        const int index = rowIndices.find(KeyIndex::keyOf(id, sender));
        return index < 0 ? nullptr : rows.at(index);
    }
    Sender* findSender(quint32 sender) const
    {
        const int index = senderIndices.find(sender);
        return index < 0 ? nullptr : senders.at(index);
    }

    QVector<Row*> rows; // without otherUnknown
    KeyIndex rowIndices;
    Row* otherUnknown; // for what is beyond MaxUnknownTypes; null until then
    int unknownTypes;
    qint64 time;
    QList<quint32> knownSenders; // whose messages are of known types
    QVector<Sender*> senders;
    KeyIndex senderIndices;
};

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
    clear();
    qDeleteAll(m_streams);
    qDeleteAll(m_retired);
}

int MessageStatisticsCoordinator::addStream()
{
    Stream* const stream = new Stream;
    stream->number = int(m_streams.size());
    stream->otherUnknown = nullptr;
    stream->unknownTypes = 0;
    stream->time = Message::NoTime;
    m_streams.append(stream);
    return stream->number;
}

void MessageStatisticsCoordinator::dropRows(Stream* stream)
{
    for (int i = m_rows.size() - 1; i >= 0; --i) {
        if (m_rows.at(i)->stream == stream->number) {
            retire(m_rows.at(i)->statistics);
            delete m_rows.takeAt(i);
        }
    }
    stream->rows.clear();
    stream->rowIndices.clear();
    stream->otherUnknown = nullptr;
    stream->unknownTypes = 0;
    stream->time = Message::NoTime;
    stream->knownSenders.clear();
    qDeleteAll(stream->senders);
    stream->senders.clear();
    stream->senderIndices.clear();
    listAll();
}

void MessageStatisticsCoordinator::removeStream(int number)
{
    Stream* const stream = m_streams.value(number);
    if (!stream)
        return;
    m_streams[number] = nullptr;
    dropRows(stream);
    delete stream;
}

void MessageStatisticsCoordinator::clearStream(int number)
{
    Stream* const stream = m_streams.value(number);
    dropRows(stream);
    for (QHash<int, unsigned int>::const_iterator i = stream->events.constBegin(); i != stream->events.constEnd(); ++i)
        m_events[i.key()] -= i.value();
    stream->events.clear();
}

void MessageStatisticsCoordinator::clear()
{
    Q_FOREACH (Stream* stream, m_streams) {
        if (!stream)
            continue;
        dropRows(stream);
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

void MessageStatisticsCoordinator::changeTypes(int number, const QHash<quint32, const MessageInfo*>& infos)
{
    Stream* const stream = m_streams.value(number);
    stream->unknownTypes = 0;
    stream->knownSenders.clear();
    Q_FOREACH (Row* row, m_rows) {
        if (row->stream != number)
            continue;
        const MessageInfo* const info = row == stream->otherUnknown ? nullptr : infos.value(row->id);
        row->statistics->m_info = info;
        if (info) {
            row->plainName = info->getName();
            if (!stream->knownSenders.contains(row->sender))
                stream->knownSenders.append(row->sender);
        } else if (row != stream->otherUnknown) {
            row->plainName = QString::fromLatin1("Unknown %1").arg(row->id);
            ++stream->unknownTypes;
        }
    }
    rename(stream);
}

MessageStatistics* MessageStatisticsCoordinator::find(int number, quint32 id, quint32 sender) const
{
    const Stream* const stream = m_streams.value(number);
    const Row* const row = stream ? stream->findRow(id, sender) : nullptr;
    return row ? row->statistics : nullptr;
}

MessageStatistics* MessageStatisticsCoordinator::findOrCreate(int number, const MessageInfo* info, quint32 id,
                                                              quint32 sender, const QString& senderName,
                                                              const QString& unknownName)
{
    Stream* const stream = m_streams.value(number);
    Row* const row = stream->findRow(id, sender);
    return row ? row->statistics : create(stream, info, id, sender, senderName, unknownName);
}

MessageStatistics* MessageStatisticsCoordinator::create(Stream* stream, const MessageInfo* info, quint32 id,
                                                        quint32 sender, const QString& senderName,
                                                        const QString& unknownName)
{
    if (!info && stream->unknownTypes >= MaxUnknownTypes && stream->otherUnknown)
        return stream->otherUnknown->statistics;
    Row* const row = new Row;
    row->stream = stream->number;
    row->id = id;
    row->sender = sender;
    row->senderName = senderName;
    row->account = nullptr;
    if (info) {
        row->plainName = info->getName();
        if (!stream->knownSenders.contains(sender)) {
            stream->knownSenders.append(sender);
            if (stream->knownSenders.size() == 2)
                rename(stream);
        }
    } else if (stream->unknownTypes < MaxUnknownTypes) {
        ++stream->unknownTypes;
        row->plainName = unknownName.isEmpty() ? QString::fromLatin1("Unknown %1").arg(id) : unknownName;
        // A name of its own tells the sender too.
        if (!unknownName.isEmpty())
            row->senderName.clear();
    } else {
        stream->otherUnknown = row;
        row->senderName.clear();
        row->plainName = QLatin1String("Unknown, others");
    }
    row->statistics = new MessageStatistics(info, nameOf(stream, row));
    row->statistics->m_streamTime = &stream->time;
    if (row != stream->otherUnknown) {
        stream->rowIndices.insert(KeyIndex::keyOf(id, sender), int(stream->rows.size()));
        stream->rows.append(row);
    }
    m_rows.append(row);
    m_all.append(row->statistics);
    return row->statistics;
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
    Q_FOREACH (Row* row, m_rows) {
        MessageStatistics* const old = row->statistics;
        if (row->stream != stream->number)
            continue;
        row->statistics = new MessageStatistics(nameOf(stream, row), old);
        retire(old);
    }
    listAll();
}

void MessageStatisticsCoordinator::retire(MessageStatistics* statistics)
{
    // Views tell statistics apart by their addresses and look again only now and then: an address that were used anew
    // meanwhile would leave a row with the old name. So only what they hold is given back.
    statistics->reset();
    m_retired.append(statistics);
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

bool MessageStatisticsCoordinator::countMessage(int number, quint32 id, quint32 sender, qint64 time, qint64 sequence,
                                                quint64 modulus)
{
    Stream* const stream = m_streams.value(number);
    Row* const row = stream ? stream->findRow(id, sender) : nullptr;
    if (!row)
        return false;
    if (!row->account)
        row->account = stream->findSender(sender);
    if (!row->account)
        return false;
    row->statistics->addReception(time);
    row->account->countNumber(sequence, modulus);
    if (time != Message::NoTime)
        stream->time = time;
    return true;
}

void MessageStatisticsCoordinator::countNumber(int number, quint32 sender, const QString& senderName, qint64 sequence,
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
    stream->senderIndices.insert(sender, int(stream->senders.size()));
    stream->senders.append(added);
}

void MessageStatisticsCoordinator::countFailure(int number, quint32 sender)
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
            all.append(sender->statistics);
    }
    return all;
}
