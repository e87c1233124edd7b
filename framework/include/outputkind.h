#ifndef CORVEL_OUTPUTKIND_H
#define CORVEL_OUTPUTKIND_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

class Definitions;
class MessageOutput;
class PublishedStream;
class QIODevice;
class StreamDecoder;
struct OutputKind;

/** Where messages go, as a user names it. */
struct CORVELFRAMEWORK_EXPORT OutputAddress
{
    /**
     * Reads an address as it is typed on a command line: each OutputKind says what its own look like.
     *
     * What begins with no scheme is the path of a file, whose ending says of what kind it is. "udp://" is the same as
     * "udp:". An IPv6 address stands in brackets. Parameters stand behind a question mark, as in InputAddress.
     *
     * @param address  left alone when false is returned; must not be null
     * @param error    set when false is returned: what is wrong, with the text; must not be null
     */
    static bool parse(const QString& text, OutputAddress* address, QString* error);

    /** What the output is called in texts: the address without its parameters and other servers. */
    QString getName() const;

    const OutputKind* kind = nullptr;  ///< never null once it was read
    QString path;                      ///< of a file, or what stands behind the first slash after the host
    QString user;                      ///< before the host; else empty
    QString host;                      ///< an IPv6 address without brackets; else empty
    QString servers;                   ///< behind the host: others for when it is away, "HOST:PORT,HOST:PORT"
    quint16 port = 0;                  ///< 0 where there is none
    QMap<QString, QString> parameters; ///< what was told of them, by name
};

/**
 * One way in which messages go out: what its addresses look like, which streams it is for, and what writes it.
 *
 * There is one constant for each, and getAll() is the table of them.
 */
struct CORVELFRAMEWORK_EXPORT OutputKind
{
    enum Property
    {
        AsItCameProperty = 1, ///< it takes the bytes of messages as they came, of streams that record as its container
        AcknowledgedProperty = 2 ///< the other side says what has arrived
    };

    /** All kinds, in the order in which people are offered them. */
    static const QVector<const OutputKind*>& getAll();
    /** The kind of file for what @p decoder finds; never null. */
    static const OutputKind& findFor(const StreamDecoder* decoder);

    bool isFile() const { return *fileEnding; }
    bool takesBytesAsTheyCame() const { return properties & AsItCameProperty; }
    bool isAcknowledged() const { return properties & AcknowledgedProperty; }
    /** What parameters there are, by name. */
    QStringList getParameters() const;

    /** What it is, in the user's language. */
    QString getTitle() const;
    /** For dialogs that ask for a file: "MAVLink recordings (*.tlog)". */
    QString getFileFilter() const;

    const char* name;       ///< of a file as StreamDecoder::getRecordingName() says it: "tlog"
    const char* title;      ///< as getTitle(), in English
    const char* fileEnding; ///< of the names of its files: "tlog"; empty where it is none
    int flushMilliseconds;  ///< how often to flush() where what was taken has to outlive the program

    const char* schemes;    ///< what addresses begin with, divided by blanks: "udp:"; empty for files
    const char* usage;      ///< what addresses look like: "udp:HOST:PORT"
    const char* example;    ///< an address
    quint16 defaultPort;    ///< that of an address without one; 0 where there are no ports, or it has to be told
    int properties;         ///< of Property
    const char* container;  ///< with AsItCameProperty, the recording name of streams that it takes; else empty
    const char* parameters; ///< as getParameters(), divided by blanks

    /** Fills in and checks what was read from an address; false with @p reason, without the address. Null for nothing
     * to check. */
    bool (*check)(OutputAddress* address, QString* reason);

    /** What a file needs. Everything is borrowed, outlives the output and is not null. */
    struct Surroundings
    {
        QIODevice* device;              ///< open for writing; need not be seekable
        QByteArray program;             ///< who writes
        const Definitions* definitions; ///< have the schemas of the types
    };

    /** Begins to write a file; the caller's. For @p decoder see MessageOutput::setDecoder(). Null for other kinds. */
    MessageOutput* (*create)(const Surroundings& surroundings, const StreamDecoder* decoder);
    /**
     * Begins to send to an address; the caller's. Null for files.
     *
     * To be used and destroyed on the thread that calls it, which needs an event loop. What can never work, such as a
     * port that is in use, MessageOutput::getErrorString() tells at once; what may come back later is waited for.
     */
    MessageOutput* (*connect)(const OutputAddress& address, const PublishedStream* stream);
};

#endif
