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
    QStringList definitions; ///< files of definitions; the built-in ones besides
    QString annotations;     ///< empty for none but the files beside the definitions
    QStringList importPaths;
    RecordingOptions recording; ///< without the definitions, which are loaded later
    QStringList selections;     ///< path expressions; empty for everything
    bool interpreted = false;
    bool statistics = false;
    bool confidential = false;
};

#endif
