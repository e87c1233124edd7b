#include "protobufstreamdecoder.h"

#include "definitions.h"
#include "message.h"
#include "protobufencoding.h"

#include <QCoreApplication>
#include <QtEndian>

#include <algorithm>

namespace
{

const quint64 GreatestMessage = Q_UINT64_C(128) << 20;
const int GreatestVarint = 5; // bytes of a length below 2^32 and more
const int UInt32Size = 4;

enum LengthResult
{
    Incomplete = 0,
    Impossible = -1
};

// The number of bytes that a varint takes, or a LengthResult.
int readVarint(const char* bytes, int size, int greatest, quint64* number)
{
    *number = 0;
    for (int i = 0; i < greatest; ++i) {
        if (i == size)
            return Incomplete;
        const quint8 byte = quint8(bytes[i]);
        *number |= quint64(byte & 0x7f) << (7 * i);
        if (!(byte & 0x80))
            return i + 1;
    }
    return Impossible;
}

// The number of bytes that the length before a message takes, or a LengthResult.
int readLengthOf(ProtobufStreamDecoder::Framing framing, const char* bytes, int size, quint64* length)
{
    int used = UInt32Size;
    if (framing == ProtobufStreamDecoder::VarintFraming) {
        used = readVarint(bytes, size, GreatestVarint, length);
    } else {
        if (size < UInt32Size)
            return Incomplete;
        *length = qFromLittleEndian<quint32>(bytes);
    }
    return used > 0 && *length > GreatestMessage ? int(Impossible) : used;
}

/** Whether fields follow one another in these bytes, up to their end or, when @p isCut, beyond. */
bool looksSerialized(const char* bytes, int size, bool isCut)
{
    int at = 0;
    while (at < size) {
        quint64 tag = 0;
        quint64 number = 0;
        const int tagSize = readVarint(bytes + at, size - at, GreatestVarint, &tag);
        if (tagSize == Impossible || (tagSize > 0 && (tag >> 3 == 0 || tag > 0xffffffffu)))
            return false;
        if (tagSize == Incomplete)
            return isCut;
        at += tagSize;
        switch (tag & 7) {
        case 0: {
            const int used = readVarint(bytes + at, size - at, 10, &number);
            if (used == Incomplete)
                return isCut;
            if (used == Impossible)
                return false;
            at += used;
            break;
        }
        case 1:
            number = 8;
            break;
        case 2: {
            const int used = readVarint(bytes + at, size - at, GreatestVarint, &number);
            if (used == Incomplete)
                return isCut;
            if (used == Impossible || number > GreatestMessage)
                return false;
            at += used;
            break;
        }
        case 3:
        case 4:
            break;
        case 5:
            number = 4;
            break;
        default:
            return false;
        }
        if ((tag & 7) == 0)
            continue;
        if (number > quint64(size - at))
            return isCut;
        at += int(number);
    }
    return true;
}

bool fits(ProtobufStreamDecoder::Framing framing, const QByteArray& head, bool isAll)
{
    const char* const bytes = head.constData();
    const int size = int(head.size());
    int at = 0;
    int found = 0;
    while (at < size) {
        quint64 length = 0;
        const int used = readLengthOf(framing, bytes + at, size - at, &length);
        if (used == Incomplete)
            return !isAll && found > 0;
        if (used == Impossible)
            return false;
        at += used;
        const bool isCut = length > quint64(size - at);
        const int there = isCut ? size - at : int(length);
        // The end of a recording that was cut off is no reason to take it for something else.
        if (!looksSerialized(bytes + at, there, isCut) || (isCut && isAll && found == 0))
            return false;
        at += there;
        if (length > 0)
            ++found;
    }
    return found > 0;
}

} // namespace

ProtobufStreamDecoder::ProtobufStreamDecoder(Definitions* definitions, const MessageInfo* info, Framing framing)
    : m_definitions(definitions)
    , m_info(info)
    , m_framing(framing)
    , m_offset(0)
    , m_arrivalTime(Message::NoTime)
    , m_lost(false)
    , m_lostSince(0)
{
}

ProtobufStreamDecoder::~ProtobufStreamDecoder() {}

int ProtobufStreamDecoder::readLength(const char* bytes, int size, quint64* length) const
{
    return readLengthOf(m_framing, bytes, size, length);
}

void ProtobufStreamDecoder::feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink)
{
    m_arrivalTime = arrivalTime;
    if (m_lost) {
        m_offset += quint64(size);
        return;
    }
    // What is pending is completed with no more bytes than that takes; the others are read where they are.
    while (size > 0 && !m_pending.isEmpty() && m_framing != DatagramFraming) {
        quint64 length = 0;
        const int used = readLength(m_pending.constData(), int(m_pending.size()), &length);
        const quint64 wanted = used > 0 ? quint64(used) + length - quint64(m_pending.size()) : 1;
        const int added = int(std::min(wanted, quint64(size)));
        m_pending.append(bytes, added);
        bytes += added;
        size -= added;
        const int lengthSize = readLength(m_pending.constData(), int(m_pending.size()), &length);
        if (lengthSize == Impossible) {
            lose(quint64(m_pending.size()) + quint64(size), sink);
            return;
        }
        if (lengthSize > 0 && quint64(m_pending.size()) == quint64(lengthSize) + length) {
            handOut(m_pending.constData() + lengthSize, int(length), m_offset, sink);
            m_offset += quint64(m_pending.size());
            m_pending.clear();
        }
    }
    while (size > 0 && m_framing != DatagramFraming) {
        quint64 length = 0;
        const int used = readLength(bytes, size, &length);
        if (used == Impossible) {
            lose(quint64(size), sink);
            return;
        }
        if (used == Incomplete || length > quint64(size - used))
            break;
        handOut(bytes + used, int(length), m_offset, sink);
        bytes += used + int(length);
        size -= used + int(length);
        m_offset += quint64(used) + length;
    }
    m_pending.append(bytes, size);
}

/** Gives the stream up: at m_offset stands a length that cannot be right, and @p size bytes were fed from there on. */
void ProtobufStreamDecoder::lose(quint64 size, StreamSink* sink)
{
    StreamProblem problem;
    problem.kind = StreamProblem::LengthMismatch;
    problem.offset = m_offset;
    problem.length = size;
    problem.text = QCoreApplication::translate(
        "StreamProblem", "nothing that follows can be read, because nothing else tells where a message begins");
    sink->processProblem(problem);
    m_lost = true;
    m_offset += size;
    m_lostSince = m_offset;
    m_pending.clear();
}

void ProtobufStreamDecoder::finish(StreamSink* sink)
{
    if (m_lost && m_offset > m_lostSince) {
        StreamProblem problem;
        problem.kind = StreamProblem::SkippedBytes;
        problem.offset = m_lostSince;
        problem.length = m_offset - m_lostSince;
        sink->processProblem(problem);
    } else if (m_lost) {
        // All of it has been reported.
    } else if (m_framing == DatagramFraming) {
        handOut(m_pending.constData(), int(m_pending.size()), m_offset, sink);
    } else if (!m_pending.isEmpty()) {
        StreamProblem problem;
        problem.kind = StreamProblem::TruncatedFrame;
        problem.offset = m_offset;
        problem.length = quint64(m_pending.size());
        quint64 length = 0;
        const int used = readLength(m_pending.constData(), int(m_pending.size()), &length);
        if (used > 0)
            problem.text = QCoreApplication::translate("StreamProblem", "inside a message of %1 bytes").arg(length);
        sink->processProblem(problem);
    }
    m_offset += quint64(m_pending.size());
    m_pending.clear();
    m_lost = false;
}

void ProtobufStreamDecoder::restart(quint64 offset)
{
    m_pending.clear();
    m_offset = offset;
    m_lost = false;
}

void ProtobufStreamDecoder::handOut(const char* bytes, int size, quint64 offset, StreamSink* sink) const
{
    ReceivedMessage message;
    message.info = m_info;
    message.id = 1;
    message.data = bytes;
    message.size = size;
    message.time = m_arrivalTime;
    message.offset = offset;
    sink->processReceived(message);
}

bool ProtobufStreamDecoder::hasTimes() const
{
    return false;
}

QString ProtobufStreamDecoder::getSenderName(quint32) const
{
    return QString();
}

void ProtobufStreamDecoder::publishTypes(QStringList* problems) const
{
    m_definitions->publish(problems);
}

bool ProtobufStreamDecoder::detectFraming(const QByteArray& head, bool isAll, Framing* framing)
{
    for (const Framing candidate : {UInt32Framing, VarintFraming}) {
        if (fits(candidate, head, isAll)) {
            *framing = candidate;
            return true;
        }
    }
    return false;
}
