#include "streamopener.h"

#include "inputkind.h"
#include "prefixedinput.h"
#include "recordingindex.h"
#include "streamdecoder.h"

#include <QCoreApplication>

static const int TimeoutMs = 100;

// A frame that comes bit by bit is there by then.
static const int PatienceMs = 300;

StreamOpener::StreamOpener(const InputAddress& address, const StreamOptions& options)
    : m_options(options)
    , m_offset(0)
    , m_isTold(false)
{
    if (*address.kind->container)
        m_options.container = QLatin1String(address.kind->container);
    m_head.isLive = address.kind->isLive();
    m_head.isDatagram = address.kind->isDatagram();
}

StreamOpener::StreamOpener(const StreamOptions& options)
    : m_options(options)
    , m_offset(0)
    , m_isTold(false)
{
    m_head.isLive = true;
}

StreamOpener::~StreamOpener() {}

StreamOpener::Result StreamOpener::run(ByteInput* input, const std::function<bool()>& goOn, StreamSink* sink)
{
    m_head.files = input->getFiles();
    for (;;) {
        const Recognition found = Recognition::recognize(m_head, m_options);
        if (found.answer == Container::Yes)
            return open(found.container, *input) ? Opened : Failed;
        if (found.answer == Container::No) {
            if (m_head.isLive && m_head.isAll && m_head.bytes.isEmpty())
                return Ended;
            if (!m_head.isLive || m_head.isAll) {
                m_error = input->getName() + QLatin1String(": ") + Recognition::describeFailure(m_head, m_options);
                return Failed;
            }
            passOver(sink);
            continue; // what is asked of no bytes says what to do for who is in a hurry
        }
        const int looked = int(m_head.bytes.size());
        ByteInput::Status status = ByteInput::Nothing;
        // Much that comes bit by bit is looked at when it has grown by a share, or when nothing comes for a moment.
        while (status == ByteInput::Nothing ? m_head.bytes.size() == looked
                                            : !m_head.isAll && m_head.bytes.size() < looked + looked / 16) {
            if (goOn && !goOn()) {
                if (!m_head.isLive || !found.container)
                    return Stopped;
                m_pieces = {m_head.bytes}; // who is in a hurry reads once more
                return open(found.container, *input) ? Opened : Failed;
            }
            QByteArray piece;
            status = input->read(&piece, TimeoutMs);
            if (status == ByteInput::Failed) {
                m_error = input->getErrorString();
                return Failed;
            }
            m_head.isAll = status == ByteInput::End;
            if (status == ByteInput::Data)
                m_pieces.append(piece);
            m_head.bytes += piece;
            if (m_head.bytes.isEmpty() || !m_head.isLive || m_isTold)
                continue;
            if (!m_sinceFirst.isValid())
                m_sinceFirst.start();
            else if (m_sinceFirst.hasExpired(PatienceMs))
                tell(sink);
        }
    }
}

bool StreamOpener::open(const Container* container, const ByteInput& input)
{
    m_opened = container->open(m_head, m_options);
    if (!m_opened.decoder) {
        m_error = input.getName() + QLatin1String(": ") + m_opened.error;
        return false;
    }
    if (m_offset > 0)
        m_opened.decoder->restart(m_offset);
    return true;
}

void StreamOpener::tell(StreamSink* sink)
{
    m_isTold = true;
    StreamProblem problem;
    problem.kind = StreamProblem::UnrecognizedStream;
    problem.offset = m_offset;
    problem.text = Recognition::describeFailure(m_head, m_options);
    if (sink)
        sink->processProblem(problem);
}

/** Gives up the bytes that nobody recognises. */
void StreamOpener::passOver(StreamSink* sink)
{
    if (!m_isTold)
        tell(sink);
    StreamProblem problem;
    problem.kind = StreamProblem::SkippedBytes;
    problem.offset = m_offset;
    problem.length = quint64(m_head.bytes.size());
    if (sink)
        sink->processProblem(problem);
    m_offset += problem.length;
    m_head.bytes.clear();
    m_pieces.clear();
}

std::unique_ptr<ByteInput> StreamOpener::takeInput(std::unique_ptr<ByteInput> input)
{
    if (m_pieces.isEmpty() && !m_head.isAll)
        return input;
    if (!input->isSeekable())
        return std::unique_ptr<ByteInput>(new PrefixedInput(input.release(), m_pieces, m_head.isAll));
    if (!input->seek(0))
        m_error = input->getErrorString();
    return input;
}

OpenedInput openStream(const InputAddress& address, const StreamOptions& options, const std::function<bool()>& goOn,
                       StreamSink* sink)
{
    OpenedInput opened;
    std::unique_ptr<ByteInput> input(ByteInput::create(address));
    if (!input->open()) {
        opened.error = input->getErrorString();
        return opened;
    }
    StreamOpener opener(address, options);
    switch (opener.run(input.get(), goOn, sink)) {
    case StreamOpener::Opened:
        input = opener.takeInput(std::move(input));
        opened.stream = opener.takeStream();
        opened.error = opener.getErrorString();
        if (opened.error.isEmpty())
            opened.input = std::move(input);
        break;
    case StreamOpener::Ended:
        opened.error = input->getName() + QLatin1String(": ") + Recognition::describeFailure(StreamHead(), options);
        break;
    case StreamOpener::Failed:
        opened.error = opener.getErrorString();
        break;
    case StreamOpener::Stopped:
        break;
    }
    return opened;
}
