#include "receptioncounters.h"

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

void ReceptionCounters::countMessage(const ReceivedMessage& message)
{
    const int row = m_rowIndices.find(KeyIndex::keyOf(message.id, message.sender));
    if (row >= 0)
        ++m_rows[row].count;
    else
        addRow(message);
    if (message.info)
        ++m_messages;
    else
        ++m_unknown;
    m_bytes += quint64(message.size);
}

// Apart, so that what happens for every message stays small.
void ReceptionCounters::addRow(const ReceivedMessage& message)
{
    m_rowIndices.insert(KeyIndex::keyOf(message.id, message.sender), int(m_rows.size()));
    m_rows.append(Row{message.info, message.id, message.sender, 1});
}

void ReceptionCounters::changeTypes(const QHash<quint32, const MessageInfo*>& infos)
{
    m_messages = m_unknown = 0;
    for (Row& row : m_rows) {
        row.info = infos.value(row.id);
        (row.info ? m_messages : m_unknown) += row.count;
    }
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
