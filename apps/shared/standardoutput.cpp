#include "standardoutput.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>

int StandardOutput::print(const QString& text)
{
    return std::fputs(qPrintable(text), stdout) < 0 ? errno : 0;
}

bool StandardOutput::finish(int error)
{
    if (std::fflush(stdout) != 0 && error == 0)
        error = errno;
    if (error == 0 || error == EPIPE)
        return true;
    std::fprintf(stderr, "%s: standard output: %s\n", qPrintable(QCoreApplication::applicationName()),
                 std::strerror(error));
    return false;
}
