#ifndef STREAMFIXTURES_H
#define STREAMFIXTURES_H

#include "byteinput.h"
#include "formatinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "playbackclock.h"
#include "streamdecoder.h"

#include <QStringList>

#include <atomic>
#include <condition_variable>
#include <mutex>

/** A clock whose time passes only by being waited for. */
class FakeClock : public PlaybackClock
{
public:
    qint64 now() override { return m_now; }
    qint64 utc() override { return 1000000 * ++m_utcAsked; }
    void wait(std::condition_variable&, std::unique_lock<std::mutex>&, qint64 microseconds) override
    {
        m_now += microseconds;
    }

private:
    std::atomic<qint64> m_now{0};
    qint64 m_utcAsked = 0;
};

/** The format of the LineDecoder: the types A, B and so on, without fields. */
class LineFormat : public FormatInfo
{
public:
    LineFormat()
        : FormatInfo(QStringLiteral("lines"))
    {
        for (const char* name : {"A", "B", "C"})
            addMessageInfo(new MessageInfo(QString::fromLatin1(name)));
    }

    const MessageInfo* type(const char* name) const { return getMessageInfo(QString::fromLatin1(name)); }
};

/** Every line is a message "TIME TYPE", the time in milliseconds; "!" is a checksum failure of a type. */
class LineDecoder : public StreamDecoder
{
public:
    LineDecoder(const LineFormat* format, bool hasTimes, FakeClock* clock = nullptr)
        : m_format(format)
        , m_hasTimes(hasTimes)
        , m_clock(clock)
    {
    }

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override
    {
        m_arrivalTime = arrivalTime;
        for (int i = 0; i < size; ++i) {
            if (bytes[i] == '\n')
                finish(sink);
            else
                m_line += bytes[i];
            ++m_offset;
        }
    }

    void finish(StreamSink* sink) override
    {
        if (m_line.isEmpty())
            return;
        const int blank = static_cast<int>(m_line.indexOf(' '));
        const char type = m_line.at(blank + 1);
        const quint64 begin = m_offset - static_cast<quint64>(m_line.size());
        if (m_line.startsWith('!')) {
            StreamProblem problem;
            problem.kind = StreamProblem::ChecksumFailure;
            problem.hasFrame = true;
            problem.id = static_cast<quint32>(type);
            problem.sender = 1;
            problem.offset = begin;
            sink->processProblem(problem);
        } else {
            ReceivedMessage message;
            message.info = m_format->getMessageInfo(QString(QLatin1Char(type)));
            message.id = static_cast<quint32>(type);
            message.sender = 1;
            message.data = m_line.constData();
            message.size = static_cast<int>(m_line.size());
            message.time = m_hasTimes ? m_line.left(blank).toLongLong() * 1000 : m_arrivalTime;
            message.offset = begin;
            sink->processReceived(message);
            if (m_clock)
                played.append(QString::fromLatin1(m_line) + QStringLiteral(" @%1").arg(m_clock->now() / 1000));
            ++decoded;
        }
        m_line.clear();
    }

    void restart(quint64 offset) override
    {
        m_line.clear();
        m_offset = offset;
    }

    bool hasTimes() const override { return m_hasTimes; }
    QString getSenderName(quint32 sender) const override { return QStringLiteral("sender %1").arg(sender); }

    QStringList played;          ///< the messages, and the clock's milliseconds when they were let through
    std::atomic<int> decoded{0}; ///< messages let through

private:
    const LineFormat* m_format;
    bool m_hasTimes;
    FakeClock* m_clock;
    QByteArray m_line;
    qint64 m_arrivalTime = Message::NoTime;
    quint64 m_offset = 0;
};

/** Gives the pieces it was made with, one a read, and then its last status: for Nothing, it waits to be cancelled. */
class ScriptedInput : public ByteInput
{
public:
    enum Flag
    {
        Recording = 0,
        Live = 1,
        Datagrams = 2,
        NotToBeOpened = 4
    };

    ScriptedInput(const QList<QByteArray>& pieces, Status last, int flags = Recording)
        : ByteInput(QStringLiteral("script"))
        , m_pieces(pieces)
        , m_last(last)
        , m_flags(flags)
    {
        ++alive;
    }
    ~ScriptedInput() override { --alive; }

    bool open() override
    {
        ++opened;
        if (m_flags & NotToBeOpened)
            setError(QStringLiteral("it is locked"));
        return !(m_flags & NotToBeOpened);
    }

    Status read(QByteArray* bytes, int timeoutMs) override
    {
        bytes->clear();
        if (!m_pieces.isEmpty()) {
            *bytes = m_pieces.takeFirst();
            return Data;
        }
        if (m_last == Failed)
            setError(QStringLiteral("it is gone"));
        if (m_last == Nothing) {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_wake.wait_for(lock, std::chrono::milliseconds(timeoutMs), [this] { return m_cancelled; });
        }
        return m_last;
    }

    void cancel() override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_cancelled = true;
        m_wake.notify_all();
    }

    bool isLive() const override { return m_flags & Live; }
    bool isDatagram() const override { return m_flags & Datagrams; }
    qint64 getSize() const override { return -1; }

    static inline std::atomic<int> alive{0};  ///< inputs that exist
    static inline std::atomic<int> opened{0}; ///< how often any was

private:
    QList<QByteArray> m_pieces;
    Status m_last;
    int m_flags;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_cancelled = false;
};

#endif
