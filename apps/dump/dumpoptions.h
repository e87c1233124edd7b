#ifndef DUMPOPTIONS_H
#define DUMPOPTIONS_H

#include "byteinput.h"
#include "commandline.h"
#include "sourcearguments.h"

#include <QStringList>

/** What the command line asks for. */
struct DumpOptions
{
    /** Reads the command line, program name first. */
    static CommandLine::Result parse(const QStringList& arguments, DumpOptions* options, QString* text);

    InputAddress input;
    SourceArguments source;
    QStringList selections; ///< path expressions; empty for everything
    bool interpreted = false;
    bool statistics = false;
    bool confidential = false;
};

#endif
