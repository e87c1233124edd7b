#ifndef DUMPOPTIONS_H
#define DUMPOPTIONS_H

#include "recordingopener.h"

#include <QStringList>

/** What the command line asks for. */
struct DumpOptions
{
    enum Result
    {
        Run,       ///< the options are filled in
        InfoAsked, ///< text is to be printed to the output, and that is all
        Wrong      ///< text says what is wrong
    };

    /** Reads the command line, program name first. */
    static Result parse(const QStringList& arguments, DumpOptions* options, QString* text);

    InputAddress input;
    QString dialect;     ///< empty for the built-in one
    QString annotations; ///< empty for none but the file beside the dialect
    QStringList schemas; ///< .proto texts or descriptor sets
    QStringList importPaths;
    RecordingOptions recording; ///< without the formats, which are loaded later
    QStringList selections;     ///< path expressions; empty for everything
    bool interpreted = false;
    bool statistics = false;
    bool confidential = false;
};

#endif
