#include "streamdecoder.h"

#include "definitions.h"
#include "message.h"
#include "messageinfo.h"
#include "selectivedecoder.h"

#include <QCoreApplication>

namespace
{

QString textOf(const char* source)
{
    return QCoreApplication::translate("StreamProblem", source);
}

QString bytesText(quint64 count)
{
    return count == 1 ? textOf(QT_TRANSLATE_NOOP("StreamProblem", "1 byte"))
                      : textOf(QT_TRANSLATE_NOOP("StreamProblem", "%1 bytes")).arg(count);
}

QString kindText(const StreamProblem& problem)
{
    switch (problem.kind) {
    case StreamProblem::ChecksumFailure:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "checksum failure"));
    case StreamProblem::LengthMismatch:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "length does not fit the message type"));
    case StreamProblem::UnsupportedFrame:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "frame with an unsupported feature"));
    case StreamProblem::SkippedBytes:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "%1 skipped")).arg(bytesText(problem.length));
    case StreamProblem::TruncatedFrame:
        if (problem.length == 0)
            return textOf(QT_TRANSLATE_NOOP("StreamProblem", "stream ends early"));
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "stream ends inside a frame, after %1"))
            .arg(bytesText(problem.length));
    case StreamProblem::InputFailure:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "reading failed"));
    case StreamProblem::UnusableDefinition:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "not decodable"));
    case StreamProblem::DisorderedTimes:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "messages are not in the order of their times"));
    case StreamProblem::ServerNotice:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "message of the server"));
    case StreamProblem::FaultyAnnotation:
        return textOf(QT_TRANSLATE_NOOP("StreamProblem", "annotation"));
    case StreamProblem::UnrecognizedStream:
        return problem.text;
    case StreamProblem::SenderGone:
        break;
    }
    return QString();
}

} // namespace

ReceivedMessage::ReceivedMessage()
    : info(nullptr)
    , id(0)
    , sender(0)
    , data(nullptr)
    , size(0)
    , timeRest(-1)
    , publishTimeRest(-1)
    , row(-1)
    , isKept(false)
    , sequenceBits(0)
    , time(Message::NoTime)
    , publishTime(Message::NoTime)
    , sequence(Message::NoSequence)
    , origin(0)
    , offset(0)
{
}

Message* ReceivedMessage::createMessage(const QString& senderName) const
{
    Message* const message = info->newMessage(QByteArray(data, size));
    message->setTime(time);
    message->setSequence(sequence);
    message->setSender(senderName);
    return message;
}

StreamProblem::StreamProblem()
    : kind(SkippedBytes)
    , offset(0)
    , length(0)
    , id(0)
    , sender(0)
    , hasFrame(false)
    , data(nullptr)
{
}

QString StreamProblem::describe(const QString& senderName) const
{
    QString line =
        kind == SenderGone ? textOf(QT_TRANSLATE_NOOP("StreamProblem", "%1 is gone")).arg(senderName) : kindText(*this);
    if (hasFrame && kind != SenderGone) {
        line += textOf(QT_TRANSLATE_NOOP("StreamProblem", ", id %1")).arg(id);
        if (!senderName.isEmpty())
            line += textOf(QT_TRANSLATE_NOOP("StreamProblem", ", sender %1")).arg(senderName);
    }
    if (!text.isEmpty() && kind != UnrecognizedStream)
        line += QStringLiteral(": ") + text;
    return line;
}

StreamSink::~StreamSink() {}

StreamDecoder::StreamDecoder()
    : m_container(nullptr)
{
}

StreamDecoder::~StreamDecoder() {}

void StreamDecoder::setOrigin(const Container* container, const QVector<const FormatInfo*>& formats)
{
    m_formats = formats;
    m_container = container;
}

void StreamDecoder::publishTypes(QStringList*) const {}

SelectiveDecoder::~SelectiveDecoder() = default;

TypeSchema StreamDecoder::getUnknownSchema(quint32) const
{
    return TypeSchema();
}

QString StreamDecoder::describeUnknown(quint32 id) const
{
    return QStringLiteral("id %1").arg(id);
}

const char* StreamDecoder::getRecordingName() const
{
    return "mcap";
}

quint64 StreamDecoder::getKeptOffset() const
{
    return ~Q_UINT64_C(0);
}

quint64 StreamDecoder::getSequenceModulus() const
{
    return 0;
}
