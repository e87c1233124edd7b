#include "relay.h"
#include "standardoutput.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <cstring>

namespace
{

const int SignalMs = 50;

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int)
{
    interrupted = 1;
}

void complain(const QString& text)
{
    std::fprintf(stderr, "corvel-relay: %s\n", qPrintable(text));
}

void handleSignals()
{
    struct sigaction action;
    std::memset(&action, 0, sizeof action);
    action.sa_handler = interrupt;
    // A second one ends the program the hard way.
    action.sa_flags = SA_RESETHAND;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

int main(int argc, char* argv[])
{
    static char errorBuffer[16 * 1024];
    std::setvbuf(stderr, errorBuffer, _IOLBF, sizeof errorBuffer);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("corvel-relay"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));
    handleSignals();

    RelayOptions options;
    QString text;
    switch (RelayOptions::parse(QCoreApplication::arguments(), &options, &text)) {
    case RelayOptions::InfoAsked:
        return StandardOutput::finish(StandardOutput::print(text)) ? Relay::Success : Relay::Unwritable;
    case RelayOptions::Wrong:
        complain(text);
        complain(QStringLiteral("see corvel-relay --help"));
        return Relay::WrongUsage;
    case RelayOptions::Run:
        break;
    }
    Relay relay(options);
    const int status = relay.start();
    if (status >= 0)
        return status;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (interrupted)
            relay.interrupt();
    });
    timer.start(SignalMs);
    QObject::connect(
        &relay, &Relay::ended, &application, [](int exitStatus) { QCoreApplication::exit(exitStatus); },
        Qt::QueuedConnection);
    return QCoreApplication::exec();
}
