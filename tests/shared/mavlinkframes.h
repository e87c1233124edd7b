#ifndef MAVLINKFRAMES_H
#define MAVLINKFRAMES_H

#include "mavlinkdialect.h"
#include "mavlinkencoder.h"

#include <QHash>
#include <QStringList>
#include <QtEndian>

#include <memory>

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

/** The frame as a tlog holds it: behind a time stamp. */
inline QByteArray timed(quint64 time, const QByteArray& frame)
{
    QByteArray bytes(8, '\0');
    qToBigEndian(time, bytes.data());
    return bytes + frame;
}

/**
 * Bytes by words with a blank between them: "H1" is a heartbeat with the number 1, "A2" an attitude, "B3" the state of
 * a battery, "S4" that of the system and "U5" a frame of an unknown type, each in small letters that of version 1;
 * anything else is itself, if it was not defined. Behind it may stand "~20" (its byte 20 is damaged), "<9" (only 9
 * bytes of it) and ">9" (what follows these), before it "6:" (the time of its time stamp, from Noon on).
 */
class MavlinkScript
{
public:
    static const quint64 Noon = Q_UINT64_C(1700000000000000);

    const MavlinkMessageInfo* info(quint32 id) const { return dialect->find(id); }
    void define(const char* word, const QByteArray& bytes) { m_words.insert(QLatin1String(word), bytes); }

    QByteArray bytes(const QString& script) const
    {
        QByteArray all;
        for (const QString& word : script.split(QLatin1Char(' ')))
            all += bytesOf(word);
        return all;
    }

    std::unique_ptr<MavlinkDialect> dialect{MavlinkDialect::loadBuiltIn()};

private:
    QByteArray bytesOf(const QString& word) const
    {
        int end = 0;
        while (end < word.size() && !QStringLiteral("~<>:").contains(word.at(end)))
            ++end;
        if (word.mid(end, 1) == QLatin1String(":"))
            return timed(Noon + word.left(end).toULongLong(), bytesOf(word.mid(end + 1)));
        QByteArray bytes = frame(word.left(end));
        while (end < word.size()) {
            const QChar what = word.at(end++);
            int number = 0;
            for (; end < word.size() && word.at(end).isDigit(); ++end)
                number = 10 * number + word.at(end).digitValue();
            if (what == QLatin1Char('~'))
                bytes[number] = 'X';
            else
                bytes = what == QLatin1Char('<') ? bytes.left(number) : bytes.mid(number);
        }
        return bytes;
    }

    QByteArray frame(const QString& word) const
    {
        if (m_words.contains(word) || word.isEmpty() || !word.mid(1).toInt())
            return m_words.value(word, word.toLatin1());
        const MavlinkEncoder::FrameHeader header = frameHeader(word.at(0).isLower() ? 1 : 2, word.mid(1).toInt());
        static const quint32 ids[] = {0, 30, 147, 1};
        const int kind = int(QStringLiteral("HABS").indexOf(word.at(0).toUpper()));
        return kind >= 0 ? plainFrame(info(ids[kind]), header)
                         : MavlinkEncoder::toFrame(header, 70000, 77, QByteArray(30, 'u'));
    }

    QHash<QString, QByteArray> m_words;
};

#endif
