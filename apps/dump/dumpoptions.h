#ifndef DUMPOPTIONS_H
#define DUMPOPTIONS_H

#include "byteinput.h"
#include "sourcearguments.h"

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
    SourceArguments source;
    QStringList selections; ///< path expressions; empty for everything
    bool interpreted = false;
    bool statistics = false;
    bool confidential = false;
};

#endif
