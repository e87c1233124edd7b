#ifndef CORVEL_RECEPTIONCOUNTERS_H
#define CORVEL_RECEPTIONCOUNTERS_H

#include "streamdecoder.h"

#include <QMap>
#include <QVector>

class StreamIdentities;

/**
 * Counts what a stream brought: messages by the rows of a StreamIdentities, and everything that was wrong. Plain and
 * copyable.
 */
class CORVELFRAMEWORK_EXPORT ReceptionCounters
{
public:
    ReceptionCounters();

    /** Counts a message of that row. */
    void countMessage(const ReceivedMessage& message, int row);
    void countProblem(const StreamProblem& problem);

    /** Takes messages that came before for known ones or not, as their rows are now. */
    void changeTypes(const StreamIdentities& identities);

    /** Messages of a row; 0 also for one that does not exist. */
    quint64 getCount(int row) const { return m_rows.value(row).messages; }
    /** Bytes of these. */
    quint64 getByteCount(int row) const { return m_rows.value(row).bytes; }
    /** Those of them that a server had from before: they did not come at that rate. */
    quint64 getKeptCount(int row) const { return m_kept.value(row); }

    quint64 getMessageCount() const { return m_messages; }     ///< messages of known types
    quint64 getUnknownCount() const { return m_unknown; }      ///< frames of unknown types
    quint64 getByteCount() const { return m_bytes; }           ///< bytes of all of these
    quint64 getSkippedBytes() const { return m_skippedBytes; } ///< bytes that belong to no frame
    quint64 getTruncatedFrames() const { return m_truncatedFrames; }
    quint64 getTruncatedBytes() const { return m_truncatedBytes; }
    quint64 getUnsupportedFrames() const { return m_unsupportedFrames; }
    quint64 getLengthMismatches() const { return m_lengthMismatches; }
    quint64 getChecksumFailureCount() const;
    /** Checksum failures per message id. */
    const QMap<quint32, quint64>& getChecksumFailures() const { return m_checksumFailures; }

private:
    struct Row
    {
        Row()
            : messages(0)
            , bytes(0)
        {
        }
        quint64 messages;
        quint64 bytes;
    };

    QVector<Row> m_rows;
    QMap<int, quint64> m_kept; // by row
    QMap<quint32, quint64> m_checksumFailures;
    quint64 m_messages;
    quint64 m_unknown;
    quint64 m_bytes;
    quint64 m_skippedBytes;
    quint64 m_truncatedFrames;
    quint64 m_truncatedBytes;
    quint64 m_unsupportedFrames;
    quint64 m_lengthMismatches;
};

#endif
