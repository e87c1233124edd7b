#include "annotations.h"
#include "corvel.h"
#include "dumpoptions.h"
#include "inputhead.h"
#include "mavlinkdialect.h"
#include "message.h"
#include "messageprinter.h"
#include "selection.h"
#include "statisticsprinter.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <memory>

namespace
{

enum ExitStatus
{
    Success = 0,
    WrongUsage = 1,
    Unreadable = 2
};

// Long enough to cost nothing, and the longest that SIGINT waits where it does not interrupt.
const int ReadTimeoutMs = 100;

volatile std::sig_atomic_t interrupted = 0;

void interrupt(int)
{
    interrupted = 1;
}

void complain(const QString& text)
{
    std::fprintf(stderr, "corvel-dump: %s\n", qPrintable(text));
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
    // A reader that has enough shows as an error of writing.
    std::signal(SIGPIPE, SIG_IGN);
}

std::unique_ptr<MavlinkDialect> loadDialect(const DumpOptions& options)
{
    QStringList errors;
    std::unique_ptr<MavlinkDialect> dialect(options.dialect.isEmpty() ? MavlinkDialect::loadBuiltIn()
                                                                      : MavlinkDialect::load(options.dialect, &errors));
    QStringList annotations;
    if (!options.dialect.isEmpty() && QFileInfo::exists(Annotations::pathBeside(options.dialect)))
        annotations.append(Annotations::pathBeside(options.dialect));
    if (!options.annotations.isEmpty())
        annotations.append(options.annotations);
    if (dialect)
        for (const QString& path : annotations)
            Annotations::apply(path, dialect.get(), &errors);
    for (const QString& error : errors)
        complain(error);
    return errors.isEmpty() ? std::move(dialect) : nullptr;
}

qint64 now()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

// Reads to the end; the status is that of the last read.
ByteInput::Status decode(ByteInput* input, const InputHead& head, StreamDecoder* decoder, DumpSink* sink)
{
    const bool live = input->isLive();
    ByteInput::Status status = head.status;
    QByteArray bytes = head.bytes;
    for (;;) {
        if (!bytes.isEmpty())
            decoder->feed(bytes.constData(), static_cast<int>(bytes.size()), live ? now() : Message::NoTime, sink);
        if (input->isDatagram() && status == ByteInput::Data)
            decoder->finish(sink);
        if (live)
            std::fflush(stdout);
        if (status == ByteInput::End || status == ByteInput::Failed || interrupted || sink->getOutputError() != 0)
            break;
        status = input->read(&bytes, ReadTimeoutMs);
    }
    // Where nobody reads on, the stream does not end.
    if (sink->getOutputError() == 0)
        decoder->finish(sink);
    return status;
}

int closeOutput(const DumpSink& sink)
{
    int error = sink.getOutputError();
    if (std::fflush(stdout) != 0 && error == 0)
        error = errno;
    if (error == 0 || error == EPIPE)
        return Success;
    complain(QStringLiteral("standard output: ") + QString::fromLocal8Bit(std::strerror(error)));
    return Unreadable;
}

int dump(const DumpOptions& options)
{
    const std::unique_ptr<MavlinkDialect> dialect = loadDialect(options);
    if (!dialect)
        return Unreadable;
    Selection selection;
    QString error;
    if (!selection.setUp(options.selections, dialect.get(), &error)) {
        complain(error);
        return WrongUsage;
    }
    const std::unique_ptr<ByteInput> input(ByteInput::create(options.input));
    if (!input->open()) {
        complain(input->getErrorString());
        return Unreadable;
    }

    InputHead head;
    const bool network =
        options.input.kind == InputAddress::UdpListen || options.input.kind == InputAddress::TcpConnect;
    if (options.layout) {
        head.layout = *options.layout;
    } else if (!network && !head.recognize(input.get(), [] { return !interrupted; })) {
        if (interrupted)
            return Success;
        complain(head.status == ByteInput::Failed ? input->getErrorString()
                 : head.bytes.isEmpty()           ? input->getName() + QStringLiteral(": the input is empty")
                                                  : input->getName() + QStringLiteral(": no MAVLink frames found"));
        return Unreadable;
    }

    MavlinkStreamDecoder decoder(dialect.get(), head.layout);
    std::unique_ptr<DumpSink> sink;
    if (options.statistics)
        sink.reset(new StatisticsPrinter(input->getName(), &decoder));
    else
        sink.reset(new MessagePrinter(input->getName(), &decoder, options.interpreted, selection));
    const ByteInput::Status status = decode(input.get(), head, &decoder, sink.get());
    sink->finish();
    const int result = closeOutput(*sink);
    if (status != ByteInput::Failed)
        return result;
    complain(input->getErrorString());
    return Unreadable;
}

} // namespace

int main(int argc, char* argv[])
{
    static char outputBuffer[256 * 1024];
    static char errorBuffer[16 * 1024];
    std::setvbuf(stdout, outputBuffer, _IOFBF, sizeof outputBuffer);
    std::setvbuf(stderr, errorBuffer, _IOLBF, sizeof errorBuffer);
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("corvel-dump"));
    QCoreApplication::setApplicationVersion(QStringLiteral(CORVEL_VERSION));
    handleSignals();

    DumpOptions options;
    QString text;
    switch (DumpOptions::parse(QCoreApplication::arguments(), &options, &text)) {
    case DumpOptions::InfoAsked:
        std::fputs(qPrintable(text), stdout);
        return Success;
    case DumpOptions::Wrong:
        complain(text);
        complain(QStringLiteral("see corvel-dump --help"));
        return WrongUsage;
    case DumpOptions::Run:
        break;
    }
    Corvel::setConfidentialInformationDisplayEnabled(options.confidential);
    return dump(options);
}
