#ifndef RELAYOPTIONS_H
#define RELAYOPTIONS_H

#include "byteinput.h"
#include "commandline.h"
#include "fileseries.h"
#include "sourcearguments.h"

#include <QStringList>

/** What the command line asks for. */
struct RelayOptions
{
    /** Reads the command line, program name first. */
    static CommandLine::Result parse(const QStringList& arguments, RelayOptions* options, QString* text);

    QVector<InputAddress> inputs;
    QVector<OutputAddress> outputs;
    SourceArguments source;
    QStringList selections;     ///< path expressions; empty for everything
    FileSeries::Settings files; ///< without the definitions, which are loaded later
    double speed = 0;           ///< of recordings; 0 for as fast as possible
    qint64 statsMs = 0;         ///< between lines about the outputs; 0 for none
    qint64 buffer = 1024 * 1024 * 1024;
    QString bufferFolder; ///< empty for one that goes with the program
};

#endif
