#ifndef BYTEINPUT_H
#define BYTEINPUT_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QString>

/** Where bytes come from, as a user names it. */
struct CORVELFRAMEWORK_EXPORT InputAddress
{
    enum Kind
    {
        File,          ///< path
        StandardInput, ///< "-"
        UdpListen,     ///< "udp:", "udp::PORT", "udp:ADDRESS:PORT" (also with "//"); default 0.0.0.0:14550
        TcpConnect     ///< "tcp:HOST:PORT" (also with "//"); default port 5760
    };

    InputAddress();

    /**
     * Reads an address as it is typed on a command line. What names no scheme is a path.
     *
     * @param error  set when false is returned; must not be null
     */
    static bool parse(const QString& text, InputAddress* address, QString* error);

    /** The text that parse() would read this address from. */
    QString toString() const;

    Kind kind;
    QString path; ///< of a file
    QString host; ///< address to bind or host to connect to; may be an IPv6 address
    quint16 port;
};

/**
 * A source of bytes that is read with a time-out.
 *
 * Made on one thread and then opened, read and destroyed on another (the same one); cancel() may be called from
 * anywhere.
 */
class CORVELFRAMEWORK_EXPORT ByteInput
{
public:
    enum Status
    {
        Data,    ///< bytes were read
        Nothing, ///< none came within the time-out
        End,     ///< there will be no more
        Failed   ///< reading failed for good; getErrorString() tells why
    };

    virtual ~ByteInput();

    /** Opens the input; false with getErrorString() set when that fails. Waits at most a few seconds. */
    virtual bool open() = 0;

    /**
     * Reads what there is, at most about 64 KiB or one datagram.
     *
     * @param bytes      replaced by what was read; must not be null. A datagram of no bytes is Data with nothing in it.
     * @param timeoutMs  how long to wait for the first byte; 0 does not wait
     */
    virtual Status read(QByteArray* bytes, int timeoutMs) = 0;

    /** Makes a read() or open() that waits return soon. Safe from any thread. */
    virtual void cancel() = 0;

    /** Whether bytes arrive in their own time, so that the time of arrival means something. */
    virtual bool isLive() const = 0;
    /** Whether every read() gives one datagram, which no frame crosses. */
    virtual bool isDatagram() const = 0;
    /** The number of bytes in all, or -1 when not known. */
    virtual qint64 getSize() const = 0;
    /** Why open() or read() failed; names the input. */
    QString getErrorString() const { return m_error; }

    /** An input for @p address; never null, owned by the caller. */
    static ByteInput* create(const InputAddress& address);

protected:
    void setErrorString(const QString& text) { m_error = text; }

private:
    QString m_error;
};

#endif
