#ifndef CORVEL_STREAMOPENER_H
#define CORVEL_STREAMOPENER_H

#include "byteinput.h"
#include "container.h"

#include <QElapsedTimer>
#include <QList>

#include <functional>

class StreamSink;

/**
 * Finds out what comes from an input, and makes what decodes it.
 *
 * The same for files, pipes and sockets: first bytes are read until a Container knows them for its own, which can be
 * before the first one, and the input hands them out again. What nobody recognises ends a recording; live it is told
 * after a moment, and the search goes on.
 */
class CORVELFRAMEWORK_EXPORT StreamOpener
{
public:
    enum Result
    {
        Opened,
        Ended,  ///< a live input ended before anything came
        Failed, ///< getErrorString() tells why
        Stopped ///< goOn said no
    };

    /** For what comes from @p address. */
    StreamOpener(const InputAddress& address, const StreamOptions& options);
    /** For an input that is in no table, and brings something as it happens. */
    explicit StreamOpener(const StreamOptions& options);
    ~StreamOpener();

    /**
     * Reads from an open input until it is plain what it brings. Once.
     *
     * @param goOn  asked every 100 ms while waiting: whether to go on; may be empty. When it says no, what comes live
     * is opened as something that it can be, so that nothing of it is lost.
     * @param sink  told of bytes that nobody recognises; may be null
     */
    Result run(ByteInput* input, const std::function<bool()>& goOn, StreamSink* sink);

    /** The input that was read from, such that it hands everything out again from getOffset() on; never null.
     * getErrorString() is set when it cannot. */
    std::unique_ptr<ByteInput> takeInput(std::unique_ptr<ByteInput> input);
    /** Where in the stream the first byte stands that is decoded. */
    quint64 getOffset() const { return m_offset; }
    /** What it is decoded with. */
    OpenedStream takeStream() { return std::move(m_opened); }
    /** Names the input. */
    QString getErrorString() const { return m_error; }

private:
    Q_DISABLE_COPY(StreamOpener)

    bool open(const Container* container, const ByteInput& input);
    void tell(StreamSink* sink);
    void passOver(StreamSink* sink);

    StreamOptions m_options;
    StreamHead m_head;
    QList<QByteArray> m_pieces; // that the head consists of
    quint64 m_offset;
    QElapsedTimer m_sinceFirst; // until what is not recognised was told
    bool m_isTold;
    OpenedStream m_opened;
    QString m_error;
};

/** All that is needed to read from an address, or what is wrong. */
struct CORVELFRAMEWORK_EXPORT OpenedInput
{
    std::unique_ptr<ByteInput> input; ///< open; null when error says why, or @p goOn said no
    OpenedStream stream;
    QString error; ///< names the input
};

/**
 * Opens what comes from @p address, and waits until it is plain what it is: for programs with one thread.
 *
 * @param goOn  asked every 100 ms while waiting: whether to go on; may be empty
 * @param sink  told of bytes that are passed over; may be null
 */
CORVELFRAMEWORK_EXPORT OpenedInput openStream(const InputAddress& address, const StreamOptions& options,
                                              const std::function<bool()>& goOn = std::function<bool()>(),
                                              StreamSink* sink = nullptr);

#endif
