#include "publishedstream.h"

#include "message.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <cstring>

namespace
{

enum RecordKind : quint8
{
    ChannelRecord = 1,
    MessageRecord = 2,
    DamageRecord = 3,
    LikeRecord = 4,
    KnownMessageRecord = 5 ///< with what it came from
};

// More than any input hands out.
const quint32 GreatestRecord = 1024 * 1024 * 1024;

/** The fixed part of a message, which its bytes follow; all numbers little-endian. */
const int MessageHead = 4 + 8 + 8 + 8 + 8 + 2 + 2;

template <class Number>
void append(Number value, QByteArray* bytes)
{
    char raw[sizeof value];
    qToLittleEndian(value, raw);
    bytes->append(raw, int(sizeof value));
}

/** Where in a record of a channel that of its sender ends. */
const int SenderPlace = 4 + 1 + 4 + 1;

int senderEnd(const QByteArray& channelRecord)
{
    const quint32 size = qFromLittleEndian<quint32>(channelRecord.constData() + SenderPlace);
    return SenderPlace + 4 + (size == 0xffffffff ? 0 : int(size));
}

template <class Number>
Number take(const char** place)
{
    const Number value = qFromLittleEndian<Number>(*place);
    *place += sizeof value;
    return value;
}

} // namespace

QStringList PublishedChannel::getPath() const
{
    QStringList path = sender.split(QLatin1Char('/'));
    if (path.constFirst().isEmpty())
        path.removeFirst();
    if (hasManyTypes || path.isEmpty())
        path.append(QString(schema.name).replace(QLatin1Char('/'), QLatin1Char('.')));
    return path;
}

QByteArray PublishedChannel::getSchemaHash() const
{
    return schema.data.isEmpty() ? QByteArray()
                                 : QCryptographicHash::hash(schema.data, QCryptographicHash::Sha256).toHex().left(12);
}

PublishedStream::PublishedStream(const QString& run)
    : m_run(run)
{
}

const PublishedChannel& PublishedStream::getChannel(quint32 number) const
{
    static const PublishedChannel none;
    const auto found = m_channels.constFind(number);
    return found == m_channels.constEnd() ? none : *found;
}

QByteArray PublishedStream::channelRecord(const PublishedChannel& channel)
{
    QByteArray body;
    QDataStream stream(&body, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint8(ChannelRecord) << channel.number << channel.hasManyTypes << channel.sender.toUtf8()
           << channel.schema.name.toUtf8() << channel.schema.messageEncoding << channel.schema.encoding
           << channel.schema.data;
    QByteArray record;
    append(quint32(body.size()), &record);
    return record + body;
}

QByteArray PublishedStream::typeOf(const QByteArray& channelRecord)
{
    return channelRecord.mid(senderEnd(channelRecord));
}

QByteArray PublishedStream::likeRecord(const QByteArray& channelRecord, quint32 other)
{
    const int end = senderEnd(channelRecord);
    QByteArray record;
    append(quint32(end - 4 + int(sizeof other)), &record);
    append(quint8(LikeRecord), &record);
    record += channelRecord.mid(5, end - 5);
    append(other, &record);
    return record;
}

bool PublishedStream::isChannelRecord(const char* record)
{
    return record[4] == ChannelRecord || record[4] == LikeRecord;
}

void PublishedStream::appendMessage(const ReceivedMessage& message, QByteArray* records)
{
    const bool isKnown = message.origin != 0;
    append(quint32(1 + MessageHead + (isKnown ? int(sizeof message.origin) : 0) + message.size), records);
    append(quint8(isKnown ? KnownMessageRecord : MessageRecord), records);
    append(message.id, records);
    append(message.offset, records);
    append(message.time, records);
    append(message.publishTime, records);
    append(message.sequence, records);
    append(message.timeRest, records);
    append(message.publishTimeRest, records);
    if (isKnown)
        append(message.origin, records);
    records->append(message.data, message.size);
}

void PublishedStream::appendDamage(const StreamProblem& problem, QByteArray* records)
{
    append(quint32(3 + problem.length), records);
    append(quint8(DamageRecord), records);
    append(quint8(problem.kind), records);
    append(quint8(problem.hasFrame), records);
    records->append(problem.data, int(problem.length));
}

void PublishedStream::feed(const char* bytes, int size, qint64, StreamSink* sink)
{
    const QByteArray all = m_rest.isEmpty() ? QByteArray::fromRawData(bytes, size) : m_rest + QByteArray(bytes, size);
    int place = 0;
    int left = int(all.size());
    while (left >= 4) {
        const quint32 length = qFromLittleEndian<quint32>(all.constData() + place);
        if (length < 1 || length > GreatestRecord) {
            StreamProblem problem;
            problem.kind = StreamProblem::SkippedBytes;
            problem.length = quint64(left);
            sink->processProblem(problem);
            left = 0;
        }
        if (quint32(left) < 4 + length)
            break;
        if (!processRecord(all.constData() + place + 4, int(length), sink)) {
            StreamProblem problem;
            problem.kind = StreamProblem::LengthMismatch;
            problem.length = length;
            sink->processProblem(problem);
        }
        place += 4 + int(length);
        left -= 4 + int(length);
    }
    m_rest = QByteArray(all.constData() + place, left); // a copy: the bytes need not stay
}

void PublishedStream::finish(StreamSink* sink)
{
    if (m_rest.isEmpty())
        return;
    StreamProblem problem;
    problem.kind = StreamProblem::TruncatedFrame;
    problem.length = quint64(m_rest.size());
    m_rest.clear();
    sink->processProblem(problem);
}

void PublishedStream::restart(quint64)
{
    m_rest.clear();
}

bool PublishedStream::processRecord(const char* bytes, int size, StreamSink* sink)
{
    switch (quint8(bytes[0])) {
    case ChannelRecord:
    case LikeRecord:
        return readChannel(bytes + 1, size - 1, bytes[0] == LikeRecord);
    case MessageRecord:
    case KnownMessageRecord: {
        const bool isKnown = bytes[0] == KnownMessageRecord;
        const int head = 1 + MessageHead + (isKnown ? int(sizeof(quint64)) : 0);
        if (size < head)
            return false;
        const char* place = bytes + 1;
        ReceivedMessage message;
        message.id = take<quint32>(&place);
        message.sender = message.id;
        message.offset = take<quint64>(&place);
        message.time = take<qint64>(&place);
        message.publishTime = take<qint64>(&place);
        message.sequence = take<qint64>(&place);
        message.timeRest = take<qint16>(&place);
        message.publishTimeRest = take<qint16>(&place);
        message.origin = isKnown ? take<quint64>(&place) : 0;
        message.data = place;
        message.size = size - head;
        sink->processReceived(message);
        return true;
    }
    case DamageRecord: {
        if (size < 3)
            return false;
        StreamProblem problem;
        problem.kind = StreamProblem::Kind(quint8(bytes[1]));
        problem.hasFrame = bytes[2] != 0;
        problem.data = bytes + 3;
        problem.length = quint64(size - 3);
        sink->processProblem(problem);
        return true;
    }
    }
    return false;
}

bool PublishedStream::readChannel(const char* bytes, int size, bool isLike)
{
    const QByteArray body = QByteArray::fromRawData(bytes, size);
    QDataStream stream(body);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(QDataStream::LittleEndian);
    PublishedChannel channel;
    QByteArray sender;
    QByteArray type;
    quint32 other = 0;
    stream >> channel.number >> channel.hasManyTypes >> sender;
    if (isLike)
        stream >> other;
    else
        stream >> type >> channel.schema.messageEncoding >> channel.schema.encoding >> channel.schema.data;
    if (stream.status() != QDataStream::Ok || (isLike && !m_channels.contains(other)))
        return false;
    channel.sender = QString::fromUtf8(sender);
    channel.schema.name = QString::fromUtf8(type);
    if (isLike)
        channel.schema = getChannel(other).schema;
    m_channels.insert(channel.number, channel);
    return true;
}

QString PublishedStream::getSenderName(quint32 sender) const
{
    return getChannel(sender).sender;
}

QString PublishedStream::describeUnknown(quint32 id) const
{
    return getChannel(id).schema.name;
}

TypeSchema PublishedStream::getUnknownSchema(quint32 id) const
{
    return getChannel(id).schema;
}
