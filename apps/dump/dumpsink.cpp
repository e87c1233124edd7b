#include "dumpsink.h"

#include "messageinfo.h"

#include <cerrno>
#include <utility>

DumpSink::DumpSink(const QString& inputName, const StreamDecoder* decoder)
    : m_inputName(inputName)
    , m_decoder(decoder)
    , m_outputError(0)
{
}

void DumpSink::processReceived(const ReceivedMessage& message)
{
    if (!message.info && !m_unknownIds.contains(message.id)) {
        m_unknownIds.insert(message.id);
        printProblem(message.offset,
                     QStringLiteral("unknown message %1, sender %2")
                         .arg(m_decoder->describeUnknown(message.id), m_decoder->getSenderName(message.sender)));
    }
    if (message.info && !message.info->getFormatInfo())
        publishTypes(message.offset);
    consume(message);
}

void DumpSink::publishTypes(quint64 offset)
{
    QStringList texts;
    m_decoder->publishTypes(&texts);
    for (const QString& text : std::as_const(texts)) {
        StreamProblem problem;
        problem.kind = StreamProblem::FaultyAnnotation;
        problem.offset = offset;
        problem.text = text;
        processProblem(problem);
    }
}

void DumpSink::processProblem(const StreamProblem& problem)
{
    if (problem.kind == StreamProblem::UnusableDefinition)
        m_unknownIds.insert(problem.id);
    printProblem(problem.offset,
                 problem.describe(problem.hasFrame ? m_decoder->getSenderName(problem.sender) : QString()));
    count(problem);
}

void DumpSink::printProblem(quint64 offset, const QString& text)
{
    std::fprintf(stderr, "%s at byte %llu: %s\n", qPrintable(m_inputName), static_cast<unsigned long long>(offset),
                 qPrintable(text));
}

void DumpSink::print(const std::string& text)
{
    if (m_outputError == 0 && std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        m_outputError = errno;
}
