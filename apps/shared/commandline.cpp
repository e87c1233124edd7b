#include "commandline.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <cstring>

namespace
{

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int)
{
    interrupted = 1;
}

} // namespace

namespace CommandLine
{

void addInfoOptions(QCommandLineParser* parser)
{
    parser->addOption({QStringList{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this text.")});
    parser->addOption(
        {QStringList{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Print the version.")});
}

Result parse(QCommandLineParser* parser, const QStringList& arguments, QString* text)
{
    if (!parser->parse(arguments)) {
        *text = parser->errorText();
        return Wrong;
    }
    if (parser->isSet(QStringLiteral("help"))) {
        *text = parser->helpText();
        return InfoAsked;
    }
    if (parser->isSet(QStringLiteral("version"))) {
        *text = QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion() +
                QLatin1Char('\n');
        return InfoAsked;
    }
    return Run;
}

void complain(const QString& text)
{
    std::fprintf(stderr, "%s: %s\n", qPrintable(QCoreApplication::applicationName()), qPrintable(text));
}

void noteInterruptions()
{
    struct sigaction action;
    std::memset(&action, 0, sizeof action);
    action.sa_handler = interrupt;
    action.sa_flags = SA_RESETHAND;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

bool isInterrupted()
{
    return interrupted != 0;
}

} // namespace CommandLine
