#include "commandline.h"
#include "relay.h"
#include "standardoutput.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

const int SignalMs = 50;

} // namespace

int main(int argc, char* argv[])
{
    static char errorBuffer[16 * 1024];
    std::setvbuf(stderr, errorBuffer, _IOLBF, sizeof errorBuffer);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("corvel-relay"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));
    CommandLine::noteInterruptions();

    RelayOptions options;
    QString text;
    switch (RelayOptions::parse(QCoreApplication::arguments(), &options, &text)) {
    case CommandLine::InfoAsked:
        return StandardOutput::finish(StandardOutput::print(text)) ? Relay::Success : Relay::Unwritable;
    case CommandLine::Wrong:
        CommandLine::complain(text);
        CommandLine::complain(QStringLiteral("see corvel-relay --help"));
        return Relay::WrongUsage;
    case CommandLine::Run:
        break;
    }
    Relay relay(options);
    const int status = relay.start();
    if (status >= 0)
        return status;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (CommandLine::isInterrupted())
            relay.interrupt();
    });
    timer.start(SignalMs);
    QObject::connect(
        &relay, &Relay::ended, &application, [](int exitStatus) { QCoreApplication::exit(exitStatus); },
        Qt::QueuedConnection);
    return QCoreApplication::exec();
}
