#include "receptioncounters.h"

#include "streamidentities.h"

ReceptionCounters::ReceptionCounters()
    : m_messages(0)
    , m_unknown(0)
    , m_bytes(0)
    , m_skippedBytes(0)
    , m_truncatedFrames(0)
    , m_truncatedBytes(0)
    , m_unsupportedFrames(0)
    , m_lengthMismatches(0)
{
}

void ReceptionCounters::countMessage(const ReceivedMessage& message, int row)
{
    if (row >= m_rows.size())
        m_rows.resize(row + 1);
    Row& counts = m_rows[row];
    ++counts.messages;
    counts.bytes += quint64(message.size);
    if (message.info)
        ++m_messages;
    else
        ++m_unknown;
    m_bytes += quint64(message.size);
    if (message.isKept)
        ++m_kept[row];
}

void ReceptionCounters::changeTypes(const StreamIdentities& identities)
{
    m_messages = m_unknown = 0;
    for (int row = 0; row < m_rows.size(); ++row)
        (identities.getRows().at(row).info ? m_messages : m_unknown) += m_rows.at(row).messages;
}

void ReceptionCounters::countProblem(const StreamProblem& problem)
{
    switch (problem.kind) {
    case StreamProblem::ChecksumFailure:
        ++m_checksumFailures[problem.id];
        break;
    case StreamProblem::LengthMismatch:
        ++m_lengthMismatches;
        break;
    case StreamProblem::UnsupportedFrame:
        ++m_unsupportedFrames;
        break;
    case StreamProblem::SkippedBytes:
        m_skippedBytes += problem.length;
        break;
    case StreamProblem::TruncatedFrame:
        ++m_truncatedFrames;
        m_truncatedBytes += problem.length;
        break;
    case StreamProblem::InputFailure:
    case StreamProblem::UnusableDefinition:
    case StreamProblem::DisorderedTimes:
    case StreamProblem::ServerNotice:
    case StreamProblem::FaultyAnnotation:
    case StreamProblem::UnrecognizedStream:
    case StreamProblem::SenderGone:
        break; // says nothing about the bytes that came
    }
}

quint64 ReceptionCounters::getChecksumFailureCount() const
{
    quint64 count = 0;
    for (const quint64 failures : m_checksumFailures)
        count += failures;
    return count;
}
