#ifndef OUTPUTKIND_H
#define OUTPUTKIND_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QString>
#include <QVector>

class Definitions;
class MessageOutput;
class QIODevice;
class StreamDecoder;

/**
 * One way in which messages are kept: what it is called, which streams it is for, and what writes it.
 *
 * There is one constant for each, and getAll() is the table of them.
 */
struct CORVELFRAMEWORK_EXPORT OutputKind
{
    /** All kinds, in the order in which streams are asked whether it is theirs; the last takes every stream. */
    static const QVector<const OutputKind*>& getAll();
    /** The kind for what @p decoder finds; never null. */
    static const OutputKind& findFor(const StreamDecoder* decoder);

    /** What it is, in the user's language. */
    QString getTitle() const;
    /** For dialogs that ask for a file: "MAVLink recordings (*.tlog)". */
    QString getFileFilter() const;

    const char* name;       ///< as StreamDecoder::getRecordingName() says it: "tlog"
    const char* title;      ///< as getTitle(), in English
    const char* fileEnding; ///< of the names of its files: "tlog"
    int flushMilliseconds;  ///< how often to flush() where what was taken has to outlive the program

    /** What an output needs. Everything is borrowed, outlives the output and is not null. */
    struct Surroundings
    {
        QIODevice* device;              ///< open for writing; need not be seekable
        QByteArray program;             ///< who writes
        const Definitions* definitions; ///< have the schemas of the types
    };

    /** Begins to write; the caller's. For @p decoder see MessageOutput::setDecoder(). */
    MessageOutput* (*create)(const Surroundings& surroundings, const StreamDecoder* decoder);
};

#endif
