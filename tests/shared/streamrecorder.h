#ifndef STREAMRECORDER_H
#define STREAMRECORDER_H

#include "mavlinkdialect.h"
#include "mavlinkencoder.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"

#include <QStringList>
#include <QtEndian>

/** Writes down what a decoder reports, a line each: "21 ATTITUDE 1:1 #7 @5", "0+13 checksum failure, id 0, sender 1:1".
 */
class StreamRecorder : public StreamSink
{
public:
    explicit StreamRecorder(const StreamDecoder* decoder)
        : m_decoder(decoder)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        QString line = QStringLiteral("%1 %2 %3 #%4")
                           .arg(message.offset)
                           .arg(message.info ? message.info->getName() : QStringLiteral("unknown %1").arg(message.id),
                                m_decoder->getSenderName(message.sender))
                           .arg(message.sequence);
        if (message.time != Message::NoTime)
            line += QStringLiteral(" @%1").arg(message.time);
        lines.append(line);
        frames.append(QByteArray(message.data, message.size));
        cover(message.offset, quint64(message.size));
    }

    void processProblem(const StreamProblem& problem) override
    {
        lines.append(QStringLiteral("%1+%2 %3")
                         .arg(problem.offset)
                         .arg(problem.length)
                         .arg(problem.describe(m_decoder->getSenderName(problem.sender))));
        if (problem.length > 0) // else something is missing there
            cover(problem.offset, problem.length);
    }

    /** Everything fed is part of one report, except for the time stamps before frames. Empty when that holds. */
    QString uncovered(quint64 size) const
    {
        return m_end == size ? m_uncovered : QStringLiteral("ends at %1 instead of %2").arg(m_end).arg(size);
    }

    QStringList lines;
    QVector<QByteArray> frames;

private:
    void cover(quint64 offset, quint64 length)
    {
        const bool isTime = m_decoder->hasTimes() && offset == m_end + 8;
        if (length == 0 || (offset != m_end && !isTime))
            m_uncovered += QStringLiteral("%1+%2 behind %3; ").arg(offset).arg(length).arg(m_end);
        m_end = offset + length;
    }

    const StreamDecoder* m_decoder;
    quint64 m_end = 0;
    QString m_uncovered;
};

/** The header of message number @p sequence from system 1, component 1. */
inline MavlinkEncoder::FrameHeader frameHeader(int version, int sequence, quint8 flags = 0)
{
    MavlinkEncoder::FrameHeader header;
    header.version = version;
    header.incompatibleFlags = flags;
    header.sequence = quint8(sequence);
    return header;
}

/** A frame of the type with a payload of which no byte is zero or a magic byte. */
inline QByteArray plainFrame(const MavlinkMessageInfo* info, const MavlinkEncoder::FrameHeader& header)
{
    QByteArray payload;
    for (int i = 0; i < info->getBaseLength(); ++i)
        payload.append(char(1 + (i * 7 + header.sequence) % 200));
    return MavlinkEncoder::toFrame(header, info->getId(), info->getCrcExtra(), payload);
}

/** The frame as a tlog holds it. */
inline QByteArray timed(quint64 time, const QByteArray& frame)
{
    QByteArray bytes(8, '\0');
    qToBigEndian(time, bytes.data());
    return bytes + frame;
}

#endif
