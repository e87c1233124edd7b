#include "messagestatisticscoordinator.h"

#include "message.h"
#include "messageinfo.h"
#include "messagestatistics.h"

#include <QStringList>

#include <algorithm>

namespace
{

// Frames of unknown types cannot be verified: noise may look like any number of types and senders.
const int MaxUnknownTypes = 1000;

quint64 keyOf(quint32 id, quint32 sender)
{
    return quint64(id) << 32 | sender;
}

} // namespace

struct MessageStatisticsCoordinator::Row
{
    int stream;
    quint32 id;
    QString plainName;
    quint32 sender;
    QString senderName;
    MessageStatistics* statistics;
};

struct MessageStatisticsCoordinator::Sender
{
    SenderStatistics statistics;
    quint64 settled; // bit n: the number that lies n before the newest one came, or was never expected
};

struct MessageStatisticsCoordinator::Stream
{
    int number;
    const FormatInfo* format;
    QString label;
    QHash<int, unsigned int> events;
    QHash<quint64, Row*> rows;
    Row* otherUnknown; // for what is beyond MaxUnknownTypes; null until then
    int unknownTypes;
    qint64 time;
    QList<quint32> knownSenders; // whose messages are of known types
    QHash<quint32, Sender> senders;
    QList<quint32> senderOrder;
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

MessageStatisticsCoordinator::MessageStatisticsCoordinator()
    : m_nextStream(0)
{
}

MessageStatisticsCoordinator::~MessageStatisticsCoordinator()
{
    clear();
    qDeleteAll(m_streams);
    qDeleteAll(m_retired);
}

int MessageStatisticsCoordinator::addStream(const FormatInfo* format)
{
    Stream* const stream = new Stream;
    stream->number = m_nextStream++;
    stream->format = format;
    stream->otherUnknown = nullptr;
    stream->unknownTypes = 0;
    stream->time = Message::NoTime;
    m_streams.insert(stream->number, stream);
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
    stream->otherUnknown = nullptr;
    stream->unknownTypes = 0;
    stream->time = Message::NoTime;
    stream->knownSenders.clear();
    stream->senders.clear();
    stream->senderOrder.clear();
    listAll();
}

void MessageStatisticsCoordinator::removeStream(int number)
{
    Stream* const stream = m_streams.take(number);
    if (!stream)
        return;
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

void MessageStatisticsCoordinator::changeFormat(int number, const FormatInfo* format,
                                                const QHash<quint32, const MessageInfo*>& infos)
{
    Stream* const stream = m_streams.value(number);
    stream->format = format;
    stream->unknownTypes = 0;
    stream->knownSenders.clear();
    Q_FOREACH (Row* row, m_rows) {
        if (row->stream != number)
            continue;
        const MessageInfo* const info = row == stream->otherUnknown ? nullptr : infos.value(row->id);
        row->statistics->m_info = info;
        row->statistics->m_format = format;
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
    const Row* const row = stream ? stream->rows.value(keyOf(id, sender)) : nullptr;
    return row ? row->statistics : nullptr;
}

MessageStatistics* MessageStatisticsCoordinator::findOrCreate(int number, const MessageInfo* info, quint32 id,
                                                              quint32 sender, const QString& senderName,
                                                              const QString& unknownName)
{
    Stream* const stream = m_streams.value(number);
    Row* const row = stream->rows.value(keyOf(id, sender));
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
    row->statistics = new MessageStatistics(stream->format, info, nameOf(stream, row));
    row->statistics->m_streamTime = &stream->time;
    if (row != stream->otherUnknown)
        stream->rows.insert(keyOf(id, sender), row);
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
        row->statistics = new MessageStatistics(old, nameOf(stream, row));
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

void MessageStatisticsCoordinator::countNumber(int number, quint32 sender, const QString& senderName, qint64 sequence,
                                               quint64 modulus)
{
    Stream* const stream = m_streams.value(number);
    const QHash<quint32, Sender>::iterator found = stream->senders.find(sender);
    if (found == stream->senders.end()) {
        Sender added;
        added.settled = ~quint64(0);
        SenderStatistics& statistics = added.statistics;
        statistics.stream = number;
        statistics.sender = sender;
        statistics.name = senderName;
        statistics.received = 1;
        statistics.numbered = sequence >= 0 && modulus > 0;
        statistics.lastNumber = statistics.numbered ? sequence : -1;
        stream->senders.insert(sender, added);
        stream->senderOrder.append(sender);
        return;
    }
    SenderStatistics& statistics = found.value().statistics;
    quint64& settled = found.value().settled;
    ++statistics.received;
    if (sequence < 0 || modulus == 0)
        return;
    statistics.numbered = true;
    if (statistics.lastNumber < 0) {
        statistics.lastNumber = sequence;
        return;
    }
    const quint64 step = (quint64(sequence) + modulus - quint64(statistics.lastNumber)) % modulus;
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
    if (sequence == 0 && step > modulus / 8) {
        ++statistics.restarts;
        settled = ~quint64(0);
    } else {
        statistics.lost += step - 1;
        settled = (step < 64 ? settled << step : 0) | 1;
    }
    statistics.lastNumber = sequence;
}

void MessageStatisticsCoordinator::countFailure(int number, quint32 sender)
{
    Stream* const stream = m_streams.value(number);
    const QHash<quint32, Sender>::iterator found = stream->senders.find(sender);
    if (found != stream->senders.end())
        ++found.value().statistics.failed;
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
    QList<int> numbers = m_streams.keys();
    std::sort(numbers.begin(), numbers.end());
    QList<SenderStatistics> all;
    Q_FOREACH (int number, numbers) {
        const Stream* const stream = m_streams.value(number);
        Q_FOREACH (quint32 sender, stream->senderOrder)
            all.append(stream->senders.value(sender).statistics);
    }
    return all;
}
