#ifndef SOURCEARGUMENTS_H
#define SOURCEARGUMENTS_H

#include "container.h"

#include <QStringList>

class QCommandLineOption;
class QCommandLineParser;

/** What a command line says of all sources, the same for every program: definitions, annotations, and what comes. */
class SourceArguments
{
public:
    /** The options to add to a parser. */
    static QList<QCommandLineOption> getOptions();

    /** Takes what was parsed; false with @p error set when it is wrong. */
    bool read(const QCommandLineParser& parser, QString* error);

    QStringList definitions; ///< files of definitions, in the order in which they are named
    QStringList topicTypes;  ///< rules for Definitions::addTopicType(), in that order
    QStringList importPaths; ///< where imports of these are looked for
    QString annotations;     ///< a file; empty for none but those beside the definitions
    StreamOptions stream;    ///< without the definitions, which are loaded later
};

#endif
