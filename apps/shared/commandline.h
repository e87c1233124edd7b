#ifndef COMMANDLINE_H
#define COMMANDLINE_H

#include <QStringList>

class QCommandLineParser;

/** What programs without a window have in common at the terminal. */
namespace CommandLine
{

enum Result
{
    Run,       ///< the options are filled in
    InfoAsked, ///< text is to be printed to the output, and that is all
    Wrong      ///< text says what is wrong
};

/** Adds --help and --version, behind the options that are there. */
void addInfoOptions(QCommandLineParser* parser);

/**
 * Reads a command line, the program's name first.
 *
 * @param text  help or version, where somebody asked for it, or what is wrong; untouched by Run
 */
Result parse(QCommandLineParser* parser, const QStringList& arguments, QString* text);

/** Prints a line to the error stream, behind the name of the application. */
void complain(const QString& text);

/**
 * Has SIGINT and SIGTERM noted rather than end the program; a second one of a kind ends it the hard way. A reader of
 * the output that has enough shows as an error of writing.
 */
void noteInterruptions();

/** Whether one came. */
bool isInterrupted();

} // namespace CommandLine

#endif
