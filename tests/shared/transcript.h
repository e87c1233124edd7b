#ifndef TRANSCRIPT_H
#define TRANSCRIPT_H

#include "message.h"
#include "messageinfo.h"
#include "streamdecoder.h"

#include <QPair>
#include <QSet>
#include <QStringList>

/**
 * Writes down what a decoder reports, a line each: "21 ATTITUDE 1:1 #7 @5", "0+13 checksum failure, id 0, sender 1:1".
 *
 * Without the number, the time or its nanoseconds where there are none; when it was sent stands behind "sent".
 */
class Transcript : public StreamSink
{
public:
    explicit Transcript(const StreamDecoder* decoder, bool withOffsets = true)
        : m_decoder(decoder)
        , m_withOffsets(withOffsets)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        QString line = message.info ? message.info->getName() : m_decoder->describeUnknown(message.id);
        line += QLatin1Char(' ') + m_decoder->getSenderName(message.sender);
        if (message.sequence != Message::NoSequence)
            line += QStringLiteral(" #%1").arg(message.sequence);
        line += timeText(" @", message.time, message.timeRest);
        line += timeText(" sent ", message.publishTime, message.publishTimeRest);
        if (!message.data && message.size > 0)
            line += QStringLiteral(" without its bytes");
        add(message.offset, QString(), line);
        messages.append(lines.last());
        payloads.append(QByteArray(message.data, message.size));
        infos.append(message.info);
        rows.insert({message.id, message.sender});
        cover(message.offset, quint64(message.size));
    }

    void processProblem(const StreamProblem& problem) override
    {
        const QString sender = problem.hasFrame ? m_decoder->getSenderName(problem.sender) : QString();
        add(problem.offset, QStringLiteral("+%1").arg(problem.length), problem.describe(sender));
        problems.append(lines.last());
        if (problem.length > 0) // else something is missing there
            cover(problem.offset, problem.length);
    }

    /** All lines, "; " between them. */
    QString told() const { return lines.join(QLatin1String("; ")); }

    /** Everything fed is part of one report, except for the time stamps before frames. Empty when that holds. */
    QString uncovered(quint64 size) const
    {
        return m_end == size ? m_uncovered : QStringLiteral("ends at %1 instead of %2").arg(m_end).arg(size);
    }

    QStringList lines;
    QStringList messages; ///< the lines of messages alone
    QStringList problems; ///< those of problems
    QVector<QByteArray> payloads;
    QVector<const MessageInfo*> infos;
    QSet<QPair<quint32, quint32>> rows; ///< types and senders of messages

private:
    static QString timeText(const char* before, qint64 time, int rest)
    {
        if (time == Message::NoTime)
            return QString();
        const QString text = QLatin1String(before) + QString::number(time);
        return rest > 0 ? text + QStringLiteral("+%1").arg(rest) : text;
    }

    void add(quint64 offset, const QString& length, const QString& line)
    {
        lines.append(m_withOffsets ? QString::number(offset) + length + QLatin1Char(' ') + line : line);
    }

    void cover(quint64 offset, quint64 length)
    {
        const bool isTime = m_decoder->hasTimes() && offset == m_end + 8;
        if (length == 0 || (offset != m_end && !isTime))
            m_uncovered += QStringLiteral("%1+%2 behind %3; ").arg(offset).arg(length).arg(m_end);
        m_end = offset + length;
    }

    const StreamDecoder* m_decoder;
    const bool m_withOffsets;
    quint64 m_end = 0;
    QString m_uncovered;
};

/** Feeds all of @p bytes from @p from on in pieces, each in a buffer of its own so that a sanitizer sees every byte
 * read beyond it, and ends the stream. */
inline void feedAll(StreamDecoder* decoder, const QByteArray& bytes, StreamSink* sink, int piece = 1 << 20,
                    quint64 from = 0)
{
    for (int i = int(from); i < bytes.size(); i += piece) {
        const QByteArray part(bytes.constData() + i, qMin(piece, int(bytes.size()) - i));
        decoder->feed(part.constData(), int(part.size()), Message::NoTime, sink);
    }
    decoder->finish(sink);
}

#endif
