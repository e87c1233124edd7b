#ifndef CORVEL_CONTAINER_H
#define CORVEL_CONTAINER_H

#include "inputfile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class Definitions;
class FormatInfo;
class RecordingIndex;
class StreamDecoder;

/** What a user says of a stream beside where it comes from, and what its messages are described by. */
struct CORVELFRAMEWORK_EXPORT StreamOptions
{
    Definitions* definitions = nullptr; ///< must not be null when a stream is opened; must outlive its decoder
    QString definitionFile; ///< of those that definitions loaded, the one that the source names; empty for none
    QString container;      ///< the name of what it is; empty to find out
    QString typeName; ///< full name of the one type of all messages; empty where there is only one, or they say it
    QString framing;  ///< how messages lie that do not say it: one of getFramings(), or empty to find out

    /** "varint", "u32" and "datagram". */
    static QStringList getFramings();
};

/** How a stream begins, and what is known of where it comes from. */
struct CORVELFRAMEWORK_EXPORT StreamHead
{
    QByteArray bytes;
    bool isAll = false;       ///< nothing follows
    bool isLive = false;      ///< it comes as it happens, and is no recording
    bool isDatagram = false;  ///< it comes in datagrams, which no frame crosses
    QVector<InputFile> files; ///< that it consists of, one behind the other, if they can be read a second time
};

/** What a stream is decoded with. */
struct CORVELFRAMEWORK_EXPORT OpenedStream
{
    OpenedStream();
    ~OpenedStream();
    OpenedStream(OpenedStream&& other);
    OpenedStream& operator=(OpenedStream&& other);

    std::unique_ptr<StreamDecoder> decoder; ///< null when error says why
    /** Null where there is none. It is not prepared yet; until that the decoder must live and get nothing to decode. */
    std::unique_ptr<RecordingIndex> index;
    bool needsIndex = false; ///< whether messages are decoded otherwise when the index was prepared
    QString error;           ///< without the name of the input
};

/**
 * One way in which messages lie in a stream: where they begin and end, when they were, from whom and of what type.
 *
 * There is one constant for each, and getAll() is the table of them. What a stream is, is found out by asking them,
 * whether it comes from a file, a pipe or a socket.
 */
struct CORVELFRAMEWORK_EXPORT Container
{
    enum Answer
    {
        No,
        More, ///< it can still become that, with more bytes
        Yes
    };

    /** All containers. Of several that say Yes the first one holds. */
    static const QVector<const Container*>& getAll();
    /** The one of that name, or null. */
    static const Container* find(const QString& name);

    /** What it is, in the user's language. */
    QString getTitle() const;

    /** Opens a stream that was recognised, or was told to be this; see OpenedStream::error. */
    OpenedStream open(const StreamHead& head, const StreamOptions& options) const;

    const char* name;         ///< as a command line says it: "tlog"
    const char* title;        ///< as getTitle(), in English
    const char* filePatterns; ///< of the names of such files, divided by blanks: "*.tlog"
    const char* bare;         ///< the name of that which its messages alone are; empty where they are of none
    bool hasTimes;            ///< whether its messages say when they were; of others a recording needs a rate

    /** Whether a stream that begins so is this. Asked again with more bytes. */
    Answer (*recognize)(const StreamHead& head, const StreamOptions& options);
    /** See open(). */
    void (*create)(const StreamHead& head, const StreamOptions& options, OpenedStream* opened);
    /** The formats that types of its messages can be of. */
    QVector<const FormatInfo*> (*getFormats)(const StreamOptions& options);
};

/** What a stream was found to be. */
struct CORVELFRAMEWORK_EXPORT Recognition
{
    Container::Answer answer;
    const Container* container; ///< with More, the last of those that it can still be; null with No

    /** Asks the containers, or the one that @p options name; nobody asks for more than a recording of 64 KiB. */
    static Recognition recognize(const StreamHead& head, const StreamOptions& options);

    /** Why nothing was recognised: the first bytes in hexadecimal, and what there could have been. */
    static QString describeFailure(const StreamHead& head, const StreamOptions& options);
};

#endif
