#ifndef CORVEL_STREAMDECODER_H
#define CORVEL_STREAMDECODER_H

#include "corvelframework_export.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

class FormatInfo;
class Message;
class MessageInfo;
struct Container;
struct TypeSchema;

/** A message that was found in a stream and passed its checks, before anything of it is decoded. */
struct CORVELFRAMEWORK_EXPORT ReceivedMessage
{
    ReceivedMessage();

    /** A new Message of this content, with one reference, the caller's. Not for messages of an unknown type. */
    Message* createMessage(const QString& senderName) const;

    const MessageInfo* info; ///< null for a type that no format knows
    quint32 id;              ///< the format's number of the type
    quint32 sender;          ///< key of the sender, see StreamDecoder::getSenderName()
    const char* data;        ///< the message as received; valid for the length of the call that hands it out
    int size;                ///< bytes at data
    qint16 timeRest;         ///< nanoseconds beyond time, 0 to 999, or -1 where the format has none
    qint16 publishTimeRest;  ///< the same of publishTime
    int row;                 ///< of the type and sender, see StreamIdentities; -1 before it was looked up
    bool isKept;             ///< it is from before, and of no known age: it says what is, and not that it just came
    quint8 sequenceBits;     ///< of the numbers that sequence is one of; 0 for those of the whole stream
    qint64 time;             ///< microseconds since 1970, or Message::NoTime
    qint64 publishTime;      ///< when the sender sent it; Message::NoTime where that is the same or not known
    qint64 sequence;         ///< the sender's number of the message, or Message::NoSequence
    quint64 origin;          ///< what it came from, such as a message of a stream that a server keeps: the same number
                             ///< whenever that comes again; 0 where nobody knows
    quint64 offset;          ///< where in the stream it began
};

/** Something that was wrong with a stream at some place. */
struct CORVELFRAMEWORK_EXPORT StreamProblem
{
    enum Kind
    {
        ChecksumFailure,    ///< a frame whose checksum is wrong; dropped
        LengthMismatch,     ///< a frame whose checksum is right and whose length cannot be; dropped
        UnsupportedFrame,   ///< a frame with a feature that is not understood; dropped
        SkippedBytes,       ///< bytes that belong to no frame
        TruncatedFrame,     ///< the stream ended inside a frame or, with a length of 0, before its end mark
        InputFailure,       ///< reading failed; text tells why
        UnusableDefinition, ///< the stream brings a definition that cannot be used; text tells which and why
        DisorderedTimes,    ///< messages are handed out in another order than that of their times
        ServerNotice,       ///< what a server says of itself; text has it, id is its level: 0, or 1 to warn, or 2
        FaultyAnnotation,   ///< the annotations of a type that came are wrong; text tells where and why
        UnrecognizedStream, ///< nobody knows so far what it is that comes; text has its beginning
        SenderGone ///< a sender has ended or vanished, as it or its server says; id is that of its type that has,
                   ///< or 0 for all of them, text may tell why
    };

    StreamProblem();

    /** One line about it without the offset: "checksum failure, id 142, sender 255:190". */
    QString describe(const QString& senderName) const;

    Kind kind;
    quint64 offset; ///< where in the stream it began
    quint64 length; ///< bytes concerned
    quint32 id;     ///< type of the frame, where there is one; of an UnusableDefinition that of its messages, if any
    quint32 sender; ///< sender of the frame, where there is one
    bool hasFrame;  ///< whether id and sender say anything
    QString text;   ///< what is to be added, may be empty

    /** The bytes concerned as they came, all @p length of them, where a StreamSource still has them; else null. Valid
     * for the length of the call that hands the problem out. */
    const char* data;
};

/** Receives what a StreamDecoder finds, in stream order. */
class CORVELFRAMEWORK_EXPORT StreamSink
{
public:
    virtual ~StreamSink();

    /** A message passed its checks; also for unknown types, with a null info. */
    virtual void processReceived(const ReceivedMessage& message) = 0;
    virtual void processProblem(const StreamProblem& problem) = 0;
};

/**
 * Finds the messages in a stream of bytes.
 *
 * A decoder is fed with pieces of any size and reports to a sink while it is fed. It never needs more memory than a few
 * frames, whatever the bytes are. One thread at a time; the descriptions it hands out are only pointed to.
 */
class CORVELFRAMEWORK_EXPORT StreamDecoder
{
public:
    virtual ~StreamDecoder();

    /**
     * Takes the next bytes of the stream.
     *
     * @param bytes        @p size bytes; need not stay valid
     * @param arrivalTime  when they arrived, for formats whose messages carry no time; Message::NoTime when that means
     *                     nothing, as for a file
     */
    virtual void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) = 0;

    /**
     * Ends the stream or the datagram: reports what is left and cannot become a frame any more.
     *
     * Feeding may go on afterwards; offsets go on counting.
     */
    virtual void finish(StreamSink* sink) = 0;

    /**
     * Goes on at another place of the stream: forgets what is left of the bytes fed, without reporting it.
     *
     * @param offset  where in the stream the next byte fed stands, and a message may begin
     */
    virtual void restart(quint64 offset) = 0;

    /** Where in the stream the first byte lies that was fed and is kept for later, such as of a message that waits for
     * its schema: everything before was handed out. The greatest number there is when nothing is. On the thread that
     * feeds. */
    virtual quint64 getKeptOffset() const;

    /** Whether the stream itself carries the times of its messages. */
    virtual bool hasTimes() const = 0;

    /** How people of the format write a sender, such as "1:1". May be called on any thread. */
    virtual QString getSenderName(quint32 sender) const = 0;

    /**
     * Adds the types that feed() has met for the first time to their formats, for streams that bring their own schema.
     *
     * A type that a ReceivedMessage names is complete, but belongs to no format before this call. GUI thread only, also
     * while another thread feeds. Does nothing for formats that are known from the beginning.
     *
     * @param problems  what is wrong with the annotations of these types is appended; must not be null
     */
    virtual void publishTypes(QStringList* problems) const;

    /** What a message of a type that the format does not know is called, such as "id 142". May be called on any thread.
     */
    virtual QString describeUnknown(quint32 id) const;
    /** What the stream says of the type of such messages, so that a recording of them loses nothing; empty unless told.
     * May be called on any thread. */
    virtual TypeSchema getUnknownSchema(quint32 id) const;

    /** The name of the OutputKind that keeps the messages of such a stream as they came: "mcap" unless told. */
    virtual const char* getRecordingName() const;

    /** Senders number all their messages from 0 to one below it, and again; 0 when the format has no such numbers. */
    virtual quint64 getSequenceModulus() const;

    /** The row of the table of containers that made it; null for another, or while it is not known. Any thread. */
    const Container* getContainer() const { return m_container; }
    /** The formats that types of its messages can be of; empty without a container. Any thread. */
    QVector<const FormatInfo*> getFormats() const { return getContainer() ? m_formats : QVector<const FormatInfo*>(); }
    /** Notes where it is from; once, and for a Container. */
    void setOrigin(const Container* container, const QVector<const FormatInfo*>& formats);

protected:
    StreamDecoder();

private:
    Q_DISABLE_COPY(StreamDecoder)

    QVector<const FormatInfo*> m_formats; // does not change once there is a container
    std::atomic<const Container*> m_container;
};

#endif
