#ifndef CORVEL_BYTEINPUT_H
#define CORVEL_BYTEINPUT_H

#include "inputfile.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

#include <memory>

class RecordingIndex;
struct InputKind;
struct StreamProblem;

/** Where bytes come from, as a user names it. */
struct CORVELFRAMEWORK_EXPORT InputAddress
{
    /** Standard input. */
    InputAddress();
    /** The file at @p path, also one whose name begins like a scheme. */
    static InputAddress ofFile(const QString& path);

    /**
     * Reads an address as it is typed on a command line: each InputKind says what its own look like.
     *
     * What names no scheme is a path; a file whose name begins like a scheme is named as "./udp:x". "udp://" is the
     * same as "udp:". An IPv6 address stands in brackets: "udp:[::]:14550". Parameters stand behind a question mark,
     * "?baud=57600&format=8N1"; in their values "&" and "%" are written as "%26" and "%25".
     *
     * @param address  left alone when false is returned; must not be null
     * @param error    set when false is returned: what is wrong, with the text; must not be null
     */
    static bool parse(const QString& text, InputAddress* address, QString* error);

    /** The text that parse() would read this address from. */
    QString toString() const;

    /** What is said for a field of the kind, in @p name: path, host, port or parameter, or what that is unless told. */
    QString getValue(const QString& name) const;
    /** Says something for a field. What is not to be, such as a port that is no number, parse() finds in toString(). */
    void setValue(const QString& name, const QString& value);

    const InputKind* kind; ///< never null
    QString path;          ///< of a file or device, a whole URL, or what stands behind the host; else empty
    QString host;          ///< address to bind, or host to connect to; an IPv6 address without brackets; else empty
    quint16 port;          ///< 0 where there is none
    QMap<QString, QString> parameters; ///< what was told of them, by name; also "servers" and "user"
    QString password; ///< what somebody typed where it is not seen; neither parse() nor toString() knows it
    QString session;  ///< with InputKind::SessionProperty, what a server calls what it keeps while nobody reads; else
                      ///< empty, as it is for all who only look on; neither parse() nor toString() knows it
};

/**
 * A source of bytes that is read with a time-out.
 *
 * Made on one thread and then opened, read and destroyed on another (or the same); cancel() may be called from
 * anywhere. No event loop is needed, but a network input needs a QCoreApplication.
 */
class CORVELFRAMEWORK_EXPORT ByteInput
{
public:
    enum Status
    {
        Data,    ///< bytes were read
        Nothing, ///< none came within the time-out, or cancel() was called
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
     * @param timeoutMs  milliseconds to wait for the first byte; 0 does not wait
     */
    virtual Status read(QByteArray* bytes, int timeoutMs) = 0;

    /** Makes an open() or read() that waits, and every later one, return within about 100 ms. Safe from any thread. */
    virtual void cancel() = 0;

    /** Makes an input with a session take nothing more from its server: read() hands out what was taken, and ends when
     * all of it was confirmed. Does nothing for others. Safe from any thread. */
    virtual void finish();

    /** Whether its server gives again what is not confirmed: with a session, see InputAddress::session. */
    virtual bool needsConfirmation() const;
    /** What lies before byte @p offset of all that read() handed out was passed on to where it is safe: the server need
     * not give it again. Does nothing for inputs that need none. Safe from any thread, once it is open. */
    virtual void confirm(quint64 offset);

    /** Whether bytes arrive in their own time, so that the time of arrival means something. Known once it is open; but
     * a recording that goes on becomes live with a read() at its end, and is none after seek(). */
    virtual bool isLive() const = 0;
    /** Whether every read() gives one datagram, which no frame crosses. */
    virtual bool isDatagram() const = 0;
    /** The number of bytes in all, or -1 when not known. Known once it is open. */
    virtual qint64 getSize() const = 0;

    /** Datagrams that arrived and that the system had no room for, since open(); -1 where that cannot be known. */
    virtual qint64 getDroppedCount() const;

    /** What the other side said beside the data since the last call: problems without an offset. After every read(). */
    virtual QVector<StreamProblem> takeNotices();

    /** The files that all bytes are from, in order, if they can be read a second time. Known once it is open. */
    virtual QVector<InputFile> getFiles() const;

    /** Whether seek() works. Known once it is open. */
    virtual bool isSeekable() const;
    /** Goes on reading at byte @p offset, also after End; false with getErrorString() set when that fails. */
    virtual bool seek(qint64 offset);
    /** What finds places by time where only the input can; null where the container does. Once it is open. */
    virtual std::unique_ptr<RecordingIndex> createIndex();

    /** What the input is called in texts: the path or address, or "standard input". */
    QString getName() const { return m_name; }
    /** Why open() or read() failed: "flight.tlog: No such file or directory". */
    QString getErrorString() const { return m_error; }

    /** An input for @p address; never null, owned by the caller. */
    static ByteInput* create(const InputAddress& address);

protected:
    explicit ByteInput(const QString& name);

    /** Sets getErrorString() to the name and @p reason. */
    void setError(const QString& reason);
    /** Sets getErrorString() to that of @p other, for an input that reads from another. */
    void takeError(const ByteInput& other) { m_error = other.m_error; }

private:
    Q_DISABLE_COPY(ByteInput)

    QString m_name;
    QString m_error;
};

#endif
