#ifndef OPTIONS_H
#define OPTIONS_H

#include "commandline.h"
#include "simulation.h"

#include <QStringList>

/** What corvel-simulate is asked to do. */
struct Options
{
    /** Reads the command line, program name first. */
    static CommandLine::Result parse(const QStringList& arguments, Options* options, QString* text);

    QString path;           ///< of the file; empty for standard output
    bool withTimes = false; ///< whether the file is a tlog
    bool isMcap = false;    ///< whether it is an MCAP recording
    bool isRobot = false;   ///< whether that is of robots, and not of cars
    QString host;           ///< where datagrams go in place of a file, when not empty
    quint16 port = 0;
    double speed = 0;    ///< 1 is real time; 0 is as fast as possible
    double duration = 0; ///< seconds of simulated time; 0 is endless
    Simulation::Settings settings;
};

#endif
