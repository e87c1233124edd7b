#ifndef MONITOROPTIONS_H
#define MONITOROPTIONS_H

#include "sourcefactory.h"
#include "streamsource.h"
#include "theme.h"

#include <QSize>
#include <QStringList>

/** What the command line asks for. */
struct MonitorOptions
{
    /**
     * Reads the command line. Ends the program where that says how, with a word: 0 after --help and --version, 2 when
     * these could not be written, 1 when something is wrong. Needs a QCoreApplication and no display; options of Qt's
     * own are let pass.
     */
    void read();

    QStringList inputs;
    bool startsWithDemonstration = false; ///< whether a simulation is shown when nothing else is asked for
    bool hasDemonstration = false;        ///< whether a simulation is asked for, also beside inputs
    const Demonstration* demonstration = &Demonstration::getAll().first();
    QStringList definitions; ///< files for every source
    QString annotations;
    SourceOptions source; ///< schema, type and framing of all inputs, without an address
    StreamSource::Playback playback;
    QStringList panels; ///< to be in front
    QStringList forms;
    QStringList watches;
    QStringList plots;
    QString find;
    QString record;     ///< empty for no recording
    QString screenshot; ///< empty for no picture
    double after = 5;   ///< seconds until the picture is taken
    QString settings;   ///< empty for the user's own
    bool hasTheme = false;
    Theme::Kind theme = Theme::System;
    QSize size; ///< of the window; invalid for its own
};

#endif
