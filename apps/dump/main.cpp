#include "commandline.h"
#include "corvel.h"
#include "definitions.h"
#include "dumpoptions.h"
#include "message.h"
#include "messageprinter.h"
#include "recordingindex.h"
#include "selection.h"
#include "standardoutput.h"
#include "statisticsprinter.h"
#include "streamopener.h"
#include "streamrelay.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <memory>
#include <thread>

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

bool complainAll(const QStringList& errors)
{
    for (const QString& error : errors)
        CommandLine::complain(error);
    return errors.isEmpty();
}

bool loadDefinitions(const SourceArguments& source, Definitions* definitions)
{
    QStringList errors;
    for (const QString& path : source.definitions)
        definitions->load(path, source.importPaths, &errors);
    for (const QString& rule : source.topicTypes) {
        QString error;
        if (!definitions->addTopicType(rule, &error))
            errors.append(error);
    }
    if (!source.annotations.isEmpty())
        definitions->annotate(source.annotations, &errors);
    return complainAll(errors);
}

/** Tells of bytes that nobody recognised, before there is anything that prints or counts. */
class PassedOver : public StreamSink
{
public:
    void processReceived(const ReceivedMessage&) override {}
    void processProblem(const StreamProblem& problem) override
    {
        CommandLine::complain(problem.describe(QString()));
        // Of a stream that goes on like that, the bytes are one stretch.
        if (!m_problems.isEmpty() && m_problems.constLast().kind == problem.kind)
            m_problems.last().length += problem.length;
        else
            m_problems.append(problem);
    }

    /** Has what was told counted, too. */
    void countIn(DumpSink* sink) const
    {
        for (const StreamProblem& problem : m_problems)
            sink->count(problem);
    }

private:
    QVector<StreamProblem> m_problems;
};

qint64 now()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

// Reads to the end, or until nothing can be written to the output any more; the status is that of the last read.
ByteInput::Status decode(ByteInput* input, StreamDecoder* decoder, StreamSink* sink, const DumpSink& output)
{
    ByteInput::Status status = ByteInput::Nothing;
    QByteArray bytes;
    quint64 position = 0;
    for (;;) {
        status = input->read(&bytes, ReadTimeoutMs);
        for (StreamProblem notice : input->takeNotices()) {
            notice.offset = position;
            sink->processProblem(notice);
        }
        const bool live = input->isLive();
        position += quint64(bytes.size());
        if (!bytes.isEmpty())
            decoder->feed(bytes.constData(), static_cast<int>(bytes.size()), live ? now() : Message::NoTime, sink);
        if (input->isDatagram() && status == ByteInput::Data)
            decoder->finish(sink);
        if (live)
            std::fflush(stdout);
        if (status == ByteInput::End || status == ByteInput::Failed || CommandLine::isInterrupted() ||
            output.getOutputError() != 0)
            break;
    }
    // Where nobody reads on, the stream does not end.
    if (output.getOutputError() == 0)
        decoder->finish(sink);
    return status;
}

// The same with a thread of its own for what comes before the sink, which must not print before the end: then there is
// no output that both threads would have to look after.
ByteInput::Status decodeAside(ByteInput* input, StreamDecoder* decoder, DumpSink* sink)
{
    ByteInput::Status status = ByteInput::Nothing;
    StreamRelay relay;
    std::thread thread([&] {
        status = decode(input, decoder, &relay, *sink);
        relay.end();
    });
    relay.passTo(sink);
    thread.join();
    return status;
}

// The status of a program that has only its output left to fail.
int closeOutput(int error)
{
    return StandardOutput::finish(error) ? Success : Unreadable;
}

int dump(const DumpOptions& options)
{
    Definitions definitions;
    if (!loadDefinitions(options.source, &definitions))
        return Unreadable;
    StreamOptions streamOptions = options.source.stream;
    streamOptions.definitions = &definitions;
    PassedOver passedOver;
    const OpenedInput opened = openStream(
        options.input, streamOptions, [] { return !CommandLine::isInterrupted(); }, &passedOver);
    if (!opened.input) {
        if (opened.error.isEmpty())
            return Success; // interrupted
        CommandLine::complain(opened.error);
        return Unreadable;
    }

    ByteInput* const input = opened.input.get();
    StreamDecoder* const decoder = opened.stream.decoder.get();
    // What the decoder asked for may be annotated wrongly.
    QStringList errors;
    definitions.publish(&errors);
    if (!complainAll(errors))
        return Unreadable;
    Selection selection;
    QString error;
    const QVector<const FormatInfo*> formats = decoder->getFormats();
    const bool isComplete = std::all_of(formats.begin(), formats.end(),
                                        [&](const FormatInfo* format) { return definitions.isComplete(format); });
    if (!selection.setUp(options.selections, formats, isComplete, &error)) {
        CommandLine::complain(error);
        return WrongUsage;
    }
    if (opened.stream.needsIndex && opened.stream.index &&
        !opened.stream.index->prepare([](int) { return !CommandLine::isInterrupted(); }))
        return Success;
    std::unique_ptr<DumpSink> sink;
    if (options.statistics)
        sink.reset(new StatisticsPrinter(input->getName(), decoder));
    else
        sink.reset(new MessagePrinter(input->getName(), decoder, options.interpreted, selection));
    passedOver.countIn(sink.get());
    const ByteInput::Status status = options.statistics && !input->isLive() ? decodeAside(input, decoder, sink.get())
                                                                            : decode(input, decoder, sink.get(), *sink);
    sink->finish();
    const int result = closeOutput(sink->getOutputError());
    if (status == ByteInput::Failed) {
        CommandLine::complain(input->getErrorString());
        return Unreadable;
    }
    if (result != Success || CommandLine::isInterrupted() || sink->getComplaint().isEmpty())
        return result;
    CommandLine::complain(sink->getComplaint());
    return WrongUsage;
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
    CommandLine::noteInterruptions();

    DumpOptions options;
    QString text;
    switch (DumpOptions::parse(QCoreApplication::arguments(), &options, &text)) {
    case CommandLine::InfoAsked:
        return closeOutput(StandardOutput::print(text));
    case CommandLine::Wrong:
        CommandLine::complain(text);
        CommandLine::complain(QStringLiteral("see corvel-dump --help"));
        return WrongUsage;
    case CommandLine::Run:
        break;
    }
    Corvel::setConfidentialInformationDisplayEnabled(options.confidential);
    return dump(options);
}
